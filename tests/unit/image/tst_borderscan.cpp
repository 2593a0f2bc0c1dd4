#include "image/BorderScan.h"
#include "image/LXImage.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <random>

class TestBorderScan : public QObject
{
    Q_OBJECT

private slots:
    void thePictureInsideItsBorderRemains();
    void eachChannelCountsByItself();
    void alphaAboveTheToleranceRemains();
    void alphaDoesNotMakeAColorDiffer();
    void nothingRemainsOfAPlainPicture();
    void toleranceTwoHundredFiftyFiveTakesEverything();
    void nullImagesHaveNoBorder();
    void randomPicturesAreScannedAsPixelByPixel();
};

void TestBorderScan::thePictureInsideItsBorderRemains()
{
    LXImage32 image(300, 270);
    image.Fill(LXRGBA32i(0xFF404040));
    image.SetColor(17, 200, LXRGBA32i(0xFF000000));
    image.SetColor(250, 140, LXRGBA32i(0xFFFFFFFF));
    QCOMPARE(BorderScan::WithoutColor(image, 0, LXRGBA32i(0xFF404040)),
             QRect(QPoint(17, 140), QPoint(250, 200)));
}

void TestBorderScan::eachChannelCountsByItself()
{
    for (const quint32 differing :
         {0xFF4B4040u, 0xFF404B40u, 0xFF40404Bu, 0xFF354040u, 0xFF403540u, 0xFF404035u}) {
        LXImage32 image(5, 4);
        image.Fill(LXRGBA32i(0xFF404040));
        image.SetColor(3, 2, LXRGBA32i(differing));
        QCOMPARE(BorderScan::WithoutColor(image, 10, LXRGBA32i(0xFF404040)), QRect(3, 2, 1, 1));
        QCOMPARE(BorderScan::WithoutColor(image, 11, LXRGBA32i(0xFF404040)), QRect());
    }
}

void TestBorderScan::alphaAboveTheToleranceRemains()
{
    LXImage32 image(6, 5);
    image.SetColor(2, 1, LXRGBA32i(0x10FFFFFF));
    image.SetColor(4, 3, LXRGBA32i(0x0FFFFFFF));
    QCOMPARE(BorderScan::WithoutTransparency(image, 0), QRect(2, 1, 3, 3));
    QCOMPARE(BorderScan::WithoutTransparency(image, 15), QRect(2, 1, 1, 1));
    QCOMPARE(BorderScan::WithoutTransparency(image, 16), QRect());
}

void TestBorderScan::alphaDoesNotMakeAColorDiffer()
{
    LXImage32 image(4, 4);
    image.Fill(LXRGBA32i(0xFF102030));
    image.SetColor(1, 1, LXRGBA32i(0x00102030));
    QCOMPARE(BorderScan::WithoutColor(image, 0, LXRGBA32i(0x80102030)), QRect());
}

void TestBorderScan::nothingRemainsOfAPlainPicture()
{
    LXImage32 image(200, 130);
    image.Fill(LXRGBA32i(0xFFAA5500));
    QCOMPARE(BorderScan::WithoutColor(image, 0, LXRGBA32i(0xFFAA5500)), QRect());
    QCOMPARE(BorderScan::WithoutTransparency(LXImage32(200, 130), 0), QRect());
}

void TestBorderScan::toleranceTwoHundredFiftyFiveTakesEverything()
{
    std::mt19937 random(6);
    const LXImage32 image = TestImages::ToTiles(TestImages::Random(20, 20, random));
    QCOMPARE(BorderScan::WithoutColor(image, 255, LXRGBA32i(0xFF000000)), QRect());
    QCOMPARE(BorderScan::WithoutTransparency(image, 255), QRect());
}

void TestBorderScan::nullImagesHaveNoBorder()
{
    QCOMPARE(BorderScan::WithoutColor(LXImage32(), 0, LXRGBA32i()), QRect());
    QCOMPARE(BorderScan::WithoutTransparency(LXImage32(), 0), QRect());
}

void TestBorderScan::randomPicturesAreScannedAsPixelByPixel()
{
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        PlainImage plain(1 + static_cast<int>(random() % 300), 1 + static_cast<int>(random() % 300));
        QRect expected;
        for (int dots = static_cast<int>(random() % 4); dots > 0; --dots) {
            const QPoint at(static_cast<int>(random()) & 0xFFFF, static_cast<int>(random()) & 0xFFFF);
            const QPoint dot(at.x() % plain.width, at.y() % plain.height);
            plain.At(dot.x(), dot.y()) = LXRGBA32i(0x80000080);
            expected |= QRect(dot, QSize(1, 1));
        }
        const LXImage32 image = TestImages::ToTiles(plain);
        QCOMPARE(BorderScan::WithoutTransparency(image, 127), expected);
        QCOMPARE(BorderScan::WithoutColor(image, 127, LXRGBA32i()), expected);
    }
}

ZK_REGISTER_TEST(tst_borderscan, TestBorderScan)
#include "tst_borderscan.moc"
