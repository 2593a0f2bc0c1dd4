#include "gui/LXOperationProgress.h"
#include "gui/LXOperationProgressDlg.h"
#include "gui/LXOperationProgressDlg_p.h"
#include "gui/TimeLeft.h"
#include "support/TestRegistry.h"

#include <QLabel>
#include <QTest>

namespace {
constexpr qint64 Second = 1000;
constexpr qint64 Minute = 60 * Second;
constexpr qint64 Hour = 60 * Minute;

/// Work of a hundred equal steps.
TimeLeft AfterSteps(int steps, qint64 each)
{
    TimeLeft left(0);
    for (int step = 1; step <= steps; ++step)
        left.Note(step * each, step / 100.0);
    return left;
}

/// Ends with the work, whose clock the test turns.
class IdleWork : public LXOperationProgress
{
protected:
    void Run() override {}
};
} // namespace

/// How long work still takes, on a clock that the test turns.
class TestTimeLeft : public QObject
{
    Q_OBJECT

private slots:
    void equalStepsGiveTheTimeOfTheRest();
    void nothingIsToldInTheFirstSeconds();
    void nothingIsToldOfAFewSteps();
    void itCountsDownBetweenSteps();
    void workThatStandsStillIsNotNearlyDone();
    void workThatBeganInTheMiddleCountsFromThere();
    void aShareThatGoesBackBeginsAnew();
    void theWordsAreThoseOfPeople_data();
    void theWordsAreThoseOfPeople();
    void slightlyLongerTimesAreNotTold();

    void theDialogTellsIt();
    void theDialogKeepsItsSize();
    void withoutBeingAskedTheDialogTellsNone();
    void anotherRangeBeginsAnew();
    void anEndlessBarTellsNone();
    void workThatRunsUnderADialogTellsIt();
};

void TestTimeLeft::equalStepsGiveTheTimeOfTheRest()
{
    const TimeLeft left = AfterSteps(20, Second);
    QCOMPARE(left.Estimate(20 * Second), std::optional<qint64>(80 * Second));
    QCOMPARE(AfterSteps(100, Second).Estimate(100 * Second), std::optional<qint64>(0));
}

void TestTimeLeft::nothingIsToldInTheFirstSeconds()
{
    QVERIFY(!AfterSteps(49, 100).Estimate(4900));
    QVERIFY(AfterSteps(50, 100).Estimate(5000));
}

void TestTimeLeft::nothingIsToldOfAFewSteps()
{
    QVERIFY(!AfterSteps(2, 10 * Second).Estimate(25 * Second));
    TimeLeft hardlyBegun(0);
    for (int step = 1; step <= 9; ++step)
        hardlyBegun.Note(step * Second, step / 1000.0);
    QVERIFY(!hardlyBegun.Estimate(9 * Second));
    hardlyBegun.Note(10 * Second, 0.01);
    QVERIFY(hardlyBegun.Estimate(10 * Second));
}

void TestTimeLeft::itCountsDownBetweenSteps()
{
    const TimeLeft left = AfterSteps(10, 10 * Second);
    QCOMPARE(left.Estimate(100 * Second), std::optional<qint64>(900 * Second));
    QCOMPARE(left.Estimate(104 * Second), std::optional<qint64>(896 * Second));
    QCOMPARE(left.Estimate(110 * Second), std::optional<qint64>(890 * Second));
}

void TestTimeLeft::workThatStandsStillIsNotNearlyDone()
{
    const TimeLeft left = AfterSteps(10, Second);
    QCOMPARE(left.Estimate(Hour), std::optional<qint64>(89 * Second));
}

void TestTimeLeft::workThatBeganInTheMiddleCountsFromThere()
{
    TimeLeft left(0);
    left.Note(0, 0.9);
    left.Note(0, 0.5);
    for (int step = 1; step <= 10; ++step)
        left.Note(step * Second, 0.5 + step / 100.0);
    // Ten hundredths in ten seconds; forty are left.
    QCOMPARE(left.Estimate(10 * Second), std::optional<qint64>(40 * Second));
}

void TestTimeLeft::aShareThatGoesBackBeginsAnew()
{
    TimeLeft left = AfterSteps(60, Second);
    left.Note(61 * Second, 0);
    QVERIFY(!left.Estimate(70 * Second));
    for (int step = 1; step <= 10; ++step)
        left.Note((61 + 2 * step) * Second, step / 100.0);
    QCOMPARE(left.Estimate(81 * Second), std::optional<qint64>(180 * Second));
}

void TestTimeLeft::theWordsAreThoseOfPeople_data()
{
    QTest::addColumn<qint64>("milliseconds");
    QTest::addColumn<QString>("words");
    const auto row = [](qint64 milliseconds, const char* words) {
        QTest::addRow("%lld", milliseconds) << milliseconds << QString(words);
    };
    row(0, "A few seconds left");
    row(4999, "A few seconds left");
    row(5 * Second, "About 5 seconds left");
    row(7499, "About 5 seconds left");
    row(7500, "About 10 seconds left");
    row(57 * Second, "About 55 seconds left");
    row(58 * Second, "About a minute left");
    row(89 * Second, "About a minute left");
    row(90 * Second, "About 2 minutes left");
    row(59 * Minute, "About 59 minutes left");
    row(Hour - 1, "About an hour left");
    row(89 * Minute, "About an hour left");
    row(90 * Minute, "About 2 hours left");
}

void TestTimeLeft::theWordsAreThoseOfPeople()
{
    QFETCH(const qint64, milliseconds);
    QFETCH(const QString, words);
    QCOMPARE(TimeLeft::Words(milliseconds), words);
}

void TestTimeLeft::slightlyLongerTimesAreNotTold()
{
    TimeLeft left = AfterSteps(50, Second);
    QCOMPARE(left.Tell(50 * Second), QString("About 50 seconds left"));
    // 51 hundredths in 58 seconds: 56 are left, but that is hardly longer.
    left.Note(58 * Second, 0.51);
    QCOMPARE(left.Tell(58 * Second), QString("About 50 seconds left"));
    // 52 in 78: 72.
    left.Note(78 * Second, 0.52);
    QCOMPARE(left.Tell(78 * Second), QString("About a minute left"));
    left.Note(80 * Second, 0.8);
    QCOMPARE(left.Tell(80 * Second), QString("About 20 seconds left"));
}

namespace {
/// A dialog with a clock that is turned by hand.
class ClockedDialog
{
public:
    explicit ClockedDialog(LXOperationProgressDlg& dialog) : m_Dialog(dialog)
    {
        Insides()->SetClock([this] { return m_Now; });
    }

    LXOperationProgressDlgPrivate* Insides() const { return LXOperationProgressDlgPrivate::Get(&m_Dialog); }

    void WaitAndSet(qint64 milliseconds, int position)
    {
        m_Now += milliseconds;
        m_Dialog.SetProgressPos(position);
    }

    void Wait(qint64 milliseconds)
    {
        m_Now += milliseconds;
        Insides()->UpdateTimeLeft();
    }

    QString Told() const
    {
        auto* label = m_Dialog.findChild<QLabel*>("m_pTimeLbl");
        return label->isVisibleTo(&m_Dialog) ? label->text() : QString("hidden");
    }

private:
    LXOperationProgressDlg& m_Dialog;
    qint64 m_Now = 0;
};
} // namespace

void TestTimeLeft::theDialogTellsIt()
{
    LXOperationProgressDlg dialog;
    ClockedDialog clock(dialog);
    dialog.ShowTimeLeft(true);
    QVERIFY(dialog.IsTimeLeftShown());
    for (int step = 1; step <= 4; ++step)
        clock.WaitAndSet(Second, step);
    QCOMPARE(clock.Told(), QString());
    clock.WaitAndSet(Second, 5);
    QCOMPARE(clock.Told(), QString("About 2 minutes left"));
    for (int step = 6; step <= 70; ++step)
        clock.WaitAndSet(Second, step);
    QCOMPARE(clock.Told(), QString("About 30 seconds left"));
    dialog.ShowTimeLeft(false);
    QCOMPARE(clock.Told(), QString("hidden"));
}

void TestTimeLeft::theDialogKeepsItsSize()
{
    LXOperationProgressDlg dialog;
    connect(&dialog, &LXOperationProgressDlg::Cancelled, &dialog, [] {});
    ClockedDialog clock(dialog);
    dialog.ShowTimeLeft(true);
    const QSize before = dialog.sizeHint();
    for (int step = 1; step <= 5; ++step)
        clock.WaitAndSet(Second, step);
    QCOMPARE(clock.Told(), QString("About 2 minutes left"));
    QCOMPARE(dialog.sizeHint(), before);
}

void TestTimeLeft::withoutBeingAskedTheDialogTellsNone()
{
    LXOperationProgressDlg dialog;
    ClockedDialog clock(dialog);
    QVERIFY(!dialog.IsTimeLeftShown());
    for (int step = 1; step <= 50; ++step)
        clock.WaitAndSet(Second, step);
    QCOMPARE(clock.Told(), QString("hidden"));
}

void TestTimeLeft::anotherRangeBeginsAnew()
{
    LXOperationProgressDlg dialog;
    ClockedDialog clock(dialog);
    dialog.ShowTimeLeft(true);
    for (int step = 1; step <= 50; ++step)
        clock.WaitAndSet(Second, step);
    QCOMPARE(clock.Told(), QString("About 50 seconds left"));
    dialog.SetProgressRange(0, 100);
    QCOMPARE(clock.Told(), QString("About 50 seconds left"));
    dialog.SetProgressRange(0, 200);
    QCOMPARE(clock.Told(), QString());
    clock.Wait(10 * Second);
    QCOMPARE(clock.Told(), QString());
}

void TestTimeLeft::anEndlessBarTellsNone()
{
    LXOperationProgressDlg dialog;
    ClockedDialog clock(dialog);
    dialog.ShowTimeLeft(true);
    dialog.SetProgressRange(0, 0);
    clock.WaitAndSet(Minute, 0);
    QCOMPARE(clock.Told(), QString());
    dialog.SetProgressRange(0, 100);
    for (int step = 1; step <= 10; ++step)
        clock.WaitAndSet(2 * Second, step);
    QCOMPARE(clock.Told(), QString("About 3 minutes left"));
}

void TestTimeLeft::workThatRunsUnderADialogTellsIt()
{
    const IdleWork work;
    QVERIFY(work.IsTimeLeftShown());
}

ZK_REGISTER_TEST(tst_timeleft, TestTimeLeft)
#include "tst_timeleft.moc"
