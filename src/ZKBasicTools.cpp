#include "ZKBasicTools.h"

#include "ColorButton.h"
#include "ToolLifecycle.h"
#include "ToolTable.h"
#include "ZKOldPluginWrapper.h"
#include "ZKOldToolContainer.h"

#include "gui/ZKButtonsContainer.h"

#include <QVariant>

ZKBasicTools::ZKBasicTools() = default;

ZKBasicTools::~ZKBasicTools() = default;

void ZKBasicTools::Init()
{
    m_pToolContainer = std::make_unique<ZKOldToolContainer>();
    for (const ToolRow& row : ToolTable()) {
        RegisterTool(row);
    }
    const QList<QObject*> tools = m_pToolContainer->GetTools();
    ConnectTools(tools);
    m_pColorButtons = MakeColorButton(ActionOf(FindTool(QStringLiteral("Color picker"))),
                                      ActionOf(FindTool(QStringLiteral("Color sampler"))));
    LoadTools(tools);
}

QObject* ZKBasicTools::FindTool(const QString& name)
{
    for (ZKPlugin* plugin : GetPlugins()) {
        if (plugin->GetName() == name) return plugin->property("tool").value<QObject*>();
    }
    return nullptr;
}

void ZKBasicTools::RegisterTool(const ToolRow& row)
{
    QObject* tool = row.Make();
    RegisterPlugin(new ZKOldPluginWrapper(tool, QLatin1String(row.name), QLatin1String(row.id)));
    m_pToolContainer->AddTool(tool);
}

void ZKBasicTools::Shutdown()
{
    if (!m_pToolContainer) return;

    SaveTools(m_pToolContainer->GetTools());
    const QList<ZKPlugin*> plugins = GetPlugins();
    for (ZKPlugin* plugin : plugins) {
        auto* wrapper = qobject_cast<ZKOldPluginWrapper*>(plugin);
        UnregisterPlugin(plugin);
        delete wrapper;
    }
    m_pToolContainer.reset();
}

QList<ZKPlugin*> ZKBasicTools::GetPlugins()
{
    return ZKPluginContainer::GetPlugins();
}
