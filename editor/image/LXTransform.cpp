#include "image/LXTransform.h"

#include "image/AxisScaler.h"
#include "image/ColumnPicker.h"
#include "image/InverseMap.h"
#include "image/LXImage.h"
#include "image/PixelMath.h"
#include "image/ResampleTaps.h"
#include "image/SourcePixels.h"
#include "image/TileThreads.h"
#include "image/TileWalk.h"
#include "image/WindowRows.h"

#include <QRect>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

namespace {
/// A target pixel near a perspective's horizon would else read the whole source.
constexpr int MostTaps = 64;

/// Makes the pixels of the part, tile by tile on several threads; tiles that stay blank share one. Each tile
/// gets a painter of its own, which `makePainter(inTile)` gives, and which makes a row by
/// `painter(x, y, count, pixels)`.
template <class MakePainter>
void MakePixels(LXImage32& target, const QRect& part, MakePainter makePainter)
{
    const LXTilePointer blank(new LXTile);
    TileThreads::ForEachTile(part, [&](int column, int row, const QRect& inTile) {
        bool isBlank = inTile == (TileWalk::TileRect(column, row) & target.Rect());
        {
            auto painter = makePainter(inTile);
            const auto writer = target.WriteTile(column, row);
            for (int y = inTile.top(); y <= inTile.bottom(); ++y) {
                LXRGBA32i* const pixels = writer.Pixels() + TileWalk::IndexInTile(QPoint(inTile.left(), y));
                painter(inTile.left(), y, inTile.width(), pixels);
                isBlank = isBlank && std::all_of(pixels, pixels + inTile.width(),
                                                 [](LXRGBA32i pixel) { return pixel.value == 0; });
            }
        }
        if (isBlank) target.TileAt(column, row) = blank;
    });
}

/// The same by `make(x, y)` for each pixel; `makeMaker()` gives that for a tile.
template <class MakeMaker>
void MakeEachPixel(LXImage32& target, const QRect& part, MakeMaker makeMaker)
{
    MakePixels(target, part, [&](const QRect&) {
        return [make = makeMaker()](int x, int y, int count, LXRGBA32i* pixels) mutable {
            for (int i = 0; i < count; ++i) {
                pixels[i] = make(x + i, y);
            }
        };
    });
}

void CopyPixels(const LXImage32& source, const PixelMap& map, LXImage32& target, const QRect& part)
{
    if (map.IsTranslation()) {
        BlendOn(LXImage32(part.width(), part.height()), QRect(QPoint(0, 0), part.size()), BlendMode::Source,
                target, part, 1.0, false);
        BlendOn(source, part.translated(map.left, map.top), BlendMode::Source, target, part, 1.0, false);
        return;
    }
    const QRect inside = source.Rect();
    MakeEachPixel(target, part, [&] {
        return [&, pixels = std::make_unique<SourcePixels>(source)](int x, int y) {
            const QPoint from = map(x, y);
            return inside.contains(from) ? pixels->At(from.x(), from.y()) : LXRGBA32i();
        };
    });
}

quint32 ToByte(double value)
{
    return static_cast<quint32>(PixelMath::RoundPositive(std::clamp(value, 0.0, 255.0)));
}

/// Straight color of the weighed pixels, its alpha weakened by how much of the target pixel they cover.
LXRGBA32i Mix(SourcePixels& pixels, const ResampleTaps& across, const ResampleTaps& down)
{
    double alpha = 0;
    double red = 0;
    double green = 0;
    double blue = 0;
    int y = down.first;
    for (const double weightDown : down.weights) {
        int x = across.first;
        for (const double weightAcross : across.weights) {
            const LXRGBA32i pixel = pixels.At(x, y);
            const double share = weightDown * weightAcross * pixel.Alpha();
            alpha += share;
            red += share * pixel.Red();
            green += share * pixel.Green();
            blue += share * pixel.Blue();
            x += across.stride;
        }
        y += down.stride;
    }
    const quint32 alphaByte = ToByte(alpha * across.coverage * down.coverage);
    if (alphaByte == 0) return LXRGBA32i();
    const quint32 color = ToByte(red / alpha) << 16 | ToByte(green / alpha) << 8 | ToByte(blue / alpha);
    return LXRGBA32i(alphaByte << PixelMath::AlphaShift | color);
}

/// Columns and rows are mapped apart, so their taps are found once each; behind the eye there are none.
void ScalePixels(const LXImage32& source, const InverseMap& map, LXImage32& target, const QRect& part,
                 ResampleKernel::Kind kind)
{
    std::vector<ResampleTaps> columns(static_cast<std::size_t>(part.width()));
    std::vector<ResampleTaps> rows(static_cast<std::size_t>(part.height()));
    for (int x = 0; x < part.width(); ++x) {
        const SourceSpot spot = map.At(part.left() + x, part.top());
        if (!spot.isVisible) continue;
        ResampleKernel::FindTaps(kind, spot.x, source.Width(), ResampleKernel::Unlimited,
                                 columns[static_cast<std::size_t>(x)]);
    }
    for (int y = 0; y < part.height(); ++y) {
        const SourceSpot spot = map.At(part.left(), part.top() + y);
        if (!spot.isVisible) continue;
        ResampleKernel::FindTaps(kind, spot.y, source.Height(), ResampleKernel::Unlimited,
                                 rows[static_cast<std::size_t>(y)]);
    }
    const AxisScaler scaler(source, part.topLeft(), columns, rows);
    MakePixels(target, part, [&](const QRect& inTile) {
        return [rows = scaler.Enter(inTile)](int, int y, int, LXRGBA32i* pixels) mutable {
            rows.MakeRow(y, pixels);
        };
    });
}

/// Mixes pixels one by one; what the map shrinks, and what lies at the source's ends.
class PixelMixer
{
public:
    PixelMixer(const LXImage32& source, const InverseMap& map, ResampleKernel::Kind kind)
        : m_Source(source), m_Map(map), m_Kind(kind), m_Pixels(std::make_unique<SourcePixels>(source))
    {}

    LXRGBA32i operator()(int x, int y)
    {
        const SourceSpot spot = m_Map.At(x, y);
        if (!spot.isVisible) return LXRGBA32i();
        ResampleKernel::FindTaps(m_Kind, spot.x, m_Source.Width(), MostTaps, m_Across);
        if (m_Across.weights.empty()) return LXRGBA32i();
        ResampleKernel::FindTaps(m_Kind, spot.y, m_Source.Height(), MostTaps, m_Down);
        return m_Down.weights.empty() ? LXRGBA32i() : Mix(*m_Pixels, m_Across, m_Down);
    }

private:
    const LXImage32& m_Source;
    const InverseMap& m_Map;
    ResampleKernel::Kind m_Kind;
    std::unique_ptr<SourcePixels> m_Pixels;
    ResampleTaps m_Across;
    ResampleTaps m_Down;
};

/// The middle of each row by whole registers, the pixels at the source's ends one by one.
void MixPixels(const LXImage32& source, const InverseMap& map, LXImage32& target, const QRect& part,
               ResampleKernel::Kind kind)
{
    const PlanarMap planes = map.AsPlanes();
    MakePixels(target, part, [&](const QRect& inTile) {
        WindowRows rows(source, planes, kind);
        const bool isServed = rows.Enter(inTile);
        return [isServed, rows = std::move(rows),
                mixer = PixelMixer(source, map, kind)](int x, int y, int count, LXRGBA32i* pixels) mutable {
            using Range = WindowRows::Range;
            const Range touching = isServed ? rows.Touching(x, y, count) : Range{0, count};
            const Range inside = isServed ? rows.Inside(x, y, count) : Range{0, 0};
            std::fill_n(pixels, count, LXRGBA32i());
            if (inside.first < inside.end) {
                rows.MakeRow(x + inside.first, y, inside.end - inside.first, pixels + inside.first);
            }
            for (int i = touching.first; i < touching.end; ++i) {
                if (i == inside.first) i = std::max(i, inside.end);
                if (i < touching.end) pixels[i] = mixer(x + i, y);
            }
        };
    });
}

/// The source's column or row that the middle falls into, -1 beside it and behind the eye.
int Picked(const SourceSpot& spot, const SourceSpan& span, int side)
{
    const double place = std::floor(span.middle);
    return spot.isVisible && place >= 0 && place < side ? static_cast<int>(place) : -1;
}

/// Columns and rows are mapped apart, so each is found once.
void PickScaledPixels(const LXImage32& source, const InverseMap& map, LXImage32& target, const QRect& part)
{
    PickedPlaces places{part.topLeft(), {}, {}};
    for (int x = part.left(); x <= part.right(); ++x) {
        const SourceSpot spot = map.At(x, part.top());
        places.columns.push_back(Picked(spot, spot.x, source.Width()));
    }
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const SourceSpot spot = map.At(part.left(), y);
        places.rows.push_back(Picked(spot, spot.y, source.Height()));
    }
    MakePixels(target, part, [&](const QRect& inTile) {
        return [picker = ColumnPicker(source, places, inTile)](int, int y, int, LXRGBA32i* pixels) mutable {
            picker.MakeRow(y, pixels);
        };
    });
}

void PickPixels(const LXImage32& source, const InverseMap& map, LXImage32& target, const QRect& part)
{
    if (map.IsAxisAligned()) {
        PickScaledPixels(source, map, target, part);
        return;
    }
    MakeEachPixel(target, part, [&] {
        return [&, pixels = std::make_unique<SourcePixels>(source)](int x, int y) {
            const SourceSpot spot = map.At(x, y);
            const int column = Picked(spot, spot.x, source.Width());
            const int row = Picked(spot, spot.y, source.Height());
            return column >= 0 && row >= 0 ? pixels->At(column, row) : LXRGBA32i();
        };
    });
}

/// What all three have in common: the refusals, the clip, and maps without fractions.
template <class Resample>
bool Transform(const LXImage32& src, const QTransform& transform, LXImage32& dst, const QRect& clip,
               Resample resample)
{
    const std::optional<InverseMap> map = InverseMap::Of(transform);
    if (!map || src.IsNull() || dst.IsNull()) return false;

    const QRect part = clip.isEmpty() ? dst.Rect() : clip & dst.Rect();
    if (part.isEmpty()) return true;
    // Keeps the pixels when the target is written over them.
    const LXImage32 source = src; // NOLINT(performance-unnecessary-copy-initialization)
    if (const std::optional<PixelMap> pixelMap = map->AsPixelMap(part)) {
        CopyPixels(source, *pixelMap, dst, part);
    } else {
        resample(source, *map, part);
    }
    return true;
}

bool TransformMixing(const LXImage32& src, const QTransform& transform, LXImage32& dst, const QRect& clip,
                     ResampleKernel::Kind kind)
{
    return Transform(src, transform, dst, clip,
                     [&](const LXImage32& source, const InverseMap& map, const QRect& part) {
                         if (map.IsAxisAligned()) {
                             ScalePixels(source, map, dst, part, kind);
                         } else {
                             MixPixels(source, map, dst, part, kind);
                         }
                     });
}
} // namespace

bool TransformImage(const LXImage32& src, const QTransform& transform, LXImage32& dst, const QRect& clip)
{
    return TransformMixing(src, transform, dst, clip, ResampleKernel::Kind::Linear);
}

bool BicubicTransformImage(const LXImage32& src, const QTransform& transform, LXImage32& dst,
                           const QRect& clip)
{
    return TransformMixing(src, transform, dst, clip, ResampleKernel::Kind::Cubic);
}

bool NearestNeighbourTransformImage(const LXImage32& src, const QTransform& transform, LXImage32& dst,
                                    const QRect& clip)
{
    return Transform(src, transform, dst, clip,
                     [&](const LXImage32& source, const InverseMap& map, const QRect& part) {
                         PickPixels(source, map, dst, part);
                     });
}
