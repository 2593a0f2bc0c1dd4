#include "PieceTwin.h"

#include "image/BlendMode.h"
#include "support/BlendTwin.h"

namespace {
constexpr int FullMask = 255;

LXRGBA32i Blend(unsigned int mode, LXRGBA32i target, LXRGBA32i source)
{
    return BlendTwin::BlendPixel(mode, target, source, 1.0, FullMask, false);
}

/// A gray of that value and that coverage.
LXRGBA32i Gray(int value, int coverage)
{
    const auto v = static_cast<quint32>(value);
    return LXRGBA32i(static_cast<quint32>(coverage) << 24 | v << 16 | v << 8 | v);
}

LXRGBA32i Coverage(const PieceTwin::Case& piece, const QPoint& point)
{
    return piece.selection.At(point, LXRGBA32i());
}

LXRGBA32i Lifted(const PieceTwin::Case& piece, const QPoint& point)
{
    const LXRGBA32i pixel = piece.target.At(point, LXRGBA32i());
    const LXRGBA32i coverage = Coverage(piece, point);
    return piece.isMask ? Gray(pixel.Alpha(), coverage.Alpha())
                        : Blend(BlendMode::DestinationIn, pixel, coverage);
}

LXRGBA32i Rest(const PieceTwin::Case& piece, const QPoint& point)
{
    const LXRGBA32i pixel = piece.target.At(point, piece.newGround);
    const LXRGBA32i coverage = Coverage(piece, point);
    if (!piece.isCut) return pixel;
    if (!piece.isMask) return Blend(BlendMode::DestinationOut, pixel, coverage);
    return Blend(BlendMode::GrayToMask, pixel, Blend(BlendMode::DestinationIn, piece.maskGround, coverage));
}

template <class Pixel>
PieceTwin::Placed Made(const QRect& rect, const Pixel& pixel)
{
    PieceTwin::Placed placed{rect, PlainImage(rect.width(), rect.height())};
    for (int y = 0; y < rect.height(); ++y) {
        for (int x = 0; x < rect.width(); ++x)
            placed.pixels.At(x, y) = pixel(rect.topLeft() + QPoint(x, y));
    }
    return placed;
}
} // namespace

PieceTwin::Placed PieceTwin::Below(const Case& piece)
{
    const QRect lifted = piece.target.rect & piece.selection.rect;
    return Made(piece.target.rect, [&](const QPoint& point) {
        return lifted.contains(point) ? Rest(piece, point) : piece.target.At(point, piece.newGround);
    });
}

PieceTwin::Placed PieceTwin::LaidDown(const Case& piece, const QPoint& delta)
{
    if (delta.isNull()) return piece.target;
    const QRect lifted = piece.target.rect & piece.selection.rect;
    const QRect landed = lifted.translated(delta) & piece.canvas;
    const Placed below = Below(piece);
    return Made(piece.target.rect | landed, [&](const QPoint& point) {
        const LXRGBA32i pixel = below.At(point, piece.newGround);
        if (!landed.contains(point)) return pixel;
        return Blend(piece.isMask ? BlendMode::GrayToMask : BlendMode::Normal, pixel,
                     Lifted(piece, point - delta));
    });
}
