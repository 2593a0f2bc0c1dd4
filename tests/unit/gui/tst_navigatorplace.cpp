#include "gui/NavigatorPlace.h"
#include "support/TestRegistry.h"

#include <QTest>

/// Where a whole canvas and the frame of a view stand in a small widget.
class TestNavigatorPlace : public QObject
{
    Q_OBJECT

private slots:
    void theCanvasKeepsItsProportions_data();
    void theCanvasKeepsItsProportions();
    void pointsComeBackFromTheDocument();
    void theLevelHasAPixelForEachDevicePixel_data();
    void theLevelHasAPixelForEachDevicePixel();
    void theFrameEndsWithTheCanvas();
    void aTinyFrameStaysLargeEnoughToBeTaken();
    void withoutAPictureThereIsNoFrame();
    void theViewStaysOnTheCanvas_data();
    void theViewStaysOnTheCanvas();
};

void TestNavigatorPlace::theCanvasKeepsItsProportions_data()
{
    QTest::addColumn<QSize>("canvas");
    QTest::addColumn<QRect>("picture");
    QTest::newRow("wide") << QSize(400, 200) << QRect(10, 35, 100, 50);
    QTest::newRow("high") << QSize(200, 400) << QRect(35, 10, 50, 100);
    QTest::newRow("small, enlarged") << QSize(4, 2) << QRect(10, 35, 100, 50);
    QTest::newRow("one pixel") << QSize(1, 1) << QRect(10, 10, 100, 100);
    QTest::newRow("a line") << QSize(300000, 1) << QRect(10, 59, 100, 1);
    QTest::newRow("none") << QSize(0, 0) << QRect();
}

void TestNavigatorPlace::theCanvasKeepsItsProportions()
{
    QFETCH(const QSize, canvas);
    QFETCH(const QRect, picture);
    QCOMPARE(NavigatorPlace(canvas, QRect(10, 10, 100, 100)).Picture(), picture);
}

void TestNavigatorPlace::pointsComeBackFromTheDocument()
{
    const NavigatorPlace place({400, 200}, QRect(10, 10, 100, 100));
    QCOMPARE(place.ToDocument({10, 35}), QPointF(0, 0));
    QCOMPARE(place.ToDocument({60, 60}), QPointF(200, 100));
    QCOMPARE(place.ToWidget(QRectF(0, 0, 400, 200)), QRectF(10, 35, 100, 50));
    QCOMPARE(place.ToWidget(QRectF(-40, 100, 80, 20)), QRectF(0, 60, 20, 5));
}

void TestNavigatorPlace::theLevelHasAPixelForEachDevicePixel_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<double>("ratio");
    QTest::addColumn<int>("level");
    QTest::newRow("enlarged") << 50 << 1.0 << 0;
    QTest::newRow("a bit smaller") << 190 << 1.0 << 0;
    QTest::newRow("half") << 200 << 1.0 << 1;
    QTest::newRow("half, on a fine screen") << 200 << 2.0 << 0;
    QTest::newRow("a tenth") << 1000 << 1.0 << 3;
    QTest::newRow("as small as tiles get") << 300000 << 1.0 << 7;
}

void TestNavigatorPlace::theLevelHasAPixelForEachDevicePixel()
{
    QFETCH(const int, side);
    QFETCH(const double, ratio);
    QFETCH(const int, level);
    QCOMPARE(NavigatorPlace({side, side}, QRect(0, 0, 100, 100)).Level(ratio), level);
}

void TestNavigatorPlace::theFrameEndsWithTheCanvas()
{
    const NavigatorPlace place({400, 200}, QRect(10, 10, 100, 100));
    QCOMPARE(place.Frame(QRectF(40, 40, 200, 80)), QRect(20, 45, 50, 20));
    QCOMPARE(place.Frame(QRectF(-500, -500, 2000, 2000)), place.Picture());
    QCOMPARE(place.Frame(QRectF(200, 100, 2000, 2000)), QRect(60, 60, 50, 25));
}

void TestNavigatorPlace::aTinyFrameStaysLargeEnoughToBeTaken()
{
    const NavigatorPlace place({40000, 20000}, QRect(10, 10, 100, 100));
    const QRect frame = place.Frame(QRectF(20000, 10000, 50, 30));
    QCOMPARE(frame.size(), QSize(8, 8));
    QVERIFY(frame.contains(60, 60));
}

void TestNavigatorPlace::withoutAPictureThereIsNoFrame()
{
    QVERIFY(NavigatorPlace().Frame(QRectF(0, 0, 10, 10)).isEmpty());
    const NavigatorPlace place({400, 200}, QRect(10, 10, 100, 100));
    QVERIFY(place.Frame(QRectF()).isEmpty());
    QVERIFY(place.Frame(QRectF(500, 0, 20, 20)).isEmpty());
}

void TestNavigatorPlace::theViewStaysOnTheCanvas_data()
{
    QTest::addColumn<QPointF>("wanted");
    QTest::addColumn<QSizeF>("visible");
    QTest::addColumn<QPoint>("center");
    QTest::newRow("inside") << QPointF(150.2, 90.8) << QSizeF(100, 50) << QPoint(150, 91);
    QTest::newRow("left and top") << QPointF(-7, 3) << QSizeF(100, 50) << QPoint(50, 25);
    QTest::newRow("right and bottom") << QPointF(399, 900) << QSizeF(100, 50) << QPoint(350, 175);
    QTest::newRow("wider than the canvas") << QPointF(20, 30) << QSizeF(500, 50) << QPoint(200, 30);
    QTest::newRow("larger than the canvas") << QPointF(20, 30) << QSizeF(500, 500) << QPoint(200, 100);
    QTest::newRow("a point") << QPointF(-3, 300) << QSizeF() << QPoint(0, 199);
}

void TestNavigatorPlace::theViewStaysOnTheCanvas()
{
    QFETCH(const QPointF, wanted);
    QFETCH(const QSizeF, visible);
    QFETCH(const QPoint, center);
    QCOMPARE(NavigatorPlace({400, 200}, QRect(0, 0, 100, 100)).NearestCenter(wanted, visible), center);
}

ZK_REGISTER_TEST(tst_navigatorplace, TestNavigatorPlace)
#include "tst_navigatorplace.moc"
