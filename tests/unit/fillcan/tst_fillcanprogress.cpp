#include "fillcan/FillCanProgress.h"
#include "support/TestRegistry.h"

#include <QLabel>
#include <QTest>

class TestFillCanProgress : public QObject
{
    Q_OBJECT

private slots:
    void itStartsAtTheBeginning();
    void itRunsThroughAndStartsAnew();
    void theTimerSteps();
};

void TestFillCanProgress::itStartsAtTheBeginning()
{
    FillCanProgress progress(nullptr);
    QCOMPARE(progress.GetProgressPos(), 0);
    QCOMPARE(progress.GetProgressMinimum(), 0);
    QCOMPARE(progress.GetProgressMaximum(), 600);
    QCOMPARE(progress.findChild<QLabel*>()->text(), QString("Fill can:"));
    QCOMPARE(progress.size(), progress.sizeHint());
    QCOMPARE(progress.minimumSize(), progress.maximumSize());
}

void TestFillCanProgress::itRunsThroughAndStartsAnew()
{
    FillCanProgress progress(nullptr);
    progress.Step();
    QCOMPARE(progress.GetProgressPos(), 1);
    progress.SetProgressPos(599);
    progress.Step();
    QCOMPARE(progress.GetProgressPos(), 600);
    progress.Step();
    QCOMPARE(progress.GetProgressPos(), 0);
}

void TestFillCanProgress::theTimerSteps()
{
    FillCanProgress progress(nullptr);
    QTRY_VERIFY_WITH_TIMEOUT(progress.GetProgressPos() > 0, 5000);
}

ZK_REGISTER_TEST(tst_fillcanprogress, TestFillCanProgress)

#include "tst_fillcanprogress.moc"
