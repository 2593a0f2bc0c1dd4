#include "document/LXPathsListModel.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXPathsListModel_p.h"
#include "document/PathShape.h"

namespace {
int KnownOperation(int operation)
{
    const bool isKnown = operation >= LXPathsListModel::None && operation <= LXPathsListModel::Exclude;
    return isKnown ? operation : LXPathsListModel::None;
}

bool IsIndex(const LXSubPaths& path, int subPath)
{
    return subPath >= 0 && subPath < path.size();
}
} // namespace

LXPathsListModel::LXPathsListModel(LXDocumentInterface* document)
    : QAbstractItemModel(document), m_pPrivate(std::make_unique<LXPathsListModelPrivate>(this, document))
{
    connect(document, &LXDocumentInterface::DocumentSizeChanged, this,
            [this] { m_pPrivate->DropThumbnails(); });
}

LXPathsListModel::~LXPathsListModel() = default;

LXDocumentInterface* LXPathsListModel::GetDocument() const
{
    return m_pPrivate->document;
}

LXSubPaths LXPathsListModel::GetPath(int row) const
{
    return m_pPrivate->Row(row).subPaths;
}

void LXPathsListModel::SetPath(int row, const LXSubPaths& path)
{
    LXSubPaths known = path;
    for (auto& subPath : known) {
        subPath.second = KnownOperation(subPath.second);
    }
    const auto change = [&known](LXPathsListModelPrivate::Path& changed) { changed.subPaths = known; };
    if (m_pPrivate->Change(row, change)) m_pPrivate->TellPointsChanged(row);
}

QString LXPathsListModel::GetPathName(int row) const
{
    return m_pPrivate->Row(row).name;
}

void LXPathsListModel::SetPathName(int row, const QString& name)
{
    const auto change = [&name](LXPathsListModelPrivate::Path& path) { path.name = name; };
    if (GetPathName(row) != name && m_pPrivate->Change(row, change))
        m_pPrivate->Notify(row, {Qt::DisplayRole, Qt::EditRole});
}

bool LXPathsListModel::GetPathVisible(int row) const
{
    return m_pPrivate->Row(row).isVisible;
}

void LXPathsListModel::SetPathVisible(int row, bool visible)
{
    const auto change = [visible](LXPathsListModelPrivate::Path& path) { path.isVisible = visible; };
    if (GetPathVisible(row) != visible && m_pPrivate->Change(row, change))
        m_pPrivate->Notify(row, {VisibleRole});
}

int LXPathsListModel::GetSubPathsCount(int row) const
{
    return GetPath(row).size();
}

bool LXPathsListModel::GetSubPath(int row, int subPath, LXPath& elements, LogicalOp& operation) const
{
    const LXSubPaths path = GetPath(row);
    if (!IsIndex(path, subPath)) return false;
    elements = path[subPath].first;
    operation = static_cast<LogicalOp>(path[subPath].second);
    return true;
}

void LXPathsListModel::SetSubPath(int row, int subPath, const LXPath& elements, bool commit)
{
    bool exists = false;
    m_pPrivate->Change(row, [&](LXPathsListModelPrivate::Path& path) {
        exists = IsIndex(path.subPaths, subPath);
        if (exists) path.subPaths[subPath].first = elements;
    });
    if (!exists) return;

    m_pPrivate->TellPointsChanged(row);
    if (!commit) return;
    LXDocumentInterfacePrivate::Get(m_pPrivate->document)->OnMainThread([this, row, subPath] {
        emit ChangesCommitted(row, subPath);
    });
}

void LXPathsListModel::InsertPath(int row, const QString& name, const LXSubPaths& path)
{
    const int place = qBound(0, row, rowCount());
    beginInsertRows(QModelIndex(), place, place);
    m_pPrivate->Insert(place, {name, {}, false});
    endInsertRows();
    SetPath(place, path);
}

void LXPathsListModel::RemovePath(int row)
{
    if (!m_pPrivate->IsRow(row)) return;
    beginRemoveRows(QModelIndex(), row, row);
    m_pPrivate->Remove(row);
    endRemoveRows();
    emit PathChanged();
}

void LXPathsListModel::MovePath(int from, int to)
{
    if (!m_pPrivate->IsRow(from) || !m_pPrivate->IsRow(to) || from == to) return;
    // The model counts the row before which the moved one lands, as the rows stood before the move.
    beginMoveRows(QModelIndex(), from, from, QModelIndex(), to > from ? to + 1 : to);
    m_pPrivate->Move(from, to);
    endMoveRows();
}

void LXPathsListModel::InsertSubPath(int row, int subPath, const LXPath& elements, int operation)
{
    int place = 0;
    const auto insert = [&](LXPathsListModelPrivate::Path& path) {
        place = qBound(0, subPath, path.subPaths.size());
        path.subPaths.insert(place, {elements, KnownOperation(operation)});
    };
    if (!m_pPrivate->Change(row, insert)) return;
    emit SubpathInserted(row, place);
    m_pPrivate->TellPointsChanged(row);
}

void LXPathsListModel::RemoveSubPath(int row, int subPath)
{
    bool exists = false;
    m_pPrivate->Change(row, [&](LXPathsListModelPrivate::Path& path) {
        exists = IsIndex(path.subPaths, subPath);
        if (exists) path.subPaths.removeAt(subPath);
    });
    if (!exists) return;
    emit SubpathRemoved(row, subPath);
    m_pPrivate->TellPointsChanged(row);
}

QPainterPath LXPathsListModel::CalcShape(const LXSubPaths& path) const
{
    return PathShape::Fold(path, m_pPrivate->document->GetDocumentSize());
}

QModelIndex LXPathsListModel::index(int row, int column, const QModelIndex& parent) const
{
    const bool exists = !parent.isValid() && m_pPrivate->IsRow(row) && column == 0;
    return exists ? createIndex(row, column) : QModelIndex();
}

QModelIndex LXPathsListModel::parent(const QModelIndex&) const
{
    return QModelIndex();
}

int LXPathsListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_pPrivate->Snapshot().size());
}

int LXPathsListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 1;
}

Qt::ItemFlags LXPathsListModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags always = QAbstractItemModel::flags(index);
    return index.isValid() ? always | Qt::ItemIsEditable | Qt::ItemNeverHasChildren : always;
}

QVariant LXPathsListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || !m_pPrivate->IsRow(index.row())) return QVariant();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return GetPathName(index.row());
    case Qt::DecorationRole: return m_pPrivate->GetThumbnail(index.row());
    case VisibleRole: return GetPathVisible(index.row());
    default: return QVariant();
    }
}
