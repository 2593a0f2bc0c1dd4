#include "app/CommandLine.h"
#include "support/TestRegistry.h"

#include <QTest>

class TestCommandLineReader : public QObject
{
    Q_OBJECT

private slots:
    void withoutArgumentsTheEditorOpens();
    void filesAreOpenedInTheirOrder();
    void helpNamesEveryOption();
    void versionTellsNameAndNumber();
    void aNewPictureHasTheSizeThatWasAsked();
    void aSizeThatNoPictureCanHaveIsRefused_data();
    void aSizeThatNoPictureCanHaveIsRefused();
    void exportTakesAFileOrANewPicture();
    void exportTakesExactlyOnePicture_data();
    void exportTakesExactlyOnePicture();
    void aTourTakesAtMostOneFile();
    void screenshotsTakeAFolderAlone();
    void whatCantGoTogetherIsRefused_data();
    void whatCantGoTogetherIsRefused();
    void whatFollowsTwoDashesIsAFile();
};

namespace {
using Task = CommandLine::Task;

CommandLine Read(const QStringList& arguments)
{
    return CommandLineReader::Read(QStringList{"zenkari"} + arguments);
}
} // namespace

void TestCommandLineReader::withoutArgumentsTheEditorOpens()
{
    const CommandLine line = Read({});
    QCOMPARE(line.task, Task::Edit);
    QVERIFY(line.files.isEmpty());
    QVERIFY(line.newSize.isEmpty());
}

void TestCommandLineReader::filesAreOpenedInTheirOrder()
{
    const CommandLine line = Read({"b.png", "a.jpg"});
    QCOMPARE(line.task, Task::Edit);
    QCOMPARE(line.files, (QStringList{"b.png", "a.jpg"}));
}

void TestCommandLineReader::helpNamesEveryOption()
{
    for (const char* option : {"-h", "--help"}) {
        const CommandLine line = Read({option, "--new", "nonsense"});
        QCOMPARE(line.task, Task::Help);
        for (const char* name : {"--help", "--version", "--new", "--export", "--tour"})
            QVERIFY2(line.text.contains(name), name);
    }
}

void TestCommandLineReader::versionTellsNameAndNumber()
{
    const CommandLine line = Read({"--version"});
    QCOMPARE(line.task, Task::Version);
    QCOMPARE(line.text, QCoreApplication::applicationName() + ' ' + QCoreApplication::applicationVersion());
}

void TestCommandLineReader::aNewPictureHasTheSizeThatWasAsked()
{
    QCOMPARE(Read({"--new", "640x480"}).newSize, QSize(640, 480));
    QCOMPARE(Read({"--new=1X300000"}).newSize, QSize(1, 300000));
    QCOMPARE(Read({"--new", "640x480", "a.png"}).files, QStringList{"a.png"});
}

void TestCommandLineReader::aSizeThatNoPictureCanHaveIsRefused_data()
{
    QTest::addColumn<QString>("size");
    for (const char* size : {"", "640", "640x", "x480", "0x480", "640x0", "-640x480", "640 x 480",
                             "640x480px", "300001x1", "1x300001", "99999999999x1"}) {
        QTest::newRow(size) << QString(size);
    }
}

void TestCommandLineReader::aSizeThatNoPictureCanHaveIsRefused()
{
    QFETCH(QString, size);
    const CommandLine line = Read({"--new=" + size});
    QCOMPARE(line.task, Task::Wrong);
    QVERIFY2(line.text.contains('"' + size + '"'), qPrintable(line.text));
}

void TestCommandLineReader::exportTakesAFileOrANewPicture()
{
    const CommandLine ofFile = Read({"--export", "b.png", "a.jpg"});
    QCOMPARE(ofFile.task, Task::Export);
    QCOMPARE(ofFile.exportFile, QString("b.png"));
    QCOMPARE(ofFile.files, QStringList{"a.jpg"});

    const CommandLine ofNew = Read({"--new", "8x6", "--export", "b.png"});
    QCOMPARE(ofNew.task, Task::Export);
    QCOMPARE(ofNew.newSize, QSize(8, 6));
}

void TestCommandLineReader::exportTakesExactlyOnePicture_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("none") << QStringList{"--export", "b.png"};
    QTest::newRow("two files") << QStringList{"--export", "b.png", "a.jpg", "c.jpg"};
    QTest::newRow("a file and a new one") << QStringList{"--export", "b.png", "--new", "8x6", "a.jpg"};
}

void TestCommandLineReader::exportTakesExactlyOnePicture()
{
    QFETCH(QStringList, arguments);
    const CommandLine line = Read(arguments);
    QCOMPARE(line.task, Task::Wrong);
    QVERIFY2(line.text.contains("--export"), qPrintable(line.text));
}

void TestCommandLineReader::aTourTakesAtMostOneFile()
{
    QCOMPARE(Read({"--tour", "folder"}).task, Task::Tour);
    const CommandLine withFile = Read({"--tour", "folder", "a.jpg"});
    QCOMPARE(withFile.task, Task::Tour);
    QCOMPARE(withFile.tourFolder, QString("folder"));
    QCOMPARE(withFile.files, QStringList{"a.jpg"});
    QCOMPARE(Read({"--tour", "folder", "a.jpg", "b.jpg"}).task, Task::Wrong);
}

void TestCommandLineReader::screenshotsTakeAFolderAlone()
{
    const CommandLine line = Read({"--screenshots", "folder"});
    QCOMPARE(line.task, Task::Screenshots);
    QCOMPARE(line.screenshotFolder, QString("folder"));
    QCOMPARE(Read({"--screenshots", "folder", "a.png"}).task, Task::Wrong);
    QCOMPARE(Read({"--screenshots", "folder", "--new", "8x6"}).task, Task::Wrong);
    QCOMPARE(Read({"--screenshots", "folder", "--tour", "folder"}).task, Task::Wrong);
}

void TestCommandLineReader::whatCantGoTogetherIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{"--no-such-option"};
    QTest::newRow("option without its value") << QStringList{"--export"};
    QTest::newRow("tour of a new picture") << QStringList{"--tour", "folder", "--new", "8x6"};
    QTest::newRow("tour and export") << QStringList{"--tour", "folder", "--export", "b.png", "a.jpg"};
}

void TestCommandLineReader::whatCantGoTogetherIsRefused()
{
    QFETCH(QStringList, arguments);
    const CommandLine line = Read(arguments);
    QCOMPARE(line.task, Task::Wrong);
    QVERIFY(!line.text.isEmpty());
}

void TestCommandLineReader::whatFollowsTwoDashesIsAFile()
{
    QCOMPARE(Read({"--", "--version"}).files, QStringList{"--version"});
}

ZK_REGISTER_TEST(tst_commandline, TestCommandLineReader)
#include "tst_commandline.moc"
