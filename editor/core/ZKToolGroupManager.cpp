#include "core/ZKToolGroupManager.h"

#include "core/ToolGroup.h"

void ZKToolGroupManager::Add(ZKActivateAction* action)
{
    ToolGroup::Instance().Add(action);
}

bool ZKToolGroupManager::Activate(ZKActivateAction* action)
{
    return ToolGroup::Instance().Activate(action);
}

ZKActivateAction* ZKToolGroupManager::GetExplicitAction()
{
    return ToolGroup::Instance().ExplicitAction();
}

ZKActivateAction* ZKToolGroupManager::GetImplicitAction()
{
    return ToolGroup::Instance().ImplicitAction();
}
