#include "app/BatchLine.h"
#include "app/BatchProgress.h"
#include "app/BatchRun.h"
#include "support/TestRegistry.h"

#include <QTest>
#include <QThread>

#include <algorithm>

/// The arguments of a batch, and what it tells about itself.
class TestBatchLine : public QObject
{
    Q_OBJECT

private slots:
    void theScriptStandsBeforeTheFiles();
    void aBatchMayHaveNoFiles();
    void wrongArgumentsAreTold_data();
    void wrongArgumentsAreTold();
    void noNumberOfJobsMeansOneAndZeroMeansTheMachines();
    void helpNamesEveryOption();
    void aShardTakesEveryNth();
    void shardsShareTheFilesOut_data();
    void shardsShareTheFilesOut();
    void theBarFillsUp_data();
    void theBarFillsUp();
    void theTimeLeftFollowsFromTheTimeSoFar();
    void theSummaryCountsAll();
    void theExitCodeCountsUpToAHundred();
};

namespace {
using Task = BatchLine::Task;

BatchLine Read(const QStringList& arguments)
{
    return BatchLineReader::Read(QStringList{"zenkari", "batch"} + arguments);
}

QStringList Numbers(int count)
{
    QStringList numbers;
    for (int i = 1; i <= count; ++i)
        numbers << QString::number(i);
    return numbers;
}
} // namespace

void TestBatchLine::theScriptStandsBeforeTheFiles()
{
    const BatchLine line = Read({"shrink.js", "a.png", "--jobs", "3", "b.png", "--timeout", "2.5", "--arg",
                                 "out", "--arg=50", "--failure-pictures", "shots"});
    QCOMPARE(line.task, Task::Run);
    QCOMPARE(line.script, QString("shrink.js"));
    QCOMPARE(line.files, (QStringList{"a.png", "b.png"}));
    QCOMPARE(line.arguments, (QStringList{"out", "50"}));
    QCOMPARE(line.jobs, 3);
    QCOMPARE(line.timeLimit, 2500);
    QCOMPARE(line.pictureFolder, QString("shots"));
}

void TestBatchLine::aBatchMayHaveNoFiles()
{
    const BatchLine line = Read({"shrink.js"});
    QCOMPARE(line.task, Task::Run);
    QVERIFY(line.files.isEmpty());
    QCOMPARE(line.timeLimit, 0);
}

void TestBatchLine::wrongArgumentsAreTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("part");
    QTest::newRow("no script") << QStringList{} << "needs a script";
    QTest::newRow("unknown option") << QStringList{"s.js", "--nonsense"} << "nonsense";
    for (const char* jobs : {"-1", "many", "", "1025", "1.5"})
        QTest::addRow("%s jobs", jobs) << QStringList{"s.js", QString("--jobs=") + jobs} << "number of jobs";
    for (const char* shard : {"", "1", "0/3", "4/3", "1/0", "-1/3", "a/b", "1/2/3", " 1/2"})
        QTest::addRow("shard %s", shard) << QStringList{"s.js", QString("--shard=") + shard} << "is no shard";
    QTest::newRow("no time") << QStringList{"s.js", "--timeout=0"} << "number of seconds";
}

void TestBatchLine::wrongArgumentsAreTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, part);
    const BatchLine line = Read(arguments);
    QCOMPARE(line.task, Task::Wrong);
    QVERIFY2(line.text.contains(part), qPrintable(line.text));
}

void TestBatchLine::noNumberOfJobsMeansOneAndZeroMeansTheMachines()
{
    QCOMPARE(Read({"s.js"}).jobs, 1);
    QCOMPARE(Read({"s.js", "--jobs", "0"}).jobs, QThread::idealThreadCount());
}

void TestBatchLine::helpNamesEveryOption()
{
    const BatchLine line = Read({"--help", "--shard", "nonsense"});
    QCOMPARE(line.task, Task::Help);
    for (const char* name : {"--jobs", "--shard", "--timeout", "--arg", "--failure-pictures", "101", "125"})
        QVERIFY2(line.text.contains(name), name);
}

void TestBatchLine::aShardTakesEveryNth()
{
    QCOMPARE(Read({"s.js", "1", "2", "3", "4", "5", "--shard", "2/3"}).files, (QStringList{"2", "5"}));
}

void TestBatchLine::shardsShareTheFilesOut_data()
{
    QTest::addColumn<int>("fileCount");
    QTest::addColumn<int>("shardCount");
    for (const int fileCount : {0, 1, 7, 8, 200}) {
        for (const int shardCount : {1, 2, 7, 8, 9})
            QTest::addRow("%d files in %d", fileCount, shardCount) << fileCount << shardCount;
    }
}

void TestBatchLine::shardsShareTheFilesOut()
{
    QFETCH(int, fileCount);
    QFETCH(int, shardCount);
    QStringList all;
    for (int index = 1; index <= shardCount; ++index) {
        const QStringList shard = BatchLineReader::Shard(Numbers(fileCount), index, shardCount);
        QVERIFY(shard.size() == fileCount / shardCount || shard.size() == fileCount / shardCount + 1);
        all << shard;
    }
    std::sort(all.begin(), all.end(),
              [](const QString& a, const QString& b) { return a.toInt() < b.toInt(); });
    QCOMPARE(all, Numbers(fileCount));
}

void TestBatchLine::theBarFillsUp_data()
{
    QTest::addColumn<int>("total");
    QTest::addColumn<int>("done");
    QTest::addColumn<int>("failed");
    QTest::addColumn<qint64>("elapsed");
    QTest::addColumn<QString>("line");
    QTest::newRow("begin") << 10 << 0 << 0 << qint64(500) << "[........................] 0/10";
    QTest::newRow("half") << 10 << 5 << 0 << qint64(5000)
                          << "[############............] 5/10, about 5 s left";
    QTest::newRow("failed") << 200 << 50 << 2 << qint64(41000)
                            << "[######..................] 50/200, 2 failed, about 2 min 03 s left";
    QTest::newRow("hours") << 100 << 1 << 0 << qint64(100000)
                           << "[........................] 1/100, about 2 h 45 min left";
    QTest::newRow("end") << 3 << 3 << 3 << qint64(900) << "[########################] 3/3, 3 failed";
    QTest::newRow("nothing to do") << 0 << 0 << 0 << qint64(0) << "[########################] 0/0";
}

void TestBatchLine::theBarFillsUp()
{
    QFETCH(int, total);
    QFETCH(int, done);
    QFETCH(int, failed);
    QFETCH(qint64, elapsed);
    QTEST((BatchProgress{total, done, failed, elapsed}.Line()), "line");
}

void TestBatchLine::theTimeLeftFollowsFromTheTimeSoFar()
{
    QCOMPARE((BatchProgress{8, 2, 0, 3000}.MillisecondsLeft()), qint64(9000));
    QCOMPARE((BatchProgress{8, 8, 0, 3000}.MillisecondsLeft()), qint64(0));
    QCOMPARE((BatchProgress{8, 0, 0, 3000}.MillisecondsLeft()), qint64(-1));
}

void TestBatchLine::theSummaryCountsAll()
{
    QCOMPARE((BatchProgress{200, 200, 3, 25000}.Summary()),
             QString("200 files, 3 failed, 25.0 s, 8.0 files/s"));
    QCOMPARE((BatchProgress{0, 0, 0, 0}.Summary()), QString("0 files, 0 failed, 0.0 s, 0.0 files/s"));
}

void TestBatchLine::theExitCodeCountsUpToAHundred()
{
    QCOMPARE(BatchRun::ExitCodeFor(0), 0);
    QCOMPARE(BatchRun::ExitCodeFor(1), 1);
    QCOMPARE(BatchRun::ExitCodeFor(100), 100);
    QCOMPARE(BatchRun::ExitCodeFor(101), 101);
    QCOMPARE(BatchRun::ExitCodeFor(5000), 101);
}

ZK_REGISTER_TEST(tst_batchline, TestBatchLine)
#include "tst_batchline.moc"
