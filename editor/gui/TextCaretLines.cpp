#include "gui/TextCaretLines.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXImageHelper.h"

#include <QPainter>
#include <QTransform>
#include <QWidget>

namespace {
constexpr double CaretWidth = 1.5;
constexpr double UnderlineWidth = 1;
constexpr double HaloWidth = 2; ///< on either side
constexpr int Margin = 4;       ///< of what the widest line covers
const QColor Ink(0x1e, 0x1e, 0x1e);
const QColor Halo(0xff, 0xff, 0xff, 0xd0);

QTransform ToViewport(const CanvasPlace& place)
{
    return QTransform::fromScale(place.scale, place.scale) *
           QTransform::fromTranslate(place.origin.x(), place.origin.y());
}
} // namespace

TextCaretLines::TextCaretLines(const LXDocumentInterface* document, QWidget* viewport)
    : m_pDocument(document), m_pViewport(viewport)
{}

void TextCaretLines::Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place) const
{
    if (!m_bShown) return;
    painter.save();
    painter.setClipRect(exposed);
    painter.setRenderHint(QPainter::Antialiasing);
    const QTransform toViewport = ToViewport(place);
    const QLineF vertical = toViewport.map(m_Vertical);
    const QPolygonF underline = toViewport.map(m_Underline);
    const auto draw = [&](const QColor& color, double more) {
        painter.setPen(QPen(color, UnderlineWidth + more, Qt::SolidLine, Qt::RoundCap));
        painter.drawPolyline(underline);
        painter.setPen(QPen(color, CaretWidth + more, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(vertical);
    };
    draw(Halo, HaloWidth);
    draw(Ink, 0);
    painter.restore();
}

void TextCaretLines::Update(const CanvasPlace& place)
{
    m_pViewport->update(Area(place));
    const LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(m_pDocument);
    LXImageHelper helper;
    m_bShown = helper.InitHelper(m_pDocument, insides->CaretId());
    if (m_bShown) helper.GetVerticalAndUnderLine(insides->caret.index, &m_Vertical, &m_Underline);
    m_pViewport->update(Area(place));
}

/// Empty while nothing is shown.
QRect TextCaretLines::Area(const CanvasPlace& place) const
{
    if (!m_bShown) return QRect();
    const QPolygonF all = ToViewport(place).map(QPolygonF(m_Underline) << m_Vertical.p1() << m_Vertical.p2());
    const QRectF area = all.boundingRect().adjusted(-Margin, -Margin, Margin, Margin);
    return (area & QRectF(m_pViewport->rect())).toAlignedRect();
}
