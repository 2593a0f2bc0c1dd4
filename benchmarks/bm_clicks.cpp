#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/LXFloodFillHelper.h"
#include "image/LXImage.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QScreen>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <optional>
#include <random>
#include <vector>

// How long the magic wand and the fills take on a picture of 24 megapixels: real input in the real editor,
// from the press until the result is painted, beside the bare flood fill in the same run. The clock tells
// what a person waits for; on a busy machine the processor's time, of all threads together, tells more.
// Panels may follow the picture; what they take is told as "later", in processor time.
//
// bm_clicks [wand|can|menu] [RUNS]

namespace {
using Clock = std::chrono::steady_clock;

constexpr int Width = 6000;
constexpr int Height = 4000;
constexpr int Horizon = 2600;
constexpr QPoint InTheSky(3000, 1000);
const LXRGBA32i Tolerance(0x20202020);
const LXRGBA32i Black(0xFF000000);

/// Longer than whatever the editor leaves for later.
constexpr int RestMilliseconds = 200;

struct Times
{
    double clock = 0;     ///< ms
    double processor = 0; ///< ms
};

double ProcessorMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

Times TimesOf(const std::function<void()>& act)
{
    const double processor = ProcessorMilliseconds();
    const Clock::time_point start = Clock::now();
    act();
    return {std::chrono::duration<double, std::milli>(Clock::now() - start).count(),
            ProcessorMilliseconds() - processor};
}

Times MedianOf(const std::vector<Times>& times)
{
    const auto medianOf = [&times](double Times::*part) {
        std::vector<double> values;
        values.reserve(times.size());
        for (const Times& one : times) {
            values.push_back(one.*part);
        }
        std::sort(values.begin(), values.end());
        return values[values.size() / 2];
    };
    return {medianOf(&Times::clock), medianOf(&Times::processor)};
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

Times FloodTheSky(const LXImage32& layer)
{
    return TimesOf([&layer] {
        LXImage32 coverage(Width, Height);
        LXFloodFillHelper::FloodFill(layer, coverage, InTheSky, Tolerance, Black, nullptr);
    });
}

void ClickIntoTheSky(EditorFixture& editor)
{
    editor.GetInput().ClickInScene(editor.View(), InTheSky);
    while (editor.Document()->GetLockState()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

/// "Fill", "Foreground" of the menu "Edit", by its key; Alt is down.
void FillFromTheMenu(EditorFixture& editor)
{
    editor.GetInput().Key(Qt::Key_Backspace, Qt::AltModifier);
}

/// The fill can looks for the same area as the bare flood fill, which isn't its first setting.
void FillContiguously()
{
    for (QWidget* widget : QApplication::allWidgets()) {
        auto* const box = qobject_cast<QCheckBox*>(widget);
        if (box && box->objectName() == QLatin1String("m_pContiguousChb")) box->setChecked(true);
    }
}

/// What stands on the screen where the view is.
QImage Screen(const EditorFixture& editor)
{
    const QWidget* window = editor.Window();
    const QWidget* viewport = editor.View()->viewport();
    const QRect place(viewport->mapTo(window, QPoint(0, 0)), viewport->size());
    return QGuiApplication::primaryScreen()->grabWindow(window->winId()).toImage().copy(place);
}

/// Lets everything come that an act has left for later.
void Rest(EditorFixture& editor)
{
    editor.Settle();
    QTest::qWait(RestMilliseconds);
}

struct Job
{
    const char* name;
    const char* tool;
    Qt::KeyboardModifiers held; ///< keys that are down before the act begins
    bool staysStill;            ///< the result doesn't move on the screen
    std::function<void(EditorFixture&)> act;
};

const std::vector<Job>& Jobs()
{
    static const std::vector<Job> jobs{
        {"wand", "Magic wand", Qt::NoModifier, false, ClickIntoTheSky},
        {"can", "Fillcan", Qt::NoModifier, true, ClickIntoTheSky},
        {"menu", "Magic wand", Qt::AltModifier, true, FillFromTheMenu},
    };
    return jobs;
}

struct Click
{
    Times flood; ///< the bare one
    Times picture;
    Times later;
};

/// Nothing when the act made no step, or its result wasn't on the screen when the time was taken.
std::optional<Click> MeasureOnce(EditorFixture& editor, const Job& job)
{
    editor.GetInput().HoldModifiers(job.held);
    Rest(editor);
    const QImage before = Screen(editor);
    Click click;
    click.flood = FloodTheSky(*editor.Document()->GetLayerImage(1));
    click.picture = TimesOf([&] {
        job.act(editor);
        // Paints what is still to be painted.
        QCoreApplication::sendPostedEvents();
    });
    const QImage after = Screen(editor);
    editor.GetInput().HoldModifiers(Qt::NoModifier);
    click.later = TimesOf([&] { Rest(editor); });
    const bool isShown = after != before && (!job.staysStill || after == Screen(editor));
    if (editor.History()->index() != 1 || !isShown) return std::nullopt;
    editor.History()->undo();
    return click;
}

bool Measure(EditorFixture& editor, const Job& job, int runs)
{
    editor.Tool(QLatin1String(job.tool));
    std::vector<Times> floods;
    std::vector<Times> pictures;
    std::vector<Times> rests;
    // The first one warms up.
    for (int run = -1; run < runs; ++run) {
        ZKApplication::SetForeground(QColor(200, (40 + run) % 255, 20));
        const std::optional<Click> click = MeasureOnce(editor, job);
        if (!click) return false;
        if (run < 0) continue;
        floods.push_back(click->flood);
        pictures.push_back(click->picture);
        rests.push_back(click->later);
    }
    const Times flood = MedianOf(floods);
    const Times click = MedianOf(pictures);
    std::printf("%-5s %9.1f %9.1f %9.2f %12.1f %12.1f %9.2f %9.1f\n", job.name, flood.clock, click.clock,
                (click.clock - flood.clock) / flood.clock, flood.processor, click.processor,
                (click.processor - flood.processor) / flood.processor, MedianOf(rests).processor);
    return true;
}

bool MeasureAll(const char* wanted, int runs)
{
    EditorFixture editor;
    const QString file = editor.TempFile(QStringLiteral("large.png"));
    constexpr int fastest = 100;
    if (!MakePicture().save(file, "PNG", fastest) || !editor.Files()->Open(file)) {
        std::fputs("The picture could not be opened.\n", stderr);
        return false;
    }
    FillContiguously();
    std::printf("medians of %d   clock, ms                  processor, ms\n", runs);
    std::printf("%-5s %9s %9s %9s %12s %12s %9s %9s\n", "", "flood", "click", "added", "flood", "click",
                "added", "later");
    for (const Job& job : Jobs()) {
        if (wanted && std::strcmp(wanted, job.name) != 0) continue;
        if (Measure(editor, job, runs)) continue;
        std::fprintf(stderr, "%s: the result was not on the screen.\n", job.name);
        return false;
    }
    return true;
}
} // namespace

int main(int argc, char** argv)
{
    try {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        const QApplication application(argc, argv);
        constexpr int usualRuns = 21;
        const int runs = argc > 2 ? std::max(1, std::atoi(argv[2])) : usualRuns;
        return MeasureAll(argc > 1 ? argv[1] : nullptr, runs) ? 0 : 1;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    }
}
