#include "support/ScriptFixture.h"
#include "support/TestRegistry.h"

#include <QDebug>
#include <QTest>
#include <QTimer>

#include <thread>

/// `reports`: the lines of the log as they appear.
class TestScriptReports : public QObject
{
    Q_OBJECT

private slots:
    void theLinesOfTheLogAreSeen();
    void aLineFromAnotherThreadIsWaitedFor();
    void whatNeverComesIsToldAtTheLimit();
    void afterTheScriptTheLogGoesWhereItWent();
};

namespace {
QStringList g_lines;

void Collect(QtMsgType, const QMessageLogContext&, const QString& message)
{
    g_lines << message;
}

void VerifyFinished(const ScriptOutcome& outcome)
{
    QVERIFY2(outcome.kind == ScriptOutcome::Kind::Finished, qPrintable(outcome.ToText()));
}
} // namespace

void TestScriptReports::theLinesOfTheLogAreSeen()
{
    QTimer::singleShot(0, [] {
        qDebug("first");
        qWarning("second");
    });
    VerifyFinished(ScriptFixture().Run("expect.equal(reports.lines, []); idle()\n"
                                       "expect.equal(reports.lines, ['first', 'second'])\n"
                                       "reports.clear(); expect.equal(reports.lines, [])"));
}

void TestScriptReports::aLineFromAnotherThreadIsWaitedFor()
{
    std::thread other;
    QTimer::singleShot(10, [&] { other = std::thread([] { qDebug("the job has failed"); }); });
    VerifyFinished(ScriptFixture().Run("expect.equal(reports.wait('job'), 'the job has failed')"));
    other.join();
}

void TestScriptReports::whatNeverComesIsToldAtTheLimit()
{
    VerifyFinished(ScriptFixture().Run("expect.throws(() => reports.wait('nothing', 20), 'nothing')"));
}

void TestScriptReports::afterTheScriptTheLogGoesWhereItWent()
{
    const QtMessageHandler previous = qInstallMessageHandler(Collect);
    g_lines.clear();
    QTimer::singleShot(0, [] { qDebug("during"); });
    const ScriptOutcome outcome = ScriptFixture().Run("idle()");
    qDebug("after");
    qInstallMessageHandler(previous);
    VerifyFinished(outcome);
    QCOMPARE(g_lines, (QStringList{"during", "after"}));
}

ZK_REGISTER_TEST(tst_scriptreports, TestScriptReports)
#include "tst_scriptreports.moc"
