#include "document/DirtyTiles.h"

#include <algorithm>

namespace {
constexpr int TileShift = 7;
constexpr int TileSide = 1 << TileShift;
/// A piece that is dragged marks where it was and where it is, several times.
constexpr std::size_t MostNotes = 8;

int TilesFor(int length)
{
    return (length + TileSide - 1) >> TileShift;
}
} // namespace

void DirtyTiles::Reset(const QSize& canvas)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_Canvas = QRect(QPoint(0, 0), canvas);
    m_Columns = TilesFor(canvas.width());
    m_Marks.assign(static_cast<std::size_t>(m_Columns) * static_cast<std::size_t>(TilesFor(canvas.height())),
                   ++m_Count);
    m_bAnyDirty = !m_Marks.empty();
    m_Notes.clear();
}

/// Columns and rows; empty when the rectangle misses the canvas.
QRect DirtyTiles::TilesOf(const QRect& rect) const
{
    const QRect inside = rect & m_Canvas;
    if (inside.isEmpty()) return QRect();
    return QRect(QPoint(inside.left() >> TileShift, inside.top() >> TileShift),
                 QPoint(inside.right() >> TileShift, inside.bottom() >> TileShift));
}

void DirtyTiles::Mark(const QRect& rect)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    const QRect tiles = TilesOf(rect);
    if (!tiles.isEmpty()) NoteLocked(tiles);
}

/// Notes join only until somebody asks for the count: what that one has seen must not look newer later.
void DirtyTiles::NoteLocked(const QRect& tiles)
{
    ++m_Count;
    for (Note& note : m_Notes) {
        if (!note.tiles.contains(tiles) && !tiles.contains(note.tiles)) continue;
        note = {note.tiles | tiles, m_Count};
        return;
    }
    if (m_Notes.size() == MostNotes) MarkNotedLocked();
    m_Notes.push_back({tiles, m_Count});
}

void DirtyTiles::MarkNotedLocked() const
{
    for (const Note& note : m_Notes) {
        m_bAnyDirty = true;
        for (int row = note.tiles.top(); row <= note.tiles.bottom(); ++row) {
            const auto first = m_Marks.begin() + row * m_Columns;
            std::transform(first + note.tiles.left(), first + note.tiles.right() + 1,
                           first + note.tiles.left(),
                           [&note](Count mark) { return std::max(mark, note.count); });
        }
    }
    m_Notes.clear();
}

void DirtyTiles::MarkTiles(const std::vector<int>& tiles)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    ++m_Count;
    for (const int tile : tiles) {
        m_Marks[static_cast<std::size_t>(tile)] = m_Count;
        m_bAnyDirty = true;
    }
}

DirtyTiles::Count DirtyTiles::Now() const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    MarkNotedLocked();
    return m_Count;
}

QRect DirtyTiles::Bounds(const QRect& part) const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    MarkNotedLocked();
    QRect dirty;
    if (!m_bAnyDirty) return dirty;
    const QRect tiles = TilesOf(part);
    for (int row = tiles.top(); row <= tiles.bottom(); ++row) {
        for (int column = tiles.left(); column <= tiles.right(); ++column) {
            if (m_Marks[IndexOf(column, row)] != 0) dirty |= QRect(column, row, 1, 1);
        }
    }
    return QRect(dirty.topLeft() * TileSide, dirty.size() * TileSide);
}

std::vector<int> DirtyTiles::Take(Count upTo, const QRect& part)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    MarkNotedLocked();
    std::vector<int> taken;
    const QRect tiles = TilesOf(part);
    for (int row = tiles.top(); row <= tiles.bottom(); ++row) {
        for (int column = tiles.left(); column <= tiles.right(); ++column) {
            Count& mark = m_Marks[IndexOf(column, row)];
            if (mark == 0 || mark > upTo) continue;
            mark = 0;
            taken.push_back(static_cast<int>(IndexOf(column, row)));
        }
    }
    m_bAnyDirty = std::any_of(m_Marks.begin(), m_Marks.end(), [](Count mark) { return mark != 0; });
    return taken;
}
