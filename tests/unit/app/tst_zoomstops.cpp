#include "app/ZoomStops.h"
#include "support/TestRegistry.h"

#include <QTest>

class TestZoomStops : public QObject
{
    Q_OBJECT

private slots:
    void aScaleBetweenStopsGoesToTheNearestInThatDirection();
    void aScaleThatIsAStopIsLeft();
    void theStopsEnd();
};

void TestZoomStops::aScaleBetweenStopsGoesToTheNearestInThatDirection()
{
    QCOMPARE(NextZoomStop(0.8, 1), 1.0);
    QCOMPARE(NextZoomStop(0.8, -1), 0.67);
    QCOMPARE(NextZoomStop(0.01, 1), 0.05);
    QCOMPARE(NextZoomStop(100, -1), 40.0);
}

void TestZoomStops::aScaleThatIsAStopIsLeft()
{
    QCOMPARE(NextZoomStop(1.0, 1), 1.5);
    QCOMPARE(NextZoomStop(1.0, -1), 0.67);
    // What scaling step by step leaves is the same stop.
    QCOMPARE(NextZoomStop(1.0000001, -1), 0.67);
    QCOMPARE(NextZoomStop(0.9999999, 1), 1.5);
}

void TestZoomStops::theStopsEnd()
{
    QCOMPARE(NextZoomStop(40, 1), 40.0);
    QCOMPARE(NextZoomStop(0.05, -1), 0.05);
}

ZK_REGISTER_TEST(tst_zoomstops, TestZoomStops)
#include "tst_zoomstops.moc"
