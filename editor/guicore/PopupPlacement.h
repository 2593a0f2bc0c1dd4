#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

class QWidget;

/// Where a pop-up opens, in global coordinates.
namespace PopupPlacement {
/// The top left corner: below what the pop-up belongs to, with the left edges in line; else above; else to
/// the right or to the left with the top edges in line. Where no side has the room it lies below and covers
/// what it belongs to as far as it must. It always begins inside `available`, and ends there when it fits at
/// all.
/// @param anchor     what the pop-up belongs to
/// @param available  the part of the screen that windows may take
QPoint Beside(const QRect& anchor, const QSize& popup, const QRect& available);

/// The same beside a widget, on the screen that shows its middle. Main thread only.
QPoint Beside(const QWidget& anchor, const QSize& popup);
} // namespace PopupPlacement
