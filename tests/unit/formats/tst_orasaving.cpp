#include "DyingSave.h"

#include "formats/OraFile.h"
#include "support/FileFolder.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QProcess>
#include <QTest>

using PictureFile::Error;

/// A save of the editor's own file replaces the older one whole or not at all, and keeps it beside.
class TestOraSaving : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void theFirstSaveKeepsNothing();
    void theVersionBeforeIsKept();
    void onlyOneVersionIsKept();
    void aLinkStaysALink();
    void aBackupThatCannotBeMadeStandsInNoWay();
    void fullDiskKeepsTheOlderFile();
    void cancellingKeepsTheOlderFile();
    void unreachablePlacesAreTold();
    void whatNobodyCouldOpenAgainIsNotWritten();
    void memoryThatRunsOutIsTold();
    void progressRises();
    void savingTakesNoTiles();
    void aKilledSaveLeavesTheOldFileOrTheNewOne();

private:
    void Save(const FileFolder& folder, const QString& name) const;
};

namespace {
/// The name of the document in the file; empty when it is not whole.
QString NameIn(const QString& path)
{
    const OraFile::ReadResult result = OraFile::Read(path);
    if (!result.outcome.IsOk() || result.content.layers.size() != 3) return {};
    QString name = result.content.layers[0].properties.name;
    const OraContent expected = DyingSave::Content(name);
    for (size_t row = 0; row < 3; ++row) {
        if (PixelChecks::ToQImage(result.content.layers[row].image) !=
            PixelChecks::ToQImage(expected.layers[row].image)) {
            return {};
        }
    }
    return name;
}

PictureFile::Outcome Write(const FileFolder& folder, const QString& name, const FileProgress& progress = {})
{
    return OraFile::Write(folder.Path("work.ora"), DyingSave::Content(name), progress);
}

/// How many writes a save makes.
int CountWrites()
{
    const FileFolder folder;
    int fewest = 1;
    int most = 1 << 20;
    while (fewest < most) {
        const int middle = (fewest + most) / 2;
        FaultSeams::Reset();
        FaultSeams::FailNth(FaultSeams::Seam::FileWrite, middle);
        if (Write(folder, "new").IsOk()) {
            most = middle;
        } else {
            fewest = middle + 1;
        }
    }
    return fewest - 1;
}

int RunDying(const QString& path, const QString& seam, int n)
{
    QProcess process;
    process.start(ZK_DYING_SAVE, {path, seam, QString::number(n)});
    if (!process.waitForFinished()) return -1;
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}
} // namespace

void TestOraSaving::Save(const FileFolder& folder, const QString& name) const
{
    QCOMPARE(Write(folder, name).message, QString());
}

void TestOraSaving::theFirstSaveKeepsNothing()
{
    const FileFolder folder;
    Save(folder, "first");
    QCOMPARE(folder.Names(), QStringList("work.ora"));
}

void TestOraSaving::theVersionBeforeIsKept()
{
    const FileFolder folder;
    Save(folder, "first");
    Save(folder, "second");
    QCOMPARE(folder.Names(), QStringList({"work.ora", "work.ora~"}));
    QCOMPARE(NameIn(folder.Path("work.ora")), QString("second"));
    QCOMPARE(NameIn(folder.Path("work.ora~")), QString("first"));
}

void TestOraSaving::onlyOneVersionIsKept()
{
    const FileFolder folder;
    Save(folder, "first");
    Save(folder, "second");
    Save(folder, "third");
    QCOMPARE(folder.Names(), QStringList({"work.ora", "work.ora~"}));
    QCOMPARE(NameIn(folder.Path("work.ora~")), QString("second"));
}

void TestOraSaving::aLinkStaysALink()
{
    const FileFolder elsewhere;
    const FileFolder folder;
    QCOMPARE(OraFile::Write(elsewhere.Path("real.ora"), DyingSave::Content("first")).message, QString());
    QVERIFY(QFile::link(elsewhere.Path("real.ora"), folder.Path("work.ora")));
    Save(folder, "second");
    QVERIFY(QFileInfo(folder.Path("work.ora")).isSymLink());
    QCOMPARE(NameIn(elsewhere.Path("real.ora")), QString("second"));
    QCOMPARE(NameIn(elsewhere.Path("real.ora~")), QString("first"));
}

void TestOraSaving::aBackupThatCannotBeMadeStandsInNoWay()
{
    const FileFolder folder;
    Save(folder, "first");
    QVERIFY(QDir().mkpath(folder.Path("work.ora~/full")));
    Save(folder, "second");
    QCOMPARE(NameIn(folder.Path("work.ora")), QString("second"));
    QCOMPARE(folder.Names(), QStringList("work.ora"));
}

void TestOraSaving::fullDiskKeepsTheOlderFile()
{
    const FileFolder folder;
    Save(folder, "first");
    int failures = 0;
    // Whichever write it is that finds the disk full.
    for (int failing = 1;; ++failing) {
        FaultSeams::FailNth(FaultSeams::Seam::FileWrite, failing);
        const PictureFile::Outcome outcome = Write(folder, "second");
        FaultSeams::Reset();
        if (outcome.IsOk()) break;
        ++failures;
        QCOMPARE(outcome.error, Error::WriteFailed);
        QVERIFY2(outcome.message.contains("No space left on device"), qPrintable(outcome.message));
        QVERIFY(outcome.message.contains("work.ora"));
        QCOMPARE(folder.Names(), QStringList("work.ora"));
        if (failures % 10 == 1) QCOMPARE(NameIn(folder.Path("work.ora")), QString("first"));
    }
    QVERIFY2(failures > 20, qPrintable(QString::number(failures)));
    QCOMPARE(NameIn(folder.Path("work.ora")), QString("second"));
}

void TestOraSaving::cancellingKeepsTheOlderFile()
{
    const FileFolder folder;
    Save(folder, "first");
    int asked = 0;
    const FileProgress progress{{}, [&asked] { return ++asked > 100; }};
    const PictureFile::Outcome outcome = Write(folder, "second", progress);
    QCOMPARE(outcome.error, Error::Cancelled);
    QCOMPARE(outcome.message, QString());
    QCOMPARE(folder.Names(), QStringList("work.ora"));
    QCOMPARE(NameIn(folder.Path("work.ora")), QString("first"));
}

void TestOraSaving::unreachablePlacesAreTold()
{
    const FileFolder folder;
    const PictureFile::Outcome gone = OraFile::Write(folder.Path("gone/work.ora"), DyingSave::Content("new"));
    QCOMPARE(gone.error, Error::NotAllowed);
    QVERIFY2(gone.message.contains("doesn't exist"), qPrintable(gone.message));

    folder.SetPermissions(QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
    const OrdinaryUser user;
    const PictureFile::Outcome forbidden = Write(folder, "new");
    QCOMPARE(forbidden.error, Error::NotAllowed);
    QVERIFY2(forbidden.message.contains("can't be written there"), qPrintable(forbidden.message));
}

void TestOraSaving::whatNobodyCouldOpenAgainIsNotWritten()
{
    const FileFolder folder;
    Save(folder, "first");
    const QByteArray before = folder.Read("work.ora");
    OraContent content = DyingSave::Content("second");
    DocumentPath path;
    path.name = QString(int(ArchiveLimits::MostXmlBytes), 'x');
    content.paths.push_back(path);
    const PictureFile::Outcome outcome = OraFile::Write(folder.Path("work.ora"), content);
    QCOMPARE(outcome.error, Error::TooLarge);
    QVERIFY2(outcome.message.contains("need more than 64.0 MB"), qPrintable(outcome.message));
    QVERIFY(folder.Read("work.ora") == before);
    QCOMPARE(folder.Names(), QStringList("work.ora"));
}

void TestOraSaving::memoryThatRunsOutIsTold()
{
    const FileFolder folder;
    const PictureFile::Outcome outcome = OraFile::Write(folder.Path("work.ora"), OraContent());
    QCOMPARE(outcome.error, Error::OutOfMemory);
    QVERIFY(outcome.message.contains("not enough memory"));
    QCOMPARE(folder.Names(), QStringList());
}

void TestOraSaving::progressRises()
{
    const FileFolder folder;
    QVector<int> told;
    const FileProgress progress{[&told](int permille) { told << permille; }, {}};
    QVERIFY(Write(folder, "first", progress).IsOk());
    QVERIFY(std::is_sorted(told.begin(), told.end()));
    QCOMPARE(told.last(), 1000);
    QVERIFY(told.size() > 100);

    told.clear();
    QVERIFY(OraFile::Read(folder.Path("work.ora"), {}, progress).outcome.IsOk());
    QVERIFY(std::is_sorted(told.begin(), told.end()));
    QCOMPARE(told.last(), 1000);
    QVERIFY(told.size() > 100);
}

void TestOraSaving::savingTakesNoTiles()
{
    const FileFolder folder;
    const OraContent content = DyingSave::Content("first");
    const int before = LXTileManager::Instance().LiveTileCount();
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    QVERIFY(OraFile::Write(folder.Path("work.ora"), content).IsOk());
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), before);
}

void TestOraSaving::aKilledSaveLeavesTheOldFileOrTheNewOne()
{
    constexpr int points = 20;
    const int writes = CountWrites();
    QVERIFY2(writes > points, qPrintable(QString::number(writes)));
    for (int point = 0; point < points; ++point) {
        const FileFolder folder;
        Save(folder, "old");
        const int n = 1 + (writes - 1) * point / (points - 1);
        QCOMPARE(RunDying(folder.Path("work.ora"), "write", n), FaultSeams::ExitCode);
        QCOMPARE(NameIn(folder.Path("work.ora")), QString("old"));
        // And the next save goes well beside what the dead one left.
        Save(folder, "next");
        QCOMPARE(NameIn(folder.Path("work.ora")), QString("next"));
    }

    // The steps that put the file into its place: before and behind the second name, before and behind the
    // exchange.
    const QStringList after{"old", "old", "old", "new"};
    for (int step = 1; step <= after.size(); ++step) {
        const FileFolder folder;
        Save(folder, "older");
        Save(folder, "old");
        QCOMPARE(RunDying(folder.Path("work.ora"), "commit", step), FaultSeams::ExitCode);
        QCOMPARE(NameIn(folder.Path("work.ora")), after[step - 1]);
        QCOMPARE(NameIn(folder.Path("work.ora~")), QString(step <= 2 ? "older" : "old"));
    }
    const FileFolder folder;
    Save(folder, "old");
    QCOMPARE(RunDying(folder.Path("work.ora"), "commit", after.size() + 1), 0);
}

ZK_REGISTER_TEST(tst_orasaving, TestOraSaving)
#include "tst_orasaving.moc"
