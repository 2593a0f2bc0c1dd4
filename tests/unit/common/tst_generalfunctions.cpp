#include "common/ZKGeneralFunctions.h"
#include "support/TestRegistry.h"

#include <QLineF>
#include <QRegularExpression>
#include <QTest>

class TestGeneralFunctions : public QObject
{
    Q_OBJECT

private slots:
    void snapDirectionTakesTheSectorOfTheAngle_data();
    void snapDirectionTakesTheSectorOfTheAngle();
    void anAngleOnABoundTakesTheSectorBehindIt_data();
    void anAngleOnABoundTakesTheSectorBehindIt();
    void snapDirectionOfEqualPointsIsToTheRight();
    void projectionIsTheFootOfThePerpendicular();
    void projectionDoesNotNeedADirectionOfLengthOne();
    void projectionAlongNoDirectionIsReportedAndGivesThePoint();
    void aTinyDirectionIsStillADirection();
};

void TestGeneralFunctions::snapDirectionTakesTheSectorOfTheAngle_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<QPointF>("direction");
    const auto row = [](double angle, double x, double y) {
        QTest::addRow("angle %.1f", angle) << angle << QPointF(x, y);
    };
    row(0, 1, 0);
    row(22.4, 1, 0);
    row(22.6, 1, -1);
    row(67.4, 1, -1);
    row(67.6, 0, -1);
    row(112.4, 0, -1);
    row(112.6, -1, -1);
    row(147.4, -1, -1);
    row(147.6, -1, 0);
    row(157.0, -1, 0);
    row(180, -1, 0);
    row(-22.4, 1, 0);
    row(-22.6, 1, 1);
    row(-67.4, 1, 1);
    row(-67.6, 0, 1);
    row(-112.4, 0, 1);
    row(-112.6, -1, 1);
    row(-147.4, -1, 1);
    row(-147.6, -1, 0);
    row(-157.0, -1, 0);
}

void TestGeneralFunctions::snapDirectionTakesTheSectorOfTheAngle()
{
    QFETCH(double, angle);
    const QPointF from(30, 40);
    QTEST(ZKGeneralFunctions::SnapDirection(from, from + QLineF::fromPolar(1000, angle).p2()), "direction");
}

void TestGeneralFunctions::anAngleOnABoundTakesTheSectorBehindIt_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<QPointF>("direction");
    const auto row = [](double angle, double x, double y) {
        QTest::addRow("angle %.1f", angle) << angle << QPointF(x, y);
    };
    row(22.5, 1, -1);
    row(67.5, 0, -1);
    row(112.5, -1, -1);
    row(147.5, -1, 0);
    row(-22.5, 1, 1);
    row(-67.5, 0, 1);
    row(-112.5, -1, 1);
    row(-147.5, -1, 0);
}

void TestGeneralFunctions::anAngleOnABoundTakesTheSectorBehindIt()
{
    QFETCH(double, angle);
    const double unsignedAngle = angle < 0 ? angle + 360 : angle;
    // Most lengths miss the angle by a rounding.
    QPointF end;
    for (int length = 1; length < 10000 && end.isNull(); ++length) {
        const QLineF line = QLineF::fromPolar(length, angle);
        if (QLineF({}, line.p2()).angle() - unsignedAngle == 0.0) end = line.p2();
    }
    QVERIFY2(!end.isNull(), "no line has exactly this angle");
    QTEST(ZKGeneralFunctions::SnapDirection({}, end), "direction");
}

void TestGeneralFunctions::snapDirectionOfEqualPointsIsToTheRight()
{
    QCOMPARE(ZKGeneralFunctions::SnapDirection({7, 7}, {7, 7}), QPointF(1, 0));
}

void TestGeneralFunctions::projectionIsTheFootOfThePerpendicular()
{
    QCOMPARE(ZKGeneralFunctions::ProjectPointOnLine({5, 9}, {1, 0}, {0, 2}), QPointF(5, 2));
    QCOMPARE(ZKGeneralFunctions::ProjectPointOnLine({4, 0}, {1, 1}, {0, 0}), QPointF(2, 2));
}

void TestGeneralFunctions::projectionDoesNotNeedADirectionOfLengthOne()
{
    QCOMPARE(ZKGeneralFunctions::ProjectPointOnLine({4, 0}, {-30, -30}, {0, 0}), QPointF(2, 2));
}

void TestGeneralFunctions::projectionAlongNoDirectionIsReportedAndGivesThePoint()
{
    QTest::ignoreMessage(
        QtDebugMsg,
        QRegularExpression("Line=[0-9]+, file=\"src/common/ZKGeneralFunctions\"\\. Arithmetic error\\.$"));
    QCOMPARE(ZKGeneralFunctions::ProjectPointOnLine({3, 4}, {0, 0}, {9, 9}), QPointF(3, 4));
}

void TestGeneralFunctions::aTinyDirectionIsStillADirection()
{
    QCOMPARE(ZKGeneralFunctions::ProjectPointOnLine({5, 9}, {1e-20, 0}, {0, 2}), QPointF(5, 2));
}

ZK_REGISTER_TEST(tst_generalfunctions, TestGeneralFunctions)

#include "tst_generalfunctions.moc"
