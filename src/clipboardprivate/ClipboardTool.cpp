#include "clipboardprivate/ClipboardTool.h"

#include "IDocumentView.h"

#include "common/Reports.h"
#include "core/ZKMenuManager.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "gui/LXMdiArea.h"
#include "gui/LXShortcut.h"
#include "gui/LayersWidget.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "utils/ZKIconHelper.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMainWindow>
#include <QSignalBlocker>
#include <QTimerEvent>

namespace {
constexpr int StartDelay = 500; // ms
constexpr int NoTimer = -1;
constexpr int NoLayer = -1;
constexpr int ColumnsAtFirst = 2;

// Places in the menu "Edit".
constexpr int SeparatorPosition = 2;
constexpr int CopyPosition = 3;
constexpr int CopyMergedPosition = 4;
constexpr int CutPosition = 5;
constexpr int PastePosition = 6;
constexpr int PasteAsPosition = 7;
} // namespace

ClipboardTool::ClipboardTool(QObject* parent)
    : QObject(parent),
      m_pModel(new QStandardItemModel(0, ColumnsAtFirst, this)),
      m_pSelectionModel(new QItemSelectionModel(m_pModel, this)),
      m_pPasteAsMenu(std::make_unique<QMenu>(tr("Paste as")))
{
    MakeActions();
    PlaceActions();
    connect(m_pSelectionModel, &QItemSelectionModel::currentRowChanged, this,
            &ClipboardTool::CurrentRowChanged);
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &ClipboardTool::DataChanged);
    LayersWidget::GetInstance()->setClipboardModel(m_pModel, m_pSelectionModel, GetClipboardActions());
}

ClipboardTool::~ClipboardTool()
{
    m_Items.clear();
    {
        QClipboard* clipboard = QGuiApplication::clipboard();
        const QSignalBlocker blocker(clipboard);
        clipboard->clear(QClipboard::Clipboard);
    }
    LayersWidget::GetInstance()->setClipboardModel(nullptr, nullptr, {});
}

// ---- actions

void ClipboardTool::MakeActions()
{
    using Tool = ClipboardTool;
    m_Actions.copy = AddAction(tr("Copy"), tr("Copies what is selected of the layer"), &Tool::StartCopy);
    SetKeys(m_Actions.copy, Qt::CTRL + Qt::Key_C, Qt::CTRL + Qt::Key_Insert);
    m_Actions.copyMerged = AddAction(tr("Copy Merged"), tr("Copies what is selected of all layers together"),
                                     &Tool::StartCopyMerged);
    SetKeys(m_Actions.copyMerged, Qt::CTRL + Qt::SHIFT + Qt::Key_C);
    m_Actions.cut =
        AddAction(tr("Cut"), tr("Copies what is selected, and takes it out of the layer"), &Tool::StartCut);
    SetKeys(m_Actions.cut, Qt::CTRL + Qt::Key_X);
    m_Actions.paste = AddAction(tr("Paste"), tr("Puts the copied picture on the layer"), &Tool::Paste);
    SetKeys(m_Actions.paste, Qt::CTRL + Qt::Key_V, Qt::SHIFT + Qt::Key_Insert);
    m_Actions.newImage =
        AddAction(tr("New image"), tr("Opens the copied picture as a picture of its own"), &Tool::PasteAsNew);
    m_Actions.newLayer = AddAction(tr("New layer"), tr("Puts the copied picture on a new layer"),
                                   &Tool::PasteAsNewLayer, QStringLiteral("theme:layers_white.png"));
    m_Actions.pasteAsNewImage =
        AddAction(tr("Paste as a new image"), tr("Opens the copied picture as a picture of its own"),
                  &Tool::PasteAsNew, QStringLiteral("theme:picture.png"));
    SetKeys(m_Actions.pasteAsNewImage, Qt::CTRL + Qt::SHIFT + Qt::Key_V);
    m_Actions.remove =
        AddAction(tr("Delete from clipboard"), tr("Forgets the chosen picture of the clipboard"),
                  &Tool::Delete, QStringLiteral("theme:deletecurrentpath.png"));
    m_Actions.toSystem =
        AddAction(tr("Copy to system clipboard"), tr("Gives the chosen picture to other programs"),
                  &Tool::OnCopyToSystemClipboard, QStringLiteral("theme:export_clipboard.png"));
}

QAction* ClipboardTool::AddAction(const QString& text, const QString& hint, Slot slot, const QString& icon)
{
    auto* action = new QAction(text, this);
    action->setEnabled(false);
    action->setStatusTip(hint);
    if (!icon.isEmpty()) action->setIcon(ZKIconHelper::DisabledIcon(icon));
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void ClipboardTool::SetKeys(QAction* action, const QKeySequence& key, const QKeySequence& secondKey)
{
    QMainWindow* window = LXMdiArea::MainWindow();
    action->setShortcut(key);
    action->setShortcutContext(Qt::ApplicationShortcut);
    // A key acts only where its action stands on something that is seen; not all of these are in a menu.
    if (window) window->addAction(action);
    if (!window || secondKey.isEmpty()) return;

    auto* second = new LXShortcut(window, secondKey);
    second->SetShortcutContext(Qt::ApplicationShortcut);
    connect(second, &LXShortcut::Activated, action, &QAction::trigger);
    // The window outlives the tool.
    connect(action, &QObject::destroyed, second, &QObject::deleteLater);
}

void ClipboardTool::PlaceActions()
{
    m_pPasteAsMenu->addActions({m_Actions.newImage, m_Actions.newLayer});
    m_pPasteAsMenu->menuAction()->setEnabled(false);
    connect(m_pPasteAsMenu.get(), &QMenu::aboutToShow, this, &ClipboardTool::PasteAsMenuAboutToShow);

    auto* separator = new QAction(this);
    separator->setSeparator(true);
    const auto place = [this](int position, auto* entry) {
        m_Entries.insert(MainMenuEntry({ZKMenuManager::Edit, position}, entry));
    };
    place(SeparatorPosition, separator);
    place(CopyPosition, m_Actions.copy);
    place(CopyMergedPosition, m_Actions.copyMerged);
    place(CutPosition, m_Actions.cut);
    place(PastePosition, m_Actions.paste);
    place(PasteAsPosition, m_pPasteAsMenu.get());
}

QList<QAction*> ClipboardTool::GetMenuActions()
{
    return {m_Actions.copy,
            m_Actions.copyMerged,
            m_Actions.cut,
            m_Actions.paste,
            m_Actions.newImage,
            m_Actions.newLayer,
            m_Actions.pasteAsNewImage,
            m_Actions.remove,
            m_Actions.toSystem};
}

QList<QAction*> ClipboardTool::GetToolBarActions()
{
    return {};
}

MainMenuEntries ClipboardTool::GetMainMenuEntries()
{
    return m_Entries;
}

void ClipboardTool::SetClipboardModel(QAbstractItemModel* model, QItemSelectionModel* selection)
{
    m_pHostModel = model;
    m_pHostSelection = selection;
}

QList<QAction*> ClipboardTool::GetClipboardActions()
{
    return {m_Actions.pasteAsNewImage, m_Actions.remove, m_Actions.toSystem};
}

// ---- the current view

bool ClipboardTool::SetDocumentView(IDocumentView* view)
{
    EndStartInView(view ? view->GetDocumentView() : nullptr);
    DisconnectView();
    if (view) ConnectView(view->GetDocumentView());
    UpdateAllActions();
    return true;
}

void ClipboardTool::ConnectView(ZKDocumentView* view)
{
    using Tool = ClipboardTool;
    m_pView = view;
    m_pDocument = view->GetModel()->GetDocument();
    m_pLayerSelection = view->GetLayerSelection();
    connect(m_pDocument, &LXDocumentInterface::SelectionChanged, this, &Tool::SelectionChanged);
    connect(m_pDocument, &LXDocumentInterface::Locked, this, &Tool::DocumentLocked);
    connect(m_pDocument, &LXDocumentInterface::Unlocked, this, &Tool::DocumentUnlocked);
    connect(view->GetModel(), &LXDocumentModel::LayerSelectedChanged, this, &Tool::OnLayerSelectionChanged);
    connect(view->GetModel(), &LXDocumentModel::MaskSelectedChanged, this, &Tool::OnMaskSelectionChanged);
    connect(view, &ZKDocumentView::LayerOrderOperationsBlocked, this, &Tool::UpdateAllActions);
    connect(m_pLayerSelection, &QItemSelectionModel::currentRowChanged, this, &Tool::CurrentLayerChanged);
    // Rows are selected and deselected beside the current one too.
    connect(m_pLayerSelection, &QItemSelectionModel::selectionChanged, this, &Tool::UpdateAllActions);
}

void ClipboardTool::DisconnectView()
{
    if (m_pDocument) {
        disconnect(m_pDocument, nullptr, this, nullptr);
        disconnect(m_pDocument->GetModel(), nullptr, this, nullptr);
    }
    if (m_pLayerSelection) disconnect(m_pLayerSelection, nullptr, this, nullptr);
    if (m_pView) disconnect(m_pView, nullptr, this, nullptr);
    m_pDocument = nullptr;
    m_pView = nullptr;
    m_pLayerSelection = nullptr;
}

LexoUndoStack* ClipboardTool::GetHistory() const
{
    return m_pView ? m_pView->GetHistory() : nullptr;
}

void ClipboardTool::LandFloatingPieces()
{
    // Who holds the document is in the middle of something.
    if (IsDocumentLocked()) return;
    if (LexoUndoStack* history = GetHistory()) history->commit();
}

int ClipboardTool::CurrentLayerNumber() const
{
    if (!m_pView || !m_pLayerSelection) return NoLayer;

    const QModelIndexList rows = m_pLayerSelection->selectedIndexes();
    return rows.size() == 1 ? rows.first().row() + 1 : NoLayer;
}

bool ClipboardTool::IsMaskTarget(int layer) const
{
    return layer > 0 && m_pDocument->GetModel()->GetMaskSelected(layer - 1);
}

bool ClipboardTool::IsDocumentLocked() const
{
    return m_pDocument && m_pDocument->GetLockState();
}

bool ClipboardTool::HasItems() const
{
    return !m_Items.isEmpty() || m_bFilesWait;
}

bool ClipboardTool::HasCurrentItem() const
{
    return m_CurrentRow >= 0 && m_CurrentRow < m_Items.size();
}

// ---- what is enabled

void ClipboardTool::SelectionChanged()
{
    const int layer = m_pDocument ? CurrentLayerNumber() : NoLayer;
    const bool isOpen = layer >= 0 && !IsDocumentLocked();
    const bool canCopy =
        isOpen && (m_pDocument->GetLayerKind(static_cast<unsigned int>(layer)) == LayerKind::Adjustment ||
                   m_pDocument->HasSelection());
    m_Actions.copy->setEnabled(canCopy);
    m_Actions.copyMerged->setEnabled(canCopy);
    m_Actions.cut->setEnabled(canCopy);
}

void ClipboardTool::UpdateActions(bool haveItems)
{
    const bool canUse = haveItems && !IsDocumentLocked();
    const int layer = m_pDocument ? CurrentLayerNumber() : NoLayer;
    const bool canPaste = canUse && layer > 0 &&
                          (m_pDocument->GetLayerKind(static_cast<unsigned int>(layer)) == LayerKind::Raster ||
                           IsMaskTarget(layer));
    m_Actions.paste->setEnabled(canPaste);
    m_Actions.newLayer->setEnabled(canPaste && !m_pView->IsLayerOrderBlocked());
    m_Actions.newImage->setEnabled(canUse);
    m_Actions.pasteAsNewImage->setEnabled(canUse);
    // Files that wait are no rows yet.
    m_Actions.remove->setEnabled(canUse && !m_Items.isEmpty());
    m_Actions.toSystem->setEnabled(canUse && !m_Items.isEmpty());
    m_pPasteAsMenu->menuAction()->setEnabled(canUse);
}

void ClipboardTool::UpdateAllActions()
{
    SelectionChanged();
    UpdateActions(HasItems());
}

void ClipboardTool::PasteAsMenuAboutToShow()
{
    UpdateActions(HasItems());
}

void ClipboardTool::CurrentLayerChanged(const QModelIndex&, const QModelIndex&)
{
    UpdateAllActions();
}

void ClipboardTool::DocumentLocked()
{
    UpdateAllActions();
}

void ClipboardTool::DocumentUnlocked()
{
    UpdateAllActions();
}

void ClipboardTool::OnMaskSelectionChanged(bool)
{
    UpdateAllActions();
}

void ClipboardTool::OnLayerSelectionChanged(bool)
{
    UpdateAllActions();
}

quint64 ClipboardTool::GetDocumentState()
{
    return 0;
}

void ClipboardTool::DocumentStateChanged(const quint64&, const quint64&)
{
    UpdateAllActions();
}

// ---- the start after a moment

void ClipboardTool::StartCopy()
{
    QGuiApplication::clipboard()->blockSignals(false);
    RestartTimer(StartDelay);
}

void ClipboardTool::StartCopyMerged()
{
    QGuiApplication::clipboard()->blockSignals(false);
    m_bMergedPending = true;
    RestartTimer(StartDelay);
}

void ClipboardTool::StartCut()
{
    QGuiApplication::clipboard()->blockSignals(false);
    m_bCutPending = true;
    RestartTimer(StartDelay);
}

void ClipboardTool::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_TimerId) {
        QObject::timerEvent(event);
        return;
    }
    FinishStart();
}

void ClipboardTool::FinishStart()
{
    // Under the dialog it waits on: the timer comes again.
    if (!m_bTimerPending || m_bPastingOnMask) return;

    // First: what follows may run an event loop, and must not begin again in it.
    StopTimer();
    m_bTimerPending = false;
    if (m_bCutPending) {
        Cut();
        m_bCutPending = false;
    } else {
        Copy();
    }
}

void ClipboardTool::ForgetStart()
{
    StopTimer();
    m_bTimerPending = false;
    m_bCutPending = false;
    m_bMergedPending = false;
}

void ClipboardTool::EndStartInView(const ZKDocumentView* next)
{
    if (!m_bTimerPending || next == m_pView) return;

    if (next && m_pDocument && m_pView && !m_bCutPending) FinishStart();
    ForgetStart();
}

void ClipboardTool::StartTimer(int msec)
{
    if (m_TimerId == NoTimer) m_TimerId = startTimer(msec, Qt::CoarseTimer);
}

void ClipboardTool::RestartTimer(int msec)
{
    if (m_bTimerPending) return;

    m_bTimerPending = true;
    StopTimer();
    StartTimer(msec);
}

void ClipboardTool::StopTimer()
{
    if (m_TimerId == NoTimer) return;

    killTimer(m_TimerId);
    m_TimerId = NoTimer;
}
