#include "LXMenuModalTool.h"

#include "LXMenuModalToolBase.h"

#include <utility>

LXMenuModalTool::LXMenuModalTool(LXMenuModalToolBase* tool) : m_pTool(tool)
{
    // The view lock is taken in the name of the tool's parent.
    if (m_pTool) m_pTool->setParent(this);
}

LXMenuModalTool::~LXMenuModalTool()
{
    delete std::exchange(m_pTool, nullptr);
}

bool LXMenuModalTool::SetDocumentView(IDocumentView* view)
{
    return m_pTool && m_pTool->SetDocumentView(view);
}

QList<QAction*> LXMenuModalTool::GetMenuActions()
{
    return m_pTool ? m_pTool->GetMenuActions() : QList<QAction*>();
}

QList<QAction*> LXMenuModalTool::GetToolBarActions()
{
    return m_pTool ? m_pTool->GetToolBarActions() : QList<QAction*>();
}

MainMenuEntries LXMenuModalTool::GetMainMenuEntries()
{
    return m_pTool ? m_pTool->GetMainMenuEntries() : MainMenuEntries();
}
