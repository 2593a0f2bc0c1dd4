#include "image/LXBlend.h"
#include "image/LXImage.h"
#include "support/GradientTwin.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"

#include <QBrush>
#include <QConicalGradient>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QRgba64>
#include <QTest>

namespace {
PlainImage Filled(const QBrush& brush, const QSize& size)
{
    LXImage32 image(size.width(), size.height());
    QPainterPath path;
    path.addRect(QRectF(QPointF(0, 0), size));
    FillPath(image, BlendMode::Source, path, brush);
    return TestImages::ToPlain(image);
}

/// The same by a painter, with 16 bits a channel.
PlainImage Painted(const QBrush& brush, const QSize& size)
{
    QImage painted(size, QImage::Format_RGBA64_Premultiplied);
    painted.fill(Qt::transparent);
    QPainter painter(&painted);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(painted.rect(), brush);
    painter.end();
    PlainImage plain(size.width(), size.height());
    for (int y = 0; y < size.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgba64*>(painted.constScanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            plain.At(x, y) = LXRGBA32i(row[x].unpremultiplied().toArgb32());
        }
    }
    return plain;
}

template <class Gradient>
QBrush WithStops(Gradient gradient, QGradient::Spread spread = QGradient::PadSpread)
{
    gradient.setColorAt(0, QColor(250, 10, 80, 255));
    gradient.setColorAt(0.4, QColor(20, 200, 100, 90));
    gradient.setColorAt(1, QColor(255, 255, 255, 200));
    gradient.setSpread(spread);
    return QBrush(gradient);
}

/// Less than half a level from step to step, so that the painter's own rounding of positions hardly shows.
template <class Gradient>
QBrush WithSoftStops(Gradient gradient)
{
    gradient.setColorAt(0, QColor(250, 10, 80, 255));
    gradient.setColorAt(0.4, QColor(150, 110, 100, 190));
    gradient.setColorAt(1, QColor(255, 255, 255, 200));
    return QBrush(gradient);
}

int LargestDifference(const PlainImage& a, const PlainImage& b)
{
    int largest = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i) {
        for (int channel = 0; channel < 4; ++channel) {
            largest = std::max(largest, std::abs(a.pixels[i].bytes[channel] - b.pixels[i].bytes[channel]));
        }
    }
    return largest;
}
} // namespace

Q_DECLARE_METATYPE(QBrush)

class TestGradient : public QObject
{
    Q_OBJECT

private slots:
    void everyKindAgreesWithItsTwin_data();
    void everyKindAgreesWithItsTwin();
    void softGradientsAreWithinALevelOfAPainters_data();
    void softGradientsAreWithinALevelOfAPainters();
    void hardEdgesLieWhereTheStopsSay();
    void mixingCountsAlphaUnlessTold();
    void conicalGradientsGoAgainstTheClock();
    void lineWithoutLengthHasItsFirstColor();
    void movedFociAreStillPainted();
};

void TestGradient::everyKindAgreesWithItsTwin_data()
{
    QTest::addColumn<QBrush>("brush");
    QTest::newRow("linear") << WithStops(QLinearGradient(20.5, 30, 250, 190.25));
    QTest::newRow("linear, repeated")
        << WithStops(QLinearGradient(120, 100, 150, 90), QGradient::RepeatSpread);
    QTest::newRow("linear, reflected") << WithStops(QLinearGradient(90, 9, 40, 70), QGradient::ReflectSpread);
    QTest::newRow("radial") << WithStops(QRadialGradient(140.5, 100, 120));
    QTest::newRow("radial, repeated") << WithStops(QRadialGradient(-20, 10, 60), QGradient::RepeatSpread);
    QTest::newRow("radial, reflected") << WithStops(QRadialGradient(300, 280, 45), QGradient::ReflectSpread);
    QTest::newRow("conical") << WithStops(QConicalGradient(140.25, 100.75, 0));
    QTest::newRow("conical, turned") << WithStops(QConicalGradient(20, 150, 237));
    QBrush turned = WithStops(QLinearGradient(0, 0, 70, 0), QGradient::ReflectSpread);
    turned.setTransform(QTransform().translate(30, 9).rotate(33).scale(2, 0.5).shear(0.3, 0));
    QTest::newRow("linear, by a transform") << turned;
    QBrush squeezed = WithStops(QRadialGradient(50, 50, 50));
    squeezed.setTransform(QTransform().rotate(-20).scale(3, 0.7));
    QTest::newRow("radial, by a transform") << squeezed;
    QLinearGradient straight(10, 0, 280, 0);
    straight.setInterpolationMode(QGradient::ComponentInterpolation);
    QTest::newRow("linear, each component by itself") << WithStops(straight);
}

void TestGradient::everyKindAgreesWithItsTwin()
{
    QFETCH(QBrush, brush);
    const PlainImage filled = Filled(brush, QSize(290, 270));
    for (int y = 0; y < filled.height; ++y) {
        for (int x = 0; x < filled.width; ++x) {
            QVERIFY2(
                GradientTwin::Allows(brush, x, y, filled.At(x, y)),
                qPrintable(QStringLiteral("%1, %2: %3").arg(x).arg(y).arg(filled.At(x, y).value, 0, 16)));
        }
    }
}

void TestGradient::softGradientsAreWithinALevelOfAPainters_data()
{
    QTest::addColumn<QBrush>("brush");
    QTest::newRow("linear") << WithSoftStops(QLinearGradient(20.5, 30, 250, 190.25));
    QTest::newRow("radial") << WithSoftStops(QRadialGradient(140.5, 100, 120));
}

void TestGradient::softGradientsAreWithinALevelOfAPainters()
{
    QFETCH(QBrush, brush);
    const QSize size(290, 270);
    QVERIFY(LargestDifference(Filled(brush, size), Painted(brush, size)) <= 1);
}

void TestGradient::hardEdgesLieWhereTheStopsSay()
{
    QLinearGradient gradient(0, 0, 100, 0);
    gradient.setColorAt(0, Qt::transparent);
    gradient.setColorAt(0.0000001, Qt::red);
    gradient.setColorAt(0.4999999, Qt::red);
    gradient.setColorAt(0.5, Qt::blue);
    gradient.setColorAt(0.9999999, Qt::blue);
    gradient.setColorAt(1, Qt::transparent);
    QBrush brush(gradient);
    brush.setTransform(QTransform::fromTranslate(50, 0));
    const PlainImage filled = Filled(brush, QSize(200, 1));
    for (int x = 0; x < 200; ++x) {
        const quint32 expected = x < 50 || x >= 150 ? 0U : (x < 100 ? 0xFFFF0000U : 0xFF0000FFU);
        QVERIFY2(filled.At(x, 0).value == expected, QByteArray::number(x));
    }
}

void TestGradient::mixingCountsAlphaUnlessTold()
{
    // Halfway from opaque red to transparent blue.
    for (const bool counts : {true, false}) {
        QLinearGradient gradient(-1, 0, 2, 0);
        gradient.setColorAt(0, QColor(255, 0, 0, 255));
        gradient.setColorAt(1, QColor(0, 0, 255, 0));
        if (!counts) gradient.setInterpolationMode(QGradient::ComponentInterpolation);
        const LXRGBA32i pixel = Filled(QBrush(gradient), QSize(1, 1)).At(0, 0);
        QVERIFY(std::abs(pixel.Alpha() - 127.5) <= 1);
        QVERIFY(std::abs(pixel.Red() - (counts ? 255 : 127.5)) <= 1);
        QVERIFY(std::abs(pixel.Blue() - (counts ? 0 : 127.5)) <= 1);
    }
}

void TestGradient::conicalGradientsGoAgainstTheClock()
{
    QConicalGradient gradient(50, 50, 0);
    gradient.setColorAt(0, QColor(0, 0, 0));
    gradient.setColorAt(1, QColor(200, 200, 200));
    const PlainImage filled = Filled(QBrush(gradient), QSize(100, 100));
    QVERIFY(filled.At(99, 49).Red() <= 1);
    QVERIFY(filled.At(99, 50).Red() >= 199);
    QVERIFY(std::abs(filled.At(50, 0).Red() - 50) <= 2);
    QVERIFY(std::abs(filled.At(0, 50).Red() - 100) <= 2);
    QVERIFY(std::abs(filled.At(50, 99).Red() - 150) <= 2);
}

void TestGradient::lineWithoutLengthHasItsFirstColor()
{
    const PlainImage filled = Filled(WithStops(QLinearGradient(5, 5, 5, 5)), QSize(10, 10));
    QCOMPARE(filled.At(9, 9).value, 0xFFFA0A50U);
}

void TestGradient::movedFociAreStillPainted()
{
    const QBrush brush = WithStops(QRadialGradient(QPointF(70, 70), 60, QPointF(50, 60)));
    QVERIFY(LargestDifference(Filled(brush, QSize(140, 150)), Painted(brush, QSize(140, 150))) <= 1);
}

ZK_REGISTER_TEST(tst_gradient, TestGradient)
#include "tst_gradient.moc"
