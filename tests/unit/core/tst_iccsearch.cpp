#include "core/IccFile.h"
#include "core/IccSearch.h"
#include "support/TestRegistry.h"

#include <QColorSpace>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

#include <memory>

/// The profiles of the folders, read in the background.
class TestIccSearch : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void whatWasReadEarlyNeedsNoFileLater();
    void whoAsksFirstWaits();
    void whatIsFoundIsGivenOnce();
    void whatCantBeReadIsLeftOut();
    void foldersThatAreNotThereHoldNothing();
    void anAbandonedSearchFindsNothingMore();

private:
    QString Path(const QString& name) const { return m_pFolder->filePath("icc/" + name); }

    void Write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(Path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    static QStringList FilesOf(const std::vector<IccSearch::Found>& found)
    {
        QStringList files;
        for (const IccSearch::Found& each : found)
            files << QFileInfo(each.file).fileName();
        return files;
    }

    std::unique_ptr<QTemporaryDir> m_pFolder;
};

void TestIccSearch::init()
{
    m_pFolder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_pFolder->path()).mkpath("icc"));
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_pFolder->path()));
    qputenv("XDG_DATA_DIRS", QFile::encodeName(m_pFolder->filePath("nowhere")));
    qputenv("HOME", QFile::encodeName(m_pFolder->filePath("nobody")));
    QStandardPaths::setTestModeEnabled(false);
    Write("a.icc", QColorSpace(QColorSpace::AdobeRgb).iccProfile());
    Write("b.icm", QColorSpace(QColorSpace::DisplayP3).iccProfile());
}

void TestIccSearch::cleanup()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestIccSearch::whatWasReadEarlyNeedsNoFileLater()
{
    IccSearch search;
    QVERIFY(!search.IsReady());
    search.Begin();
    QTRY_VERIFY(search.IsReady());
    QVERIFY(QFile::remove(Path("a.icc")));
    const std::vector<IccSearch::Found> found = search.Take();
    QCOMPARE(FilesOf(found), (QStringList{"a.icc", "b.icm"}));
    QCOMPARE(found.front().profile.GetData(), QColorSpace(QColorSpace::AdobeRgb).iccProfile());
}

void TestIccSearch::whoAsksFirstWaits()
{
    IccSearch search;
    QCOMPARE(FilesOf(search.Take()), (QStringList{"a.icc", "b.icm"}));
}

void TestIccSearch::whatIsFoundIsGivenOnce()
{
    IccSearch search;
    QCOMPARE(search.Take().size(), std::size_t(2));
    search.Begin();
    QCOMPARE(search.Take().size(), std::size_t(0));
}

void TestIccSearch::whatCantBeReadIsLeftOut()
{
    Write("broken.icc", QColorSpace(QColorSpace::AdobeRgb).iccProfile().left(140));
    Write("empty.icc", QByteArray());
    Write("secret.icc", QColorSpace(QColorSpace::AdobeRgb).iccProfile());
    QVERIFY(QFile::setPermissions(Path("secret.icc"), {}));
    QVERIFY(QFile::link(Path("gone.icc"), Path("dangling.icc")));
    IccSearch search;
    const QStringList files = FilesOf(search.Take());
    // Root reads what nobody may.
    const QStringList readable = geteuid() == 0 ? QStringList{"secret.icc"} : QStringList{};
    QCOMPARE(files, QStringList({"a.icc", "b.icm"}) + readable);
}

void TestIccSearch::foldersThatAreNotThereHoldNothing()
{
    QVERIFY(QDir(Path(QString())).removeRecursively());
    IccSearch search;
    QVERIFY(!IccFile::Folders().isEmpty());
    QCOMPARE(search.Take().size(), std::size_t(0));
}

void TestIccSearch::anAbandonedSearchFindsNothingMore()
{
    IccSearch search;
    search.Abandon();
    QCOMPARE(search.Take().size(), std::size_t(0));
    // One that is under way ends, too.
    IccSearch begun;
    begun.Begin();
    begun.Abandon();
    QVERIFY(begun.IsReady());
}

ZK_REGISTER_TEST(tst_iccsearch, TestIccSearch)
#include "tst_iccsearch.moc"
