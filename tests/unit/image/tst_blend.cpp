#include "image/LXBlend.h"
#include "image/LXImage.h"
#include "support/BlendTwin.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"

#include <QTest>
#include <QThreadPool>

#include <functional>
#include <limits>
#include <random>
#include <stdexcept>

namespace {
const std::vector<unsigned int> AllModes{0,  3,  5,  6,  8,  12, 13, 14, 15, 16,
                                         17, 18, 19, 20, 21, 22, 23, 64, 91, 92};

LXImage32 OnePixel(quint32 color)
{
    LXImage32 image(1, 1);
    image.SetColor(0, 0, LXRGBA32i(color));
    return image;
}

/// The target's pixel after one pixel was blended on it.
quint32 Blended(unsigned int mode, quint32 target, quint32 source, double opacity = 1.0,
                bool keepAlpha = false)
{
    LXImage32 image = OnePixel(target);
    BlendOn(OnePixel(source), QRect(0, 0, 1, 1), mode, image, QRect(0, 0, 1, 1), opacity, keepAlpha);
    return image.GetColor(0, 0).value;
}

/// The same through a mask pixel.
quint32 BlendedMasked(unsigned int mode, quint32 target, quint32 source, int maskValue)
{
    LXImage32 image = OnePixel(target);
    const QRect one(0, 0, 1, 1);
    BlendMaskOn(OnePixel(source), one, mode, image, one, 1.0, OnePixel(qRgba(0, 0, 0, maskValue)), one, false,
                false);
    return image.GetColor(0, 0).value;
}
} // namespace

class TestBlend : public QObject
{
    Q_OBJECT

private slots:

    void init() { m_Random.seed(20170413); }

    void agreesWithTheTwin_data();
    void agreesWithTheTwin();

    void agreesWithTheTwinThroughAMask_data() { agreesWithTheTwin_data(); }

    void agreesWithTheTwinThroughAMask();
    void agreesWithTheTwinForEveryPairOfBytes_data();
    void agreesWithTheTwinForEveryPairOfBytes();

    void handWorkedPixels_data();
    void handWorkedPixels();
    void transparentSourceKeepsTheColorUnderIt();
    void lockedTransparencyKeepsAlpha();
    void eitherFlagLocksTransparencyThroughAMask();
    void cutAndLiftAddUp();
    void grayIntoAMaskThroughASelectionTruncatesTwice();
    void halfStrengthReplaceMixesByAlpha();
    void pixelsWithoutASourceStay();
    void farOutBlendingIsThatOfTheTwin_data();
    void farOutBlendingIsThatOfTheTwin();
    void outsideTheMaskTheStrengthIsZero();

    void emptyRectanglesWriteNothing();
    void hugeRectanglesAreClipped();
    void unknownModesAreRefused();
    void opacityOutsideItsRangeIsBroughtInside();
    void selfBlendReadsWhatWasThereBefore_data();
    void selfBlendReadsWhatWasThereBefore();
    void maskMayBeTheTarget();
    void sharedTilesOfOthersStayAsTheyWere();

    void copyingAlignedTilesSharesThem();
    void opaqueTilesThatHideTheTargetAreShared();
    void solidTilesAreSharedOffTheGrid_data();
    void solidTilesAreSharedOffTheGrid();
    void tilesOfSeveralColorsAreNotMoved();
    void copyingKeepsTheRestOfAPartlyCoveredTile();
    void blankSourcesDetachNothing();
    void cuttingABlankTargetDetachesNothing();
    void drawImageBlendsTheWholeSourceAtThePoint();
    void copyPartOfNothingIsEmpty();
    void copyPartIsTheIntersection();
    void aCutTileIsSharedByItsCopy();
    void aTileMadeFromTheTargetTakesItsPlace();

private:
    struct Case
    {
        QSize srcSize;
        QSize dstSize;
        QRect srcRect;
        QRect dstRect;
    };

    static std::vector<Case> Cases();

    std::mt19937 m_Random;
};

std::vector<TestBlend::Case> TestBlend::Cases()
{
    return {
        {{1, 1}, {1, 1}, {0, 0, 1, 1}, {0, 0, 1, 1}},
        {{127, 127}, {127, 127}, {0, 0, 127, 127}, {0, 0, 127, 127}},
        {{128, 128}, {129, 129}, {0, 0, 128, 128}, {1, 1, 128, 128}},
        {{130, 130}, {130, 130}, {0, 0, 130, 130}, {0, 0, 130, 130}},
        {{300, 270}, {130, 130}, {100, 120, 140, 140}, {-5, -7, 140, 140}},
        {{130, 130}, {300, 270}, {-20, -10, 200, 200}, {90, 110, 180, 190}},
        {{300, 270}, {300, 270}, {3, 250, 20, 90}, {290, 1, 100, 100}},
    };
}

void TestBlend::agreesWithTheTwin_data()
{
    QTest::addColumn<unsigned int>("mode");
    QTest::addColumn<bool>("keepAlpha");
    for (const unsigned int mode : AllModes) {
        for (const bool keepAlpha : {false, true}) {
            QTest::addRow("mode %u%s", mode, keepAlpha ? ", alpha kept" : "") << mode << keepAlpha;
        }
    }
}

void TestBlend::agreesWithTheTwin()
{
    QFETCH(unsigned int, mode);
    QFETCH(bool, keepAlpha);
    const double opacities[] = {1.0, 0.0, 0.5, 0.371, 0.999};
    int turn = 0;
    for (const Case& c : Cases()) {
        const double opacity = opacities[turn++ % 5];
        const PlainImage src = TestImages::Random(c.srcSize.width(), c.srcSize.height(), m_Random);
        PlainImage expected = TestImages::Random(c.dstSize.width(), c.dstSize.height(), m_Random);
        LXImage32 actual = TestImages::ToTiles(expected);

        BlendOn(TestImages::ToTiles(src), c.srcRect, mode, actual, c.dstRect, opacity, keepAlpha);
        BlendTwin::Blend(src, c.srcRect, mode, expected, c.dstRect, opacity, keepAlpha);
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(actual), expected), QString());
    }
}

void TestBlend::agreesWithTheTwinThroughAMask()
{
    QFETCH(unsigned int, mode);
    QFETCH(bool, keepAlpha);
    const QRect maskRects[] = {{0, 0, 300, 300}, {-4, 9, 80, 200}, {60, 60, 140, 20}};
    int turn = 0;
    for (const Case& c : Cases()) {
        const double opacity = turn % 2 == 0 ? 1.0 : 0.63;
        const PlainImage src = TestImages::Random(c.srcSize.width(), c.srcSize.height(), m_Random);
        const PlainImage mask = TestImages::Random(140, 150, m_Random);
        const QRect maskRect = maskRects[turn % 3];
        PlainImage expected = TestImages::Random(c.dstSize.width(), c.dstSize.height(), m_Random);
        LXImage32 actual = TestImages::ToTiles(expected);

        BlendMaskOn(TestImages::ToTiles(src), c.srcRect, mode, actual, c.dstRect, opacity,
                    TestImages::ToTiles(mask), maskRect, keepAlpha, false);
        BlendTwin::Blend(src, c.srcRect, mode, expected, c.dstRect, opacity, keepAlpha, {&mask, maskRect});
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(actual), expected), QString());
        ++turn;
    }
}

void TestBlend::agreesWithTheTwinForEveryPairOfBytes_data()
{
    QTest::addColumn<unsigned int>("mode");
    for (unsigned int mode = 12; mode <= 23; ++mode) {
        QTest::addRow("mode %u", mode) << mode;
    }
}

/// Opaque on opaque, so that the formula's own rounding shows in every one of its 65536 values.
void TestBlend::agreesWithTheTwinForEveryPairOfBytes()
{
    QFETCH(unsigned int, mode);
    PlainImage src(256, 256);
    PlainImage expected(256, 256);
    for (int y = 0; y < 256; ++y) {
        for (int x = 0; x < 256; ++x) {
            src.At(x, y) = LXRGBA32i(qRgba(x, 255 - x, x, 255));
            expected.At(x, y) = LXRGBA32i(qRgba(y, y, 255 - y, 255));
        }
    }
    LXImage32 actual = TestImages::ToTiles(expected);
    const QRect all(0, 0, 256, 256);
    BlendOn(TestImages::ToTiles(src), all, mode, actual, all, 1.0, false);
    BlendTwin::Blend(src, all, mode, expected, all, 1.0, false);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(actual), expected), QString());
}

void TestBlend::handWorkedPixels_data()
{
    QTest::addColumn<unsigned int>("mode");
    QTest::addColumn<quint32>("target");
    QTest::addColumn<quint32>("source");
    QTest::addColumn<quint32>("result");
    // Products of bytes are rounded: 0x80 x 0x80 = 16384, / 255 = 64.25.
    QTest::newRow("opaque over anything") << 0u << 0x40112233u << 0xFF445566u << 0xFF445566u;
    // s = 128, d = 255: (255 x 128 + 0 x 127) / 255 = 128.
    QTest::newRow("half white over opaque black") << 0u << 0xFF000000u << 0x80FFFFFFu << 0xFF808080u;
    // s = d = 128: ws = 32640, wd = 16256; alpha = 128 + 63.7; color = 255 x 32640 / 48896 = 170.2.
    QTest::newRow("half white over half black") << 0u << 0x80000000u << 0x80FFFFFFu << 0xC0AAAAAAu;
    QTest::newRow("addition is clamped") << 12u << 0xFFC86432u << 0xFF646464u << 0xFFFFC896u;
    QTest::newRow("multiply") << 13u << 0xFF808080u << 0xFF80FF00u << 0xFF408000u;
    // 128 + 128 - 64.25 = 191.75
    QTest::newRow("screen") << 14u << 0xFF808080u << 0xFF80FF00u << 0xFFC0FF80u;
    // With half a target only half of the formula counts: cs = (127 x 128 + 128 x 64) / 255 = 95.9.
    QTest::newRow("multiply on a half target") << 13u << 0x80808080u << 0xFF808080u << 0xFF606060u;
    QTest::newRow("difference") << 22u << 0xFF10F080u << 0xFF208010u << 0xFF107070u;
    QTest::newRow("merging a coverage is source over") << 91u << 0xFF000000u << 0x80FFFFFFu << 0xFF808080u;
    QTest::newRow("replace copies color under alpha 0") << 3u << 0xFF111111u << 0x00ABCDEFu << 0x00ABCDEFu;
    // 200 x 100 / 255 = 78.4
    QTest::newRow("source in") << 5u << 0xC8112233u << 0x64AABBCCu << 0x4EAABBCCu;
    QTest::newRow("destination in") << 6u << 0xC8112233u << 0x64AABBCCu << 0x4E112233u;
    QTest::newRow("destination out") << 8u << 0xC8112233u << 0x64AABBCCu << 0x7A112233u;
    // Lightness of (200, 100, 0) = 100; (100 x 255) / 255.
    QTest::newRow("opaque gray into a mask") << 64u << 0xFF112233u << 0xFFC86400u << 0x64112233u;
    QTest::newRow("transparent gray leaves a mask") << 64u << 0x77112233u << 0x00C86400u << 0x77112233u;
    // (255 x 128 + 127 x 1) / 255 = 128.498, truncated
    QTest::newRow("gray truncates") << 64u << 0x01000000u << 0x80FFFFFFu << 0x80000000u;
    QTest::newRow("coverage to alpha") << 92u << 0xC8112233u << 0x64AABBCCu << 0x64112233u;
}

void TestBlend::handWorkedPixels()
{
    QFETCH(unsigned int, mode);
    QFETCH(quint32, target);
    QFETCH(quint32, source);
    QFETCH(quint32, result);
    QCOMPARE(QString::number(Blended(mode, target, source), 16), QString::number(result, 16));
}

void TestBlend::transparentSourceKeepsTheColorUnderIt()
{
    for (const unsigned int mode : {0u, 12u, 13u, 19u, 23u, 91u}) {
        QCOMPARE(Blended(mode, 0x00123456, 0x00FFFFFF), 0x00123456u);
        QCOMPARE(Blended(mode, 0x40123456, 0xFFFFFFFF, 0.0), 0x40123456u);
    }
}

void TestBlend::lockedTransparencyKeepsAlpha()
{
    QCOMPARE(Blended(0, 0x80000000, 0xFFFFFFFF, 1.0, true), 0x80FFFFFFu);
    QCOMPARE(Blended(0, 0x80000000, 0x80FFFFFF, 1.0, true), 0x80808080u);
    QCOMPARE(Blended(0, 0x00123456, 0xFFFFFFFF, 1.0, true), 0x00123456u);
}

void TestBlend::eitherFlagLocksTransparencyThroughAMask()
{
    const QRect one(0, 0, 1, 1);
    const bool flags[][2] = {{true, false}, {false, true}, {true, true}};
    for (const auto& flag : flags) {
        LXImage32 image = OnePixel(0x80000000);
        BlendMaskOn(OnePixel(0xFFFFFFFF), one, 0, image, one, 1.0, OnePixel(0xFF000000), one, flag[0],
                    flag[1]);
        QCOMPARE(image.GetColor(0, 0).value, 0x80FFFFFFu);
    }
}

void TestBlend::cutAndLiftAddUp()
{
    LXImage32 target(256, 256);
    LXImage32 source(256, 256);
    for (int y = 0; y < 256; ++y) {
        for (int x = 0; x < 256; ++x) {
            target.SetColor(x, y, LXRGBA32i(qRgba(1, 2, 3, x)));
            source.SetColor(x, y, LXRGBA32i(qRgba(1, 2, 3, y)));
        }
    }
    LXImage32 lifted = target;
    LXImage32 rest = target;
    BlendOn(source, source.Rect(), 6, lifted, lifted.Rect(), 1.0, false);
    BlendOn(source, source.Rect(), 8, rest, rest.Rect(), 1.0, false);
    for (int y = 0; y < 256; ++y) {
        for (int x = 0; x < 256; ++x) {
            QCOMPARE(lifted.GetColor(x, y).Alpha() + rest.GetColor(x, y).Alpha(), x);
        }
    }
}

void TestBlend::grayIntoAMaskThroughASelectionTruncatesTwice()
{
    // t = (255 x 128 + 127 x 10) / 255 = 132.98 -> 132; (132 x 100 + 155 x 10) / 255 = 57.8 -> 57
    QCOMPARE(BlendedMasked(64, 0x0A000000, 0x80FFFFFF, 100), 0x39000000u);
    QCOMPARE(BlendedMasked(64, 0x0A000000, 0xFFFFFFFF, 0), 0x0A000000u);
}

void TestBlend::halfStrengthReplaceMixesByAlpha()
{
    // k = 128: weights 255 x 128 = 32640 and 0 x 127: alpha 128, color the source's
    QCOMPARE(Blended(3, 0x00000000, 0xFF646464, 0.5), 0x80646464u);
    QCOMPARE(Blended(3, 0x00ABCDEF, 0x00123456, 0.5), 0x00ABCDEFu);
    QCOMPARE(BlendedMasked(3, 0xFF112233, 0x40445566, 0), 0xFF112233u);
}

void TestBlend::pixelsWithoutASourceStay()
{
    for (const unsigned int mode : {6u, 92u}) {
        LXImage32 image(3, 1);
        image.Fill(LXRGBA32i(0xFF0000FF));
        BlendOn(LXImage32(1, 1), QRect(0, 0, 3, 1), mode, image, QRect(1, 0, 3, 1), 1.0, false);
        QCOMPARE(image.GetColor(0, 0).value, 0xFF0000FFu);
        QCOMPARE(image.GetColor(1, 0).value, 0x000000FFu);
        QCOMPARE(image.GetColor(2, 0).value, 0xFF0000FFu);
    }
}

void TestBlend::farOutBlendingIsThatOfTheTwin_data()
{
    QTest::addColumn<QRect>("from");
    QTest::addColumn<QRect>("to");
    QTest::newRow("to the left end") << QRect(0, 0, 30000, 20) << QRect(-29901, -3, 30000, 20);
    QTest::newRow("to the right end") << QRect(0, 0, 30000, 20) << QRect(29871, 5, 30000, 20);
    QTest::newRow("end to end") << QRect(29900, 0, 400, 20) << QRect(29890, -7, 400, 20);
}

void TestBlend::farOutBlendingIsThatOfTheTwin()
{
    QFETCH(QRect, from);
    QFETCH(QRect, to);
    const PlainImage src = TestImages::Random(30000, 20, m_Random);
    const PlainImage dst = TestImages::Random(30000, 20, m_Random);
    const LXImage32 source = TestImages::ToTiles(src);
    for (const unsigned int mode : {0u, 3u}) {
        PlainImage expected = dst;
        BlendTwin::Blend(src, from, mode, expected, to, 0.7, false);
        LXImage32 actual = TestImages::ToTiles(dst);
        BlendOn(source, from, mode, actual, to, 0.7, false);
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(actual), expected), QString());
    }
}

void TestBlend::outsideTheMaskTheStrengthIsZero()
{
    LXImage32 source(2, 1);
    source.Fill(LXRGBA32i(0xFFFFFFFF));
    LXImage32 image(2, 1);
    image.Fill(LXRGBA32i(0xFF000000));
    LXImage32 mask(2, 1);
    mask.Fill(LXRGBA32i(0xFF000000));
    BlendMaskOn(source, source.Rect(), 0, image, image.Rect(), 1.0, mask, QRect(0, 0, 1, 1), false, false);
    QCOMPARE(image.GetColor(0, 0).value, 0xFFFFFFFFu);
    QCOMPARE(image.GetColor(1, 0).value, 0xFF000000u);
}

void TestBlend::emptyRectanglesWriteNothing()
{
    LXImage32 image = OnePixel(0xFF123456);
    const LXImage32 white = OnePixel(0xFFFFFFFF);
    const QRect one(0, 0, 1, 1);
    const QRect empties[] = {QRect(), QRect(3, 3, 0, 5), QRect().translated(4, 4)};
    for (const QRect& empty : empties) {
        BlendOn(white, empty, 3, image, one, 1.0, false);
        BlendOn(white, one, 3, image, empty, 1.0, false);
        BlendMaskOn(white, one, 3, image, one, 1.0, white, empty, false, false);
    }
    BlendOn(LXImage32(), one, 92, image, one, 1.0, false);
    BlendOn(white, one, 3, image, QRect(1, 0, 1, 1), 1.0, false);
    QCOMPARE(image.GetColor(0, 0).value, 0xFF123456u);
}

void TestBlend::hugeRectanglesAreClipped()
{
    constexpr int far = std::numeric_limits<int>::max() / 4;
    LXImage32 image = OnePixel(0xFF123456);
    BlendOn(OnePixel(0xFFFFFFFF), QRect(-far, -far, 2 * far, 2 * far), 3, image,
            QRect(-far, -far, 2 * far, 2 * far), 1.0, false);
    QCOMPARE(image.GetColor(0, 0).value, 0xFFFFFFFFu);
}

void TestBlend::unknownModesAreRefused()
{
    LXImage32 image = OnePixel(0xFF123456);
    for (const unsigned int mode : {1u, 2u, 4u, 7u, 11u, 24u, 63u, 90u, 93u}) {
        QVERIFY_EXCEPTION_THROWN(BlendOn(image, image.Rect(), mode, image, image.Rect(), 1.0, false),
                                 std::invalid_argument);
    }
    QCOMPARE(image.GetColor(0, 0).value, 0xFF123456u);
}

void TestBlend::opacityOutsideItsRangeIsBroughtInside()
{
    QCOMPARE(Blended(0, 0xFF000000, 0x80FFFFFF, 7.5), 0xFF808080u);
    QCOMPARE(Blended(0, 0xFF000000, 0x80FFFFFF, -1.0), 0xFF000000u);
    QCOMPARE(Blended(0, 0xFF000000, 0x80FFFFFF, std::numeric_limits<double>::quiet_NaN()), 0xFF000000u);
}

void TestBlend::selfBlendReadsWhatWasThereBefore_data()
{
    QTest::addColumn<QPoint>("shift");
    QTest::newRow("in place") << QPoint(0, 0);
    QTest::newRow("right and down") << QPoint(3, 5);
    QTest::newRow("left and up") << QPoint(-130, -1);
    QTest::newRow("a whole tile") << QPoint(128, 0);
}

void TestBlend::selfBlendReadsWhatWasThereBefore()
{
    QFETCH(QPoint, shift);
    for (const unsigned int mode : {0u, 3u, 13u}) {
        PlainImage expected = TestImages::Random(300, 270, m_Random);
        LXImage32 actual = TestImages::ToTiles(expected);
        const PlainImage before = expected;
        const QRect all(0, 0, 300, 270);
        BlendOn(actual, all, mode, actual, all.translated(shift), 0.5, false);
        BlendTwin::Blend(before, all, mode, expected, all.translated(shift), 0.5, false);
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(actual), expected), QString());
    }
}

void TestBlend::maskMayBeTheTarget()
{
    const PlainImage src = TestImages::Random(130, 130, m_Random);
    PlainImage expected = TestImages::Random(130, 130, m_Random);
    const PlainImage mask = expected;
    LXImage32 actual = TestImages::ToTiles(expected);
    const QRect all(0, 0, 130, 130);
    BlendMaskOn(TestImages::ToTiles(src), all, 0, actual, all, 1.0, actual, all.translated(-2, 1), false,
                false);
    BlendTwin::Blend(src, all, 0, expected, all, 1.0, false, {&mask, all.translated(-2, 1)});
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(actual), expected), QString());
}

void TestBlend::sharedTilesOfOthersStayAsTheyWere()
{
    LXImage32 image(300, 10);
    image.Fill(LXRGBA32i(0xFF000000));
    const LXImage32 other = image;
    BlendOn(OnePixel(0xFFFFFFFF), QRect(0, 0, 1, 1), 0, image, QRect(2, 2, 1, 1), 1.0, false);
    QCOMPARE(image.GetColor(2, 2).value, 0xFFFFFFFFu);
    QCOMPARE(image.GetColor(130, 2).value, 0xFF000000u);
    QCOMPARE(other.GetColor(2, 2).value, 0xFF000000u);
}

void TestBlend::opaqueTilesThatHideTheTargetAreShared()
{
    const LXImage32 before = TestImages::ToTiles(TestImages::Random(384, 256, m_Random));
    LXImage32 source(384, 256);
    source.Fill(LXRGBA32i(0xFF203040));
    source.SetColor(200, 5, LXRGBA32i(0xFE000000)); // in the second tile

    LXImage32 hidden = before;
    BlendOn(source, source.Rect(), BlendMode::Normal, hidden, hidden.Rect(), 1.0, false);
    QCOMPARE(hidden.TileAt(0, 0), source.TileAt(0, 0));
    QCOMPARE(hidden.TileAt(2, 1), source.TileAt(2, 1));
    QVERIFY(hidden.TileAt(1, 0) != source.TileAt(1, 0));
    QCOMPARE(hidden.GetColor(130, 3).value, 0xFF203040u);

    // Where something of the target stays, it isn't.
    const QRect most(0, 0, 384, 255);
    for (const auto& blend :
         {std::function<void(LXImage32&)>([&](LXImage32& target) {
              BlendOn(source, source.Rect(), BlendMode::Normal, target, target.Rect(), 0.5, false);
          }),
          std::function<void(LXImage32&)>([&](LXImage32& target) {
              BlendOn(source, source.Rect(), BlendMode::Normal, target, target.Rect(), 1.0, true);
          }),
          std::function<void(LXImage32&)>([&](LXImage32& target) {
              BlendOn(source, source.Rect(), BlendMode::Multiply, target, target.Rect(), 1.0, false);
          }),
          std::function<void(LXImage32&)>([&](LXImage32& target) {
              BlendOn(source, most, BlendMode::Normal, target, most, 1.0, false);
          })}) {
        LXImage32 target = before;
        blend(target);
        QVERIFY(target.TileAt(0, 1) != source.TileAt(0, 1));
    }
}

void TestBlend::copyingAlignedTilesSharesThem()
{
    const LXImage32 source = TestImages::ToTiles(TestImages::Random(300, 270, m_Random));
    LXImage32 target(300, 270);
    BlendOn(source, source.Rect(), 3, target, target.Rect(), 1.0, false);
    QVERIFY(target.m_Tiles == source.m_Tiles);

    LXImage32 moved(600, 270);
    BlendOn(source, source.Rect(), 3, moved, source.Rect().translated(256, 0), 1.0, false);
    QCOMPARE(moved.TileAt(2, 0), source.TileAt(0, 0));
    // The source ends inside this tile, the target doesn't.
    QVERIFY(moved.TileAt(4, 0) != source.TileAt(2, 0));
    QCOMPARE(moved.GetColor(256 + 299, 269), source.GetColor(299, 269));
    QCOMPARE(moved.GetColor(256 + 300, 269).value, 0u);
}

void TestBlend::solidTilesAreSharedOffTheGrid_data()
{
    QTest::addColumn<unsigned int>("mode");
    QTest::addColumn<double>("opacity");
    QTest::addColumn<quint32>("under");
    QTest::newRow("copied") << unsigned(BlendMode::Source) << 1.0 << 0xFF0000FFu;
    QTest::newRow("hiding what is under it") << unsigned(BlendMode::Normal) << 1.0 << 0xFF0000FFu;
    QTest::newRow("mixed") << unsigned(BlendMode::Normal) << 0.5 << 0xFF0000FFu;
    QTest::newRow("mixed with blank") << unsigned(BlendMode::Normal) << 0.5 << 0u;
}

/// Wherever it is moved to, a tile of one color looks the same.
void TestBlend::solidTilesAreSharedOffTheGrid()
{
    QFETCH(unsigned int, mode);
    QFETCH(double, opacity);
    QFETCH(quint32, under);
    constexpr quint32 over = 0xFFFF8000;
    LXImage32 source(640, 640);
    source.Fill(LXRGBA32i(over));
    LXImage32 target(640, 640);
    target.Fill(LXRGBA32i(under));
    // Of several threads each may make one before it sees another's.
    QThreadPool& pool = *QThreadPool::globalInstance();
    const int threads = pool.maxThreadCount();
    pool.setMaxThreadCount(1);
    BlendOn(source, source.Rect(), mode, target, source.Rect().translated(7, 5), opacity, false);
    pool.setMaxThreadCount(threads);
    PlainImage expected(640, 640, LXRGBA32i(under));
    const PlainImage plain(640, 640, LXRGBA32i(over));
    BlendTwin::Blend(plain, source.Rect(), mode, expected, source.Rect().translated(7, 5), opacity, false);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(target), expected), QString());
    for (int row = 1; row < 5; ++row) {
        for (int column = 1; column < 5; ++column) {
            QCOMPARE(target.TileAt(column, row).data(), target.TileAt(1, 1).data());
        }
    }
}

/// The same tile all over, but with a drawing in it.
void TestBlend::tilesOfSeveralColorsAreNotMoved()
{
    const PlainImage drawing = TestImages::Random(128, 128, m_Random);
    const LXImage32 tile = TestImages::ToTiles(drawing);
    LXImage32 source(512, 512);
    PlainImage plain(512, 512);
    for (int y = 0; y < 512; ++y) {
        for (int x = 0; x < 512; ++x) {
            plain.At(x, y) = drawing.At(x % 128, y % 128);
            source.TileAt(x / 128, y / 128) = tile.TileAt(0, 0);
        }
    }
    for (const unsigned int mode : {BlendMode::Source, BlendMode::Normal}) {
        PlainImage expected(512, 512);
        LXImage32 target(512, 512);
        BlendOn(source, source.Rect(), mode, target, source.Rect().translated(-9, 3), 1.0, false);
        BlendTwin::Blend(plain, source.Rect(), mode, expected, source.Rect().translated(-9, 3), 1.0, false);
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(target), expected), QString());
    }
}

void TestBlend::copyingKeepsTheRestOfAPartlyCoveredTile()
{
    LXImage32 target(128, 128);
    target.Fill(LXRGBA32i(0xFF00FF00));
    const LXImage32 source = TestImages::ToTiles(TestImages::Random(128, 128, m_Random));
    BlendOn(source, QRect(0, 0, 127, 128), 3, target, QRect(0, 0, 127, 128), 1.0, false);
    QCOMPARE(target.GetColor(126, 127), source.GetColor(126, 127));
    QCOMPARE(target.GetColor(127, 127).value, 0xFF00FF00u);
}

void TestBlend::blankSourcesDetachNothing()
{
    LXImage32 target(300, 270);
    target.Fill(LXRGBA32i(0xFF00FF00));
    const LXImage32 before = target;
    const LXImage32 blank(300, 270);
    for (const unsigned int mode : {0u, 8u, 12u, 64u, 91u}) {
        BlendOn(blank, blank.Rect(), mode, target, target.Rect(), 1.0, false);
        QVERIFY(target.m_Tiles == before.m_Tiles);
    }
    LXImage32 clear(300, 270);
    const LXImage32 stillClear = clear;
    BlendOn(blank, QRect(7, 7, 200, 200), 3, clear, QRect(30, 30, 200, 200), 1.0, false);
    QVERIFY(clear.m_Tiles == stillClear.m_Tiles);
}

void TestBlend::cuttingABlankTargetDetachesNothing()
{
    LXImage32 target(300, 270);
    const LXImage32 before = target;
    const LXImage32 source = TestImages::ToTiles(TestImages::Random(300, 270, m_Random));
    BlendOn(source, source.Rect(), 6, target, target.Rect(), 1.0, false);
    BlendOn(source, source.Rect(), 8, target, target.Rect(), 1.0, false);
    BlendOn(source, source.Rect(), 0, target, target.Rect(), 1.0, true);
    QVERIFY(target.m_Tiles == before.m_Tiles);
}

void TestBlend::drawImageBlendsTheWholeSourceAtThePoint()
{
    const PlainImage src = TestImages::Random(140, 20, m_Random);
    PlainImage expected = TestImages::Random(150, 150, m_Random);
    LXImage32 actual = TestImages::ToTiles(expected);
    DrawImage(actual, 0, QPoint(20, -3), TestImages::ToTiles(src), 0.4, false);
    BlendTwin::Blend(src, QRect(0, 0, 140, 20), 0, expected, QRect(20, -3, 140, 20), 0.4, false);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(actual), expected), QString());
}

void TestBlend::copyPartOfNothingIsEmpty()
{
    const LXImage32 image(10, 10);
    QVERIFY(CopyPart(image, QRect(10, 0, 5, 5)).IsNull());
    QVERIFY(CopyPart(image, QRect()).IsNull());
    QVERIFY(CopyPart(LXImage32(), QRect(0, 0, 5, 5)).IsNull());
}

void TestBlend::copyPartIsTheIntersection()
{
    const LXImage32 image = TestImages::ToTiles(TestImages::Random(150, 150, m_Random));
    const LXImage32 part = CopyPart(image, QRect(140, -5, 100, 10));
    QCOMPARE(part.Rect(), QRect(0, 0, 10, 5));
    QCOMPARE(part.GetColor(9, 4), image.GetColor(149, 4));
    QVERIFY(CopyPart(image, QRect(-5, -5, 500, 500)).m_Tiles == image.m_Tiles);
}

void TestBlend::aCutTileIsSharedByItsCopy()
{
    const LXImage32 image = TestImages::ToTiles(TestImages::Random(300, 300, m_Random));
    const LXImage32 part = CopyPart(image, QRect(0, 128, 200, 150));
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 2; ++column)
            QVERIFY(part.TileAt(column, row) == image.TileAt(column, row + 1));
    }
    QCOMPARE(part.GetColor(199, 149), image.GetColor(199, 277));
}

void TestBlend::aTileMadeFromTheTargetTakesItsPlace()
{
    const LXImage32 image = TestImages::ToTiles(TestImages::Random(256, 256, m_Random));
    const QRect region(0, 0, 256, 140);
    LXImage32 patch = CopyPart(image, region);
    patch.SetColor(5, 130, LXRGBA32i(0x12345678));
    LXImage32 patched = image;
    BlendOn(patch, region, BlendMode::Source, patched, region, 1.0, false);
    QVERIFY(patched.TileAt(0, 1) == patch.TileAt(0, 1));
    PlainImage expected = TestImages::ToPlain(image);
    expected.At(5, 130) = LXRGBA32i(0x12345678);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(patched), expected), QString());

    // One that is another beyond its edge may not.
    patch.WriteTile(0, 1).Pixels()[127 * 128] = LXRGBA32i(~image.GetColor(0, 255).value);
    LXImage32 other = image;
    BlendOn(patch, region, BlendMode::Source, other, region, 1.0, false);
    QVERIFY(other.TileAt(0, 1) != patch.TileAt(0, 1));
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(other), expected), QString());
}

ZK_REGISTER_TEST(tst_blend, TestBlend)
#include "tst_blend.moc"
