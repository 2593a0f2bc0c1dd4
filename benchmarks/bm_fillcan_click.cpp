#include "app/DocumentFiles.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/LXFloodFillHelper.h"
#include "image/LXImage.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"

#include <QApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>

// How long the editor stands still while the fill can works: a click into the sky of a picture of 24
// megapixels, made with real mouse events in the real editor, beside the bare flood fill in the same run.

namespace {
using Clock = std::chrono::steady_clock;

constexpr int Width = 6000;
constexpr int Height = 4000;
constexpr int Horizon = 2600;
constexpr int Runs = 5;
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

/// Keeps the longest time between two turns of the event loop.
class LoopWatch
{
public:
    LoopWatch()
    {
        QObject::connect(&m_Timer, &QTimer::timeout, [this] { Turn(); });
        m_Timer.setTimerType(Qt::PreciseTimer);
        m_Timer.start(1);
        m_Last = Clock::now();
    }

    double LongestGap() const { return m_Longest; }

private:
    void Turn()
    {
        m_Longest = std::max(m_Longest, MillisecondsSince(m_Last));
        m_Last = Clock::now();
    }

    QTimer m_Timer;
    Clock::time_point m_Last;
    double m_Longest = 0;
};

struct ClickTimes
{
    double total;      ///< from the press until the filled picture is on the screen
    double longestGap; ///< between two turns of the event loop in that time
};

ClickTimes ClickIntoTheSky(EditorFixture& editor)
{
    const LoopWatch watch;
    const Clock::time_point start = Clock::now();
    editor.GetInput().ClickInScene(editor.View(), InTheSky);
    while (editor.Document()->GetLockState()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    // The painting of the result, and one more turn that the watch sees.
    for (int turn = 0; turn < 3; ++turn) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return {MillisecondsSince(start), watch.LongestGap()};
}

double FloodTheSky(const LXImage32& layer)
{
    LXImage32 coverage(Width, Height);
    const Clock::time_point start = Clock::now();
    LXFloodFillHelper::ColorRangeFill(layer, coverage, InTheSky, Tolerance, Black, nullptr);
    return MillisecondsSince(start);
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
    editor.Tool(QStringLiteral("Fillcan"));
    editor.Settle();

    std::printf("%10s %10s %12s %12s\n", "flood ms", "click ms", "longest gap", "gap / flood");
    for (int run = 0; run < Runs; ++run) {
        const double flood = FloodTheSky(*editor.Document()->GetLayerImage(1));
        ZKApplication::SetForeground(QColor(200, 40 + run, 20));
        const ClickTimes click = ClickIntoTheSky(editor);
        if (editor.History()->index() != 1) return false;
        std::printf("%10.1f %10.1f %12.1f %12.2f\n", flood, click.total, click.longestGap,
                    click.longestGap / flood);
        editor.History()->undo();
        editor.Settle();
    }
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
