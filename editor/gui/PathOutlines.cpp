#include "gui/PathOutlines.h"

#include "document/LXPathSelectionModel.h"
#include "document/LXPathsListModel.h"
#include "document/PathShape.h"

#include <QPainter>
#include <QWidget>

namespace {
constexpr double HaloWidth = 3;
constexpr int Margin = 3; ///< viewport pixels that a line reaches beyond its path
const QColor Ink(0x1e, 0x1e, 0x1e);
const QColor Halo(0xff, 0xff, 0xff, 0xd0);
constexpr double DimOpacity = 0.5;

QPen MakePen(const QColor& color, double width)
{
    QPen pen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    pen.setCosmetic(true);
    return pen;
}

QTransform ToViewport(const CanvasPlace& place)
{
    return {place.scale, 0, 0, place.scale, double(place.origin.x()), double(place.origin.y())};
}
} // namespace

PathOutlines::PathOutlines(const LXPathsListModel* paths, const LXPathSelectionModel* selection,
                           QWidget* viewport)
    : m_pPaths(paths), m_pSelection(selection), m_pViewport(viewport)
{}

void PathOutlines::Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place) const
{
    if (m_Outlines.empty()) return;
    painter.save();
    painter.setClipRect(exposed);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(ToViewport(place), true);
    for (const Outline& outline : m_Outlines) {
        painter.setOpacity(outline.isCurrent ? 1.0 : DimOpacity);
        painter.strokePath(outline.path, MakePen(Halo, HaloWidth));
        painter.strokePath(outline.path, MakePen(Ink, 1));
    }
    painter.restore();
}

void PathOutlines::Update(const CanvasPlace& place)
{
    Repaint(place);
    m_Outlines.clear();
    const int current = m_pSelection->CurrentPath();
    for (int row = m_pPaths->rowCount() - 1; row >= 0; --row) {
        if (row != current && m_pPaths->GetPathVisible(row))
            m_Outlines.push_back({PathShape::Outline(m_pPaths->GetPath(row)), false});
    }
    if (current >= 0) m_Outlines.push_back({PathShape::Outline(m_pPaths->GetPath(current)), true});
    Repaint(place);
}

void PathOutlines::Repaint(const CanvasPlace& place) const
{
    for (const Outline& outline : m_Outlines) {
        const QRectF bounds = ToViewport(place).mapRect(outline.path.controlPointRect());
        // Cut as real numbers: a path may lie beyond what integers hold.
        const QRectF viewport = QRectF(m_pViewport->rect()).adjusted(-Margin, -Margin, Margin, Margin);
        const QRectF seen = bounds.adjusted(-Margin, -Margin, Margin, Margin) & viewport;
        if (!seen.isEmpty()) m_pViewport->update(seen.toAlignedRect());
    }
}
