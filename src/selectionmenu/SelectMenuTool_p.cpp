#include "selectionmenu/SelectMenuTool_p.h"

#include "IDocumentView.h"
#include "selectionmenu/SelectionCommands.h"

#include "common/OverrideCursor.h"
#include "common/PushCommand.h"
#include "common/Reports.h"
#include "core/ZKMenuManager.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"

#include <QItemSelectionModel>
#include <QPainterPath>

namespace {
// Places in the menu "Selection".
constexpr int SelectAllPosition = 0;
constexpr int DeselectPosition = 1;
constexpr int InvertPosition = 2;
constexpr int ArrangePosition = 3;
constexpr int AllLayersPosition = 4;
constexpr int DeselectLayersPosition = 5;
} // namespace

SelectionMenuToolPrivate::SelectionMenuToolPrivate(QObject* parent)
    : QObject(parent), m_pArrange(std::make_unique<QMenu>(tr("Arrange Selection")))
{
    AddEntries();
    DisableSelectionActions();
    UpdateLayerActions();
}

SelectionMenuToolPrivate::~SelectionMenuToolPrivate()
{
    DisconnectView();
}

// ---- the menu

void SelectionMenuToolPrivate::AddEntries()
{
    using Tool = SelectionMenuToolPrivate;
    m_pSelectAll = AddAction(tr("Select all"), tr("Selects the whole canvas"), {}, &Tool::SelectAll);
    m_pDeselect = AddAction(tr("Deselect"), tr("Selects nothing, so that the whole canvas can be changed"),
                            Qt::CTRL + Qt::Key_D, &Tool::Deselect);
    m_pInvert = AddAction(tr("Invert selection"), tr("Selects what is not selected, and the other way round"),
                          Qt::CTRL + Qt::SHIFT + Qt::Key_I, &Tool::InvertSelection);
    m_pArrange->addActions({
        AddAction(tr("Center"), tr("Moves the selection to the middle of the canvas"), {},
                  &Tool::AlignCenter),
        AddAction(tr("Horizontal center"), tr("Moves the selection to the middle, sideways"), {},
                  &Tool::AlignHorizontalCenter),
        AddAction(tr("Vertical center"), tr("Moves the selection to the middle, up or down"), {},
                  &Tool::AlignVerticalCenter),
        AddAction(tr("Align left"), tr("Moves the selection to the left edge"), {}, &Tool::AlignLeft),
        AddAction(tr("Align right"), tr("Moves the selection to the right edge"), {}, &Tool::AlignRight),
        AddAction(tr("Align top"), tr("Moves the selection to the upper edge"), {}, &Tool::AlignTop),
        AddAction(tr("Align bottom"), tr("Moves the selection to the lower edge"), {}, &Tool::AlignBottom),
    });
    m_pAllLayers = AddAction(tr("All layers"), tr("Selects every layer in the list"),
                             Qt::CTRL + Qt::ALT + Qt::Key_A, &Tool::OnAllLayers);
    m_pDeselectLayers =
        AddAction(tr("Deselect layers"), tr("Selects no layer in the list"), {}, &Tool::OnDeselectLayers);

    Place(SelectAllPosition, m_pSelectAll);
    Place(DeselectPosition, m_pDeselect);
    Place(InvertPosition, m_pInvert);
    m_Entries.insert(MainMenuEntry({ZKMenuManager::Selection, ArrangePosition}, m_pArrange.get()));
    Place(AllLayersPosition, m_pAllLayers);
    Place(DeselectLayersPosition, m_pDeselectLayers);
}

QAction* SelectionMenuToolPrivate::AddAction(const QString& text, const QString& toolTip,
                                             const QKeySequence& key, Slot slot)
{
    auto* action = new QAction(text, this);
    action->setStatusTip(toolTip);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void SelectionMenuToolPrivate::Place(int position, QAction* action)
{
    m_Entries.insert(MainMenuEntry({ZKMenuManager::Selection, position}, action));
}

// ---- the current view

bool SelectionMenuToolPrivate::SetDocumentView(IDocumentView* view)
{
    if (view == m_pDocumentView) return true;

    DisconnectView();
    if (m_pDocumentView) disconnect(m_pDocumentView->GetNotifier(), nullptr, this, nullptr);
    m_pDocumentView = view;
    if (view) {
        connect(view->GetNotifier(), &DocumentViewNotifier::StateChanged, this,
                &SelectionMenuToolPrivate::OnViewStateChanged);
        ConnectView(view->GetDocumentView());
    }
    DocumentSelectionChanged();
    UpdateLayerActions();
    return true;
}

void SelectionMenuToolPrivate::ConnectView(ZKDocumentView* view)
{
    using Tool = SelectionMenuToolPrivate;
    m_pConnectedView = view;
    connect(view, &ZKDocumentView::LayerOrderOperationsBlocked, this, &Tool::OnBlockLayerOrder);
    connect(view->GetLayerSelection(), &QItemSelectionModel::selectionChanged, this,
            &Tool::OnLayersSelectionChanged);

    LXDocumentModel* model = view->GetModel();
    connect(model, &QAbstractItemModel::rowsInserted, this, &Tool::UpdateLayerActions);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &Tool::UpdateLayerActions);

    LXDocumentInterface* document = model->GetDocument();
    connect(document, &LXDocumentInterface::SelectionChanged, this, &Tool::DocumentSelectionChanged);
    connect(document, &LXDocumentInterface::Locked, this, &Tool::DocumentLocked);
    connect(document, &LXDocumentInterface::Unlocked, this, &Tool::DocumentUnlocked);
}

void SelectionMenuToolPrivate::DisconnectView()
{
    if (!m_pConnectedView) return;

    LXDocumentModel* model = m_pConnectedView->GetModel();
    disconnect(m_pConnectedView, nullptr, this, nullptr);
    disconnect(m_pConnectedView->GetLayerSelection(), nullptr, this, nullptr);
    disconnect(model, nullptr, this, nullptr);
    disconnect(model->GetDocument(), nullptr, this, nullptr);
    m_pConnectedView = nullptr;
}

LXDocumentInterface* SelectionMenuToolPrivate::GetDocument() const
{
    return m_pDocumentView ? m_pDocumentView->GetDocument() : nullptr;
}

ZKDocumentView* SelectionMenuToolPrivate::GetView() const
{
    return m_pDocumentView ? m_pDocumentView->GetDocumentView() : nullptr;
}

LexoUndoStack* SelectionMenuToolPrivate::GetHistory() const
{
    return m_pDocumentView ? m_pDocumentView->GetHistory() : nullptr;
}

QItemSelectionModel* SelectionMenuToolPrivate::GetLayerSelection() const
{
    const ZKDocumentView* view = GetView();
    return view ? view->GetLayerSelection() : nullptr;
}

bool SelectionMenuToolPrivate::HasSelection() const
{
    const LXDocumentInterface* document = GetDocument();
    return document && document->HasSelection();
}

// ---- what is enabled

void SelectionMenuToolPrivate::DocumentSelectionChanged()
{
    const LXDocumentInterface* document = GetDocument();
    if (!document || document->GetLockState() || IsViewLocked()) {
        DisableSelectionActions();
        return;
    }
    const bool hasSelection = document->HasSelection();
    m_pSelectAll->setEnabled(true);
    m_pDeselect->setEnabled(hasSelection);
    m_pInvert->setEnabled(hasSelection);
    m_pArrange->menuAction()->setEnabled(hasSelection);
    const QList<QAction*> alignments = m_pArrange->actions();
    for (QAction* action : alignments) {
        action->setEnabled(hasSelection);
    }
}

void SelectionMenuToolPrivate::DisableSelectionActions()
{
    m_pSelectAll->setEnabled(false);
    m_pDeselect->setEnabled(false);
    m_pInvert->setEnabled(false);
    m_pArrange->menuAction()->setEnabled(false);
    const QList<QAction*> alignments = m_pArrange->actions();
    for (QAction* action : alignments) {
        action->setEnabled(false);
    }
}

void SelectionMenuToolPrivate::DocumentLocked()
{
    DisableSelectionActions();
}

void SelectionMenuToolPrivate::DocumentUnlocked()
{
    DocumentSelectionChanged();
}

void SelectionMenuToolPrivate::DocumentViewLocked()
{
    DisableSelectionActions();
}

void SelectionMenuToolPrivate::DocumentViewUnlocked()
{
    DocumentSelectionChanged();
}

bool SelectionMenuToolPrivate::IsViewLocked() const
{
    return (m_pDocumentView->GetState() & IDocumentView::LockBit) != 0;
}

void SelectionMenuToolPrivate::OnViewStateChanged(quint64 oldState, quint64 newState)
{
    const quint64 changed = oldState ^ newState;
    if ((changed & IDocumentView::LockBit) == 0) return;

    // A view object that lost its widget has no document to ask.
    if (!m_pConnectedView) {
        Reports::Condition(ZK_HERE, QStringLiteral("Error input lock"));
        return;
    }
    if ((newState & IDocumentView::LockBit) != 0) {
        DocumentViewLocked();
    } else {
        DocumentViewUnlocked();
    }
}

void SelectionMenuToolPrivate::OnBlockLayerOrder(bool)
{
    UpdateLayerActions();
}

void SelectionMenuToolPrivate::OnLayersSelectionChanged(QItemSelection, QItemSelection)
{
    UpdateLayerActions();
}

void SelectionMenuToolPrivate::UpdateLayerActions()
{
    const QItemSelectionModel* selection = GetLayerSelection();
    const bool isOpen = selection && !GetView()->IsLayerOrderBlocked();
    const int selected = isOpen ? selection->selectedRows().size() : 0;
    m_pAllLayers->setEnabled(isOpen && selected < selection->model()->rowCount());
    m_pDeselectLayers->setEnabled(selected > 0);
}

// ---- the selection

void SelectionMenuToolPrivate::SelectAll()
{
    ChangeSelection(tr("Select all"), [](LXDocumentInterface* document) {
        QPainterPath canvas;
        canvas.addRect(QRect(QPoint(0, 0), document->GetDocumentSize()));
        return SelectionCommands::MakeReplace(document, canvas);
    });
}

void SelectionMenuToolPrivate::Deselect()
{
    ChangeSelection(tr("Deselect"), [](LXDocumentInterface* document) {
        return document->HasSelection() ? SelectionCommands::MakeReplace(document, {}) : nullptr;
    });
}

void SelectionMenuToolPrivate::InvertSelection()
{
    ChangeSelection(tr("Invert selection"), [](LXDocumentInterface* document) {
        return document->HasSelection() ? SelectionCommands::MakeInvert(document) : nullptr;
    });
}

void SelectionMenuToolPrivate::ChangeSelection(const QString& text, const MakeCommand& makeCommand)
{
    LXDocumentInterface* document = GetDocument();
    if (!GetView() || !document) {
        Reports::Condition(ZK_HERE, QStringLiteral("Error in state machine."));
        return;
    }
    const OverrideCursor waiting(Qt::WaitCursor);
    try {
        // A piece that floats lands before the selection is read.
        if (LexoUndoStack* history = GetHistory()) history->commit();
        std::unique_ptr<LexoCommand> command = makeCommand(document);
        if (!command) return;

        command->setText(text);
        PushCommand(GetHistory(), std::move(command));
    } catch (const std::exception& exception) {
        Reports::Exception(ZK_HERE, exception);
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
    }
}

// ---- the selection's place

void SelectionMenuToolPrivate::AlignCenter()
{
    Align(SelectionAlignment::Center, tr("Align center"));
}

void SelectionMenuToolPrivate::AlignHorizontalCenter()
{
    Align(SelectionAlignment::HorizontalCenter, tr("Horizontal center"));
}

void SelectionMenuToolPrivate::AlignVerticalCenter()
{
    Align(SelectionAlignment::VerticalCenter, tr("Vertical center"));
}

void SelectionMenuToolPrivate::AlignLeft()
{
    Align(SelectionAlignment::Left, tr("Align left"));
}

void SelectionMenuToolPrivate::AlignRight()
{
    Align(SelectionAlignment::Right, tr("Align right"));
}

void SelectionMenuToolPrivate::AlignTop()
{
    Align(SelectionAlignment::Top, tr("Align top"));
}

void SelectionMenuToolPrivate::AlignBottom()
{
    Align(SelectionAlignment::Bottom, tr("Align bottom"));
}

void SelectionMenuToolPrivate::Align(SelectionAlignment alignment, const QString& text)
{
    if (!HasSelection()) return;

    ChangeSelection(text, [alignment](LXDocumentInterface* document) -> std::unique_ptr<LexoCommand> {
        const QPoint delta =
            AlignmentDelta(alignment, document->GetSelectionGeometry(), document->GetDocumentSize());
        return delta.isNull() ? nullptr : SelectionCommands::MakeMove(document, delta);
    });
}

// ---- layers

void SelectionMenuToolPrivate::OnAllLayers()
{
    QItemSelectionModel* selection = GetLayerSelection();
    if (!selection) return;

    const QAbstractItemModel* rows = selection->model();
    const int last = rows->rowCount() - 1;
    selection->select(QItemSelection(rows->index(0, 0), rows->index(last, 0)),
                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void SelectionMenuToolPrivate::OnDeselectLayers()
{
    if (QItemSelectionModel* selection = GetLayerSelection()) selection->clearSelection();
}
