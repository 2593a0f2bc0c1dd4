#pragma once

#include "image/LXImage.h"
#include "image/LXImageConvert.h"

#include <QImage>
#include <QRandomGenerator>
#include <QString>

/// Comparing and making pixels for the tests of files.
namespace PixelChecks {
inline QImage ToQImage(const LXImage32& image)
{
    QImage result;
    ConvertImage(image, result);
    return result;
}

inline LXImage32 FromQImage(const QImage& image)
{
    LXImage32 result;
    ConvertImage(image, result);
    return result;
}

/// Any color under any alpha.
inline QImage RandomImage(const QSize& size, quint32 seed)
{
    QRandomGenerator random(seed);
    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const quint32 pixel = random.generate();
            // Fully transparent pixels with a color often enough to be met in small images.
            reinterpret_cast<quint32*>(image.scanLine(y))[x] = pixel % 5 == 0 ? pixel & 0x00FFFFFF : pixel;
        }
    }
    return image;
}

/// Where two images differ first, for a test's message; empty when they don't.
inline QString FirstDifference(const QImage& actual, const QImage& expected, int tolerance = 0)
{
    if (actual.size() != expected.size()) {
        return QString("%1 x %2 instead of %3 x %4")
            .arg(actual.width())
            .arg(actual.height())
            .arg(expected.width())
            .arg(expected.height());
    }
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            const LXRGBA32i a(reinterpret_cast<const quint32*>(actual.constScanLine(y))[x]);
            const LXRGBA32i b(reinterpret_cast<const quint32*>(expected.constScanLine(y))[x]);
            for (int i = 0; i < 4; ++i) {
                if (qAbs(a.bytes[i] - b.bytes[i]) <= tolerance) continue;
                return QString("(%1, %2): %3 instead of %4")
                    .arg(x)
                    .arg(y)
                    .arg(a.value, 8, 16)
                    .arg(b.value, 8, 16);
            }
        }
    }
    return {};
}
} // namespace PixelChecks
