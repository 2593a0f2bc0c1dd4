#include "FillCanFixture.h"

#include "core/ZKApplication.h"
#include "core/ZKToolBarManager.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/LexoAppKeyHook.h"
#include "resource/ResourceFolder.h"
#include "resource/Theme.h"

#include <QApplication>

void FillCanFixture::MakeTool()
{
    Theme::Apply(Theme::Look::Dark, ResourceFolder::Path());
    m_pFixture = std::make_unique<ViewFixture>(8, 6, Qt::white);
    m_pTool = new FillCanPrivate(nullptr);
    m_pAdapter = std::make_unique<LXViewTool>(m_pTool);
    m_pAdapter->SetToolBarManager(ZKToolBarManager::GetInstance());
    m_pAdapter->SetToolBox(LToolBoxWidget::GetInstance());
    m_pAdapter->SetDocumentView(&m_pFixture->ToolView());
    ZKApplication::SetForeground(Qt::red);
    ZKToolGroupManager::Activate(m_pAdapter->GetActivateAction());
}

void FillCanFixture::DropTool()
{
    m_pAdapter.reset();
    m_pFixture.reset();
}

QWidget* FillCanFixture::Bar() const
{
    for (QWidget* widget : QApplication::allWidgets()) {
        if (widget->objectName() == "FillCanToolBar") return widget;
    }
    return nullptr;
}

QWidget* FillCanFixture::Panel() const
{
    return LXToolWidgetManager::instance()->GetCurrentWidget();
}

void FillCanFixture::SendShortcut(const char* key)
{
    emit LexoAppKeyHook::instance()->ShortcutActivated(QKeySequence(key), 0);
}
