#include "image/DabStroke.h"

#include "image/DabKernels.h"
#include "image/PixelMath.h"
#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {
using TileWalk::TilePixels;
using TileWalk::TileSide;

constexpr int Unit = RoundDab::Unit;
constexpr int HalfUnit = Unit / 2;
constexpr std::size_t RunsBetweenQuestions = 1024;
constexpr int NoDab = std::numeric_limits<int>::max();

/// A middle on the grid of units, counted from the top left of a tile.
struct DabMiddle
{
    int x;
    int y;
};

/// On the grid of the whole path, whichever tile asks.
DabMiddle MiddleFrom(const QPoint& corner, const QPointF& point)
{
    const auto toUnits = [](double pixels, int from) {
        return static_cast<int>(static_cast<qint64>(std::floor(pixels * Unit + 0.5)) - qint64(from) * Unit);
    };
    return {toUnits(point.x(), corner.x()), toUnits(point.y(), corner.y())};
}

/// Where middles of dabs that touch something in the rectangle lie, and what dabs with middles in it touch.
QRectF Widened(const QRectF& rect, const RoundDab& dab)
{
    // Their places on the grid may be half a unit away.
    const double reach = (dab.Reach() + 1.0) / Unit;
    return rect.adjusted(-reach, -reach, reach, reach);
}

/// For each row of tiles, from the top of the bounds on, the runs that may touch it.
std::vector<std::vector<const StrokeRun*>> ByRows(const std::vector<StrokeRun>& runs, const RoundDab& dab,
                                                  const QRect& bounds)
{
    const int rows = (bounds.height() + TileSide - 1) / TileSide;
    std::vector<std::vector<const StrokeRun*>> byRows(static_cast<std::size_t>(rows));
    for (const StrokeRun& run : runs) {
        const QRect touched = Widened(run.Bounds(), dab).toAlignedRect().translated(-bounds.topLeft());
        const int first = std::max(touched.top(), 0) / TileSide;
        const int last = std::min(touched.bottom() / TileSide, rows - 1);
        for (int row = first; row <= last; ++row)
            byRows[static_cast<std::size_t>(row)].push_back(&run);
    }
    return byRows;
}

/// The squares of the distances of a tile's pixels to the nearest middle.
class TileDistances
{
public:
    /// @param part  the pixels that count, from the tile's top left
    TileDistances(const RoundDab& dab, const QSize& part)
        : m_Dab(dab), m_Part(part), m_Squares(TilePixels, NoDab)
    {}

    /// False when everything has whole strength by now.
    bool Add(const DabMiddle& middle)
    {
        const auto [top, bottom] = Touched(middle.y, m_Part.height());
        const auto [left, right] = Touched(middle.x, m_Part.width());
        for (int y = top; y <= bottom; ++y) {
            DabKernels::Nearest(m_Squares.data() + y * TileSide + left, right - left + 1,
                                MiddleOf(left) - middle.x, MiddleOf(y) - middle.y);
        }
        m_IsBlank = m_IsBlank && (top > bottom || left > right);
        return !IsFilledBy(middle);
    }

    /// No dab has come near.
    bool IsBlank() const { return m_IsBlank; }

    const int* Row(int y) const { return m_Squares.data() + y * TileSide; }

private:
    static int MiddleOf(int pixel) { return pixel * Unit + HalfUnit; }

    /// The first and the last of `count` pixels whose middles lie within reach on this axis.
    std::pair<int, int> Touched(int middle, int count) const
    {
        const int least = middle - m_Dab.Reach() - HalfUnit;
        const int most = middle + m_Dab.Reach() - HalfUnit;
        return {least <= 0 ? 0 : (least + Unit - 1) / Unit, most < 0 ? -1 : std::min(most / Unit, count - 1)};
    }

    bool IsFilledBy(const DabMiddle& middle) const
    {
        const auto farthest = [](int value, int count) {
            return std::max(std::abs(HalfUnit - value), std::abs(MiddleOf(count - 1) - value));
        };
        const int x = farthest(middle.x, m_Part.width());
        const int y = farthest(middle.y, m_Part.height());
        return x * x + y * y <= m_Dab.FullSquare();
    }

    const RoundDab& m_Dab;
    QSize m_Part;
    std::vector<int> m_Squares;
    bool m_IsBlank = true;
};

/// Writes one tile after the other; what is filled whole shares one tile.
class StrokeDrawer
{
public:
    StrokeDrawer(LXImage32& image, const QPoint& origin, const RoundDab& dab, LXRGBA32i color)
        : m_Image(image), m_Origin(origin), m_Dab(dab), m_Color(color)
    {
        LXImage32 solid(TileSide, TileSide);
        solid.Fill(PixelMath::WithAlpha(color, 255));
        m_SolidTile = solid.TileAt(0, 0);
    }

    void Run(int column, int row, const QRect& part, const std::vector<const StrokeRun*>& runs)
    {
        TileDistances distances(m_Dab, part.size());
        const QRectF reach = Widened(QRectF(part.translated(m_Origin)), m_Dab);
        const QPoint corner = part.topLeft() + m_Origin;
        for (std::size_t i = 0; i < runs.size(); ++i) {
            // A scribble may have very many of them in one tile.
            if (i % RunsBetweenQuestions == 0) TileThreads::ThrowIfUnwanted();
            const StrokeRun* const run = runs[i];
            const auto inside = run->Within(reach);
            if (!inside) continue;
            for (qint64 index = inside->first; index <= inside->last; ++index) {
                if (distances.Add(MiddleFrom(corner, run->At(index)))) continue;
                m_Image.TileAt(column, row) = m_SolidTile;
                return;
            }
        }
        if (!distances.IsBlank()) Write(column, row, part, distances);
    }

private:
    void Write(int column, int row, const QRect& part, const TileDistances& distances)
    {
        const auto tile = m_Image.WriteTile(column, row);
        for (int y = 0; y < part.height(); ++y) {
            const int* const squares = distances.Row(y);
            std::transform(squares, squares + part.width(), tile.Pixels() + y * TileSide, [this](int square) {
                const int strength = m_Dab.Strength(square);
                return strength == 0 ? LXRGBA32i() : PixelMath::WithAlpha(m_Color, strength);
            });
        }
    }

    LXImage32& m_Image;
    QPoint m_Origin; ///< of the image, in the path's coordinates
    const RoundDab& m_Dab;
    LXRGBA32i m_Color;
    LXTilePointer m_SolidTile;
};
} // namespace

DabStroke::DabStroke(const QPainterPath& path, const RoundDab& dab, double spacing, const QRect& limit)
    : m_Dab(dab)
{
    if (limit.isEmpty()) return;
    m_Runs = StrokeRuns::Along(path, std::max(spacing, MinSpacing), Widened(QRectF(limit), dab));
    for (const StrokeRun& run : m_Runs) {
        m_Bounds |= Widened(run.Bounds(), dab).toAlignedRect() & limit;
    }
}

int DabStroke::CountTiles() const
{
    const auto tiles = [](int pixels) { return (pixels + TileSide - 1) / TileSide; };
    return m_Bounds.isEmpty() ? 0 : tiles(m_Bounds.width()) * tiles(m_Bounds.height());
}

LXImage32 DabStroke::Draw(LXRGBA32i color, const std::function<void()>& tileDone) const
{
    LXImage32 image(m_Bounds.width(), m_Bounds.height());
    if (image.IsNull()) return image;

    StrokeDrawer drawer(image, m_Bounds.topLeft(), m_Dab, color);
    const auto runsOfRow = ByRows(m_Runs, m_Dab, m_Bounds);
    TileThreads::ForEachTile(image.Rect(), [&](int column, int row, const QRect& part) {
        drawer.Run(column, row, part, runsOfRow[static_cast<std::size_t>(row)]);
        tileDone();
    });
    return image;
}
