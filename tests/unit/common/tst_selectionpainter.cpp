#include "common/OutlineRegion.h"
#include "common/ZKSelectionPainter.h"
#include "geometryengine/ControlNode.h"
#include "geometryengine/RectangleItem.h"
#include "support/TestRegistry.h"
#include "support/ViewFixture.h"

#include <QAbstractEventDispatcher>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QPen>
#include <QPixmap>
#include <QScreen>
#include <QTest>

class TestSelectionPainter : public QObject
{
    Q_OBJECT

private slots:
    void aLineHasDashesOfFourScreenPixelsAtAnyZoom_data();
    void aLineHasDashesOfFourScreenPixelsAtAnyZoom();
    void aLineIsAScreenPixelWideOnAScreenOfMorePixels();
    void anEmptyPathDrawsNothing();
    void eachStepMovesTheDashesByOnePixel();
    void otherTimersMoveNothing();
    void anIdleOutlineRepaintsOnlyItsOwnPixels();
    void aMovedViewRepaintsTheOutlineWhereItIsNow();
    void theRegionHoldsTheLineAndLittleElse_data();
    void theRegionHoldsTheLineAndLittleElse();
    void theRegionEndsAtTheClip();
    void anItemWithoutAPainterDrawsWithItsPen();
    void theItemOwnsItsPainter();
    void aRubberBandLeavesNothingBehind_data();
    void aRubberBandLeavesNothingBehind();
};

namespace {
/// An item whose path a test says.
class PathItem : public GeometryItem
{
public:
    explicit PathItem(const QPainterPath& path) { setPath(path); }
};

/// A painter whose timer is under the test's hand.
class SteppedPainter : public ZKSelectionPainter
{
public:
    void Step() { StepAs(QAbstractEventDispatcher::instance()->registeredTimers(this).first().timerId); }

    void StepAs(int id)
    {
        QTimerEvent event(id);
        timerEvent(&event);
    }
};

QPainterPath LineAlong(const QPointF& from, const QPointF& to)
{
    QPainterPath path(from);
    path.lineTo(to);
    return path;
}

QPainterPath RectPath(const QRectF& rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

QImage Painted(ZKSelectionPainter& ants, const QPainterPath& path, double scale = 1)
{
    QImage image(64, 16, QImage::Format_RGB32);
    image.fill(Qt::green);
    QPainter painter(&image);
    painter.scale(scale, scale);
    ants.paint(&painter, path);
    return image;
}

/// What the window shows, after all the partial repaints that led there.
QImage OnScreen(const ZKDocumentView& view)
{
    const QWidget* const window = view.window();
    const QImage shown = QGuiApplication::primaryScreen()->grabWindow(window->winId()).toImage();
    const QPoint corner = view.viewport()->mapTo(window, QPoint());
    return shown.copy(QRect(corner, view.viewport()->size())).convertToFormat(QImage::Format_RGB32);
}

// Row 8 of a picture: 'b' black, 'w' white, '.' untouched.
QString Row(const QImage& image)
{
    QString row;
    for (int x = 0; x < image.width(); ++x) {
        const QRgb pixel = image.pixel(x, 8);
        row += pixel == qRgb(0, 0, 0) ? 'b' : pixel == qRgb(255, 255, 255) ? 'w' : '.';
    }
    return row;
}

/// Collects what a viewport is asked to paint.
class PaintLog : public QObject
{
public:
    explicit PaintLog(QWidget* viewport) { viewport->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            region += static_cast<QPaintEvent*>(event)->region();
            ++count;
        }
        return false;
    }

    QRegion region;
    int count = 0;
};

struct ShownOutline
{
    explicit ShownOutline(const QPainterPath& path, int interval = 1)
    {
        scene.setSceneRect(0, 0, 300, 200);
        item = new PathItem(path);
        scene.addItem(item);
        view.setScene(&scene);
        view.setFrameStyle(QFrame::NoFrame);
        view.resize(300, 200);
        item->setAnimated(interval, 6, new ZKSelectionPainter);
        view.show();
        [[maybe_unused]] const bool shown = QTest::qWaitForWindowExposed(&view);
    }

    QGraphicsScene scene;
    QGraphicsView view;
    PathItem* item;
};
} // namespace

void TestSelectionPainter::aLineHasDashesOfFourScreenPixelsAtAnyZoom_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("smaller") << 0.5;
    QTest::newRow("as it is") << 1.0;
    QTest::newRow("larger") << 4.0;
}

void TestSelectionPainter::aLineHasDashesOfFourScreenPixelsAtAnyZoom()
{
    QFETCH(double, scale);
    ZKSelectionPainter ants;
    const QPainterPath path = LineAlong(QPointF(8, 8.5) / scale, QPointF(56, 8.5) / scale);
    const QString row = Row(Painted(ants, path, scale)).mid(12, 40);
    // Row 8 of the pattern is row 0: four black, four white, from x = 0 on.
    QCOMPARE(row, QString("wwwwbbbbwwwwbbbbwwwwbbbbwwwwbbbbwwwwbbbb"));
}

void TestSelectionPainter::aLineIsAScreenPixelWideOnAScreenOfMorePixels()
{
    ZKSelectionPainter ants;
    for (const double scale : {1.0, 4.0}) {
        QImage image(128, 32, QImage::Format_RGB32);
        image.setDevicePixelRatio(2);
        image.fill(Qt::green);
        QPainter painter(&image);
        painter.scale(scale, scale);
        ants.paint(&painter, LineAlong(QPointF(8, 8.5) / scale, QPointF(56, 8.5) / scale));
        painter.end();
        for (int y = 0; y < image.height(); ++y)
            QCOMPARE(image.pixelColor(64, y) != QColor(Qt::green), y == 16 || y == 17);
        // Four screen pixels of black, then four of white.
        for (int x = 24; x < 104; ++x)
            QCOMPARE(image.pixelColor(x, 17).lightness() == 0, (x / 2) % 8 < 4);
    }
}

void TestSelectionPainter::anEmptyPathDrawsNothing()
{
    ZKSelectionPainter ants;
    QCOMPARE(Row(Painted(ants, {})), QString(64, '.'));
}

void TestSelectionPainter::eachStepMovesTheDashesByOnePixel()
{
    QGraphicsScene scene;
    auto* item = new PathItem(LineAlong({8, 8.5}, {56, 8.5}));
    scene.addItem(item);
    auto* ants = new SteppedPainter;
    item->setAnimated(100000, 6, ants);
    item->startAnimate();
    const QString before = Row(Painted(*ants, item->path())).mid(12, 40);
    ants->Step();
    // Row 0 has what was row 7, which is a pixel ahead of row 8.
    const QString after = Row(Painted(*ants, item->path())).mid(12, 40);
    QCOMPARE(after, before.mid(7, 1) + before.left(39));
    for (int step = 0; step < 7; ++step) {
        ants->Step();
    }
    QCOMPARE(Row(Painted(*ants, item->path())).mid(12, 40), before);
}

void TestSelectionPainter::otherTimersMoveNothing()
{
    SteppedPainter ants;
    const QPainterPath path = LineAlong({8, 8.5}, {56, 8.5});
    const QImage before = Painted(ants, path);
    ants.StepAs(12345678);
    QCOMPARE(Painted(ants, path), before);
}

void TestSelectionPainter::anIdleOutlineRepaintsOnlyItsOwnPixels()
{
    ShownOutline shown(RectPath({40, 40, 200, 100}));
    QTRY_VERIFY(shown.item->scene());
    QCoreApplication::processEvents();
    PaintLog log(shown.view.viewport());
    shown.item->startAnimate();
    QTRY_VERIFY(log.count >= 9);

    const QTransform toView = shown.view.viewportTransform();
    const QRect outline = toView.mapRect(QRectF(40, 40, 200, 100)).toRect();
    const QRegion band = QRegion(outline.adjusted(-4, -4, 4, 4)) - outline.adjusted(5, 5, -5, -5);
    QVERIFY(!log.region.isEmpty());
    QVERIFY((log.region - band).isEmpty());
    // All of the outline: its corners and the middles of its sides.
    for (const QPoint& point : {outline.topLeft(), outline.bottomRight(), outline.center()}) {
        QVERIFY(log.region.contains(QPoint(outline.left(), point.y())));
        QVERIFY(log.region.contains(QPoint(point.x(), outline.top())));
    }
}

void TestSelectionPainter::aMovedViewRepaintsTheOutlineWhereItIsNow()
{
    ShownOutline shown(RectPath({40, 40, 60, 60}));
    shown.item->startAnimate();
    shown.view.scale(2, 2);
    shown.view.centerOn(70, 70);
    QCoreApplication::processEvents();
    PaintLog log(shown.view.viewport());
    const QRect outline = shown.view.viewportTransform().mapRect(QRectF(40, 40, 60, 60)).toRect();
    QTRY_VERIFY(log.region.contains(outline.bottomRight()));
    QVERIFY(!log.region.contains(outline.center()));
}

void TestSelectionPainter::theRegionHoldsTheLineAndLittleElse_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::newRow("across") << QPointF(10, 20) << QPointF(180, 20);
    QTest::newRow("down") << QPointF(10, 20) << QPointF(10, 90);
    QTest::newRow("slanting") << QPointF(190, 5) << QPointF(5, 95);
    QTest::newRow("a dot") << QPointF(50, 50) << QPointF(50.2, 50);
    QTest::newRow("from far away") << QPointF(-1e7, -1e7) << QPointF(1e7, 1e7);
}

void TestSelectionPainter::theRegionHoldsTheLineAndLittleElse()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    const QRect clip(0, 0, 200, 100);
    const QRegion region = OutlineRegion(LineAlong(from, to), clip);
    const QLineF line(from, to);
    for (int y = 0; y < clip.height(); ++y) {
        for (int x = 0; x < clip.width(); ++x) {
            // The distance to the line, by the nearest point on it.
            const QPointF point(x + 0.5, y + 0.5);
            const QPointF along = to - from;
            const double t = QPointF::dotProduct(point - from, along) / QPointF::dotProduct(along, along);
            const double distance = QLineF(point, line.pointAt(qBound(0.0, t, 1.0))).length();
            if (distance <= 1)
                QVERIFY2(region.contains(QPoint(x, y)), qPrintable(QString("%1 %2").arg(x).arg(y)));
            if (distance > 16)
                QVERIFY2(!region.contains(QPoint(x, y)), qPrintable(QString("%1 %2").arg(x).arg(y)));
        }
    }
}

void TestSelectionPainter::theRegionEndsAtTheClip()
{
    QVERIFY(OutlineRegion(LineAlong({-50, -9}, {500, -9}), {0, 0, 200, 100}).isEmpty());
    QVERIFY(OutlineRegion({}, {0, 0, 200, 100}).isEmpty());
    const QRegion region = OutlineRegion(LineAlong({-50, 5}, {500, 5}), {0, 0, 200, 100});
    QCOMPARE(region.boundingRect().left(), 0);
    QCOMPARE(region.boundingRect().right(), 199);
}

void TestSelectionPainter::anItemWithoutAPainterDrawsWithItsPen()
{
    PathItem item(LineAlong({8, 8.5}, {56, 8.5}));
    item.setPen(QPen(Qt::white, 3));
    QImage image(64, 16, QImage::Format_RGB32);
    image.fill(Qt::green);
    QPainter painter(&image);
    item.paint(&painter, nullptr, nullptr);
    QCOMPARE(Row(image).mid(12, 40), QString(40, 'w'));
    QVERIFY(item.boundingRect().contains(QRectF(8, 7, 48, 3)));
    item.startAnimate();
}

void TestSelectionPainter::theItemOwnsItsPainter()
{
    auto item = std::make_unique<PathItem>(RectPath({0, 0, 9, 9}));
    QPointer<ZKSelectionPainter> first = new ZKSelectionPainter;
    QPointer<ZKSelectionPainter> second = new ZKSelectionPainter;
    item->setAnimated(40, 6, first);
    item->setAnimated(40, 6, second);
    QVERIFY(!first);
    item.reset();
    QVERIFY(!second);
}

void TestSelectionPainter::aRubberBandLeavesNothingBehind_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("smallest") << ZKDocumentView::MinScale;
    QTest::newRow("as it is") << 1.0;
    QTest::newRow("largest") << ZKDocumentView::MaxScale;
}

/// As a tool draws one over a picture: its lower right corner goes with the pointer, wherever that is.
void TestSelectionPainter::aRubberBandLeavesNothingBehind()
{
    QFETCH(double, scale);
    ViewFixture fixture(600, 400, QColor(120, 150, 235));
    ZKDocumentView* const view = fixture.View();
    const QPointF middle = QPointF(view->viewport()->width(), view->viewport()->height()) / 2;
    view->Zoom(scale, middle, false);
    QCoreApplication::processEvents();
    const QImage bare = OnScreen(*view);
    const auto at = [&](double x, double y) {
        return view->viewportTransform().inverted().map(middle + QPointF(x, y));
    };
    auto* const band = new RectangleItem;
    band->setRect({at(0, 0), QSizeF()});
    view->scene()->addItem(band);
    band->setPen(QPen(Qt::black, 1.0));
    band->setAnimated(100000, 6, new ZKSelectionPainter);
    band->startAnimate();
    for (const QPointF& away : {QPointF(90, 60), QPointF(91, 59), QPointF(-70, 40), QPointF(-120, -90),
                                QPointF(3, -90), QPointF(120, 80)}) {
        band->nodes().at(2)->setPos(band->mapFromScene(at(away.x(), away.y())));
        QCoreApplication::processEvents();
        QCOMPARE(OnScreen(*view), view->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32));
        QVERIFY(OnScreen(*view) != bare);
    }
    const QRectF drawn = band->mapToScene(band->rect()).boundingRect();
    QCOMPARE(drawn.topLeft(), at(0, 0));
    QCOMPARE(drawn.bottomRight(), at(120, 80));
    band->deleteLater();
    QTRY_COMPARE(OnScreen(*view), bare);
}

ZK_REGISTER_TEST(tst_selectionpainter, TestSelectionPainter)

#include "tst_selectionpainter.moc"
