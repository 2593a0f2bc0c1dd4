#pragma once

#include <QList>
#include <QtPlugin>

class ZKPlugin;

/// What the editor calls in a plug-in object, which it finds by this interface's identifier. Second base
/// of every plug-in object. Main thread only.
class ZKIPluginContainer
{
public:
    /// Builds and registers the units. Called once, when all of the editor's singletons stand.
    virtual void Init() = 0;

    /// Saves settings and gives everything back. Called once, while all of the editor's singletons live.
    virtual void Shutdown() = 0;

    /// The registered units, in the order of their registration.
    virtual QList<ZKPlugin*> GetPlugins() = 0;

    virtual ~ZKIPluginContainer() = default;
};

Q_DECLARE_INTERFACE(ZKIPluginContainer, "ZKIPluginContainer/1.0")
