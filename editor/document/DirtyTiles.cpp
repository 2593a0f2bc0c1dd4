#include "document/DirtyTiles.h"

#include <algorithm>

namespace {
constexpr int TileShift = 7;
constexpr int TileSide = 1 << TileShift;

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
}

void DirtyTiles::Mark(const QRect& rect)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    const QRect inside = rect & m_Canvas;
    if (inside.isEmpty()) return;

    m_bAnyDirty = true;
    ++m_Count;
    for (int row = inside.top() >> TileShift; row <= inside.bottom() >> TileShift; ++row) {
        const auto first = m_Marks.begin() + row * m_Columns;
        std::fill(first + (inside.left() >> TileShift), first + (inside.right() >> TileShift) + 1, m_Count);
    }
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
    return m_Count;
}

QRect DirtyTiles::Bounds() const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
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
