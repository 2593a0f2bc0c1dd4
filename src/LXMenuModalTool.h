#pragma once

#include "IDocumentViewTool.h"
#include "IMainMenuActionList.h"

#include <QObject>

class LXMenuModalToolBase;

/// Presents one menu tool through the tool interfaces. Every call is handed on to the tool, and is harmless
/// without one. Main thread only.
class LXMenuModalTool : public QObject, public IDocumentViewTool, public IMainMenuActionList
{
    Q_OBJECT
    Q_INTERFACES(IDocumentViewTool IMainMenuActionList)

public:
    /// Takes the tool over and becomes its parent. Null is allowed.
    explicit LXMenuModalTool(LXMenuModalToolBase* tool);

    /// Deletes the tool.
    ~LXMenuModalTool() override;

    bool SetDocumentView(IDocumentView* view) override;

    QList<QAction*> GetMenuActions() override;
    QList<QAction*> GetToolBarActions() override;
    MainMenuEntries GetMainMenuEntries() override;

private:
    LXMenuModalToolBase* m_pTool;
};
