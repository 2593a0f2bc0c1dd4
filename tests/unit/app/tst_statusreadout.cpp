#include "app/StatusReadout.h"
#include "image/LXImage.h"
#include "image/TileStore.h"
#include "support/TestRegistry.h"

#include <QLabel>
#include <QTest>

class TestStatusReadout : public QObject
{
    Q_OBJECT

private slots:
    void theMemoryTellsWhatIsHeldAndWhatLiesOnDisk();
};

/// Noise of 3 MB beyond a budget of 2 MB.
void TestStatusReadout::theMemoryTellsWhatIsHeldAndWhatLiesOnDisk()
{
    TileStore& store = TileStore::Main();
    const qint64 budget = store.MemoryBudget();
    StatusReadout readout;
    const auto* const label = readout.findChild<QLabel*>(QStringLiteral("memoryReadout"));
    QVERIFY(label);
    {
        store.SetMemoryBudget(2 * 1024 * 1024);
        LXImage32 image(128 * 48, 128);
        for (int column = 0; column < 48; ++column) {
            const auto tile = image.WriteTile(column, 0);
            for (int i = 0; i < 128 * 128; ++i) {
                tile.Pixels()[i] = LXRGBA32i(static_cast<quint32>(i) * 2654435761U + quint32(column));
            }
        }
        readout.SetView(nullptr);
        QCOMPARE(label->text(), QStringLiteral("4 MB"));
        QVERIFY2(label->toolTip().contains(QStringLiteral("2 MB held, at most 2 MB; ")),
                 qPrintable(label->toolTip()));
        QVERIFY(!label->toolTip().contains(QStringLiteral("; 0 MB on disk")));
    }
    store.SetMemoryBudget(budget);
    readout.SetView(nullptr);
    QCOMPARE(label->text(), QString());
}

ZK_REGISTER_TEST(tst_statusreadout, TestStatusReadout)
#include "tst_statusreadout.moc"
