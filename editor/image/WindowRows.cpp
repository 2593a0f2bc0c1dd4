#include "image/WindowRows.h"

#include "image/TileWalk.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace {
/// Weights beyond are too small to be seen.
constexpr double Unseen = 1e-4;

/// How much of its width a target pixel reaches to either side: half the diagonal, and a bit for float.
constexpr double HalfDiagonal = 0.7072;

/// Of a map's numbers; beyond, products could leave what a double holds.
constexpr double Reach = 1e100;

/// Keeps those numbers i from `first` to `last`, as real numbers, with start + i step >= 0.
void Restrict(double start, double step, double& first, double& last)
{
    if (step == 0) {
        if (start < 0) last = first - 1;
        return;
    }
    const double border = -start / step;
    if (step > 0) {
        first = std::max(first, border);
    } else {
        last = std::min(last, border);
    }
}

std::array<QPoint, 4> CornersOf(const QRect& part)
{
    return {part.topLeft(), part.topRight(), part.bottomLeft(), part.bottomRight()};
}

/// The part of a step of x / z that hangs on the place, times z².
double StepAt(const EvenPlane& plane, double step, const EvenPlane& z, double stepZ, const QPoint& at)
{
    return step * z.At(at.x(), at.y()) - stepZ * plane.At(at.x(), at.y());
}
} // namespace

/// Brings Z near 1 in the part, since the kernels take its fourth power in float; by a power of 2, which
/// leaves the map as it is to the last bit. False where numbers would be left that no sum and product may
/// hold.
bool WindowRows::BringNearOne(const QRect& part)
{
    double mostZ = 0;
    for (const QPoint& corner : CornersOf(part)) {
        mostZ = std::max(mostZ, m_Map.z.At(corner.x(), corner.y()));
    }
    if (!std::isnormal(mostZ)) return false;
    const int shift = -std::ilogb(mostZ);
    for (EvenPlane* const plane : {&m_Map.x, &m_Map.y, &m_Map.z}) {
        for (double* const number : {&plane->right, &plane->down, &plane->first}) {
            *number = std::ldexp(*number, shift);
            if (!(std::abs(*number) < Reach)) return false;
        }
    }
    return true;
}

bool WindowRows::Enter(const QRect& part)
{
    if (!BringNearOne(part)) return false;
    double leastZ = m_Map.z.At(part.left(), part.top());
    for (const QPoint& corner : CornersOf(part)) {
        leastZ = std::min(leastZ, m_Map.z.At(corner.x(), corner.y()));
    }
    if (!(leastZ > 0)) return false;
    m_Widest = WidestIn(part, leastZ);
    const double widest = std::max(m_Widest.x, m_Widest.y);
    if (!std::isfinite(widest) || widest > WindowKernels::MostTaps ||
        TapsOf(widest) > WindowKernels::MostTaps)
        return false;
    m_IsInside = IsInside(part);
    ReadBox(part);
    return true;
}

WindowRows::Widths WindowRows::WidestIn(const QRect& part, double leastZ) const
{
    const auto widest = [&](const EvenPlane& plane) {
        double right = 0;
        double down = 0;
        for (const QPoint& corner : CornersOf(part)) {
            right = std::max(right, std::abs(StepAt(plane, plane.right, m_Map.z, m_Map.z.right, corner)));
            down = std::max(down, std::abs(StepAt(plane, plane.down, m_Map.z, m_Map.z.down, corner)));
        }
        return std::max(1.0, std::hypot(right, down) / (leastZ * leastZ));
    };
    return {widest(m_Map.x), widest(m_Map.y)};
}

/// How far a window reaches to either side.
double WindowRows::ReachOf(double width) const
{
    return m_Kind == ResampleKernel::Kind::Linear ? width / 2 : width * 2;
}

int WindowRows::TapsOf(double width) const
{
    const int whole = static_cast<int>(std::ceil(2 * ReachOf(width) - Unseen));
    return m_Kind == ResampleKernel::Kind::Linear ? whole + 1 : whole;
}

void WindowRows::ReadBox(const QRect& part)
{
    double left = m_Source.Width();
    double top = m_Source.Height();
    double right = 0;
    double bottom = 0;
    for (const QPoint& corner : CornersOf(part)) {
        const double z = m_Map.z.At(corner.x(), corner.y());
        const double x = m_Map.x.At(corner.x(), corner.y()) / z;
        const double y = m_Map.y.At(corner.x(), corner.y()) / z;
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    }
    const auto inside = [](double value, int side) {
        return static_cast<int>(std::floor(std::clamp(value, -1.0, side + 1.0)));
    };
    const double aroundX = ReachOf(m_Widest.x) + 1;
    const double aroundY = ReachOf(m_Widest.y) + 1;
    const int width = m_Source.Width();
    const int height = m_Source.Height();
    m_BoxRect = QRect(QPoint(inside(left - aroundX, width), inside(top - aroundY, height)),
                      QPoint(inside(right + aroundX, width), inside(bottom + aroundY, height))) &
                m_Source.Rect();
    if (m_BoxRect.isEmpty()) return;
    const auto stride = static_cast<std::size_t>(m_BoxRect.width()) + WindowKernels::MostTaps;
    const auto rows = static_cast<std::size_t>(m_BoxRect.height()) + WindowKernels::MostTaps;
    m_Box.resize(stride * rows);
    TileWalk::ReadSpans(m_Source, m_BoxRect, [&](const LXRGBA32i* pixels, int x, int y, int count) {
        std::copy_n(pixels, count, m_Box.data() + static_cast<std::size_t>(y) * stride + x);
    });
}

/// Those whose middles stay away from the source's ends: x >= margin, or X - margin Z >= 0, and so on.
WindowRows::Range WindowRows::Within(int x, int y, int count, const Widths& margins, int slack) const
{
    double first = 0;
    double last = count - 1;
    const double z = m_Map.z.At(x, y);
    const auto restrict = [&](const EvenPlane& plane, double low, double high) {
        const double start = plane.At(x, y);
        Restrict(start - low * z, plane.right - low * m_Map.z.right, first, last);
        Restrict(high * z - start, high * m_Map.z.right - plane.right, first, last);
    };
    restrict(m_Map.x, margins.x, m_Source.Width() - margins.x);
    restrict(m_Map.y, margins.y, m_Source.Height() - margins.y);
    if (!(first <= last)) return {0, 0};
    const int begin = std::max(0, static_cast<int>(std::ceil(first)) - slack);
    const int end = std::min(count, static_cast<int>(std::floor(last)) + 1 + slack);
    return begin < end ? Range{begin, end} : Range{0, 0};
}

WindowRows::Range WindowRows::Touching(int x, int y, int count) const
{
    return m_IsInside ? Range{0, count} : Within(x, y, count, {-m_Widest.x, -m_Widest.y}, 1);
}

WindowRows::Range WindowRows::Inside(int x, int y, int count) const
{
    if (m_IsInside) return {0, count};
    const Widths margins = Margins();
    // Wider than the source: every pixel meets an end.
    if (2 * margins.x >= m_Source.Width() || 2 * margins.y >= m_Source.Height()) return {0, 0};
    return Within(x, y, count, margins, 0);
}

/// How far a middle must stay away from the source's ends for a whole window.
WindowRows::Widths WindowRows::Margins() const
{
    constexpr double bit = 0.01;
    const auto margin = [this](double width) { return std::max(ReachOf(width), HalfDiagonal * width) + bit; };
    return {margin(m_Widest.x), margin(m_Widest.y)};
}

/// Whether all of the part does. It is enough to ask its corners, for the source's ends are straight.
bool WindowRows::IsInside(const QRect& part) const
{
    const Widths margins = Margins();
    const auto corners = CornersOf(part);
    return std::all_of(corners.begin(), corners.end(), [&](const QPoint& corner) {
        const Range range = Within(corner.x(), corner.y(), 1, margins, 0);
        return range.first < range.end;
    });
}

void WindowRows::MakeRow(int x, int y, int count, LXRGBA32i* pixels) const
{
    const QPoint at(x, y);
    const double z = m_Map.z.At(x, y);
    const auto inBox = [&](const EvenPlane& plane, int origin) {
        return EvenSteps{plane.At(x, y) - origin * z, plane.right - origin * m_Map.z.right};
    };
    const auto down = [&](const EvenPlane& plane) {
        return EvenSteps{StepAt(plane, plane.down, m_Map.z, m_Map.z.down, at),
                         plane.down * m_Map.z.right - m_Map.z.down * plane.right};
    };
    const bool isAffine = m_Map.z.right == 0 && m_Map.z.down == 0;
    const WindowRow row{isAffine,
                        inBox(m_Map.x, m_BoxRect.left()),
                        inBox(m_Map.y, m_BoxRect.top()),
                        {z, m_Map.z.right},
                        StepAt(m_Map.x, m_Map.x.right, m_Map.z, m_Map.z.right, at),
                        StepAt(m_Map.y, m_Map.y.right, m_Map.z, m_Map.z.right, at),
                        down(m_Map.x),
                        down(m_Map.y),
                        TapsOf(m_Widest.x),
                        TapsOf(m_Widest.y),
                        count};
    const WindowBox box{m_Box.data(), m_BoxRect.width() + WindowKernels::MostTaps};
    if (m_Kind == ResampleKernel::Kind::Linear) {
        WindowKernels::MixLinear(box, row, pixels);
    } else {
        WindowKernels::MixCubic(box, row, pixels);
    }
}
