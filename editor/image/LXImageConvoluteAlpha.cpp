#include "image/LXImageConvoluteAlpha.h"

#include "image/ConvolveKernels.h"
#include "image/LXImage.h"
#include "image/PixelMath.h"
#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

namespace {
using TileWalk::TileSide;

/// The alphas around a rectangle of an image, as real numbers; outside the image the nearest pixel's.
class AlphaWindow
{
public:
    void Read(const LXImage32& image, const QRect& window)
    {
        m_Width = window.width();
        m_Values.resize(static_cast<std::size_t>(m_Width) * static_cast<std::size_t>(window.height()));
        const QRect inside = window & image.Rect();
        const QPoint shift = inside.topLeft() - window.topLeft();
        TileWalk::ReadSpans(image, inside, [&](const LXRGBA32i* pixels, int x, int y, int count) {
            std::transform(pixels, pixels + count, MutableRow(y + shift.y()) + x + shift.x(),
                           [](LXRGBA32i pixel) { return static_cast<double>(pixel.Alpha()); });
        });
        ExtendEdges(QRect(shift, inside.size()), window.height());
    }

    const double* Row(int y) const { return m_Values.data() + static_cast<std::size_t>(y) * Width(); }

    bool IsUniform() const
    {
        return std::all_of(m_Values.begin(), m_Values.end(),
                           [&](double value) { return value == m_Values[0]; });
    }

private:
    std::size_t Width() const { return static_cast<std::size_t>(m_Width); }

    double* MutableRow(int y) { return m_Values.data() + static_cast<std::size_t>(y) * Width(); }

    void ExtendEdges(const QRect& known, int height)
    {
        for (int y = known.top(); y <= known.bottom(); ++y) {
            double* const row = MutableRow(y);
            std::fill(row, row + known.left(), row[known.left()]);
            std::fill(row + known.right() + 1, row + m_Width, row[known.right()]);
        }
        for (int y = 0; y < known.top(); ++y) {
            std::copy_n(Row(known.top()), m_Width, MutableRow(y));
        }
        for (int y = known.bottom() + 1; y < height; ++y) {
            std::copy_n(Row(known.bottom()), m_Width, MutableRow(y));
        }
    }

    int m_Width = 0;
    std::vector<double> m_Values;
};

/// One row of sums, weight by weight in the kernel's order: so each sum is rounded as the plain formula's.
void SumRow(const AlphaWindow& window, const std::vector<double>& kernel, const QSize& size, int y,
            double* sums, int count)
{
    std::fill_n(sums, count, 0.0);
    auto weight = kernel.begin();
    for (int j = 0; j < size.height(); ++j) {
        const double* const row = window.Row(y + j);
        for (int i = 0; i < size.width(); ++i, ++weight) {
            for (int x = 0; x < count; ++x) {
                sums[x] += *weight * row[x + i];
            }
        }
    }
}

/// To nearest. A sum that is a half but for the rounding of its weights counts as one and goes up, so that
/// the result doesn't hang on the order of summing.
int RoundedAlpha(double sum)
{
    constexpr double tiny = 1e-9;
    return PixelMath::RoundPositive(std::clamp(sum + tiny, 0.0, 255.0));
}

/// Any kernel.
void ConvolvePlainly(const std::vector<double>& kernel, const QSize& size, LXImage32& image)
{
    const LXImage32 before = image;
    const QPoint center(size.width() / 2, size.height() / 2);
    TileThreads::ForEachTile(image.Rect(), [&](int column, int row, const QRect& part) {
        AlphaWindow window;
        std::array<double, TileSide> sums{};
        window.Read(before, QRect(part.topLeft() - center, part.size() + size - QSize(1, 1)));
        if (window.IsUniform()) {
            SumRow(window, kernel, size, 0, sums.data(), 1);
            // Where nothing changes the tile stays shared.
            if (RoundedAlpha(sums[0]) == static_cast<int>(window.Row(0)[0])) return;
        }
        const auto tile = image.WriteTile(column, row);
        for (int y = 0; y < part.height(); ++y) {
            SumRow(window, kernel, size, y, sums.data(), part.width());
            LXRGBA32i* const pixels = tile.Pixels() + y * TileSide;
            for (int x = 0; x < part.width(); ++x) {
                pixels[x] = PixelMath::WithAlpha(pixels[x], RoundedAlpha(sums[static_cast<std::size_t>(x)]));
            }
        }
    });
}

/// The alphas of a row of tiles before any of them is written, a plane a tile.
class PlaneRow
{
public:
    PlaneRow(const LXImage32& image, int reach) : m_Image(image), m_Reach(reach), m_Planes(image.m_TilesX) {}

    const AlphaPlane& At(int column) const { return m_Planes[static_cast<std::size_t>(column)]; }

    /// Reads a tile and what lies beside and below it; above, the plane's last rows are those of the tile
    /// that was read before, which by now has been written. Outside the image the nearest pixel counts.
    void Read(int column, const QRect& part)
    {
        AlphaPlane& plane = m_Planes[static_cast<std::size_t>(column)];
        const bool isFirst = part.top() == 0;
        for (int y = -m_Reach; y < 0 && !isFirst; ++y) {
            CopyRow(plane, part.width(), y + TileSide, y);
        }
        const QRect inside = part.adjusted(-m_Reach, 0, m_Reach, m_Reach) & m_Image.Rect();
        TileWalk::ForEachTile(inside, [&](int tileColumn, int tileRow, const QRect& known) {
            const auto tile = m_Image.ReadTile(tileColumn, tileRow);
            const QPoint at = known.topLeft() - part.topLeft();
            ConvolveKernels::ReadAlphas(tile.Pixels() + TileWalk::IndexInTile(known.topLeft()), known.width(),
                                        known.height(), plane.At(at.x(), at.y()));
        });
        Extend(plane, part, inside.translated(-part.topLeft()));
    }

private:
    void CopyRow(AlphaPlane& plane, int width, int from, int to) const
    {
        std::copy(plane.At(-m_Reach, from), plane.At(width + m_Reach, from), plane.At(-m_Reach, to));
    }

    void Extend(AlphaPlane& plane, const QRect& part, const QRect& known) const
    {
        for (int y = 0; y <= known.bottom(); ++y) {
            std::fill(plane.At(-m_Reach, y), plane.At(known.left(), y), *plane.At(known.left(), y));
            std::fill(plane.At(known.right(), y) + 1, plane.At(part.width() + m_Reach, y),
                      *plane.At(known.right(), y));
        }
        for (int y = -m_Reach; y < 0 && part.top() == 0; ++y) {
            CopyRow(plane, part.width(), 0, y);
        }
        for (int y = known.bottom() + 1; y < part.height() + m_Reach; ++y) {
            CopyRow(plane, part.width(), known.bottom(), y);
        }
    }

    const LXImage32& m_Image;
    int m_Reach;
    std::vector<AlphaPlane> m_Planes;
};

/// Whether all alphas are the same: then a kernel whose weights add up to 1 changes nothing.
bool IsUniform(const AlphaPlane& plane, const QSize& size, int reach)
{
    const int width = size.width() + 2 * reach;
    const auto count = static_cast<std::size_t>(width);
    const quint8* const first = plane.At(-reach, -reach);
    if (std::memcmp(first, first + 1, count - 1) != 0) return false;
    for (int y = 1 - reach; y < size.height() + reach; ++y) {
        if (std::memcmp(first, plane.At(-reach, y), count) != 0) return false;
    }
    return true;
}

/// In place, a row of tiles after the other.
void ConvolveBoxes(const BoxKernel& kernel, LXImage32& image)
{
    PlaneRow planes(image, kernel.reach);
    for (int row = 0; row < static_cast<int>(image.m_TilesY); ++row) {
        const QRect tiles = QRect(0, row * TileSide, image.Width(), TileSide) & image.Rect();
        TileThreads::ForEachTile(tiles,
                                 [&](int column, int, const QRect& part) { planes.Read(column, part); });
        TileThreads::ForEachTile(tiles, [&](int column, int, const QRect& part) {
            const AlphaPlane& plane = planes.At(column);
            // Where nothing changes the tile stays shared.
            if (kernel.isMean && IsUniform(plane, part.size(), kernel.reach)) return;
            const auto tile = image.WriteTile(column, row);
            ConvolveKernels::Convolve(kernel, plane, part.width(), part.height(), tile.Pixels());
        });
    }
}
} // namespace

LXImageConvoluteAlpha::LXImageConvoluteAlpha(const double* kernel, const QSize& size)
    : m_Size(size), m_Kernel(kernel, size.isEmpty() ? kernel : kernel + size.width() * size.height())
{}

void LXImageConvoluteAlpha::operator()(LXImage32& image) const
{
    if (m_Kernel.empty()) return;

    if (const std::optional<BoxKernel> boxes = BoxKernel::Of(m_Kernel, m_Size)) {
        ConvolveBoxes(*boxes, image);
    } else {
        ConvolvePlainly(m_Kernel, m_Size, image);
    }
}
