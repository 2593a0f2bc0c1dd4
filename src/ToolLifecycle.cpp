#include "ToolLifecycle.h"

#include "ITool.h"

#include "core/ZKToolBarManager.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/LayersWidget.h"

#include <QObject>

namespace {
QList<ITool*> ToolsAmong(const QList<QObject*>& objects)
{
    QList<ITool*> tools;
    for (QObject* object : objects) {
        if (auto* tool = qobject_cast<ITool*>(object)) tools.append(tool);
    }
    return tools;
}
} // namespace

void ConnectTools(const QList<QObject*>& objects)
{
    const QList<ITool*> tools = ToolsAmong(objects);
    for (ITool* tool : tools) {
        tool->SetToolBarManager(ZKToolBarManager::GetInstance());
        tool->SetToolWidgetManager(LXToolWidgetManager::instance());
        tool->SetToolBox(LToolBoxWidget::GetInstance());
        tool->SetLayersWidget(LayersWidget::GetInstance());
        ZKToolGroupManager::Add(tool->GetActivateAction());
    }
}

ZKActivateAction* ActionOf(QObject* object)
{
    auto* tool = qobject_cast<ITool*>(object);
    return tool ? tool->GetActivateAction() : nullptr;
}

void LoadTools(const QList<QObject*>& objects)
{
    const QList<ITool*> tools = ToolsAmong(objects);
    for (ITool* tool : tools) {
        tool->LoadSettings();
    }
}

void SaveTools(const QList<QObject*>& objects)
{
    const QList<ITool*> tools = ToolsAmong(objects);
    for (ITool* tool : tools) {
        tool->SaveSettings();
    }
}
