#include "magicwand/MagicWandTool.h"

#include "magicwand/MagicWand_p.h"

MagicWandTool::MagicWandTool() : m_pPrivate(new MagicWandPrivate(this)) {}

MagicWandTool::~MagicWandTool() = default;

bool MagicWandTool::Activate(bool active)
{
    return m_pPrivate->Activate(active);
}

bool MagicWandTool::IsActive()
{
    return m_pPrivate->IsActive();
}

ZKActivateAction* MagicWandTool::GetActivateAction()
{
    return m_pPrivate->GetActivateAction();
}

void MagicWandTool::SetToolBox(LToolBoxWidget* toolBox)
{
    m_pPrivate->SetToolBox(toolBox);
}

void MagicWandTool::SetToolBarManager(ZKToolBarManager* manager)
{
    m_pPrivate->SetToolBarManager(manager);
}

void MagicWandTool::SetToolWidgetManager(LXToolWidgetManager*) {}

void MagicWandTool::SetLayersWidget(LayersWidget*) {}

void MagicWandTool::SaveSettings()
{
    m_pPrivate->SaveSettings();
}

void MagicWandTool::LoadSettings()
{
    m_pPrivate->LoadSettings();
}

bool MagicWandTool::SetDocumentView(IDocumentView* view)
{
    return m_pPrivate->SetDocumentView(view);
}

quint64 MagicWandTool::GetDocumentViewState()
{
    return 0;
}

void MagicWandTool::DocumentViewStateChanged(const quint64&, const quint64&) {}
