#include "geometryengine/InversePaint.h"
#include "support/TestRegistry.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPicture>
#include <QPixmap>
#include <QTest>
#include <QWidget>

class TestInversePaint : public QObject
{
    Q_OBJECT

private slots:
    void brightAndDarkColorsGetTheirInverse();
    void everyColorGetsAnotherBrightness();
    void onlyThePathIsPainted();
    void eachPixelContrastsToItsOwnGround();
    void aPaintersTransformHolds();
    void aPixmapIsPaintedLikeAnImage();
    void aWidgetIsPaintedLikeAnImage();
    void aDeviceWithoutPixelsGetsTheInverse();
    void nothingOfAPathBesideThePictureIsPainted();
    void aCosmeticLineKeepsItsWidth();
    void aLineOfItsOwnUnitsGrowsWithTheScale();
    void aLongLineContrastsAllAlong();
    void sharpCornersContrastToo();
};

namespace {
QPainterPath RectPath(const QRectF& rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

QImage Filled(const QColor& color)
{
    QImage image(16, 8, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// Shows a path in inverse over a green ground.
class InverseWidget : public QWidget
{
public:
    InverseWidget() { resize(100, 60); }

    QPainterPath path = RectPath({10, 10, 20, 20});

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::yellow);
        FillInverse(&painter, path);
    }
};
} // namespace

void TestInversePaint::brightAndDarkColorsGetTheirInverse()
{
    QCOMPARE(ContrastTo(qRgb(255, 255, 255)), qRgb(0, 0, 0));
    QCOMPARE(ContrastTo(qRgb(0, 0, 0)), qRgb(255, 255, 255));
    QCOMPARE(ContrastTo(qRgb(255, 255, 0)), qRgb(0, 0, 255));
    QCOMPARE(ContrastTo(qRgb(10, 20, 30)), qRgb(245, 235, 225));
    QCOMPARE(ContrastTo(qRgba(0, 0, 0, 0)), qRgb(255, 255, 255));
    // The inverse of middle gray is middle gray.
    QCOMPARE(ContrastTo(qRgb(128, 128, 128)), qRgb(0, 0, 0));
    QCOMPARE(ContrastTo(qRgb(127, 127, 127)), qRgb(255, 255, 255));
}

void TestInversePaint::everyColorGetsAnotherBrightness()
{
    for (int red = 0; red < 256; red += 15) {
        for (int green = 0; green < 256; green += 15) {
            for (int blue = 0; blue < 256; blue += 15) {
                const QRgb ground = qRgb(red, green, blue);
                const int difference = qAbs(qGray(ContrastTo(ground)) - qGray(ground));
                QVERIFY2(difference >= 94, qPrintable(QColor(ground).name()));
            }
        }
    }
}

void TestInversePaint::onlyThePathIsPainted()
{
    QImage image = Filled(Qt::white);
    QPainter painter(&image);
    FillInverse(&painter, RectPath({2, 2, 4, 4}));
    painter.end();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor expected = QRect(2, 2, 4, 4).contains(x, y) ? Qt::black : Qt::white;
            QCOMPARE(image.pixelColor(x, y), expected);
        }
    }
}

void TestInversePaint::eachPixelContrastsToItsOwnGround()
{
    QImage image = Filled(Qt::white);
    image.setPixelColor(3, 3, Qt::black);
    image.setPixelColor(4, 3, Qt::blue);
    QPainter painter(&image);
    FillInverse(&painter, RectPath({2, 2, 4, 4}));
    painter.end();
    QCOMPARE(image.pixelColor(2, 3), QColor(Qt::black));
    QCOMPARE(image.pixelColor(3, 3), QColor(Qt::white));
    QCOMPARE(image.pixelColor(4, 3), QColor(Qt::yellow));
}

void TestInversePaint::aPaintersTransformHolds()
{
    QImage image = Filled(Qt::white);
    image.setDevicePixelRatio(2);
    QPainter painter(&image);
    painter.translate(1, 1);
    FillInverse(&painter, RectPath({1, 0, 2, 1}));
    // What is painted later stands where the transform says.
    painter.fillRect(QRectF(0, 0, 1, 1), Qt::red);
    painter.end();
    QCOMPARE(image.pixelColor(4, 2), QColor(Qt::black));
    QCOMPARE(image.pixelColor(7, 3), QColor(Qt::black));
    QCOMPARE(image.pixelColor(8, 3), QColor(Qt::white));
    QCOMPARE(image.pixelColor(7, 4), QColor(Qt::white));
    QCOMPARE(image.pixelColor(3, 3), QColor(Qt::red));
}

void TestInversePaint::aPixmapIsPaintedLikeAnImage()
{
    QPixmap pixmap(16, 8);
    pixmap.fill(Qt::gray);
    QPainter painter(&pixmap);
    FillInverse(&painter, RectPath({2, 2, 4, 4}));
    painter.end();
    const QImage image = pixmap.toImage();
    QCOMPARE(image.pixelColor(3, 3), QColor(Qt::black));
    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::gray));
}

void TestInversePaint::aWidgetIsPaintedLikeAnImage()
{
    // In a window of its own, and so that it stands beside the corner of the picture that is painted.
    QWidget window;
    window.resize(200, 100);
    InverseWidget widget;
    widget.setParent(&window);
    widget.move(30, 20);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QImage shown = window.grab().toImage();
    QCOMPARE(shown.pixelColor(30 + 12, 20 + 12), QColor(Qt::blue));
    QCOMPARE(shown.pixelColor(30 + 8, 20 + 12), QColor(Qt::yellow));
    widget.setParent(nullptr);
}

void TestInversePaint::aDeviceWithoutPixelsGetsTheInverse()
{
    QPicture recorded;
    QPainter recorder(&recorded);
    FillInverse(&recorder, RectPath({2, 2, 4, 4}));
    recorder.end();
    QImage image = Filled(Qt::yellow);
    QPainter painter(&image);
    painter.drawPicture(0, 0, recorded);
    painter.end();
    QCOMPARE(image.pixelColor(3, 3), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::yellow));
}

void TestInversePaint::nothingOfAPathBesideThePictureIsPainted()
{
    QImage image = Filled(Qt::white);
    QPainter painter(&image);
    FillInverse(&painter, RectPath({-50, 2, 40, 4}));
    FillInverse(&painter, QPainterPath());
    FillInverse(&painter, RectPath({12, -1e6, 1e6, 2e6}));
    painter.end();
    QCOMPARE(image.pixelColor(3, 3), QColor(Qt::white));
    QCOMPARE(image.pixelColor(11, 3), QColor(Qt::white));
    QCOMPARE(image.pixelColor(12, 3), QColor(Qt::black));
}

void TestInversePaint::aCosmeticLineKeepsItsWidth()
{
    QImage image = Filled(Qt::white);
    QPainter painter(&image);
    painter.scale(4, 4);
    QPainterPath line(QPointF(0, 1));
    line.lineTo(4, 1);
    QPen pen(Qt::red, 2);
    pen.setCosmetic(true);
    StrokeInverse(&painter, line, pen);
    painter.end();
    for (int y = 0; y < image.height(); ++y) {
        const bool isOnLine = y == 3 || y == 4;
        QCOMPARE(image.pixelColor(8, y), QColor(isOnLine ? Qt::black : Qt::white));
    }
}

void TestInversePaint::aLineOfItsOwnUnitsGrowsWithTheScale()
{
    QImage image = Filled(Qt::white);
    QPainter painter(&image);
    painter.scale(4, 4);
    QPainterPath line(QPointF(0, 1));
    line.lineTo(4, 1);
    StrokeInverse(&painter, line, QPen(Qt::red, 1));
    painter.end();
    for (int y = 0; y < image.height(); ++y) {
        const bool isOnLine = y >= 2 && y <= 5;
        QCOMPARE(image.pixelColor(8, y), QColor(isOnLine ? Qt::black : Qt::white));
    }
}

void TestInversePaint::aLongLineContrastsAllAlong()
{
    // Stripes of black and white, crossed by a line from corner to corner.
    QImage image(600, 400, QImage::Format_ARGB32_Premultiplied);
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y)
            image.setPixelColor(x, y, x / 8 % 2 ? Qt::black : Qt::white);
    }
    const QImage ground = image;
    QPainter painter(&image);
    QPainterPath line(QPointF(-1e5, -1e5 * 2 / 3));
    line.lineTo(1e5, 1e5 * 2 / 3);
    StrokeInverse(&painter, line, QPen(Qt::red, 3));
    painter.end();
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            const double away = qAbs(y + 0.5 - (x + 0.5) * 2 / 3);
            const bool isBlack = ground.pixelColor(x, y) == QColor(Qt::black);
            const bool isOnLine = away < 1;
            if (!isOnLine && away < 3) continue;
            QCOMPARE(image.pixelColor(x, y), QColor(isBlack == isOnLine ? Qt::white : Qt::black));
        }
    }
}

void TestInversePaint::sharpCornersContrastToo()
{
    QImage image(300, 40, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QPainterPath spike(QPointF(0, 18));
    spike.lineTo(60, 20);
    spike.lineTo(0, 22);
    QPen pen(Qt::red, 8, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setMiterLimit(40);
    StrokeInverse(&painter, spike, pen);
    painter.end();
    QCOMPARE(image.pixelColor(150, 20), QColor(Qt::black));
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            const QColor color = image.pixelColor(x, y);
            QVERIFY2(color == QColor(Qt::black) || color == QColor(Qt::white), qPrintable(color.name()));
        }
    }
}

ZK_REGISTER_TEST(tst_inversepaint, TestInversePaint)

#include "tst_inversepaint.moc"
