#include "image/BlendKernels.h"
#include "image/BrushPixels.h"
#include "image/LXBlend.h"
#include "image/LXImage.h"
#include "image/PathCoverage.h"
#include "image/StrengthKernels.h"
#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <QBrush>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <map>
#include <mutex>
#include <vector>

namespace {
using TileWalk::TilePixels;
using TileWalk::TileSide;

using Span = TileCoverage::Span;

/// The pixels that the path may touch. Cut as real numbers: the path's box need not fit into integers.
QRect TouchedRect(const QPainterPath& path, const QRect& imageRect)
{
    return (path.boundingRect() & QRectF(imageRect)).toAlignedRect() & imageRect;
}

/// What all threads share.
class PathFill
{
public:
    PathFill(LXImage32& target, unsigned int mode, const QBrush& filling)
        : image(target),
          kernel(BlendKernels::For(mode, false)),
          mixesByCoverage(mode == BlendMode::Source),
          brush(filling),
          replaces(mixesByCoverage || (mode == BlendMode::Normal && brush.IsOpaqueColor()))
    {
        if (!brush.IsOneColor()) return;
        color.resize(TilePixels);
        brush.Read(QRect(0, 0, TileSide, TileSide), color.data());
    }

    /// A tile full of the brush's one color.
    LXTilePointer ColorTile()
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        if (!m_ColorTile) {
            LXTilePointer tile(new LXTile);
            std::copy(color.begin(), color.end(), LXTileWriter<LXRGBA32i>(tile).Pixels());
            m_ColorTile = tile;
        }
        return m_ColorTile;
    }

    /// What came out when the brush's one color covered this tile whole; null when that is still to be done.
    LXTilePointer Covered(const LXTilePointer& before)
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        const auto found = m_Covered.find(before.data());
        if (found == m_Covered.end()) return {};
        return found->second.after;
    }

    /// Keeps what came out, and gives it back, or what another thread made in the same moment.
    LXTilePointer NoteCovered(const LXTilePointer& before, const LXTilePointer& after)
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        return m_Covered.emplace(before.data(), Pair{before, after}).first->second.after;
    }

    LXImage32& image;
    BlendKernel kernel;
    bool mixesByCoverage;
    BrushPixels brush;
    bool replaces;                ///< wholly covered pixels become the brush's
    std::vector<LXRGBA32i> color; ///< a tile of the brush's one color; empty for other brushes

private:
    struct Pair
    {
        LXTilePointer before; ///< held, so that no other tile comes to its address
        LXTilePointer after;
    };

    std::mutex m_Mutex; ///< of what follows
    LXTilePointer m_ColorTile;
    std::map<const LXTile*, Pair> m_Covered;
};

/// Fills one tile after the other; one thread.
class TileFiller
{
public:
    explicit TileFiller(PathFill& fill) : m_Fill(fill)
    {
        m_NoMask.fill(255);
        if (!fill.brush.IsOneColor()) m_BrushPixels.resize(TilePixels);
    }

    /// @param part  of the image; it begins where the tile does
    void Run(int column, int row, const QRect& part, const TileCoverage& coverage)
    {
        const auto isOnly = [&](quint8 covered) {
            return std::all_of(coverage.spans.begin(), coverage.spans.begin() + part.height(),
                               [&](const Span& span) { return span.IsOnly(covered); });
        };
        if (isOnly(0)) return;
        if (m_Fill.replaces && isOnly(255)) {
            Replace(column, row, part);
            return;
        }
        if (m_Fill.brush.IsOneColor() && isOnly(255) && part.size() == QSize(TileSide, TileSide)) {
            FillWhole(column, row, part, coverage);
        } else {
            Fill(column, row, part, coverage);
        }
    }

private:
    /// Tiles that the image holds many times give one new tile where one color covers all of them.
    void FillWhole(int column, int row, const QRect& part, const TileCoverage& coverage)
    {
        LXTilePointer& slot = m_Fill.image.TileAt(column, row);
        // One that is the image's alone is written in its place.
        const LXTilePointer before = slot->IsShared() ? slot : LXTilePointer();
        if (before) {
            LXTilePointer after = m_Fill.Covered(before);
            if (after) {
                slot.swap(after);
                return;
            }
        }
        Fill(column, row, part, coverage);
        if (!before) return;
        LXTilePointer kept = m_Fill.NoteCovered(before, slot);
        slot.swap(kept);
    }

    void Fill(int column, int row, const QRect& part, const TileCoverage& coverage)
    {
        const bool isOneColor = m_Fill.brush.IsOneColor();
        if (!isOneColor) m_Fill.brush.Read(part, m_BrushPixels.data());
        const LXRGBA32i* const brushPixels = isOneColor ? m_Fill.color.data() : m_BrushPixels.data();
        const auto tile = m_Fill.image.WriteTile(column, row);
        for (int y = 0; y < part.height(); ++y) {
            const Span& span = coverage.spans[static_cast<std::size_t>(y)];
            const LXRGBA32i* const source = brushPixels + y * part.width();
            LXRGBA32i* const target = tile.Pixels() + y * TileSide;
            const int first = std::min(span.first, part.width());
            const int end = std::min(span.end, part.width());
            FillEvenly(span.before, source, target, first);
            FillRow(coverage.Row(y) + first, source + first, target + first, end - first);
            FillEvenly(span.after, source + end, target + end, part.width() - end);
        }
    }

    void Replace(int column, int row, const QRect& part)
    {
        if (m_Fill.brush.IsOneColor() && part.width() == TileSide && part.height() == TileSide) {
            m_Fill.image.TileAt(column, row) = m_Fill.ColorTile();
            return;
        }
        const auto tile = m_Fill.image.WriteTile(column, row);
        for (int y = 0; y < part.height(); ++y) {
            m_Fill.brush.Read(QRect(part.left(), part.top() + y, part.width(), 1),
                              tile.Pixels() + y * TileSide);
        }
    }

    /// Pixels that are all covered alike.
    void FillEvenly(quint8 covered, const LXRGBA32i* source, LXRGBA32i* target, int count)
    {
        if (covered == 0 || count == 0) return;
        if (covered == 255 && m_Fill.replaces) {
            std::copy_n(source, count, target);
            return;
        }
        std::fill_n(m_Covered.begin(), count, covered);
        FillRow(m_Covered.data(), source, target, count);
    }

    /// Pixels that the path doesn't touch stay in every mode, so the kernel gets the runs between them.
    void FillRow(const quint8* coverage, const LXRGBA32i* source, LXRGBA32i* target, int count)
    {
        if (m_Fill.mixesByCoverage) {
            m_Fill.kernel.run({source, coverage, m_NoMask.data(), target, count});
            return;
        }
        const auto isTouched = [](quint8 covered) { return covered != 0; };
        const quint8* const end = coverage + count;
        const quint8* first = std::find_if(coverage, end, isTouched);
        while (first != end) {
            const quint8* const last = std::find_if_not(first, end, isTouched);
            const auto offset = first - coverage;
            const int length = static_cast<int>(last - first);
            StrengthKernels::Alphas(source + offset, length, m_Strength.data());
            m_Fill.kernel.run({source + offset, m_Strength.data(), m_NoMask.data(), target + offset, length});
            first = std::find_if(last, end, isTouched);
        }
    }

    PathFill& m_Fill;
    std::vector<LXRGBA32i> m_BrushPixels; ///< of a part of the image, row by row; unused for one color
    std::array<quint8, TileSide> m_Covered{};
    std::array<quint8, TileSide> m_Strength{};
    std::array<quint8, TileSide> m_NoMask;
};

/// Whether the path is a rectangle, as QPainterPath::addRect() makes one, with all of the other inside.
bool IsRectangleAround(const QPainterPath& path, const QRect& inside)
{
    constexpr int corners = 4;
    if (path.elementCount() != corners + 1) return false;
    const auto point = [&path](int i) { return QPointF(path.elementAt(i)); };
    const QRectF rect(point(0), point(2));
    for (int i = 1; i <= corners; ++i) {
        if (!path.elementAt(i).isLineTo()) return false;
    }
    return point(1) == rect.topRight() && point(3) == rect.bottomLeft() && point(corners) == point(0) &&
           rect.contains(QRectF(inside));
}

void FillRow(PathFill& fill, const PathCoverage& coverage, const QRect& touched, int row)
{
    PathCoverage::TileRow tiles(coverage, row);
    TileFiller filler(fill);
    for (int column = touched.left() / TileSide; column <= touched.right() / TileSide; ++column) {
        filler.Run(column, row, TileWalk::TileRect(column, row) & fill.image.Rect(), tiles.Next());
    }
}

void FillAll(PathFill& fill)
{
    TileCoverage all;
    all.spans.fill({0, 0, 255, 255});
    TileThreads::ForEachTile(fill.image.Rect(), [&](int column, int row, const QRect& part) {
        TileFiller(fill).Run(column, row, part, all);
    });
}
} // namespace

void FillPath(LXImage32& image, int mode, const QPainterPath& path, const QBrush& brush)
{
    const auto blendMode = static_cast<unsigned int>(mode);
    PathFill fill(image, blendMode, brush);
    const QRect touched = TouchedRect(path, image.Rect());
    if (brush.style() == Qt::NoBrush || touched.isEmpty()) return;

    if (IsRectangleAround(path, image.Rect())) {
        FillAll(fill);
        return;
    }
    const bool isAntialiased = blendMode == BlendMode::Source || blendMode == BlendMode::SourceIn;
    const PathCoverage coverage(path, isAntialiased, touched);
    const int firstRow = touched.top() / TileSide;
    const int rows = touched.bottom() / TileSide - firstRow + 1;
    TileThreads::ForEach(rows, [&](int piece) { FillRow(fill, coverage, touched, firstRow + piece); });
}
