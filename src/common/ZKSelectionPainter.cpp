#include "common/ZKSelectionPainter.h"

#include "common/OutlineRegion.h"

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainter>
#include <QPen>
#include <QTimerEvent>
#include <QtMath>

#include <cstring>

namespace {
constexpr int PatternSide = 8;

/// Slanting stripes, so that lines of every direction have dashes.
QImage MakePattern()
{
    QImage pattern(PatternSide, PatternSide, QImage::Format_RGB32);
    for (int y = 0; y < PatternSide; ++y) {
        for (int x = 0; x < PatternSide; ++x) {
            const bool isBlack = (x + y) % PatternSide < PatternSide / 2;
            pattern.setPixel(x, y, isBlack ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
        }
    }
    return pattern;
}

/// Device pixels for each screen pixel.
double PixelRatio(const QPainter& painter)
{
    const double world = qAbs(painter.worldTransform().determinant());
    return world > 0 ? qSqrt(qAbs(painter.deviceTransform().determinant()) / world) : 1;
}
} // namespace

ZKSelectionPainter::ZKSelectionPainter() : m_Pattern(MakePattern()), m_Brush(m_Pattern) {}

void ZKSelectionPainter::paint(QPainter* painter, const QPainterPath& path)
{
    if (m_Path != path) {
        m_Path = path;
        m_Viewport = QRect();
    }
    if (path.isEmpty()) return;

    // Dashes of screen pixels, whatever the zoom.
    QBrush brush = m_Brush;
    brush.setTransform(painter->transform().inverted());
    // Qt takes the width of a cosmetic pen for pixels of the device.
    QPen pen(brush, PixelRatio(*painter), Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
    pen.setCosmetic(true);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    painter->drawPath(path);
}

void ZKSelectionPainter::start(QGraphicsItem* item, int interval)
{
    if (m_TimerId != 0) killTimer(m_TimerId);
    m_pItem = item;
    m_TimerId = startTimer(interval);
}

void ZKSelectionPainter::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_TimerId) {
        QObject::timerEvent(event);
        return;
    }
    StepPattern();
    if (!m_pItem->scene() || !m_pItem->isVisible()) return;

    // The item's own update() would paint all that lies inside the outline.
    const QList<QGraphicsView*> views = m_pItem->scene()->views();
    for (const QGraphicsView* view : views) {
        if (view->viewport()->isVisible()) view->viewport()->update(OutlineIn(view));
    }
}

// Each row goes one down, the last one to the top.
void ZKSelectionPainter::StepPattern()
{
    const QImage old = m_Pattern;
    const auto rowBytes = static_cast<std::size_t>(old.bytesPerLine());
    for (int row = 0; row < PatternSide; ++row) {
        const int from = (row + PatternSide - 1) % PatternSide;
        std::memcpy(m_Pattern.scanLine(row), old.constScanLine(from), rowBytes);
    }
    m_Brush = QBrush(m_Pattern);
}

QRegion ZKSelectionPainter::OutlineIn(const QGraphicsView* view)
{
    const QTransform toView = m_pItem->deviceTransform(view->viewportTransform());
    const QRect viewport = view->viewport()->rect();
    if (m_ToView != toView || m_Viewport != viewport) {
        m_Outline = OutlineRegion(toView.map(m_Path), viewport);
        m_ToView = toView;
        m_Viewport = viewport;
    }
    return m_Outline;
}
