#pragma once

#include "document/LXPathConvert.h"
#include "document/LXPathsListModel.h"

#include <QPainterPath>
#include <QRectF>
#include <QStringList>

/// Paths for tests, and the signals of their list.
namespace PathFixture {
/// A closed sub path of five anchors.
inline LXPath Rectangle(const QRectF& rect)
{
    QPainterPath path;
    path.addRect(rect);
    return ConvertTo(path);
}

inline LXPath Ellipse(const QRectF& rect)
{
    QPainterPath path;
    path.addEllipse(rect);
    return ConvertTo(path);
}

/// An open sub path of two anchors.
inline LXPath Line(const QPointF& from, const QPointF& to)
{
    return {LXPathElement(from), LXPathElement(to)};
}

/// Every signal of a list of paths, in order, as "Name arguments".
class PathSignals
{
public:
    explicit PathSignals(const LXPathsListModel* paths)
    {
        using M = LXPathsListModel;
        const auto note = [lines = m_pLines](const QString& line) { *lines << line; };
        QObject::connect(paths, &M::PathChanged, [note] { note("PathChanged"); });
        QObject::connect(paths, &M::SubpathInserted, [note](int row, int subPath) {
            note(QString("SubpathInserted %1 %2").arg(row).arg(subPath));
        });
        QObject::connect(paths, &M::SubpathRemoved, [note](int row, int subPath) {
            note(QString("SubpathRemoved %1 %2").arg(row).arg(subPath));
        });
        QObject::connect(paths, &M::ChangesCommitted, [note](int row, int subPath) {
            note(QString("ChangesCommitted %1 %2").arg(row).arg(subPath));
        });
        QObject::connect(paths, &M::rowsInserted, [note](const QModelIndex&, int first) {
            note(QString("rowsInserted %1").arg(first));
        });
        QObject::connect(paths, &M::rowsRemoved, [note](const QModelIndex&, int first) {
            note(QString("rowsRemoved %1").arg(first));
        });
        QObject::connect(paths, &M::rowsMoved,
                         [note](const QModelIndex&, int first) { note(QString("rowsMoved %1").arg(first)); });
    }

    QStringList Take() { return std::exchange(*m_pLines, QStringList()); }

private:
    std::shared_ptr<QStringList> m_pLines = std::make_shared<QStringList>();
};
} // namespace PathFixture
