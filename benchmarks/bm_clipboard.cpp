#include "Yardstick.h"
#include "clipboardprivate/ClipboardPixels.h"
#include "clipboardprivate/ClipboardTool.h"

#include "gui/LayersWidget.h"
#include "support/ViewFixture.h"

#include <QApplication>
#include <QImage>

#include <cstdio>
#include <functional>
#include <random>

// How long copying and pasting takes: a selection of 24 megapixels, each step beside a plain copy of the same
// bytes in the same run. First the tool's own operations as a person starts them, then what a copy consists
// of.

namespace {
constexpr int Width = 6000;
constexpr int Height = 4000;
constexpr std::int64_t Pixels = std::int64_t(Width) * Height;
constexpr double Milliseconds = 1000.0;

/// Noise, so that nothing is shared and nothing compresses.
LXImage32 MakePicture(std::mt19937& random)
{
    LXImage32 image(Width, Height);
    for (int row = 0; row < int(image.m_TilesY); ++row) {
        for (int column = 0; column < int(image.m_TilesX); ++column) {
            const LXTileWriter<LXRGBA32i> tile = image.WriteTile(column, row);
            std::generate_n(tile.Pixels(), 128 * 128, [&] { return LXRGBA32i(random()); });
        }
    }
    return image;
}

LXImage32 MakeSelection()
{
    LXImage32 mask(Width, Height);
    mask.Fill(LXRGBA32i(0xFF000000u));
    return mask;
}

void Tell(const char* step, double seconds, double copySeconds)
{
    std::printf("%-34s %9.1f ms %7.1f x\n", step, seconds * Milliseconds, seconds / copySeconds);
    std::fflush(stdout);
}

/// The shortest of a few runs, with something untimed before each.
double SecondsOf(const std::function<void()>& prepare, const std::function<void()>& action)
{
    double best = 1e9;
    for (int run = 0; run < 3; ++run) {
        prepare();
        const auto start = Yardstick::Clock::now();
        action();
        best = std::min(best, std::chrono::duration<double>(Yardstick::Clock::now() - start).count());
    }
    return best;
}

void MeasureParts(const LXImage32& picture, double copySeconds)
{
    using namespace ClipboardPixels;
    const Placed layer{picture, {}};
    const Placed selection{MakeSelection(), {}};
    Placed lifted;
    const auto nothing = [] {};
    Tell("  the selected pixels", SecondsOf(nothing, [&] { lifted = Lift(layer, selection); }), copySeconds);
    Tell("  checksum", SecondsOf(nothing, [&] { benchmark::DoNotOptimize(Checksum(lifted.image)); }),
         copySeconds);
    Tell("  thumbnail", SecondsOf(nothing, [&] { benchmark::DoNotOptimize(FitInto(lifted.image, 32)); }),
         copySeconds);
    Tell("  for the system, to 5000 a side",
         SecondsOf(nothing, [&] { benchmark::DoNotOptimize(ForSystemClipboard(lifted.image)); }),
         copySeconds);
}

void MeasureTool(const LXImage32& picture, double copySeconds)
{
    ViewFixture fixture(Width, Height);
    fixture.Widget()->hide();
    LayersWidget panel;
    panel.SetView(fixture.View());
    ClipboardTool tool;
    tool.SetDocumentView(&fixture.ToolView());
    LXDocumentInterface* document = fixture.Document();
    document->SetLayerImage(1, picture, {});
    document->SetSelectionMask(MakeSelection(), {});

    const auto undo = [&] {
        while (fixture.History().canUndo())
            fixture.History().undo();
    };
    Tell("copy", SecondsOf([&] { tool.Delete(); }, [&] { tool.Copy(); }), copySeconds);
    Tell("copy of the same once more", SecondsOf([] {}, [&] { tool.Copy(); }), copySeconds);
    Tell("paste through the selection", SecondsOf(undo, [&] { tool.Paste(); }), copySeconds);
    undo();
    document->SetSelectionMask({}, {});
    Tell("paste", SecondsOf(undo, [&] { tool.Paste(); }), copySeconds);
    undo();
    document->AddMask(1, true);
    document->GetModel()->SetMaskSelected(0, true);
    Tell("paste into a mask", SecondsOf(undo, [&] { tool.Paste(); }), copySeconds);
    undo();
    document->SetSelectionMask(MakeSelection(), {});
    Tell("paste into a mask, by selection", SecondsOf(undo, [&] { tool.Paste(); }), copySeconds);
    undo();
    std::printf("a copy consists of\n");
}
} // namespace

int main(int argc, char** argv)
{
    try {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        const QApplication application(argc, argv);
        std::mt19937 random(1);
        const LXImage32 picture = MakePicture(random);
        const double copySeconds = Yardstick::SecondsOfCopy(Pixels);
        std::printf("%d x %d pixels\n", Width, Height);
        Tell("plain copy", copySeconds, copySeconds);
        MeasureTool(picture, copySeconds);
        MeasureParts(picture, copySeconds);
        return 0;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    }
}
