#include "image/LXTransform.h"

#include "image/InverseMap.h"
#include "image/LXImage.h"
#include "image/PixelMath.h"
#include "image/ResampleTaps.h"
#include "image/SourcePixels.h"
#include "image/TileWalk.h"

#include <QRect>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace {
/// A target pixel near a perspective's horizon would else read the whole source.
constexpr int MostTaps = 64;

/// Makes the pixels of the part by `make(x, y)`, tile by tile; tiles that stay blank share one.
template <class Make>
void MakePixels(LXImage32& target, const QRect& part, Make make)
{
    const LXTilePointer blank(new LXTile);
    TileWalk::ForEachTile(part, [&](int column, int row, const QRect& inTile) {
        bool isBlank = inTile == (TileWalk::TileRect(column, row) & target.Rect());
        {
            const auto writer = target.WriteTile(column, row);
            for (int y = inTile.top(); y <= inTile.bottom(); ++y) {
                LXRGBA32i* pixel = writer.Pixels() + TileWalk::IndexInTile(QPoint(inTile.left(), y));
                for (int x = inTile.left(); x <= inTile.right(); ++x, ++pixel) {
                    *pixel = make(x, y);
                    isBlank = isBlank && pixel->value == 0;
                }
            }
        }
        if (isBlank) target.TileAt(column, row) = blank;
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
    SourcePixels pixels(source);
    const QRect inside = source.Rect();
    MakePixels(target, part, [&](int x, int y) {
        const QPoint from = map(x, y);
        return inside.contains(from) ? pixels.At(from.x(), from.y()) : LXRGBA32i();
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

/// Columns and rows are mapped apart, so their taps are found once each.
void ScalePixels(const LXImage32& source, const InverseMap& map, LXImage32& target, const QRect& part,
                 ResampleKernel::Kind kind)
{
    std::vector<ResampleTaps> columns(static_cast<std::size_t>(part.width()));
    std::vector<ResampleTaps> rows(static_cast<std::size_t>(part.height()));
    for (int x = 0; x < part.width(); ++x) {
        const SourceSpot spot = map.At(part.left() + x, part.top());
        ResampleKernel::FindTaps(kind, spot.x, source.Width(), ResampleKernel::Unlimited,
                                 columns[static_cast<std::size_t>(x)]);
    }
    for (int y = 0; y < part.height(); ++y) {
        const SourceSpot spot = map.At(part.left(), part.top() + y);
        ResampleKernel::FindTaps(kind, spot.y, source.Height(), ResampleKernel::Unlimited,
                                 rows[static_cast<std::size_t>(y)]);
    }
    SourcePixels pixels(source);
    MakePixels(target, part, [&](int x, int y) {
        return Mix(pixels, columns[static_cast<std::size_t>(x - part.left())],
                   rows[static_cast<std::size_t>(y - part.top())]);
    });
}

void MixPixels(const LXImage32& source, const InverseMap& map, LXImage32& target, const QRect& part,
               ResampleKernel::Kind kind)
{
    SourcePixels pixels(source);
    ResampleTaps across;
    ResampleTaps down;
    MakePixels(target, part, [&](int x, int y) {
        const SourceSpot spot = map.At(x, y);
        if (!spot.isVisible) return LXRGBA32i();
        ResampleKernel::FindTaps(kind, spot.x, source.Width(), MostTaps, across);
        if (across.weights.empty()) return LXRGBA32i();
        ResampleKernel::FindTaps(kind, spot.y, source.Height(), MostTaps, down);
        return down.weights.empty() ? LXRGBA32i() : Mix(pixels, across, down);
    });
}

void PickPixels(const LXImage32& source, const InverseMap& map, LXImage32& target, const QRect& part)
{
    SourcePixels pixels(source);
    MakePixels(target, part, [&](int x, int y) {
        const SourceSpot spot = map.At(x, y);
        if (!spot.isVisible) return LXRGBA32i();
        const double column = std::floor(spot.x.middle);
        const double row = std::floor(spot.y.middle);
        const bool isInside = column >= 0 && row >= 0 && column < source.Width() && row < source.Height();
        return isInside ? pixels.At(static_cast<int>(column), static_cast<int>(row)) : LXRGBA32i();
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
