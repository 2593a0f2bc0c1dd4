#include "image/AdjustmentPixels.h"
#include "support/AdjustmentTwin.h"
#include "support/TestRegistry.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <limits>

namespace {
quint32 Run(const LXAdjustment& adjustment, quint32 argb)
{
    LXRGBA32i pixel(argb);
    AdjustmentPixels(adjustment).Run(&pixel, 1);
    return pixel.value;
}

LXAdjustment Of(LXAdjustment::Kind kind)
{
    LXAdjustment adjustment;
    adjustment.kind = kind;
    return adjustment;
}

LXAdjustment Turn(int hue, int saturation, int lightness)
{
    LXAdjustment adjustment = Of(LXAdjustment::HueSaturation);
    adjustment.hue = hue;
    adjustment.saturation = saturation;
    adjustment.lightness = lightness;
    return adjustment;
}

LXAdjustment RandomAdjustment(QRandomGenerator& random)
{
    LXAdjustment a = Of(static_cast<LXAdjustment::Kind>(random.bounded(4)));
    a.brightness = random.bounded(-100, 101);
    a.contrast = random.bounded(-100, 101);
    a.inBlack = random.bounded(256);
    a.inWhite = random.bounded(256);
    a.outBlack = random.bounded(256);
    a.outWhite = random.bounded(256);
    a.gamma = 0.1 + random.generateDouble() * 9.9;
    a.hue = random.bounded(-180, 181);
    a.saturation = random.bounded(-100, 101);
    a.lightness = random.bounded(-100, 101);
    return a;
}

int LargestDifference(quint32 a, quint32 b)
{
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        largest = qMax(largest,
                       std::abs(static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF)));
    }
    return largest;
}
} // namespace

class TestAdjustment : public QObject
{
    Q_OBJECT

private slots:
    void withItsFirstValuesNothingChangesButTheAlpha_data();
    void withItsFirstValuesNothingChangesButTheAlpha();
    void invertTurnsEveryChannelRound();
    void brightnessAndContrastTurnAboutTheMiddle();
    void levelsSpreadWhatLiesBetween();
    void theHueTurnsThroughTheColors();
    void grayStaysGray();
    void randomAdjustmentsAreThoseOfTheTwin();
    void valuesAreBroughtIntoTheirRanges();
};

void TestAdjustment::withItsFirstValuesNothingChangesButTheAlpha_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("brightness and contrast") << int(LXAdjustment::BrightnessContrast);
    QTest::newRow("levels") << int(LXAdjustment::Levels);
    QTest::newRow("hue and saturation") << int(LXAdjustment::HueSaturation);
}

void TestAdjustment::withItsFirstValuesNothingChangesButTheAlpha()
{
    QFETCH(const int, kind);
    QRandomGenerator random(5);
    for (int i = 0; i < 1000; ++i) {
        const quint32 argb = random.generate();
        QCOMPARE(Run(Of(static_cast<LXAdjustment::Kind>(kind)), argb), argb | 0xFF000000);
    }
}

void TestAdjustment::invertTurnsEveryChannelRound()
{
    QCOMPARE(Run(Of(LXAdjustment::Invert), 0x40001080), 0xFFFFEF7FU);
}

void TestAdjustment::brightnessAndContrastTurnAboutTheMiddle()
{
    LXAdjustment adjustment;
    adjustment.brightness = 20; // 51 levels
    QCOMPARE(Run(adjustment, 0xFF0064F0), 0xFF3397FFU);
    adjustment.brightness = 0;
    adjustment.contrast = -100; // a slope of 0: 127.5 goes up
    QCOMPARE(Run(adjustment, 0xFF0064F0), 0xFF808080U);
    adjustment.contrast = 100;
    QCOMPARE(Run(adjustment, 0xFF7F8000), 0xFF00FF00U);
    // tan(0.75 * 90 degrees) = 2.414213...: 100 becomes 61.11, 200 becomes 302.5
    adjustment.contrast = 50;
    QCOMPARE(Run(adjustment, 0xFF6464C8), 0xFF3D3DFFU);
}

void TestAdjustment::levelsSpreadWhatLiesBetween()
{
    LXAdjustment adjustment = Of(LXAdjustment::Levels);
    adjustment.inBlack = 50;
    adjustment.inWhite = 150;
    QCOMPARE(Run(adjustment, 0xFF326496), 0xFF0080FFU);
    // A gamma of 2 takes the root: 75 is a quarter of the way and becomes a half.
    adjustment.gamma = 2;
    adjustment.outBlack = 10;
    adjustment.outWhite = 210;
    QCOMPARE(Run(adjustment, 0xFF4B00FF), 0xFF6E0AD2U);
    // Without a way between them there is an edge.
    adjustment.inWhite = 50;
    QCOMPARE(Run(adjustment, 0xFF323300), 0xFF0AD20AU);
}

void TestAdjustment::theHueTurnsThroughTheColors()
{
    QCOMPARE(Run(Turn(120, 0, 0), 0xFFFF0000), 0xFF00FF00U);
    QCOMPARE(Run(Turn(-120, 0, 0), 0xFFFF0000), 0xFF0000FFU);
    QCOMPARE(Run(Turn(180, 0, 0), 0xFF00FF00), 0xFFFF00FFU);
    QCOMPARE(Run(Turn(60, 0, 0), 0xFF0000FF), 0xFFFF00FFU);
    QCOMPARE(Run(Turn(0, -100, 0), 0xFFFF0000), 0xFF808080U);
    QCOMPARE(Run(Turn(0, 0, 100), 0xFF123456), 0xFFFFFFFFU);
    QCOMPARE(Run(Turn(0, 0, -50), 0xFF64C832), 0xFF326419U);
    // The middle of 200 and 100 is 150 and stays; a chroma of 100 doubles to 200.
    QCOMPARE(Run(Turn(0, 100, 0), 0xFFC86496), 0xFFFA3296U);
}

void TestAdjustment::grayStaysGray()
{
    for (const int hue : {-180, -33, 90, 180}) {
        QCOMPARE(Run(Turn(hue, 100, 0), 0xFF777777), 0xFF777777U);
    }
}

/// By tables to the byte; hue and saturation are computed in single precision.
void TestAdjustment::randomAdjustmentsAreThoseOfTheTwin()
{
    QRandomGenerator random(17);
    int different = 0;
    constexpr int count = 20000;
    for (int i = 0; i < count; ++i) {
        const LXAdjustment adjustment = RandomAdjustment(random);
        const quint32 argb = random.generate();
        const quint32 is = Run(adjustment, argb);
        const quint32 shouldBe = AdjustmentTwin::Adjusted(adjustment, LXRGBA32i(argb)).value;
        const int allowed = adjustment.kind == LXAdjustment::HueSaturation ? 1 : 0;
        QVERIFY2(LargestDifference(is, shouldBe) <= allowed,
                 qPrintable(QString("kind %1: %2 becomes %3 instead of %4")
                                .arg(adjustment.kind)
                                .arg(argb, 8, 16)
                                .arg(is, 8, 16)
                                .arg(shouldBe, 8, 16)));
        if (is != shouldBe) ++different;
    }
    QVERIFY2(different < count / 500, qPrintable(QString::number(different)));
}

void TestAdjustment::valuesAreBroughtIntoTheirRanges()
{
    LXAdjustment adjustment = Of(LXAdjustment::Levels);
    adjustment.brightness = 101;
    adjustment.contrast = -200;
    adjustment.inBlack = -1;
    adjustment.outWhite = 256;
    adjustment.gamma = std::numeric_limits<double>::quiet_NaN();
    adjustment.hue = 1000;
    const LXAdjustment clamped = AdjustmentPixels::Clamped(adjustment);
    QCOMPARE(clamped.brightness, 100);
    QCOMPARE(clamped.contrast, -100);
    QCOMPARE(clamped.inBlack, 0);
    QCOMPARE(clamped.outWhite, 255);
    QCOMPARE(clamped.gamma, 1.0);
    QCOMPARE(clamped.hue, 180);
    adjustment.gamma = 0;
    QCOMPARE(AdjustmentPixels::Clamped(adjustment).gamma, 0.1);
    QVERIFY(AdjustmentPixels::Clamped(clamped) == clamped);
}

ZK_REGISTER_TEST(tst_adjustment, TestAdjustment)
#include "tst_adjustment.moc"
