#include "movetoolprivate/CutPasteObject.h"

#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"

#include <QApplication>
#include <QBrush>
#include <QPainterPath>
#include <QScrollBar>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <thread>
#include <vector>

// What one step of a drag costs by the size of the piece: the step itself, which runs on the piece's worker,
// and what the main thread does until it is painted in a view of 800 x 600. Also what comes once for each
// drag: lifting and laying down.

namespace {
using Clock = std::chrono::steady_clock;

constexpr int Side = 8192;
constexpr int Start = 200; ///< where the pieces lie at first, in both directions
constexpr int Steps = 200;
constexpr int PaintedSteps = 21;
constexpr QPoint Way(1, 1);

struct Release
{
    void operator()(LXDocumentInterface* document) const { LXDocumentFactory::Instance()->Release(document); }
};

double Microseconds(const std::function<void()>& work)
{
    const Clock::time_point start = Clock::now();
    work();
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// One tile of noise at every place of the picture, each with memory of its own.
LXImage32 MakePicture()
{
    std::mt19937 random(1);
    LXImage32 tile(128, 128);
    for (int y = 0; y < 128; ++y) {
        for (int x = 0; x < 128; ++x)
            tile.SetColor(x, y, LXRGBA32i(0xFF000000 | static_cast<quint32>(random() & 0xFFFFFF)));
    }
    LXImage32 picture(Side, Side);
    for (int y = 0; y < Side; y += 128) {
        for (int x = 0; x < Side; x += 128)
            BlendOn(tile, tile.Rect(), BlendMode::Source, picture, QRect(x, y, 128, 128), 1.0, false);
    }
    return picture;
}

/// A circle, so that pixels at its edge are partly selected.
LXImage32 MakeSelection(int side)
{
    LXImage32 mask(side, side);
    QPainterPath circle;
    circle.addEllipse(0, 0, side, side);
    FillPath(mask, BlendMode::Source, circle, QBrush(Qt::black));
    return mask;
}

struct Row
{
    double lift = 0;  ///< ms
    double step = 0;  ///< us, on a thread of its own
    double paint = 0; ///< ms
    double land = 0;  ///< ms
    bool isUntouched = false;
};

class Bench
{
public:
    Bench() : m_pDocument(LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32))
    {
        m_pDocument->SetDocumentSize(QSize(Side, Side));
        m_pDocument->AddLayer(QStringLiteral("Layer"), MakePicture(), {});
        m_pView = std::make_unique<ZKDocumentView>(m_pDocument.get(), &m_History);
        m_pView->resize(800, 600);
        m_pView->show();
    }

    Row Measure(int side, double scale)
    {
        m_pDocument->SetSelectionMask(MakeSelection(side), QPoint(Start, Start));
        m_pView->Scale(scale / m_pView->GetScale(), QPointF());
        m_pView->horizontalScrollBar()->setValue(static_cast<int>((Start - 50) * scale));
        m_pView->verticalScrollBar()->setValue(static_cast<int>((Start - 50) * scale));
        Show();

        Row row;
        LayerCutPasteObject piece;
        row.lift = Microseconds([&] { piece.Begin(m_pView.get(), 1); }) / 1000;
        Show();
        const auto tiles = m_pDocument->GetLayerImage(1)->m_Tiles;
        const auto floating = m_pDocument->GetAdditionalLayerImage(1)->m_Tiles;
        QPoint place(Start, Start);
        row.step = MeasureSteps(piece, place);
        row.paint = MeasurePainting(piece, place);
        row.isUntouched = m_pDocument->GetLayerImage(1)->m_Tiles == tiles &&
                          m_pDocument->GetAdditionalLayerImage(1)->m_Tiles == floating;
        row.land = Microseconds([&] { piece.Commit(&m_History); }) / 1000;
        m_History.undo();
        m_History.clear();
        return row;
    }

private:
    void Show()
    {
        QCoreApplication::processEvents();
        m_pView->viewport()->repaint();
    }

    /// As in a drag: not on the main thread, which hears of it afterwards.
    static double MeasureSteps(LayerCutPasteObject& piece, QPoint& place)
    {
        std::vector<double> times(Steps);
        std::thread worker([&] {
            for (double& time : times) {
                place += Way;
                time = Microseconds([&] { piece.Move(place); });
            }
        });
        worker.join();
        return Median(times);
    }

    double MeasurePainting(LayerCutPasteObject& piece, QPoint& place)
    {
        Show();
        std::vector<double> times(PaintedSteps);
        for (double& time : times) {
            place += Way;
            std::thread([&] { piece.Move(place); }).join();
            time = Microseconds([this] { Show(); }) / 1000;
        }
        return Median(times);
    }

    std::unique_ptr<LXDocumentInterface, Release> m_pDocument;
    LexoUndoStack m_History;
    std::unique_ptr<ZKDocumentView> m_pView;
};

void PrintTable(double scale)
{
    std::printf("\nAt %g %%:\n\n| piece, megapixels | lift, ms | step, us | painted, ms | lay down, ms |\n"
                "|---|---|---|---|---|\n",
                scale * 100);
    Bench bench;
    for (const double megapixels : {0.1, 1.0, 10.0, 50.0}) {
        const int side = static_cast<int>(std::sqrt(megapixels * 1e6));
        const Row row = bench.Measure(side, scale);
        std::printf("| %g | %.1f | %.1f | %.1f | %.1f |%s\n", megapixels, row.lift, row.step, row.paint,
                    row.land, row.isUntouched ? "" : " pixels were touched");
    }
}
} // namespace

int main(int argc, char** argv)
{
    try {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        const QApplication application(argc, argv);
        PrintTable(1.0);
        PrintTable(0.07);
        return 0;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    }
}
