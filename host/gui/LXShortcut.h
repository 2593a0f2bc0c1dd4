#pragma once

#include "ZKHostExport.h"

#include <QKeySequence>
#include <QObject>

class QShortcut;

/// A key that acts while the parent's window is active, registered with LexoAppKeyHook. Main thread only.
class ZK_HOST_EXPORT LXShortcut : public QObject
{
    Q_OBJECT

public:
    /// @param parent  owns the shortcut; without one the key does nothing
    explicit LXShortcut(QWidget* parent, const QKeySequence& key = QKeySequence());
    ~LXShortcut() override;

    QKeySequence Key() const;
    /// An empty key never acts.
    void SetKey(const QKeySequence& key);

    bool IsEnabled() const;
    void SetEnabled(bool enabled);

    /// Qt::WindowShortcut at first.
    void SetShortcutContext(Qt::ShortcutContext context);

signals:
    /// Also when other shortcuts stand on the same key: then one after the other gets its turn.
    void Activated();

private:
    QShortcut* m_pShortcut = nullptr;
    QKeySequence m_Key;
    bool m_bEnabled = true;
};
