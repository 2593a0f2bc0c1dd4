#include "support/TestImages.h"

#include <QString>

namespace {
constexpr int TileSide = 128;

template <class TileVisit>
void ForEachTile(const LXImage32& image, TileVisit visit)
{
    for (int row = 0; row < static_cast<int>(image.m_TilesY); ++row) {
        for (int column = 0; column < static_cast<int>(image.m_TilesX); ++column) {
            visit(column, row);
        }
    }
}

/// Calls `visit(x, y, index)` for each pixel of the image in a tile, `index` being its place in the tile.
template <class PixelVisit>
void ForEachPixel(const LXImage32& image, int column, int row, PixelVisit visit)
{
    for (int index = 0; index < TileSide * TileSide; ++index) {
        const int x = column * TileSide + index % TileSide;
        const int y = row * TileSide + index / TileSide;
        if (x < image.Width() && y < image.Height()) visit(x, y, index);
    }
}
} // namespace

LXImage32 TestImages::ToTiles(const PlainImage& image)
{
    LXImage32 result(image.width, image.height);
    ForEachTile(result, [&](int column, int row) {
        const auto tile = result.WriteTile(column, row);
        // What lies beyond the edge means nothing, so nobody may count on zeros there.
        for (int index = 0; index < TileSide * TileSide; ++index) {
            tile.Pixels()[index] = LXRGBA32i(0x9E3779B9u * static_cast<quint32>(index + 1));
        }
        ForEachPixel(result, column, row,
                     [&](int x, int y, int index) { tile.Pixels()[index] = image.At(x, y); });
    });
    return result;
}

PlainImage TestImages::ToPlain(const LXImage32& image)
{
    PlainImage result(image.Width(), image.Height());
    ForEachTile(image, [&](int column, int row) {
        const auto tile = image.ReadTile(column, row);
        ForEachPixel(image, column, row,
                     [&](int x, int y, int index) { result.At(x, y) = tile.Pixels()[index]; });
    });
    return result;
}

PlainImage TestImages::Random(int width, int height, std::mt19937& random)
{
    const auto randomByte = [&] {
        const auto dice = random() % 8;
        return dice == 0 ? 0u : dice == 1 ? 255u : random() % 256u;
    };
    PlainImage image(width, height);
    for (LXRGBA32i& pixel : image.pixels) {
        for (quint8& byte : pixel.bytes) {
            byte = static_cast<quint8>(randomByte());
        }
    }
    return image;
}

QString TestImages::Difference(const PlainImage& actual, const PlainImage& expected)
{
    if (actual.width != expected.width || actual.height != expected.height) {
        return QStringLiteral("size %1 x %2 instead of %3 x %4")
            .arg(actual.width)
            .arg(actual.height)
            .arg(expected.width)
            .arg(expected.height);
    }
    for (int y = 0; y < actual.height; ++y) {
        for (int x = 0; x < actual.width; ++x) {
            if (actual.At(x, y) == expected.At(x, y)) continue;
            return QStringLiteral("(%1, %2) is %3 instead of %4")
                .arg(x)
                .arg(y)
                .arg(actual.At(x, y).value, 8, 16, QLatin1Char('0'))
                .arg(expected.At(x, y).value, 8, 16, QLatin1Char('0'));
        }
    }
    return {};
}
