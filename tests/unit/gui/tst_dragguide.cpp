#include "GuiFixture.h"
#include "ViewFixture.h"

#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LXDragGuide.h"
#include "gui/OffsetTag.h"
#include "gui/ViewAids.h"
#include "gui/ZKDocumentView_p.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QCursor>
#include <QTest>

using namespace ViewFixture;
using GuiFixture::MakeDocument;

/// What helps with a drag: snapping, the read-out, the grid.
class TestDragGuide : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void bothAreOffAtFirst();
    void eightScreenPixelsAtAnyScale();
    void linesAreTheCanvasTheLayersTheGuidesAndTheGrid();
    void whatMovesAlongIsNoLine();
    void hiddenThingsAreNoLines();
    void shiftSuspendsIt();
    void theOffsetIsToldBesideThePointer();
    void theTagNeverCoversThePointer_data();
    void theTagNeverCoversThePointer();
    void theOffsetIsToldInTheDocumentsUnit();
    void aSnappedWayIsTold();
    void theViewMayGoFirst();
    void aWrongGridStepIsTheFirstOne();
    void theGridIsDrawnOverTheCanvas();
    void aGridTooFineToSeeIsNotDrawn();

private:
    static OffsetTag* Tag(const ZKDocumentView& view);
};

namespace {
const QRect Box(20, 20, 6, 6);

void Reset()
{
    ViewAids::SetSnap(false);
    ViewAids::TellOffset(false);
    ViewAids::ShowGrid(false);
    ViewAids::SetGridStep(32);
}

/// The way that a drag of the box takes when the pointer goes that far.
QPointF Followed(ZKDocumentView& view, const QPointF& way, const QList<unsigned int>& dragged = {})
{
    LXDragGuide guide(&view, Box, dragged);
    return guide.Follow(way);
}

void ShowGrid(const ZKDocumentView& view, int step)
{
    ZKDocumentViewPrivate::Get(&view)->ShowGrid(step);
}

/// A canvas on which no line is near the box but those that a test adds.
const QSize Wide(1000, 800);
} // namespace

OffsetTag* TestDragGuide::Tag(const ZKDocumentView& view)
{
    return view.viewport()->findChild<OffsetTag*>();
}

void TestDragGuide::init()
{
    Reset();
}

void TestDragGuide::cleanup()
{
    Reset();
}

void TestDragGuide::bothAreOffAtFirst()
{
    QVERIFY(!ViewAids::IsSnapOn());
    QVERIFY(!ViewAids::IsOffsetTold());
    QVERIFY(!ViewAids::IsGridShown());
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    LXDragGuide guide(view.get(), Box, {});
    QCOMPARE(guide.Follow(QPointF(-19.5, 3)), QPointF(-19.5, 3));
    QVERIFY(!Tag(*view));
}

void TestDragGuide::eightScreenPixelsAtAnyScale()
{
    ViewAids::SetSnap(true);
    const auto document = MakeDocument(Wide);
    const auto view = ShowView(document);
    for (const double scale : {0.5, 1.0, 4.0}) {
        view->Zoom(scale, Middle(*view), false);
        const double reach = 8 / scale;
        QCOMPARE(Followed(*view, QPointF(-20 + reach, 200)), QPointF(-20, 200));
        QCOMPARE(Followed(*view, QPointF(-20 + reach + 0.125, 200)), QPointF(-20 + reach + 0.125, 200));
    }
}

void TestDragGuide::linesAreTheCanvasTheLayersTheGuidesAndTheGrid()
{
    ViewAids::SetSnap(true);
    const auto document = MakeDocument(Wide);
    const auto view = ShowView(document);
    view->Zoom(4, Middle(*view), false);
    LXImage32 image(20, 20);
    document->AddLayer("small", image, QPoint(100, 60));
    document->SetGuides({{Qt::Vertical, 200}});

    // The canvas' right edge, its middle, the layer's right edge, the guide.
    QCOMPARE(Followed(*view, QPointF(973, 33)).x(), 974.0);
    QCOMPARE(Followed(*view, QPointF(476, 33)).x(), 477.0);
    QCOMPARE(Followed(*view, QPointF(101, 33)).x(), 100.0);
    QCOMPARE(Followed(*view, QPointF(181, 33)).x(), 180.0);
    // A line of the grid at 300, once it is shown.
    QCOMPARE(Followed(*view, QPointF(281, 33)).x(), 281.0);
    ShowGrid(*view, 100);
    QCOMPARE(Followed(*view, QPointF(281, 33)).x(), 280.0);
}

void TestDragGuide::whatMovesAlongIsNoLine()
{
    ViewAids::SetSnap(true);
    const auto document = MakeDocument(Wide);
    const auto view = ShowView(document);
    LXImage32 image(20, 20);
    document->AddLayer("small", image, QPoint(100, 60));
    QCOMPARE(Followed(*view, QPointF(82, 300)).x(), 80.0);
    QCOMPARE(Followed(*view, QPointF(82, 300), {1}).x(), 82.0);
}

void TestDragGuide::hiddenThingsAreNoLines()
{
    ViewAids::SetSnap(true);
    const auto document = MakeDocument(Wide);
    const auto view = ShowView(document);
    LXImage32 image(20, 20);
    document->AddLayer("small", image, QPoint(100, 60));
    document->SetGuides({{Qt::Vertical, 200}});
    document->GetModel()->SetVisible(0, false);
    view->ShowGuides(false);
    QCOMPARE(Followed(*view, QPointF(82, 300)).x(), 82.0);
    QCOMPARE(Followed(*view, QPointF(182, 300)).x(), 182.0);
}

void TestDragGuide::shiftSuspendsIt()
{
    ViewAids::SetSnap(true);
    const auto document = MakeDocument(Wide);
    const auto view = ShowView(document);
    InputDriver input;
    LXDragGuide guide(view.get(), Box, {});
    QCOMPARE(guide.Follow(QPointF(-18, 300)), QPointF(-20, 300));
    input.HoldModifiers(Qt::ShiftModifier);
    QCOMPARE(guide.Follow(QPointF(-18, 300)), QPointF(-18, 300));
    input.HoldModifiers(Qt::NoModifier);
    QCOMPARE(guide.Follow(QPointF(-18, 300)), QPointF(-20, 300));
}

void TestDragGuide::theOffsetIsToldBesideThePointer()
{
    ViewAids::TellOffset(true);
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    const QPoint spot(100, 80);
    QCursor::setPos(view->viewport()->mapToGlobal(spot));
    {
        LXDragGuide guide(view.get(), Box, {});
        QVERIFY(!Tag(*view)->isVisible());
        guide.Follow(QPointF(12.25, -5));
        QVERIFY(Tag(*view)->isVisible());
        QCOMPARE(Tag(*view)->text(), QString("+12, -5 px"));
        QCOMPARE(Tag(*view)->pos(), spot + QPoint(16, 16));
    }
    QVERIFY(!Tag(*view));
}

void TestDragGuide::theTagNeverCoversThePointer_data()
{
    QTest::addColumn<QPointF>("part");
    QTest::newRow("top left") << QPointF(0, 0);
    QTest::newRow("top right") << QPointF(1, 0);
    QTest::newRow("bottom left") << QPointF(0, 1);
    QTest::newRow("bottom right") << QPointF(1, 1);
}

void TestDragGuide::theTagNeverCoversThePointer()
{
    QFETCH(QPointF, part);
    ViewAids::TellOffset(true);
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    const QWidget* viewport = view->viewport();
    const QPoint spot(qRound(part.x() * (viewport->width() - 1)),
                      qRound(part.y() * (viewport->height() - 1)));
    QCursor::setPos(viewport->mapToGlobal(spot));
    LXDragGuide guide(view.get(), Box, {});
    guide.Follow(QPointF(1000, -1000));
    QVERIFY(viewport->rect().contains(Tag(*view)->geometry()));
    QVERIFY(!Tag(*view)->geometry().adjusted(-8, -8, 8, 8).contains(spot));
}

void TestDragGuide::theOffsetIsToldInTheDocumentsUnit()
{
    QCOMPARE(OffsetTag::Text(QPointF(-144, 36), 0, 72), QString("-144, +36 px"));
    QCOMPARE(OffsetTag::Text(QPointF(-144, 36), 1, 72), QString("-2.00, +0.50 in"));
    QCOMPARE(OffsetTag::Text(QPointF(-144, 36), 2, 72), QString("-50.8, +12.7 mm"));
    // Nothing has no sign, also when it is only nearly nothing.
    QCOMPARE(OffsetTag::Text(QPointF(0, -0.25), 0, 72), QString("0, 0 px"));
}

void TestDragGuide::aSnappedWayIsTold()
{
    ViewAids::SetSnap(true);
    ViewAids::TellOffset(true);
    const auto document = MakeDocument(Wide);
    const auto view = ShowView(document);
    LXDragGuide guide(view.get(), Box, {});
    guide.Follow(QPointF(-18, 300));
    QCOMPARE(Tag(*view)->text(), QString("-20, +300 px"));
}

void TestDragGuide::theViewMayGoFirst()
{
    ViewAids::SetSnap(true);
    ViewAids::TellOffset(true);
    const auto document = MakeDocument(Wide);
    auto view = ShowView(document);
    LXDragGuide guide(view.get(), Box, {});
    guide.Follow(QPointF(-18, 300));
    view.reset();
    QCOMPARE(guide.Follow(QPointF(-18, 300)), QPointF(-18, 300));
}

void TestDragGuide::aWrongGridStepIsTheFirstOne()
{
    ViewAids::SetGridStep(1);
    QCOMPARE(ViewAids::GridStep(), 2);
    ViewAids::SetGridStep(99999);
    QCOMPARE(ViewAids::GridStep(), 10000);
    ZKApplication::SetUserValue("Editor/GridStep", "many");
    QCOMPARE(ViewAids::GridStep(), 32);
    ZKApplication::SetUserValue("Editor/GridStep", 0);
    QCOMPARE(ViewAids::GridStep(), 32);
}

void TestDragGuide::theGridIsDrawnOverTheCanvas()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    view->Zoom(2, Middle(*view), false);
    const QImage plain = Shown(*view);
    ShowGrid(*view, 10);
    const QImage shown = Shown(*view);
    const auto isLine = [&](double x, double y) {
        const QPoint at = view->mapFromScene(QPointF(x, y));
        return shown.pixel(at) != plain.pixel(at);
    };
    for (const double x : {0.0, 10.0, 20.0, 60.0})
        QVERIFY(isLine(x, 5));
    for (const double y : {0.0, 10.0, 40.0})
        QVERIFY(isLine(5, y));
    QVERIFY(!isLine(5, 5));
    QVERIFY(!isLine(11, 5));
    // Not beyond the canvas.
    QVERIFY(!isLine(70, 10));
    QVERIFY(!isLine(10, -5));
    ShowGrid(*view, 0);
    QCOMPARE(Shown(*view), plain);
}

void TestDragGuide::aGridTooFineToSeeIsNotDrawn()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    const QImage plain = Shown(*view);
    ShowGrid(*view, 5);
    QCOMPARE(Shown(*view), plain);
    ShowGrid(*view, 6);
    QVERIFY(Shown(*view) != plain);
}

ZK_REGISTER_TEST(tst_dragguide, TestDragGuide)
#include "tst_dragguide.moc"
