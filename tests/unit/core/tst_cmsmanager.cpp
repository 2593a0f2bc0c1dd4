#include "core/IccFile.h"
#include "core/ZKCMSManager.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"

#include <QColorSpace>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {
QByteArray IccOf(QColorSpace::NamedColorSpace space)
{
    return QColorSpace(space).iccProfile();
}

QString Write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? path : QString();
}
} // namespace

/// The manager of the process, whose list only grows: each case brings profiles of its own.
class TestCmsManager : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void theListIsSRgbAndWhatTheFoldersHold();
    void onlySomeProfilesAreTargets();
    void brokenFilesOfTheFoldersAreLeftOut();
    void profilesOfOneNameAreToldApart();
    void aPercentSignInAFileNameStaysOne();
    void aFileIsTakenOnce();
    void aFileThatIsNoProfileTellsWhy_data();
    void aFileThatIsNoProfileTellsWhy();
    void whatIsNoFileIsNotRead();
    void anIndexStaysWhatItIs();
    void theWorkingProfileIsTold();
    void theScreenIsSRgbAtFirst();
    void toTheScreenFollowsItsProfile();
    void ownColorsComeFromTheWorkingProfile();
    void aScreenWithoutAProfileIsSRgb();

private:
    QTemporaryDir m_Folder;
    ZKCMSManager* m_pManager = nullptr;
};

void TestCmsManager::initTestCase()
{
    QVERIFY(m_Folder.isValid());
    QDir root(m_Folder.path());
    QVERIFY(root.mkpath("icc/vendor"));
    QVERIFY(!Write(root.filePath("icc/a.icc"), IccOf(QColorSpace::AdobeRgb)).isEmpty());
    QVERIFY(!Write(root.filePath("icc/broken.icc"), IccOf(QColorSpace::AdobeRgb).left(140)).isEmpty());
    QVERIFY(!Write(root.filePath("icc/notes.txt"), IccOf(QColorSpace::DisplayP3)).isEmpty());
    QVERIFY(!Write(root.filePath("icc/vendor/b.ICM"), IccOf(QColorSpace::SRgb)).isEmpty());
    QVERIFY(!Write(root.filePath("icc/z_again.icc"), IccOf(QColorSpace::AdobeRgb)).isEmpty());
    // Before anybody has asked for the list.
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_Folder.path()));
    qputenv("XDG_DATA_DIRS", QFile::encodeName(m_Folder.filePath("nowhere")));
    qputenv("HOME", QFile::encodeName(m_Folder.filePath("nobody")));
    QStandardPaths::setTestModeEnabled(false);
    m_pManager = ZKCMSManager::GetInstance();
    QVERIFY(m_pManager->GetRGBProfileCount() > 0);
    QStandardPaths::setTestModeEnabled(true);
}

void TestCmsManager::cleanup()
{
    m_pManager->SetWorkingRGBIndex(0);
    m_pManager->SetDisplay(ZKCMSProfile(), {});
}

void TestCmsManager::theListIsSRgbAndWhatTheFoldersHold()
{
    QCOMPARE(m_pManager->GetRGBProfile(0), ZKCMSProfile::SRGB());
    QCOMPARE(m_pManager->GetRGBProfileName(0), QString("sRGB"));
    QCOMPARE(m_pManager->GetRGBProfileFile(0), QString());
    const int adobe = m_pManager->FindRGBProfile("Adobe RGB");
    QVERIFY(adobe > 0);
    QCOMPARE(m_pManager->GetRGBProfile(adobe).GetData(), IccOf(QColorSpace::AdobeRgb));
    QCOMPARE(m_pManager->GetRGBProfileFile(adobe), m_Folder.filePath("icc/a.icc"));
    QCOMPARE(m_pManager->FindRGBProfile(m_Folder.filePath("icc/a.icc")), adobe);
    QCOMPARE(m_pManager->FindRGBProfile("nothing"), -1);
    QCOMPARE(m_pManager->FindRGBProfile(QString()), -1);
}

void TestCmsManager::onlySomeProfilesAreTargets()
{
    QVERIFY(m_pManager->IsRGBTarget(0));
    QVERIFY(m_pManager->IsRGBTarget(m_pManager->FindRGBProfile("Adobe RGB")));
    QVERIFY(!m_pManager->IsRGBTarget(-1));
    QVERIFY(!m_pManager->IsRGBTarget(m_pManager->GetRGBProfileCount()));
    QString message;
    const QString camera = Write(m_Folder.filePath("camera.icc"), IccProfiles::OnlyReadable().GetData());
    const int index = m_pManager->AddRGBProfile(camera, &message);
    QVERIFY(index > 0);
    QVERIFY(!m_pManager->IsRGBTarget(index));
}

void TestCmsManager::brokenFilesOfTheFoldersAreLeftOut()
{
    QCOMPARE(m_pManager->FindRGBProfile(m_Folder.filePath("icc/broken.icc")), -1);
    QCOMPARE(m_pManager->FindRGBProfile(m_Folder.filePath("icc/notes.txt")), -1);
    // The same bytes under another name.
    QCOMPARE(m_pManager->FindRGBProfile(m_Folder.filePath("icc/z_again.icc")), -1);
}

void TestCmsManager::profilesOfOneNameAreToldApart()
{
    const int other = m_pManager->FindRGBProfile(m_Folder.filePath("icc/vendor/b.ICM"));
    QVERIFY(other > 0);
    QCOMPARE(m_pManager->GetRGBProfileName(other), QString("sRGB (b.ICM)"));
}

void TestCmsManager::aPercentSignInAFileNameStaysOne()
{
    QStringList names;
    QByteArray bytes = IccOf(QColorSpace::AdobeRgb);
    for (const char* folder : {"x", "y"}) {
        QString message;
        QVERIFY(QDir(m_Folder.path()).mkpath(folder));
        bytes.append("more"); // another profile of the same name
        const QString path = Write(m_Folder.filePath(QString(folder) + "/50%1.icc"), bytes);
        names << m_pManager->GetRGBProfileName(m_pManager->AddRGBProfile(path, &message));
    }
    QCOMPARE(names, QStringList({"Adobe RGB (50%1.icc)", "Adobe RGB (50%1.icc, 2)"}));
}

void TestCmsManager::aFileIsTakenOnce()
{
    QString message;
    const QString path = Write(m_Folder.filePath("linear.icc"), IccOf(QColorSpace::SRgbLinear));
    const int index = m_pManager->AddRGBProfile(path, &message);
    QCOMPARE(index, m_pManager->GetRGBProfileCount() - 1);
    QCOMPARE(m_pManager->AddRGBProfile(path, &message), index);
    QCOMPARE(message, QString());
}

void TestCmsManager::aFileThatIsNoProfileTellsWhy_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("why");
    QByteArray gray = IccOf(QColorSpace::AdobeRgb);
    gray.replace(16, 4, "GRAY");
    QByteArray cmyk = IccOf(QColorSpace::AdobeRgb);
    cmyk.replace(16, 4, "CMYK");
    QTest::newRow("empty") << QByteArray() << "is empty or far too large.";
    QTest::newRow("text") << QByteArray("hello") << "is damaged.";
    QTest::newRow("cut") << IccOf(QColorSpace::AdobeRgb).left(140) << "is damaged.";
    QTest::newRow("gray") << gray << "is made for gray pictures, not for RGB.";
    QTest::newRow("CMYK") << cmyk << "is made for CMYK pictures, not for RGB.";
}

void TestCmsManager::aFileThatIsNoProfileTellsWhy()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, why);
    const int count = m_pManager->GetRGBProfileCount();
    QString message;
    const QString path = Write(m_Folder.filePath("bad.icc"), bytes);
    QCOMPARE(m_pManager->AddRGBProfile(path, &message), -1);
    QVERIFY2(message.contains("bad.icc") && message.endsWith(why), qPrintable(message));
    QCOMPARE(m_pManager->AddRGBProfile(m_Folder.filePath("gone.icc"), &message), -1);
    QVERIFY2(message.contains("gone.icc” can't be read"), qPrintable(message));
    QCOMPARE(m_pManager->GetRGBProfileCount(), count);
}

void TestCmsManager::whatIsNoFileIsNotRead()
{
    // The like of them never come to an end.
    for (const QString& place : {QStringLiteral("/dev/null"), m_Folder.path()}) {
        QString message;
        QCOMPARE(m_pManager->AddRGBProfile(place, &message), -1);
        QVERIFY2(message.contains(place) && message.endsWith("isn't a file."), qPrintable(message));
    }
}

void TestCmsManager::anIndexStaysWhatItIs()
{
    QString message;
    const int adobe = m_pManager->FindRGBProfile("Adobe RGB");
    // A name that comes first among the files.
    const QString path = Write(m_Folder.filePath("icc/0.icc"), IccOf(QColorSpace::ProPhotoRgb));
    QVERIFY(m_pManager->AddRGBProfile(path, &message) > adobe);
    QCOMPARE(m_pManager->FindRGBProfile("Adobe RGB"), adobe);
}

void TestCmsManager::theWorkingProfileIsTold()
{
    QSignalSpy changed(m_pManager, &ZKCMSManager::WorkingProfileChanged);
    const int adobe = m_pManager->FindRGBProfile("Adobe RGB");
    m_pManager->SetWorkingRGBIndex(adobe);
    QCOMPARE(m_pManager->GetWorkingRGBIndex(), adobe);
    QCOMPARE(changed.count(), 1);
    m_pManager->SetWorkingRGBIndex(adobe);
    m_pManager->SetWorkingRGBIndex(-1);
    m_pManager->SetWorkingRGBIndex(m_pManager->GetRGBProfileCount());
    QCOMPARE(m_pManager->GetWorkingRGBIndex(), adobe);
    QCOMPARE(changed.count(), 1);
}

void TestCmsManager::theScreenIsSRgbAtFirst()
{
    QCOMPARE(m_pManager->GetDisplayProfile(), ZKCMSProfile::SRGB());
    QVERIFY(m_pManager->ToDisplay(ZKCMSProfile()).IsEmpty());
    QVERIFY(m_pManager->ToDisplay(ZKCMSProfile::SRGB()).IsEmpty());
}

void TestCmsManager::toTheScreenFollowsItsProfile()
{
    const ZKCMSProfile adobe(IccOf(QColorSpace::AdobeRgb));
    QVERIFY(!m_pManager->ToDisplay(adobe).IsEmpty());
    QSignalSpy changed(m_pManager, &ZKCMSManager::DisplayChanged);
    m_pManager->SetDisplay(adobe, {});
    QCOMPARE(changed.count(), 1);
    QCOMPARE(m_pManager->GetDisplayProfile(), adobe);
    // What was made for the old screen is gone.
    QVERIFY(m_pManager->ToDisplay(adobe).IsEmpty());
    QColor color(200, 30, 30);
    m_pManager->ToDisplay(ZKCMSProfile())(color);
    QColor expected(200, 30, 30);
    ZKCMSTransform(ZKCMSProfile(), adobe)(expected);
    QCOMPARE(color, expected);
    QVERIFY(color != QColor(200, 30, 30));
    m_pManager->SetDisplay(adobe, {ZKCMSRendering::Intent::Perceptual, true});
    QCOMPARE(changed.count(), 2);
    m_pManager->SetDisplay(adobe, {ZKCMSRendering::Intent::Perceptual, true});
    QCOMPARE(changed.count(), 2);
}

void TestCmsManager::ownColorsComeFromTheWorkingProfile()
{
    QVERIFY(m_pManager->OwnToDisplay().IsEmpty());
    const int adobe = m_pManager->FindRGBProfile("Adobe RGB");
    m_pManager->SetWorkingRGBIndex(adobe);
    QColor shown(200, 90, 40);
    m_pManager->OwnToDisplay()(shown);
    QColor expected(200, 90, 40);
    ZKCMSTransform(m_pManager->GetRGBProfile(adobe), ZKCMSProfile::SRGB())(expected);
    QCOMPARE(shown, expected);
    QVERIFY(shown.rgb() != qRgb(200, 90, 40));
}

void TestCmsManager::aScreenWithoutAProfileIsSRgb()
{
    m_pManager->SetDisplay(ZKCMSProfile(IccOf(QColorSpace::AdobeRgb)), {});
    m_pManager->SetDisplay(ZKCMSProfile("no profile"), {});
    QCOMPARE(m_pManager->GetDisplayProfile(), ZKCMSProfile::SRGB());
}

ZK_REGISTER_TEST(tst_cmsmanager, TestCmsManager)
#include "tst_cmsmanager.moc"
