#include "support/LevelTwin.h"

#include <cmath>

LevelTwin::Counts LevelTwin::Count(const PlainImage& image)
{
    Counts counts{};
    for (const LXRGBA32i pixel : image.pixels) {
        if (pixel.Alpha() == 0) continue;
        const double luminance = 0.3 * pixel.Red() + 0.59 * pixel.Green() + 0.11 * pixel.Blue();
        // A hair more than a half, because hundredths have no exact double.
        const int level = static_cast<int>(std::floor(luminance + 0.5 + 1e-9));
        ++counts[LevelCounts::Red][std::size_t(pixel.Red())];
        ++counts[LevelCounts::Green][std::size_t(pixel.Green())];
        ++counts[LevelCounts::Blue][std::size_t(pixel.Blue())];
        ++counts[LevelCounts::Luminance][std::size_t(level)];
    }
    return counts;
}
