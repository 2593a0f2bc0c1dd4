#include "gui/NavigatorPlace.h"

#include <QtMath>

#include <cmath>

namespace {
constexpr int LeastFrame = 8;
constexpr int LastLevel = 7;

int NearestOnAxis(double wanted, double visible, int canvas)
{
    if (visible >= canvas) return canvas / 2;
    const double half = visible / 2;
    return qBound(0, qRound(qBound(half, wanted, canvas - half)), canvas - 1);
}

QRect GrownTo(const QRect& rect, int least)
{
    const QSize missing = (QSize(least, least) - rect.size()).expandedTo(QSize(0, 0));
    return rect.adjusted(-(missing.width() / 2), -(missing.height() / 2),
                         missing.width() - missing.width() / 2, missing.height() - missing.height() / 2);
}
} // namespace

NavigatorPlace::NavigatorPlace(const QSize& canvas, const QRect& room) : m_Canvas(canvas)
{
    if (canvas.isEmpty() || room.isEmpty()) return;
    const QSize fitting = canvas.scaled(room.size(), Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    m_Picture = QRect(QPoint(0, 0), fitting);
    m_Picture.moveCenter(room.center());
}

double NavigatorPlace::Scale() const
{
    if (m_Picture.isEmpty()) return 1;
    return qMax(double(m_Picture.width()) / m_Canvas.width(), double(m_Picture.height()) / m_Canvas.height());
}

int NavigatorPlace::Level(double ratio) const
{
    const double reduction = 1 / (Scale() * ratio);
    return reduction < 2 ? 0 : qMin(int(std::log2(reduction)), LastLevel);
}

QPointF NavigatorPlace::ToDocument(const QPointF& widgetPos) const
{
    if (m_Picture.isEmpty()) return QPointF();
    const QPointF pos = widgetPos - m_Picture.topLeft();
    return {pos.x() * m_Canvas.width() / m_Picture.width(), pos.y() * m_Canvas.height() / m_Picture.height()};
}

QRectF NavigatorPlace::ToWidget(const QRectF& docRect) const
{
    if (m_Picture.isEmpty()) return QRectF();
    const double across = double(m_Picture.width()) / m_Canvas.width();
    const double down = double(m_Picture.height()) / m_Canvas.height();
    return QRectF(m_Picture.left() + docRect.left() * across, m_Picture.top() + docRect.top() * down,
                  docRect.width() * across, docRect.height() * down);
}

QRect NavigatorPlace::Frame(const QRectF& viewRect) const
{
    const QRectF visible = viewRect & QRectF(QPointF(0, 0), QSizeF(m_Canvas));
    if (m_Picture.isEmpty() || visible.isEmpty()) return QRect();
    const QRectF shown = ToWidget(visible);
    const QPoint topLeft(qRound(shown.left()), qRound(shown.top()));
    const QPoint end(qRound(shown.right()), qRound(shown.bottom()));
    return GrownTo(QRect(topLeft, end - QPoint(1, 1)), LeastFrame);
}

QPoint NavigatorPlace::NearestCenter(const QPointF& wanted, const QSizeF& viewSize) const
{
    const QSizeF visible = viewSize.isEmpty() ? QSizeF(0, 0) : viewSize;
    return {NearestOnAxis(wanted.x(), visible.width(), m_Canvas.width()),
            NearestOnAxis(wanted.y(), visible.height(), m_Canvas.height())};
}
