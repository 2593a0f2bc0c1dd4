#include "Pictures.h"

#include <algorithm>
#include <random>
#include <vector>

namespace {
constexpr QRgb White = 0xFFFFFFFF;
constexpr QRgb Black = 0xFF000000;

QRgb* RowOf(QImage& image, int y)
{
    return reinterpret_cast<QRgb*>(image.scanLine(y));
}

void DrawDisc(QImage& image, QPoint center, int radius, QRgb color)
{
    for (int y = std::max(0, center.y() - radius); y < std::min(image.height(), center.y() + radius); ++y) {
        QRgb* const row = RowOf(image, y);
        for (int x = std::max(0, center.x() - radius); x < std::min(image.width(), center.x() + radius);
             ++x) {
            const int dx = x - center.x();
            const int dy = y - center.y();
            if (dx * dx + dy * dy < radius * radius) row[x] = color;
        }
    }
}
} // namespace

QImage Pictures::SmoothNoise(int side, bool isOpaque)
{
    std::mt19937 random(1);
    const int lattice = std::max(4, side / 64);
    QImage coarse(lattice, lattice, QImage::Format_ARGB32);
    for (int y = 0; y < lattice; ++y) {
        QRgb* const row = RowOf(coarse, y);
        std::generate_n(row, lattice, [&] { return random() | (isOpaque ? Black : 0U); });
    }
    // Straight pixels, so not scaled by a painter: each channel by itself.
    QImage image(side, side, QImage::Format_ARGB32);
    for (int y = 0; y < side; ++y) {
        QRgb* const row = RowOf(image, y);
        const int v = static_cast<int>(qint64(y) * (lattice - 1) * 256 / side);
        const QRgb* const above = RowOf(coarse, v >> 8);
        const QRgb* const below = RowOf(coarse, (v >> 8) + 1);
        for (int x = 0; x < side; ++x) {
            const int u = static_cast<int>(qint64(x) * (lattice - 1) * 256 / side);
            const int i = u >> 8;
            QRgb color = 0;
            for (int shift = 0; shift < 32; shift += 8) {
                const auto at = [shift](QRgb p) { return static_cast<int>((p >> shift) & 0xFF); };
                const int top = at(above[i]) * (256 - (u & 255)) + at(above[i + 1]) * (u & 255);
                const int bottom = at(below[i]) * (256 - (u & 255)) + at(below[i + 1]) * (u & 255);
                color |= static_cast<QRgb>((top * (256 - (v & 255)) + bottom * (v & 255)) >> 16) << shift;
            }
            row[x] = color;
        }
    }
    for (int i = 0; i < 40; ++i) {
        const QPoint center(static_cast<int>(random() % static_cast<unsigned>(side)),
                            static_cast<int>(random() % static_cast<unsigned>(side)));
        DrawDisc(image, center, side / 40, random() | (isOpaque ? Black : 0U));
    }
    return image;
}

QImage Pictures::Flat(int side)
{
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(0xFF6080A0);
    return image;
}

QImage Pictures::Percolation(int side)
{
    std::mt19937 random(2);
    QImage image(side, side, QImage::Format_ARGB32);
    for (int y = 0; y < side; ++y) {
        std::generate_n(RowOf(image, y), side, [&] { return random() % 100 < 62 ? White : Black; });
    }
    RowOf(image, 1)[1] = White;
    return image;
}

/// By a walk that turns back where it can go no further.
QImage Pictures::Maze(int side)
{
    std::mt19937 random(3);
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(Black);
    std::vector<QPoint> path{QPoint(1, 1)};
    RowOf(image, 1)[1] = White;
    const QPoint steps[] = {{2, 0}, {-2, 0}, {0, 2}, {0, -2}};
    const QRect inside(0, 0, side, side);
    while (!path.empty()) {
        const QPoint at = path.back();
        QPoint ways[4];
        int count = 0;
        for (const QPoint& step : steps) {
            const QPoint to = at + step;
            if (inside.contains(to) && RowOf(image, to.y())[to.x()] == Black) ways[count++] = step;
        }
        if (count == 0) {
            path.pop_back();
            continue;
        }
        const QPoint step = ways[random() % static_cast<unsigned>(count)];
        const QPoint wall = at + step / 2;
        const QPoint to = at + step;
        RowOf(image, wall.y())[wall.x()] = White;
        RowOf(image, to.y())[to.x()] = White;
        path.push_back(to);
    }
    return image;
}

QImage Pictures::Photo(int side)
{
    const QImage photo(QStringLiteral(ZK_SAMPLE_PHOTO));
    return photo.convertToFormat(QImage::Format_ARGB32)
        .scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}
