#include "plugincore/ZKPluginContainer.h"

#include "plugincore/ZKPlugin.h"

class ZKPluginContainerPrivate
{
public:
    QList<ZKPlugin*> plugins;
};

ZKPluginContainer::ZKPluginContainer(QObject* parent)
    : QObject(parent), d_ptr(std::make_unique<ZKPluginContainerPrivate>())
{}

ZKPluginContainer::~ZKPluginContainer() = default;

void ZKPluginContainer::RegisterPlugin(ZKPlugin* plugin)
{
    if (!plugin || d_ptr->plugins.contains(plugin)) return;

    d_ptr->plugins.append(plugin);
    // By the time of the signal the unit is a bare QObject, so its address alone is compared.
    connect(plugin, &QObject::destroyed, this, [this, plugin] { d_ptr->plugins.removeAll(plugin); });
    emit PluginRegistered(plugin);
}

void ZKPluginContainer::UnregisterPlugin(ZKPlugin* plugin)
{
    if (d_ptr->plugins.removeAll(plugin) == 0) return;

    disconnect(plugin, &QObject::destroyed, this, nullptr);
    emit PluginUnregistered(plugin);
}

QList<ZKPlugin*> ZKPluginContainer::GetPlugins() const
{
    return d_ptr->plugins;
}
