#include "selectionmenu/SelectionMenuTool.h"

#include "selectionmenu/SelectMenuTool_p.h"

SelectionMenuTool::SelectionMenuTool(QObject* parent)
    : QObject(parent), m_pPrivate(new SelectionMenuToolPrivate(this))
{}

SelectionMenuTool::~SelectionMenuTool() = default;

bool SelectionMenuTool::SetDocumentView(IDocumentView* view)
{
    return m_pPrivate->SetDocumentView(view);
}

QList<QAction*> SelectionMenuTool::GetMenuActions()
{
    return m_pPrivate->GetMenuActions();
}

QList<QAction*> SelectionMenuTool::GetToolBarActions()
{
    return m_pPrivate->GetToolBarActions();
}

MainMenuEntries SelectionMenuTool::GetMainMenuEntries()
{
    return m_pPrivate->GetMainMenuEntries();
}
