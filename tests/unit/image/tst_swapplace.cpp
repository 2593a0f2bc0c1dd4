#include "image/LXImage.h"
#include "image/LXTileManager.h"
#include "image/SwapPlace.h"
#include "support/TestRegistry.h"

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {
constexpr qint64 Gibibyte = qint64(1) << 30;
} // namespace

/// How much memory tiles take at first, where they wait beyond it, and how the store ends.
class TestSwapPlace : public QObject
{
    Q_OBJECT

private slots:
    void threeQuartersOfWhatIsFreeAreShared_data();
    void threeQuartersOfWhatIsFreeAreShared();
    void theDiskIsBetterThanMemory();
    void aFolderThatCannotBeWrittenIsLeftOut();
    void theTemporaryFolderStaysWhenNothingIsBetter();
    void filesInMemoryAreTold();
    void imagesMayOutliveTheStore();
};

void TestSwapPlace::threeQuartersOfWhatIsFreeAreShared_data()
{
    QTest::addColumn<qint64>("available");
    QTest::addColumn<int>("sharers");
    QTest::addColumn<qint64>("budget");
    QTest::newRow("alone") << 16 * Gibibyte << 1 << 12 * Gibibyte;
    QTest::newRow("four") << 16 * Gibibyte << 4 << 3 * Gibibyte;
    QTest::newRow("unknown") << qint64(0) << 1 << Gibibyte;
    QTest::newRow("little, two") << Gibibyte << 2 << Gibibyte / 2;
    QTest::newRow("nonsense") << 16 * Gibibyte << 0 << 12 * Gibibyte;
}

void TestSwapPlace::threeQuartersOfWhatIsFreeAreShared()
{
    QFETCH(qint64, available);
    QFETCH(int, sharers);
    QTEST(FirstTileBudget(available, sharers), "budget");
}

void TestSwapPlace::theDiskIsBetterThanMemory()
{
    const QTemporaryDir first;
    const QTemporaryDir second;
    const std::vector<std::string> folders{first.path().toStdString(), second.path().toStdString()};
    QCOMPARE(ChooseSwapFolder(folders, [](const std::string&) { return false; }), folders[0]);
    QCOMPARE(ChooseSwapFolder(folders, [&](const std::string& folder) { return folder == folders[0]; }),
             folders[1]);
}

void TestSwapPlace::aFolderThatCannotBeWrittenIsLeftOut()
{
    const QTemporaryDir folder;
    const std::string good = folder.path().toStdString();
    const auto onDisk = [](const std::string&) { return false; };
    QCOMPARE(ChooseSwapFolder({"/nowhere/at/all", good}, onDisk), good);
}

void TestSwapPlace::theTemporaryFolderStaysWhenNothingIsBetter()
{
    const auto inMemory = [](const std::string&) { return true; };
    QCOMPARE(ChooseSwapFolder({"/tmp", "/nowhere/at/all"}, inMemory), std::string("/tmp"));
}

void TestSwapPlace::filesInMemoryAreTold()
{
    QVERIFY(!LiesInMemory("/nowhere/at/all"));
    QVERIFY(!LiesInMemory("/proc"));
    if (!QFileInfo(QStringLiteral("/dev/shm")).isDir()) QSKIP("This system has no folder in memory.");
    QVERIFY(LiesInMemory("/dev/shm"));
}

/// A program whose static image was made before the store and goes after it; see there.
void TestSwapPlace::imagesMayOutliveTheStore()
{
    QProcess program;
    program.start(QStringLiteral(ZK_STATIC_IMAGE_PROGRAM), QStringList());
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.readAllStandardOutput(), QByteArray("no store\nimage gone\n"));
    QCOMPARE(program.exitCode(), 0);
}

ZK_REGISTER_TEST(tst_swapplace, TestSwapPlace)
#include "tst_swapplace.moc"
