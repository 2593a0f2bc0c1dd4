#pragma once

#include "EditorExport.h"

#include <QCoreApplication>
#include <QList>
#include <QPointer>
#include <QString>

class QWidget;
class ZKIPluginContainer;
class ZKPlugin;

/// Loads the plug-in with the basic tools, starts it, and shuts it down again. Main thread only.
///
/// The plug-in is known by its metadata and its exports alone. Its code stays mapped until the program
/// ends, since types that it registered with Qt outlive it; its object is deleted by Shutdown().
class ZK_EDITOR_EXPORT PluginLoader
{
    Q_DECLARE_TR_FUNCTIONS(PluginLoader)

public:
    PluginLoader() = default;
    ~PluginLoader();

    Q_DISABLE_COPY(PluginLoader)

    /// Loads a file and calls its `Init`. All singletons of the editor must stand by now.
    /// @param path  absolute path of the plug-in.
    /// False when something is loaded already, or when the file is missing, not a plug-in, built for
    /// another Qt or not the plug-in with the basic tools; GetErrorText() says which.
    bool Load(const QString& path);

    /// Why the last Load() failed, for the user; empty after a success.
    QString GetErrorText() const { return m_ErrorText; }

    /// Hands the main widget to every tool that wants it.
    void SetMainWidget(QWidget* widget);

    /// The plug-in's units; empty when nothing is loaded.
    QList<ZKPlugin*> GetPlugins() const;

    /// Calls the plug-in's `Shutdown` and deletes its object. Harmless when nothing is loaded.
    void Shutdown();

private:
    bool Fail(const QString& text);

    QPointer<QObject> m_pInstance;
    ZKIPluginContainer* m_pContainer = nullptr;
    QString m_ErrorText;
};
