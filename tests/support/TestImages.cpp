#include "support/TestImages.h"

#include <QString>

LXImage32 TestImages::ToTiles(const PlainImage& image)
{
    LXImage32 result(image.width, image.height);
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            result.SetColor(x, y, image.At(x, y));
        }
    }
    return result;
}

PlainImage TestImages::ToPlain(const LXImage32& image)
{
    PlainImage result(image.Width(), image.Height());
    for (int y = 0; y < result.height; ++y) {
        for (int x = 0; x < result.width; ++x) {
            result.At(x, y) = image.GetColor(x, y);
        }
    }
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
