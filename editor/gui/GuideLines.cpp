#include "gui/GuideLines.h"

#include "document/LXDocumentInterface.h"

#include <QPainter>
#include <QWidget>

namespace {
// Neither gray nor a color of skin, sky or leaves.
const QColor Ink(0x00, 0xb8, 0xd4);
} // namespace

GuideLines::GuideLines(const LXDocumentInterface* document, QWidget* viewport)
    : m_pDocument(document), m_pViewport(viewport)
{}

void GuideLines::Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place) const
{
    if (!m_bShown) return;
    for (const LXGuide& guide : m_Guides) {
        const QRect line = LineOf(guide, place) & exposed;
        if (!line.isEmpty()) painter.fillRect(line, Ink);
    }
}

void GuideLines::Update(const CanvasPlace& place)
{
    Repaint(place);
    m_Guides = m_pDocument->GetGuides();
    Repaint(place);
}

void GuideLines::SetShown(bool shown, const CanvasPlace& place)
{
    if (m_bShown == shown) return;
    m_bShown = true;
    Repaint(place);
    m_bShown = shown;
}

QRect GuideLines::LineOf(const LXGuide& guide, const CanvasPlace& place) const
{
    const QRect viewport = m_pViewport->rect();
    const bool isVertical = guide.orientation == Qt::Vertical;
    // Kept near the viewport as a real number: a guide may lie beyond what integers hold.
    const double origin = isVertical ? place.origin.x() : place.origin.y();
    const double extent = isVertical ? viewport.width() : viewport.height();
    const int at = qRound(qBound(-1.0, origin + guide.position * place.scale, extent));
    return isVertical ? QRect(at, 0, 1, viewport.height()) : QRect(0, at, viewport.width(), 1);
}

void GuideLines::Repaint(const CanvasPlace& place) const
{
    if (!m_bShown) return;
    for (const LXGuide& guide : m_Guides) {
        m_pViewport->update(LineOf(guide, place));
    }
}
