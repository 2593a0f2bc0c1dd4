#include "image/LXImageConvoluteAlpha.h"

#include "image/ConvolveKernels.h"
#include "image/LXImage.h"
#include "image/PixelMath.h"
#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
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

/// The alphas beside the lines between rows of tiles, as they were before anything is written: with them each
/// row of tiles is convolved by itself, in place.
class SeamAlphas
{
public:
    SeamAlphas(const LXImage32& image, int reach)
        : m_Reach(reach),
          m_Width(image.Width()),
          m_Alphas(static_cast<std::size_t>(m_Width) * static_cast<std::size_t>(2 * reach) *
                   (image.m_TilesY == 0 ? 0 : image.m_TilesY - 1))
    {
        TileThreads::ForEach(static_cast<int>(image.m_TilesY) - 1, [&](int seam) {
            const int middle = (seam + 1) * TileSide;
            const QRect rows = QRect(0, middle - reach, m_Width, 2 * reach) & image.Rect();
            TileWalk::ReadSpans(image, rows, [&](const LXRGBA32i* pixels, int x, int y, int count) {
                ConvolveKernels::ReadAlphas(pixels, count, 1, MutableRow(rows.top() + y) + x);
            });
        });
    }

    /// Of a row of the image within reach of a line.
    const quint8* Row(int y) const { return m_Alphas.data() + Place(y); }

private:
    std::size_t Place(int y) const
    {
        const int seam = (y + m_Reach) / TileSide; // from 1 on
        const int row = (seam - 1) * 2 * m_Reach + y - (seam * TileSide - m_Reach);
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_Width);
    }

    quint8* MutableRow(int y) { return m_Alphas.data() + Place(y); }

    int m_Reach;
    int m_Width;
    std::vector<quint8> m_Alphas;
};

/// The alphas of a row of tiles, read from left to right one tile ahead of the one that is written.
class PlaneRow
{
public:
    PlaneRow(const LXImage32& image, const SeamAlphas& seams, int row, int reach)
        : m_Image(image), m_Seams(seams), m_Row(row), m_Reach(reach), m_Planes(new AlphaPlane[Planes])
    {
        Read(0);
    }

    /// Of a tile and the pixels around it; outside the image the nearest pixel counts. Columns from 0 on,
    /// each once.
    const AlphaPlane& Enter(int column)
    {
        if (column + 1 < static_cast<int>(m_Image.m_TilesX)) {
            Read(column + 1);
            Join(At(column), At(column + 1));
        }
        return At(column);
    }

private:
    static constexpr int Planes = 2;

    AlphaPlane& At(int column) { return m_Planes[static_cast<std::size_t>(column % Planes)]; }

    void Read(int column)
    {
        AlphaPlane& plane = At(column);
        const QRect part = TileWalk::TileRect(column, m_Row) & m_Image.Rect();
        {
            const auto tile = m_Image.ReadTile(column, m_Row);
            ConvolveKernels::ReadAlphas(tile.Pixels(), part.width(), part.height(), plane.At(0, 0));
        }
        const int height = m_Image.Height();
        for (int i = 1; i <= m_Reach; ++i) {
            const int above = part.top() - i;
            const int below = part.bottom() + i;
            std::copy_n(above < 0 ? plane.At(0, 0) : m_Seams.Row(above) + part.left(), part.width(),
                        plane.At(0, -i));
            const bool isInside = part.bottom() + 1 < height;
            const quint8* const last = plane.At(0, part.height() - 1);
            std::copy_n(isInside ? m_Seams.Row(std::min(below, height - 1)) + part.left() : last,
                        part.width(), plane.At(0, part.height() - 1 + i));
        }
        for (int y = -m_Reach; y < part.height() + m_Reach; ++y) {
            if (column == 0) std::fill(plane.At(-m_Reach, y), plane.At(0, y), *plane.At(0, y));
            std::fill(plane.At(part.width(), y), plane.At(part.width() + m_Reach, y),
                      *plane.At(part.width() - 1, y));
        }
    }

    /// Gives two neighbours what each sees of the other.
    void Join(AlphaPlane& left, AlphaPlane& right) const
    {
        for (int y = -m_Reach; y < TileSide + m_Reach; ++y) {
            std::copy_n(right.At(0, y), SeenBeside, left.At(TileSide, y));
            std::copy_n(left.At(TileSide - SeenBeside, y), SeenBeside, right.At(-SeenBeside, y));
        }
    }

    /// A little more than the reach, because that many bytes are one move.
    static constexpr int SeenBeside = 4;
    static_assert(SeenBeside >= BoxKernel::MostReach && SeenBeside <= AlphaPlane::Margin);

    const LXImage32& m_Image;
    const SeamAlphas& m_Seams;
    int m_Row;
    int m_Reach;
    std::unique_ptr<AlphaPlane[]> m_Planes;
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

/// In place, each row of tiles by one thread.
void ConvolveBoxes(const BoxKernel& kernel, LXImage32& image)
{
    const SeamAlphas seams(image, kernel.reach);
    TileThreads::ForEach(static_cast<int>(image.m_TilesY), [&](int row) {
        PlaneRow planes(image, seams, row, kernel.reach);
        for (int column = 0; column < static_cast<int>(image.m_TilesX); ++column) {
            const AlphaPlane& plane = planes.Enter(column);
            const QSize size = (TileWalk::TileRect(column, row) & image.Rect()).size();
            // Where nothing changes the tile stays shared.
            if (kernel.isMean && IsUniform(plane, size, kernel.reach)) continue;
            const auto tile = image.WriteTile(column, row);
            ConvolveKernels::Convolve(kernel, plane, size.width(), size.height(), tile.Pixels());
        }
    });
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
