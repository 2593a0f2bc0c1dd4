#pragma once

#include <QList>

class ZKActivateAction;

/// The one place that changes which tool is chosen (explicit) and which runs (implicit).
///
/// Handlers of the signals may change the tool again. Such a nested change is newer than the one that is
/// under way, so the older one stops at the next step; `m_Change` tells it.
class ToolGroup
{
public:
    static ToolGroup& Instance();

    void Add(ZKActivateAction* action);
    void Remove(ZKActivateAction* action);

    bool Activate(ZKActivateAction* action);
    void SetExplicit(ZKActivateAction* action, bool checked);
    void SetImplicit(ZKActivateAction* action, bool checked);

    ZKActivateAction* ExplicitAction() const { return m_pExplicit; }

    ZKActivateAction* ImplicitAction() const { return m_pImplicit; }

private:
    /// Makes `next` the chosen tool that runs, after all others are off; null for none.
    void Choose(ZKActivateAction* next);

    /// Each tells whether it was carried through; false when a handler made a newer change.
    bool DropExplicit();
    bool Run(ZKActivateAction* next);
    bool SetStates(ZKActivateAction* action, bool checked, bool implicitlyChecked);

    QList<ZKActivateAction*> m_Members;
    ZKActivateAction* m_pExplicit = nullptr;
    ZKActivateAction* m_pImplicit = nullptr;
    unsigned int m_Change = 0;
};
