#include "support/ProgramRun.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

/// `zenkari batch` as the shell sees it.
class TestRunABatch : public QObject
{
    Q_OBJECT

private slots:
    void everyFileIsTakenOnce_data();
    void everyFileIsTakenOnce();
    void aFailureStopsNoOtherFile();
    void aHangingScriptStopsNoOtherFile();
    void theArgumentsFollowTheFile();
    void aBatchWithoutFilesSucceeds();
    void aMissingScriptBeginsNothing();
    void wrongUsageBeginsNothing();
    void theProgressIsTold();
    void shardsTakeEveryFileOnce();
    void gnuParallelRunsShards();
    void endingTheBatchEndsItsScripts();
    void theExampleOfTheGuideWorks();
};

namespace {
/// A folder with scripts, in which the scripts leave what they saw.
class BatchFolder
{
public:
    QString Write(const QString& name, const QString& text) const
    {
        QFile file(PathOf(name));
        if (!file.open(QIODevice::WriteOnly)) qFatal("The script can't be written.");
        file.write(text.toUtf8());
        return file.fileName();
    }

    QString PathOf(const QString& name) const { return m_Folder.filePath(name); }

private:
    QTemporaryDir m_Folder;
};

QStringList SortedLines(const QString& text, const QString& start)
{
    QStringList lines = text.split('\n').filter(start);
    lines.sort();
    return lines;
}

const QString PrintFile = QStringLiteral("print('took ' + script.args.join(' '))");
} // namespace

void TestRunABatch::everyFileIsTakenOnce_data()
{
    QTest::addColumn<QString>("jobs");
    QTest::newRow("one process") << "1";
    QTest::newRow("two processes") << "2";
    QTest::newRow("more than files") << "9";
}

void TestRunABatch::everyFileIsTakenOnce()
{
    QFETCH(QString, jobs);
    const BatchFolder folder;
    const ProgramRun run({"batch", folder.Write("print.js", PrintFile), "a", "b c", "--jobs", jobs, "d"});
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
    QCOMPARE(SortedLines(run.output, "took "), (QStringList{"took a", "took b c", "took d"}));
    QVERIFY2(run.output.contains("3 files, 0 failed"), qPrintable(run.output));
}

void TestRunABatch::aFailureStopsNoOtherFile()
{
    const BatchFolder folder;
    const QString script = folder.Write("some.js", "if (script.args[0] !== 'good')\n"
                                                   "  throw Error('no ' + script.args[0])\n" +
                                                       PrintFile);
    const ProgramRun run({"batch", script, "bad", "good", "worse"});
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(SortedLines(run.output, "took "), QStringList{"took good"});
    QCOMPARE(SortedLines(run.output, "failed:"),
             (QStringList{"failed: bad (exit code 1)", "failed: worse (exit code 1)"}));
    QVERIFY2(run.errors.contains("some.js:2: no bad"), qPrintable(run.errors));
    QVERIFY(run.output.contains("3 files, 2 failed"));
}

void TestRunABatch::aHangingScriptStopsNoOtherFile()
{
    const BatchFolder folder;
    const QString script = folder.Write("hang.js", "while (script.args[0] === 'slow') { }\n" + PrintFile);
    const ProgramRun run({"batch", script, "slow", "fast", "--timeout", "0.5"});
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(SortedLines(run.output, "took "), QStringList{"took fast"});
    QCOMPARE(SortedLines(run.output, "failed:"), QStringList{"failed: slow (exit code 6)"});
}

void TestRunABatch::theArgumentsFollowTheFile()
{
    const BatchFolder folder;
    const ProgramRun run(
        {"batch", folder.Write("print.js", PrintFile), "--arg", "out", "a", "--arg", "--fast"});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(SortedLines(run.output, "took "), QStringList{"took a out --fast"});
}

void TestRunABatch::aBatchWithoutFilesSucceeds()
{
    const BatchFolder folder;
    const ProgramRun run({"batch", folder.Write("print.js", PrintFile)});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.output.contains("0 files"));
}

void TestRunABatch::aMissingScriptBeginsNothing()
{
    const ProgramRun run({"batch", "/no/such/script.js", "a"});
    QCOMPARE(run.exitCode, 125);
    QVERIFY2(run.errors.contains("/no/such/script.js"), qPrintable(run.errors));
}

void TestRunABatch::wrongUsageBeginsNothing()
{
    const ProgramRun run({"batch"});
    QCOMPARE(run.exitCode, 125);
    QVERIFY(!run.errors.isEmpty());
}

void TestRunABatch::theProgressIsTold()
{
    const BatchFolder folder;
    const ProgramRun run({"batch", folder.Write("print.js", PrintFile), "a", "b"});
    QVERIFY2(run.errors.contains("[############............] 1/2, about "), qPrintable(run.errors));
    QVERIFY2(run.errors.contains("[########################] 2/2\n"), qPrintable(run.errors));
}

void TestRunABatch::shardsTakeEveryFileOnce()
{
    const BatchFolder folder;
    const QString script = folder.Write("print.js", PrintFile);
    QString output;
    for (const char* shard : {"1/2", "2/2"}) {
        const ProgramRun run({"batch", script, "--shard", shard, "a", "b", "c"});
        QCOMPARE(run.exitCode, 0);
        output += run.output;
    }
    QCOMPARE(SortedLines(output, "took "), (QStringList{"took a", "took b", "took c"}));
}

void TestRunABatch::gnuParallelRunsShards()
{
    const BatchFolder folder;
    const QString script = folder.Write("print.js", PrintFile);
    const ProgramRun run("parallel", {"--will-cite", "-j2", ZK_PROGRAM, "batch", script, "--shard", "{}/2",
                                      "a", "b", "c", ":::", "1", "2"});
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
    QCOMPARE(SortedLines(run.output, "took "), (QStringList{"took a", "took b", "took c"}));
}

void TestRunABatch::endingTheBatchEndsItsScripts()
{
    const BatchFolder folder;
    // Without a word: writing into the pipe of a batch that is gone would end them too.
    const QString script = folder.Write("hang.js", "while (true) { }");
    ProgramRun run(ProgramRun::Begun, ZK_PROGRAM, {"batch", script, "a", "b", "--jobs", "2"});
    QVERIFY(run.WaitForProcesses(3));
    run.EndFirstProcess();
    QVERIFY(run.WaitForProcesses(0));
}

void TestRunABatch::theExampleOfTheGuideWorks()
{
    QFile guide(ZK_BATCH_GUIDE);
    QVERIFY(guide.open(QIODevice::ReadOnly));
    const QString example = QString::fromUtf8(guide.readAll()).section("```js\n", 1).section("```\n", 0, 0);
    const BatchFolder folder;
    QImage photo(40, 30, QImage::Format_RGB32);
    photo.fill(Qt::blue);
    QVERIFY(photo.save(folder.PathOf("sky.png")) && photo.save(folder.PathOf("lake.png")));
    QVERIFY(QDir().mkpath(folder.PathOf("out")));

    const ProgramRun run({"batch", folder.Write("evening.js", example), "--arg", folder.PathOf("out"),
                          folder.PathOf("sky.png"), folder.PathOf("lake.png")});
    QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
    QCOMPARE(SortedLines(run.output, "step"), (QStringList{"lake.png: 1 step", "sky.png: 1 step"}));
    for (const char* name : {"out/sky.png", "out/lake.png"})
        QCOMPARE(QImage(folder.PathOf(name)).pixelColor(10, 3), QColor("#f2a65a"));
}

ZK_REGISTER_TEST(tst_run_a_batch, TestRunABatch)
#include "tst_run_a_batch.moc"
