#include "app/CommandLine.h"
#include "support/TestRegistry.h"

#include <QTest>

/// The arguments that belong to scripts.
class TestScriptArguments : public QObject
{
    Q_OBJECT

private slots:
    void aScriptTakesTheFilesAsItsArguments();
    void whatFollowsTwoDashesGoesToTheScript();
    void withoutOptionsTheWindowIsVisibleAndNothingIsLimited();
    void theTimeLimitIsInSeconds_data();
    void theTimeLimitIsInSeconds();
    void aTimeLimitThatIsNoneIsRefused_data();
    void aTimeLimitThatIsNoneIsRefused();
    void optionsOfScriptsNeedAScript_data();
    void optionsOfScriptsNeedAScript();
    void aScriptGoesWithNoOtherTask_data();
    void aScriptGoesWithNoOtherTask();
    void everyTaskMayHaveAFolderForItsSettings();
    void helpNamesTheOptionsOfScripts();
};

namespace {
using Task = CommandLine::Task;

CommandLine Read(const QStringList& arguments)
{
    return CommandLineReader::Read(QStringList{"zenkari"} + arguments);
}
} // namespace

void TestScriptArguments::aScriptTakesTheFilesAsItsArguments()
{
    const CommandLine line = Read({"--headless", "--script", "walk.js", "a.png", "b.png", "--test-faults",
                                   "--failure-pictures", "shots"});
    QCOMPARE(line.task, Task::Script);
    QCOMPARE(line.script.file, QString("walk.js"));
    QCOMPARE(line.script.arguments, (QStringList{"a.png", "b.png"}));
    QVERIFY(line.files.isEmpty());
    QVERIFY(line.script.isHeadless);
    QVERIFY(line.script.allowFaults);
    QCOMPARE(line.script.pictureFolder, QString("shots"));
}

void TestScriptArguments::whatFollowsTwoDashesGoesToTheScript()
{
    const CommandLine line = Read({"--script", "walk.js", "--", "--timeout", "x"});
    QCOMPARE(line.task, Task::Script);
    QCOMPARE(line.script.arguments, (QStringList{"--timeout", "x"}));
}

void TestScriptArguments::withoutOptionsTheWindowIsVisibleAndNothingIsLimited()
{
    const CommandLine line = Read({"--script", "walk.js"});
    QCOMPARE(line.task, Task::Script);
    QVERIFY(!line.script.isHeadless);
    QVERIFY(!line.script.allowFaults);
    QCOMPARE(line.script.timeLimit, 0);
    QVERIFY(line.userFolder.isEmpty());
    QVERIFY(!line.script.pictureFolder.isEmpty());
}

void TestScriptArguments::theTimeLimitIsInSeconds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("whole") << "20" << 20000;
    QTest::newRow("parts") << "1.5" << 1500;
    QTest::newRow("below a millisecond") << "0.0001" << 1;
}

void TestScriptArguments::theTimeLimitIsInSeconds()
{
    QFETCH(QString, text);
    QFETCH(int, milliseconds);
    QCOMPARE(Read({"--script", "walk.js", "--timeout", text}).script.timeLimit, milliseconds);
}

void TestScriptArguments::aTimeLimitThatIsNoneIsRefused_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"0", "-1", "soon", "", "1e30", "nan", "inf"})
        QTest::newRow(text) << QString(text);
}

void TestScriptArguments::aTimeLimitThatIsNoneIsRefused()
{
    QFETCH(QString, text);
    const CommandLine line = Read({"--script", "walk.js", "--timeout", text});
    QCOMPARE(line.task, Task::Wrong);
    QVERIFY2(line.text.contains("seconds"), qPrintable(line.text));
}

void TestScriptArguments::optionsOfScriptsNeedAScript_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("headless") << QStringList{"--headless"};
    QTest::newRow("limit") << QStringList{"--timeout", "3"};
    QTest::newRow("pictures") << QStringList{"--failure-pictures", "folder"};
    QTest::newRow("faults") << QStringList{"--test-faults"};
}

void TestScriptArguments::optionsOfScriptsNeedAScript()
{
    QFETCH(QStringList, arguments);
    const CommandLine line = Read(arguments);
    QCOMPARE(line.task, Task::Wrong);
    QVERIFY2(line.text.contains(arguments.first() + " needs --script"), qPrintable(line.text));
}

void TestScriptArguments::aScriptGoesWithNoOtherTask_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("tour") << QStringList{"--tour", "folder"};
    QTest::newRow("export") << QStringList{"--export", "a.png"};
    QTest::newRow("new picture") << QStringList{"--new", "4x4"};
}

void TestScriptArguments::aScriptGoesWithNoOtherTask()
{
    QFETCH(QStringList, arguments);
    QCOMPARE(Read(QStringList{"--script", "walk.js"} + arguments).task, Task::Wrong);
}

void TestScriptArguments::everyTaskMayHaveAFolderForItsSettings()
{
    QCOMPARE(Read({"--user-data", "folder"}).userFolder, QString("folder"));
    QCOMPARE(Read({"--user-data", "folder", "--script", "walk.js"}).userFolder, QString("folder"));
    QCOMPARE(Read({"--user-data", "folder", "--tour", "pictures"}).userFolder, QString("folder"));
}

void TestScriptArguments::helpNamesTheOptionsOfScripts()
{
    const QString text = Read({"--help"}).text;
    for (const char* name :
         {"--script", "--headless", "--timeout", "--failure-pictures", "--test-faults", "--user-data"}) {
        QVERIFY2(text.contains(name), name);
    }
}

ZK_REGISTER_TEST(tst_scriptarguments, TestScriptArguments)
#include "tst_scriptarguments.moc"
