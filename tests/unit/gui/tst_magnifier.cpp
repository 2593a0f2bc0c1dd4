#include "gui/Magnifier.h"
#include "support/TestRegistry.h"

#include <QTest>
#include <QtMath>

#include <random>

namespace {
QImage Noise(const QSize& size)
{
    std::mt19937 random(3);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qPremultiply(QRgb(random())));
    }
    return image;
}

/// One device pixel after the other: its middle lies in some pixel of the picture.
QImage SlowlyEnlarged(const QImage& picture, const QPoint& pixel, double scale, const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const double fromLeft = pixel.x() + 0.5 + (x + 0.5 - size.width() / 2.0) / scale;
            const double fromTop = pixel.y() + 0.5 + (y + 0.5 - size.height() / 2.0) / scale;
            const QPoint shown(qFloor(fromLeft), qFloor(fromTop));
            image.setPixel(x, y, picture.rect().contains(shown) ? picture.pixel(shown) : 0U);
        }
    }
    return image;
}

QImage WithGrid(double scale, const QRect& part, const MagnifierGrid& grid, const QColor& ground)
{
    const QSize size(40, 40);
    QImage image(size, QImage::Format_RGB32);
    image.fill(ground);
    DrawGrid(image, Magnifier(QPoint(0, 0), scale, size), part, grid);
    return image;
}

int Changed(const QImage& image, const QColor& ground)
{
    int changed = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            changed += image.pixel(x, y) != ground.rgb() ? 1 : 0;
    }
    return changed;
}
} // namespace

/// Which pixels a magnifying glass shows, and the grid between them.
class TestMagnifier : public QObject
{
    Q_OBJECT

private slots:
    void pixelsAreEnlargedAsByTheSlowTwin_data();
    void pixelsAreEnlargedAsByTheSlowTwin();
    void thePixelStandsInTheMiddle();
    void aPartEnlargesToTheSamePixels();
    void seenIsNoMoreThanWhatShows();
    void whatIsBesideTheGlassHasNoPlace();
    void nothingIsShownInNoRoom();
    void wheelStepsLeadUpAndBackAgain();
    void scalesBetweenTheStepsGoToTheNextOne();
    void linesLieBetweenThePixels();
    void linesEndWithThePart();
    void linesAreAsWideAsAsked();
    void kindsLightenDarkenAndGray();
    void weakLinesChangeLess();
};

void TestMagnifier::pixelsAreEnlargedAsByTheSlowTwin_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<QPoint>("pixel");
    QTest::addColumn<QSize>("size");
    QTest::newRow("1 : 1") << 1.0 << QPoint(10, 7) << QSize(16, 16);
    QTest::newRow("odd size") << 2.0 << QPoint(10, 7) << QSize(33, 17);
    QTest::newRow("even size") << 3.0 << QPoint(10, 7) << QSize(32, 18);
    QTest::newRow("between whole scales") << 2.5 << QPoint(5, 5) << QSize(50, 40);
    QTest::newRow("one pixel fills it") << 64.0 << QPoint(3, 3) << QSize(40, 40);
    QTest::newRow("at the corner") << 4.0 << QPoint(0, 0) << QSize(60, 60);
    QTest::newRow("at the far corner") << 4.0 << QPoint(19, 14) << QSize(60, 60);
    QTest::newRow("outside") << 4.0 << QPoint(-3, 40) << QSize(60, 60);
    QTest::newRow("far outside") << 4.0 << QPoint(-900, 7) << QSize(60, 60);
}

void TestMagnifier::pixelsAreEnlargedAsByTheSlowTwin()
{
    QFETCH(const double, scale);
    QFETCH(const QPoint, pixel);
    QFETCH(const QSize, size);
    const QImage picture = Noise({20, 15});
    const QImage enlarged = Magnifier(pixel, scale, size).Enlarge(picture, QPoint(0, 0));
    QCOMPARE(enlarged, SlowlyEnlarged(picture, pixel, scale, size));
}

void TestMagnifier::thePixelStandsInTheMiddle()
{
    // As much room left as right; where that is half a pixel, the square goes to the left or up.
    QCOMPARE(Magnifier({5, 6}, 8, {100, 99}).Place(QRect(5, 6, 1, 1)), QRect(46, 45, 8, 8));
}

void TestMagnifier::aPartEnlargesToTheSamePixels()
{
    const QImage picture = Noise({40, 30});
    const Magnifier glass({20, 12}, 3, {31, 25});
    const QRect part = glass.Seen() & picture.rect();
    QCOMPARE(glass.Enlarge(picture.copy(part), part.topLeft()), glass.Enlarge(picture, QPoint(0, 0)));
}

void TestMagnifier::seenIsNoMoreThanWhatShows()
{
    QCOMPARE(Magnifier({5, 6}, 10, {30, 10}).Seen(), QRect(4, 6, 3, 1));
    QCOMPARE(Magnifier({-5, 6}, 10, {30, 10}).Seen(), QRect(-6, 6, 3, 1));
}

void TestMagnifier::whatIsBesideTheGlassHasNoPlace()
{
    const Magnifier glass({5, 6}, 10, {30, 10});
    QVERIFY(glass.Place(QRect(8, 6, 1, 1)).isEmpty());
    QVERIFY(glass.Place(QRect(0, 0, 2, 20)).isEmpty());
    QVERIFY(glass.Place(QRect()).isEmpty());
}

void TestMagnifier::nothingIsShownInNoRoom()
{
    const Magnifier glass({5, 6}, 10, {0, 10});
    QVERIFY(glass.Seen().isEmpty());
    QVERIFY(glass.Place(QRect(0, 0, 20, 20)).isEmpty());
}

void TestMagnifier::wheelStepsLeadUpAndBackAgain()
{
    QVector<double> up;
    double scale = 1;
    while (scale < 32) {
        up.append(scale);
        scale = Magnifier::NextScale(scale);
    }
    QCOMPARE(up.size(), 12);
    while (scale > 1) {
        scale = Magnifier::FormerScale(scale);
        QCOMPARE(scale, up.takeLast());
    }
    QCOMPARE(Magnifier::NextScale(32), 32.0);
    QCOMPARE(Magnifier::FormerScale(1), 1.0);
}

void TestMagnifier::scalesBetweenTheStepsGoToTheNextOne()
{
    QCOMPARE(Magnifier::NextScale(13.5), 16.0);
    QCOMPARE(Magnifier::FormerScale(13.5), 12.0);
}

void TestMagnifier::linesLieBetweenThePixels()
{
    // Pixel 0 covers 16 to 23, so that lines lie at 0, 8, 16, 24 and 32; the first has nothing before it.
    const QImage image = WithGrid(8, QRect(-9, -9, 30, 30), MagnifierGrid(), Qt::white);
    for (int x = 0; x < 40; ++x)
        QCOMPARE(image.pixel(x, 20) != QColor(Qt::white).rgb(), x > 0 && x % 8 == 0);
    for (int y = 0; y < 40; ++y)
        QCOMPARE(image.pixel(20, y) != QColor(Qt::white).rgb(), y > 0 && y % 8 == 0);
}

void TestMagnifier::linesEndWithThePart()
{
    // The square of one pixel and its four sides: the last ones lie on the pixels after it.
    const QImage image = WithGrid(8, QRect(0, 0, 1, 1), MagnifierGrid(), Qt::white);
    QCOMPARE(Changed(image, Qt::white), 9 * 9 - 7 * 7);
    QVERIFY(image.pixel(24, 24) != QColor(Qt::white).rgb());
    QCOMPARE(image.pixel(25, 20), QColor(Qt::white).rgb());
}

void TestMagnifier::linesAreAsWideAsAsked()
{
    MagnifierGrid wide;
    wide.width = 2;
    QCOMPARE(Changed(WithGrid(8, QRect(0, 0, 1, 1), wide, Qt::white), Qt::white), 10 * 10 - 6 * 6);
}

void TestMagnifier::kindsLightenDarkenAndGray()
{
    const auto line = [](MagnifierGrid::Kind kind, const QColor& ground) {
        MagnifierGrid grid;
        grid.kind = kind;
        return QColor(WithGrid(8, QRect(0, 0, 1, 1), grid, ground).pixel(16, 20)).lightness();
    };
    using Kind = MagnifierGrid::Kind;
    const QColor dark(60, 60, 60);
    const QColor light(200, 200, 200);
    for (const QColor& ground : {dark, light}) {
        QVERIFY(line(Kind::Lighten, ground) > ground.lightness() + 20);
        QVERIFY(line(Kind::Darken, ground) < ground.lightness() - 20);
    }
    QVERIFY(line(Kind::Standard, dark) > dark.lightness() + 20);
    QVERIFY(line(Kind::Standard, light) < light.lightness() - 20);
}

void TestMagnifier::weakLinesChangeLess()
{
    MagnifierGrid weak;
    weak.strength = 0.4;
    const QColor strongLine = WithGrid(8, QRect(0, 0, 1, 1), MagnifierGrid(), Qt::white).pixel(16, 20);
    const QColor weakLine = WithGrid(8, QRect(0, 0, 1, 1), weak, Qt::white).pixel(16, 20);
    QVERIFY(weakLine.lightness() > strongLine.lightness());
    QVERIFY(weakLine.lightness() < 255);
}

ZK_REGISTER_TEST(tst_magnifier, TestMagnifier)
#include "tst_magnifier.moc"
