#include "image/LXImage.h"
#include "image/ZKCMSTransform.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"

#include <QColorSpace>
#include <QTest>

#include <lcms2.h>

#include <array>
#include <cstdlib>
#include <thread>
#include <vector>

using namespace IccProfiles;

namespace {
/// To WideRgb() in double precision: the channels of each pixel, 0 to 1.
std::vector<std::array<double, 3>> ByTheLibrary(const QByteArray& from, const std::vector<LXRGBA32i>& pixels,
                                                int intent, bool blackPoint)
{
    const QByteArray to = WideRgb().GetData();
    cmsHPROFILE source = cmsOpenProfileFromMem(from.constData(), cmsUInt32Number(from.size()));
    cmsHPROFILE target = cmsOpenProfileFromMem(to.constData(), cmsUInt32Number(to.size()));
    const cmsUInt32Number flags = cmsFLAGS_NOOPTIMIZE | (blackPoint ? cmsFLAGS_BLACKPOINTCOMPENSATION : 0);
    cmsHTRANSFORM transform =
        cmsCreateTransform(source, TYPE_RGB_DBL, target, TYPE_RGB_DBL, cmsUInt32Number(intent), flags);
    std::vector<std::array<double, 3>> result;
    for (const LXRGBA32i pixel : pixels) {
        const std::array<double, 3> in{pixel.Red() / 255.0, pixel.Green() / 255.0, pixel.Blue() / 255.0};
        std::array<double, 3> out{};
        cmsDoTransform(transform, in.data(), out.data(), 1);
        for (double& channel : out) {
            channel = std::min(1.0, std::max(0.0, channel));
        }
        result.push_back(out);
    }
    cmsDeleteTransform(transform);
    cmsCloseProfile(source);
    cmsCloseProfile(target);
    return result;
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
    void profilesOfOneMeaningDoNothing();
    void pixelsAreTheLibrarysOwn_data();
    void pixelsAreTheLibrarysOwn();
    void intentAndBlackPointMatter();
    void transparentPixelsKeepTheirBytes();
    void anImageIsAllItsPixels_data();
    void anImageIsAllItsPixels();
    void sharedTilesStayShared();
    void blankTilesStayBlank();
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
    QVERIFY(ZKCMSTransform(Gray(), ZKCMSProfile()).IsEmpty());
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
    LXRGBA32i expectedPixel(0xFF5A7896);
    transform(&expectedPixel, 1);
    std::vector<std::thread> threads;
    threads.reserve(misfits.size());
    for (int& misfit : misfits) {
        threads.emplace_back([&misfit, copy = transform, &expected, &expectedPixel] {
            std::array<LXRGBA32i, 64> row{};
            for (int i = 0; i < 2000; ++i) {
                QColor color(90, 120, 150);
                copy(color);
                if (color != expected) ++misfit;
                row.fill(LXRGBA32i(0xFF5A7896));
                copy(row.data(), int(row.size()));
                if (row.front() != expectedPixel || row.back() != expectedPixel) ++misfit;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(misfits, std::vector<int>(8, 0));
}

void TestCmsTransform::profilesOfOneMeaningDoNothing()
{
    // Another spelling of sRGB than the library's.
    const ZKCMSProfile other(QColorSpace(QColorSpace::SRgb).iccProfile());
    QVERIFY(other != ZKCMSProfile::SRGB());
    QVERIFY(ZKCMSTransform(other, ZKCMSProfile()).IsEmpty());
    QVERIFY(ZKCMSTransform(ZKCMSProfile(), other).IsEmpty());
    QVERIFY(ZKCMSTransform(ZKCMSProfile::SRGB(), ZKCMSProfile()).IsEmpty());
    QVERIFY(!ZKCMSTransform(AdobeRgb(), ZKCMSProfile()).IsEmpty());
}

void TestCmsTransform::pixelsAreTheLibrarysOwn_data()
{
    QTest::addColumn<double>("largest");
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<int>("intent");
    QTest::addColumn<bool>("blackPoint");
    const auto addRows = [](const QString& name, double largest, const QByteArray& from) {
        for (const auto intent : {ZKCMSRendering::Intent::Relative, ZKCMSRendering::Intent::Perceptual}) {
            for (const bool blackPoint : {false, true}) {
                const bool isRelative = intent == ZKCMSRendering::Intent::Relative;
                QTest::newRow(qPrintable(QString("%1, %2%3")
                                             .arg(name, isRelative ? "relative" : "perceptual",
                                                  blackPoint ? ", black point" : "")))
                    << largest << from << int(intent) << blackPoint;
            }
        }
    };
    addRows("matrix", 1.0, AdobeRgb().GetData());
    // The library makes one coarse table of two, for speed.
    addRows("tables", 6.0, OnlyReadable().GetData());
}

void TestCmsTransform::pixelsAreTheLibrarysOwn()
{
    QFETCH(double, largest);
    QFETCH(QByteArray, from);
    QFETCH(int, intent);
    QFETCH(bool, blackPoint);
    const ZKCMSRendering rendering{static_cast<ZKCMSRendering::Intent>(intent), blackPoint};
    std::vector<LXRGBA32i> pixels;
    for (quint32 i = 0; i < 1500; ++i) {
        pixels.emplace_back(0xFF000000 | (i * 2654435761U >> 8));
    }
    const std::vector<LXRGBA32i> before = pixels;
    ZKCMSTransform(ZKCMSProfile(from), WideRgb(), rendering)(pixels.data(), int(pixels.size()));

    const int cmsIntent = rendering.intent == ZKCMSRendering::Intent::Perceptual
                              ? INTENT_PERCEPTUAL
                              : INTENT_RELATIVE_COLORIMETRIC;
    const std::vector<std::array<double, 3>> expected = ByTheLibrary(from, before, cmsIntent, blackPoint);
    int moved = 0;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const std::array<int, 3> channels{pixels[i].Red(), pixels[i].Green(), pixels[i].Blue()};
        for (std::size_t c = 0; c < channels.size(); ++c) {
            const double difference = std::abs(channels[c] - expected[i][c] * 255);
            QVERIFY2(difference <= largest,
                     qPrintable(QString("pixel %1 channel %2: %3").arg(i).arg(c).arg(difference)));
        }
        QCOMPARE(pixels[i].Alpha(), 255);
        if (pixels[i] != before[i]) ++moved;
    }
    QVERIFY(moved > 1000);
}

void TestCmsTransform::intentAndBlackPointMatter()
{
    const auto black = [](ZKCMSRendering::Intent intent, bool blackPoint) {
        LXRGBA32i pixel(0xFF000000);
        ZKCMSTransform(OnlyReadable(), WideRgb(), {intent, blackPoint})(&pixel, 1);
        return pixel.Green();
    };
    const int light = black(ZKCMSRendering::Intent::Relative, false);
    QVERIFY(light > black(ZKCMSRendering::Intent::Relative, true) + 10);
    QVERIFY(light > black(ZKCMSRendering::Intent::Perceptual, false) + 10);
}

void TestCmsTransform::transparentPixelsKeepTheirBytes()
{
    std::array<LXRGBA32i, 3> pixels{LXRGBA32i(0x00123456), LXRGBA32i(0x01804020), LXRGBA32i(0x80804020)};
    ZKCMSTransform(AdobeRgb(), ZKCMSProfile())(pixels.data(), int(pixels.size()));
    QCOMPARE(pixels[0].value, 0x00123456U);
    QVERIFY(pixels[1].value != 0x01804020U);
    QCOMPARE(pixels[1].Alpha(), 1);
    QCOMPARE(pixels[2].Alpha(), 0x80);
    QCOMPARE(pixels[2].value & 0xFFFFFF, pixels[1].value & 0xFFFFFF);
}

void TestCmsTransform::anImageIsAllItsPixels_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize& size :
         {QSize(1, 1), QSize(127, 3), QSize(128, 128), QSize(129, 130), QSize(700, 500)}) {
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
    }
}

void TestCmsTransform::anImageIsAllItsPixels()
{
    QFETCH(QSize, size);
    const ZKCMSTransform transform(AdobeRgb(), ZKCMSProfile());
    LXImage32 image(size.width(), size.height());
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.SetColor(x, y, LXRGBA32i(quint32(y * size.width() + x) * 2654435761U));
        }
    }
    LXImage32 converted = image;
    transform(converted);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            LXRGBA32i pixel = image.GetColor(x, y);
            transform(&pixel, 1);
            QCOMPARE(converted.GetColor(x, y).value, pixel.value);
        }
    }
}

void TestCmsTransform::sharedTilesStayShared()
{
    LXImage32 image(128 * 9, 128 * 9);
    image.Fill(LXRGBA32i(0xFF20C040));
    const int before = LXTileManager::Instance().LiveTileCount();
    LXImage32 converted = image;
    ZKCMSTransform(AdobeRgb(), ZKCMSProfile())(converted);
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), before + 1);
    QVERIFY(converted.GetColor(1000, 1000) != image.GetColor(1000, 1000));
    QCOMPARE(image.GetColor(1000, 1000).value, 0xFF20C040U);
}

void TestCmsTransform::blankTilesStayBlank()
{
    LXImage32 image(300, 300);
    LXImage32 converted = image;
    ZKCMSTransform(AdobeRgb(), ZKCMSProfile())(converted);
    QCOMPARE(converted.TileAt(1, 1).data(), image.TileAt(1, 1).data());
}

ZK_REGISTER_TEST(tst_cmstransform, TestCmsTransform)
#include "tst_cmstransform.moc"
