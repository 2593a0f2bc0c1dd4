#pragma once

#include "IDocumentViewTool.h"
#include "IMainMenuActionList.h"

#include <QObject>

class SelectionMenuToolPrivate;

/// Presents the selection menu through the tool interfaces. Main thread only.
class SelectionMenuTool : public QObject, public IDocumentViewTool, public IMainMenuActionList
{
    Q_OBJECT
    Q_INTERFACES(IDocumentViewTool IMainMenuActionList)

public:
    explicit SelectionMenuTool(QObject* parent = nullptr);
    ~SelectionMenuTool() override;

    bool SetDocumentView(IDocumentView* view) override;

    QList<QAction*> GetMenuActions() override;
    QList<QAction*> GetToolBarActions() override;
    MainMenuEntries GetMainMenuEntries() override;

private:
    SelectionMenuToolPrivate* m_pPrivate; ///< a child
};
