#include "app/RecentFiles.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class TestRecentFiles : public QObject
{
    Q_OBJECT

private slots:

    void init() { RecentFiles().Clear(); }

    void theNewestFileIsFirst();
    void aFileStandsOnce();
    void filesThatAreGoneAreLeftOut();
    void theListEnds();
    void theListOutlivesTheObject();

private:
    QString MakeFile(const QString& name) const
    {
        QFile file(m_Folder.filePath(name));
        return file.open(QIODevice::WriteOnly) ? file.fileName() : QString();
    }

    QTemporaryDir m_Folder;
};

void TestRecentFiles::theNewestFileIsFirst()
{
    RecentFiles files;
    QSignalSpy changed(&files, &RecentFiles::Changed);
    const QString a = MakeFile("a.png");
    const QString b = MakeFile("b.png");
    files.Add(a);
    files.Add(b);
    QCOMPARE(files.GetExisting(), (QStringList{b, a}));
    QCOMPARE(changed.count(), 2);
}

void TestRecentFiles::aFileStandsOnce()
{
    RecentFiles files;
    const QString a = MakeFile("a.png");
    const QString b = MakeFile("b.png");
    files.Add(a);
    files.Add(b);
    files.Add(a);
    QCOMPARE(files.GetExisting(), (QStringList{a, b}));
}

void TestRecentFiles::filesThatAreGoneAreLeftOut()
{
    RecentFiles files;
    const QString a = MakeFile("a.png");
    files.Add(a);
    files.Add(m_Folder.filePath("gone.png"));
    QCOMPARE(files.GetExisting(), QStringList{a});
}

void TestRecentFiles::theListEnds()
{
    RecentFiles files;
    for (int number = 0; number <= RecentFiles::MaxCount; ++number) {
        files.Add(MakeFile(QStringLiteral("%1.png").arg(number)));
    }
    QCOMPARE(files.GetExisting().size(), RecentFiles::MaxCount);
    QVERIFY(!files.GetExisting().contains(m_Folder.filePath("0.png")));
}

void TestRecentFiles::theListOutlivesTheObject()
{
    const QString a = MakeFile("a.png");
    RecentFiles().Add(a);
    QCOMPARE(RecentFiles().GetExisting(), QStringList{a});
}

ZK_REGISTER_TEST(tst_recentfiles, TestRecentFiles)
#include "tst_recentfiles.moc"
