#include "gui/TileReduction.h"

#include "image/TileNature.h"
#include "image/TileThreads.h"

#include <QPair>

#include <algorithm>
#include <array>
#include <cstddef>

namespace {
constexpr int SourceTileSize = 128;
constexpr int PieceTiles = 4; ///< what a thread takes at a time

const QRgb* PixelAt(const LXRGBA32i* tile, int x, int y)
{
    return reinterpret_cast<const QRgb*>(tile) + y * SourceTileSize + x;
}

quint32 Mean(quint64 sum, quint64 divisor)
{
    return quint32((sum + divisor / 2) / divisor);
}

/// Rows of a tile, of which each column is added up on its own: a plain loop over bytes, which the compiler
/// turns into vectors. 16 bits hold the sums of 128 rows.
class ColumnSums
{
public:
    void Start()
    {
        m_Sums.fill(0);
        m_Common.fill(0xffffffff);
    }

    void Add(const QRgb* row, int first, int last)
    {
        const auto* const bytes = reinterpret_cast<const quint8*>(row);
        for (int i = 4 * first; i < 4 * last; ++i)
            m_Sums[std::size_t(i)] = quint16(m_Sums[std::size_t(i)] + bytes[i]);
        for (int i = first; i < last; ++i)
            m_Common[std::size_t(i)] &= row[i];
    }

    bool AreOpaque(int first, int last) const
    {
        QRgb common = 0xffffffff;
        for (int i = first; i < last; ++i)
            common &= m_Common[std::size_t(i)];
        return qAlpha(common) == 255;
    }

    /// The mean of the columns, which must be opaque.
    QRgb Mean(int first, int last, int rows) const
    {
        std::array<quint32, 4> sums = {};
        for (int i = 4 * first; i < 4 * last; ++i)
            sums[std::size_t(i % 4)] += m_Sums[std::size_t(i)];
        const quint64 count = quint64(last - first) * quint64(rows);
        return 0xff000000 | ::Mean(sums[2], count) << 16 | ::Mean(sums[1], count) << 8 |
               ::Mean(sums[0], count);
    }

private:
    std::array<quint16, 4 * SourceTileSize> m_Sums;
    std::array<QRgb, SourceTileSize> m_Common;
};

/// alpha = sum(a) / n, color = sum(c a) / (255 n); the sums of 128 x 128 pixels overflow 32 bits.
/// @param box  tile coordinates
QRgb MeanByAlpha(const LXRGBA32i* tile, const QRect& box)
{
    quint64 alphas = 0;
    quint64 reds = 0;
    quint64 greens = 0;
    quint64 blues = 0;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        const QRgb* const row = PixelAt(tile, box.left(), y);
        for (int x = 0; x < box.width(); ++x) {
            const quint64 alpha = quint64(qAlpha(row[x]));
            alphas += alpha;
            reds += quint64(qRed(row[x])) * alpha;
            greens += quint64(qGreen(row[x])) * alpha;
            blues += quint64(qBlue(row[x])) * alpha;
        }
    }
    const quint64 count = quint64(box.width()) * quint64(box.height());
    return Mean(alphas, count) << 24 | Mean(reds, 255 * count) << 16 | Mean(greens, 255 * count) << 8 |
           Mean(blues, 255 * count);
}

/// One row of a level from one tile.
/// @param rows   the tile's rows that it is made of
/// @param first  the tile's column at which its first box begins
/// @param width  how many of the tile's columns belong to the picture
void ReduceRow(const LXRGBA32i* tile, const QPair<int, int>& rows, int first, int width, int level, QRgb* out,
               int count)
{
    const int end = qMin(first + (count << level), width);
    ColumnSums sums;
    sums.Start();
    for (int y = rows.first; y < rows.second; ++y)
        sums.Add(PixelAt(tile, 0, y), first, end);
    for (int x = 0; x < count; ++x) {
        const int left = first + (x << level);
        const int right = qMin(left + (1 << level), width);
        const QRect box(QPoint(left, rows.first), QPoint(right - 1, rows.second - 1));
        out[x] = sums.AreOpaque(left, right) ? sums.Mean(left, right, rows.second - rows.first)
                                             : MeanByAlpha(tile, box);
    }
}

void PremultiplyRow(const QRgb* row, QRgb* out, int count)
{
    QRgb common = 0xffffffff;
    for (int x = 0; x < count; ++x)
        common &= row[x];
    if (qAlpha(common) == 255) {
        std::copy(row, row + count, out);
    } else {
        std::transform(row, row + count, out, [](QRgb pixel) { return qPremultiply(pixel); });
    }
}

/// The image that is written, reached without a look at whether others share it: tiles are reduced by several
/// threads.
class Target
{
public:
    explicit Target(QImage& image) : m_pBits(image.bits()), m_RowBytes(image.bytesPerLine()) {}

    QRgb* At(const QPoint& place) const
    {
        return reinterpret_cast<QRgb*>(m_pBits + std::ptrdiff_t(place.y()) * m_RowBytes) + place.x();
    }

private:
    uchar* m_pBits;
    int m_RowBytes;
};

/// @param levelRect  pixels of the level whose boxes lie in the tile
/// @param tileRect   the tile's pixels that belong to the picture, picture coordinates
void ReduceTile(const LXRGBA32i* tile, const QRect& tileRect, int level, const QRect& levelRect,
                const Target& target, const QPoint& at)
{
    const int first = (levelRect.x() << level) - tileRect.x();
    for (int y = 0; y < levelRect.height(); ++y) {
        QRgb* const out = target.At(at + QPoint(0, y));
        const int top = ((levelRect.y() + y) << level) - tileRect.y();
        const int bottom = qMin(top + (1 << level), tileRect.height());
        if (level == 0) {
            PremultiplyRow(PixelAt(tile, first, top), out, levelRect.width());
        } else {
            ReduceRow(tile, {top, bottom}, first, tileRect.width(), level, out, levelRect.width());
        }
    }
}

/// What every box of a solid tile gives.
void WriteSolid(LXRGBA32i color, int level, const QSize& size, const Target& target, const QPoint& at)
{
    const QRgb mean = level == 0 ? qPremultiply(color.value) : MeanByAlpha(&color, QRect(0, 0, 1, 1));
    for (int y = 0; y < size.height(); ++y)
        std::fill_n(target.At(at + QPoint(0, y)), size.width(), mean);
}

/// Whether the tile's first pixels, so many in each direction, are all the same.
bool IsSolid(const LXRGBA32i* tile, const QSize& size)
{
    for (int y = 0; y < size.height(); ++y) {
        const QRgb* const row = PixelAt(tile, 0, y);
        quint32 differing = 0;
        for (int x = 0; x < size.width(); ++x)
            differing |= row[x] ^ tile->value;
        if (differing != 0) return false;
    }
    return true;
}

QRect SourceOf(const QRect& levelRect, int level)
{
    return QRect(levelRect.topLeft() * (1 << level), levelRect.size() * (1 << level));
}

/// A few tiles of a row, for one thread.
struct Piece
{
    const Reduction* part;
    const Target* target;
    int row;
    int firstColumn;
    int lastColumn;
};

class Reducer
{
public:
    Reducer(const LXImage32& picture, int level) : m_Picture(picture), m_Level(level) {}

    void Run(const Piece& piece) const
    {
        for (int column = piece.firstColumn; column <= piece.lastColumn; ++column)
            ReduceOne(*piece.part, *piece.target, column, piece.row);
    }

private:
    void ReduceOne(const Reduction& reduction, const Target& target, int column, int row) const
    {
        const int step = SourceTileSize >> m_Level;
        const QRect part = QRect(column * step, row * step, step, step) & reduction.levelRect;
        const QPoint place = reduction.at + part.topLeft() - reduction.levelRect.topLeft();
        const TileNature nature = TileNature::Of(*m_Picture.TileAt(column, row));
        if (nature.isSolid) {
            WriteSolid(nature.color, m_Level, part.size(), target, place);
            return;
        }
        const QRect whole(column * SourceTileSize, row * SourceTileSize, SourceTileSize, SourceTileSize);
        const QRect tileRect = whole & m_Picture.Rect();
        const auto reader = m_Picture.ReadTile(column, row);
        // A tile that the picture's edge cuts may be of one color as far as it counts.
        if (tileRect != whole && IsSolid(reader.Pixels(), tileRect.size())) {
            WriteSolid(*reader.Pixels(), m_Level, part.size(), target, place);
        } else {
            ReduceTile(reader.Pixels(), tileRect, m_Level, part, target, place);
        }
    }

    const LXImage32& m_Picture;
    int m_Level;
};
} // namespace

void ReduceInto(const LXImage32& picture, int level, const QRect& levelRect, QImage& image, const QPoint& at)
{
    ReduceInto(picture, level, {Reduction{levelRect, &image, at}});
}

void ReduceInto(const LXImage32& picture, int level, const std::vector<Reduction>& parts)
{
    std::vector<Target> targets;
    targets.reserve(parts.size());
    std::vector<Piece> pieces;
    for (const Reduction& part : parts) {
        targets.emplace_back(*part.image);
        const QRect source = SourceOf(part.levelRect, level) & picture.Rect();
        if (source.isEmpty()) continue;
        const int lastColumn = source.right() / SourceTileSize;
        for (int row = source.top() / SourceTileSize; row <= source.bottom() / SourceTileSize; ++row) {
            for (int column = source.left() / SourceTileSize; column <= lastColumn; column += PieceTiles) {
                pieces.push_back(
                    {&part, &targets.back(), row, column, std::min(column + PieceTiles - 1, lastColumn)});
            }
        }
    }
    const Reducer reducer(picture, level);
    // What one thread does in no time wakes no other.
    if (pieces.size() <= 1) {
        for (const Piece& piece : pieces)
            reducer.Run(piece);
        return;
    }
    TileThreads::ForEach(int(pieces.size()), [&](int i) { reducer.Run(pieces[std::size_t(i)]); });
}
