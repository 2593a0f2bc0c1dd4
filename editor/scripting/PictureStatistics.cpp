#include "scripting/PictureStatistics.h"

#include <algorithm>
#include <cstdlib>

namespace {
bool IsGray(const QImage& picture)
{
    return picture.format() == QImage::Format_Grayscale8;
}

bool IsThere(const QImage& picture, int x, int y)
{
    return IsGray(picture) ? picture.constScanLine(y)[x] > 0 : qAlpha(picture.pixel(x, y)) > 0;
}

/// By how much the channels differ at most.
int Distance(QRgb a, QRgb b)
{
    if (qAlpha(a) == 0 && qAlpha(b) == 0) return 0;
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}
} // namespace

QRect PictureStatistics::Bounds(const QImage& picture)
{
    QRect bounds;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (IsThere(picture, x, y)) bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

std::vector<std::pair<QString, PictureStatistics::Counts>> PictureStatistics::Histogram(const QImage& picture)
{
    Counts red{};
    Counts green{};
    Counts blue{};
    Counts alpha{};
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            ++red[static_cast<std::size_t>(qRed(pixel))];
            ++green[static_cast<std::size_t>(qGreen(pixel))];
            ++blue[static_cast<std::size_t>(qBlue(pixel))];
            ++alpha[static_cast<std::size_t>(qAlpha(pixel))];
        }
    }
    if (IsGray(picture)) return {{QStringLiteral("value"), red}};
    return {{QStringLiteral("red"), red},
            {QStringLiteral("green"), green},
            {QStringLiteral("blue"), blue},
            {QStringLiteral("alpha"), alpha}};
}

PictureStatistics::Difference PictureStatistics::Compare(const QImage& picture, const QImage& other,
                                                         int tolerance)
{
    const QImage converted = other.convertToFormat(picture.format());
    Difference difference;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const int distance = Distance(picture.pixel(x, y), converted.pixel(x, y));
            difference.largest = std::max(difference.largest, distance);
            if (distance <= tolerance) continue;
            if (difference.count++ == 0) difference.first = QPoint(x, y);
        }
    }
    return difference;
}
