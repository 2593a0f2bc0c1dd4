#include "LXViewTool.h"

#include "LXViewToolBase.h"

#include <utility>

LXViewTool::LXViewTool(LXViewToolBase* tool) : m_pTool(tool)
{
    if (m_pTool) m_pTool->Init(this);
}

LXViewTool::~LXViewTool()
{
    // A tool that gives its locks back changes the view's state, which comes back to this adapter.
    delete std::exchange(m_pTool, nullptr);
}

bool LXViewTool::Activate(bool active)
{
    return m_pTool && m_pTool->Activate(active);
}

bool LXViewTool::IsActive()
{
    return m_pTool && m_pTool->IsActive();
}

ZKActivateAction* LXViewTool::GetActivateAction()
{
    return m_pTool ? m_pTool->GetActivateAction() : nullptr;
}

void LXViewTool::SetToolBox(LToolBoxWidget* toolBox)
{
    if (m_pTool) m_pTool->SetToolBox(toolBox);
}

void LXViewTool::SetToolBarManager(ZKToolBarManager* manager)
{
    if (m_pTool) m_pTool->SetToolBarManager(manager);
}

void LXViewTool::SetToolWidgetManager(LXToolWidgetManager* manager)
{
    if (m_pTool) m_pTool->SetToolWidgetManager(manager);
}

void LXViewTool::SetLayersWidget(LayersWidget* layersWidget)
{
    if (m_pTool) m_pTool->SetLayersWidget(layersWidget);
}

void LXViewTool::SaveSettings()
{
    if (m_pTool) m_pTool->SaveSettings();
}

void LXViewTool::LoadSettings()
{
    if (m_pTool) m_pTool->LoadSettings();
}

bool LXViewTool::SetDocumentView(IDocumentView* view)
{
    return m_pTool && m_pTool->SetDocumentView(view);
}

quint64 LXViewTool::GetDocumentViewState()
{
    return m_pTool ? m_pTool->GetDocumentViewState() : 0;
}

void LXViewTool::DocumentViewStateChanged(const quint64& oldState, const quint64& newState)
{
    if (m_pTool) emit m_pTool->OnDocumentStateChanged(oldState, newState);
}

QList<QAction*> LXViewTool::GetMenuActions()
{
    return m_pTool ? m_pTool->GetMenuActions() : QList<QAction*>();
}

QList<QAction*> LXViewTool::GetToolBarActions()
{
    return m_pTool ? m_pTool->GetToolBarActions() : QList<QAction*>();
}

MainMenuEntries LXViewTool::GetMainMenuEntries()
{
    return m_pTool ? m_pTool->GetMainMenuEntries() : MainMenuEntries();
}

void LXViewTool::SetMainWidget(QWidget* widget)
{
    if (m_pTool) m_pTool->SetMainWidget(widget);
}
