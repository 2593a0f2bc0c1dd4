#pragma once

#include "ZKHostExport.h"

#include <QList>
#include <QObject>

#include <memory>

class ZKPlugin;
class ZKPluginContainerPrivate;

/// The list of a plug-in object's units, in the order of their registration. First base of every plug-in
/// object. The units are not owned; one that is deleted leaves the list by itself. Main thread only.
class ZK_HOST_EXPORT ZKPluginContainer : public QObject
{
    Q_OBJECT

public:
    explicit ZKPluginContainer(QObject* parent = nullptr);
    ~ZKPluginContainer() override;

    /// Appends a unit. Null and a unit that is in the list already are ignored.
    void RegisterPlugin(ZKPlugin* plugin);

    /// Takes a unit out without deleting it. Null and a unit that is not in the list are ignored.
    void UnregisterPlugin(ZKPlugin* plugin);

    /// A copy of the list, in the order of registration.
    QList<ZKPlugin*> GetPlugins() const;

signals:
    /// Sent after the unit was appended.
    void PluginRegistered(ZKPlugin* plugin);

    /// Sent after the unit left the list by UnregisterPlugin(); a deleted unit leaves in silence.
    void PluginUnregistered(ZKPlugin* plugin);

private:
    std::unique_ptr<ZKPluginContainerPrivate> d_ptr;
};
