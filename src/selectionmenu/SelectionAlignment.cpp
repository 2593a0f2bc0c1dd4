#include "selectionmenu/SelectionAlignment.h"

namespace {
int CenterDelta(int first, int last, int length)
{
    return (length - 1) / 2 - (first + last) / 2;
}
} // namespace

QPoint AlignmentDelta(SelectionAlignment alignment, const QRect& selection, const QSize& canvas)
{
    const int toCenterX = CenterDelta(selection.left(), selection.right(), canvas.width());
    const int toCenterY = CenterDelta(selection.top(), selection.bottom(), canvas.height());
    switch (alignment) {
    case SelectionAlignment::Center: return {toCenterX, toCenterY};
    case SelectionAlignment::HorizontalCenter: return {toCenterX, 0};
    case SelectionAlignment::VerticalCenter: return {0, toCenterY};
    case SelectionAlignment::Left: return {-selection.left(), 0};
    case SelectionAlignment::Right: return {canvas.width() - 1 - selection.right(), 0};
    case SelectionAlignment::Top: return {0, -selection.top()};
    case SelectionAlignment::Bottom: return {0, canvas.height() - 1 - selection.bottom()};
    }
    return {};
}
