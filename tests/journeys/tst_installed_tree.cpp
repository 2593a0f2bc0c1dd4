#include "support/TestRegistry.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// The program after `cmake --install`, in a place that it was not built for.
class TestInstalledTree : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void theDesktopFindsTheProgram_data();
    void theDesktopFindsTheProgram();
    void theProgramTellsItsVersion();
    void theProgramWritesAPicture();
    void theTourRunsWithTheInstalledPlugIn();
    void theBuildsPlugInIsNotTakenInstead();

private:
    QString Path(const QString& name) const { return m_Prefix.filePath(name); }

    struct Outcome
    {
        int exitCode = -1;
        QString text;
    };

    static Outcome Run(const QString& program, const QStringList& arguments);

    QTemporaryDir m_Prefix;
};

TestInstalledTree::Outcome TestInstalledTree::Run(const QString& program, const QStringList& arguments)
{
    constexpr int limit = 120000; // ms
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(limit) || process.exitStatus() != QProcess::NormalExit) return Outcome();
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput())};
}

void TestInstalledTree::initTestCase()
{
    const Outcome install = Run(ZK_CMAKE, {"--install", ZK_BUILD_FOLDER, "--prefix", m_Prefix.path()});
    QVERIFY2(install.exitCode == 0, qPrintable(install.text));
}

void TestInstalledTree::theDesktopFindsTheProgram_data()
{
    QTest::addColumn<QString>("file");
    for (const char* file :
         {"share/applications/org.zenkari.Zenkari.desktop", "share/metainfo/org.zenkari.Zenkari.metainfo.xml",
          "share/mime/packages/zenkari.xml", "share/icons/hicolor/scalable/apps/zenkari.svg"}) {
        QTest::newRow(file) << QString(file);
    }
}

void TestInstalledTree::theDesktopFindsTheProgram()
{
    QFETCH(QString, file);
    QVERIFY(QFile::exists(Path(file)));
}

void TestInstalledTree::theProgramTellsItsVersion()
{
    const Outcome outcome = Run(Path("bin/zenkari"), {"--version"});
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.text.startsWith("zenkari " ZK_PRODUCT_VERSION), qPrintable(outcome.text));
}

void TestInstalledTree::theProgramWritesAPicture()
{
    const QString file = Path("picture.png");
    const Outcome outcome = Run(Path("bin/zenkari"), {"--new", "9x7", "--export", file});
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.text));
    QCOMPARE(QImage(file).size(), QSize(9, 7));
}

void TestInstalledTree::theTourRunsWithTheInstalledPlugIn()
{
    const Outcome outcome = Run(Path("bin/zenkari"), {"--tour", Path("tour")});
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.text));
    QVERIFY(QFile::exists(Path("tour/03-filled.png")));
}

void TestInstalledTree::theBuildsPlugInIsNotTakenInstead()
{
    // Without its own plug-in it must not find the build's.
    QDirIterator search(Path("lib"), {"libbasictools.so"}, QDir::Files, QDirIterator::Subdirectories);
    QVERIFY(search.hasNext());
    const QString plugIn = QFileInfo(search.next()).canonicalFilePath();
    QVERIFY(QFile::rename(plugIn, plugIn + ".away"));
    const Outcome outcome = Run(Path("bin/zenkari"), {"--tour", Path("tour")});
    QCOMPARE(outcome.exitCode, 3);
    QVERIFY2(outcome.text.contains(QDir::toNativeSeparators(plugIn)), qPrintable(outcome.text));
}

ZK_REGISTER_TEST(tst_installed_tree, TestInstalledTree)
#include "tst_installed_tree.moc"
