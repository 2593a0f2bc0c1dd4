#include "GuiFixture.h"

#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentView_p.h"
#include "history/LexoUndoStack.h"
#include "support/TestRegistry.h"

#include <QGraphicsRectItem>
#include <QPaintEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <QtMath>

using GuiFixture::Hex;
using GuiFixture::MakeDocument;

/// What a view shows, and how it is scaled.
class TestDocumentView : public QObject
{
    Q_OBJECT

private slots:
    void pixelsStandWhereTheirSceneCoordinatesAre();
    void surroundIsNeutralAndTheCanvasHasAnEdge();
    void checkerDoesNotScale();
    void enlargedPixelsAreSharp();
    void gridStartsAtEight();
    void reducedPictureIsAMean();

    void changeRepaintsOnlyItsPlace();
    void changeOfOneLayerRowIsShown();
    void restingViewMakesNothing();

    void wheelKeepsThePointUnderThePointer_data();
    void wheelKeepsThePointUnderThePointer();
    void wheelThereAndBackComesHome();
    void wheelStopsAtThePicturesOwnSize();
    void scaleKeepsItsLimits();
    void scaleOfTheSameFactorIsSilent();
    void shiftWheelScrolls();

    void smallCanvasStandsInTheMiddle();
    void largeCanvasIsShownWhole();
    void untouchedViewKeepsTheWholePictureWhenResized();
    void touchedViewKeepsItsMiddleWhenResized();
    void fitEnlargesToo();
    void zoomIsAbsolute();
    void newCanvasSizeIsShown();

    void outlineOfTheSelectionIsShown();
    void outlineMarchesInItsPlaceOnly();
    void outlineGoesWithTheSelection();

    void sceneAreaIsToldOnceAChange();
    void topLayerIsSelectedAtFirst();
    void someLayerStaysSelectedWhenLayersGo();
    void layerOrderBlockIsASwitch();
    void aboutDestroyIsToldOnceWhileTheViewStands();
    void cursorIsToldInSceneCoordinates();
};

namespace {
std::unique_ptr<ZKDocumentView> ShowView(const GuiFixture::OwnedDocument& document,
                                         const QSize& size = {400, 300})
{
    auto view = std::make_unique<ZKDocumentView>(document.get(), nullptr);
    view->resize(size);
    view->show();
    if (!QTest::qWaitForWindowExposed(view.get())) return nullptr;
    return view;
}

QImage Shown(ZKDocumentView& view)
{
    return view.viewport()->grab().toImage();
}

/// The color shown in the middle of a document pixel.
QColor ShownAt(ZKDocumentView& view, int x, int y)
{
    const QPointF middle = view.viewportTransform().map(QPointF(x + 0.5, y + 0.5));
    return Shown(view).pixelColor(qFloor(middle.x()), qFloor(middle.y()));
}

QPointF PointAt(const ZKDocumentView& view, const QPointF& viewPos)
{
    return view.viewportTransform().inverted().map(viewPos);
}

QPointF Middle(const ZKDocumentView& view)
{
    return QPointF(view.viewport()->width(), view.viewport()->height()) / 2;
}

void Wheel(ZKDocumentView& view, const QPoint& viewPos, int delta,
           Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget* viewport = view.viewport();
    QWheelEvent event(viewPos, viewport->mapToGlobal(viewPos), QPoint(), QPoint(0, delta), Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(viewport, &event);
}

/// Unites what is painted of a widget.
class PaintedRegion : public QObject
{
public:
    explicit PaintedRegion(QWidget* widget) { widget->installEventFilter(this); }

    QRegion m_Region;

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) m_Region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

QRgb Quadrant(int x, int y)
{
    if (y < 24) return x < 32 ? 0xffff0000 : 0xff00ff00;
    return x < 32 ? 0xff0000ff : 0xffffff00;
}

#define COMPARE_COLORS(actual, expected) QCOMPARE(Hex(actual), Hex(expected))
#define COMPARE_POINTS(actual, expected, tolerance)                                                          \
    do {                                                                                                     \
        const QPointF distance = (actual) - (expected);                                                      \
        QVERIFY2(distance.manhattanLength() <= (tolerance),                                                  \
                 qPrintable(QString("%1, %2").arg(distance.x()).arg(distance.y())));                         \
    } while (false)
} // namespace

void TestDocumentView::pixelsStandWhereTheirSceneCoordinatesAre()
{
    const auto document = MakeDocument({64, 48}, Quadrant);
    const auto view = ShowView(document);
    QCOMPARE(view->GetScale(), 1.0);
    COMPARE_COLORS(ShownAt(*view, 0, 0), QColor(Qt::red));
    COMPARE_COLORS(ShownAt(*view, 31, 23), QColor(Qt::red));
    COMPARE_COLORS(ShownAt(*view, 32, 23), QColor(Qt::green));
    COMPARE_COLORS(ShownAt(*view, 31, 24), QColor(Qt::blue));
    COMPARE_COLORS(ShownAt(*view, 63, 47), QColor(Qt::yellow));
}

void TestDocumentView::surroundIsNeutralAndTheCanvasHasAnEdge()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    const QColor surround = view->palette().color(QPalette::Dark);
    COMPARE_COLORS(ShownAt(*view, -2, 10), surround);
    COMPARE_COLORS(ShownAt(*view, 65, 47), surround);
    QVERIFY(ShownAt(*view, -1, 10) != surround);
    COMPARE_COLORS(ShownAt(*view, -1, 10), ShownAt(*view, 64, 48));
    COMPARE_COLORS(ShownAt(*view, 0, 10), QColor(Qt::white));
}

void TestDocumentView::checkerDoesNotScale()
{
    const auto document = MakeDocument({64, 48}, Qt::transparent);
    const auto view = ShowView(document);
    for (const double scale : {1.0, 4.0}) {
        view->Zoom(scale, Middle(*view), false);
        const QPoint corner = view->mapFromScene(QPointF(0, 0));
        const QImage shown = Shown(*view);
        const QColor first = shown.pixelColor(corner);
        const QColor second = shown.pixelColor(corner + QPoint(8, 0));
        QVERIFY(first != second);
        COMPARE_COLORS(shown.pixelColor(corner + QPoint(7, 7)), first);
        COMPARE_COLORS(shown.pixelColor(corner + QPoint(15, 0)), second);
        COMPARE_COLORS(shown.pixelColor(corner + QPoint(8, 8)), first);
    }
}

void TestDocumentView::enlargedPixelsAreSharp()
{
    const auto document = MakeDocument({64, 48}, Quadrant);
    const auto view = ShowView(document);
    view->Zoom(6, Middle(*view), false);
    const QImage shown = Shown(*view);
    const QPoint corner = view->mapFromScene(QPointF(32, 24));
    COMPARE_COLORS(shown.pixelColor(corner - QPoint(1, 1)), QColor(Qt::red));
    COMPARE_COLORS(shown.pixelColor(corner - QPoint(0, 1)), QColor(Qt::green));
    COMPARE_COLORS(shown.pixelColor(corner - QPoint(1, 0)), QColor(Qt::blue));
    COMPARE_COLORS(shown.pixelColor(corner), QColor(Qt::yellow));
}

void TestDocumentView::gridStartsAtEight()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    for (const double scale : {7.9, 8.0}) {
        view->Zoom(scale, Middle(*view), false);
        const QPoint between = view->mapFromScene(QPointF(30, 20)) + QPoint(0, 3);
        const QImage shown = Shown(*view);
        QCOMPARE(shown.pixelColor(between) != QColor(Qt::white), scale == 8.0);
        COMPARE_COLORS(shown.pixelColor(between + QPoint(3, 0)), QColor(Qt::white));
    }
}

void TestDocumentView::reducedPictureIsAMean()
{
    const auto document =
        MakeDocument({640, 480}, [](int x, int y) { return (x + y) % 2 ? 0xffffffff : 0xff000000; });
    const auto view = ShowView(document);
    view->Zoom(0.5, Middle(*view), false);
    COMPARE_COLORS(ShownAt(*view, 320, 240), QColor(128, 128, 128));
}

void TestDocumentView::changeRepaintsOnlyItsPlace()
{
    const auto document = MakeDocument({640, 480});
    const auto view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    Shown(*view);
    const qint64 madeBefore = ZKDocumentViewPrivate::Get(view.get())->MadePixels();
    PaintedRegion painted(view->viewport());

    const QRect place(300, 200, 20, 10);
    document->SetLayerImage(
        1,
        GuiFixture::MakeImage({640, 480},
                              [&](int x, int y) { return place.contains(x, y) ? 0xffff0000 : 0xffffffff; }),
        QPoint(0, 0));
    QCoreApplication::processEvents();
    Shown(*view);
    const qint64 madeForAll = ZKDocumentViewPrivate::Get(view.get())->MadePixels() - madeBefore;
    QVERIFY(madeForAll > 0);

    // Now a change that tells its rectangle.
    QCoreApplication::processEvents();
    painted.m_Region = QRegion();
    const qint64 made = ZKDocumentViewPrivate::Get(view.get())->MadePixels();
    document->LayerImageChanged(1, place);
    QTRY_VERIFY(!painted.m_Region.isEmpty());
    const QRect expected(view->mapFromScene(QPointF(place.topLeft())), place.size());
    QCOMPARE(painted.m_Region.boundingRect(), expected);
    QCOMPARE(ZKDocumentViewPrivate::Get(view.get())->MadePixels() - made, qint64(20 * 10));
    COMPARE_COLORS(ShownAt(*view, 310, 205), QColor(Qt::red));
}

void TestDocumentView::changeOfOneLayerRowIsShown()
{
    const auto document = MakeDocument({640, 480});
    const auto view = ShowView(document);
    Shown(*view);
    document->AddLayer("Spot", GuiFixture::MakeImage({10, 10}, [](int, int) { return 0xff0000ffu; }),
                       {600, 400});
    QCoreApplication::processEvents();
    COMPARE_COLORS(ShownAt(*view, 605, 405), QColor(Qt::blue));
    document->GetModel()->SetVisible(0, false);
    QCoreApplication::processEvents();
    COMPARE_COLORS(ShownAt(*view, 605, 405), QColor(Qt::white));
}

void TestDocumentView::restingViewMakesNothing()
{
    const auto document = MakeDocument({640, 480});
    const auto view = ShowView(document);
    Shown(*view);
    const qint64 made = ZKDocumentViewPrivate::Get(view.get())->MadePixels();
    Shown(*view);
    view->viewport()->update();
    QCoreApplication::processEvents();
    QCOMPARE(ZKDocumentViewPrivate::Get(view.get())->MadePixels(), made);
}

void TestDocumentView::wheelKeepsThePointUnderThePointer_data()
{
    QTest::addColumn<QPoint>("pointer");
    QTest::addColumn<int>("delta");
    QTest::newRow("in at the middle") << QPoint(190, 140) << 120;
    QTest::newRow("in near a corner") << QPoint(30, 20) << 120;
    QTest::newRow("in far") << QPoint(300, 250) << 840;
    QTest::newRow("a fine step") << QPoint(300, 250) << 15;
    QTest::newRow("out") << QPoint(120, 200) << -120;
}

void TestDocumentView::wheelKeepsThePointUnderThePointer()
{
    QFETCH(QPoint, pointer);
    QFETCH(int, delta);
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(1.5, Middle(*view), false);
    const double scale = view->GetScale();
    const QPointF point = PointAt(*view, pointer);
    Wheel(*view, pointer, delta);
    QVERIFY(delta > 0 ? view->GetScale() > scale : view->GetScale() < scale);
    COMPARE_POINTS(view->viewportTransform().map(point), QPointF(pointer), 1.0);
}

void TestDocumentView::wheelThereAndBackComesHome()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(1.3, Middle(*view), false);
    const QPoint pointer(111, 222);
    const QPointF point = PointAt(*view, pointer);
    for (int i = 0; i < 9; ++i)
        Wheel(*view, pointer, 120);
    for (int i = 0; i < 9; ++i)
        Wheel(*view, pointer, -120);
    QVERIFY(qAbs(view->GetScale() - 1.3) < 1e-9);
    COMPARE_POINTS(view->viewportTransform().map(point), QPointF(pointer), 1.0);
}

void TestDocumentView::wheelStopsAtThePicturesOwnSize()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(0.9, Middle(*view), false);
    Wheel(*view, {100, 100}, 120);
    QCOMPARE(view->GetScale(), 1.0);
    Wheel(*view, {100, 100}, 120);
    QVERIFY(view->GetScale() > 1.2);
    Wheel(*view, {100, 100}, -150);
    QCOMPARE(view->GetScale(), 1.0);
}

void TestDocumentView::scaleKeepsItsLimits()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Scale(1000, Middle(*view));
    QCOMPARE(view->GetScale(), 40.0);
    view->Scale(1e-6, Middle(*view));
    QCOMPARE(view->GetScale(), 0.05);
    view->Zoom(100, Middle(*view), false);
    QCOMPARE(view->GetScale(), 40.0);
}

void TestDocumentView::scaleOfTheSameFactorIsSilent()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Scale(1000, Middle(*view));
    QSignalSpy scaled(view.get(), &ZKDocumentView::ScaleChanged);
    view->Scale(2, Middle(*view));
    QCOMPARE(scaled.count(), 0);
    view->Scale(0.5, Middle(*view));
    QCOMPARE(scaled.count(), 1);
    QCOMPARE(scaled[0][0].toReal(), 20.0);
}

void TestDocumentView::shiftWheelScrolls()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(2, Middle(*view), false);
    const int x = view->horizontalScrollBar()->value();
    const int y = view->verticalScrollBar()->value();
    Wheel(*view, {100, 100}, -120, Qt::ShiftModifier);
    QCOMPARE(view->GetScale(), 2.0);
    QCOMPARE(view->horizontalScrollBar()->value(), x + 120);
    Wheel(*view, {100, 100}, 120, Qt::AltModifier);
    QCOMPARE(view->verticalScrollBar()->value(), y - 120);
}

void TestDocumentView::smallCanvasStandsInTheMiddle()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    QCOMPARE(view->GetScale(), 1.0);
    COMPARE_POINTS(view->viewportTransform().map(QPointF(32, 24)), Middle(*view), 2.0);
    view->Scale(3, QPointF(0, 0));
    COMPARE_POINTS(view->viewportTransform().map(QPointF(32, 24)), Middle(*view), 2.0);
}

void TestDocumentView::largeCanvasIsShownWhole()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    QVERIFY(view->GetScale() < 0.2);
    const QRectF seen = view->mapToScene(view->viewport()->rect()).boundingRect();
    QVERIFY(seen.contains(QRectF(0, 0, 3000, 2000)));
}

void TestDocumentView::untouchedViewKeepsTheWholePictureWhenResized()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    const double scale = view->GetScale();
    view->resize(200, 150);
    QVERIFY(view->GetScale() < scale);
    const QRectF seen = view->mapToScene(view->viewport()->rect()).boundingRect();
    QVERIFY(seen.contains(QRectF(0, 0, 3000, 2000)));
}

void TestDocumentView::touchedViewKeepsItsMiddleWhenResized()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(2, QPointF(100, 100), false);
    const QPointF middle = PointAt(*view, Middle(*view));
    view->resize(300, 200);
    QCOMPARE(view->GetScale(), 2.0);
    COMPARE_POINTS(PointAt(*view, Middle(*view)), middle, 1.0);
}

void TestDocumentView::fitEnlargesToo()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    view->FitSizeToViewPort();
    QVERIFY(view->GetScale() > 4);
    const QRect canvas(view->mapFromScene(QPointF(0, 0)), view->mapFromScene(QPointF(64, 48)));
    QVERIFY(view->viewport()->rect().contains(canvas));
    COMPARE_POINTS(view->viewportTransform().map(QPointF(32, 24)), Middle(*view), 2.0);
    QCOMPARE(view->horizontalScrollBar()->maximum(), view->horizontalScrollBar()->minimum());
    QCOMPARE(view->verticalScrollBar()->maximum(), view->verticalScrollBar()->minimum());
}

void TestDocumentView::zoomIsAbsolute()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(2, Middle(*view), false);
    const QPointF point = PointAt(*view, QPointF(50, 60));
    view->Zoom(4, QPointF(50, 60), true);
    QCOMPARE(view->GetScale(), 4.0);
    COMPARE_POINTS(view->viewportTransform().map(point), QPointF(50, 60), 1.0);
}

void TestDocumentView::newCanvasSizeIsShown()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    Shown(*view);
    document->SetDocumentSize({128, 96});
    QCoreApplication::processEvents();
    COMPARE_POINTS(view->viewportTransform().map(QPointF(64, 48)), Middle(*view), 2.0);
    COMPARE_COLORS(ShownAt(*view, 63, 47), QColor(Qt::white));
    QVERIFY(ShownAt(*view, 127, 95) != view->palette().color(QPalette::Dark));
}

void TestDocumentView::outlineOfTheSelectionIsShown()
{
    const auto document = MakeDocument({64, 48}, QColor(200, 40, 40));
    document->SetSelectionMask(GuiFixture::MakeImage({20, 10}, [](int, int) { return 0xff000000; }),
                               {10, 20});
    const auto view = ShowView(document);
    view->Zoom(4, Middle(*view), false);
    const QImage shown = Shown(*view);
    const QPoint corner = view->mapFromScene(QPointF(10, 20));
    const auto isDash = [&](const QPoint& offset) {
        const QColor color = shown.pixelColor(corner + offset);
        return color == Qt::black || color == Qt::white;
    };
    for (int x = 0; x < 20 * 4; ++x)
        QVERIFY(isDash({x, 0}) && isDash({x, 10 * 4}));
    for (int y = 0; y < 10 * 4; ++y)
        QVERIFY(isDash({0, y}) && isDash({20 * 4, y}));
    QVERIFY(!isDash({-1, 5}) && !isDash({1, 5}) && !isDash({40, 20}) && !isDash({20 * 4 + 1, 5}));
    // Four black pixels, four white ones.
    int changes = 0;
    for (int x = 1; x < 17; ++x) {
        changes += shown.pixel(corner + QPoint(x, 0)) != shown.pixel(corner + QPoint(x - 1, 0)) ? 1 : 0;
    }
    QCOMPARE(changes, 4);
}

void TestDocumentView::outlineMarchesInItsPlaceOnly()
{
    const auto document = MakeDocument({640, 480});
    document->SetSelectionMask(GuiFixture::MakeImage({100, 80}, [](int, int) { return 0xff000000; }),
                               {300, 200});
    const auto view = ShowView(document, {700, 600});
    const QImage before = Shown(*view);
    PaintedRegion painted(view->viewport());
    QTRY_VERIFY(!painted.m_Region.isEmpty());
    const QRegion marched = painted.m_Region;
    QVERIFY(Shown(*view) != before);
    const QRect selection(view->mapFromScene(QPointF(300, 200)), QSize(100, 80));
    QVERIFY(selection.adjusted(-32, -32, 32, 32).contains(marched.boundingRect()));
    QVERIFY(!marched.contains(selection.center()));
}

void TestDocumentView::outlineGoesWithTheSelection()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    const QImage without = Shown(*view);
    document->SetSelectionMask(GuiFixture::MakeImage({20, 10}, [](int, int) { return 0xff000000; }),
                               {10, 20});
    QCoreApplication::processEvents();
    QVERIFY(Shown(*view) != without);
    document->SetSelectionMask(LXImage32(), {0, 0});
    QCoreApplication::processEvents();
    QCOMPARE(Shown(*view), without);
    PaintedRegion painted(view->viewport());
    QTest::qWait(150);
    QVERIFY(painted.m_Region.isEmpty());
}

void TestDocumentView::sceneAreaIsToldOnceAChange()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(2, Middle(*view), false);
    QSignalSpy told(view.get(), &ZKDocumentView::SceneAreaChanged);
    view->Scale(1.5, QPointF(10, 20));
    QCOMPARE(told.count(), 1);
    view->horizontalScrollBar()->setValue(view->horizontalScrollBar()->value() + 5);
    QCOMPARE(told.count(), 2);
    view->horizontalScrollBar()->setValue(view->horizontalScrollBar()->value());
    QCOMPARE(told.count(), 2);
    view->resize(view->width() + 20, view->height());
    QCOMPARE(told.count(), 3);
}

void TestDocumentView::topLayerIsSelectedAtFirst()
{
    const auto document = MakeDocument({64, 48});
    document->AddLayer("Top", LXImage32(64, 48), {0, 0});
    const auto view = ShowView(document);
    QCOMPARE(view->GetModel(), document->GetModel());
    QCOMPARE(view->GetLayerSelection()->model(), document->GetModel());
    QCOMPARE(view->GetLayerSelection()->selectedRows().size(), 1);
    QCOMPARE(view->GetLayerSelection()->currentIndex().row(), 0);
}

void TestDocumentView::someLayerStaysSelectedWhenLayersGo()
{
    const auto document = MakeDocument({64, 48});
    document->AddLayer("Top", LXImage32(64, 48), {0, 0});
    const auto view = ShowView(document);
    document->RemoveLayer(1);
    QCOMPARE(view->GetLayerSelection()->selectedRows().size(), 1);
    QCOMPARE(view->GetLayerSelection()->currentIndex().row(), 0);
    document->RemoveLayer(1);
    QVERIFY(!view->GetLayerSelection()->hasSelection());
    document->AddLayer("New", LXImage32(64, 48), {0, 0});
    QCOMPARE(view->GetLayerSelection()->selectedRows().size(), 1);
}

void TestDocumentView::layerOrderBlockIsASwitch()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    QSignalSpy blocked(view.get(), &ZKDocumentView::LayerOrderOperationsBlocked);
    view->BlockLayerOrderOperations(true);
    view->BlockLayerOrderOperations(true);
    QVERIFY(view->IsLayerOrderBlocked());
    view->BlockLayerOrderOperations(false);
    QVERIFY(!view->IsLayerOrderBlocked());
    QCOMPARE(blocked.count(), 2);
}

void TestDocumentView::aboutDestroyIsToldOnceWhileTheViewStands()
{
    const auto document = MakeDocument({64, 48});
    auto view = ShowView(document);
    int told = 0;
    connect(view.get(), &ZKDocumentView::AboutDestroy, view.get(), [&](ZKDocumentView* going) {
        ++told;
        QCOMPARE(going->GetModel()->GetDocument(), document.get());
        QVERIFY(going->scene());
    });
    ZKDocumentViewPrivate::Get(view.get())->AnnounceDestroy();
    QCOMPARE(told, 1);
    view.reset();
    QCOMPARE(told, 1);
}

void TestDocumentView::cursorIsToldInSceneCoordinates()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    QSignalSpy moved(view.get(), &ZKDocumentView::CursorMoved);
    QSignalSpy left(view.get(), &ZKDocumentView::CursorLeft);
    QTest::mouseMove(view->viewport(), view->mapFromScene(QPointF(10, 20)));
    QTRY_COMPARE(moved.count(), 1);
    QCOMPARE(moved[0][0].toPointF(), QPointF(10, 20));
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(view->viewport(), &leave);
    QCOMPARE(left.count(), 1);
}

ZK_REGISTER_TEST(tst_documentview, TestDocumentView)
#include "tst_documentview.moc"
