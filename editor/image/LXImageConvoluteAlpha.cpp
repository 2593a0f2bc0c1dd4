#include "image/LXImageConvoluteAlpha.h"

#include "image/LXImage.h"
#include "image/PixelMath.h"
#include "image/TileWalk.h"

#include <algorithm>
#include <array>

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

int RoundedAlpha(double sum)
{
    return PixelMath::RoundPositive(std::clamp(sum, 0.0, 255.0));
}
} // namespace

LXImageConvoluteAlpha::LXImageConvoluteAlpha(const double* kernel, const QSize& size)
    : m_Size(size), m_Kernel(kernel, size.isEmpty() ? kernel : kernel + size.width() * size.height())
{}

void LXImageConvoluteAlpha::operator()(LXImage32& image) const
{
    if (m_Kernel.empty()) return;

    const LXImage32 before = image;
    const QPoint center(m_Size.width() / 2, m_Size.height() / 2);
    AlphaWindow window;
    std::array<double, TileSide> sums{};
    TileWalk::ForEachTile(image.Rect(), [&](int column, int row, const QRect& part) {
        const QRect around(part.topLeft() - center, part.size() + m_Size - QSize(1, 1));
        window.Read(before, around);
        if (window.IsUniform()) {
            SumRow(window, m_Kernel, m_Size, 0, sums.data(), 1);
            // Where nothing changes the tile stays shared.
            if (RoundedAlpha(sums[0]) == static_cast<int>(window.Row(0)[0])) return;
        }
        const auto tile = image.WriteTile(column, row);
        for (int y = 0; y < part.height(); ++y) {
            SumRow(window, m_Kernel, m_Size, y, sums.data(), part.width());
            LXRGBA32i* const pixels = tile.Pixels() + y * TileSide;
            for (int x = 0; x < part.width(); ++x) {
                pixels[x] = PixelMath::WithAlpha(pixels[x], RoundedAlpha(sums[static_cast<std::size_t>(x)]));
            }
        }
    });
}
