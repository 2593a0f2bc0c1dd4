#include "Yardstick.h"

#include "image/LXBlend.h"
#include "image/LXImage.h"
#include "support/BlendTwin.h"
#include "support/TestImages.h"

#include <QRect>

#include <random>

namespace {
constexpr unsigned int Seed = 1;

/// A picture of any size that costs little to make: one random tile-sized patch, repeated shifted, so that no
/// two tiles are shared.
LXImage32 MakePicture(int width, int height, bool isOpaque)
{
    constexpr int patchSide = 131;
    std::mt19937 random(Seed);
    PlainImage patch = TestImages::Random(patchSide, patchSide, random);
    if (isOpaque) {
        for (LXRGBA32i& pixel : patch.pixels) {
            pixel.bytes[3] = 255;
        }
    }
    const LXImage32 tiles = TestImages::ToTiles(patch);
    LXImage32 picture(width, height);
    for (int y = 0; y < height; y += patchSide) {
        for (int x = 0; x < width; x += patchSide) {
            DrawImage(picture, BlendMode::Source, QPoint(x, y), tiles, 1.0, false);
        }
    }
    return picture;
}

double TwinSecondsPerPixel(unsigned int mode, double opacity, bool isTargetOpaque)
{
    constexpr int side = 200;
    std::mt19937 random(Seed);
    const PlainImage source = TestImages::Random(side, side, random);
    PlainImage target = TestImages::ToPlain(MakePicture(side, side, isTargetOpaque));
    const QRect all(0, 0, side, side);
    return Yardstick::SecondsOf([&] { BlendTwin::Blend(source, all, mode, target, all, opacity, false); }) /
           (side * side);
}

struct BlendCase
{
    unsigned int mode;
    double opacity;
    bool isSourceOpaque;
    bool isTargetOpaque;
    QPoint shift; ///< off the tiles' grid, nothing can be shared
};

void Blend(benchmark::State& state, BlendCase c)
{
    const auto width = static_cast<int>(state.range(0));
    const auto height = static_cast<int>(state.range(1));
    const LXImage32 source = MakePicture(width, height, c.isSourceOpaque);
    const LXImage32 ground = MakePicture(width, height, c.isTargetOpaque);
    LXImage32 target;
    Yardstick::Measure(
        state, std::int64_t(width) * height, TwinSecondsPerPixel(c.mode, c.opacity, c.isTargetOpaque),
        [&] {
            // Tiles of its own, so that blending alone is timed, not detaching.
            target = LXImage32();
            target = ground;
            for (LXTilePointer& tile : target.m_Tiles) {
                DetachTile(tile);
            }
        },
        [&] {
            BlendOn(source, source.Rect(), c.mode, target, target.Rect().translated(c.shift), c.opacity,
                    false);
        });
}

void BlendThroughMask(benchmark::State& state)
{
    const auto width = static_cast<int>(state.range(0));
    const auto height = static_cast<int>(state.range(1));
    const LXImage32 source = MakePicture(width, height, false);
    LXImage32 target = MakePicture(width, height, true);
    Yardstick::Measure(
        state, std::int64_t(width) * height, TwinSecondsPerPixel(BlendMode::Normal, 0.5, true), [] {},
        [&] {
            BlendMaskOn(source, source.Rect(), BlendMode::Normal, target, target.Rect(), 0.5, source,
                        source.Rect(), false, false);
        });
}

void Sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Args({128, 128})->Args({1000, 1000})->Args({6000, 4000});
    benchmark->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(0.2);
}

BENCHMARK_CAPTURE(Blend, copy_aligned, BlendCase{3, 1.0, false, false, {}})->Apply(Sizes);
BENCHMARK_CAPTURE(Blend, copy_shifted, BlendCase{3, 1.0, false, false, {1, 1}})->Apply(Sizes);
BENCHMARK_CAPTURE(Blend, copy_half, BlendCase{3, 0.5, false, false, {}})->Apply(Sizes);
BENCHMARK_CAPTURE(Blend, normal_opaque, BlendCase{0, 1.0, true, true, {}})->Apply(Sizes);
BENCHMARK_CAPTURE(Blend, normal_on_opaque, BlendCase{0, 1.0, false, true, {}})->Apply(Sizes);
BENCHMARK_CAPTURE(Blend, normal_on_translucent, BlendCase{0, 0.7, false, false, {}})->Apply(Sizes);
BENCHMARK_CAPTURE(Blend, multiply, BlendCase{13, 1.0, false, true, {}})->Apply(Sizes);
BENCHMARK_CAPTURE(Blend, soft_light, BlendCase{21, 1.0, false, true, {}})->Apply(Sizes);
BENCHMARK_CAPTURE(Blend, color_dodge, BlendCase{18, 1.0, false, true, {}})->Apply(Sizes);
BENCHMARK_CAPTURE(Blend, cut, BlendCase{6, 1.0, false, false, {}})->Apply(Sizes);
BENCHMARK_CAPTURE(Blend, gray_to_mask, BlendCase{64, 1.0, false, false, {}})->Apply(Sizes);
BENCHMARK(BlendThroughMask)->Apply(Sizes);
} // namespace

BENCHMARK_MAIN();
