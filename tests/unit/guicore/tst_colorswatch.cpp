#include "guicore/Checker.h"
#include "guicore/ColorSwatch.h"
#include "support/TestRegistry.h"

#include <QImage>
#include <QPainter>
#include <QTest>

/// How a color is shown in a control.
class TestColorSwatch : public QObject
{
    Q_OBJECT

private slots:
    void anOpaqueColorIsPlain();
    void aTranslucentColorLiesOverTheChecker();
    void theCheckerBeginsAtTheCornerOfTheSwatch();
    void nothingOutsideIsPainted();
    void anIconHasALineRoundItsColor();
};

namespace {
const QRect Place(3, 5, 20, 12);
const QRgb Ground = qRgb(1, 2, 3);

QImage Painted(const QColor& color)
{
    QImage image(30, 20, QImage::Format_RGB32);
    image.fill(Ground);
    QPainter painter(&image);
    ColorSwatch::Paint(painter, Place, color);
    return image;
}
} // namespace

void TestColorSwatch::anOpaqueColorIsPlain()
{
    const QImage image = Painted(QColor(200, 100, 50));
    for (int y = Place.top(); y <= Place.bottom(); ++y) {
        for (int x = Place.left(); x <= Place.right(); ++x)
            QCOMPARE(image.pixel(x, y), qRgb(200, 100, 50));
    }
}

void TestColorSwatch::aTranslucentColorLiesOverTheChecker()
{
    // Half of 255 over 0x9a and 0xb4, squares of 4.
    const QImage image = Painted(QColor(255, 255, 255, 128));
    const int dark = qRed(image.pixel(Place.topLeft()));
    const int light = qRed(image.pixel(Place.topLeft() + QPoint(4, 0)));
    QVERIFY(qAbs(dark - (255 + 0x9a) / 2) <= 2);
    QVERIFY(qAbs(light - (255 + 0xb4) / 2) <= 2);

    // Without any color the checker alone is seen.
    QCOMPARE(Painted(QColor(0, 0, 0, 0)).pixel(Place.topLeft()), qRgb(0x9a, 0x9a, 0x9a));
}

void TestColorSwatch::theCheckerBeginsAtTheCornerOfTheSwatch()
{
    const QImage image = Painted(QColor(0, 0, 0, 0));
    for (int y = 0; y < Place.height(); ++y) {
        for (int x = 0; x < Place.width(); ++x) {
            const bool isDark = (x / 4 + y / 4) % 2 == 0;
            QCOMPARE(qRed(image.pixel(Place.topLeft() + QPoint(x, y))), isDark ? 0x9a : 0xb4);
        }
    }
}

void TestColorSwatch::nothingOutsideIsPainted()
{
    const QImage image = Painted(QColor(200, 100, 50, 70));
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (!Place.contains(x, y)) QCOMPARE(image.pixel(x, y), Ground);
        }
    }
}

void TestColorSwatch::anIconHasALineRoundItsColor()
{
    const QImage image = ColorSwatch::MakeIcon(QColor(200, 100, 50), {32, 16}).pixmap(32, 16).toImage();
    QCOMPARE(image.size(), QSize(32, 16));
    QCOMPARE(image.pixelColor(0, 0), QColor(0x80, 0x80, 0x80));
    QCOMPARE(image.pixelColor(31, 15), QColor(0x80, 0x80, 0x80));
    QCOMPARE(image.pixelColor(1, 1), QColor(200, 100, 50));
    QCOMPARE(image.pixelColor(30, 14), QColor(200, 100, 50));
}

ZK_REGISTER_TEST(tst_colorswatch, TestColorSwatch)
#include "tst_colorswatch.moc"
