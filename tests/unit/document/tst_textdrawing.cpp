#include "document/TextGeometry.h"
#include "document/TextRaster.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QFontInfo>
#include <QLinearGradient>
#include <QMatrix4x4>
#include <QPainter>
#include <QTest>
#include <QtMath>

#include <cmath>
#include <thread>
#include <vector>

using namespace TextFixture;

namespace {
const QSize Canvas(300, 200);

/// The text as Qt's own painter sets and fills it, in an image of nine times the resolution. It is set so
/// large that the places of letters need no rounding.
QImage Reference(const QString& text, int size, const QTransform& transform)
{
    constexpr int points = 9;
    constexpr int settingSize = 3000;
    QFont font = Font(settingSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    QPainterPath path;
    path.addText(QPointF(0, 0), font, text);
    const double scale = static_cast<double>(size) / settingSize;

    QImage large(Canvas * points, QImage::Format_Grayscale8);
    large.fill(0);
    QPainter painter(&large);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(
        (QTransform::fromScale(scale, scale) * transform * QTransform::fromScale(points, points)).map(path),
        Qt::white);
    painter.end();

    QImage reference(Canvas, QImage::Format_Grayscale8);
    for (int y = 0; y < Canvas.height(); ++y) {
        for (int x = 0; x < Canvas.width(); ++x) {
            int sum = 0;
            for (int row = 0; row < points; ++row) {
                const uchar* line = large.constScanLine(y * points + row) + x * points;
                for (int column = 0; column < points; ++column)
                    sum += line[column];
            }
            reference.scanLine(y)[x] = static_cast<uchar>(sum / (points * points));
        }
    }
    return reference;
}

/// The coverage of what was drawn, on the canvas.
QImage Coverage(const PlacedImage& placed)
{
    QImage coverage(Canvas, QImage::Format_Grayscale8);
    coverage.fill(0);
    const QRect rect = placed.Rect() & QRect(QPoint(0, 0), Canvas);
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            const QPoint inImage = QPoint(x, y) - placed.offset;
            coverage.scanLine(y)[x] =
                static_cast<uchar>(placed.image.GetColor(inImage.x(), inImage.y()).Alpha());
        }
    }
    return coverage;
}

struct Difference
{
    int largest = 0;
    double mean = 0; ///< of the pixels that aren't empty in both
    int count = 0;
};

Difference Compare(const QImage& a, const QImage& b)
{
    Difference difference;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const int left = a.constScanLine(y)[x];
            const int right = b.constScanLine(y)[x];
            if (left == 0 && right == 0) continue;
            ++difference.count;
            sum += std::abs(left - right);
            difference.largest = qMax(difference.largest, std::abs(left - right));
        }
    }
    difference.mean = difference.count > 0 ? sum / difference.count : 0;
    return difference;
}

QString Text(const Difference& difference)
{
    return QString("largest %1, mean %2 of %3 pixels")
        .arg(difference.largest)
        .arg(difference.mean)
        .arg(difference.count);
}
} // namespace

/// Pixels of texts against a drawing of many times the resolution by another way.
class TestTextDrawing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void atEverySizeAndAngleItIsTheDrawingInHighResolution_data();
    void atEverySizeAndAngleItIsTheDrawingInHighResolution();
    void twentyTimesASmallFontIsALargeFont();
    void hardEdgesHaveNoSoftPixels();
    void theBrushGivesColorAndStrength();
    void gradientsAndTexturesGoWithTheText_data();
    void gradientsAndTexturesGoWithTheText();
    void underlinesAndLettersDontCountTwice_data();
    void underlinesAndLettersDontCountTwice();
    void otherThreadsDrawTheSame();
    void anEmptyTextHasNoPixelsButAPlace();
    void aHugeTextIsDrawnRoundTheCanvasOnly();
    void onlyMovesByWholePixelsAreWholeMoves();
};

void TestTextDrawing::initTestCase()
{
    QCOMPARE(QFontInfo(Font(20)).family(), QString("DejaVu Sans"));
}

void TestTextDrawing::atEverySizeAndAngleItIsTheDrawingInHighResolution_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QTransform>("transform");
    const QTransform place = QTransform::fromTranslate(40.3, 120.6);
    QTest::newRow("10 pixels") << 10 << place;
    QTest::newRow("48 pixels") << 48 << place;
    QTest::newRow("large") << 150 << place;
    QTest::newRow("scaled up") << 12 << QTransform::fromScale(9, 9) * place;
    QTest::newRow("scaled down") << 300 << QTransform::fromScale(0.15, 0.15) * place;
    QTest::newRow("turned by 30 degrees") << 40 << QTransform().rotate(30) * place;
    QTest::newRow("turned by -73 degrees") << 50 << QTransform().rotate(-73) * place;
    QTest::newRow("mirrored and sheared") << 40 << QTransform(-1, 0.3, 0.5, 1, 200, 60);
    QTest::newRow("stretched") << 30 << QTransform::fromScale(3, 0.7) * place;
}

void TestTextDrawing::atEverySizeAndAngleItIsTheDrawingInHighResolution()
{
    QFETCH(const int, size);
    QFETCH(const QTransform, transform);
    const QString text = QStringLiteral("Sphinx");
    TextContent content = TextFixture::Text(text, size, QPointF());
    content.transform = transform;
    const PlacedImage drawn = TextRaster::Render(content, Canvas);
    const Difference difference = Compare(Coverage(drawn), Reference(text, size, transform));
    QVERIFY(difference.count > 100);
    QVERIFY2(difference.largest <= 8 && difference.mean < 1.5, qPrintable(::Text(difference)));
}

void TestTextDrawing::twentyTimesASmallFontIsALargeFont()
{
    TextContent small = TextFixture::Text("Wg", 6, QPointF(0.5, 6));
    small.transform = QTransform::fromScale(20, 20);
    const TextContent large = TextFixture::Text("Wg", 120, QPointF(10, 120));
    const Difference difference =
        Compare(Coverage(TextRaster::Render(small, Canvas)), Coverage(TextRaster::Render(large, Canvas)));
    QVERIFY2(difference.count > 1000 && difference.largest <= 2, qPrintable(::Text(difference)));
}

void TestTextDrawing::hardEdgesHaveNoSoftPixels()
{
    TextContent content = TextFixture::Text("Sphinx", 40, QPointF(20.4, 100.2));
    const QImage soft = Coverage(TextRaster::Render(content, Canvas));
    content.renderMode = TextContent::Aliased;
    const QImage hard = Coverage(TextRaster::Render(content, Canvas));
    int softPixels = 0;
    int set = 0;
    for (int y = 0; y < Canvas.height(); ++y) {
        for (int x = 0; x < Canvas.width(); ++x) {
            const int value = hard.constScanLine(y)[x];
            QVERIFY(value == 0 || value == 255);
            // A pixel whose middle is inside is covered by something.
            QVERIFY(value == 0 || soft.constScanLine(y)[x] > 0);
            QVERIFY(value == 255 || soft.constScanLine(y)[x] < 255);
            const int softValue = soft.constScanLine(y)[x];
            if (softValue > 0 && softValue < 255) ++softPixels;
            if (value == 255) ++set;
        }
    }
    QVERIFY(softPixels > 100);
    QVERIFY(set > 300);
}

void TestTextDrawing::theBrushGivesColorAndStrength()
{
    TextContent content = TextFixture::Text("I", 200, QPointF(20, 180));
    content.brush = QColor(10, 200, 30, 128);
    const PlacedImage drawn = TextRaster::Render(content, Canvas);
    const QPoint middle = drawn.Rect().center() - drawn.offset;
    QCOMPARE(drawn.image.GetColor(middle.x(), middle.y()).value, 0x800AC81EU);
}

void TestTextDrawing::gradientsAndTexturesGoWithTheText_data()
{
    QTest::addColumn<QBrush>("brush");
    // From red at the start of the line to blue where it is 40 pixels on: nothing in between.
    const QGradientStops stops{{0, Qt::red}, {0.5, Qt::red}, {0.5001, Qt::blue}, {1, Qt::blue}};
    QLinearGradient linear(0, 0, 40, 0);
    linear.setStops(stops);
    QTest::newRow("gradient") << QBrush(linear);
    QLinearGradient inParts(0, 0, 1, 0);
    inParts.setStops(stops);
    inParts.setCoordinateMode(QGradient::ObjectMode);
    QTest::newRow("gradient in parts of the text") << QBrush(inParts);
    QImage texture(40, 1, QImage::Format_ARGB32);
    for (int x = 0; x < 40; ++x)
        texture.setPixel(x, 0, x < 20 ? 0xFFFF0000 : 0xFF0000FF);
    QTest::newRow("texture") << QBrush(texture);
}

/// Two strokes of a letter, the first one in the first color and the second one in the other.
void TestTextDrawing::gradientsAndTexturesGoWithTheText()
{
    QFETCH(const QBrush, brush);
    const TextLines lines("ll", Font(100));
    const QRectF letters = lines.Letters().boundingRect();
    for (const QTransform& transform :
         {QTransform(), QTransform().translate(150, 20).rotate(60), QTransform::fromScale(0.8, 1.5)}) {
        TextContent content = TextFixture::Text("ll", 100, QPointF(30, 90));
        content.brush = brush;
        content.transform = transform;
        // The halves meet between the strokes.
        const double half = letters.center().x();
        if (!brush.gradient() || brush.gradient()->coordinateMode() == QGradient::LogicalMode) {
            content.brush.setTransform(QTransform::fromScale(half / 20, 1));
        }
        const PlacedImage drawn = TextRaster::Render(content, Canvas);
        for (const auto& [x, color] :
             {std::pair(letters.left() + 4, 0xFFFF0000U), std::pair(letters.right() - 4, 0xFF0000FFU)}) {
            const QPointF place = transform.map(content.position + QPointF(x, -30));
            const QPoint pixel = QPoint(qFloor(place.x()), qFloor(place.y())) - drawn.offset;
            QCOMPARE(drawn.image.GetColor(pixel.x(), pixel.y()).value, color);
        }
    }
}

void TestTextDrawing::underlinesAndLettersDontCountTwice_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("soft") << TextContent::Antialiased;
    QTest::newRow("hard") << TextContent::Aliased;
}

void TestTextDrawing::underlinesAndLettersDontCountTwice()
{
    QFETCH(const int, mode);
    TextContent content = TextFixture::Text("gjg", 100, QPointF(20, 100));
    content.renderMode = mode;
    content.font.setUnderline(true);
    content.font.setStrikeOut(true);
    content.brush = QColor(0, 0, 0, 100);
    const QImage both = Coverage(TextRaster::Render(content, Canvas));
    content.font.setUnderline(false);
    content.font.setStrikeOut(false);
    const QImage letters = Coverage(TextRaster::Render(content, Canvas));
    int more = 0;
    for (int y = 0; y < Canvas.height(); ++y) {
        for (int x = 0; x < Canvas.width(); ++x) {
            QVERIFY(both.constScanLine(y)[x] <= 100);
            QVERIFY(both.constScanLine(y)[x] >= letters.constScanLine(y)[x]);
            if (both.constScanLine(y)[x] > letters.constScanLine(y)[x]) ++more;
        }
    }
    // Two lines of about 160 pixels, some pixels thick, but for what the letters cover.
    QVERIFY2(more > 800, qPrintable(QString::number(more)));
}

void TestTextDrawing::otherThreadsDrawTheSame()
{
    const TextContent content = TextFixture::Text("Sphinx " + Hebrew(), 33, QPointF(20, 100));
    const QImage expected = Coverage(TextRaster::Render(content, Canvas));
    std::vector<QImage> drawn(4);
    std::vector<std::thread> threads;
    threads.reserve(drawn.size());
    for (QImage& image : drawn)
        threads.emplace_back([&] { image = Coverage(TextRaster::Render(content, Canvas)); });
    for (std::thread& thread : threads)
        thread.join();
    for (const QImage& image : drawn)
        QCOMPARE(image, expected);
}

void TestTextDrawing::anEmptyTextHasNoPixelsButAPlace()
{
    for (const QString& text : {QString(), QString("  \n ")}) {
        const PlacedImage drawn =
            TextRaster::Render(TextFixture::Text(text, 30, QPointF(12.7, 40.2)), Canvas);
        QVERIFY(drawn.image.IsNull());
        QCOMPARE(drawn.offset, QPoint(12, 40));
    }
}

void TestTextDrawing::aHugeTextIsDrawnRoundTheCanvasOnly()
{
    TextContent content = TextFixture::Text("O", 300, QPointF(0, 0));
    // In the middle of the left stroke.
    content.transform = QTransform::fromTranslate(-35, 110) * QTransform::fromScale(1000, 1000);
    const PlacedImage drawn = TextRaster::Render(content, Canvas);
    QVERIFY(!drawn.image.IsNull());
    QVERIFY(drawn.image.Width() <= 3 * Canvas.width() + 2000);
    QVERIFY(drawn.image.Height() <= 3 * Canvas.height() + 2000);
    QVERIFY(TextRaster::MayBeCut(drawn.Rect(), Canvas));
    QCOMPARE(TextRaster::RectOf(TextGeometry(content), Canvas), drawn.Rect());
}

void TestTextDrawing::onlyMovesByWholePixelsAreWholeMoves()
{
    const QTransform before(1.5, 0.2, -0.2, 1.5, 10.25, 7);
    QPoint delta(1, 1);
    QVERIFY(TextRaster::IsWholeMove(before, before * QTransform::fromTranslate(-3, 40), &delta));
    QCOMPARE(delta, QPoint(-3, 40));
    QVERIFY(TextRaster::IsWholeMove(before, before * QTransform::fromTranslate(5.0004, 0), &delta));
    QCOMPARE(delta, QPoint(5, 0));
    // What tools hand back in single precision is the same, large numbers too.
    const QTransform large(50.3, 1 / 3.0, -7.77, 1e-3, 5000.123, -120000.7);
    QVERIFY(TextRaster::IsWholeMove(large, QMatrix4x4(large).toTransform(), &delta));
    QCOMPARE(delta, QPoint(0, 0));
    QVERIFY(!TextRaster::IsWholeMove(before, before * QTransform::fromTranslate(0.5, 0), &delta));
    QVERIFY(!TextRaster::IsWholeMove(before, before * QTransform::fromScale(1.01, 1), &delta));
    QVERIFY(!TextRaster::IsWholeMove(before, QTransform(1, 0, 0.001, 0, 1, 0, 0, 0, 1), &delta));
}

ZK_REGISTER_TEST(tst_textdrawing, TestTextDrawing)
#include "tst_textdrawing.moc"
