#include "MainMenuEntry.h"

#include "core/ZKMenuManager.h"

namespace {
ZKMenuManager::MenuRole RoleOf(const std::vector<int>& path)
{
    return static_cast<ZKMenuManager::MenuRole>(path[0]);
}
} // namespace

MainMenuEntry::MainMenuEntry(const std::vector<int>& entryPath, QAction* action)
    : pAction(action), path(entryPath)
{
    if (path.size() == 2) ZKMenuManager::CreateAction(RoleOf(path), path[1], action);
}

MainMenuEntry::MainMenuEntry(const std::vector<int>& entryPath, QMenu* menu) : pMenu(menu), path(entryPath)
{
    if (path.size() == 2) ZKMenuManager::CreateMenu(RoleOf(path), path[1], menu);
    if (path.size() == 1) ZKMenuManager::CreateMenu(RoleOf(path), menu);
}

bool operator<(const MainMenuEntry& left, const MainMenuEntry& right)
{
    return left.path < right.path;
}
