#include "ZKBasicTools.h"

#include "ToolLifecycle.h"
#include "ToolTable.h"
#include "ZKOldPluginWrapper.h"
#include "ZKOldToolContainer.h"

ZKBasicTools::ZKBasicTools() = default;

ZKBasicTools::~ZKBasicTools() = default;

void ZKBasicTools::Init()
{
    m_pToolContainer = std::make_unique<ZKOldToolContainer>();
    for (const ToolRow& row : ToolTable()) {
        RegisterTool(row);
    }
    StartTools(m_pToolContainer->GetTools());
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
