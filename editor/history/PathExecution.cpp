#include "history/PathExecution.h"

#include "document/LXPathConvert.h"
#include "document/LXPathsListModel.h"
#include "history/ChangeSubpathCommandData.h"
#include "history/CommandDataType.h"
#include "history/InsertPathCommandData.h"
#include "history/InsertSubpathCommandData.h"
#include "history/RemovePathCommandData.h"
#include "history/RemoveSubpathCommandData.h"
#include "history/TransformPathCommandData.h"

#include <QPainterPath>

namespace {
/// Index of what redo didn't find, so that undo brings nothing back.
constexpr int NotThere = -1;

template <class Data>
Data& As(LexoCommandData& data)
{
    return static_cast<Data&>(data);
}

template <class Data>
const Data& As(const LexoCommandData& data)
{
    return static_cast<const Data&>(data);
}

bool IsMeant(const TransformPathCommandData& data, int subPath)
{
    return data.GetSubpathIndex() < 0 || data.GetSubpathIndex() == subPath;
}

bool IsRow(const LXPathsListModel& paths, int row)
{
    return row >= 0 && row < paths.rowCount();
}

/// Open editors of the sub paths look at them anew.
void TellCommitted(LXPathsListModel& paths, const TransformPathCommandData& data)
{
    if (!IsRow(paths, data.GetPathIndex())) return;
    for (int i = 0; i < data.GetPath().size(); ++i) {
        if (IsMeant(data, i)) emit paths.ChangesCommitted(data.GetPathIndex(), i);
    }
}

/// The top left of the box that the transform maps, which it takes to stand at the origin.
QPointF BoxOrigin(const TransformPathCommandData& data)
{
    QRectF box;
    for (int i = 0; i < data.GetPath().size(); ++i) {
        if (IsMeant(data, i)) box |= ConvertFrom(data.GetPath()[i].first).boundingRect();
    }
    return box.topLeft();
}

void Transform(LXPathsListModel& paths, const TransformPathCommandData& data)
{
    const QPointF origin = BoxOrigin(data);
    LXSubPaths path = data.GetPath();
    for (int i = 0; i < path.size(); ++i) {
        if (!IsMeant(data, i)) continue;
        for (LXPathElement& element : path[i].first)
            element.Translate(-origin);
        TransformPath(path[i].first, data.GetTransform());
    }
    paths.SetPath(data.GetPathIndex(), path);
    TellCommitted(paths, data);
}

void PutBack(LXPathsListModel& paths, const TransformPathCommandData& data)
{
    paths.SetPath(data.GetPathIndex(), data.GetPath());
    TellCommitted(paths, data);
}

void RemovePath(LXPathsListModel& paths, RemovePathCommandData& data)
{
    const int row = data.GetPathIndex();
    if (!IsRow(paths, row)) return data.SetPathIndex(NotThere);
    // What a tool put in may be older than what the list holds by now.
    data.SetPathName(paths.GetPathName(row));
    data.SetPath(paths.GetPath(row));
    data.SetPathVisible(paths.GetPathVisible(row));
    paths.RemovePath(row);
}

void BringBackPath(LXPathsListModel& paths, const RemovePathCommandData& data)
{
    if (data.GetPathIndex() == NotThere) return;
    paths.InsertPath(data.GetPathIndex(), data.GetPathName(), data.GetPath());
    paths.SetPathVisible(data.GetPathIndex(), data.GetPathVisible());
}

void InsertPath(LXPathsListModel& paths, InsertPathCommandData& data)
{
    data.SetPathIndex(qBound(0, data.GetPathIndex(), paths.rowCount()));
    paths.InsertPath(data.GetPathIndex(), data.GetPathName());
}

void RemoveSubpath(LXPathsListModel& paths, RemoveSubpathCommandData& data)
{
    const int count = paths.GetSubPathsCount(data.GetPathIndex());
    if (data.GetSubpathIndex() < 0 || data.GetSubpathIndex() >= count) data.SetSubpathIndex(NotThere);
    paths.RemoveSubPath(data.GetPathIndex(), data.GetSubpathIndex());
}

void BringBackSubpath(LXPathsListModel& paths, const RemoveSubpathCommandData& data)
{
    if (data.GetSubpathIndex() == NotThere) return;
    paths.InsertSubPath(data.GetPathIndex(), data.GetSubpathIndex(), data.GetUndoData(), data.GetLogicalOp());
}

void InsertSubpath(LXPathsListModel& paths, InsertSubpathCommandData& data)
{
    const int count = paths.GetSubPathsCount(data.GetPathIndex());
    data.SetSubpathIndex(qBound(0, data.GetSubpathIndex(), count));
    paths.InsertSubPath(data.GetPathIndex(), data.GetSubpathIndex(), data.GetData(), data.GetLogicalOp());
}

void ChangeSubpath(LXPathsListModel& paths, const ChangeSubpathCommandData& data, const LXPath& elements)
{
    paths.SetSubPath(data.GetPathIndex(), data.GetSubpathIndex(), elements, true);
}
} // namespace

bool PathExecution::IsPathData(const LexoCommandData* data)
{
    if (!data) return false;
    switch (data->GetDataType()) {
    case CommandDataType::TransformPath:
    case CommandDataType::ChangeSubpath:
    case CommandDataType::RemoveSubpath:
    case CommandDataType::InsertSubpath:
    case CommandDataType::RemovePath:
    case CommandDataType::InsertPath: return true;
    default: return false;
    }
}

void PathExecution::Redo(LXPathsListModel& paths, LexoCommandData& data)
{
    switch (data.GetDataType()) {
    case CommandDataType::TransformPath: return Transform(paths, As<TransformPathCommandData>(data));
    case CommandDataType::ChangeSubpath: {
        const auto& change = As<ChangeSubpathCommandData>(data);
        return ChangeSubpath(paths, change, change.GetRedoData());
    }
    case CommandDataType::RemoveSubpath: return RemoveSubpath(paths, As<RemoveSubpathCommandData>(data));
    case CommandDataType::InsertSubpath: return InsertSubpath(paths, As<InsertSubpathCommandData>(data));
    case CommandDataType::RemovePath: return RemovePath(paths, As<RemovePathCommandData>(data));
    case CommandDataType::InsertPath: return InsertPath(paths, As<InsertPathCommandData>(data));
    default: return;
    }
}

void PathExecution::Undo(LXPathsListModel& paths, const LexoCommandData& data)
{
    switch (data.GetDataType()) {
    case CommandDataType::TransformPath: return PutBack(paths, As<TransformPathCommandData>(data));
    case CommandDataType::ChangeSubpath: {
        const auto& change = As<ChangeSubpathCommandData>(data);
        return ChangeSubpath(paths, change, change.GetUndoData());
    }
    case CommandDataType::RemoveSubpath: return BringBackSubpath(paths, As<RemoveSubpathCommandData>(data));
    case CommandDataType::InsertSubpath: {
        const auto& insert = As<InsertSubpathCommandData>(data);
        return paths.RemoveSubPath(insert.GetPathIndex(), insert.GetSubpathIndex());
    }
    case CommandDataType::RemovePath: return BringBackPath(paths, As<RemovePathCommandData>(data));
    case CommandDataType::InsertPath: return paths.RemovePath(As<InsertPathCommandData>(data).GetPathIndex());
    default: return;
    }
}
