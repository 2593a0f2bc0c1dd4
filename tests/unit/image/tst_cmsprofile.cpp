#include "image/ZKCMSProfile.h"
#include "image/ZKCMSTransform.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"

#include <QTest>
#include <QtEndian>

using namespace IccProfiles;

namespace {
/// A profile that gives itself this name.
ZKCMSProfile Named(const QString& name)
{
    cmsHPROFILE profile = cmsCreate_sRGBProfile();
    cmsMLU* text = cmsMLUalloc(nullptr, 1);
    cmsMLUsetWide(text, "en", "US", name.toStdWString().c_str());
    cmsWriteTag(profile, cmsSigProfileDescriptionTag, text);
    cmsMLUfree(text);
    return Bytes(profile);
}
} // namespace

/// What a profile tells of itself.
class TestCmsProfile : public QObject
{
    Q_OBJECT

private slots:
    void sRgbIsTheSameBytesEachTime();
    void theKindIsWhatTheLibraryCanUse_data();
    void theKindIsWhatTheLibraryCanUse();
    void cutOffProfilesAreDamagedOrWhole();
    void theNameIsTheProfilesOwn();
    void aNameWithoutEndIsCut();
    void theTablesOfBothIntentsAreWhole();
    void aProfileOfACameraIsNoTarget();
};

void TestCmsProfile::sRgbIsTheSameBytesEachTime()
{
    const ZKCMSProfile profile = ZKCMSProfile::SRGB();
    QVERIFY(profile.IsValid());
    QVERIFY(profile.IsTarget());
    QCOMPARE(profile.GetDescription(), QString("sRGB"));
    // The library puts the time of the making into what it makes.
    QCOMPARE(profile.GetData().mid(24, 12), QByteArray::fromHex("07d000010001000000000000"));
}

void TestCmsProfile::theKindIsWhatTheLibraryCanUse_data()
{
    using Kind = ZKCMSProfile::Kind;
    QTest::addColumn<QByteArray>("icc");
    QTest::addColumn<int>("kind");
    QTest::newRow("none") << QByteArray() << int(Kind::None);
    QTest::newRow("text") << QByteArray("no profile") << int(Kind::Damaged);
    QTest::newRow("gray") << Gray().GetData() << int(Kind::Gray);
    QTest::newRow("CMYK") << InkLink().GetData() << int(Kind::Damaged); // a link of two devices
    QTest::newRow("Lab") << Bytes(cmsCreateLab4Profile(nullptr)).GetData() << int(Kind::Damaged);
    QTest::newRow("RGB") << AdobeRgb().GetData() << int(Kind::Rgb);
    QTest::newRow("RGB without its curves")
        << QByteArray(AdobeRgb().GetData()).replace("rTRC", "xTRC") << int(Kind::Damaged);
    QTest::newRow("head alone") << AdobeRgb().GetData().left(128) << int(Kind::Damaged);
}

void TestCmsProfile::theKindIsWhatTheLibraryCanUse()
{
    QFETCH(QByteArray, icc);
    QFETCH(int, kind);
    QCOMPARE(int(ZKCMSProfile(icc).GetKind()), kind);
    QCOMPARE(ZKCMSProfile(icc).IsValid(), kind == int(ZKCMSProfile::Kind::Rgb));
    QCOMPARE(ZKCMSTransform(ZKCMSProfile(icc), WideRgb()).IsEmpty(),
             kind != int(ZKCMSProfile::Kind::Rgb) && kind != int(ZKCMSProfile::Kind::None));
}

void TestCmsProfile::cutOffProfilesAreDamagedOrWhole()
{
    // Whatever is missing, nothing worse happens than that it is refused.
    const QByteArray whole = AdobeRgb().GetData();
    for (int length = 1; length < whole.size(); ++length) {
        const ZKCMSProfile cut(whole.left(length));
        const bool isValid = cut.IsValid();
        cut.GetDescription();
        QCOMPARE(ZKCMSTransform(cut, ZKCMSProfile()).IsEmpty(), !isValid);
    }
    QVERIFY(!ZKCMSProfile(whole.left(200)).IsValid());
}

void TestCmsProfile::theNameIsTheProfilesOwn()
{
    QCOMPARE(AdobeRgb().GetDescription(), QString("Adobe RGB"));
    QCOMPARE(ZKCMSProfile().GetDescription(), QString());
    QCOMPARE(ZKCMSProfile("no profile").GetDescription(), QString());
}

void TestCmsProfile::aNameWithoutEndIsCut()
{
    const QString longest(100, QChar('x'));
    QCOMPARE(Named(longest).GetDescription(), longest);
    QCOMPARE(Named(longest + "yz").GetDescription(), longest.left(99) + "…");
    QCOMPARE(Named(QString(60000, QChar('x'))).GetDescription().size(), 100);
}

void TestCmsProfile::theTablesOfBothIntentsAreWhole()
{
    for (const char* tag : {"A2B0", "A2B1"}) {
        QByteArray icc = OnlyReadable().GetData();
        constexpr int headerBytes = 128;
        const int entry = icc.indexOf(tag, headerBytes);
        QVERIFY(entry > 0);
        const auto table = int(qFromBigEndian<quint32>(icc.constData() + entry + 4));
        icc.replace(table, 4, "none");
        QCOMPARE(ZKCMSProfile(icc).GetKind(), ZKCMSProfile::Kind::Damaged);
    }
}

void TestCmsProfile::aProfileOfACameraIsNoTarget()
{
    const ZKCMSProfile camera = OnlyReadable();
    QVERIFY(camera.IsValid());
    QVERIFY(!camera.IsTarget());
    QVERIFY(!ZKCMSTransform(camera, ZKCMSProfile()).IsEmpty());
    QVERIFY(ZKCMSTransform(ZKCMSProfile(), camera).IsEmpty());
    QVERIFY(!ZKCMSProfile().IsTarget());
}

ZK_REGISTER_TEST(tst_cmsprofile, TestCmsProfile)
#include "tst_cmsprofile.moc"
