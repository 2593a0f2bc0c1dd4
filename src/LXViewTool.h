#pragma once

#include "IDocumentViewState.h"
#include "IDocumentViewTool.h"
#include "IMainMenuActionList.h"
#include "ITool.h"

#include "plugincore/IWidgetTool.h"

#include <QObject>

class LXViewToolBase;

/// Presents one view tool through the tool interfaces. Every call is handed on to the tool, and is harmless
/// without one. Main thread only.
class LXViewTool : public QObject,
                   public ITool,
                   public IDocumentViewTool,
                   public IDocumentViewState,
                   public IMainMenuActionList,
                   public IWidgetTool
{
    Q_OBJECT
    Q_INTERFACES(ITool IDocumentViewTool IDocumentViewState IMainMenuActionList IWidgetTool)

public:
    /// Takes the tool over, builds its widgets and becomes its parent. Null is allowed.
    explicit LXViewTool(LXViewToolBase* tool);

    /// Deletes the tool.
    ~LXViewTool() override;

    bool Activate(bool active) override;
    bool IsActive() override;
    ZKActivateAction* GetActivateAction() override;
    void SetToolBox(LToolBoxWidget* toolBox) override;
    void SetToolBarManager(ZKToolBarManager* manager) override;
    void SetToolWidgetManager(LXToolWidgetManager* manager) override;
    void SetLayersWidget(LayersWidget* layersWidget) override;
    void SaveSettings() override;
    void LoadSettings() override;

    bool SetDocumentView(IDocumentView* view) override;

    quint64 GetDocumentViewState() override;
    void DocumentViewStateChanged(const quint64& oldState, const quint64& newState) override;

    QList<QAction*> GetMenuActions() override;
    QList<QAction*> GetToolBarActions() override;
    MainMenuEntries GetMainMenuEntries() override;

    void SetMainWidget(QWidget* widget) override;

private:
    LXViewToolBase* m_pTool;
};
