#include "Yardstick.h"

#include "image/LXFloodFillHelper.h"
#include "image/LXImage.h"
#include "support/FillTwin.h"
#include "support/TestImages.h"

#include <QPoint>

#include <random>

namespace {
const LXRGBA32i Black(0xFF000000);
const LXRGBA32i Tolerance(0x00101010);

/// What the region looks like.
enum class Ground
{
    Plain,   ///< one color
    Noise,   ///< one color with a little noise, as in a photograph's sky
    Islands, ///< one of four pixels is a wall
    Comb,    ///< corridors two pixels wide, joined at their ends in turn: one long way through every tile
};

LXRGBA32i PixelOf(Ground ground, int x, int y, int height, std::mt19937& random)
{
    const LXRGBA32i inside(0xFF808080);
    const LXRGBA32i wall(0xFF000000);
    switch (ground) {
    case Ground::Plain: return inside;
    case Ground::Noise: return LXRGBA32i(0xFF808080u + random() % 16);
    case Ground::Islands: return random() % 4 == 0 && x + y > 0 ? wall : inside;
    case Ground::Comb: break;
    }
    const bool isGap = x / 3 % 2 == 0 ? y == height - 1 : y == 0;
    return x % 3 == 2 && !isGap ? wall : inside;
}

PlainImage MakePlain(Ground ground, int width, int height)
{
    std::mt19937 random(1);
    PlainImage image(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.At(x, y) = PixelOf(ground, x, y, height, random);
        }
    }
    return image;
}

double TwinSecondsPerPixel(Ground ground)
{
    constexpr int side = 300;
    const PlainImage source = MakePlain(ground, side, side);
    PlainImage mask(side, side);
    return Yardstick::SecondsOf([&] {
               FillTwin::FloodFill(source, mask, {0, 0}, Tolerance, Black);
           }) /
           (side * side);
}

using Fill = decltype(&LXFloodFillHelper::FloodFill);

void RunFill(benchmark::State& state, Fill fill, Ground ground)
{
    const auto width = static_cast<int>(state.range(0));
    const auto height = static_cast<int>(state.range(1));
    const LXImage32 source = TestImages::ToTiles(MakePlain(ground, width, height));
    LXImage32 mask;
    Yardstick::Measure(
        state, std::int64_t(width) * height, TwinSecondsPerPixel(ground),
        [&] { mask = LXImage32(width, height); },
        [&] { fill(source, mask, QPoint(0, 0), Tolerance, Black, nullptr); });
}

void Sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Args({128, 128})->Args({1000, 1000})->Args({6000, 4000});
    benchmark->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(0.2);
}

BENCHMARK_CAPTURE(RunFill, flood_plain, &LXFloodFillHelper::FloodFill, Ground::Plain)->Apply(Sizes);
BENCHMARK_CAPTURE(RunFill, flood_noise, &LXFloodFillHelper::FloodFill, Ground::Noise)->Apply(Sizes);
BENCHMARK_CAPTURE(RunFill, flood_islands, &LXFloodFillHelper::FloodFill, Ground::Islands)->Apply(Sizes);
BENCHMARK_CAPTURE(RunFill, flood_comb, &LXFloodFillHelper::FloodFill, Ground::Comb)->Apply(Sizes);
BENCHMARK_CAPTURE(RunFill, range_islands, &LXFloodFillHelper::ColorRangeFill, Ground::Islands)->Apply(Sizes);
} // namespace

BENCHMARK_MAIN();
