#pragma once

#include "EditorExport.h"

#include "core/ApplicationFolders.h"

#include <QObject>
#include <QString>

#include <memory>

class DocumentFiles;
class MainWindow;
class PluginLoader;
struct EditorParts;

/// The whole editor as one object: everything is started and shut down here, in one order.
///
/// The program, the tour and the tests start it alike; all they bring is the `QApplication`. One editor at
/// a time; after Shutdown() another one may be started in the same process. Main thread only.
class ZK_EDITOR_EXPORT Editor : public QObject
{
    Q_OBJECT

public:
    /// The plug-in with the basic tools, which lies beside `libzenkari`; an absolute path.
    static QString DefaultPluginFile();

    explicit Editor(ApplicationFolders folders = ApplicationFolders::Default(),
                    QString pluginFile = DefaultPluginFile());

    /// Shuts down when that was not done.
    ~Editor() override;

    /// Builds everything, loads the plug-in and shows the main window. False when a part is missing, such as
    /// the plug-in; GetErrorText() tells which, nothing is shown, and the editor may be deleted.
    bool Start();

    /// Why Start() failed, in words for the user.
    QString GetErrorText() const { return m_ErrorText; }

    /// Closes all documents without a question, then the plug-in, the window and the singletons, so that
    /// the plug-in's `Shutdown` still finds all of them alive. Harmless when not started.
    void Shutdown();

    /// Null before Start() and after Shutdown(), like the other getters.
    MainWindow* GetWindow() const;
    DocumentFiles* GetFiles() const;
    PluginLoader* GetPlugin() const;

signals:
    /// The main window was closed, with all questions answered.
    void Closed();

private:
    void BuildWindow();

    ApplicationFolders m_Folders;
    QString m_PluginFile;
    QString m_ErrorText;
    std::unique_ptr<EditorParts> m_pParts;
};
