#include "gui/LexoAppKeyHook.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QShortcut>
#include <QShortcutEvent>

#include <algorithm>
#include <utility>
#include <vector>

namespace {
/// A key that is down. The same physical key may be released under another Qt::Key than it was pressed with
/// (Shift let go first); events that no keyboard made have no scan code.
struct HeldKey
{
    int key;
    quint32 scanCode;

    bool IsOf(const QKeyEvent& event) const
    {
        const bool scanned = scanCode != 0 && event.nativeScanCode() != 0;
        return scanned ? scanCode == event.nativeScanCode() : key == event.key();
    }
};
} // namespace

class LexoAppKeyHookPrivate
{
public:
    std::vector<HeldKey>::iterator Find(const QKeyEvent& event)
    {
        return std::find_if(m_Held.begin(), m_Held.end(),
                            [&](const HeldKey& held) { return held.IsOf(event); });
    }

    bool m_bEnabled = true;
    std::vector<HeldKey> m_Held;
};

namespace {
bool IsRegistered(const QObject* receiver)
{
    return qobject_cast<const QAction*>(receiver) || qobject_cast<const QShortcut*>(receiver);
}

/// A dialog keeps its mnemonics while the shortcuts are off.
bool IsDialogActive()
{
    return qobject_cast<QDialog*>(QApplication::activeWindow()) != nullptr;
}
} // namespace

LexoAppKeyHook* LexoAppKeyHook::instance()
{
    // Lives as long as the application object, whose events it sees.
    static LexoAppKeyHook* hook = nullptr;
    if (!hook) {
        hook = new LexoAppKeyHook;
        connect(hook, &QObject::destroyed, [] { hook = nullptr; });
    }
    return hook;
}

LexoAppKeyHook::LexoAppKeyHook() : QObject(qApp), m_pPrivate(std::make_unique<LexoAppKeyHookPrivate>())
{
    qApp->installEventFilter(this);
}

LexoAppKeyHook::~LexoAppKeyHook() = default;

void LexoAppKeyHook::DisableAllRegisteredShortcuts()
{
    m_pPrivate->m_bEnabled = false;
}

void LexoAppKeyHook::EnableAllRegisteredShortcuts()
{
    m_pPrivate->m_bEnabled = true;
}

bool LexoAppKeyHook::AreShortcutsEnabled() const
{
    return m_pPrivate->m_bEnabled;
}

bool LexoAppKeyHook::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        NotePress(static_cast<QKeyEvent*>(event));
        if (m_pPrivate->m_bEnabled || IsDialogActive()) return false;
        // Taken here, the key reaches the focused widget as a plain key press.
        event->accept();
        return true;
    case QEvent::KeyPress: NotePress(static_cast<QKeyEvent*>(event)); return false;
    case QEvent::KeyRelease: NoteRelease(static_cast<QKeyEvent*>(event)); return false;
    case QEvent::Shortcut: return NoteShortcut(watched, static_cast<QShortcutEvent*>(event));
    case QEvent::ApplicationStateChange:
        if (static_cast<QApplicationStateChangeEvent*>(event)->applicationState() != Qt::ApplicationActive) {
            ReleaseAll();
        }
        return false;
    default: return false;
    }
}

void LexoAppKeyHook::NotePress(const QKeyEvent* event)
{
    if (event->isAutoRepeat()) return;

    const auto held = m_pPrivate->Find(*event);
    if (held != m_pPrivate->m_Held.end()) {
        if (held->scanCode == 0) held->scanCode = event->nativeScanCode();
        return;
    }
    m_pPrivate->m_Held.push_back({event->key(), event->nativeScanCode()});
    emit KeyPressed(event->key());
}

void LexoAppKeyHook::NoteRelease(const QKeyEvent* event)
{
    if (event->isAutoRepeat()) return;

    const auto held = m_pPrivate->Find(*event);
    if (held == m_pPrivate->m_Held.end()) return;
    const int key = held->key;
    m_pPrivate->m_Held.erase(held);
    emit KeyReleased(key);
}

bool LexoAppKeyHook::NoteShortcut(const QObject* receiver, const QShortcutEvent* event)
{
    const bool registered = IsRegistered(receiver);
    if (registered && !m_pPrivate->m_bEnabled) return true;

    if (event->isAmbiguous()) {
        if (qobject_cast<const QShortcut*>(receiver)) {
            emit ShortcutActivatedAmbiguously(event->key(), event->shortcutId());
        } else {
            emit UnregisteredActivatedAmbiguously(event->key(), event->shortcutId());
        }
    } else if (registered) {
        emit ShortcutActivated(event->key(), event->shortcutId());
    }
    return false;
}

void LexoAppKeyHook::ReleaseAll()
{
    const std::vector<HeldKey> held = std::exchange(m_pPrivate->m_Held, {});
    for (const HeldKey& each : held)
        emit KeyReleased(each.key);
}
