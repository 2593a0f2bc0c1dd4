#include "BrokenOra.h"

#include "formats/OraFile.h"
#include "support/FileFolder.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QDirIterator>
#include <QTest>

#include <unistd.h>

using PictureFile::Error;

Q_DECLARE_METATYPE(PictureFile::Error)

/// OpenRaster files that nobody should trust: each is told clearly, and leaves nothing behind.
class TestOraHostile : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void theGoodFileOpens();
    void brokenFilesAreRefusedOneAfterAnother();
    void reasonsAreTold_data();
    void reasonsAreTold();
    void limitsAreInclusive();
    void aPartThatIsNamedOftenCountsAsOften();
    void tooLargeIsToldBeforeMemoryIsTaken();
    void memoryThatRunsOutIsTold();
    void whatIsNoFileIsRefused();
    void cancellingStops();

private:
    PictureFile::Outcome Outcome(const QByteArray& bytes, const FormatLimits& limits = {}) const;

    FileFolder m_Folder;
};

namespace {
#if defined(__SANITIZE_ADDRESS__)
// The sanitizer keeps what is freed.
constexpr qint64 MostGrowth = qint64(1) << 40;
#else
// Room for what the allocator keeps; one file alone unpacks to 64 megabytes.
constexpr qint64 MostGrowth = qint64(32) << 20;
#endif

/// Every file and folder below, with its size.
QStringList Tree(const QString& folder)
{
    QStringList tree;
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        tree << QString("%1 %2").arg(path).arg(entries.fileInfo().isDir() ? 0 : entries.fileInfo().size());
    }
    tree.sort();
    return tree;
}

qint64 ResidentBytes()
{
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly)) return 0;
    return file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}
} // namespace

PictureFile::Outcome TestOraHostile::Outcome(const QByteArray& bytes, const FormatLimits& limits) const
{
    return OraFile::Read(m_Folder.Write("holiday.ora", bytes), limits).outcome;
}

void TestOraHostile::theGoodFileOpens()
{
    // Else everything below would be refused for a reason of its own.
    const OraFile::ReadResult result =
        OraFile::Read(m_Folder.Write("good.ora", ZipBytes::Write(BrokenOra::GoodEntries()).bytes));
    QCOMPARE(result.outcome.message, QString());
    QCOMPARE(result.content.layers.size(), size_t(1));
    QCOMPARE(result.content.layers[0].properties.rect, QRect(1, 2, 30, 20));
    QCOMPARE(result.content.foreign.entries.size(), 1);
}

void TestOraHostile::brokenFilesAreRefusedOneAfterAnother()
{
    QFile::remove("/tmp/zk-evil.txt");
    // Deeper than any of the names climbs.
    const QTemporaryDir outside;
    const QString folder = outside.filePath("a/b/c");
    QVERIFY(QDir().mkpath(folder));
    const QString path = folder + "/holiday.ora";

    const QVector<BrokenOra::File> files = BrokenOra::Files();
    QVERIFY2(files.size() >= 200, qPrintable(QString::number(files.size())));
    const int tilesBefore = LXTileManager::Instance().LiveTileCount();
    qint64 residentBefore = 0;
    for (int i = 0; i < files.size(); ++i) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(files[i].bytes) == files[i].bytes.size());
        file.close();
        const QStringList treeBefore = Tree(outside.path());

        const OraFile::ReadResult result = OraFile::Read(path);
        QVERIFY2(!result.outcome.IsOk(), files[i].name);
        QVERIFY2(result.outcome.message.startsWith("“" + path + "” can't be opened.\n"), files[i].name);
        QVERIFY2(result.outcome.error != Error::OutOfMemory, files[i].name);
        QVERIFY2(result.content.layers.empty(), files[i].name);
        QVERIFY2(LXTileManager::Instance().LiveTileCount() == tilesBefore, files[i].name);
        QVERIFY2(Tree(outside.path()) == treeBefore, files[i].name);
        if (i == 0) residentBefore = ResidentBytes();
    }
    QVERIFY(!QFile::exists("/tmp/zk-evil.txt"));
    const qint64 grown = ResidentBytes() - residentBefore;
    QVERIFY2(grown < MostGrowth, qPrintable(QString("grown by %1").arg(grown)));
}

void TestOraHostile::reasonsAreTold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Error>("error");
    QTest::addColumn<QString>("told");
    const QVector<BrokenOra::File> files = BrokenOra::Files();
    const auto add = [&files](const char* name, Error error, const char* told) {
        for (const BrokenOra::File& file : files) {
            if (file.name == name) QTest::newRow(name) << file.bytes << error << QString(told);
        }
    };
    add("part named ../evil.txt", Error::Broken, "unsafe name (“../evil.txt”)");
    add("part named data/e\nvil.txt", Error::Broken, "unsafe name (“data/e?vil.txt”)");
    add("two parts of one name", Error::Broken, "two parts named “stack.xml”");
    add("another program's type", Error::UnknownFormat, "not a picture with layers");
    add("no list of layers", Error::UnknownFormat, "not a picture with layers");
    add("part of a thousand times its size", Error::TooLarge, "needs 64.0 MB unpacked");
    add("more kept selections than anybody has", Error::TooLarge, "more than 2000 kept selections");
    add("textures that claim too much together", Error::TooLarge, "layers need 18.0 GB of memory");
    add("twelve gigabytes altogether", Error::TooLarge, "more than 8.0 GB");
    add("three hundred megabytes that nobody knows", Error::TooLarge, "needs 300.0 MB unpacked");
    add("claims sixty thousand parts", Error::TooLarge, "more than 10000 parts");
    add("list: entities that multiply", Error::Broken, "document type");
    add("list: ten thousand deep", Error::Broken, "more than 64 deep");
    add("list: ten thousand groups", Error::Broken, "more than 64 deep");
    add("list: more layers than anybody has", Error::TooLarge, "more than 2000 layers");
    add("list: no size", Error::Broken, "how large the picture is");
    add("list: too large together", Error::TooLarge, "60000 x 60000 pixels, which needs 13.4 GB of memory");
    add("picture: claims too wide", Error::TooLarge, "60001 x 1 pixels");
    add("picture: text", Error::Broken, "A layer is missing in it, or is damaged");
    add("pictures that claim too much together", Error::TooLarge,
        "layers need 18.0 GB of memory; at most 16.0 GB");
    add("cut off after 100", Error::Broken, "damaged");
}

void TestOraHostile::reasonsAreTold()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, told);
    const PictureFile::Outcome outcome = Outcome(bytes);
    QTEST(outcome.error, "error");
    QVERIFY2(outcome.message.contains(told), qPrintable(outcome.message));
}

void TestOraHostile::limitsAreInclusive()
{
    const QByteArray good = ZipBytes::Write(BrokenOra::GoodEntries()).bytes;
    const auto with = [](const std::function<void(ArchiveLimits&)>& change) {
        FormatLimits limits;
        change(limits.archive);
        return limits;
    };
    QCOMPARE(Outcome(good, with([](ArchiveLimits& l) { l.maxEntries = 8; })).error, Error::None);
    QCOMPARE(Outcome(good, with([](ArchiveLimits& l) { l.maxEntries = 7; })).error, Error::TooLarge);
    QCOMPARE(Outcome(good, with([](ArchiveLimits& l) { l.maxLayers = 1; })).error, Error::None);
    QCOMPARE(Outcome(good, with([](ArchiveLimits& l) { l.maxLayers = 0; })).error, Error::TooLarge);
    // A layer of 30 x 20 and a mask of 10 x 10.
    QCOMPARE(Outcome(good, with([](ArchiveLimits& l) { l.maxLayerBytes = 2800; })).error, Error::None);
    QCOMPARE(Outcome(good, with([](ArchiveLimits& l) { l.maxLayerBytes = 2799; })).error, Error::TooLarge);
    // "what others need " twenty times.
    QCOMPARE(Outcome(good, with([](ArchiveLimits& l) { l.maxKeptBytes = 340; })).error, Error::None);
    QCOMPARE(Outcome(good, with([](ArchiveLimits& l) { l.maxKeptBytes = 339; })).error, Error::TooLarge);
    const int xmlBytes = BrokenOra::GoodEntries()[1].bytes.size();
    QCOMPARE(Outcome(good, with([&](ArchiveLimits& l) { l.maxXmlBytes = xmlBytes; })).error, Error::None);
    QCOMPARE(Outcome(good, with([&](ArchiveLimits& l) { l.maxXmlBytes = xmlBytes - 1; })).error,
             Error::TooLarge);
    qint64 expanded = 0;
    for (const ZipBytes::Entry& entry : BrokenOra::GoodEntries()) {
        expanded += entry.bytes.size();
    }
    QCOMPARE(Outcome(good, with([&](ArchiveLimits& l) { l.maxExpandedBytes = expanded; })).error,
             Error::None);
    QCOMPARE(Outcome(good, with([&](ArchiveLimits& l) { l.maxExpandedBytes = expanded - 1; })).error,
             Error::TooLarge);
    // image, stack, layer, mask
    const QByteArray deep = BrokenOra::WithStack(
        BrokenOra::StackOf(R"(<layer src="data/layer0.png"><a><b><c/></b></a></layer>)"));
    QCOMPARE(Outcome(deep, with([](ArchiveLimits& l) { l.maxXmlDepth = 6; })).error, Error::None);
    QCOMPARE(Outcome(deep, with([](ArchiveLimits& l) { l.maxXmlDepth = 5; })).error, Error::Broken);
}

void TestOraHostile::aPartThatIsNamedOftenCountsAsOften()
{
    // 340 bytes each time.
    const QByteArray metadata = R"(<zk:metadata src="data/notes.bin" tag="0"/>)";
    const QByteArray bytes = BrokenOra::WithStack(
        BrokenOra::StackOf(R"(<layer src="data/layer0.png">)" + metadata.repeated(3) + "</layer>"));
    FormatLimits limits;
    // The mask and the profile, which nothing names, are carried along too.
    limits.archive.maxKeptBytes = 3 * 340 + 10000;
    QCOMPARE(Outcome(bytes, limits).error, Error::None);
    limits.archive.maxKeptBytes = 3 * 340 - 1;
    const PictureFile::Outcome outcome = Outcome(bytes, limits);
    QCOMPARE(outcome.error, Error::TooLarge);
    QVERIFY2(outcome.message.contains("metadata and unknown parts need more than 1,019 bytes"),
             qPrintable(outcome.message));
}

void TestOraHostile::tooLargeIsToldBeforeMemoryIsTaken()
{
    for (const BrokenOra::File& file : BrokenOra::Files()) {
        if (!file.name.contains("claim")) continue;
        // Any tile would fail, and be told as too little memory.
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
        QVERIFY2(Outcome(file.bytes).error != Error::OutOfMemory || file.name.contains("rows"), file.name);
    }
}

void TestOraHostile::memoryThatRunsOutIsTold()
{
    const QByteArray good = ZipBytes::Write(BrokenOra::GoodEntries()).bytes;
    const int tilesBefore = LXTileManager::Instance().LiveTileCount();
    for (const int failing : {1, 2}) {
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, failing);
        const PictureFile::Outcome outcome = Outcome(good);
        QCOMPARE(outcome.error, Error::OutOfMemory);
        QVERIFY(outcome.message.contains("not enough memory"));
        QCOMPARE(LXTileManager::Instance().LiveTileCount(), tilesBefore);
    }
}

void TestOraHostile::whatIsNoFileIsRefused()
{
    QCOMPARE(OraFile::Read(m_Folder.Path("gone.ora")).outcome.error, Error::Missing);
    QCOMPARE(OraFile::Read(m_Folder.Path(".")).outcome.error, Error::UnknownFormat);
    QVERIFY(!OraFile::HasContentOf(m_Folder.Path("gone.ora")));
    QVERIFY(!OraFile::HasContentOf("/dev/zero"));
    QVERIFY(!OraFile::HasContentOf(m_Folder.Write("short.ora", "PK")));
}

void TestOraHostile::cancellingStops()
{
    const QString path = m_Folder.Write("good.ora", ZipBytes::Write(BrokenOra::GoodEntries()).bytes);
    FileProgress progress;
    progress.isCancelled = [] { return true; };
    const OraFile::ReadResult result = OraFile::Read(path, {}, progress);
    QCOMPARE(result.outcome.error, Error::Cancelled);
    QCOMPARE(result.outcome.message, QString());
}

ZK_REGISTER_TEST(tst_orahostile, TestOraHostile)
#include "tst_orahostile.moc"
