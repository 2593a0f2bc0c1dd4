#include "app/Preferences.h"
#include "app/ScreenScale.h"
#include "core/ApplicationFolders.h"
#include "core/ZKApplication_p.h"
#include "support/TestRegistry.h"

#include <QTemporaryDir>
#include <QTest>

class TestScreenScale : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theScaleOfTheUsersFolderIsTaken();
    void withoutASettingNothingIsSet();
    void theEnvironmentHolds();

private:
    void Write(double scale) const;

    QTemporaryDir m_Folder;
    QByteArray m_Before;
};

namespace {
constexpr const char* Variable = "QT_SCALE_FACTOR";
} // namespace

void TestScreenScale::init()
{
    m_Before = qgetenv(Variable);
    qunsetenv(Variable);
}

void TestScreenScale::cleanup()
{
    if (m_Before.isEmpty()) {
        qunsetenv(Variable);
    } else {
        qputenv(Variable, m_Before);
    }
    ZKApplicationPrivate::Get().SetFolders(ApplicationFolders::Default());
}

void TestScreenScale::Write(double scale) const
{
    ZKApplicationPrivate::Get().SetFolders(ApplicationFolders::Below(m_Folder.path()));
    Preferences values;
    values.scale = scale;
    values.Write();
    ZKApplicationPrivate::Get().SetFolders(ApplicationFolders::Default());
}

void TestScreenScale::theScaleOfTheUsersFolderIsTaken()
{
    Write(1.5);
    ScreenScale::UseForStart(m_Folder.path());
    QCOMPARE(qgetenv(Variable).toDouble(), 1.5);
}

void TestScreenScale::withoutASettingNothingIsSet()
{
    Write(1.0);
    ScreenScale::UseForStart(m_Folder.path());
    QVERIFY(!qEnvironmentVariableIsSet(Variable));
}

void TestScreenScale::theEnvironmentHolds()
{
    Write(1.5);
    qputenv(Variable, "2");
    ScreenScale::UseForStart(m_Folder.path());
    QCOMPARE(qgetenv(Variable), QByteArray("2"));
}

ZK_REGISTER_TEST(tst_screenscale, TestScreenScale)
#include "tst_screenscale.moc"
