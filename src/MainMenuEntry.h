#pragma once

#include <set>
#include <vector>

class QAction;
class QMenu;

/// A place in the main menu with what stands there. Building one puts it there; copies only record.
struct MainMenuEntry
{
    /// @param entryPath  the menu's role, then the position in that menu. Two elements place the action;
    /// any other number only records it.
    MainMenuEntry(const std::vector<int>& entryPath, QAction* action);

    /// The same for a sub menu; a path of the role alone puts the menu into the menu bar.
    MainMenuEntry(const std::vector<int>& entryPath, QMenu* menu);

    QAction* pAction = nullptr; ///< null for a sub menu
    void* pReserved = nullptr;  ///< always null
    QMenu* pMenu = nullptr;     ///< null for an action
    std::vector<int> path;      ///< the menu's role, then the position in it
};

/// By path, a shorter path before the longer ones that begin with it.
bool operator<(const MainMenuEntry& left, const MainMenuEntry& right);

/// Entries in their order; equal paths stand in the order of insertion.
using MainMenuEntries = std::multiset<MainMenuEntry>;
