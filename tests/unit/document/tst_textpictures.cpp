#include "document/TextGeometry.h"
#include "document/TextRaster.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QFontDatabase>
#include <QTest>

#include <thread>
#include <vector>

namespace {
const QSize Canvas(200, 150);
constexpr int Size = 64;            ///< of the font
const QPointF LeftHalf(8, -16);     ///< the middle of the red half, from where the text begins
const QPointF RightHalf(24, -16);   ///< of the blue one
constexpr quint32 Red = 0xFFFF0000; ///< what the font's picture holds
constexpr quint32 Blue = 0x800000FF;

/// The letter that is a picture.
QString Square()
{
    return QString(QChar(0xE000));
}

TextContent Content(const QString& text, const QPointF& position)
{
    TextContent content = TextFixture::Text(text, Size, position);
    content.font.setFamily(QStringLiteral("Color Letters"));
    return content;
}

quint32 PixelAt(const PlacedImage& drawn, const QPointF& point)
{
    const QPoint inImage = QPointF(point - drawn.offset).toPoint();
    return drawn.image.Rect().contains(inImage) ? drawn.image.GetColor(inImage.x(), inImage.y()).value : 0;
}

/// Within what mixing rounds.
bool IsNear(quint32 a, quint32 b)
{
    for (int shift = 0; shift < 32; shift += 8) {
        if (qAbs(static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF)) > 2) return false;
    }
    return true;
}

QString Hex(quint32 value)
{
    return QString::number(value, 16);
}
} // namespace

/// Letters that fonts hold as pictures, in a font of our own with one such letter.
class TestTextPictures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aPictureIsDrawnInItsOwnColors();
    void theBrushLeavesPicturesAlone();
    void picturesGoWhereTheTextGoes_data();
    void picturesGoWhereTheTextGoes();
    void aBendMovesTheCornersOfPictures();
    void outlinesAndPicturesStandInOneText();
    void theBoxHoldsThePictures();
    void otherThreadsDrawTheSame();
    void whatLiesFarAwayIsNotDrawn();
};

void TestTextPictures::initTestCase()
{
    const int font = QFontDatabase::addApplicationFont(QStringLiteral(ZK_TEST_FONTS "/ColorLetters.ttf"));
    QCOMPARE(QFontDatabase::applicationFontFamilies(font), QStringList("Color Letters"));
}

void TestTextPictures::aPictureIsDrawnInItsOwnColors()
{
    const PlacedImage drawn = TextRaster::Render(Content(Square(), QPointF(20, 100)), Canvas);
    QCOMPARE(drawn.Rect(), QRect(20, 68, 32, 32));
    int red = 0;
    int blue = 0;
    for (int y = 68; y < 100; ++y) {
        for (int x = 20; x < 52; ++x) {
            const quint32 pixel = PixelAt(drawn, QPointF(x, y));
            if (IsNear(pixel, Red) && x < 36) ++red;
            if (IsNear(pixel, Blue) && x >= 36) ++blue;
        }
    }
    // All but a few columns where the two meet.
    QVERIFY2(red >= 14 * 32, qPrintable(QString::number(red)));
    QVERIFY2(blue >= 14 * 32, qPrintable(QString::number(blue)));
}

void TestTextPictures::theBrushLeavesPicturesAlone()
{
    TextContent content = Content(Square(), QPointF(20, 100));
    content.brush = QColor(0, 255, 0, 10);
    content.renderMode = TextContent::Aliased;
    const PlacedImage drawn = TextRaster::Render(content, Canvas);
    QVERIFY(IsNear(PixelAt(drawn, content.position + LeftHalf), Red));
    QVERIFY(IsNear(PixelAt(drawn, content.position + RightHalf), Blue));
}

void TestTextPictures::picturesGoWhereTheTextGoes_data()
{
    QTest::addColumn<QTransform>("transform");
    QTest::newRow("turned by a right angle") << QTransform().translate(150, 10).rotate(90);
    QTest::newRow("turned by 30 degrees") << QTransform().translate(70, 10).rotate(30);
    QTest::newRow("mirrored") << QTransform(-1, 0, 0, 1, 160, 0);
    QTest::newRow("enlarged") << QTransform::fromScale(2, 1.4);
    QTest::newRow("made small") << QTransform::fromScale(0.4, 0.4);
    QTest::newRow("in perspective") << QTransform(1, 0.1, 0.002, 0.1, 1, 0.001, 5, 0, 1);
}

void TestTextPictures::picturesGoWhereTheTextGoes()
{
    QFETCH(const QTransform, transform);
    TextContent content = Content(Square(), QPointF(30, 90));
    content.transform = transform;
    const PlacedImage drawn = TextRaster::Render(content, Canvas);
    for (const auto& [place, color] : {std::pair(LeftHalf, Red), std::pair(RightHalf, Blue)}) {
        const QPointF point = transform.map(content.position + place);
        QVERIFY(QRectF(QPointF(0, 0), Canvas).contains(point));
        const quint32 pixel = PixelAt(drawn, point);
        QVERIFY2(IsNear(pixel, color), qPrintable(Hex(pixel) + " instead of " + Hex(color)));
    }
}

/// The line reaches from 48 above the baseline to 16 below it, the picture half as far from the middle. So a
/// flag that grows by 0.6 makes the picture's bottom wider by 0.3, and its top as much narrower.
void TestTextPictures::aBendMovesTheCornersOfPictures()
{
    TextContent content = Content(Square(), QPointF(30, 90));
    content.deformation.style = TextDeformation::Flag;
    content.deformation.vDistortion = 60;
    const PlacedImage drawn = TextRaster::Render(content, Canvas);
    QCOMPARE(drawn.Rect(), QRect(QPoint(25, 58), QPoint(66, 89)));
    QVERIFY(IsNear(PixelAt(drawn, content.position + QPointF(-3, -1)), Red));
    QVERIFY(IsNear(PixelAt(drawn, content.position + QPointF(34, -1)), Blue));
    QVERIFY(IsNear(PixelAt(drawn, content.position + QPointF(8, -30)), Red));
    QCOMPARE(PixelAt(drawn, content.position + QPointF(2, -31)), 0U);
    QCOMPARE(PixelAt(drawn, content.position + QPointF(29, -31)), 0U);
}

/// DejaVu Sans has no such letter, so another font gives it.
void TestTextPictures::outlinesAndPicturesStandInOneText()
{
    const TextContent content = TextFixture::Text("I" + Square() + "I", Size, QPointF(20, 100));
    const TextLines lines(content.text, content.font);
    QCOMPARE(static_cast<int>(lines.Pictures().size()), 1);
    const QRectF box = lines.Pictures().front().box;
    QCOMPARE(box.size(), QSizeF(32, 32));
    QVERIFY(lines.Letters().boundingRect().left() < box.left());
    QVERIFY(lines.Letters().boundingRect().right() > box.right());

    const PlacedImage drawn = TextRaster::Render(content, Canvas);
    QVERIFY(IsNear(PixelAt(drawn, content.position + box.bottomLeft() + LeftHalf), Red));
    const QPointF inLetter(lines.Letters().boundingRect().left() + 3, -16);
    QCOMPARE(Hex(PixelAt(drawn, content.position + inLetter)), Hex(0xFF000000));
}

void TestTextPictures::theBoxHoldsThePictures()
{
    TextContent content = Content(Square(), QPointF(20, 100));
    content.transform = QTransform().translate(70, 10).rotate(30);
    const QRectF box = TextGeometry(content).Box();
    for (const QPointF& corner : {QPointF(0, 0), QPointF(32, 0), QPointF(0, -32), QPointF(32, -32)})
        QVERIFY(box.adjusted(-1, -1, 1, 1).contains(content.transform.map(content.position + corner)));
    QCOMPARE(TextRaster::RectOf(TextGeometry(content), Canvas), TextRaster::Render(content, Canvas).Rect());
}

void TestTextPictures::otherThreadsDrawTheSame()
{
    const TextContent content = TextFixture::Text("I" + Square() + "I", Size, QPointF(20, 100));
    const PlacedImage expected = TextRaster::Render(content, Canvas);
    std::vector<PlacedImage> drawn(4);
    std::vector<std::thread> threads;
    threads.reserve(drawn.size());
    for (PlacedImage& placed : drawn)
        threads.emplace_back([&] { placed = TextRaster::Render(content, Canvas); });
    for (std::thread& thread : threads)
        thread.join();
    for (const PlacedImage& placed : drawn) {
        QCOMPARE(placed.Rect(), expected.Rect());
        const QRect rect = placed.Rect();
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            for (int x = rect.left(); x <= rect.right(); ++x)
                QCOMPARE(PixelAt(placed, QPointF(x, y)), PixelAt(expected, QPointF(x, y)));
        }
    }
}

void TestTextPictures::whatLiesFarAwayIsNotDrawn()
{
    TextContent content = Content(Square(), QPointF(20, 100));
    content.transform = QTransform::fromTranslate(1e6, 0);
    QVERIFY(TextRaster::Render(content, Canvas).image.IsNull());
    content.transform = QTransform::fromScale(1e5, 1e5);
    const PlacedImage huge = TextRaster::Render(content, Canvas);
    QVERIFY(huge.image.Width() <= 3 * Canvas.width() + 2000);
}

ZK_REGISTER_TEST(tst_textpictures, TestTextPictures)
#include "tst_textpictures.moc"
