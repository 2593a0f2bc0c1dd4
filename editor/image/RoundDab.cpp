#include "image/RoundDab.h"

#include "image/PixelMath.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double Full = 255;
/// How far the edge of the hardest dab fades to either side, in pixels.
constexpr double HalfEdge = 0.5;
} // namespace

RoundDab::RoundDab(double diameter, double hardness)
{
    const double radius = std::clamp(diameter, 1.0, MaxDiameter) / 2;
    const double core = std::clamp(hardness, 0.0, 1.0) * radius;
    m_Inner = std::min(core, radius - HalfEdge) * Unit;
    m_Outer = (radius + HalfEdge) * Unit;
    m_Reach = static_cast<int>(std::ceil(m_Outer));
    m_FullSquare = static_cast<int>(std::floor(m_Inner * m_Inner));
}

quint8 RoundDab::Strength(int square) const
{
    if (square <= m_FullSquare) return static_cast<quint8>(Full);
    const double distance = std::sqrt(static_cast<double>(square));
    if (distance >= m_Outer) return 0;
    // Level at both ends, so that neither the core nor the rim shows as a line.
    const double part = (m_Outer - distance) / (m_Outer - m_Inner);
    return static_cast<quint8>(PixelMath::RoundPositive(Full * part * part * (3 - 2 * part)));
}
