#include "fillcan/BlendShortcuts.h"

#include "common/BlendModeTable.h"
#include "gui/LXShortcut.h"

namespace {
const QKeySequence NextKey(Qt::SHIFT + Qt::Key_Plus);
const QKeySequence PreviousKey(Qt::SHIFT + Qt::Key_Minus);

LXShortcut* MakeShortcut(QWidget* window, const QKeySequence& key)
{
    auto* shortcut = new LXShortcut(window);
    shortcut->SetKey(key);
    return shortcut;
}
} // namespace

BlendShortcuts::~BlendShortcuts()
{
    Delete();
}

void BlendShortcuts::Create(QWidget* window)
{
    Delete();
    m_pPrevBlendShortcut = MakeShortcut(window, PreviousKey);
    m_pNextBlendShortcut = MakeShortcut(window, NextKey);
    for (int i = 0; i < DirectCount; ++i) {
        m_BlendShortcuts[static_cast<std::size_t>(i)] = MakeShortcut(window, DirectKey(i));
    }
}

void BlendShortcuts::Delete()
{
    delete m_pPrevBlendShortcut;
    delete m_pNextBlendShortcut;
    for (const QPointer<LXShortcut>& shortcut : m_BlendShortcuts) {
        delete shortcut;
    }
}

int BlendShortcuts::IndexFor(const QKeySequence& key, int current)
{
    constexpr int count = BlendModeTable::Count;
    if (key == NextKey) return (current + 1) % count;
    if (key == PreviousKey) return (current + count - 1) % count;
    for (int i = 0; i < DirectCount; ++i) {
        if (key == DirectKey(i)) return i;
    }
    return -1;
}

QKeySequence BlendShortcuts::DirectKey(int index)
{
    constexpr std::array<Qt::Key, DirectCount> letters{Qt::Key_N, Qt::Key_M, Qt::Key_S, Qt::Key_O,
                                                       Qt::Key_E, Qt::Key_X, Qt::Key_G, Qt::Key_K,
                                                       Qt::Key_F, Qt::Key_H, Qt::Key_D, Qt::Key_B};
    return QKeySequence(Qt::SHIFT + Qt::ALT + letters[static_cast<std::size_t>(index)]);
}
