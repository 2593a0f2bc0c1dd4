#include "movetoolprivate/KeyStep.h"

#include "support/TestRegistry.h"

#include <QTest>

// How far a key moves the selection at each scale of the view.
class TestKeyStep : public QObject
{
    Q_OBJECT

private slots:
    void aStepIsTheSameOnAPictureThatIsShownLarger_data();
    void aStepIsTheSameOnAPictureThatIsShownLarger();
    void aStepGrowsOnAPictureThatIsShownSmaller_data();
    void aStepGrowsOnAPictureThatIsShownSmaller();
    void aScaleOfZeroLeavesTheStep();
};

void TestKeyStep::aStepIsTheSameOnAPictureThatIsShownLarger_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("as it is") << 1.0;
    QTest::newRow("a little larger") << 1.5;
    QTest::newRow("as large as can be") << 40.0;
}

void TestKeyStep::aStepIsTheSameOnAPictureThatIsShownLarger()
{
    QFETCH(double, scale);
    QCOMPARE(KeyStepInDocument(1, scale), 1);
    QCOMPARE(KeyStepInDocument(10, scale), 10);
}

void TestKeyStep::aStepGrowsOnAPictureThatIsShownSmaller_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<int>("small");
    QTest::addColumn<int>("large");
    QTest::newRow("almost as it is") << 0.99 << 1 << 10;
    QTest::newRow("half") << 0.5 << 2 << 20;
    QTest::newRow("0.3: 3.33 and 33.3, cut") << 0.3 << 3 << 33;
    QTest::newRow("as small as can be") << 0.05 << 20 << 200;
}

void TestKeyStep::aStepGrowsOnAPictureThatIsShownSmaller()
{
    QFETCH(double, scale);
    QFETCH(int, small);
    QFETCH(int, large);
    QCOMPARE(KeyStepInDocument(1, scale), small);
    QCOMPARE(KeyStepInDocument(10, scale), large);
}

void TestKeyStep::aScaleOfZeroLeavesTheStep()
{
    QCOMPARE(KeyStepInDocument(10, 0), 10);
}

ZK_REGISTER_TEST(tst_keystep, TestKeyStep)

#include "tst_keystep.moc"
