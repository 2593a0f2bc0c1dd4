#include "image/InverseMap.h"

#include <QTransform>

#include <algorithm>
#include <cmath>

namespace {
/// In source pixels; so near to a pixel's middle, mixing would give the pixel's own bytes.
constexpr double PixelTolerance = 1e-4;

/// -1, 0 or 1, whatever the value.
int NearestStep(double value)
{
    return static_cast<int>(std::lround(std::clamp(value, -1.0, 1.0)));
}

/// How much of a target pixel lies below `distance` from its middle. Seen along one axis, a pixel is the sum
/// of two boxes as wide as the steps: its density is a trapezoid, and this is the area of that up to
/// `distance`.
double CoverageBelow(double distance, double wide, double narrow)
{
    const double reach = (wide + narrow) / 2;
    if (distance <= -reach) return 0;
    if (distance >= reach) return 1;
    if (narrow < wide * 1e-6) return 0.5 + distance / wide;

    const double plateau = (wide - narrow) / 2;
    const double rising = distance + reach;
    const double falling = reach - distance;
    if (distance < -plateau) return rising * rising / (2 * wide * narrow);
    if (distance > plateau) return 1 - falling * falling / (2 * wide * narrow);
    return 0.5 + distance / wide;
}
} // namespace

double SourceSpan::Width() const
{
    return std::hypot(stepAcross, stepDown);
}

double SourceSpan::Coverage(double side) const
{
    const double wide = std::max(stepAcross, stepDown);
    const double narrow = std::min(stepAcross, stepDown);
    return CoverageBelow(side - middle, wide, narrow) - CoverageBelow(-middle, wide, narrow);
}

std::optional<InverseMap> InverseMap::Of(const QTransform& transform)
{
    const QTransform adjoint = transform.adjoint();
    const double scale = 1.0 / transform.determinant();
    InverseMap map;
    map.m_XX = adjoint.m11() * scale;
    map.m_XY = adjoint.m12() * scale;
    map.m_XZ = adjoint.m13() * scale;
    map.m_YX = adjoint.m21() * scale;
    map.m_YY = adjoint.m22() * scale;
    map.m_YZ = adjoint.m23() * scale;
    map.m_1X = adjoint.m31() * scale;
    map.m_1Y = adjoint.m32() * scale;
    map.m_1Z = adjoint.m33() * scale;
    for (const double value :
         {map.m_XX, map.m_XY, map.m_XZ, map.m_YX, map.m_YY, map.m_YZ, map.m_1X, map.m_1Y, map.m_1Z}) {
        if (!std::isfinite(value)) return std::nullopt;
    }
    return map;
}

SourceSpot InverseMap::At(int column, int row) const
{
    const double x = column + 0.5;
    const double y = row + 0.5;
    const double z = m_XZ * x + m_YZ * y + m_1Z;
    if (!(z > 0)) return {};

    SourceSpot spot;
    spot.x.middle = (m_XX * x + m_YX * y + m_1X) / z;
    spot.y.middle = (m_XY * x + m_YY * y + m_1Y) / z;
    spot.x.stepAcross = std::abs(m_XX - spot.x.middle * m_XZ) / z;
    spot.x.stepDown = std::abs(m_YX - spot.x.middle * m_YZ) / z;
    spot.y.stepAcross = std::abs(m_XY - spot.y.middle * m_XZ) / z;
    spot.y.stepDown = std::abs(m_YY - spot.y.middle * m_YZ) / z;
    spot.isVisible = std::isfinite(spot.x.middle) && std::isfinite(spot.y.middle) &&
                     std::isfinite(spot.x.Width()) && std::isfinite(spot.y.Width());
    return spot;
}

bool InverseMap::IsAxisAligned() const
{
    return IsAffine() && m_YX == 0 && m_XY == 0;
}

PlanarMap InverseMap::AsPlanes() const
{
    const double scale = IsAffine() && m_1Z > 0 ? 1 / m_1Z : 1.0;
    const auto fromMiddle = [scale](double right, double down, double first) {
        return EvenPlane{right * scale, down * scale, (first + (right + down) / 2) * scale};
    };
    return {fromMiddle(m_XX, m_YX, m_1X), fromMiddle(m_XY, m_YY, m_1Y), fromMiddle(m_XZ, m_YZ, m_1Z)};
}

std::optional<PixelMap> InverseMap::AsPixelMap(const QRect& part) const
{
    if (!(m_1Z > 0)) return std::nullopt;
    PixelMap map;
    map.xx = NearestStep(m_XX / m_1Z);
    map.xy = NearestStep(m_YX / m_1Z);
    map.yx = NearestStep(m_XY / m_1Z);
    map.yy = NearestStep(m_YY / m_1Z);
    if (std::abs(map.xx * map.yy - map.xy * map.yx) != 1 || map.xx * map.xy != 0) return std::nullopt;

    const SourceSpot first = At(part.left(), part.top());
    constexpr double reach = 1e9; // what an int holds, with room for the sums
    if (!first.isVisible || std::abs(first.x.middle) > reach || std::abs(first.y.middle) > reach)
        return std::nullopt;
    map.left = static_cast<int>(std::floor(first.x.middle)) - map.xx * part.left() - map.xy * part.top();
    map.top = static_cast<int>(std::floor(first.y.middle)) - map.yx * part.left() - map.yy * part.top();
    for (const QPoint& corner : {part.topLeft(), part.topRight(), part.bottomLeft(), part.bottomRight()}) {
        const SourceSpot spot = At(corner.x(), corner.y());
        const QPoint pixel = map(corner.x(), corner.y());
        const bool isNear = spot.isVisible && std::abs(spot.x.middle - (pixel.x() + 0.5)) < PixelTolerance &&
                            std::abs(spot.y.middle - (pixel.y() + 0.5)) < PixelTolerance;
        if (!isNear) return std::nullopt;
    }
    return map;
}
