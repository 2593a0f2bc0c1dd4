#pragma once

#include <QRect>
#include <QSize>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <mutex>
#include <vector>

/// Which tiles of the merged picture no longer show the layers. Any thread.
///
/// Every mark has a number from a rising count. Who recomposes first asks for the count, then reads the
/// layers, then takes the marks up to that count: a tile that was marked again meanwhile stays dirty, because
/// what was read of the layers may be older than the mark.
class DirtyTiles
{
public:
    using Count = std::uint64_t;

    /// Starts over with all tiles of a canvas of that size dirty.
    void Reset(const QSize& canvas);

    /// @param rect  canvas pixels; what lies outside the canvas is ignored
    void Mark(const QRect& rect);
    /// Marks single tiles again, when they couldn't be composed.
    void MarkTiles(const std::vector<int>& tiles);

    /// The present count.
    Count Now() const;
    /// A rectangle in canvas pixels, of whole tiles, around all tiles of the part that are dirty; empty when
    /// none is.
    /// @param part  canvas pixels; a tile belongs to it when they share a pixel
    QRect Bounds(const QRect& part) const;

    QRect Bounds() const { return Bounds(Everywhere); }

    /// Cleans the tiles of the part whose mark isn't newer than the count, and gives their indices, row by
    /// row.
    std::vector<int> Take(Count upTo, const QRect& part);

    std::vector<int> Take(Count upTo) { return Take(upTo, Everywhere); }

private:
    static constexpr QRect Everywhere{0, 0, std::numeric_limits<int>::max(), std::numeric_limits<int>::max()};

    /// Tiles that are to be marked.
    struct Note
    {
        QRect tiles;
        Count count;
    };

    QRect TilesOf(const QRect& rect) const;

    std::size_t IndexOf(int column, int row) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_Columns) +
               static_cast<std::size_t>(column);
    }

    void NoteLocked(const QRect& tiles);
    void MarkNotedLocked() const;

    mutable std::mutex m_Mutex;
    Count m_Count = 0;
    QRect m_Canvas;
    int m_Columns = 0;
    mutable std::vector<Note> m_Notes;
    mutable bool m_bAnyDirty = false;   ///< saves the search when nothing is, which is the usual case
    mutable std::vector<Count> m_Marks; ///< 0: clean; without what is noted
};
