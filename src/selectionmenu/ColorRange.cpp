#include "selectionmenu/ColorRange.h"

#include <algorithm>
#include <cstdlib>

namespace {
constexpr LXRGBA32i FullCoverage(0xFF000000u);
constexpr int TileSide = 128;

bool IsWithin(LXRGBA32i a, LXRGBA32i b, int tolerance)
{
    return std::abs(a.Red() - b.Red()) <= tolerance && std::abs(a.Green() - b.Green()) <= tolerance &&
           std::abs(a.Blue() - b.Blue()) <= tolerance && std::abs(a.Alpha() - b.Alpha()) <= tolerance;
}

/// The match test for many pixels. For each value of each channel it knows the colors that are near enough, a
/// bit for each, so that sixty-four colors cost a pixel no more than one does.
class ColorLookup
{
public:
    explicit ColorLookup(const ColorRange& range)
        : m_Words((range.colors.size() + BitsOfWord - 1) / BitsOfWord), m_Bits(Channels * Values * m_Words)
    {
        for (std::size_t i = 0; i < range.colors.size(); ++i) {
            const LXRGBA32i color = range.colors[i];
            Add(i, Red, color.Red(), range.tolerance);
            Add(i, Green, color.Green(), range.tolerance);
            Add(i, Blue, color.Blue(), range.tolerance);
            Add(i, Alpha, color.Alpha(), range.tolerance);
        }
    }

    bool Matches(LXRGBA32i pixel) const
    {
        const quint64* red = Near(Red, pixel.Red());
        const quint64* green = Near(Green, pixel.Green());
        const quint64* blue = Near(Blue, pixel.Blue());
        const quint64* alpha = Near(Alpha, pixel.Alpha());
        for (std::size_t word = 0; word < m_Words; ++word) {
            if (red[word] & green[word] & blue[word] & alpha[word]) return true;
        }
        return false;
    }

private:
    enum Channel
    {
        Red,
        Green,
        Blue,
        Alpha,
        Channels,
    };

    static constexpr std::size_t BitsOfWord = 64;
    static constexpr std::size_t Values = 256;

    std::size_t PlaceOf(Channel channel, int value) const
    {
        return (channel * Values + static_cast<std::size_t>(value)) * m_Words;
    }

    const quint64* Near(Channel channel, int value) const { return m_Bits.data() + PlaceOf(channel, value); }

    void Add(std::size_t color, Channel channel, int middle, int tolerance)
    {
        const int last = std::min(middle + tolerance, 255);
        for (int value = std::max(middle - tolerance, 0); value <= last; ++value) {
            m_Bits[PlaceOf(channel, value) + color / BitsOfWord] |= quint64(1) << (color % BitsOfWord);
        }
    }

    std::size_t m_Words;
    std::vector<quint64> m_Bits;
};

// The part of a tile that lies inside the picture.
QRect InsideTile(const LXImage32& picture, int column, int row)
{
    return {0, 0, std::min(TileSide, picture.Width() - column * TileSide),
            std::min(TileSide, picture.Height() - row * TileSide)};
}

template <class Visit>
void ForEachMatch(const LXRGBA32i* pixels, const QRect& inside, const ColorLookup& lookup, Visit visit)
{
    for (int y = 0; y < inside.height(); ++y) {
        for (int x = 0; x < inside.width(); ++x) {
            const int index = y * TileSide + x;
            if (lookup.Matches(pixels[index])) visit(index);
        }
    }
}

QSize PreviewSize(const QSize& picture, const QSize& bounds)
{
    if (picture.width() <= bounds.width() && picture.height() <= bounds.height()) return picture;
    return picture.scaled(bounds, Qt::KeepAspectRatio).expandedTo({1, 1});
}
} // namespace

bool ColorRange::Matches(LXRGBA32i pixel) const
{
    return std::any_of(colors.begin(), colors.end(),
                       [&](LXRGBA32i color) { return IsWithin(pixel, color, tolerance); });
}

LXImage32 MakeColorRangeMask(const LXImage32& picture, const ColorRange& range)
{
    LXImage32 mask(picture.Width(), picture.Height());
    const ColorLookup lookup(range);
    std::vector<int> matches;
    for (int row = 0; row < static_cast<int>(picture.m_TilesY); ++row) {
        for (int column = 0; column < static_cast<int>(picture.m_TilesX); ++column) {
            const LXTileReader<LXRGBA32i> tile = picture.ReadTile(column, row);
            matches.clear();
            ForEachMatch(tile.Pixels(), InsideTile(picture, column, row), lookup,
                         [&](int index) { matches.push_back(index); });
            // Tiles without a match stay the one empty tile that all share.
            if (matches.empty()) continue;
            const LXTileWriter<LXRGBA32i> target = mask.WriteTile(column, row);
            for (const int index : matches) {
                target.Pixels()[index] = FullCoverage;
            }
        }
    }
    return mask;
}

QImage MakeColorRangePreview(const LXImage32& picture, const ColorRange& range, const QSize& bounds)
{
    if (picture.IsNull()) return {};

    const QSize size = PreviewSize(picture.Rect().size(), bounds);
    QImage preview(size, QImage::Format_Grayscale8);
    for (int y = 0; y < size.height(); ++y) {
        uchar* line = preview.scanLine(y);
        const int pictureY = (2 * y + 1) * picture.Height() / (2 * size.height());
        for (int x = 0; x < size.width(); ++x) {
            const int pictureX = (2 * x + 1) * picture.Width() / (2 * size.width());
            line[x] = range.Matches(picture.GetColor(pictureX, pictureY)) ? 255 : 0;
        }
    }
    return preview;
}
