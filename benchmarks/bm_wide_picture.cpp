#include "Yardstick.h"

#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "gui/HistogramWidget.h"
#include "gui/StrokeJob.h"
#include "history/LexoCommand.h"
#include "image/LXImage.h"
#include "resource/ResourceFolder.h"
#include "resource/Theme.h"

#include <QApplication>
#include <QPainterPath>

#include <cmath>
#include <cstdio>
#include <memory>
#include <random>

// Strokes along a path and the histogram on a picture of noise with 100 megapixels.

namespace {
constexpr int Side = 10000;
constexpr int TileSide = 128;
constexpr int Lines = 10;

struct Release
{
    void operator()(LXDocumentInterface* document) const { LXDocumentFactory::Instance()->Release(document); }
};

using OwnedDocument = std::unique_ptr<LXDocumentInterface, Release>;

/// Tiles with memory of their own, so that nothing is saved by sharing.
LXImage32 MakeNoise()
{
    std::mt19937 random(1);
    LXImage32 tile(TileSide, TileSide);
    for (int y = 0; y < TileSide; ++y) {
        for (int x = 0; x < TileSide; ++x)
            tile.SetColor(x, y, LXRGBA32i(0xFF000000U | static_cast<quint32>(random() & 0xFFFFFF)));
    }
    LXImage32 picture(Side, Side);
    for (int y = 0; y < Side; y += TileSide) {
        for (int x = 0; x < Side; x += TileSide) {
            BlendOn(tile, tile.Rect(), BlendMode::Source, picture, QRect(x, y, TileSide, TileSide), 1.0,
                    false);
            // Else the picture might share the tile.
            picture.SetColor(x, y, LXRGBA32i(0xFF000000U | static_cast<quint32>(random() & 0xFFFFFF)));
        }
    }
    return picture;
}

OwnedDocument MakeDocument()
{
    OwnedDocument document(LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32));
    document->SetDocumentSize(QSize(Side, Side));
    document->AddLayer(QStringLiteral("Layer"), MakeNoise(), {});
    return document;
}

/// Waves from side to side, one below the other: about 100000 pixels of way.
QPainterPath MakeWaves()
{
    constexpr int gap = Side / Lines;
    QPainterPath path;
    for (int line = 0; line < Lines; ++line) {
        const double y = (line + 0.5) * gap;
        path.moveTo(0, y);
        for (int x = 0; x < Side; x += gap) {
            path.cubicTo(x + gap / 3.0, y - gap / 3.0, x + gap / 1.5, y + gap / 3.0, x + gap, y);
        }
    }
    return path;
}

void Print(const char* what, double seconds, double secondsOfCopy)
{
    std::printf("| %s | %.0f | %.1f |\n", what, seconds * 1000, seconds / secondsOfCopy);
    std::fflush(stdout);
}

void MeasureStrokes(LXDocumentInterface* document, double secondsOfCopy)
{
    const QPainterPath path = MakeWaves();
    const StrokeJob::Target target = StrokeJob::Read(document, 1, false);
    for (const int size : {3, 20, 200, 2000}) {
        ZKBrushSettings settings;
        settings.size = size;
        StrokeJob::Change change;
        const double paint = Yardstick::SecondsOf(
            [&] { change = StrokeJob::Paint(target, path, QColor(Qt::red), settings, [](int, int) {}); });
        char what[64];
        std::snprintf(what, sizeof(what), "stroke %d pixels across: painted", size);
        Print(what, paint, secondsOfCopy);

        const std::unique_ptr<LexoCommand> step = StrokeJob::MakeCommand(document, target, change);
        const auto start = Yardstick::Clock::now();
        step->redo();
        const double push = std::chrono::duration<double>(Yardstick::Clock::now() - start).count();
        step->undo();
        std::snprintf(what, sizeof(what), "stroke %d pixels across: the step", size);
        Print(what, push, secondsOfCopy);
    }
}

void MeasureHistogram(LXDocumentInterface* document, double secondsOfCopy)
{
    HistogramWidget histogram;
    histogram.resize(520, 120);
    histogram.show();
    const auto count = [&histogram] {
        histogram.RebuildHistogramm();
        do {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        } while (histogram.IsCounting());
    };
    auto start = Yardstick::Clock::now();
    const auto seconds = [&start] {
        return std::chrono::duration<double>(Yardstick::Clock::now() - start).count();
    };
    histogram.SetDocument(document);
    count();
    Print("histogram of a picture that nobody has seen", seconds(), secondsOfCopy);
    histogram.SetDocument(nullptr);
    start = Yardstick::Clock::now();
    histogram.SetDocument(document);
    count();
    Print("histogram of a picture that is composed", seconds(), secondsOfCopy);

    document->UpdateDocumentRect(QRect(3000, 3000, 1000, 1000));
    start = Yardstick::Clock::now();
    count();
    Print("histogram after 1000 x 1000 pixels changed", seconds(), secondsOfCopy);
}
} // namespace

int main(int argc, char** argv)
{
    try {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        const QApplication application(argc, argv);
        Theme::Apply(Theme::Look::Dark, ResourceFolder::Path());
        const double secondsOfCopy = Yardstick::SecondsOfCopy(qint64(Side) * Side);
        std::printf("A plain copy took %.0f ms.\n\n| what | ms | plain copies |\n|---|---|---|\n",
                    secondsOfCopy * 1000);
        const OwnedDocument document = MakeDocument();
        MeasureHistogram(document.get(), secondsOfCopy);
        MeasureStrokes(document.get(), secondsOfCopy);
        return 0;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    }
}
