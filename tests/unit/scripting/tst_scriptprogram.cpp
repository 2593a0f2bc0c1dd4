#include "support/ScriptFixture.h"
#include "support/TestRegistry.h"

#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QSemaphore>
#include <QTest>
#include <QThreadPool>
#include <QTimer>
#include <QtConcurrent>

/// Waiting, coming to rest, chance and pictures: what `script` does besides naming itself.
class TestScriptProgram : public QObject
{
    Q_OBJECT

private slots:
    void itKnowsItsFileAndFolder();
    void waitHandlesEventsForItsTime();
    void waitEndsAtTheTimeLimit();
    void idleWaitsForWhatIsUnderWay_data();
    void idleWaitsForWhatIsUnderWay();
    void idleDoesNotWaitForTimersThatFireForEver();
    void idleTellsWhatStaysBusy();
    void aScriptThatLeavesAJobRunningFails();
    void aSeedGivesTheSameNumbers();
    void randomNumbersStayInTheirRange();
    void grabSavesTheWindowOrAWidget();
    void grabTellsWhatIsNotThere();
};

using Kind = ScriptOutcome::Kind;

namespace {
constexpr int Limit = 20000; // ms

void VerifyFinished(const ScriptOutcome& outcome)
{
    QVERIFY2(outcome.kind == Kind::Finished, qPrintable(outcome.ToText()));
}
} // namespace

void TestScriptProgram::itKnowsItsFileAndFolder()
{
    ScriptFixture fixture;
    VerifyFinished(fixture.Run(QStringLiteral("expect.equal(script.file, script.folder + '/main.js')\n"
                                              "expect.equal(script.file, '%1')")
                                   .arg(fixture.PathOf("main.js"))));
}

void TestScriptProgram::waitHandlesEventsForItsTime()
{
    bool hasFired = false;
    QTimer::singleShot(5, this, [&] { hasFired = true; });
    QElapsedTimer clock;
    clock.start();
    VerifyFinished(ScriptFixture().Run("wait(60)"));
    QVERIFY(clock.elapsed() >= 60);
    QVERIFY(hasFired);
}

void TestScriptProgram::waitEndsAtTheTimeLimit()
{
    ScriptOptions options;
    options.timeLimit = 50;
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(ScriptFixture().Run("wait(1000000)", options).kind, Kind::TimedOut);
    QVERIFY(clock.elapsed() < Limit);
}

void TestScriptProgram::idleWaitsForWhatIsUnderWay_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"job", "timer", "timer of a widget", "event", "chain of events", "deletion"})
        QTest::newRow(kind) << QString(kind);
}

void TestScriptProgram::idleWaitsForWhatIsUnderWay()
{
    QFETCH(QString, kind);
    ScriptFixture fixture;
    QObject* witness = new QObject;
    const auto end = [witness] { delete witness; };
    QPointer<QObject> alive = witness;
    QSemaphore jobMayEnd;
    if (kind == "job") {
        QTimer::singleShot(30, this, [&] { jobMayEnd.release(); });
        QtConcurrent::run([&] {
            jobMayEnd.acquire();
            QMetaObject::invokeMethod(qApp, end, Qt::QueuedConnection);
        });
    } else if (kind == "timer") {
        QTimer::singleShot(30, this, end);
    } else if (kind == "timer of a widget") {
        auto* timer = new QTimer(fixture.GetHost().GetWindow());
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, end);
        timer->start(30);
    } else if (kind == "event") {
        QMetaObject::invokeMethod(this, end, Qt::QueuedConnection);
    } else if (kind == "chain of events") {
        QMetaObject::invokeMethod(
            this, [=] { QMetaObject::invokeMethod(this, end, Qt::QueuedConnection); }, Qt::QueuedConnection);
    } else {
        QTimer::singleShot(0, witness, &QObject::deleteLater);
    }

    ScriptOptions options;
    options.timeLimit = Limit;
    VerifyFinished(fixture.Run("idle()", options));
    QVERIFY(!alive);
}

void TestScriptProgram::idleDoesNotWaitForTimersThatFireForEver()
{
    ScriptFixture fixture;
    QTimer ants(fixture.GetHost().GetWindow());
    ants.start(1);
    QTimer later(fixture.GetHost().GetWindow());
    later.setSingleShot(true);
    later.start(3600000);
    VerifyFinished(fixture.Run("idle(5000)"));
}

void TestScriptProgram::idleTellsWhatStaysBusy()
{
    QSemaphore jobMayEnd;
    const QFuture<void> job = QtConcurrent::run([&] { jobMayEnd.acquire(); });
    ScriptFixture fixture;
    const ScriptOutcome outcome = fixture.Run("\nidle(30)");
    jobMayEnd.release();
    QFuture<void>(job).waitForFinished();
    QCOMPARE(outcome.kind, Kind::Failed);
    QCOMPARE(outcome.line, 2);
    QVERIFY2(outcome.message.contains("not at rest after 30 ms: 1 job"), qPrintable(outcome.message));
}

void TestScriptProgram::aScriptThatLeavesAJobRunningFails()
{
    QSemaphore jobMayEnd;
    const QFuture<void> job = QtConcurrent::run([&] { jobMayEnd.acquire(); });
    ScriptOptions options;
    options.timeLimit = 100;
    const ScriptOutcome outcome = ScriptFixture().Run("print('done')", options);
    jobMayEnd.release();
    QFuture<void>(job).waitForFinished();
    QCOMPARE(outcome.kind, Kind::TimedOut);
}

void TestScriptProgram::aSeedGivesTheSameNumbers()
{
    VerifyFinished(ScriptFixture().Run("function five(seed) { const r = random(seed); const list = []\n"
                                       "  for (let i = 0; i < 5; ++i) list.push(r.integer(0, 1000000))\n"
                                       "  return list }\n"
                                       "expect.equal(five(7), five(7)); expect.notEqual(five(7), five(8))"));
}

void TestScriptProgram::randomNumbersStayInTheirRange()
{
    VerifyFinished(ScriptFixture().Run(
        "const r = random(1); const seen = {}\n"
        "for (let i = 0; i < 500; ++i) { const n = r.integer(3, -2); seen[n] = true\n"
        "  expect.ok(n >= -2 && n <= 3, 'a whole number ' + n)\n"
        "  const x = r.next(); expect.ok(x >= 0 && x < 1, 'a number ' + x) }\n"
        "expect.equal(Object.keys(seen).sort(), ['-1', '-2', '0', '1', '2', '3'])\n"
        "const wide = r.integer(-2147483648, 2147483647); expect.equal(wide, Math.trunc(wide))\n"
        "expect.equal(r.pick(['a']), 'a'); expect.equal(r.pick([]), undefined)"));
}

void TestScriptProgram::grabSavesTheWindowOrAWidget()
{
    ScriptFixture fixture;
    QMainWindow* window = fixture.GetHost().GetWindow();
    auto* label = new QLabel("x", window);
    label->setObjectName("m_pLabel");
    label->setGeometry(0, 0, 20, 10);
    window->resize(80, 60);
    window->show();
    VerifyFinished(
        fixture.Run("grab(script.folder + '/all.png'); grab(script.folder + '/one.png', 'm_pLabel')"));
    QCOMPARE(QImage(fixture.PathOf("all.png")).size(), QSize(80, 60));
    QCOMPARE(QImage(fixture.PathOf("one.png")).size(), QSize(20, 10));
}

void TestScriptProgram::grabTellsWhatIsNotThere()
{
    VerifyFinished(
        ScriptFixture().Run("expect.throws(() => grab('x.png', 'm_pNothing'), 'm_pNothing')\n"
                            "expect.throws(() => grab('/no/such/folder/x.png'), '/no/such/folder/x.png')"));
}

ZK_REGISTER_TEST(tst_scriptprogram, TestScriptProgram)
#include "tst_scriptprogram.moc"
