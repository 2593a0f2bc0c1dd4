#include "gui/Magnifier.h"

#include <QtMath>

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

namespace {
constexpr std::array<double, 13> Scales = {1, 2, 3, 4, 5, 6, 8, 10, 12, 16, 20, 24, 32};
constexpr double FullShare = 0.5; ///< of the line's color, at full strength

/// One axis: the middle of the glass is the middle of the pixel.
std::vector<int> PixelsOnAxis(int pixel, double scale, int length)
{
    std::vector<int> pixels;
    pixels.reserve(std::size_t(length));
    for (int i = 0; i < length; ++i) {
        const double fromMiddle = (i + 0.5 - length / 2.0) / scale;
        pixels.push_back(pixel + qFloor(fromMiddle + 0.5));
    }
    return pixels;
}

/// First place and number of places of an axis that show pixels from `first` to `last`.
std::pair<int, int> SpanOf(const std::vector<int>& pixels, int first, int last)
{
    const auto begin = std::lower_bound(pixels.begin(), pixels.end(), first);
    const auto end = std::upper_bound(begin, pixels.end(), last);
    return {int(begin - pixels.begin()), int(end - begin)};
}

QRgb OnLine(QRgb color, int target, double share)
{
    const auto mixed = [=](int channel) { return qRound(channel + (target - channel) * share); };
    return qRgb(mixed(qRed(color)), mixed(qGreen(color)), mixed(qBlue(color)));
}

int TargetOf(MagnifierGrid::Kind kind)
{
    switch (kind) {
    case MagnifierGrid::Kind::Lighten: return 255;
    case MagnifierGrid::Kind::Darken: return 0;
    default: return 128;
    }
}

/// Whether a line lies on each place of an axis: where another pixel begins within the span or right after
/// it, and on as many places as it is wide.
std::vector<bool> LinesOnAxis(const std::vector<int>& pixels, const std::pair<int, int>& span, int width)
{
    std::vector<bool> lines(pixels.size(), false);
    const int end = span.first + span.second;
    for (int i = span.first; i <= end && i < int(pixels.size()); ++i) {
        if (i == 0 || pixels[std::size_t(i)] == pixels[std::size_t(i - 1)]) continue;
        const int last = qMin(i + width, int(pixels.size()));
        std::fill(lines.begin() + i, lines.begin() + last, true);
    }
    return lines;
}
} // namespace

Magnifier::Magnifier(const QPoint& pixel, double scale, const QSize& size)
    : m_Size(size),
      m_Columns(PixelsOnAxis(pixel.x(), scale, size.width())),
      m_Rows(PixelsOnAxis(pixel.y(), scale, size.height()))
{}

QRect Magnifier::Seen() const
{
    if (m_Size.isEmpty()) return QRect();
    return QRect(QPoint(m_Columns.front(), m_Rows.front()), QPoint(m_Columns.back(), m_Rows.back()));
}

QRect Magnifier::Place(const QRect& part) const
{
    if (part.isEmpty()) return QRect();
    const auto [left, width] = SpanOf(m_Columns, part.left(), part.right());
    const auto [top, height] = SpanOf(m_Rows, part.top(), part.bottom());
    return QRect(left, top, width, height);
}

QImage Magnifier::Enlarge(const QImage& pixels, const QPoint& topLeft) const
{
    QImage image(m_Size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QRect place = Place(QRect(topLeft, pixels.size()));
    for (int y = place.top(); y <= place.bottom(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        const int pixelRow = m_Rows[std::size_t(y)];
        if (y > place.top() && pixelRow == m_Rows[std::size_t(y - 1)]) {
            std::memcpy(row, image.constScanLine(y - 1), std::size_t(m_Size.width()) * sizeof(QRgb));
            continue;
        }
        const auto* const source =
            reinterpret_cast<const QRgb*>(pixels.constScanLine(pixelRow - topLeft.y()));
        const auto first = m_Columns.begin() + place.left();
        std::transform(first, first + place.width(), row + place.left(),
                       [&](int column) { return source[column - topLeft.x()]; });
    }
    return image;
}

double Magnifier::NextScale(double scale)
{
    const auto next = std::upper_bound(Scales.begin(), Scales.end(), scale);
    return next == Scales.end() ? Scales.back() : *next;
}

double Magnifier::FormerScale(double scale)
{
    const auto notBelow = std::lower_bound(Scales.begin(), Scales.end(), scale);
    return notBelow == Scales.begin() ? Scales.front() : *std::prev(notBelow);
}

void DrawGrid(QImage& image, const Magnifier& magnifier, const QRect& part, const MagnifierGrid& grid)
{
    const QRect place = magnifier.Place(part);
    if (place.isEmpty()) return;
    const auto columns = LinesOnAxis(magnifier.Columns(), {place.left(), place.width()}, grid.width);
    const auto rows = LinesOnAxis(magnifier.Rows(), {place.top(), place.height()}, grid.width);
    const int target = TargetOf(grid.kind);
    const double share = FullShare * grid.strength;
    // The lines after the last pixels lie outside of the part.
    const QRect crossed = place.adjusted(0, 0, grid.width, grid.width) & image.rect();
    for (int y = crossed.top(); y <= crossed.bottom(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        const bool isLine = rows[std::size_t(y)];
        for (int x = crossed.left(); x <= crossed.right(); ++x) {
            if (isLine || columns[std::size_t(x)]) row[x] = OnLine(row[x], target, share);
        }
    }
}
