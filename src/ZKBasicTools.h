#pragma once

#include "plugincore/ZKIPluginContainer.h"
#include "plugincore/ZKPluginContainer.h"

#include <memory>

class ZKButtonsContainer;
class ZKOldToolContainer;
struct ToolRow;

/// The plug-in's object: builds all tools at the start and takes them down at the end. Main thread only.
class ZKBasicTools : public ZKPluginContainer, public ZKIPluginContainer
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "basic tools/1.0")
    Q_INTERFACES(ZKIPluginContainer)

public:
    ZKBasicTools();
    ~ZKBasicTools() override;

    void Init() override;
    void Shutdown() override;
    QList<ZKPlugin*> GetPlugins() override;

private:
    void RegisterTool(const ToolRow& row);
    QObject* FindTool(const QString& name);

    std::unique_ptr<ZKOldToolContainer> m_pToolContainer;
    std::unique_ptr<ZKButtonsContainer> m_pColorButtons; // stays after Shutdown()
};
