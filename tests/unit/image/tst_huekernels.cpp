#include "image/HueKernels.h"
#include "support/HueTwin.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <hwy/targets.h>

#include <random>
#include <vector>

namespace {
/// Hue in degrees, saturation and lightness in percent, at both ends, in the middle and anywhere.
HueRule RandomRule(std::mt19937& random)
{
    const auto between = [&](int least, int most) {
        if (random() % 4 == 0) return random() % 2 == 0 ? least : most;
        if (random() % 4 == 0) return 0;
        return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
    };
    const auto lightness = static_cast<float>(between(-100, 100));
    HueRule rule;
    rule.turn = static_cast<float>(between(-180, 180)) / 60;
    rule.saturation = 1 + static_cast<float>(between(-100, 100)) / 100;
    rule.kept = 1 - std::abs(lightness) / 100;
    rule.added = lightness > 0 ? 255 * (lightness / 100) : 0;
    return rule;
}

/// Any color, or one whose channels are among a few: grays, pure colors, two channels alike.
LXRGBA32i RandomColor(std::mt19937& random)
{
    const auto any = static_cast<quint32>(random());
    if (any % 2 == 0) return LXRGBA32i(static_cast<quint32>(random()));
    constexpr quint32 levels[] = {0, 1, 127, 255};
    quint32 value = any & 0xFF000000;
    for (int shift = 0; shift < 24; shift += 8)
        value |= levels[random() % 4] << shift;
    return LXRGBA32i(value);
}

QString Text(const HueRule& rule, LXRGBA32i was, LXRGBA32i is, LXRGBA32i shouldBe)
{
    return QStringLiteral("turn %1, saturation %2, kept %3, added %4: %5 becomes %6 instead of %7")
        .arg(double(rule.turn))
        .arg(double(rule.saturation))
        .arg(double(rule.kept))
        .arg(double(rule.added))
        .arg(was.value, 8, 16)
        .arg(is.value, 8, 16)
        .arg(shouldBe.value, 8, 16);
}
} // namespace

/// Hue and saturation by vectors, byte for byte what the plain twin makes.
class TestHueKernels : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void everyInstructionSetAgreesWithTheTwin_data();
    void everyInstructionSetAgreesWithTheTwin();
    void whatLiesBeyondTheRowStays();
};

void TestHueKernels::cleanup()
{
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().DeInit();
}

void TestHueKernels::everyInstructionSetAgreesWithTheTwin_data()
{
    QTest::addColumn<qint64>("target");
    for (const int64_t target : hwy::SupportedAndGeneratedTargets())
        QTest::addRow("%s", hwy::TargetName(target)) << qint64(target);
}

void TestHueKernels::everyInstructionSetAgreesWithTheTwin()
{
    QFETCH(const qint64, target);
    hwy::SetSupportedTargetsForTest(target);
    hwy::GetChosenTarget().DeInit();
    std::mt19937 random(31);
    for (int round = 0; round < 2000; ++round) {
        const HueRule rule = RandomRule(random);
        std::vector<LXRGBA32i> before(random() % 200);
        for (LXRGBA32i& pixel : before)
            pixel = RandomColor(random);
        std::vector<LXRGBA32i> after = before;
        HueKernels::Turn(rule, after.data(), static_cast<int>(after.size()));
        for (std::size_t i = 0; i < before.size(); ++i) {
            const LXRGBA32i expected = HueTwin::Turned(rule, before[i]);
            QVERIFY2(after[i] == expected, qPrintable(Text(rule, before[i], after[i], expected)));
        }
    }
}

void TestHueKernels::whatLiesBeyondTheRowStays()
{
    constexpr int most = 40;
    const LXRGBA32i marker(0x12345678);
    HueRule rule;
    rule.turn = 1;
    for (int count = 0; count <= most; ++count) {
        std::vector<LXRGBA32i> pixels(most + 1, marker);
        HueKernels::Turn(rule, pixels.data(), count);
        for (int i = 0; i <= most; ++i)
            QCOMPARE(pixels[static_cast<std::size_t>(i)] == marker, i >= count);
    }
}

ZK_REGISTER_TEST(tst_huekernels, TestHueKernels)
#include "tst_huekernels.moc"
