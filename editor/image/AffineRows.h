#pragma once

#include "image/InverseMap.h"
#include "image/LXImage.h"
#include "image/ResampleKernels.h"
#include "image/ResampleTaps.h"

#include <vector>

/// The pixels of a row that need no look at the source's ends, for an affine map that doesn't shrink: they
/// are mixed from a copy of the part of the source that a tile needs. One thread, one tile after the other.
class AffineRows
{
public:
    /// From the first to the one before the end.
    struct Range
    {
        int first;
        int end;
    };

    /// Whether the map is one that this serves.
    static bool Serves(const AffineMap& map);

    AffineRows(const LXImage32& source, const AffineMap& map, ResampleKernel::Kind kind)
        : m_Source(source), m_Map(map), m_Kind(kind)
    {}

    /// Copies what a tile's part needs of the source.
    void Enter(const QRect& part);

    /// Which of the `count` pixels from (x, y) on may show something of the source at all.
    Range Touching(int x, int y, int count) const;
    /// Which of those lie so far inside that MakeRow() serves.
    Range Inside(int x, int y, int count) const;

    void MakeRow(int x, int y, int count, LXRGBA32i* pixels) const;

private:
    double XAt(int x, int y) const { return m_Map.xx * x + m_Map.yx * y + m_Map.left; }

    double YAt(int x, int y) const { return m_Map.xy * x + m_Map.yy * y + m_Map.top; }

    Range Within(int x, int y, int count, double margin, int slack) const;

    const LXImage32& m_Source;
    AffineMap m_Map;
    ResampleKernel::Kind m_Kind;
    QRect m_BoxRect;
    std::vector<LXRGBA32i> m_Box;
};
