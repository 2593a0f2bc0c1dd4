#include "gui/LXShortcut.h"

#include <QShortcut>
#include <QWidget>

LXShortcut::LXShortcut(QWidget* parent, const QKeySequence& key) : QObject(parent)
{
    if (parent) {
        m_pShortcut = new QShortcut(parent);
        connect(m_pShortcut, &QShortcut::activated, this, &LXShortcut::Activated);
        connect(m_pShortcut, &QShortcut::activatedAmbiguously, this, &LXShortcut::Activated);
    }
    SetKey(key);
}

LXShortcut::~LXShortcut()
{
    // Its own child would still be found by the parent's shortcut lookup until the parent dies.
    delete m_pShortcut;
}

QKeySequence LXShortcut::Key() const
{
    return m_Key;
}

void LXShortcut::SetKey(const QKeySequence& key)
{
    m_Key = key;
    if (m_pShortcut) m_pShortcut->setKey(key);
}

bool LXShortcut::IsEnabled() const
{
    return m_bEnabled;
}

void LXShortcut::SetEnabled(bool enabled)
{
    m_bEnabled = enabled;
    if (m_pShortcut) m_pShortcut->setEnabled(enabled);
}

void LXShortcut::SetShortcutContext(Qt::ShortcutContext context)
{
    if (m_pShortcut) m_pShortcut->setContext(context);
}
