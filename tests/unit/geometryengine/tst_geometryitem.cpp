#include "SceneFixture.h"

#include "geometryengine/CustomGeometryPaint.h"
#include "geometryengine/PathStrokeItem.h"
#include "geometryengine/PolylineItem.h"
#include "geometryengine/RectangleItem.h"
#include "support/TestRegistry.h"

#include <QApplication>
#include <QBasicTimer>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPixmap>
#include <QProxyStyle>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimerEvent>

Q_DECLARE_METATYPE(QPainterPath)

/// What all items of geometry have in common, and the line along a path.
class TestGeometryItem : public QObject
{
    Q_OBJECT

private slots:
    void eachKindIsMade();
    void aPainterDrawsInPlaceOfThePen();
    void aPainterMovesOnceItIsStarted();
    void whoWantsNoMotionGetsNone();
    void aPainterThatMovesMayLoseItsItem();
    void aPressGoesThrough();
    void theBoundHoldsThePathAndThePen_data();
    void theBoundHoldsThePathAndThePen();
    void aPathThatGrowsStaysInTheBound();
    void aChangedPathRepaintsItsOutlines_data();
    void aChangedPathRepaintsItsOutlines();
    void allViewsAreRepainted();
    void nothingOfAnOldPathRemains();
    void aStrokeIsOnePixelWideAtAnyScale_data();
    void aStrokeIsOnePixelWideAtAnyScale();
    void anOutlineWithoutAChosenPenIsSeenOnBlackToo();
    void anInverseStrokeIsSeenOnAnyGround_data();
    void anInverseStrokeIsSeenOnAnyGround();
    void anInverseStrokePaintedInPiecesLooksTheSame();
};

namespace {
const QPointF Middle = SceneFixture::Middle;

QPainterPath Line(const QPointF& from, const QPointF& to)
{
    QPainterPath path(from);
    path.lineTo(to);
    return path;
}

/// Steps by its own timer.
class MovingPaint : public QObject, public CustomGeometryPaint
{
    Q_OBJECT

public:
    void paint(QPainter* painter, const QPainterPath& path) override
    {
        ++painted;
        painter->setPen(Qt::red);
        painter->drawPath(path);
    }

    void start(QGraphicsItem* item, int milliseconds) override
    {
        started = item;
        interval = milliseconds;
        m_Timer.start(milliseconds, this);
    }

    int painted = 0;
    int interval = 0;
    QGraphicsItem* started = nullptr;

signals:
    void stepped();

protected:
    void timerEvent(QTimerEvent*) override
    {
        started->update();
        emit stepped();
    }

private:
    QBasicTimer m_Timer;
};

/// Tells that the desktop wants no motion.
class CalmStyle : public QProxyStyle
{
public:
    CalmStyle() : QProxyStyle("fusion") {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override
    {
        return hint == SH_Widget_Animation_Duration ? 0
                                                    : QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

PathStrokeItem* AddStroke(SceneFixture& fixture, const QPainterPath& path)
{
    auto* item = new PathStrokeItem;
    item->setPath(path);
    fixture.scene.addItem(item);
    return item;
}
} // namespace

void TestGeometryItem::eachKindIsMade()
{
    const std::unique_ptr<GeometryItem> rectangle(GeometryItem::ItemFactory(1));
    const std::unique_ptr<GeometryItem> stroke(GeometryItem::ItemFactory(2));
    const std::unique_ptr<GeometryItem> polyline(GeometryItem::ItemFactory(4));
    QVERIFY(qobject_cast<RectangleItem*>(rectangle.get()));
    QVERIFY(qobject_cast<PathStrokeItem*>(stroke.get()));
    QVERIFY(qobject_cast<PolylineItem*>(polyline.get()));
    for (const int kind : {-1, 0, 3, 5})
        QVERIFY(!GeometryItem::ItemFactory(kind));
    QVERIFY(stroke->nodes().isEmpty());
}

void TestGeometryItem::aPainterDrawsInPlaceOfThePen()
{
    SceneFixture fixture;
    PathStrokeItem* const item = AddStroke(fixture, Line(Middle, Middle + QPointF(50, 0)));
    auto* const paint = new MovingPaint;
    item->setAnimated(40, 6, paint);
    QCOMPARE(fixture.Shown().pixelColor(fixture.view.mapFromScene(Middle + QPointF(20, 0))), QColor(Qt::red));
    QVERIFY(paint->painted > 0);
    QVERIFY(!paint->started);
    item->setAnimated(40, 6, nullptr);
    QVERIFY(fixture.Shown().pixelColor(fixture.view.mapFromScene(Middle + QPointF(20, 0))) !=
            QColor(Qt::red));
}

void TestGeometryItem::aPainterMovesOnceItIsStarted()
{
    SceneFixture fixture;
    PathStrokeItem* const item = AddStroke(fixture, Line(Middle, Middle + QPointF(50, 0)));
    item->startAnimate();
    auto* const paint = new MovingPaint;
    item->setAnimated(3, 6, paint);
    item->startAnimate();
    QCOMPARE(paint->started, item);
    QCOMPARE(paint->interval, 3);
    QSignalSpy steps(paint, &MovingPaint::stepped);
    paint->painted = 0;
    QTRY_VERIFY(steps.count() >= 3 && paint->painted >= 2);
}

void TestGeometryItem::whoWantsNoMotionGetsNone()
{
    PathStrokeItem item;
    auto* const paint = new MovingPaint;
    item.setAnimated(40, 6, paint);
    QApplication::setStyle(new CalmStyle);
    item.startAnimate();
    QApplication::setStyle("fusion");
    QVERIFY(!paint->started);
    item.startAnimate();
    QVERIFY(paint->started);
}

void TestGeometryItem::aPainterThatMovesMayLoseItsItem()
{
    SceneFixture fixture;
    PathStrokeItem* const item = AddStroke(fixture, Line(Middle, Middle + QPointF(50, 0)));
    const QPointer<MovingPaint> paint = new MovingPaint;
    item->setAnimated(1, 6, paint);
    item->startAnimate();
    delete item;
    QVERIFY(!paint);
}

void TestGeometryItem::aPressGoesThrough()
{
    SceneFixture fixture;
    auto* const below = new QGraphicsRectItem(QRectF(-50, -50, 100, 100));
    below->setPos(Middle);
    below->setFlag(QGraphicsItem::ItemIsSelectable);
    fixture.scene.addItem(below);
    AddStroke(fixture, Line(Middle - QPointF(40, 0), Middle + QPointF(40, 0)));
    fixture.input.ClickInScene(&fixture.view, Middle);
    QVERIFY(below->isSelected());
}

void TestGeometryItem::theBoundHoldsThePathAndThePen_data()
{
    QTest::addColumn<QPainterPath>("path");
    QPainterPath curve(QPointF(0, 0));
    curve.cubicTo(10, 40, 30, -60, 50, 0);
    QTest::newRow("level") << Line({0, 0}, {50, 0});
    QTest::newRow("upright") << Line({0, 0}, {0, 50});
    QTest::newRow("curve") << curve;
}

void TestGeometryItem::theBoundHoldsThePathAndThePen()
{
    QFETCH(QPainterPath, path);
    PathStrokeItem item;
    item.setPath(path);
    item.setPen(QPen(Qt::black, 6));
    QVERIFY(item.boundingRect().contains(path.boundingRect().adjusted(-3, -3, 3, 3)));
    item.setPath(path.translated(1000, 0));
    QVERIFY(item.boundingRect().contains(path.translated(1000, 0).boundingRect().adjusted(-3, -3, 3, 3)));
    item.setPath(QPainterPath());
    QVERIFY(item.boundingRect().width() <= 6);

    // A cosmetic pen and a painter reach as far on the screen as they say.
    SceneFixture fixture(0.05);
    PathStrokeItem* const shown = AddStroke(fixture, path);
    QPen pen(Qt::black, 4);
    pen.setCosmetic(true);
    shown->setPen(pen);
    QVERIFY(shown->boundingRect().contains(path.boundingRect().adjusted(-40, -40, 40, 40)));
    shown->setAnimated(40, 6, new MovingPaint);
    QVERIFY(shown->boundingRect().contains(path.boundingRect().adjusted(-120, -120, 120, 120)));
}

void TestGeometryItem::aPathThatGrowsStaysInTheBound()
{
    PathStrokeItem item;
    for (int length = 1; length < 3000; length += 37) {
        const QPainterPath path = Line({0, 0}, QPointF(length, -length / 3.0));
        item.setPath(path);
        QCOMPARE(item.path(), path);
        QVERIFY(item.boundingRect().contains(path.boundingRect()));
    }
}

void TestGeometryItem::aChangedPathRepaintsItsOutlines_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("0.05") << 0.05;
    QTest::newRow("1") << 1.0;
    QTest::newRow("40") << 40.0;
}

void TestGeometryItem::aChangedPathRepaintsItsOutlines()
{
    QFETCH(double, scale);
    SceneFixture fixture(scale);
    fixture.view.setViewportUpdateMode(QGraphicsView::MinimalViewportUpdate);
    const auto at = [&](double x, double y) { return fixture.Beside(Middle, {x, y}); };
    PathStrokeItem* const item = AddStroke(fixture, Line(at(-180, -130), at(0, 0)));
    item->setPath(Line(at(-180, -130), at(170, 130)));
    QCoreApplication::processEvents();

    PaintedRegion painted(fixture.view.viewport());
    item->setPath(Line(at(-180, -130), at(170, 90)));
    QTRY_VERIFY(!painted.region.isEmpty());
    for (const QPointF& pixels : {QPointF(160, 120), QPointF(160, 85), QPointF(-180, -130)})
        QVERIFY(painted.region.contains(fixture.view.mapFromScene(at(pixels.x(), pixels.y()))));
    // The rest of the rectangle round the lines stays.
    QVERIFY(!painted.region.contains(fixture.view.mapFromScene(at(160, -120))));
    QVERIFY(!painted.region.contains(fixture.view.mapFromScene(at(-160, 120))));
    QVERIFY(!painted.region.contains(fixture.view.mapFromScene(at(60, -60))));
}

void TestGeometryItem::allViewsAreRepainted()
{
    SceneFixture fixture;
    PathStrokeItem* const item = AddStroke(fixture, Line(Middle, Middle + QPointF(100, 100)));
    QGraphicsView other(&fixture.scene);
    other.setGeometry(420, 0, 200, 200);
    other.centerOn(Middle);
    other.show();
    QVERIFY(QTest::qWaitForWindowExposed(&other));
    QCoreApplication::processEvents();
    PaintedRegion first(fixture.view.viewport());
    PaintedRegion second(other.viewport());
    item->setPath(Line(Middle, Middle + QPointF(90, 50)));
    QTRY_VERIFY(!first.region.isEmpty() && !second.region.isEmpty());
    QVERIFY(second.region.contains(other.mapFromScene(Middle + QPointF(45, 25))));
}

void TestGeometryItem::nothingOfAnOldPathRemains()
{
    SceneFixture fixture;
    fixture.view.setBackgroundBrush(Qt::white);
    PathStrokeItem* const item = AddStroke(fixture, QPainterPath());
    item->useInverseColor(true);
    const QImage blank = fixture.Shown().convertToFormat(QImage::Format_RGB32);
    for (int turn = 0; turn < 40; ++turn) {
        const QPointF end = Middle + QPointF((turn * 37) % 180 - 90, (turn * 53) % 140 - 70);
        item->setPath(Line(Middle, end));
        QCoreApplication::processEvents();
    }
    // After many partial repaints the window shows what painting it at once gives.
    const auto onScreen = [&] {
        QPixmap window = QGuiApplication::primaryScreen()->grabWindow(fixture.view.winId());
        return window.toImage().convertToFormat(QImage::Format_RGB32);
    };
    QCOMPARE(onScreen(), fixture.Shown().convertToFormat(QImage::Format_RGB32));
    QVERIFY(onScreen() != blank);
    item->setPath(QPainterPath());
    QCoreApplication::processEvents();
    QCOMPARE(onScreen(), blank);
}

void TestGeometryItem::aStrokeIsOnePixelWideAtAnyScale_data()
{
    aChangedPathRepaintsItsOutlines_data();
}

void TestGeometryItem::aStrokeIsOnePixelWideAtAnyScale()
{
    QFETCH(double, scale);
    for (const bool inverse : {false, true}) {
        SceneFixture fixture(scale);
        fixture.view.setBackgroundBrush(Qt::white);
        const QPointF from = fixture.Beside(Middle, {0.5, -100});
        const QPointF to = fixture.Beside(Middle, {0.5, 100});
        PathStrokeItem* const item = AddStroke(fixture, Line(from, to));
        item->useInverseColor(inverse);
        for (const int ratio : {1, 2}) {
            const QImage shown = fixture.ShownAtRatio(ratio);
            int ink = 0;
            for (int x = 0; x < shown.width(); ++x)
                ink += 255 - qGray(shown.pixel(x, 150 * ratio));
            QVERIFY2(qAbs(ink - 255 * ratio) <= 3, qPrintable(QString::number(ink)));
        }
    }
}

void TestGeometryItem::anOutlineWithoutAChosenPenIsSeenOnBlackToo()
{
    SceneFixture fixture(0.5);
    fixture.view.setBackgroundBrush(Qt::black);
    PathStrokeItem* const item = AddStroke(fixture, Line(Middle, Middle + QPointF(200, 0)));
    const QPoint on = fixture.view.mapFromScene(Middle + QPointF(50, 0));
    const auto brightest = [&] {
        const QImage shown = fixture.Shown();
        int bright = 0;
        for (int y = on.y() - 4; y <= on.y() + 4; ++y)
            bright = qMax(bright, qGray(shown.pixel(on.x(), y)));
        return bright;
    };
    QVERIFY(brightest() > 150);
    item->setPen(item->pen());
    QCOMPARE(brightest(), 0);
}

void TestGeometryItem::anInverseStrokeIsSeenOnAnyGround_data()
{
    QTest::addColumn<QColor>("ground");
    QTest::newRow("white") << QColor(Qt::white);
    QTest::newRow("black") << QColor(Qt::black);
    QTest::newRow("middle gray") << QColor(128, 128, 128);
    QTest::newRow("sky") << QColor(120, 150, 235);
}

void TestGeometryItem::anInverseStrokeIsSeenOnAnyGround()
{
    QFETCH(QColor, ground);
    SceneFixture fixture(3);
    fixture.view.setBackgroundBrush(ground);
    PathStrokeItem* const item =
        AddStroke(fixture, Line(fixture.Beside(Middle, {-150, 0.5}), fixture.Beside(Middle, {150, 0.5})));
    item->useInverseColor(true);
    const QImage shown = fixture.Shown();
    int difference = 0;
    const QPoint middle = fixture.view.mapFromScene(Middle);
    for (int y = middle.y() - 2; y <= middle.y() + 2; ++y)
        difference = qMax(difference, qAbs(qGray(shown.pixel(middle.x(), y)) - qGray(ground.rgb())));
    QVERIFY2(difference >= 94, qPrintable(QString::number(difference)));
}

void TestGeometryItem::anInverseStrokePaintedInPiecesLooksTheSame()
{
    SceneFixture fixture;
    QImage ground(400, 300, QImage::Format_RGB32);
    for (int y = 0; y < ground.height(); ++y) {
        for (int x = 0; x < ground.width(); ++x)
            ground.setPixel(x, y, qRgb(x * 255 / 400, (x * y) % 256, y * 255 / 300));
    }
    QGraphicsItem* const picture = fixture.scene.addPixmap(QPixmap::fromImage(ground));
    picture->setPos(Middle - QPointF(200, 150));
    PathStrokeItem* const item =
        AddStroke(fixture, Line(Middle - QPointF(170, 100), Middle + QPointF(180, 130)));
    item->useInverseColor(true);
    const QImage whole = fixture.Shown();

    QImage pieces(fixture.view.viewport()->size(), QImage::Format_RGB32);
    constexpr int side = 50;
    for (int y = 0; y < pieces.height(); y += side) {
        for (int x = 0; x < pieces.width(); x += side)
            fixture.view.viewport()->render(&pieces, {x, y}, QRegion(x, y, side, side));
    }
    QCOMPARE(pieces.convertToFormat(QImage::Format_RGB32), whole.convertToFormat(QImage::Format_RGB32));
}

ZK_REGISTER_TEST(tst_geometryitem, TestGeometryItem)

#include "tst_geometryitem.moc"
