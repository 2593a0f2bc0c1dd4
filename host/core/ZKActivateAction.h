#pragma once

#include "ZKHostExport.h"

#include <QObject>

/// Stands for one tool in the tool group. It is checked while its tool is the chosen one (the explicit
/// state) and implicitly checked while its tool runs (the implicit state). The two differ only while
/// another tool runs for a moment. Main thread only.
class ZK_HOST_EXPORT ZKActivateAction : public QObject
{
    Q_OBJECT

public:
    explicit ZKActivateAction(QObject* parent);

    /// Leaves the tool group without a signal of its own.
    ~ZKActivateAction() override;

    bool IsChecked() const { return m_bChecked; }

    /// True makes this the group's chosen tool, without asking the present one: that one goes off first,
    /// then this one's implicit state is set, then the signals go out. False clears both states.
    /// An action that was never added to the group changes alone.
    void SetChecked(bool checked);

    bool IsImplicitlyChecked() const { return m_bImplicitlyChecked; }

    /// True lets this tool run for a moment in place of the one that runs. False stops it, and the
    /// chosen tool, if that is another one, runs again.
    void SetImplicitChecked(bool checked);

    /// Asked before the tool loses its turn; false refuses. May run an event loop (a message box).
    virtual bool IsAllowChange();

signals:
    /// Only when the state has changed. An explicit change sends Toggled first.
    void Toggled(bool checked);
    void ImplicitToggled(bool checked);

private:
    friend class ToolGroup;

    bool m_bInGroup = false;
    bool m_bChecked = false;
    bool m_bImplicitlyChecked = false;
};
