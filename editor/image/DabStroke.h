#pragma once

#include "image/LXImage.h"
#include "image/RoundDab.h"
#include "image/StrokeRuns.h"

#include <QPainterPath>
#include <QRect>

#include <functional>
#include <vector>

/// The pixels of a stroke: dabs along a path. Where they overlap, the strongest counts, so a stroke doesn't
/// build up however dense they are and however often it crosses itself. Any thread.
class DabStroke
{
public:
    /// Middles of dabs can't be told apart below this, in pixels.
    static constexpr double MinSpacing = 0.25;

    /// @param spacing  from dab to dab along the path, in pixels, at least MinSpacing
    /// @param limit    the pixels that count
    DabStroke(const QPainterPath& path, const RoundDab& dab, double spacing, const QRect& limit);

    /// The pixels that dabs may touch, inside the limit; null for none.
    const QRect& Bounds() const { return m_Bounds; }

    /// How many pieces of work Draw() consists of.
    int CountTiles() const;

    /// A picture of the size of Bounds(): `color` with the strength as its alpha, and 0 where there is none.
    /// @param tileDone  called after each piece, by the thread that did it
    /// Throws what images throw, and TileThreads::Cancelled.
    LXImage32 Draw(LXRGBA32i color, const std::function<void()>& tileDone) const;

private:
    RoundDab m_Dab;
    std::vector<StrokeRun> m_Runs;
    QRect m_Bounds;
};
