#include "GuiFixture.h"
#include "ViewFixture.h"

#include "gui/ZKDocumentView.h"
#include "image/LXImage.h"
#include "support/TestRegistry.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <limits>

using namespace ViewFixture;
using GuiFixture::MakeDocument;

/// How a view is scaled, and where the canvas stands in it.
class TestViewScale : public QObject
{
    Q_OBJECT

private slots:
    void wheelKeepsThePointUnderThePointer_data();
    void wheelKeepsThePointUnderThePointer();
    void wheelThereAndBackComesHome();
    void wheelStopsAtThePicturesOwnSize();
    void scaleKeepsItsLimits();
    void scalesThatAreNoNumbersAreIgnored();
    void scaleOfTheSameFactorIsSilent();
    void shiftWheelScrolls();
    void smallCanvasStandsInTheMiddle();
    void largeCanvasIsShownWhole();
    void untouchedViewKeepsTheWholePictureWhenResized();
    void touchedViewKeepsItsMiddleWhenResized();
    void fitEnlargesToo();
    void zoomIsAbsolute();
    void newCanvasSizeIsShown();
    void sceneAreaIsToldOnceAChange();
};

namespace {
void Wheel(ZKDocumentView& view, const QPoint& viewPos, int delta,
           Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget* viewport = view.viewport();
    QWheelEvent event(viewPos, viewport->mapToGlobal(viewPos), QPoint(), QPoint(0, delta), Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(viewport, &event);
}
} // namespace

void TestViewScale::wheelKeepsThePointUnderThePointer_data()
{
    QTest::addColumn<QPoint>("pointer");
    QTest::addColumn<int>("delta");
    QTest::newRow("in at the middle") << QPoint(190, 140) << 120;
    QTest::newRow("in near a corner") << QPoint(30, 20) << 120;
    QTest::newRow("in far") << QPoint(300, 250) << 840;
    QTest::newRow("a fine step") << QPoint(300, 250) << 15;
    QTest::newRow("out") << QPoint(120, 200) << -120;
}

void TestViewScale::wheelKeepsThePointUnderThePointer()
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

void TestViewScale::wheelThereAndBackComesHome()
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

void TestViewScale::wheelStopsAtThePicturesOwnSize()
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

void TestViewScale::scaleKeepsItsLimits()
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

void TestViewScale::scalesThatAreNoNumbersAreIgnored()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(2, Middle(*view), false);
    view->Zoom(std::numeric_limits<double>::quiet_NaN(), Middle(*view), false);
    view->Scale(std::numeric_limits<double>::quiet_NaN(), Middle(*view));
    QCOMPARE(view->GetScale(), 2.0);
    view->Zoom(std::numeric_limits<double>::infinity(), Middle(*view), false);
    QCOMPARE(view->GetScale(), 40.0);
}

void TestViewScale::scaleOfTheSameFactorIsSilent()
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

void TestViewScale::shiftWheelScrolls()
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

void TestViewScale::smallCanvasStandsInTheMiddle()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    QCOMPARE(view->GetScale(), 1.0);
    COMPARE_POINTS(view->viewportTransform().map(QPointF(32, 24)), Middle(*view), 2.0);
    view->Scale(3, QPointF(0, 0));
    COMPARE_POINTS(view->viewportTransform().map(QPointF(32, 24)), Middle(*view), 2.0);
}

void TestViewScale::largeCanvasIsShownWhole()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    QVERIFY(view->GetScale() < 0.2);
    const QRectF seen = view->mapToScene(view->viewport()->rect()).boundingRect();
    QVERIFY(seen.contains(QRectF(0, 0, 3000, 2000)));
}

void TestViewScale::untouchedViewKeepsTheWholePictureWhenResized()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    const double scale = view->GetScale();
    view->resize(200, 150);
    QVERIFY(view->GetScale() < scale);
    const QRectF seen = view->mapToScene(view->viewport()->rect()).boundingRect();
    QVERIFY(seen.contains(QRectF(0, 0, 3000, 2000)));
}

void TestViewScale::touchedViewKeepsItsMiddleWhenResized()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(2, QPointF(100, 100), false);
    const QPointF middle = PointAt(*view, Middle(*view));
    view->resize(300, 200);
    QCOMPARE(view->GetScale(), 2.0);
    COMPARE_POINTS(PointAt(*view, Middle(*view)), middle, 1.0);
}

void TestViewScale::fitEnlargesToo()
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

void TestViewScale::zoomIsAbsolute()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(2, Middle(*view), false);
    const QPointF point = PointAt(*view, QPointF(50, 60));
    view->Zoom(4, QPointF(50, 60), true);
    QCOMPARE(view->GetScale(), 4.0);
    COMPARE_POINTS(view->viewportTransform().map(point), QPointF(50, 60), 1.0);
}

void TestViewScale::newCanvasSizeIsShown()
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

void TestViewScale::sceneAreaIsToldOnceAChange()
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

ZK_REGISTER_TEST(tst_viewscale, TestViewScale)
#include "tst_viewscale.moc"
