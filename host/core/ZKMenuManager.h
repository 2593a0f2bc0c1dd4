#pragma once

#include "ZKHostExport.h"

class QAction;
class QMenu;

/// Places entries in the main menu. They may come before there is a menu bar or after. Entries keep their
/// owners, and go when they are destroyed. Null entries are ignored. Main thread only.
class ZK_HOST_EXPORT ZKMenuManager
{
public:
    /// The menus of the bar, in their order from the left.
    enum MenuRole
    {
        File = 0,
        Edit = 1,
        Image = 2,
        Layer = 3,
        Selection = 4,
        View = 5,
        Window = 6,
        Help = 7,
    };

    ZKMenuManager() = delete;

    /// Puts the menu into the bar itself, behind the menu of that role.
    static void CreateMenu(MenuRole role, QMenu* menu);

    /// Puts the menu into the menu of that role. Entries stand by rising position; equal positions in the
    /// order of coming.
    static void CreateMenu(MenuRole role, int position, QMenu* menu);

    /// The same for an action; a separator is an action too.
    static void CreateAction(MenuRole role, int position, QAction* action);
};
