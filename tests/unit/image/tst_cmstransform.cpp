#include "image/ZKCMSTransform.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <lcms2.h>

#include <thread>
#include <vector>

namespace {
/// The bytes of a profile that the library makes itself.
ZKCMSProfile Bytes(cmsHPROFILE profile)
{
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    QByteArray icc(int(size), '\0');
    cmsSaveProfileToMem(profile, icc.data(), &size);
    cmsCloseProfile(profile);
    return ZKCMSProfile(icc);
}

/// sRGB's primaries with a straight line for a curve.
ZKCMSProfile Linear()
{
    const cmsCIExyY white{0.3127, 0.3290, 1.0};
    const cmsCIExyYTRIPLE primaries{{0.6400, 0.3300, 1.0}, {0.3000, 0.6000, 1.0}, {0.1500, 0.0600, 1.0}};
    cmsToneCurve* line = cmsBuildGamma(nullptr, 1.0);
    cmsToneCurve* curves[3] = {line, line, line};
    const ZKCMSProfile profile = Bytes(cmsCreateRGBProfile(&white, &primaries, curves));
    cmsFreeToneCurve(line);
    return profile;
}
} // namespace

class TestCmsTransform : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsDoneByDefault();
    void equalProfilesDoNothing();
    void damagedAndForeignProfilesDoNothing();
    void aLineForACurveBrightensTheMiddles();
    void thereAndBackIsTheSameColor();
    void alphaStays();
    void anInvalidColorStaysInvalid();
    void severalThreadsShareOneTransform();
};

void TestCmsTransform::nothingIsDoneByDefault()
{
    const ZKCMSTransform transform;
    QVERIFY(transform.IsEmpty());
    QColor color(1, 2, 3, 4);
    transform(color);
    QCOMPARE(color, QColor(1, 2, 3, 4));
}

void TestCmsTransform::equalProfilesDoNothing()
{
    QVERIFY(ZKCMSTransform(Linear(), Linear()).IsEmpty());
    QVERIFY(ZKCMSTransform(ZKCMSProfile(), ZKCMSProfile()).IsEmpty());
}

void TestCmsTransform::damagedAndForeignProfilesDoNothing()
{
    cmsSetLogErrorHandler([](cmsContext, cmsUInt32Number, const char*) {});
    QVERIFY(ZKCMSTransform(ZKCMSProfile("no profile"), Linear()).IsEmpty());
    QVERIFY(ZKCMSTransform(Linear(), ZKCMSProfile(Linear().GetData().left(100))).IsEmpty());
    const cmsCIExyY white{0.3127, 0.3290, 1.0};
    cmsToneCurve* curve = cmsBuildGamma(nullptr, 2.2);
    const ZKCMSProfile gray = Bytes(cmsCreateGrayProfile(&white, curve));
    cmsFreeToneCurve(curve);
    QVERIFY(ZKCMSTransform(gray, ZKCMSProfile()).IsEmpty());
}

void TestCmsTransform::aLineForACurveBrightensTheMiddles()
{
    const ZKCMSTransform transform(Linear(), ZKCMSProfile());
    QVERIFY(!transform.IsEmpty());
    // The curve of sRGB: 1.055 x 0.5^(1 / 2.4) - 0.055 = 0.7354, which is 187.5 of 255.
    QColor middle = QColor::fromRgbF(0.5, 0.5, 0.5);
    transform(middle);
    for (const int channel : {middle.red(), middle.green(), middle.blue()}) {
        QVERIFY2(qAbs(channel - 187) <= 1, qPrintable(QString::number(channel)));
    }
    QColor white(Qt::white);
    transform(white);
    QCOMPARE(white.rgb(), qRgb(255, 255, 255));
    QColor black(Qt::black);
    transform(black);
    QCOMPARE(black.rgb(), qRgb(0, 0, 0));
}

void TestCmsTransform::thereAndBackIsTheSameColor()
{
    const ZKCMSTransform there(ZKCMSProfile(), Linear());
    const ZKCMSTransform back(Linear(), ZKCMSProfile());
    for (const QRgb rgb : {qRgb(10, 200, 30), qRgb(255, 0, 0), qRgb(1, 2, 3), qRgb(250, 128, 64)}) {
        QColor color(rgb);
        there(color);
        QVERIFY(color.rgb() != rgb || rgb == qRgb(255, 0, 0));
        back(color);
        QVERIFY(qAbs(color.red() - qRed(rgb)) <= 1 && qAbs(color.green() - qGreen(rgb)) <= 1 &&
                qAbs(color.blue() - qBlue(rgb)) <= 1);
    }
}

void TestCmsTransform::alphaStays()
{
    QColor color(100, 100, 100, 77);
    ZKCMSTransform(Linear(), ZKCMSProfile())(color);
    QCOMPARE(color.alpha(), 77);
}

void TestCmsTransform::anInvalidColorStaysInvalid()
{
    QColor color;
    ZKCMSTransform(Linear(), ZKCMSProfile())(color);
    QVERIFY(!color.isValid());
}

void TestCmsTransform::severalThreadsShareOneTransform()
{
    const ZKCMSTransform transform(Linear(), ZKCMSProfile());
    QColor expected(90, 120, 150);
    transform(expected);
    std::vector<int> misfits(8, 0);
    std::vector<std::thread> threads;
    for (int& misfit : misfits) {
        threads.emplace_back([&misfit, &transform, &expected] {
            const ZKCMSTransform copy = transform;
            for (int i = 0; i < 2000; ++i) {
                QColor color(90, 120, 150);
                copy(color);
                if (color != expected) ++misfit;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(misfits, std::vector<int>(8, 0));
}

ZK_REGISTER_TEST(tst_cmstransform, TestCmsTransform)
#include "tst_cmstransform.moc"
