#include "core/ZKMenuManager.h"

#include "core/MenuPlacement.h"

void ZKMenuManager::CreateMenu(MenuRole role, QMenu* menu)
{
    if (menu != nullptr) MenuPlacement::Instance().AddToBar(role, menu->menuAction());
}

void ZKMenuManager::CreateMenu(MenuRole role, int position, QMenu* menu)
{
    if (menu != nullptr) MenuPlacement::Instance().AddToMenu(role, position, menu->menuAction());
}

void ZKMenuManager::CreateAction(MenuRole role, int position, QAction* action)
{
    if (action != nullptr) MenuPlacement::Instance().AddToMenu(role, position, action);
}
