#include "app/DocumentFiles.h"
#include "document/LXDocumentInterface.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/LXFloodFillHelper.h"
#include "image/LXImage.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>
#include <vector>

// How long a click of the magic wand takes: into the sky of a picture of 24 megapixels, made with real mouse
// events in the real editor, from the press until the selection is painted, beside the bare flood fill in the
// same run.

namespace {
using Clock = std::chrono::steady_clock;

constexpr int Width = 6000;
constexpr int Height = 4000;
constexpr int Horizon = 2600;
constexpr int Runs = 7;
constexpr QPoint InTheSky(3000, 1000);
const LXRGBA32i Tolerance(0x20202020);
const LXRGBA32i Black(0xFF000000);

double MillisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// A sky with a little noise over a dark noisy ground.
QImage MakePicture()
{
    QImage picture(Width, Height, QImage::Format_RGB32);
    std::mt19937 random(1);
    for (int y = 0; y < Height; ++y) {
        auto* const row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        std::generate_n(row, Width, [&] {
            const int noise = static_cast<int>(random() % 16);
            return y < Horizon ? qRgb(120 + noise, 170, 230) : qRgb(40 + noise, 60, 20);
        });
    }
    return picture;
}

double ClickIntoTheSky(EditorFixture& editor)
{
    const Clock::time_point start = Clock::now();
    editor.GetInput().ClickInScene(editor.View(), InTheSky);
    editor.View()->viewport()->repaint();
    return MillisecondsSince(start);
}

double FloodTheSky(const LXImage32& layer)
{
    const Clock::time_point start = Clock::now();
    LXImage32 coverage(Width, Height);
    LXFloodFillHelper::FloodFill(layer, coverage, InTheSky, Tolerance, Black, nullptr);
    return MillisecondsSince(start);
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

bool MeasureClicks()
{
    EditorFixture editor;
    const QString file = editor.TempFile(QStringLiteral("large.png"));
    constexpr int fastest = 100;
    if (!MakePicture().save(file, "PNG", fastest) || !editor.Files()->Open(file)) {
        std::fputs("The picture could not be opened.\n", stderr);
        return false;
    }
    editor.Tool(QStringLiteral("Magic wand"));
    editor.Settle();

    std::vector<double> floods;
    std::vector<double> clicks;
    std::printf("%10s %10s %12s\n", "flood ms", "click ms", "added/flood");
    for (int run = 0; run < Runs; ++run) {
        floods.push_back(FloodTheSky(*editor.Document()->GetLayerImage(1)));
        clicks.push_back(ClickIntoTheSky(editor));
        if (editor.History()->index() != 1) return false;
        std::printf("%10.1f %10.1f %12.2f\n", floods.back(), clicks.back(),
                    (clicks.back() - floods.back()) / floods.back());
        editor.History()->undo();
        editor.Settle();
    }
    std::printf("median of %d: %.1f %.1f %.2f\n", Runs, Median(floods), Median(clicks),
                (Median(clicks) - Median(floods)) / Median(floods));
    return true;
}
} // namespace

int main(int argc, char** argv)
{
    try {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        const QApplication application(argc, argv);
        return MeasureClicks() ? 0 : 1;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    }
}
