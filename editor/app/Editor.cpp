#include "app/Editor.h"

#include "app/ChannelMenu.h"
#include "app/ClipboardMenu.h"
#include "app/DocumentFiles.h"
#include "app/DragAidsMenu.h"
#include "app/EditMenu.h"
#include "app/EmptyPage.h"
#include "app/FileMenu.h"
#include "app/FlatFile.h"
#include "app/FormatLimitSettings.h"
#include "app/GuideMenu.h"
#include "app/HelpMenu.h"
#include "app/LayerMenu.h"
#include "app/MainWindow.h"
#include "app/ModifyMenu.h"
#include "app/PictureDrops.h"
#include "app/PreferencesUse.h"
#include "app/ProfileMenu.h"
#include "app/RecentFiles.h"
#include "app/ViewMenu.h"
#include "app/WindowMenu.h"
#include "core/IccSearch.h"
#include "core/ZKApplication_p.h"
#include "gui/LXMdiArea_p.h"
#include "gui/LexoAppKeyHook.h"
#include "gui/MimeFileReader.h"
#include "gui/RoundBrush.h"
#include "guicore/InputHabits.h"
#include "plugincore/PluginLoader.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QSize>
#include <QTimer>

#include <dlfcn.h>

/// In the order in which they are built; they go in the opposite one.
struct EditorParts
{
    InputHabits habits{qApp};
    RoundBrush brush;
    RecentFiles recentFiles;
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<DocumentFiles> files;
    PluginLoader plugin;
};

QString Editor::DefaultPluginFile()
{
    Dl_info library{};
    if (!dladdr(&Editor::staticMetaObject, &library)) return QString();
    const QDir folder = QFileInfo(QFile::decodeName(library.dli_fname)).canonicalPath();
    return folder.filePath(QStringLiteral("libbasictools.so"));
}

Editor::Editor(ApplicationFolders folders, QString pluginFile)
    : m_Folders(std::move(folders)), m_PluginFile(std::move(pluginFile))
{}

Editor::~Editor()
{
    Shutdown();
}

bool Editor::Start()
{
    Q_ASSERT(!m_pParts);

    ZKApplicationPrivate::Get().SetFolders(m_Folders);
    PreferencesUse::ApplyLook(m_Folders.resources);
    MimeFileReader::Set(FlatFile::IsPicture, FlatFile::Read);
    MimeFileReader::SetBound([](const QSize& size) {
        constexpr int decodersBytes = 4; // of a pixel, beside those of the tiles
        return FormatLimitSettings::Read().Allow(size, decodersBytes);
    });
    // Sees every key from the start on.
    LexoAppKeyHook::instance();

    m_pParts = std::make_unique<EditorParts>();
    BuildWindow();
    if (!m_pParts->plugin.Load(m_PluginFile)) {
        m_ErrorText = m_pParts->plugin.GetErrorText();
        Shutdown();
        return false;
    }
    m_pParts->plugin.SetMainWidget(GetWindow());
    GetWindow()->GetEmptyPage()->setFocus();
    GetWindow()->show();
    // The person's first question comes later than that.
    QTimer::singleShot(0, this, [] { IccSearch::OfProgram().Begin(); });
    return true;
}

void Editor::BuildWindow()
{
    m_pParts->window = std::make_unique<MainWindow>(&m_pParts->recentFiles);
    MainWindow* window = GetWindow();
    m_pParts->files = std::make_unique<DocumentFiles>(window);

    // Children of the window: their actions leave the menus with it.
    new FileMenu(window, GetFiles(), &m_pParts->recentFiles);
    auto* preferences = new PreferencesUse(window, m_Folders.resources);
    new EditMenu(window, preferences);
    new ClipboardMenu(window);
    new PictureDrops(window);
    new ViewMenu(window);
    new GuideMenu(window);
    new DragAidsMenu(window);
    new ProfileMenu(window);
    new LayerMenu(window);
    new ModifyMenu(window);
    new ChannelMenu(window);
    new WindowMenu(window);
    new HelpMenu(window);

    window->SetCloseQuestion([this] { return GetFiles()->CloseAll(); });
    connect(window, &MainWindow::Closed, this, &Editor::Closed);
    connect(GetFiles(), &DocumentFiles::FileUsed, &m_pParts->recentFiles, &RecentFiles::Add);
}

void Editor::Shutdown()
{
    if (!m_pParts) return;

    LXMdiAreaPrivate::Get(GetWindow()->GetDocumentArea())->CloseAllUnasked();
    // Windows and documents of the area go now, while the plug-in and the singletons still stand.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_pParts->plugin.Shutdown();
    m_pParts.reset();
}

MainWindow* Editor::GetWindow() const
{
    return m_pParts ? m_pParts->window.get() : nullptr;
}

DocumentFiles* Editor::GetFiles() const
{
    return m_pParts ? m_pParts->files.get() : nullptr;
}

PluginLoader* Editor::GetPlugin() const
{
    return m_pParts ? &m_pParts->plugin : nullptr;
}
