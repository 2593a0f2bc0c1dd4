#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

#include <array>
#include <utility>
#include <vector>

/// What can be said of pictures in numbers. Pictures are `QImage::Format_ARGB32`, or `Format_Grayscale8` for
/// values of masks. Any thread.
namespace PictureStatistics {
/// How often each value stands there.
using Counts = std::array<int, 256>;

/// The smallest rectangle around the pixels with alpha, or with a value above 0; null for none.
QRect Bounds(const QImage& picture);

/// By the names of the channels: red, green, blue and alpha, or value.
std::vector<std::pair<QString, Counts>> Histogram(const QImage& picture);

struct Difference
{
    int count = 0;   ///< pixels that differ by more than the tolerance
    int largest = 0; ///< by how much a channel differs at most, anywhere
    QPoint first;    ///< of those that count, in the order of reading
};

/// Pictures of one size, the second of any format. Two transparent pixels are alike, whatever their color.
Difference Compare(const QImage& picture, const QImage& other, int tolerance);
} // namespace PictureStatistics
