#include "image/AffineRows.h"

#include "image/TileWalk.h"

#include <algorithm>
#include <cmath>

namespace {
/// How far the middles of target pixels stay from the source's ends: the pixels mixed then lie inside, and so
/// does the whole target pixel.
constexpr double LinearMargin = 1.5;
constexpr double CubicMargin = 2.5;

/// A pixel that doesn't shrink is no wider than the diagonal of a source pixel.
constexpr double MostReach = 1.5;

/// Keeps those numbers i from `first` to `last`, as real numbers, with low <= start + i step <= high.
void Restrict(double start, double step, double low, double high, double& first, double& last)
{
    if (low > high || (step == 0 && (start < low || start > high))) {
        last = first - 1;
        return;
    }
    if (step == 0) return;
    const double a = (low - start) / step;
    const double b = (high - start) / step;
    first = std::max(first, std::min(a, b));
    last = std::min(last, std::max(a, b));
}
} // namespace

bool AffineRows::Serves(const AffineMap& map)
{
    // A window of one source pixel; a turn's cosine and sine needn't give it to the last bit.
    constexpr double one = 1 + 1e-9;
    return std::hypot(map.xx, map.yx) <= one && std::hypot(map.xy, map.yy) <= one;
}

void AffineRows::Enter(const QRect& part)
{
    constexpr int around = 3;
    const double xs[] = {XAt(part.left(), part.top()), XAt(part.right(), part.top()),
                         XAt(part.left(), part.bottom()), XAt(part.right(), part.bottom())};
    const double ys[] = {YAt(part.left(), part.top()), YAt(part.right(), part.top()),
                         YAt(part.left(), part.bottom()), YAt(part.right(), part.bottom())};
    const auto [left, right] = std::minmax_element(std::begin(xs), std::end(xs));
    const auto [top, bottom] = std::minmax_element(std::begin(ys), std::end(ys));
    const auto inside = [](double value, int side) {
        return static_cast<int>(std::floor(std::clamp(value, -1.0 - around, side + 1.0 + around)));
    };
    const int width = m_Source.Width();
    const int height = m_Source.Height();
    m_BoxRect = QRect(QPoint(inside(*left, width) - around, inside(*top, height) - around),
                      QPoint(inside(*right, width) + around, inside(*bottom, height) + around)) &
                m_Source.Rect();
    if (m_BoxRect.isEmpty()) return;
    m_Box.resize(static_cast<std::size_t>(m_BoxRect.width()) * static_cast<std::size_t>(m_BoxRect.height()));
    TileWalk::ReadSpans(m_Source, m_BoxRect, [this](const LXRGBA32i* pixels, int x, int y, int count) {
        std::copy_n(pixels, count, m_Box.data() + y * m_BoxRect.width() + x);
    });
}

AffineRows::Range AffineRows::Within(int x, int y, int count, double margin, int slack) const
{
    double first = 0;
    double last = count - 1;
    Restrict(XAt(x, y), m_Map.xx, margin, m_Source.Width() - margin, first, last);
    Restrict(YAt(x, y), m_Map.xy, margin, m_Source.Height() - margin, first, last);
    if (!(first <= last)) return {0, 0};
    const int begin = std::max(0, static_cast<int>(std::ceil(first)) - slack);
    const int end = std::min(count, static_cast<int>(std::floor(last)) + 1 + slack);
    return begin < end ? Range{begin, end} : Range{0, 0};
}

AffineRows::Range AffineRows::Touching(int x, int y, int count) const
{
    return Within(x, y, count, -MostReach, 1);
}

AffineRows::Range AffineRows::Inside(int x, int y, int count) const
{
    return Within(x, y, count, m_Kind == ResampleKernel::Kind::Linear ? LinearMargin : CubicMargin, 0);
}

void AffineRows::MakeRow(int x, int y, int count, LXRGBA32i* pixels) const
{
    const SourceBox box{m_Box.data(), m_BoxRect.width()};
    const SourceLine line{static_cast<float>(XAt(x, y) - 0.5 - m_BoxRect.left()),
                          static_cast<float>(YAt(x, y) - 0.5 - m_BoxRect.top()), static_cast<float>(m_Map.xx),
                          static_cast<float>(m_Map.xy), count};
    if (m_Kind == ResampleKernel::Kind::Linear) {
        ResampleKernels::LinearRow(box, line, pixels);
    } else {
        ResampleKernels::CubicRow(box, line, pixels);
    }
}
