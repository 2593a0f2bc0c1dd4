#include "core/ToolGroup.h"

#include "core/ZKActivateAction.h"

#include <QPointer>

ToolGroup& ToolGroup::Instance()
{
    static ToolGroup group;
    return group;
}

void ToolGroup::Add(ZKActivateAction* action)
{
    if (action == nullptr || action->m_bInGroup) return;
    m_Members.append(action);
    action->m_bInGroup = true;
    if (!action->m_bChecked) return;

    // Its listeners heard of it when it was checked alone; now the others go off.
    Choose(action);
}

void ToolGroup::Remove(ZKActivateAction* action)
{
    m_Members.removeOne(action);
    action->m_bInGroup = false;
    if (m_pExplicit == action) m_pExplicit = nullptr;
    if (m_pImplicit == action) {
        // Its own signals would reach half a tool.
        m_pImplicit = nullptr;
        Run(m_pExplicit);
    }
}

bool ToolGroup::Activate(ZKActivateAction* action)
{
    Add(action);
    const QPointer<ZKActivateAction> wanted = action;
    if (m_pExplicit != nullptr && m_pExplicit != action) {
        const unsigned int change = m_Change;
        if (!m_pExplicit->IsAllowChange()) return false;
        if (change != m_Change || wanted != action) return m_pExplicit == action;
    }
    Choose(action);
    return m_pExplicit == action;
}

void ToolGroup::SetExplicit(ZKActivateAction* action, bool checked)
{
    if (!action->m_bInGroup) {
        SetStates(action, checked, checked);
    } else if (checked) {
        Choose(action);
    } else if (action == m_pExplicit) {
        DropExplicit();
    } else {
        SetImplicit(action, false);
    }
}

void ToolGroup::SetImplicit(ZKActivateAction* action, bool checked)
{
    if (!action->m_bInGroup) {
        SetStates(action, action->m_bChecked, checked);
    } else if (checked) {
        Run(action);
    } else if (action == m_pImplicit) {
        Run(action == m_pExplicit ? nullptr : m_pExplicit);
    }
}

void ToolGroup::Choose(ZKActivateAction* next)
{
    const QPointer<ZKActivateAction> incoming = next;
    const bool otherRuns = m_pImplicit != next && m_pImplicit != m_pExplicit;
    if (otherRuns && !Run(nullptr)) return;
    if (m_pExplicit != next && !DropExplicit()) return;
    if (incoming.isNull()) return;

    m_pExplicit = next;
    m_pImplicit = next;
    SetStates(next, true, true);
}

bool ToolGroup::DropExplicit()
{
    ZKActivateAction* const outgoing = m_pExplicit;
    if (outgoing == nullptr) return true;
    m_pExplicit = nullptr;
    if (m_pImplicit == outgoing) m_pImplicit = nullptr;
    return SetStates(outgoing, false, false);
}

bool ToolGroup::Run(ZKActivateAction* next)
{
    ZKActivateAction* const outgoing = m_pImplicit;
    if (outgoing == next) return true;

    const QPointer<ZKActivateAction> incoming = next;
    m_pImplicit = nullptr;
    if (outgoing != nullptr && !SetStates(outgoing, outgoing->m_bChecked, false)) return false;
    if (incoming.isNull()) return true;

    m_pImplicit = next;
    return SetStates(next, next->m_bChecked, true);
}

bool ToolGroup::SetStates(ZKActivateAction* action, bool checked, bool implicitlyChecked)
{
    const bool toggled = action->m_bChecked != checked;
    const bool implicitToggled = action->m_bImplicitlyChecked != implicitlyChecked;
    if (!toggled && !implicitToggled) return true;

    action->m_bChecked = checked;
    action->m_bImplicitlyChecked = implicitlyChecked;
    const unsigned int change = ++m_Change;
    const QPointer<ZKActivateAction> alive = action;
    if (toggled) emit action->Toggled(checked);
    if (implicitToggled && change == m_Change && !alive.isNull()) {
        emit action->ImplicitToggled(implicitlyChecked);
    }
    return change == m_Change;
}
