#include "app/FileMenu.h"

#include "app/DocumentFiles.h"
#include "app/EmptyPage.h"
#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "app/NewDocumentDialog.h"
#include "app/RecentFiles.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>

FileMenu::FileMenu(MainWindow* window, DocumentFiles* files, RecentFiles* recentFiles)
    : QObject(window),
      m_pWindow(window),
      m_pFiles(files),
      m_pRecentFiles(recentFiles),
      m_pRecentMenu(new QMenu(tr("Open &Recent"), window))
{
    BuildActions();

    const EmptyPage* page = window->GetEmptyPage();
    connect(page, &EmptyPage::NewRequested, this, &FileMenu::AskAndCreate);
    connect(page, &EmptyPage::OpenRequested, this, &FileMenu::AskAndOpen);
    connect(page, &EmptyPage::FileRequested, this, [this](const QString& path) { OpenAll({path}); });
    connect(window, &MainWindow::FilesDropped, this, &FileMenu::OpenAll);
    connect(window, &MainWindow::ActiveViewChanged, this, &FileMenu::UpdateActions);
    connect(recentFiles, &RecentFiles::Changed, this, &FileMenu::RebuildRecentMenu);
    // Files come and go without telling.
    connect(m_pRecentMenu, &QMenu::aboutToShow, this, &FileMenu::RebuildRecentMenu);
    RebuildRecentMenu();
    UpdateActions();
}

void FileMenu::BuildActions()
{
    const auto add = [this](int position, const QString& text, const QString& hint, const QKeySequence& key,
                            const QString& icon = QString()) {
        return AddMenuAction(this, {ZKMenuManager::File, position, text, hint, {key}, icon});
    };
    QAction* create =
        add(0, tr("&New…"), tr("Starts with an empty picture"), Qt::CTRL + Qt::Key_N, "theme:file_new.png");
    QAction* open =
        add(10, tr("&Open…"), tr("Opens pictures from files"), Qt::CTRL + Qt::Key_O, "theme:file_open.png");
    ZKMenuManager::CreateMenu(ZKMenuManager::File, 20, m_pRecentMenu);
    AddMenuSeparator(this, ZKMenuManager::File, 30);
    m_pSave = add(40, tr("&Save"), tr("Saves the picture to its file"), Qt::CTRL + Qt::Key_S,
                  "theme:file_save.png");
    m_pSaveAs = add(50, tr("Save &As…"), tr("Saves the picture to another file"),
                    Qt::CTRL + Qt::SHIFT + Qt::Key_S, "theme:file_save_as.png");
    m_pExport = add(55, tr("&Export…"), tr("Writes a flat copy of the picture, such as PNG or JPEG"),
                    Qt::CTRL + Qt::SHIFT + Qt::Key_E);
    AddMenuSeparator(this, ZKMenuManager::File, 60);
    m_pClose = add(70, tr("&Close"), tr("Closes the picture"), Qt::CTRL + Qt::Key_W, "theme:close.png");
    AddMenuSeparator(this, ZKMenuManager::File, 80);
    QAction* quit =
        add(90, tr("&Quit"), tr("Closes all pictures and ends the program"), Qt::CTRL + Qt::Key_Q);

    connect(create, &QAction::triggered, this, &FileMenu::AskAndCreate);
    connect(open, &QAction::triggered, this, &FileMenu::AskAndOpen);
    connect(m_pSave, &QAction::triggered, this, [this] { m_pFiles->Save(m_pWindow->GetActiveDocument()); });
    connect(m_pSaveAs, &QAction::triggered, this,
            [this] { m_pFiles->SaveAs(m_pWindow->GetActiveDocument()); });
    connect(m_pExport, &QAction::triggered, this,
            [this] { m_pFiles->Export(m_pWindow->GetActiveDocument()); });
    connect(m_pClose, &QAction::triggered, this, [this] { m_pFiles->Close(m_pWindow->GetActiveDocument()); });
    connect(quit, &QAction::triggered, m_pWindow, &QWidget::close);
}

void FileMenu::AskAndCreate()
{
    NewDocumentDialog dialog(m_pWindow);
    if (dialog.Exec() == QDialog::Accepted) m_pFiles->New(dialog.GetSize(), dialog.GetBackground());
}

void FileMenu::AskAndOpen()
{
    OpenAll(m_pFiles->AskForFiles());
}

void FileMenu::OpenAll(const QStringList& paths)
{
    for (const QString& path : paths)
        m_pFiles->Open(path);
}

void FileMenu::RebuildRecentMenu()
{
    m_pRecentMenu->clear();
    const QStringList paths = m_pRecentFiles->GetExisting();
    for (const QString& path : paths) {
        QAction* action = m_pRecentMenu->addAction(QFileInfo(path).fileName().replace('&', "&&"));
        action->setStatusTip(QDir::toNativeSeparators(path));
        connect(action, &QAction::triggered, this, [this, path] { OpenAll({path}); });
    }
    m_pRecentMenu->setEnabled(!paths.isEmpty());
    if (paths.isEmpty()) return;

    m_pRecentMenu->addSeparator();
    QAction* clear = m_pRecentMenu->addAction(tr("&Clear List"));
    connect(clear, &QAction::triggered, m_pRecentFiles, &RecentFiles::Clear);
}

void FileMenu::UpdateActions()
{
    for (QAction* action : {m_pSave, m_pSaveAs, m_pExport, m_pClose}) {
        action->setEnabled(m_pWindow->GetActiveView() != nullptr);
    }
}
