#include "app/MainWindow.h"

#include "app/EmptyPage.h"
#include "app/LayerPictures.h"
#include "app/PanelArea.h"
#include "app/StatusReadout.h"
#include "core/MenuPlacement.h"
#include "core/ToolBarArea.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/AdjustmentPanel.h"
#include "gui/ClipboardPanel.h"
#include "gui/ColorWells.h"
#include "gui/HistoryPanel.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiArea_p.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/LXMimePictures.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/LaterUpdate.h"
#include "gui/LayersWidget.h"
#include "gui/PathsWidget.h"
#include "gui/SamplesWidget.h"
#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentWidget.h"
#include "history/LexoUndoStack.h"
#include "resource/LXResource.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>
#include <QWindow>

namespace {
constexpr int ToolBoxMargin = 4;
constexpr QSize DefaultSize(1280, 800);
const QLatin1String GeometryKey("Editor/WindowGeometry");
const QLatin1String PanelsKey("Editor/Panels");
constexpr int PanelsVersion = 6; // counts up when the panels are other ones

QToolBar* MakeFixedBar(const QString& name, const QString& title)
{
    auto* bar = new QToolBar(title);
    bar->setObjectName(name);
    bar->setMovable(false);
    bar->setFloatable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    return bar;
}
} // namespace

MainWindow::MainWindow(RecentFiles* recentFiles)
    : m_pLaterTitle(new LaterUpdate(this, [this] { UpdateTitle(); }))
{
    setObjectName(QStringLiteral("mainWindow"));
    setAcceptDrops(true);
    setContextMenuPolicy(Qt::NoContextMenu);

    m_pStatus = new StatusReadout(this);
    setStatusBar(m_pStatus);
    MenuPlacement::Instance().SetMenuBar(menuBar());
    BuildCenter(recentFiles);
    BuildToolBox();
    BuildOptionBar();
    BuildPanels();

    RestorePlace();
    UpdateTitle();
}

MainWindow::~MainWindow() = default;

void MainWindow::ResetLayout()
{
    setWindowState(windowState() & ~(Qt::WindowFullScreen | Qt::WindowMaximized));
    resize(DefaultSize.boundedTo(screen()->availableSize()));
    m_pPanels->Reset();
}

void MainWindow::RestorePlace()
{
    resize(DefaultSize.boundedTo(screen()->availableSize()));
    // Takes care that the window is not beyond the screens of today.
    restoreGeometry(ZKApplication::GetUserValue(GeometryKey, QByteArray()).toByteArray());
    restoreState(ZKApplication::GetUserValue(PanelsKey, QByteArray()).toByteArray(), PanelsVersion);
}

void MainWindow::StorePlace() const
{
    ZKApplication::SetUserValue(GeometryKey, saveGeometry());
    ZKApplication::SetUserValue(PanelsKey, saveState(PanelsVersion));
}

ZKDocumentView* MainWindow::GetActiveView() const
{
    const LXMdiSubWindow* window = m_pArea->GetActiveWindow();
    const auto* widget = window ? qobject_cast<ZKDocumentWidget*>(window->GetWidget()) : nullptr;
    return widget ? widget->GetView() : nullptr;
}

LXDocumentInterface* MainWindow::GetActiveDocument() const
{
    const ZKDocumentView* view = GetActiveView();
    return view ? view->GetModel()->GetDocument() : nullptr;
}

void MainWindow::SetFullScreen(bool fullScreen)
{
    setWindowState(fullScreen ? windowState() | Qt::WindowFullScreen : windowState() & ~Qt::WindowFullScreen);
}

void MainWindow::BuildCenter(RecentFiles* recentFiles)
{
    m_pArea = LXDocumentManager::GetDocumentArea();
    setCentralWidget(m_pArea);
    m_pEmptyPage = new EmptyPage(recentFiles);
    LXMdiAreaPrivate::Get(m_pArea)->SetEmptyPage(m_pEmptyPage);
    connect(m_pArea, &LXMdiArea::SubWindowActivated, this, &MainWindow::FollowActiveView);
}

void MainWindow::BuildToolBox()
{
    auto* column = new QWidget;
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(ToolBoxMargin, ToolBoxMargin, ToolBoxMargin, ToolBoxMargin);
    layout->setSpacing(8);
    layout->addWidget(LToolBoxWidget::GetInstance(), 1);
    layout->addWidget(new ColorWells(column), 0, Qt::AlignHCenter);

    QToolBar* bar = MakeFixedBar(QStringLiteral("toolBox"), tr("Tools"));
    bar->addWidget(column);
    addToolBar(Qt::LeftToolBarArea, bar);
}

void MainWindow::BuildOptionBar()
{
    QToolBar* bar = MakeFixedBar(QStringLiteral("optionBar"), tr("Tool options"));
    auto* area = new ToolBarArea;
    bar->addWidget(area);
    addToolBar(Qt::TopToolBarArea, bar);
    connect(area, &ToolBarArea::ShownBarChanged, m_pStatus, [this](const QWidget* optionBar) {
        m_pStatus->SetHint(optionBar ? optionBar->statusTip() : QString());
    });
}

void MainWindow::BuildPanels()
{
    m_pPanels = new PanelArea(this);
    m_pHistoryPanel = new HistoryPanel;
    m_pPathsPanel = new PathsWidget;
    m_pSamplesPanel = new SamplesWidget;
    m_pAdjustmentPanel = new AdjustmentPanel;
    m_pPanels->Add(PanelArea::ToolGroup, QStringLiteral("toolPanel"), tr("Tool"),
                   LXToolWidgetManager::instance());
    m_pPanels->Add(PanelArea::DocumentGroup, QStringLiteral("layersPanel"), tr("Layers"),
                   LayersWidget::GetInstance());
    m_pPanels->Add(PanelArea::DocumentGroup, QStringLiteral("pathsPanel"), tr("Paths"), m_pPathsPanel);
    m_pPanels->Add(PanelArea::DocumentGroup, QStringLiteral("historyPanel"), tr("History"), m_pHistoryPanel);
    m_pPanels->Add(PanelArea::DocumentGroup, QStringLiteral("clipboardPanel"), tr("Clipboard"),
                   new ClipboardPanel(LayersWidget::GetInstance()));
    m_pPanels->Add(PanelArea::ToolGroup, QStringLiteral("samplesPanel"), tr("Samples"), m_pSamplesPanel);
    m_pPanels->Add(PanelArea::ToolGroup, QStringLiteral("adjustmentPanel"), tr("Adjustment"),
                   m_pAdjustmentPanel);
}

void MainWindow::FollowActiveView()
{
    if (m_pView) {
        m_pView->GetHistory()->disconnect(m_pLaterTitle);
        m_pView->GetModel()->GetDocument()->disconnect(this);
    }

    m_pView = GetActiveView();
    if (m_pView) {
        // The view would swallow dropped files, which are the window's to open.
        m_pView->setAcceptDrops(false);
        m_pView->viewport()->setAcceptDrops(false);
        const LXDocumentInterface* document = m_pView->GetModel()->GetDocument();
        connect(document, &LXDocumentInterface::DocumentNameChanged, this, &MainWindow::UpdateTitle);
        connect(document, &LXDocumentInterface::DocumentStateChanged, this, &MainWindow::UpdateTitle);
        connect(m_pView->GetHistory(), &LexoUndoStack::historyChanged, m_pLaterTitle,
                &LaterUpdate::AskAfterPicture);
    }
    LayersWidget::GetInstance()->SetView(m_pView);
    m_pPathsPanel->SetView(m_pView);
    m_pHistoryPanel->SetView(m_pView);
    m_pSamplesPanel->SetView(m_pView);
    m_pAdjustmentPanel->SetView(m_pView);
    m_pStatus->SetView(m_pView);
    UpdateTitle();
    emit ActiveViewChanged(m_pView);
}

void MainWindow::UpdateTitle()
{
    const QString product = LXResource::GetData(LXResource::ProductName).toString();
    const LXDocumentInterface* document = GetActiveDocument();
    if (!document) {
        setWindowTitle(product);
        setWindowModified(false);
        return;
    }
    setWindowTitle(tr("%1[*] – %2").arg(document->GetDocumentName().replace("[*]", "[*][*]"), product));
    setWindowModified(document->GetDocumentState() > 0 || !m_pView->GetHistory()->isClean());
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) emit FullScreenChanged(isFullScreen());
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    // Before there is none to follow, and the saved place may be on another screen.
    connect(windowHandle(), &QWindow::screenChanged, this, &MainWindow::ScreenChanged, Qt::UniqueConnection);
    emit ScreenChanged();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_CloseQuestion && !m_CloseQuestion()) {
        event->ignore();
        return;
    }
    event->accept();
    StorePlace();
    emit Closed();
}

QStringList MainWindow::LocalFiles(const QMimeData* content)
{
    QStringList paths;
    const QList<QUrl> urls = content->urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile()) paths.append(url.toLocalFile());
    }
    return paths;
}

ZKDocumentView* MainWindow::ViewAt(const QPoint& pos) const
{
    ZKDocumentView* view = GetActiveView();
    if (!view) return nullptr;
    const QWidget* viewport = view->viewport();
    return viewport->isVisible() && viewport->rect().contains(viewport->mapFrom(this, pos)) ? view : nullptr;
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    const QMimeData* content = event->mimeData();
    if (!LocalFiles(content).isEmpty() || LXMimePictures::HasPictures(content)) event->acceptProposedAction();
}

void MainWindow::dragMoveEvent(QDragMoveEvent* event)
{
    // Files have a place everywhere, pictures only on a canvas; there both become layers.
    const ZKDocumentView* view = ViewAt(event->pos());
    const bool isWelcome = view ? LayerPictures::MayAdd(view) : !LocalFiles(event->mimeData()).isEmpty();
    event->setAccepted(isWelcome);
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QMimeData* content = event->mimeData();
    if (const ZKDocumentView* view = ViewAt(event->pos())) {
        if (!LayerPictures::MayAdd(view)) {
            event->ignore();
            return;
        }
        event->acceptProposedAction();
        const QPoint viewPos = view->viewport()->mapFrom(this, event->pos());
        emit DroppedOnCanvas(content, view->mapToScene(viewPos));
        return;
    }
    const QStringList paths = LocalFiles(content);
    if (paths.isEmpty()) return;

    event->acceptProposedAction();
    emit FilesDropped(paths);
}
