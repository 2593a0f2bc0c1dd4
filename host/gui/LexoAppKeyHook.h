#pragma once

#include "ZKHostExport.h"

#include <QKeySequence>
#include <QObject>

#include <memory>

class LexoAppKeyHookPrivate;
class QKeyEvent;
class QShortcutEvent;

/// Sees every key of the program before anybody else, and can switch its shortcuts off. Made at first use,
/// after the application object. Main thread only.
///
/// Registered are all shortcuts of actions and all LXShortcuts, tool-box keys among them, so that nothing
/// can be forgotten. The mnemonics of buttons and labels are not.
class ZK_HOST_EXPORT LexoAppKeyHook : public QObject
{
    Q_OBJECT

public:
    static LexoAppKeyHook* instance();
    ~LexoAppKeyHook() override;

    /// A switch, not a counter. While off, no registered shortcut does anything; its key goes to the focused
    /// widget like any other.
    void DisableAllRegisteredShortcuts();
    void EnableAllRegisteredShortcuts();
    bool AreShortcutsEnabled() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// Once for each physical press and release in any window of the program, whatever the switch says and
    /// whether or not a shortcut takes the key. Keys that are down when the program loses the focus are
    /// released then.
    /// @param key  Qt::Key
    void KeyPressed(int key);
    void KeyReleased(int key);

    /// Before the shortcut acts. The id is Qt's.
    void ShortcutActivated(QKeySequence key, int id);
    /// Several shortcuts stand on the key, and this press is an LXShortcut's. They act in turn.
    void ShortcutActivatedAmbiguously(QKeySequence key, int id);
    /// Several shortcuts stand on the key, and this press is an action's or a mnemonic's. An action then does
    /// nothing by itself.
    void UnregisteredActivatedAmbiguously(QKeySequence key, int id);

private:
    LexoAppKeyHook();

    void NotePress(const QKeyEvent* event);
    void NoteRelease(const QKeyEvent* event);
    bool NoteShortcut(const QObject* receiver, const QShortcutEvent* event);
    void ReleaseAll();

    std::unique_ptr<LexoAppKeyHookPrivate> m_pPrivate;
};
