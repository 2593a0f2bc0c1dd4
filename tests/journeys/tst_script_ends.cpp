#include "support/ProgramRun.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

/// How a script ends, as the shell sees it: exit code, words, picture, and no process left behind.
class TestScriptEnds : public QObject
{
    Q_OBJECT

private slots:
    void printTakesAnyNumberOfValues();
    void everyEndHasItsCodeAndWords_data();
    void everyEndHasItsCodeAndWords();
    void aHostilePictureEndsTheScriptInWords_data();
    void aHostilePictureEndsTheScriptInWords();
    void aScriptStuckInTheProgramEndsToo();
    void aFailureTellsStepExpectedSeenAndPicture();
    void linesAreSeenAsTheyArePrinted();
    void settingsOfARunStayInItsFolder();
    void headlessRunsShareNoSettings();
};

namespace {
/// Scripts, pictures and settings of one test.
class Folder
{
public:
    QString PathOf(const QString& name) const { return m_Folder.filePath(name); }

    QString Write(const QString& name, const QByteArray& content) const
    {
        QFile file(PathOf(name));
        if (!file.open(QIODevice::WriteOnly)) qFatal("The file can't be written.");
        file.write(content);
        return file.fileName();
    }

    /// The arguments to run a script text.
    QStringList Script(const QByteArray& text, const QStringList& more = {}) const
    {
        return QStringList{"--headless", "--failure-pictures", PathOf("pictures")} + more +
               QStringList{"--script", Write("main.js", text)};
    }

private:
    QTemporaryDir m_Folder;
};

/// A correct beginning of a picture of 2000000 x 2000000 pixels.
QByteArray HugePng()
{
    return QByteArray::fromHex("89504e470d0a1a0a0000000d49484452001e8480001e84800806000000f447f4cc");
}
} // namespace

void TestScriptEnds::printTakesAnyNumberOfValues()
{
    const Folder folder;
    const ProgramRun run(folder.Script("print('a', 1, [2, 3], null, undefined)\nprint()\nprint('b')"));
    QCOMPARE(run.output, QString("a 1 2,3 null undefined\n\nb\n"));
}

void TestScriptEnds::everyEndHasItsCodeAndWords_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("code");
    QTest::addColumn<QStringList>("words");
    const QStringList none;
    QTest::newRow("finished") << QByteArray("print('x')") << none << 0 << none;
    QTest::newRow("its own code") << QByteArray("script.exit(9); while (true) { }") << none << 9 << none;
    QTest::newRow("throws") << QByteArray("\n\nthrow new Error('no paint')") << none << 1
                            << QStringList{"main.js:3: no paint"};
    QTest::newRow("wrong syntax") << QByteArray("let a = 1\nlet b = (;") << none << 1
                                  << QStringList{"main.js:2: SyntaxError"};
    QTest::newRow("unknown name") << QByteArray("\ndocument.close()") << none << 1
                                  << QStringList{"main.js:2: ReferenceError"};
    QTest::newRow("no faults without the option")
        << QByteArray("faults.failTile()") << none << 1 << QStringList{"main.js:1: ReferenceError"};
    QTest::newRow("faults with it") << QByteArray("faults.failTile(1000); faults.reset()")
                                    << QStringList{"--test-faults"} << 0 << none;
    QTest::newRow("hangs") << QByteArray("step('Wait for Godot')\nwhile (true) { }")
                           << QStringList{"--timeout", "0.3"} << 6
                           << QStringList{"did not end within 0.3 s", "step: Wait for Godot"};
    QTest::newRow("hangs in a wait") << QByteArray("wait(1000000)") << QStringList{"--timeout", "0.3"} << 6
                                     << QStringList{"did not end within 0.3 s"};
    QTest::newRow("hangs and catches")
        << QByteArray("while (true) { try { idle() } catch (error) { } }") << QStringList{"--timeout", "0.3"}
        << 6 << QStringList{"did not end within 0.3 s"};
    QTest::newRow("leaves a dialog open") << QByteArray("\nmenus.trigger('File/New\u2026')") << none << 1
                                          << QStringList{"main.js:2: ", "Nobody expected"};
    QTest::newRow("leaves a dialog open and catches")
        << QByteArray("try { menus.trigger('File/New\u2026') } catch (error) { }\nprint('on')") << none << 1
        << QStringList{"Nobody expected"};
    QTest::newRow("expects what never opens")
        << QByteArray("dialogs.expect({title: 'Never', answer: 'OK'})") << none << 1 << QStringList{"Never"};
    QTest::newRow("opens a missing picture") << QByteArray("\ndocuments.open('/no/such/picture.png')") << none
                                             << 1 << QStringList{"main.js:2: ", "picture.png"};
    QTest::newRow("holds the button down at the end")
        << QByteArray("documents.create(20, 20); input.press(5, 5)") << none << 0 << none;
}

void TestScriptEnds::everyEndHasItsCodeAndWords()
{
    QFETCH(QByteArray, script);
    QFETCH(QStringList, options);
    QFETCH(int, code);
    QFETCH(QStringList, words);
    const Folder folder;
    ProgramRun run(folder.Script(script, options));
    QVERIFY2(run.exitCode == code, qPrintable(QString::number(run.exitCode) + run.output + run.errors));
    for (const QString& part : words)
        QVERIFY2(run.errors.contains(part), qPrintable(run.errors));
    if (words.isEmpty()) QCOMPARE(run.errors, QString());
    QCOMPARE(QFile::exists(folder.PathOf("pictures/main.png")), !words.isEmpty());
    QVERIFY(run.WaitForProcesses(0));
}

void TestScriptEnds::aHostilePictureEndsTheScriptInWords_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no picture") << QByteArray("Once upon a time there was a picture.");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("huge") << HugePng();
    QTest::newRow("header alone") << QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");
}

void TestScriptEnds::aHostilePictureEndsTheScriptInWords()
{
    QFETCH(QByteArray, content);
    const Folder folder;
    const QString picture = folder.Write("hostile.png", content);
    ProgramRun run(folder.Script("\ndocuments.open(script.args[0])") + QStringList{picture});
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.errors.contains("main.js:2: "), qPrintable(run.errors));
    QVERIFY2(run.errors.contains("hostile.png"), qPrintable(run.errors));
    QVERIFY(run.WaitForProcesses(0));
}

void TestScriptEnds::aScriptStuckInTheProgramEndsToo()
{
    const Folder folder;
    ProgramRun run(folder.Script("documents.create(20, 20); tools.activate('Fillcan')\n"
                                 "faults.slowDown('lock', 1000000); input.click(5, 5)",
                                 {"--test-faults", "--timeout", "0.3"}));
    QCOMPARE(run.exitCode, 6);
    QVERIFY2(run.errors.contains("stuck"), qPrintable(run.errors));
    QVERIFY(run.WaitForProcesses(0));
}

void TestScriptEnds::aFailureTellsStepExpectedSeenAndPicture()
{
    const Folder folder;
    const ProgramRun run(folder.Script("step('Count the layers')\nfunction count() { return 3 }\n\n"
                                       "expect.equal(count(), 4, 'the layers')"));
    QCOMPARE(run.exitCode, 1);
    const QString picture = folder.PathOf("pictures/main.png");
    const QStringList expected{folder.PathOf("main.js") + ":4: the layers: not equal",
                               "  expected: 4",
                               "  seen: 3",
                               "  step: Count the layers",
                               "  picture: " + picture,
                               ""};
    QVERIFY2(run.errors.endsWith(expected.join('\n')), qPrintable(run.errors));
    QCOMPARE(QImage(picture).size(), QSize(1280, 800));
}

void TestScriptEnds::linesAreSeenAsTheyArePrinted()
{
    const Folder folder;
    QProcess program;
    program.start(ZK_PROGRAM, folder.Script("print('begun'); while (true) { }", {"--timeout", "60"}));
    const bool isSeen = QTest::qWaitFor([&] { return program.canReadLine(); }, ProgramRun::Limit);
    const QByteArray line = program.readLine();
    program.kill();
    program.waitForFinished();
    QVERIFY(isSeen);
    QCOMPARE(line, QByteArray("begun\n"));
}

void TestScriptEnds::settingsOfARunStayInItsFolder()
{
    const Folder folder;
    const QStringList options{"--user-data", folder.PathOf("mine")};
    const ProgramRun first(folder.Script("application.setUserValue('Test/Value', 'kept')", options));
    QVERIFY2(first.exitCode == 0, qPrintable(first.errors));
    const ProgramRun second(
        folder.Script("expect.equal(application.userValue('Test/Value'), 'kept')", options));
    QVERIFY2(second.exitCode == 0, qPrintable(second.errors));
    QVERIFY(!QDir(folder.PathOf("mine")).isEmpty());
}

void TestScriptEnds::headlessRunsShareNoSettings()
{
    const Folder folder;
    const ProgramRun first(folder.Script("application.setUserValue('Test/Value', 'gone')"));
    QVERIFY2(first.exitCode == 0, qPrintable(first.errors));
    const ProgramRun second(
        folder.Script("expect.equal(application.userValue('Test/Value', 'none'), 'none')"));
    QVERIFY2(second.exitCode == 0, qPrintable(second.errors));
}

ZK_REGISTER_TEST(tst_script_ends, TestScriptEnds)
#include "tst_script_ends.moc"
