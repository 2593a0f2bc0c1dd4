#pragma once

#include "image/PixelMath.h"

#include <algorithm>
#include <array>
#include <cmath>

/// B(target, source) of the separable modes, bytes in and out, each rounded once. The formulae are those of
/// the W3C's "Compositing and Blending"; t and s below are target / 255 and source / 255.
namespace BlendFormulas {
using PixelMath::DivideBy255;

/// s
struct Normal
{
    int operator()(int, int source) const { return source; }
};

/// min(1, t + s)
struct Addition
{
    int operator()(int target, int source) const { return std::min(255, target + source); }
};

/// t s
struct Multiply
{
    int operator()(int target, int source) const { return DivideBy255(target * source); }
};

/// t + s - t s
struct Screen
{
    int operator()(int target, int source) const
    {
        return DivideBy255(255 * (target + source) - target * source);
    }
};

/// Multiply(t, 2 s) for s <= 1/2, else Screen(t, 2 s - 1)
struct HardLight
{
    int operator()(int target, int source) const
    {
        const int twice = 2 * source;
        return twice <= 255 ? DivideBy255(target * twice) : Screen()(target, twice - 255);
    }
};

/// HardLight with the roles changed
struct Overlay
{
    int operator()(int target, int source) const { return HardLight()(source, target); }
};

struct Darken
{
    int operator()(int target, int source) const { return std::min(target, source); }
};

struct Lighten
{
    int operator()(int target, int source) const { return std::max(target, source); }
};

/// 0 for t = 0, else min(1, t / (1 - s))
struct ColorDodge
{
    int operator()(int target, int source) const
    {
        if (target == 0) return 0;
        const int rest = 255 - source;
        return target >= rest ? 255 : (2 * 255 * target + rest) / (2 * rest);
    }
};

/// 1 for t = 1, else 1 - min(1, (1 - t) / s)
struct ColorBurn
{
    int operator()(int target, int source) const
    {
        if (target == 255) return 255;
        const int above = source - (255 - target);
        return above <= 0 ? 0 : (2 * 255 * above + source) / (2 * source);
    }
};

/// |t - s|
struct Difference
{
    int operator()(int target, int source) const { return std::abs(target - source); }
};

/// t + s - 2 t s
struct Exclusion
{
    int operator()(int target, int source) const
    {
        return DivideBy255(255 * (target + source) - 2 * target * source);
    }
};

/// t - (1 - 2 s) t (1 - t) for s <= 1/2, else t + (2 s - 1) (D(t) - t) with
/// D(t) = ((16 t - 12) t + 4) t for t <= 1/4, else sqrt(t). Tabled: the root would cost more than all the
/// rest.
class SoftLight
{
public:
    int operator()(int target, int source) const
    {
        return m_Table[static_cast<std::size_t>(target) * 256 + static_cast<std::size_t>(source)];
    }

private:
    using Table = std::array<quint8, 256 * 256>;

    static double Exact(double t, double s)
    {
        if (s <= 0.5) return t - (1 - 2 * s) * t * (1 - t);
        const double d = t <= 0.25 ? ((16 * t - 12) * t + 4) * t : std::sqrt(t);
        return t + (2 * s - 1) * (d - t);
    }

    static const Table& SharedTable()
    {
        static const Table table = [] {
            Table values{};
            for (std::size_t i = 0; i < values.size(); ++i) {
                const std::size_t target = i / 256;
                const std::size_t source = i % 256;
                const double exact =
                    Exact(static_cast<double>(target) / 255, static_cast<double>(source) / 255);
                values[i] = static_cast<quint8>(PixelMath::RoundPositive(exact * 255));
            }
            return values;
        }();
        return table;
    }

    const Table& m_Table = SharedTable();
};
} // namespace BlendFormulas
