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

// The part of a tile that lies inside the picture.
QRect InsideTile(const LXImage32& picture, int column, int row)
{
    return {0, 0, std::min(TileSide, picture.Width() - column * TileSide),
            std::min(TileSide, picture.Height() - row * TileSide)};
}

template <class Visit>
void ForEachMatch(const LXRGBA32i* pixels, const QRect& inside, const ColorRange& range, Visit visit)
{
    // Neighbours are often alike, so the last answer is kept.
    LXRGBA32i last = pixels[0];
    bool matches = range.Matches(last);
    for (int y = 0; y < inside.height(); ++y) {
        for (int x = 0; x < inside.width(); ++x) {
            const int index = y * TileSide + x;
            if (pixels[index] != last) {
                last = pixels[index];
                matches = range.Matches(last);
            }
            if (matches) visit(index);
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
    std::vector<int> matches;
    for (int row = 0; row < static_cast<int>(picture.m_TilesY); ++row) {
        for (int column = 0; column < static_cast<int>(picture.m_TilesX); ++column) {
            const LXTileReader<LXRGBA32i> tile = picture.ReadTile(column, row);
            matches.clear();
            ForEachMatch(tile.Pixels(), InsideTile(picture, column, row), range,
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
