#include "core/ZKApplication.h"
#include "core/ZKApplication_p.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QDir>
#include <QImage>
#include <QLinearGradient>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

class TestApplication : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void unwrittenValueIsTheDefault();
    void writtenValueIsSeenAtOnce();
    void writtenValueKeepsItsTypeInTheFile_data();
    void writtenValueKeepsItsTypeInTheFile();
    void unreadableValueIsTheDefault();
    void foldersAreMade();
    void testModeLeavesThePersonsFoldersAlone();
    void colorsTellTheirChanges();
    void invalidColorIsIgnored();
    void maskColorsAreOpaqueGrays_data();
    void maskColorsAreOpaqueGrays();
    void theGradientTellsItsChanges();
    void theRefiningActionIsRegistered();
    void aDestroyedRefiningActionIsGone();
    void patternsAreFoundByName();
    void patternIndexStaysInside();
    void shippedPatternsAreSeamlessAndSmall();

private:
    ApplicationFolders FoldersIn(const QTemporaryDir& dir) const
    {
        return {dir.filePath("config"), dir.filePath("data"), dir.filePath("share")};
    }

    std::unique_ptr<QTemporaryDir> m_pDir;
};

void TestApplication::init()
{
    m_pDir = std::make_unique<QTemporaryDir>();
    ZKApplicationPrivate::Get().SetFolders(FoldersIn(*m_pDir));
    ZKApplication::SetForeground(Qt::black);
    ZKApplication::SetBackground(Qt::white);
}

void TestApplication::cleanup()
{
    ZKApplicationPrivate::Get().SetFolders(ApplicationFolders::Default());
}

void TestApplication::unwrittenValueIsTheDefault()
{
    QCOMPARE(ZKApplication::GetUserValue("MagicWandTool/Tolerance", 32), QVariant(32));
    QCOMPARE(ZKApplication::GetUserValue("MagicWandTool/Tolerance", QVariant()), QVariant());
}

void TestApplication::writtenValueIsSeenAtOnce()
{
    ZKApplication::SetUserValue("FillCanTool/Active", true);
    QCOMPARE(ZKApplication::GetUserValue("FillCanTool/Active", false), QVariant(true));
    ZKApplication::SetUserValue("FillCanTool/Active", false);
    QCOMPARE(ZKApplication::GetUserValue("FillCanTool/Active", true), QVariant(false));
}

void TestApplication::writtenValueKeepsItsTypeInTheFile_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("def");
    QTest::newRow("bool") << QVariant(true) << QVariant(false);
    QTest::newRow("int") << QVariant(-7) << QVariant(0);
    QTest::newRow("double") << QVariant(0.1) << QVariant(0.0);
    QTest::newRow("text") << QVariant(QString::fromUtf8("Größe; \"2\"")) << QVariant(QString());
    QTest::newRow("size") << QVariant(QSize(30, 40)) << QVariant(QSize());
    QTest::newRow("color") << QVariant(QColor(1, 2, 3, 4)) << QVariant(QColor());
    QTest::newRow("bytes") << QVariant(QByteArray("\0\1\xff", 3)) << QVariant(QByteArray());
}

void TestApplication::writtenValueKeepsItsTypeInTheFile()
{
    QFETCH(QVariant, value);
    QFETCH(QVariant, def);
    ZKApplication::SetUserValue("Tool/Value", value);
    // Handing the folders in anew lets go of the file and reads it again.
    ZKApplicationPrivate::Get().SetFolders(FoldersIn(*m_pDir));
    QVERIFY(QFile::exists(m_pDir->filePath("config/zenkari.ini")));
    QCOMPARE(ZKApplication::GetUserValue("Tool/Value", def), value);
}

void TestApplication::unreadableValueIsTheDefault()
{
    ZKApplication::SetUserValue("Tool/Value", "not a number");
    QCOMPARE(ZKApplication::GetUserValue("Tool/Value", 5), QVariant(5));
}

void TestApplication::foldersAreMade()
{
    QCOMPARE(ZKApplication::GetUserDataFolder(), m_pDir->filePath("data"));
    QVERIFY(QDir(ZKApplication::GetUserDataFolder()).exists());
    QCOMPARE(ZKApplication::GetResourcePath(), m_pDir->filePath("share"));
}

void TestApplication::testModeLeavesThePersonsFoldersAlone()
{
    const ApplicationFolders folders = ApplicationFolders::Default();
    QVERIFY(QStandardPaths::isTestModeEnabled());
    QVERIFY2(folders.config.startsWith(QDir::tempPath()), qPrintable(folders.config));
    QVERIFY2(folders.data.startsWith(QDir::tempPath()), qPrintable(folders.data));
}

void TestApplication::colorsTellTheirChanges()
{
    QSignalSpy foreground(ZKApplication::GetInstance(), &ZKApplication::ForegroundChanged);
    QSignalSpy background(ZKApplication::GetInstance(), &ZKApplication::BackgroundChanged);
    ZKApplication::SetForeground(Qt::red);
    ZKApplication::SetForeground(Qt::red);
    ZKApplication::SetBackground(Qt::blue);
    QCOMPARE(ZKApplication::GetForeground(), QColor(Qt::red));
    QCOMPARE(ZKApplication::GetBackground(), QColor(Qt::blue));
    QCOMPARE(foreground.count(), 1);
    QCOMPARE(foreground.at(0).at(0).value<QColor>(), QColor(Qt::red));
    QCOMPARE(background.count(), 1);
}

void TestApplication::invalidColorIsIgnored()
{
    ZKApplication::SetForeground(QColor());
    QCOMPARE(ZKApplication::GetForeground(), QColor(Qt::black));
}

void TestApplication::maskColorsAreOpaqueGrays_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<int>("gray");
    QTest::newRow("black hides") << QColor(0, 0, 0) << 0;
    QTest::newRow("white reveals") << QColor(255, 255, 255) << 255;
    QTest::newRow("red is half") << QColor(255, 0, 0) << 127;
    QTest::newRow("alpha does not count") << QColor(200, 100, 50, 3) << 125;
}

void TestApplication::maskColorsAreOpaqueGrays()
{
    QFETCH(QColor, color);
    QFETCH(int, gray);
    ZKApplication::SetForeground(color);
    ZKApplication::SetBackground(color);
    QCOMPARE(ZKApplication::GetMaskForeground().rgba(), qRgba(gray, gray, gray, 255));
    QCOMPARE(ZKApplication::GetMaskBackground().rgba(), qRgba(gray, gray, gray, 255));
}

void TestApplication::theGradientTellsItsChanges()
{
    ZKApplication::SetGradient(QBrush());
    QSignalSpy told(ZKApplication::GetInstance(), &ZKApplication::GradientChanged);
    QLinearGradient gradient(0, 0, 1, 0);
    gradient.setColorAt(0, Qt::red);
    ZKApplication::SetGradient(gradient);
    ZKApplication::SetGradient(gradient);
    QCOMPARE(told.size(), 1);
    QCOMPARE(ZKApplication::GetGradient().style(), Qt::LinearGradientPattern);
    QCOMPARE(told.at(0).at(0).value<QBrush>(), ZKApplication::GetGradient());
    ZKApplication::SetGradient(QBrush());
    QCOMPARE(ZKApplication::GetGradient(), QBrush());
}

void TestApplication::theRefiningActionIsRegistered()
{
    ZKApplication* application = ZKApplication::GetInstance();
    QVERIFY(!application->GetRefineSelection());
    qRegisterMetaType<QAction*>();
    QAction action("Refine");
    QSignalSpy told(application, &ZKApplication::RefineSelectionRegistered);
    application->RegisterRefineSelection(&action);
    application->RegisterRefineSelection(&action);
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0).at(0).value<QAction*>(), &action);
    QCOMPARE(application->GetRefineSelection(), &action);
    application->RegisterRefineSelection(nullptr);
    QCOMPARE(told.size(), 2);
    QVERIFY(!told.at(1).at(0).value<QAction*>());
    QVERIFY(!application->GetRefineSelection());
}

void TestApplication::aDestroyedRefiningActionIsGone()
{
    ZKApplication* application = ZKApplication::GetInstance();
    {
        QAction action("Refine");
        application->RegisterRefineSelection(&action);
    }
    QVERIFY(!application->GetRefineSelection());
}

void TestApplication::patternsAreFoundByName()
{
    QVERIFY(QDir().mkpath(m_pDir->filePath("share/patterns")));
    const QImage picture(4, 4, QImage::Format_ARGB32);
    QVERIFY(picture.save(m_pDir->filePath("share/patterns/b.png")));
    QVERIFY(picture.save(m_pDir->filePath("share/patterns/a.png")));
    QFile readme(m_pDir->filePath("share/patterns/README.md"));
    QVERIFY(readme.open(QIODevice::WriteOnly));

    ZKApplicationPrivate::Get().SetFolders(FoldersIn(*m_pDir));
    QCOMPARE(ZKApplication::GetPatternCount(), 2);
    QCOMPARE(ZKApplication::GetPatternFile(0),
             QDir::toNativeSeparators(m_pDir->filePath("share/patterns/a.png")));
    QVERIFY(ZKApplication::GetPatternFile(1).endsWith("b.png"));
    QCOMPARE(ZKApplication::GetPatternFile(2), QString());
    QCOMPARE(ZKApplication::GetPatternFile(-1), QString());
}

void TestApplication::patternIndexStaysInside()
{
    ZKApplicationPrivate::Get().SetFolders(ApplicationFolders::Default());
    QCOMPARE(ZKApplication::GetTexturePatternIndex(), 0);
    QSignalSpy changed(ZKApplication::GetInstance(), &ZKApplication::TexturePatternIndexChanged);
    ZKApplication::SetTexturePatternIndex(1);
    QCOMPARE(ZKApplication::GetTexturePatternIndex(), 1);
    ZKApplication::SetTexturePatternIndex(ZKApplication::GetPatternCount());
    ZKApplication::SetTexturePatternIndex(-1);
    QCOMPARE(ZKApplication::GetTexturePatternIndex(), 1);
    QCOMPARE(changed.count(), 1);
    ZKApplication::SetTexturePatternIndex(0);
}

namespace {
int Difference(QRgb one, QRgb other)
{
    return qAbs(qRed(one) - qRed(other)) + qAbs(qGreen(one) - qGreen(other)) +
           qAbs(qBlue(one) - qBlue(other));
}

/// The mean step from one column of pixels to another.
double ColumnStep(const QImage& image, int left, int right)
{
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        sum += Difference(image.pixel(left, y), image.pixel(right, y));
    }
    return sum / image.height();
}

/// The step over the seam at the right edge is no larger than the largest step inside.
bool IsSeamless(const QImage& image)
{
    double largest = 0;
    for (int x = 1; x < image.width(); ++x) {
        largest = qMax(largest, ColumnStep(image, x - 1, x));
    }
    return ColumnStep(image, image.width() - 1, 0) <= largest;
}
} // namespace

void TestApplication::shippedPatternsAreSeamlessAndSmall()
{
    ZKApplicationPrivate::Get().SetFolders(ApplicationFolders::Default());
    QVERIFY(ZKApplication::GetPatternCount() >= 8);
    for (int i = 0; i < ZKApplication::GetPatternCount(); ++i) {
        const QString file = ZKApplication::GetPatternFile(i);
        const QImage image(file);
        QVERIFY2(!image.isNull(), qPrintable(file));
        QVERIFY2(image.width() >= 32 && image.width() <= 128 && image.height() <= 128, qPrintable(file));
        QVERIFY2(IsSeamless(image), qPrintable(file));
        QVERIFY2(IsSeamless(image.transformed(QTransform().rotate(90))), qPrintable(file));
    }
}

ZK_REGISTER_TEST(tst_application, TestApplication)
#include "tst_application.moc"
