#include "gui/HistogramPainter.h"

#include "gui/HistogramLevels.h"

#include <algorithm>
#include <vector>

namespace {
/// One channel alone on the ground; over each other the three come to a gray, light or dark.
QColor InkOf(LevelCounts::Channel channel, const HistogramLook& look)
{
    switch (channel) {
    case LevelCounts::Red: return look.isDark ? QColor(0x78, 0x18, 0x18) : QColor(0xf0, 0x70, 0x68);
    case LevelCounts::Green: return look.isDark ? QColor(0x14, 0x60, 0x1c) : QColor(0x6c, 0xc8, 0x70);
    case LevelCounts::Blue: return look.isDark ? QColor(0x18, 0x28, 0x7c) : QColor(0x70, 0x8c, 0xf0);
    default: return look.ink;
    }
}

QRgb Added(QRgb ground, const QColor& ink)
{
    return qRgb(qMin(255, qRed(ground) + ink.red()), qMin(255, qGreen(ground) + ink.green()),
                qMin(255, qBlue(ground) + ink.blue()));
}

QRgb Multiplied(QRgb ground, const QColor& ink)
{
    return qRgb(qRed(ground) * ink.red() / 255, qGreen(ground) * ink.green() / 255,
                qBlue(ground) * ink.blue() / 255);
}

/// In pixels for each column.
std::vector<int> HeightsOf(const LevelCounts::Sum::Counts& counts, qint64 peak, const QSize& size)
{
    std::vector<int> heights;
    for (int column = 0; column < size.width(); ++column) {
        const HistogramLevels::Range levels = HistogramLevels::LevelsOfColumn(column, size.width());
        const qint64 most =
            *std::max_element(counts.begin() + levels.first, counts.begin() + levels.second + 1);
        const double height = peak > 0 ? double(most) / double(peak) * size.height() : 0;
        heights.push_back(most > 0 ? qBound(1, qRound(qMin(height, double(size.height()))), size.height())
                                   : 0);
    }
    return heights;
}

template <class Mix>
void FillColumns(QImage& image, const std::vector<int>& heights, Mix mix)
{
    for (int y = 0; y < image.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (image.height() - y <= heights[std::size_t(x)]) row[x] = mix(row[x]);
        }
    }
}
} // namespace

HistogramLook HistogramLook::On(const QColor& ground, const QColor& ink)
{
    return {ground, ink, ground.lightness() < 128};
}

QImage RenderHistogram(const LevelCounts::Sum& counts, int bits, const QSize& size, const HistogramLook& look)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(look.ground);
    const qint64 peak = HistogramLevels::PeakOf(counts, bits);
    for (const LevelCounts::Channel channel : HistogramLevels::ChannelsOf(bits)) {
        const std::vector<int> heights = HeightsOf(counts.Of(channel), peak, size);
        const QColor ink = InkOf(channel, look);
        if (channel == LevelCounts::Luminance) {
            FillColumns(image, heights, [ink](QRgb) { return ink.rgb(); });
        } else if (look.isDark) {
            FillColumns(image, heights, [ink](QRgb ground) { return Added(ground, ink); });
        } else {
            FillColumns(image, heights, [ink](QRgb ground) { return Multiplied(ground, ink); });
        }
    }
    return image;
}

QImage RenderLevelStrip(int bits, const QSize& size)
{
    const auto hasChannel = [bits](int bit) { return (bits & bit) != 0; };
    const bool isGray = bits == 0 || bits == HistogramLevels::AllBits;
    QImage image(size, QImage::Format_RGB32);
    for (int x = 0; x < size.width(); ++x) {
        const int level = HistogramLevels::LevelAt(x, size.width());
        const QRgb color =
            isGray ? qRgb(level, level, level)
                   : qRgb(hasChannel(1) ? level : 0, hasChannel(2) ? level : 0, hasChannel(4) ? level : 0);
        for (int y = 0; y < size.height(); ++y)
            image.setPixel(x, y, color);
    }
    return image;
}
