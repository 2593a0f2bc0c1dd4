#include "image/LXImage.h"
#include "image/LXImageConvert.h"
#include "image/PixelMath.h"
#include "image/TileWalk.h"

#include <QImage>
#include <QPointF>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {
/// The source pixels that make a target pixel, on one axis, with their shares of it, which add up to 1. None
/// where the target pixel's middle lies outside the source.
struct Taps
{
    int first = 0;
    std::vector<float> weights;
};

/// A share is the part of a window around the target pixel's middle that the source pixel covers: as wide as
/// the target pixel, but at least one source pixel, which then mixes the two nearest linearly.
Taps MakeTaps(double origin, double scale, int position, int side)
{
    const double step = 1.0 / scale;
    const double middle = origin + (position + 0.5) * step;
    if (middle < 0 || middle > side) return {};

    const double reach = std::max(step, 1.0) / 2;
    const double low = std::max(middle - reach, 0.0);
    const double high = std::min(middle + reach, static_cast<double>(side));
    Taps taps;
    taps.first = std::min(static_cast<int>(low), side - 1);
    for (int pixel = taps.first; pixel < high; ++pixel) {
        const double covered = std::min(high, pixel + 1.0) - std::max(low, static_cast<double>(pixel));
        taps.weights.push_back(static_cast<float>(covered / (high - low)));
    }
    return taps;
}

std::vector<Taps> MakeAxis(double origin, double scale, int count, int side)
{
    std::vector<Taps> axis(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        axis[static_cast<std::size_t>(i)] = MakeTaps(origin, scale, i, side);
    }
    return axis;
}

/// Sums of premultiplied color and of alpha, 0 to 255 each.
struct Sum
{
    float blue = 0;
    float green = 0;
    float red = 0;
    float alpha = 0;

    void Add(LXRGBA32i pixel, float weight)
    {
        const float share = weight * static_cast<float>(pixel.Alpha());
        const float colorShare = share / 255.0F;
        blue += colorShare * static_cast<float>(pixel.Blue());
        green += colorShare * static_cast<float>(pixel.Green());
        red += colorShare * static_cast<float>(pixel.Red());
        alpha += share;
    }

    void Add(const Sum& other, float weight)
    {
        blue += weight * other.blue;
        green += weight * other.green;
        red += weight * other.red;
        alpha += weight * other.alpha;
    }
};

quint32 ToByte(float value)
{
    return static_cast<quint32>(PixelMath::RoundPositive(std::clamp(value, 0.0F, 255.0F)));
}

QRgb ToPixel(const Sum& sum, bool isPremultiplied)
{
    const quint32 alpha = ToByte(sum.alpha);
    if (alpha == 0) return 0;
    const float factor = isPremultiplied ? 1.0F : 255.0F / sum.alpha;
    const quint32 color =
        ToByte(sum.red * factor) << 16 | ToByte(sum.green * factor) << 8 | ToByte(sum.blue * factor);
    return alpha << PixelMath::AlphaShift | color;
}

/// Shrinks or stretches rows of the source across, once each, and sums them up down the target's rows.
class Scaler
{
public:
    Scaler(const LXImage32& source, std::vector<Taps> columns)
        : m_Source(source), m_Columns(std::move(columns)), m_Left(source.Width())
    {
        int end = 0;
        for (const Taps& taps : m_Columns) {
            if (taps.weights.empty()) continue;
            m_Left = std::min(m_Left, taps.first);
            end = std::max(end, taps.first + static_cast<int>(taps.weights.size()));
        }
        m_Pixels.resize(static_cast<std::size_t>(std::max(0, end - m_Left)));
    }

    void MakeRow(const Taps& rows, std::vector<Sum>& result)
    {
        std::fill(result.begin(), result.end(), Sum());
        for (std::size_t j = 0; j < rows.weights.size(); ++j) {
            const std::vector<Sum>& line = ScaledLine(rows.first + static_cast<int>(j));
            for (std::size_t i = 0; i < result.size(); ++i) {
                result[i].Add(line[i], rows.weights[j]);
            }
        }
    }

private:
    /// Two lines are kept: stretching asks for the same pair again and again.
    const std::vector<Sum>& ScaledLine(int y)
    {
        Line& line = m_Lines[y % 2];
        if (line.y == y) return line.sums;
        line.y = y;
        line.sums.assign(m_Columns.size(), Sum());
        TileWalk::ReadSpans(m_Source, QRect(m_Left, y, static_cast<int>(m_Pixels.size()), 1),
                            [&](const LXRGBA32i* pixels, int x, int, int count) {
                                std::copy_n(pixels, count, m_Pixels.data() + x);
                            });
        for (std::size_t i = 0; i < m_Columns.size(); ++i) {
            const Taps& taps = m_Columns[i];
            for (std::size_t k = 0; k < taps.weights.size(); ++k) {
                line.sums[i].Add(m_Pixels[static_cast<std::size_t>(taps.first - m_Left) + k],
                                 taps.weights[k]);
            }
        }
        return line.sums;
    }

    struct Line
    {
        int y = -1;
        std::vector<Sum> sums;
    };

    const LXImage32& m_Source;
    std::vector<Taps> m_Columns;
    int m_Left; ///< the first source column that counts
    Line m_Lines[2];
    std::vector<LXRGBA32i> m_Pixels;
};

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

    Scaler scaler(source, MakeAxis(origin.x(), scale, target.width(), source.Width()));
    const std::vector<Taps> rows = MakeAxis(origin.y(), scale, target.height(), source.Height());
    const bool isPremultiplied = target.format() == QImage::Format_ARGB32_Premultiplied;
    std::vector<Sum> sums(static_cast<std::size_t>(target.width()));
    for (int y = 0; y < target.height(); ++y) {
        scaler.MakeRow(rows[static_cast<std::size_t>(y)], sums);
        auto* const line = reinterpret_cast<QRgb*>(target.scanLine(y));
        std::transform(sums.begin(), sums.end(), line,
                       [&](const Sum& sum) { return ToPixel(sum, isPremultiplied); });
    }
    return true;
}
