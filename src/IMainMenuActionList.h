#pragma once

#include "MainMenuEntry.h"

#include <QList>
#include <QtPlugin>

class QAction;

/// A tool with entries in the main menu. The actions stay the tool's. Main thread only.
class IMainMenuActionList
{
public:
    virtual ~IMainMenuActionList() = default;

    virtual QList<QAction*> GetMenuActions() = 0;
    virtual QList<QAction*> GetToolBarActions() = 0;

    /// Everything that the tool placed in the main menu.
    virtual MainMenuEntries GetMainMenuEntries() = 0;
};

Q_DECLARE_INTERFACE(IMainMenuActionList, "IMainMenuActionList/1.0")
