#include "gui/LayerOperations.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LXLayerNameHelper.h"
#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "gui/AdjustmentNames.h"
#include "gui/ThumbnailRoles.h"
#include "gui/ZKDocumentView.h"
#include "guicore/GuardedStep.h"
#include "history/LayerCommands.h"
#include "history/LayerCreateCommand.h"
#include "history/LayerCreateCommandData.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/PushOrRun.h"
#include "history/SelectionDeletion.h"

#include <QItemSelectionModel>

namespace {
unsigned int IdOf(int row)
{
    return static_cast<unsigned int>(row) + 1;
}

QList<int> SelectedRows(const ZKDocumentView* view)
{
    QList<int> rows;
    const QModelIndexList selected = view->GetLayerSelection()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}
} // namespace

void LayerOperations::SetView(ZKDocumentView* view)
{
    FinishAdjustment();
    if (m_pView) {
        disconnect(m_pView, nullptr, this, nullptr);
        disconnect(m_pView->GetLayerSelection(), nullptr, this, nullptr);
        disconnect(m_pView->GetModel(), nullptr, this, nullptr);
        disconnect(m_pView->GetModel()->GetDocument(), nullptr, this, nullptr);
    }
    m_pView = view;
    if (view) {
        const LXDocumentModel* model = view->GetModel();
        const LXDocumentInterface* document = model->GetDocument();
        connect(view, &ZKDocumentView::LayerOrderOperationsBlocked, this, &LayerOperations::Changed);
        connect(view, &ZKDocumentView::StylizationViewBlocked, this, &LayerOperations::Changed);
        connect(view->GetLayerSelection(), &QItemSelectionModel::selectionChanged, this,
                &LayerOperations::Changed);
        connect(model, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex&, const QModelIndex&, const QVector<int>& roles) {
                    if (!ThumbnailRoles::AreAll(roles)) emit Changed();
                });
        connect(model, &QAbstractItemModel::rowsInserted, this, &LayerOperations::Changed);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &LayerOperations::Changed);
        connect(model, &QAbstractItemModel::rowsMoved, this, &LayerOperations::Changed);
        connect(document, &LXDocumentInterface::Locked, this, &LayerOperations::LockChanged);
        connect(document, &LXDocumentInterface::Unlocked, this, &LayerOperations::LockChanged);
    }
    emit Changed();
}

LXDocumentModel* LayerOperations::GetModel() const
{
    return m_pView ? m_pView->GetModel() : nullptr;
}

int LayerOperations::GetRow() const
{
    if (!m_pView) return -1;
    const QList<int> rows = SelectedRows(m_pView);
    return rows.size() == 1 ? rows.first() : -1;
}

QString LayerOperations::GetObstacle() const
{
    if (!m_pView) return tr("no picture is open");
    if (!MayWork()) return tr("a tool is at work");
    return m_pView->IsLayerOrderBlocked() ? tr("the layers keep their order at the moment") : QString();
}

// Who both holds the document and blocks the order has begun with these layers and goes on with them.
QString LayerOperations::GetChoiceObstacle() const
{
    const bool isKept = m_pView && !MayWork() && m_pView->IsLayerOrderBlocked();
    return isKept ? tr("A tool is at work on the selected layers.") : QString();
}

bool LayerOperations::CanChange() const
{
    return MayWork() && !m_pView->IsStylizationBlocked() && GetRow() >= 0;
}

bool LayerOperations::CanAdd() const
{
    return MayReorder();
}

bool LayerOperations::CanDelete() const
{
    if (!MayReorder()) return false;
    const QList<int> rows = SelectedRows(m_pView);
    const bool locked = std::any_of(rows.begin(), rows.end(), [this](int row) { return IsLocked(row); });
    return !locked && !rows.isEmpty() && (IsDeletingMask() || rows.size() < GetModel()->rowCount());
}

bool LayerOperations::IsDeletingMask() const
{
    return GetRow() >= 0 && GetModel()->GetMaskSelected(GetRow());
}

bool LayerOperations::CanAddMask() const
{
    return CanChange() && !IsLocked(GetRow()) && !GetModel()->HasMask(GetRow());
}

bool LayerOperations::CanMove(int by) const
{
    const int row = GetRow();
    return MayReorder() && row >= 0 && row + by >= 0 && row + by < GetModel()->rowCount();
}

void LayerOperations::Add()
{
    if (CanAdd()) Try([this] { AddLayer(); });
}

void LayerOperations::AddLayer()
{
    const QList<int> rows = SelectedRows(m_pView);
    auto* data = new LayerCreateCommandData(m_pView->GetLayerSelection(), LayerCreateCommandData::Raster,
                                            rows.isEmpty() ? 0 : rows.first());
    data->SetLayerName(
        LXLayerNameHelper::MakeDefaultName(GetModel()->GetDocument(), LXLayerNameHelper::New, 0));
    auto* command = new LayerCreateCommand(GetModel()->GetDocument(), true);
    command->setText(tr("New layer"));
    if (!command->SetCommandData(data)) delete data;
    Push(command);
}

void LayerOperations::AddAdjustment(const LXAdjustment& adjustment)
{
    if (!CanAdd()) return;
    const QList<int> rows = SelectedRows(m_pView);
    Try([&] {
        Push(LayerCommands::AddAdjustment(GetModel()->GetDocument(), m_pView->GetLayerSelection(),
                                          rows.isEmpty() ? 0 : rows.first(),
                                          AdjustmentNames::Of(adjustment.kind), adjustment));
    });
}

void LayerOperations::PreviewAdjustment(const LXAdjustment& adjustment)
{
    if (CanChange()) Try([&] { ShowAdjustment(adjustment); });
}

void LayerOperations::ShowAdjustment(const LXAdjustment& adjustment)
{
    LXDocumentInterface* document = GetModel()->GetDocument();
    const unsigned int id = IdOf(GetRow());
    LexoUndoStack* history = m_pView->GetHistory();
    // Whatever else was done to the history has closed the step.
    const bool isOpen = m_AdjustedId == id && history && history->isDelayedOpen();
    if (document->GetAdjustment(id) == adjustment) return;
    if (history && !isOpen) {
        history->commit();
        history->pushDelayed(LayerCommands::ChangeAdjustment(document, id, adjustment));
        m_AdjustedId = id;
    }
    document->SetAdjustment(id, adjustment);
}

void LayerOperations::FinishAdjustment()
{
    if (std::exchange(m_AdjustedId, 0) == 0 || !m_pView) return;
    if (LexoUndoStack* history = m_pView->GetHistory()) Try([history] { history->commit(); });
}

void LayerOperations::Delete()
{
    if (!CanDelete()) return;
    Try([this] {
        if (IsDeletingMask()) {
            Push(LayerCommands::RemoveMask(GetModel()->GetDocument(), IdOf(GetRow())));
        } else {
            DeleteLayers();
        }
    });
}

void LayerOperations::DeleteLayers()
{
    // From the bottom, so that the ids of those above stay.
    QList<int> rows = SelectedRows(m_pView);
    const bool several = rows.size() > 1;
    PushAsOneStep(several ? m_pView->GetHistory() : nullptr, tr("Delete layers"), [&] {
        while (!rows.isEmpty()) {
            Push(LayerCommands::Remove(GetModel()->GetDocument(), m_pView->GetLayerSelection(),
                                       IdOf(rows.takeLast())));
        }
    });
}

void LayerOperations::AddMask(bool reveals)
{
    if (!CanAddMask()) return;
    Try([&] { Push(LayerCommands::AddMask(GetModel()->GetDocument(), IdOf(GetRow()), reveals)); });
}

void LayerOperations::Move(int by)
{
    if (!CanMove(by)) return;
    Try([&] { Push(LayerCommands::Move(GetModel()->GetDocument(), IdOf(GetRow()), IdOf(GetRow() + by))); });
}

void LayerOperations::SetBlendMode(unsigned int mode)
{
    if (!CanChange() || mode == GetModel()->GetBlendMode(GetRow())) return;
    Try([&] { Push(LayerCommands::SetBlendMode(GetModel()->GetDocument(), IdOf(GetRow()), mode)); });
}

void LayerOperations::SetOpacity(double opacity)
{
    if (!CanChange() || qFuzzyCompare(1 + opacity, 1 + GetModel()->GetOpacity(GetRow()))) return;
    Try([&] { Push(LayerCommands::SetOpacity(GetModel()->GetDocument(), IdOf(GetRow()), opacity)); });
}

void LayerOperations::SetLocks(unsigned int locks, bool locked)
{
    if (!CanChange()) return;

    const unsigned int flags = GetModel()->GetLockFlags(GetRow());
    const unsigned int wanted = locked ? flags | locks : flags & ~locks;
    if (wanted == flags) return;
    Try([&] { Push(LayerCommands::SetLocks(GetModel()->GetDocument(), IdOf(GetRow()), wanted)); });
}

void LayerOperations::SetVisible(int row, bool visible)
{
    if (!MayWork() || visible == GetModel()->GetVisible(row)) return;
    Try([&] { Push(LayerCommands::SetVisible(GetModel()->GetDocument(), IdOf(row), visible)); });
}

void LayerOperations::Rename(int row, const QString& name)
{
    const QString wanted = name.trimmed();
    if (!MayWork() || wanted.isEmpty() || wanted == GetModel()->GetName(row)) return;
    Try([&] { Push(LayerCommands::Rename(GetModel()->GetDocument(), IdOf(row), wanted)); });
}

bool LayerOperations::DeleteSelection(const QString& text)
{
    const int row = GetRow();
    if (!MayWork() || row < 0 || !MayPaint(row)) return false;

    bool isDone = false;
    Try([&] { isDone = DeletePixels(row, text); });
    return isDone;
}

bool LayerOperations::DeletePixels(int row, const QString& text)
{
    LXDocumentInterface* document = GetModel()->GetDocument();
    // A piece that floats lands before its pixels are read.
    if (LexoUndoStack* history = m_pView->GetHistory()) history->commit();
    if (!document->HasSelection()) return false;

    auto command = SelectionDeletion::MakeCommand(document, IdOf(row), GetModel()->GetMaskSelected(row));
    if (!command) return false;
    command->setText(text);
    Push(command.release());
    return true;
}

bool LayerOperations::MayPaint(int row) const
{
    const unsigned int locks = GetModel()->GetLockFlags(row);
    if (GetModel()->GetMaskSelected(row)) return (locks & LayerLocks::AgainstMaskPaint) == 0;
    return (locks & LayerLocks::AgainstPaint) == 0 &&
           GetModel()->GetDocument()->GetLayerKind(IdOf(row)) == LayerKind::Raster;
}

bool LayerOperations::MayWork() const
{
    return m_pView && !GetModel()->GetDocument()->GetLockState();
}

bool LayerOperations::MayReorder() const
{
    return MayWork() && !m_pView->IsLayerOrderBlocked();
}

bool LayerOperations::IsLocked(int row) const
{
    return (GetModel()->GetLockFlags(row) & LayerLocks::All) != 0;
}

void LayerOperations::Try(const std::function<void()>& step)
{
    GuardedStep::Run(m_pView, step);
}

void LayerOperations::Push(LexoCommand* command)
{
    PushOrRun(m_pView->GetHistory(), std::unique_ptr<LexoCommand>(command));
}
