#include "core/ZKActivateAction.h"

#include "core/ToolGroup.h"

ZKActivateAction::ZKActivateAction(QObject* parent) : QObject(parent) {}

ZKActivateAction::~ZKActivateAction()
{
    if (m_bInGroup) ToolGroup::Instance().Remove(this);
}

void ZKActivateAction::SetChecked(bool checked)
{
    ToolGroup::Instance().SetExplicit(this, checked);
}

void ZKActivateAction::SetImplicitChecked(bool checked)
{
    ToolGroup::Instance().SetImplicit(this, checked);
}

bool ZKActivateAction::IsAllowChange()
{
    return true;
}
