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

void DirtyTiles::Mark(const QRect& rect)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    const QRect inside = rect & m_Canvas;
    if (inside.isEmpty()) return;

    const QPoint first(inside.left() >> TileShift, inside.top() >> TileShift);
    NoteLocked(QRect(first, QPoint(inside.right() >> TileShift, inside.bottom() >> TileShift)));
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

QRect DirtyTiles::Bounds() const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    MarkNotedLocked();
    QRect tiles;
    if (!m_bAnyDirty) return tiles;
    for (std::size_t i = 0; i < m_Marks.size(); ++i) {
        if (m_Marks[i] == 0) continue;
        const int tile = static_cast<int>(i);
        tiles |= QRect(tile % m_Columns, tile / m_Columns, 1, 1);
    }
    return QRect(tiles.topLeft() * TileSide, tiles.size() * TileSide);
}

std::vector<int> DirtyTiles::Take(Count upTo)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    MarkNotedLocked();
    std::vector<int> taken;
    m_bAnyDirty = false;
    for (std::size_t i = 0; i < m_Marks.size(); ++i) {
        if (m_Marks[i] == 0) continue;
        if (m_Marks[i] > upTo) {
            m_bAnyDirty = true;
            continue;
        }
        m_Marks[i] = 0;
        taken.push_back(static_cast<int>(i));
    }
    return taken;
}
