#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// The program as the shell sees it.
class TestCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void helpAndVersionNeedNoScreen_data();
    void helpAndVersionNeedNoScreen();
    void wrongUsageIsTold_data();
    void wrongUsageIsTold();
    void theTourLeavesItsPictures_data();
    void theTourLeavesItsPictures();
    void theTourTellsWhatFailed();
    void exportWritesThePicture();
    void exportMakesAPicture();
    void exportTellsWhatFailed_data();
    void exportTellsWhatFailed();
    void anExceptionEndsTheProgramWithAReport_data();
    void anExceptionEndsTheProgramWithAReport();
};

namespace {
constexpr int Limit = 120000; // ms

struct Outcome
{
    int exitCode = -1;
    QString output;
    QString errors;
};

Outcome Run(const QString& file, const QStringList& arguments, const QString& platform = "offscreen",
            const QString& scale = "1")
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (platform.isEmpty()) {
        environment.remove("QT_QPA_PLATFORM");
    } else {
        environment.insert("QT_QPA_PLATFORM", platform);
    }
    environment.insert("QT_SCALE_FACTOR", scale);
    program.setProcessEnvironment(environment);
    program.start(file, arguments);
    if (!program.waitForFinished(Limit) || program.exitStatus() != QProcess::NormalExit) return Outcome();
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

Outcome RunProgram(const QStringList& arguments, const QString& platform = "offscreen",
                   const QString& scale = "1")
{
    return Run(ZK_PROGRAM, arguments, platform, scale);
}
} // namespace

void TestCommandLine::helpAndVersionNeedNoScreen_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("expected");
    QTest::newRow("help") << "--help"
                          << "--tour";
    QTest::newRow("short help") << "-h"
                                << "--tour";
    QTest::newRow("version") << "--version"
                             << "zenkari";
}

void TestCommandLine::helpAndVersionNeedNoScreen()
{
    QFETCH(QString, option);
    QFETCH(QString, expected);
    const Outcome outcome = RunProgram({option}, "no-such-platform");
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.output.contains(expected), qPrintable(outcome.output));
}

void TestCommandLine::wrongUsageIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{"--no-such-option"};
    QTest::newRow("tour without a folder") << QStringList{"--tour"};
    QTest::newRow("a size that is none") << QStringList{"--new", "wide"};
    QTest::newRow("export of nothing") << QStringList{"--export", "a.png"};
    QTest::newRow("tour of two files") << QStringList{"--tour", "folder", "a.png", "b.png"};
}

void TestCommandLine::wrongUsageIsTold()
{
    QFETCH(QStringList, arguments);
    const Outcome outcome = RunProgram(arguments);
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY(!outcome.errors.isEmpty());
}

void TestCommandLine::theTourLeavesItsPictures_data()
{
    QTest::addColumn<int>("scale");
    QTest::newRow("common screen") << 1;
    QTest::newRow("dense screen") << 2;
}

void TestCommandLine::theTourLeavesItsPictures()
{
    QFETCH(int, scale);
    const QTemporaryDir folder;
    const Outcome outcome = RunProgram({"--tour", folder.path()}, "offscreen", QString::number(scale));
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.output + outcome.errors));
    const QStringList pictures{"01-opened.png", "02-tool-chosen.png", "03-filled.png", "04-undone.png",
                               "05-saved-and-reopened.png"};
    for (const QString& name : pictures)
        QCOMPARE(QImage(folder.filePath(name)).size(), QSize(1280, 800) * scale);
    QVERIFY(outcome.output.contains(folder.path()));
}

void TestCommandLine::theTourTellsWhatFailed()
{
    const QTemporaryDir folder;
    const Outcome outcome = RunProgram({"--tour", folder.path(), folder.filePath("missing.png")});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains("FAILED"), qPrintable(outcome.errors));
}

void TestCommandLine::exportWritesThePicture()
{
    const QTemporaryDir folder;
    QImage picture(3, 2, QImage::Format_ARGB32);
    picture.fill(qRgba(10, 200, 30, 255));
    picture.setPixel(1, 1, qRgba(250, 0, 128, 77));
    picture.setDotsPerMeterX(11811);
    picture.setDotsPerMeterY(11811);
    QVERIFY(picture.save(folder.filePath("from.png")));

    // The platform is the program's own choice then.
    const Outcome outcome =
        RunProgram({"--export", folder.filePath("to.png"), folder.filePath("from.png")}, QString());
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QCOMPARE(QImage(folder.filePath("to.png")).convertToFormat(QImage::Format_ARGB32), picture);

    const Outcome lossy =
        RunProgram({"--export", folder.filePath("to.jpg"), folder.filePath("from.png")}, QString());
    QCOMPARE(lossy.exitCode, 0);
    QVERIFY2(lossy.errors.contains("transparen", Qt::CaseInsensitive), qPrintable(lossy.errors));
    QCOMPARE(QImage(folder.filePath("to.jpg")).size(), QSize(3, 2));

    const Outcome unnoted =
        RunProgram({"--export", folder.filePath("to.webp"), folder.filePath("from.png")}, QString());
    QCOMPARE(unnoted.exitCode, 0);
    QVERIFY2(unnoted.errors.contains("resolution"), qPrintable(unnoted.errors));
}

void TestCommandLine::exportMakesAPicture()
{
    const QTemporaryDir folder;
    const Outcome outcome = RunProgram({"--new", "7x5", "--export", folder.filePath("to.png")}, QString());
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    const QImage picture(folder.filePath("to.png"));
    QCOMPARE(picture.size(), QSize(7, 5));
    QCOMPARE(picture.pixel(6, 4), qRgb(255, 255, 255));
}

void TestCommandLine::exportTellsWhatFailed_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::newRow("no such file") << "missing.png"
                                  << "to.png";
    QTest::newRow("no picture") << "text.png"
                                << "to.png";
    QTest::newRow("no such format") << "good.png"
                                    << "to.xyz";
    QTest::newRow("no such folder") << "good.png"
                                    << "missing/to.png";
}

void TestCommandLine::exportTellsWhatFailed()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    const QTemporaryDir folder;
    QVERIFY(QImage(2, 2, QImage::Format_RGB32).save(folder.filePath("good.png")));
    QFile text(folder.filePath("text.png"));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("no picture") > 0);
    text.close();

    const Outcome outcome = RunProgram({"--export", folder.filePath(to), folder.filePath(from)}, QString());
    QCOMPARE(outcome.exitCode, 5);
    QVERIFY(!outcome.errors.isEmpty());
    QVERIFY(!QFile::exists(folder.filePath(to)));
}

void TestCommandLine::anExceptionEndsTheProgramWithAReport_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("report");
    QTest::newRow("known") << "known"
                           << "the paint has run out";
    QTest::newRow("unknown") << "unknown"
                             << "unknown exception";
}

void TestCommandLine::anExceptionEndsTheProgramWithAReport()
{
    QFETCH(QString, kind);
    QFETCH(QString, report);
    const Outcome outcome = Run(ZK_THROWING_PROGRAM, {kind});
    QCOMPARE(outcome.exitCode, 4);
    QVERIFY2(outcome.errors.contains(report), qPrintable(outcome.errors));
}

ZK_REGISTER_TEST(tst_command_line, TestCommandLine)
#include "tst_command_line.moc"
