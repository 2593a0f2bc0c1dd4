#include "guicore/PopupPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace {
/// The start of a length that is moved into the range as far as it fits; the range's start wins.
int MovedInto(int start, int length, int first, int end)
{
    return qMax(first, qMin(start, end - length));
}
} // namespace

QPoint PopupPlacement::Beside(const QRect& anchor, const QSize& popup, const QRect& available)
{
    const int right = available.right() + 1;
    const int bottom = available.bottom() + 1;
    const int x = MovedInto(anchor.left(), popup.width(), available.left(), right);
    const int y = MovedInto(anchor.top(), popup.height(), available.top(), bottom);
    const int below = anchor.bottom() + 1;
    // Beside what isn't seen itself, no side is better than another.
    if (!anchor.intersects(available)) return {x, MovedInto(below, popup.height(), available.top(), bottom)};

    if (below + popup.height() <= bottom) return {x, below};
    const int above = anchor.top() - popup.height();
    if (above >= available.top()) return {x, above};
    const int behind = anchor.right() + 1;
    if (behind + popup.width() <= right) return {behind, y};
    const int before = anchor.left() - popup.width();
    if (before >= available.left()) return {before, y};
    return {x, MovedInto(below, popup.height(), available.top(), bottom)};
}

QPoint PopupPlacement::Beside(const QWidget& anchor, const QSize& popup)
{
    const QRect place(anchor.mapToGlobal(QPoint(0, 0)), anchor.size());
    const QScreen* screen = QGuiApplication::screenAt(place.center());
    if (!screen) screen = anchor.screen();
    return Beside(place, popup, screen->availableGeometry());
}
