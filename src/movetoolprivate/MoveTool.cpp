#include "movetoolprivate/MoveTool.h"

#include "movetoolprivate/MoveTool_p.h"

MoveTool::MoveTool() : m_pPrivate(new MoveToolPrivate(this)) {}

MoveTool::~MoveTool() = default;

bool MoveTool::Activate(bool active)
{
    return m_pPrivate->Activate(active);
}

bool MoveTool::IsActive()
{
    return m_pPrivate->IsActive();
}

ZKActivateAction* MoveTool::GetActivateAction()
{
    return m_pPrivate->GetActivateAction();
}

void MoveTool::SetToolBox(LToolBoxWidget* toolBox)
{
    m_pPrivate->SetToolBox(toolBox);
}

void MoveTool::SetToolBarManager(ZKToolBarManager* manager)
{
    m_pPrivate->SetToolBarManager(manager);
}

void MoveTool::SetToolWidgetManager(LXToolWidgetManager*) {}

void MoveTool::SetLayersWidget(LayersWidget*) {}

void MoveTool::SaveSettings()
{
    m_pPrivate->SaveSettings();
}

void MoveTool::LoadSettings()
{
    m_pPrivate->LoadSettings();
}

bool MoveTool::SetDocumentView(IDocumentView* view)
{
    return m_pPrivate->SetDocumentView(view);
}

quint64 MoveTool::GetDocumentViewState()
{
    return 0;
}

void MoveTool::DocumentViewStateChanged(const quint64&, const quint64&) {}
