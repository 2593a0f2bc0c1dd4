#include "gui/PathOperations.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LXPathSelectionModel.h"
#include "document/LXPathsListModel.h"
#include "gui/ThumbnailRoles.h"
#include "gui/ZKDocumentView.h"
#include "guicore/GuardedStep.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/PathCommands.h"
#include "history/PushOrRun.h"

namespace {
std::unique_ptr<LexoCommand> Owned(LexoCommand* command)
{
    return std::unique_ptr<LexoCommand>(command);
}
} // namespace

void PathOperations::SetView(ZKDocumentView* view)
{
    if (m_pView) {
        disconnect(m_pView, nullptr, this, nullptr);
        disconnect(GetSelection(), nullptr, this, nullptr);
        disconnect(m_pView->GetLayerSelection(), nullptr, this, nullptr);
        disconnect(m_pView->GetModel(), nullptr, this, nullptr);
        disconnect(GetModel(), nullptr, this, nullptr);
        disconnect(GetModel()->GetDocument(), nullptr, this, nullptr);
    }
    m_pView = view;
    if (view) {
        const LXPathsListModel* model = GetModel();
        const LXDocumentInterface* document = model->GetDocument();
        connect(view, &ZKDocumentView::PathOrderOperationsBlocked, this, &PathOperations::Changed);
        connect(GetSelection(), &QItemSelectionModel::selectionChanged, this, &PathOperations::Changed);
        connect(GetSelection(), &QItemSelectionModel::currentChanged, this, &PathOperations::Changed);
        connect(GetSelection(), &LXPathSelectionModel::CurrentSubpathChanged, this, &PathOperations::Changed);
        // Strokes go to the selected layer.
        connect(view->GetLayerSelection(), &QItemSelectionModel::selectionChanged, this,
                &PathOperations::Changed);
        connect(view->GetModel(), &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex&, const QModelIndex&, const QVector<int>& roles) {
                    if (!ThumbnailRoles::AreAll(roles)) emit Changed();
                });
        connect(model, &LXPathsListModel::PathChanged, this, &PathOperations::Changed);
        connect(model, &QAbstractItemModel::rowsInserted, this, &PathOperations::Changed);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &PathOperations::Changed);
        connect(model, &QAbstractItemModel::rowsMoved, this, &PathOperations::Changed);
        connect(document, &LXDocumentInterface::Locked, this, &PathOperations::LockChanged);
        connect(document, &LXDocumentInterface::Unlocked, this, &PathOperations::LockChanged);
    }
    emit Changed();
}

LXPathsListModel* PathOperations::GetModel() const
{
    return m_pView ? m_pView->GetModel()->GetDocument()->GetPathListModel() : nullptr;
}

LXPathSelectionModel* PathOperations::GetSelection() const
{
    return m_pView ? qobject_cast<LXPathSelectionModel*>(m_pView->GetPathSelection()) : nullptr;
}

// Who both holds the document and blocks the order has begun with these paths and goes on with them.
QString PathOperations::GetChoiceObstacle() const
{
    const bool isKept = m_pView && !MayWork() && m_pView->IsPathOrderBlocked();
    return isKept ? tr("A tool is at work on the selected paths.") : QString();
}

bool PathOperations::CanAdd() const
{
    return MayReorder();
}

bool PathOperations::CanDelete() const
{
    return MayReorder() && GetSelection()->hasSelection();
}

bool PathOperations::CanMove(int by) const
{
    if (!MayReorder()) return false;
    const QList<int> rows = SelectedRows();
    return rows.size() == 1 && GetModel()->index(rows.first() + by).isValid();
}

void PathOperations::Add()
{
    if (!CanAdd()) return;
    const int row = GetModel()->rowCount();
    if (!Push([&] { return PathCommands::Add(GetModel()->GetDocument(), row, NewName()); })) return;
    GetSelection()->setCurrentIndex(GetModel()->index(row), QItemSelectionModel::ClearAndSelect);
}

void PathOperations::Delete()
{
    if (!CanDelete()) return;
    // From the bottom, so that the rows of those above stay.
    QList<int> rows = SelectedRows();
    LexoUndoStack* const history = m_pView->GetHistory();
    const auto removeAll = [&] {
        while (!rows.isEmpty())
            PushOrRun(history, Owned(PathCommands::Remove(GetModel()->GetDocument(), rows.takeLast())));
    };
    const bool several = rows.size() > 1;
    GuardedStep::Run(m_pView,
                     [&] { PushAsOneStep(several ? history : nullptr, tr("Delete paths"), removeAll); });
}

void PathOperations::Move(int by)
{
    if (!CanMove(by)) return;
    const int row = SelectedRows().first();
    Push([&] { return PathCommands::Move(GetModel()->GetDocument(), row, row + by); });
}

void PathOperations::SetVisible(int row, bool visible)
{
    if (!MayWork() || visible == GetModel()->GetPathVisible(row)) return;
    Push([&] { return PathCommands::SetVisible(GetModel()->GetDocument(), row, visible); });
}

void PathOperations::Rename(int row, const QString& name)
{
    const QString wanted = name.trimmed();
    if (!MayWork() || wanted.isEmpty() || wanted == GetModel()->GetPathName(row)) return;
    Push([&] { return PathCommands::Rename(GetModel()->GetDocument(), row, wanted); });
}

bool PathOperations::MayWork() const
{
    return m_pView && !GetModel()->GetDocument()->GetLockState();
}

bool PathOperations::MayReorder() const
{
    return MayWork() && !m_pView->IsPathOrderBlocked();
}

QList<int> PathOperations::SelectedRows() const
{
    QList<int> rows;
    const QModelIndexList selected = GetSelection()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

bool PathOperations::Push(const std::function<LexoCommand*()>& make) const
{
    return GuardedStep::Run(m_pView, [&] { PushOrRun(m_pView->GetHistory(), Owned(make())); });
}

QString PathOperations::NewName() const
{
    const LXPathsListModel* model = GetModel();
    const auto isTaken = [model](const QString& name) {
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->GetPathName(row) == name) return true;
        }
        return false;
    };
    int number = 1;
    while (isTaken(tr("Path %1").arg(number)))
        ++number;
    return tr("Path %1").arg(number);
}
