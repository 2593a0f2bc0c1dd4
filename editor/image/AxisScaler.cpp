#include "image/AxisScaler.h"

#include "image/PixelMath.h"
#include "image/TileWalk.h"

#include <algorithm>

namespace {
quint32 ToByte(float value)
{
    return static_cast<quint32>(PixelMath::RoundPositive(std::clamp(value, 0.0F, 255.0F)));
}
} // namespace

AxisScaler::Tile::Tile(const AxisScaler& scaler, const QRect& part)
    : m_Scaler(scaler),
      m_Part(part),
      m_First(scaler.m_Source.Width()),
      m_Row(static_cast<std::size_t>(part.width()))
{
    for (int x = part.left(); x <= part.right(); ++x) {
        const ResampleTaps& taps = scaler.ColumnAt(x);
        if (taps.weights.empty()) continue;
        m_First = std::min(m_First, taps.first);
        m_End = std::max(m_End, taps.first + static_cast<int>(taps.weights.size()));
    }
    std::size_t most = 1;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        most = std::max(most, scaler.RowAt(y).weights.size());
    }
    m_Lines.resize(most);
    m_Premultiplied.resize(static_cast<std::size_t>(std::max(0, m_End - m_First)));
}

void AxisScaler::Tile::MakeRow(int y, LXRGBA32i* pixels)
{
    const ResampleTaps& down = m_Scaler.RowAt(y);
    if (down.weights.empty() || m_Premultiplied.empty()) {
        std::fill_n(pixels, m_Part.width(), LXRGBA32i());
        return;
    }
    std::fill(m_Row.begin(), m_Row.end(), Sum{});
    for (std::size_t k = 0; k < down.weights.size(); ++k) {
        const std::vector<Sum>& line = LineAt(down.first + static_cast<int>(k));
        const auto weight = static_cast<float>(down.weights[k]);
        for (std::size_t i = 0; i < m_Row.size(); ++i) {
            for (int c = 0; c < 4; ++c) {
                m_Row[i].of[c] += weight * line[i].of[c];
            }
        }
    }
    for (int i = 0; i < m_Part.width(); ++i) {
        const Sum& sum = m_Row[static_cast<std::size_t>(i)];
        const double coverage = m_Scaler.ColumnAt(m_Part.left() + i).coverage * down.coverage;
        const quint32 alpha = ToByte(sum.of[3] * static_cast<float>(coverage));
        const float factor = 1.0F / std::max(sum.of[3], 1e-6F);
        pixels[i] = alpha == 0 ? LXRGBA32i()
                               : LXRGBA32i(alpha << 24 | ToByte(sum.of[2] * factor) << 16 |
                                           ToByte(sum.of[1] * factor) << 8 | ToByte(sum.of[0] * factor));
    }
}

/// A row of the source, scaled across. Rows are asked for in order, so those of one mixture never share a
/// slot.
const std::vector<AxisScaler::Sum>& AxisScaler::Tile::LineAt(int y)
{
    Line& line = m_Lines[static_cast<std::size_t>(y) % m_Lines.size()];
    if (line.y == y) return line.sums;
    line.y = y;
    line.sums.resize(m_Row.size());
    TileWalk::ReadSpans(m_Scaler.m_Source, QRect(m_First, y, m_End - m_First, 1),
                        [this](const LXRGBA32i* pixels, int x, int, int count) {
                            Sum* sum = m_Premultiplied.data() + x;
                            for (int i = 0; i < count; ++i, ++sum) {
                                const auto alpha = static_cast<float>(pixels[i].Alpha());
                                *sum = {{alpha * static_cast<float>(pixels[i].Blue()),
                                         alpha * static_cast<float>(pixels[i].Green()),
                                         alpha * static_cast<float>(pixels[i].Red()), alpha}};
                            }
                        });
    for (std::size_t i = 0; i < m_Row.size(); ++i) {
        const ResampleTaps& taps = m_Scaler.ColumnAt(m_Part.left() + static_cast<int>(i));
        Sum sum{};
        const Sum* source = m_Premultiplied.data() + (taps.first - m_First);
        for (const double tap : taps.weights) {
            const auto weight = static_cast<float>(tap);
            for (int c = 0; c < 4; ++c) {
                sum.of[c] += weight * source->of[c];
            }
            ++source;
        }
        line.sums[i] = sum;
    }
    return line.sums;
}
