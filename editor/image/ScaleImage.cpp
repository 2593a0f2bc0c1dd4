#include "image/AxisScaler.h"
#include "image/LXImage.h"
#include "image/LXImageConvert.h"
#include "image/ResampleTaps.h"
#include "image/TileThreads.h"

#include <QImage>
#include <QPointF>
#include <QRect>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {
/// The pixels of the target that are made together: their source's rows stay in the caches.
constexpr QSize PieceSize(256, 64);

/// The source pixels that make a target pixel, on one axis. None where its middle lies outside the source.
///
/// A share is the part of a window around the target pixel's middle that the source pixel covers: as wide as
/// the target pixel, but at least one source pixel, which then mixes the two nearest linearly.
ResampleTaps MakeTaps(double origin, double scale, int position, int side)
{
    const double step = 1.0 / scale;
    const double middle = origin + (position + 0.5) * step;
    if (middle < 0 || middle > side) return {};

    const double reach = std::max(step, 1.0) / 2;
    const double low = std::max(middle - reach, 0.0);
    const double high = std::min(middle + reach, static_cast<double>(side));
    ResampleTaps taps;
    taps.coverage = 1;
    taps.first = std::min(static_cast<int>(low), side - 1);
    for (int pixel = taps.first; pixel < high; ++pixel) {
        const double covered = std::min(high, pixel + 1.0) - std::max(low, static_cast<double>(pixel));
        taps.weights.push_back(covered / (high - low));
    }
    return taps;
}

std::vector<ResampleTaps> MakeAxis(double origin, double scale, int count, int side)
{
    std::vector<ResampleTaps> axis(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        axis[static_cast<std::size_t>(i)] = MakeTaps(origin, scale, i, side);
    }
    return axis;
}

bool IsPossible(const LXImage32& source, const QPointF& origin, double scale, const QImage& target)
{
    const bool isFormatKnown =
        target.format() == QImage::Format_ARGB32 || target.format() == QImage::Format_ARGB32_Premultiplied;
    return !source.IsNull() && !target.isNull() && isFormatKnown && scale > 0 && std::isfinite(scale) &&
           std::isfinite(origin.x()) && std::isfinite(origin.y());
}
} // namespace

bool ScaleImage(const LXImage32& source, const QPointF& origin, double scale, QImage& target)
{
    if (!IsPossible(source, origin, scale, target)) return false;

    const std::vector<ResampleTaps> columns = MakeAxis(origin.x(), scale, target.width(), source.Width());
    const std::vector<ResampleTaps> rows = MakeAxis(origin.y(), scale, target.height(), source.Height());
    const AxisScaler scaler(source, QPoint(0, 0), columns, rows);
    const bool isPremultiplied = target.format() == QImage::Format_ARGB32_Premultiplied;
    uchar* const bits = target.bits(); // detached here, not by the threads
    const qsizetype stride = target.bytesPerLine();
    const int across = (target.width() + PieceSize.width() - 1) / PieceSize.width();
    const int down = (target.height() + PieceSize.height() - 1) / PieceSize.height();
    TileThreads::ForEach(across * down, [&](int piece) {
        const QPoint corner(piece % across * PieceSize.width(), piece / across * PieceSize.height());
        const QRect part = QRect(corner, PieceSize) & target.rect();
        AxisScaler::Part pixels = scaler.Enter(part);
        for (int y = part.top(); y <= part.bottom(); ++y) {
            auto* const row = reinterpret_cast<LXRGBA32i*>(bits + y * stride) + part.left();
            isPremultiplied ? pixels.MakePremultipliedRow(y, row) : pixels.MakeRow(y, row);
        }
    });
    return true;
}
