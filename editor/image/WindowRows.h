#pragma once

#include "image/InverseMap.h"
#include "image/LXImage.h"
#include "image/ResampleTaps.h"
#include "image/WindowKernels.h"

#include <QRect>

#include <vector>

/// The pixels of a row that need no look at the source's ends, for maps that turn or put in perspective: they
/// are mixed from a copy of the part of the source that a tile needs. One thread, one tile after the other.
class WindowRows
{
public:
    /// From the first to the one before the end.
    struct Range
    {
        int first;
        int end;
    };

    WindowRows(const LXImage32& source, const PlanarMap& map, ResampleKernel::Kind kind)
        : m_Source(source), m_Map(map), m_Kind(kind)
    {}

    /// Copies what a tile's part needs of the source. False when the part has to be made pixel by pixel: its
    /// windows are too wide, or it reaches behind the eye.
    bool Enter(const QRect& part);

    /// Which of the `count` pixels from (x, y) on, all in the part, may show something of the source at all.
    Range Touching(int x, int y, int count) const;
    /// Which of those lie so far inside that MakeRow() serves.
    Range Inside(int x, int y, int count) const;

    void MakeRow(int x, int y, int count, LXRGBA32i* pixels) const;

private:
    /// The widest a target pixel of the part is on one axis of the source, in source pixels.
    struct Widths
    {
        double x;
        double y;
    };

    bool BringNearOne(const QRect& part);
    Widths WidestIn(const QRect& part, double leastZ) const;
    void ReadBox(const QRect& part);
    Widths Margins() const;
    bool IsInside(const QRect& part) const;
    Range Within(int x, int y, int count, const Widths& margins, int slack) const;
    double ReachOf(double width) const;
    int TapsOf(double width) const;

    const LXImage32& m_Source;
    PlanarMap m_Map;
    ResampleKernel::Kind m_Kind;
    Widths m_Widest{1, 1};
    bool m_IsInside = false; ///< no pixel of the part needs a look at the ends
    QRect m_BoxRect;
    std::vector<LXRGBA32i> m_Box;
};
