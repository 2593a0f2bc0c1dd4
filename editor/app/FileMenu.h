#pragma once

#include <QObject>

class DocumentFiles;
class MainWindow;
class QAction;
class QMenu;
class RecentFiles;

/// The menu "File", and what the empty page and dropped files ask for. Main thread only.
class FileMenu : public QObject
{
    Q_OBJECT

public:
    /// All three outlive the menu.
    FileMenu(MainWindow* window, DocumentFiles* files, RecentFiles* recentFiles);

private:
    void BuildActions();
    void AskAndCreate();
    void AskAndOpen();
    void OpenAll(const QStringList& paths);
    void RebuildRecentMenu();
    void UpdateActions();

    MainWindow* m_pWindow;
    DocumentFiles* m_pFiles;
    RecentFiles* m_pRecentFiles;
    QMenu* m_pRecentMenu;
    QAction* m_pSave = nullptr;
    QAction* m_pSaveAs = nullptr;
    QAction* m_pExport = nullptr;
    QAction* m_pClose = nullptr;
};
