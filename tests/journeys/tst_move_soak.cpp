#include "MoveSoak.h"

#include "image/LXTileManager.h"
#include "support/TestRegistry.h"

#include <QTest>

/// The move tool in random use. `ZK_SOAK_ACTS=10000` makes it long; 500 acts otherwise.
class TestMoveSoak : public QObject
{
    Q_OBJECT

private slots:
    void randomUseLeavesNothingBehindAndCanBeUndone_data();
    void randomUseLeavesNothingBehindAndCanBeUndone();
};

void TestMoveSoak::randomUseLeavesNothingBehindAndCanBeUndone_data()
{
    QTest::addColumn<unsigned int>("seed");
    for (const unsigned int seed : {1u, 20u}) {
        QTest::newRow(QByteArray::number(seed)) << seed;
    }
}

void TestMoveSoak::randomUseLeavesNothingBehindAndCanBeUndone()
{
    QFETCH(unsigned int, seed);
    const int wanted = qEnvironmentVariableIntValue("ZK_SOAK_ACTS");
    const int acts = wanted > 0 ? wanted : 500;
    const qint64 tiles = LXTileManager::Instance().LiveTileCount();
    {
        MoveSoak soak(seed);
        QStringList last;
        for (int act = 0; act < acts; ++act) {
            if (soak.IsHistoryFull()) QCOMPARE(soak.UndoEverything(), QString());
            last.append(soak.Act());
            const QString fault = soak.Fault();
            QVERIFY2(fault.isEmpty(),
                     qPrintable(QString("act %1: %2; the last ones: %3")
                                    .arg(act)
                                    .arg(fault, QStringList(last.mid(last.size() - 8)).join("; "))));
        }
        QCOMPARE(soak.UndoEverything(), QString());
        qInfo("%d acts, %d of them with something afloat, %d steps", acts, soak.CountFloats(),
              soak.CountSteps());
        // It has really done something.
        QVERIFY(soak.CountFloats() > acts / 20);
        QVERIFY(soak.CountSteps() > acts / 20);
    }
    QTRY_COMPARE(qint64(LXTileManager::Instance().LiveTileCount()), tiles);
}

ZK_REGISTER_TEST(tst_move_soak, TestMoveSoak)

#include "tst_move_soak.moc"
