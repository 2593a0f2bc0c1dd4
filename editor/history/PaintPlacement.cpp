#include "history/PaintPlacement.h"

#include <initializer_list>

namespace {
QRect FirstOfSize(const QSize& size, std::initializer_list<QRect> candidates)
{
    if (size.isEmpty()) return QRect();
    for (const QRect& candidate : candidates) {
        if (candidate.size() == size) return candidate;
    }
    return QRect();
}
} // namespace

QRect PaintPlacement::OfUndoImage(const QSize& image, const QRect& before, const QRect& after)
{
    return FirstOfSize(image, {before & after, before, after, before | after});
}

QRect PaintPlacement::OfRedoImage(const QSize& image, const QRect& before, const QRect& after)
{
    return FirstOfSize(image, {after, before & after, before | after, before});
}
