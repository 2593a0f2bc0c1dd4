#include "gui/SampleMarks.h"

#include "document/LXColorSampleModel.h"

#include <QPainter>
#include <QPainterPath>
#include <QWidget>

namespace {
constexpr double Radius = 5;
constexpr double Tick = 3; ///< length of the four lines that point at the middle from outside
constexpr int NumberSize = 8;
constexpr double HaloWidth = 3;
const QColor Ink(0x1e, 0x1e, 0x1e);
const QColor Halo(0xff, 0xff, 0xff, 0xd0);
/// Round the middle, in viewport pixels: the ring, its ticks and a number of three digits.
constexpr QRect MarkArea(-12, -12, 44, 36);

/// Where the middle of the pixel shows.
QPointF MiddleOf(const QPoint& point, const CanvasPlace& place)
{
    return QPointF(place.origin) + (QPointF(point) + QPointF(0.5, 0.5)) * place.scale;
}

/// The mark round the origin; its number stands to the right below it.
QPainterPath RingWithTicks()
{
    QPainterPath ring;
    ring.addEllipse(QPointF(0, 0), Radius, Radius);
    for (const QPointF& direction : {QPointF(1, 0), QPointF(0, 1), QPointF(-1, 0), QPointF(0, -1)}) {
        ring.moveTo(direction * Radius);
        ring.lineTo(direction * (Radius + Tick));
    }
    return ring;
}

QPainterPath NumberPath(int number, QFont font)
{
    font.setPointSize(NumberSize);
    QPainterPath text;
    text.addText(QPointF(Radius + 2, Radius + NumberSize + 2), font, QString::number(number));
    return text;
}
} // namespace

SampleMarks::SampleMarks(const LXColorSampleModel* samples, QWidget* viewport)
    : m_pSamples(samples), m_pViewport(viewport)
{}

void SampleMarks::Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place) const
{
    if (!m_bShown || m_Points.empty()) return;
    painter.save();
    painter.setClipRect(exposed);
    painter.setRenderHint(QPainter::Antialiasing);
    for (size_t row = 0; row < m_Points.size(); ++row) {
        const QPointF middle = MiddleOf(m_Points[row], place);
        if (!QRectF(MarkArea).translated(middle).intersects(exposed)) continue;
        const QPainterPath ring = RingWithTicks().translated(middle);
        const QPainterPath number =
            NumberPath(static_cast<int>(row) + 1, m_pViewport->font()).translated(middle);
        for (const QPainterPath& shape : {ring, number})
            painter.strokePath(shape, QPen(Halo, HaloWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.strokePath(ring, QPen(Ink, 1));
        painter.fillPath(number, Ink);
    }
    painter.restore();
}

void SampleMarks::Update(const CanvasPlace& place)
{
    Repaint(place);
    m_Points.clear();
    for (int row = 0; row < m_pSamples->rowCount(); ++row)
        m_Points.push_back(m_pSamples->GetPoint(row));
    Repaint(place);
}

void SampleMarks::SetShown(bool shown, const CanvasPlace& place)
{
    m_bShown = shown;
    Repaint(place);
}

void SampleMarks::Repaint(const CanvasPlace& place) const
{
    for (const QPoint& point : m_Points) {
        const QRectF area = QRectF(MarkArea).translated(MiddleOf(point, place)) & QRectF(m_pViewport->rect());
        if (!area.isEmpty()) m_pViewport->update(area.toAlignedRect());
    }
}
