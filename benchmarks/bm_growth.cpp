#include "compare/Pictures.h"

#include "image/LXBlend.h"
#include "image/LXFloodFillHelper.h"
#include "image/LXImage.h"
#include "image/LXImageConvert.h"
#include "image/TileStore.h"

#include <QCoreApplication>
#include <QStringList>
#include <QThreadPool>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <random>
#include <vector>

// How time and memory grow: bm_growth prints the tables of small pictures, bm_growth --large works on 30000 x
// 30000 pixels with a gigabyte for tiles.

namespace {
using Clock = std::chrono::steady_clock;

constexpr int Large = 30000;
const LXRGBA32i Exact(0);
const LXRGBA32i Black(0xFF000000);

/// Of the clock.
double Milliseconds(const std::function<void()>& work)
{
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// Of the processor: with one thread at work it hardly hangs on what else the machine does.
double BusyMilliseconds(const std::function<void()>& work)
{
    const auto now = [] {
        timespec time{};
        ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
    };
    const double start = now();
    work();
    return now() - start;
}

double MedianOf(int runs, const std::function<double()>& measure)
{
    std::vector<double> values(static_cast<std::size_t>(runs));
    std::generate(values.begin(), values.end(), measure);
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// A square of another color in the middle of a picture that stays the same size.
void PrintFillsByRegion()
{
    constexpr int side = 8192;
    std::printf(
        "\nFlood fill by the size of the region, on %d x %d\n\n| region | ms | ns a pixel |\n|---|---|---|\n",
        side, side);
    for (const int region : {64, 256, 1024, 4096, 8192}) {
        LXImage32 picture(side, side);
        LXImage32 square(region, region);
        square.Fill(LXRGBA32i(0xFF406080));
        const QPoint corner((side - region) / 2, (side - region) / 2);
        DrawImage(picture, BlendMode::Source, corner, square, 1.0, false);
        const double time = MedianOf(5, [&] {
            LXImage32 mask(side, side);
            return BusyMilliseconds([&] {
                LXFloodFillHelper::FloodFill(picture, mask, QPoint(side / 2, side / 2), Exact, Black,
                                             nullptr);
            });
        });
        std::printf("| %d x %d | %.3f | %.2f |\n", region, region, time, time * 1e6 / region / region);
    }
}

void PrintSmallBlendOnLarge()
{
    std::printf(
        "\nBlending 100 x 100\n\n| on | microseconds | tiles that are the image's own |\n|---|---|---|\n");
    LXImage32 patch(100, 100);
    patch.Fill(LXRGBA32i(0x80FF8040));
    for (const int side : {1000, 10000, Large}) {
        LXImage32 image(side, side);
        image.Fill(LXRGBA32i(0xFF204060));
        const int before = TileStore::Main().LiveTileCount();
        const QPoint place(side / 2, side / 2);
        const double time = MedianOf(21, [&] {
            return BusyMilliseconds([&] { DrawImage(image, BlendMode::Normal, place, patch, 1.0, false); });
        });
        std::printf("| %d x %d | %.1f | %d |\n", side, side, time * 1000,
                    TileStore::Main().LiveTileCount() - before);
    }
}

/// An image before and after a change: what the pair holds beyond one of them.
void PrintUndoByArea()
{
    constexpr int side = 8192;
    std::printf("\nWhat an undo step holds, on %d x %d\n\n| changed | tiles | MiB |\n|---|---|---|\n", side,
                side);
    LXImage32 picture;
    ConvertImage(Pictures::SmoothNoise(side, true), picture);
    for (const int changed : {1, 100, 1000, 4000, side}) {
        const int before = TileStore::Main().LiveTileCount();
        LXImage32 after = picture;
        LXImage32 patch(changed, changed);
        patch.Fill(LXRGBA32i(0x80FF8040));
        DrawImage(after, BlendMode::Normal, QPoint((side - changed) / 2, (side - changed) / 2), patch, 1.0,
                  false);
        patch = LXImage32();
        const int tiles = TileStore::Main().LiveTileCount() - before;
        std::printf("| %d x %d | %d | %.2f |\n", changed, changed, tiles, tiles / 16.0);
    }
}

void PrintMazes()
{
    std::printf(
        "\nFlood fill of a maze of corridors one pixel wide\n\n| side | ms | ns a pixel |\n|---|---|---|\n");
    for (const int side : {2048, 4096, 8192}) {
        LXImage32 picture;
        ConvertImage(Pictures::Maze(side), picture);
        const double time = MedianOf(5, [&] {
            LXImage32 mask(side, side);
            return BusyMilliseconds(
                [&] { LXFloodFillHelper::FloodFill(picture, mask, QPoint(1, 1), Exact, Black, nullptr); });
        });
        std::printf("| %d | %.1f | %.2f |\n", side, time, time * 1e6 / side / side);
    }
}

void PrintMemory(const char* what, double milliseconds)
{
    const TileStore& store = TileStore::Main();
    std::printf("| %s | %.1f | %.2f | %.2f |\n", what, milliseconds / 1000,
                store.ResidentTileCount() / 16384.0, static_cast<double>(store.SwapBytes()) / (1 << 30));
    std::fflush(stdout);
}

/// Every tile its own: a soft ramp with some noise, below a sky that is one color.
LXImage32 MakeLarge()
{
    LXImage32 image(Large, Large);
    std::mt19937 random(5);
    const int columns = static_cast<int>(image.m_TilesX);
    for (int row = 0; row < static_cast<int>(image.m_TilesY); ++row) {
        for (int column = 0; column < columns; ++column) {
            const auto tile = image.WriteTile(column, row);
            const bool isSky = row < 80;
            for (int i = 0; i < 128 * 128; ++i) {
                const auto value = static_cast<quint32>((i / 128 + row + column) & 0x7F);
                const auto noise = isSky ? 0U : static_cast<quint32>(random() & 3);
                tile.Pixels()[i] = LXRGBA32i(0xFF000000 | (isSky ? 0x4060A0 : (value + noise) * 0x010101));
            }
        }
    }
    return image;
}

/// What a person does with a picture that doesn't fit into memory.
void RunLarge()
{
    TileStore::Main().SetMemoryBudget(qint64(1) << 30);
    std::printf("%d x %d with a gigabyte for tiles\n\n| what | s | GiB in memory | GiB on disk "
                "|\n|---|---|---|---|\n",
                Large, Large);
    LXImage32 image;
    PrintMemory("made, tile by tile", Milliseconds([&] { image = MakeLarge(); }));
    QImage screen(1600, 1000, QImage::Format_ARGB32_Premultiplied);
    PrintMemory("scrolled down at 100 %, 20 screens", Milliseconds([&] {
                    for (int step = 0; step < 20; ++step) {
                        ScaleImage(image, QPointF(12000, step * 1400), 1.0, screen);
                    }
                }));
    const LXImage32 before = image;
    LXImage32 mask(Large, Large);
    PrintMemory("sky filled into a coverage", Milliseconds([&] {
                    LXFloodFillHelper::FloodFill(image, mask, QPoint(5, 5), Exact, Black, nullptr);
                }));
    PrintMemory("blended on the picture", Milliseconds([&] {
                    BlendOn(mask, mask.Rect(), BlendMode::Normal, image, image.Rect(), 0.5, false);
                }));
    const bool isFilled = image.GetColor(100, 100) == LXRGBA32i(0xFF203050);
    PrintMemory("undone", Milliseconds([&] { image = before; }));
    const bool isBack = image.GetColor(100, 100) == LXRGBA32i(0xFF4060A0);
    std::printf("\n%s\n", isFilled && isBack ? "The pixels are right." : "The pixels are wrong.");
}
} // namespace

int main(int argc, char** argv)
{
    try {
        const QCoreApplication application(argc, argv);
        if (QCoreApplication::arguments().contains(QStringLiteral("--large"))) {
            RunLarge();
            return 0;
        }
        QThreadPool::globalInstance()->setMaxThreadCount(1);
        PrintFillsByRegion();
        PrintSmallBlendOnLarge();
        PrintUndoByArea();
        PrintMazes();
        return 0;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    }
}
