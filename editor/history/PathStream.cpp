#include "history/PathStream.h"

#include <QIODevice>

namespace {
/// Bytes of an anchor with its guides and its flag, and the least that a sub path takes.
constexpr qint64 ElementLength = 3 * 2 * 8 + 1;
constexpr qint64 SubPathLength = 4 + 4;

/// How many entries follow; 0 for more than the bytes that are left can hold.
qint32 ReadCount(QDataStream& stream, qint64 entryLength)
{
    qint32 count = 0;
    stream >> count;
    const qint64 left = stream.device()->bytesAvailable();
    if (stream.status() == QDataStream::Ok && count >= 0 && count * entryLength <= left) return count;
    stream.setStatus(QDataStream::ReadCorruptData);
    return 0;
}
} // namespace

void PathStream::WritePath(QDataStream& stream, const LXPath& path)
{
    stream << qint32(path.size());
    for (const LXPathElement& element : path) {
        stream << element.GetCenterPoint() << element.GetInGuide() << element.GetOutGuide()
               << element.StartsContour();
    }
}

LXPath PathStream::ReadPath(QDataStream& stream)
{
    LXPath path;
    for (qint32 left = ReadCount(stream, ElementLength); left > 0; --left) {
        QPointF anchor;
        QPointF inGuide;
        QPointF outGuide;
        bool starts = false;
        stream >> anchor >> inGuide >> outGuide >> starts;
        path.append(LXPathElement(anchor, inGuide, outGuide));
        path.last().SetStartsContour(starts);
    }
    return path;
}

void PathStream::WriteSubPaths(QDataStream& stream, const LXSubPaths& path)
{
    stream << qint32(path.size());
    for (const auto& [elements, operation] : path) {
        stream << qint32(operation);
        WritePath(stream, elements);
    }
}

LXSubPaths PathStream::ReadSubPaths(QDataStream& stream)
{
    LXSubPaths path;
    for (qint32 left = ReadCount(stream, SubPathLength); left > 0; --left) {
        qint32 operation = 0;
        stream >> operation;
        path.append({ReadPath(stream), operation});
    }
    return path;
}
