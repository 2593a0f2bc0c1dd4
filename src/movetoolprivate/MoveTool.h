#pragma once

#include "IDocumentViewState.h"
#include "IDocumentViewTool.h"
#include "ITool.h"

#include <QObject>

class MoveToolPrivate;

/// The move tool as the editor knows it: every call is handed on to the tool. Main thread only.
///
/// It has the operations of IDocumentViewState but doesn't offer them to the editor: nothing in it depends
/// on the state bits of the view.
class MoveTool : public QObject, public ITool, public IDocumentViewTool, public IDocumentViewState
{
    Q_OBJECT
    Q_INTERFACES(ITool IDocumentViewTool)

public:
    MoveTool();
    ~MoveTool() override;

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

private:
    MoveToolPrivate* m_pPrivate;
};
