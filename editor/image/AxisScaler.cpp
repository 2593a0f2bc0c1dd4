#include "image/AxisScaler.h"

#include "image/TileWalk.h"

#include <hwy/cache_control.h>

#include <algorithm>

namespace {
constexpr int Channels = AxisKernels::Channels;
constexpr int Group = AxisKernels::TapGroup;

/// Of the rows of the source that are held: about what the caches of a core take, and few enough to be no
/// matter beside the tiles that are read.
constexpr std::size_t MostLineBytes = std::size_t(4) << 20;

/// A row of the target mixes so many at least at a time, however long they are.
constexpr std::size_t FewLines = 8;

/// Enough floats for so many pixels and a register more.
std::size_t FloatsFor(int pixels)
{
    return static_cast<std::size_t>(pixels + Group) * Channels;
}
} // namespace

AxisScaler::Part::Columns AxisScaler::Part::Needed(const AxisScaler& scaler, const QRect& part)
{
    Columns needed;
    needed.first = scaler.m_Source.Width();
    for (int x = part.left(); x <= part.right(); ++x) {
        const ResampleTaps& taps = scaler.ColumnAt(x);
        if (taps.weights.empty()) continue;
        const int count = static_cast<int>(taps.weights.size());
        needed.first = std::min(needed.first, taps.first);
        needed.end = std::max(needed.end, taps.first + count);
        needed.taps = std::max(needed.taps, count);
    }
    needed.taps = (needed.taps + Group - 1) / Group * Group;
    return needed;
}

/// Whether the part takes more rows of the source than it has itself.
bool AxisScaler::Part::IsDownFirst(const AxisScaler& scaler, const QRect& part)
{
    int first = scaler.m_Source.Height();
    int end = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const ResampleTaps& taps = scaler.RowAt(y);
        if (taps.weights.empty()) continue;
        first = std::min(first, taps.first);
        end = std::max(end, taps.first + static_cast<int>(taps.weights.size()));
    }
    return end - first > part.height();
}

AxisScaler::Part::Part(const AxisScaler& scaler, const QRect& part)
    : m_Scaler(scaler),
      m_Part(part),
      m_Needed(Needed(scaler, part)),
      m_IsDownFirst(IsDownFirst(scaler, part)),
      m_Strip(scaler.m_Source, m_Needed.first, m_Needed.end),
      m_Premultiplied(FloatsFor(std::max(0, m_Needed.end - m_Needed.first) + m_Needed.taps)),
      m_Row(FloatsFor(part.width()))
{
    SetTaps();
    SetLines();
    m_RowCoverage.resize(m_Coverage.size());
}

void AxisScaler::Part::SetLines()
{
    std::size_t most = 1;
    for (int y = m_Part.top(); y <= m_Part.bottom(); ++y) {
        most = std::max(most, m_Scaler.RowAt(y).weights.size());
    }
    const std::size_t floats = m_IsDownFirst ? m_Premultiplied.size() : FloatsFor(m_Part.width());
    m_Lines.resize(std::min(most, std::max(FewLines, MostLineBytes / (floats * sizeof(float)))));
    for (Line& line : m_Lines) {
        line.sums.resize(floats);
    }
}

std::size_t AxisScaler::Part::LineBytes() const
{
    return m_Lines.size() * m_Lines.front().sums.size() * sizeof(float);
}

void AxisScaler::Part::SetTaps()
{
    const auto width = static_cast<std::size_t>(m_Part.width());
    m_Firsts.resize(width);
    m_Weights.resize(width * static_cast<std::size_t>(m_Needed.taps * Channels));
    m_Coverage.resize(FloatsFor(m_Part.width()));
    auto weights = m_Weights.begin();
    for (std::size_t i = 0; i < width; ++i) {
        const ResampleTaps& taps = m_Scaler.ColumnAt(m_Part.left() + static_cast<int>(i));
        m_Firsts[i] = taps.weights.empty() ? 0 : taps.first - m_Needed.first;
        auto weight = weights;
        for (const double tap : taps.weights) {
            weight = std::fill_n(weight, Channels, static_cast<float>(tap));
        }
        weights += m_Needed.taps * Channels;
        std::fill_n(m_Coverage.begin() + static_cast<std::ptrdiff_t>(i) * Channels, Channels,
                    static_cast<float>(taps.coverage));
    }
}

void AxisScaler::Part::MakeRow(int y, LXRGBA32i* pixels)
{
    const ResampleTaps& down = m_Scaler.RowAt(y);
    if (!SumRow(down)) {
        std::fill_n(pixels, m_Part.width(), LXRGBA32i());
        return;
    }
    const auto coverage = static_cast<float>(down.coverage);
    std::transform(m_Coverage.begin(), m_Coverage.end(), m_RowCoverage.begin(),
                   [coverage](float across) { return across * coverage; });
    AxisKernels::ToStraight(m_Row.data(), m_RowCoverage.data(), m_Part.width(), pixels);
}

void AxisScaler::Part::MakePremultipliedRow(int y, LXRGBA32i* pixels)
{
    if (SumRow(m_Scaler.RowAt(y))) {
        AxisKernels::ToPremultiplied(m_Row.data(), m_Part.width(), pixels);
    } else {
        std::fill_n(pixels, m_Part.width(), LXRGBA32i());
    }
}

/// False where nothing shows.
bool AxisScaler::Part::SumRow(const ResampleTaps& down)
{
    if (down.weights.empty() || m_Needed.taps == 0) return false;
    m_DownWeights.assign(down.weights.begin(), down.weights.end());
    const int pixels = m_IsDownFirst ? m_Needed.end - m_Needed.first : m_Part.width();
    float* const sums = m_IsDownFirst ? m_Premultiplied.data() : m_Row.data();
    const int count = static_cast<int>(down.weights.size());
    const int atOnce = static_cast<int>(m_Lines.size());
    for (int first = 0; first < count; first += atOnce) {
        const int end = std::min(count, first + atOnce);
        m_DownLines.clear();
        for (int k = first; k < end; ++k) {
            m_DownLines.push_back(LineAt(down.first + k));
        }
        const auto sum = first == 0 ? AxisKernels::SumDown : AxisKernels::AddDown;
        sum(m_DownLines.data(), m_DownWeights.data() + first, end - first, pixels, sums);
    }
    if (m_IsDownFirst) ScaleAcross(m_Premultiplied.data(), m_Row.data());
    return true;
}

/// Rows are asked for in order, so those that are mixed at once never share a slot.
const float* AxisScaler::Part::LineAt(int y)
{
    Line& line = m_Lines[static_cast<std::size_t>(y) % m_Lines.size()];
    if (line.y == y) return line.sums.data();
    line.y = y;
    if (m_IsDownFirst) {
        ReadPremultiplied(y, line.sums.data());
    } else {
        ReadPremultiplied(y, m_Premultiplied.data());
        ScaleAcross(m_Premultiplied.data(), line.sums.data());
    }
    return line.sums.data();
}

void AxisScaler::Part::ReadPremultiplied(int y, float* line)
{
    const bool isLast = y % TileWalk::TileSide == TileWalk::TileSide - 1;
    m_Strip.ReadRow(y, [line, isLast](const LXRGBA32i* pixels, int x, int count) {
        constexpr int cached = 16; // pixels of a line of the caches
        for (int i = 0; i < count && !isLast; i += cached) {
            hwy::Prefetch(pixels + TileWalk::TileSide + i);
        }
        AxisKernels::Premultiply(pixels, count, line + std::ptrdiff_t(x) * Channels);
    });
}

void AxisScaler::Part::ScaleAcross(const float* line, float* row) const
{
    AxisKernels::SumAcross(line, {m_Firsts.data(), m_Weights.data(), m_Needed.taps, m_Part.width()}, row);
}
