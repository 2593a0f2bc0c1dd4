#include "gui/ColorChoice.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <cmath>

/// The arithmetic of the two color models.
class TestColorChoice : public QObject
{
    Q_OBJECT

private slots:
    void bothModelsTellTheSameColor_data();
    void bothModelsTellTheSameColor();
    void everyColorComesBackFromTheOtherModel();
    void hueSaturationAndValueAgreeWithAnotherImplementation();
    void aGrayKeepsTheHueThatWas();
    void blackKeepsHueAndSaturation();
    void whatWasSetStaysExactly();
    void theSameColorAgainLosesNoHue();
    void theAlphaGoesItsOwnWay();
    void valuesOutsideTheirRangesAreCutOff();
    void anInvalidColorIsIgnored();
};

void TestColorChoice::bothModelsTellTheSameColor_data()
{
    QTest::addColumn<double>("hue");
    QTest::addColumn<double>("saturation");
    QTest::addColumn<double>("value");
    QTest::addColumn<QRgb>("rgb");
    QTest::newRow("red") << 0.0 << 1.0 << 1.0 << qRgb(255, 0, 0);
    QTest::newRow("yellow") << 60.0 << 1.0 << 1.0 << qRgb(255, 255, 0);
    QTest::newRow("green") << 120.0 << 1.0 << 1.0 << qRgb(0, 255, 0);
    QTest::newRow("cyan") << 180.0 << 1.0 << 1.0 << qRgb(0, 255, 255);
    QTest::newRow("blue") << 240.0 << 1.0 << 1.0 << qRgb(0, 0, 255);
    QTest::newRow("magenta") << 300.0 << 1.0 << 1.0 << qRgb(255, 0, 255);
    // The blue channel is full; red is taken away by half; green stands half way between: 0.8 x (1 - 0.5 x
    // 0.5).
    QTest::newRow("a soft blue") << 210.0 << 0.5 << 0.8 << qRgb(102, 153, 204);
    QTest::newRow("a red from below") << 348.0 << 1.0 << 1.0 << qRgb(255, 0, 51);
    QTest::newRow("dark orange") << 24.0 << 1.0 << 0.2 << qRgb(51, 20, 0);
}

void TestColorChoice::bothModelsTellTheSameColor()
{
    QFETCH(const double, hue);
    QFETCH(const double, saturation);
    QFETCH(const double, value);
    QFETCH(const QRgb, rgb);
    QCOMPARE(ToRgb({hue, saturation, value}), rgb);
    const HsvColor hsv = ToHsv(rgb, {});
    // A byte is some 0.4 %, and in a dark color more of the hue.
    QVERIFY2(std::abs(hsv.hue - hue) < 1, qPrintable(QString::number(hsv.hue)));
    QVERIFY(std::abs(hsv.saturation - saturation) < 0.005);
    QVERIFY(std::abs(hsv.value - value) < 0.005);
}

void TestColorChoice::everyColorComesBackFromTheOtherModel()
{
    for (int red = 0; red < 256; red += 3) {
        for (int green = 0; green < 256; green += 3) {
            for (int blue = 0; blue < 256; blue += 3) {
                const QRgb color = qRgb(red, green, blue);
                if (ToRgb(ToHsv(color, {})) != color) QFAIL(qPrintable(QString::number(color, 16)));
            }
        }
    }
}

void TestColorChoice::hueSaturationAndValueAgreeWithAnotherImplementation()
{
    for (int red = 0; red < 256; red += 15) {
        for (int green = 0; green < 256; green += 15) {
            for (int blue = 0; blue < 256; blue += 15) {
                const QColor color(red, green, blue);
                if (color.hsvHueF() < 0) continue;
                const HsvColor hsv = ToHsv(color.rgb(), {});
                const double away = std::abs(hsv.hue - 360 * color.hsvHueF());
                QVERIFY2(away < 0.02 || away > 359.98, qPrintable(color.name()));
                QVERIFY(std::abs(hsv.saturation - color.hsvSaturationF()) < 0.0001);
                QVERIFY(std::abs(hsv.value - color.valueF()) < 0.0001);
            }
        }
    }
}

void TestColorChoice::aGrayKeepsTheHueThatWas()
{
    ColorChoice choice;
    choice.SetColor(QColor(0, 0, 255));
    choice.SetColor(QColor(128, 128, 128));
    QCOMPARE(choice.GetHsv().hue, 240.0);
    QCOMPARE(choice.GetHsv().saturation, 0.0);
    choice.SetHsv({choice.GetHsv().hue, 1, 1});
    QCOMPARE(choice.GetColor(), QColor(0, 0, 255));
}

void TestColorChoice::blackKeepsHueAndSaturation()
{
    ColorChoice choice;
    choice.SetHsv({210, 0.5, 0.8});
    choice.SetColor(Qt::black);
    QVERIFY(choice.GetHsv() == (HsvColor{210, 0.5, 0}));
    choice.SetHsv({choice.GetHsv().hue, choice.GetHsv().saturation, 0.8});
    QCOMPARE(choice.GetColor(), QColor(102, 153, 204));
}

void TestColorChoice::whatWasSetStaysExactly()
{
    ColorChoice choice;
    // Three channels of a byte can't tell these apart.
    choice.SetHsv({211.3, 0.004, 0.01});
    QVERIFY(choice.GetHsv() == (HsvColor{211.3, 0.004, 0.01}));
    choice.SetColor(QColor(17, 34, 51));
    QCOMPARE(choice.GetColor(), QColor(17, 34, 51));
}

void TestColorChoice::theSameColorAgainLosesNoHue()
{
    ColorChoice choice;
    choice.SetHsv({211.3, 0.004, 0.01});
    choice.SetColor(choice.GetColor());
    QVERIFY(choice.GetHsv() == (HsvColor{211.3, 0.004, 0.01}));
}

void TestColorChoice::theAlphaGoesItsOwnWay()
{
    ColorChoice choice;
    QCOMPARE(choice.GetColor(), QColor(0, 0, 0, 255));
    choice.SetColor(QColor(1, 2, 3, 4));
    QCOMPARE(choice.GetColor(), QColor(1, 2, 3, 4));
    choice.SetHsv({120, 1, 1});
    QCOMPARE(choice.GetColor(), QColor(0, 255, 0, 4));
    choice.SetAlpha(200);
    QCOMPARE(choice.GetColor(), QColor(0, 255, 0, 200));
    choice.SetColor(QColor(0, 255, 0, 7));
    QCOMPARE(choice.GetColor().alpha(), 7);
}

void TestColorChoice::valuesOutsideTheirRangesAreCutOff()
{
    ColorChoice choice;
    choice.SetHsv({360, 1.5, 2});
    QVERIFY(choice.GetHsv() == (HsvColor{0, 1, 1}));
    choice.SetHsv({-90, -1, -1});
    QVERIFY(choice.GetHsv() == (HsvColor{270, 0, 0}));
    choice.SetAlpha(300);
    QCOMPARE(choice.GetColor().alpha(), 255);
    choice.SetAlpha(-1);
    QCOMPARE(choice.GetColor().alpha(), 0);
}

void TestColorChoice::anInvalidColorIsIgnored()
{
    ColorChoice choice;
    choice.SetColor(QColor(1, 2, 3, 4));
    choice.SetColor(QColor());
    QCOMPARE(choice.GetColor(), QColor(1, 2, 3, 4));
}

ZK_REGISTER_TEST(tst_colorchoice, TestColorChoice)
#include "tst_colorchoice.moc"
