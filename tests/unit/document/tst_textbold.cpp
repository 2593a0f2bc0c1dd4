#include "document/TextGeometry.h"
#include "document/TextRaster.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QFontDatabase>
#include <QTest>

namespace {
const QSize Canvas(200, 150);
constexpr int Size = 96; ///< of the font: the square has 48 pixels, its hole 24, bold adds 2 on each side
const QPointF Baseline(10, 100);

TextContent Bold(bool isBold, const QString& text)
{
    TextContent content = TextFixture::Text(text, Size, Baseline);
    content.font.setFamily(QStringLiteral("Plain Squares"));
    content.font.setBold(isBold);
    return content;
}

int AlphaAt(const PlacedImage& drawn, int x, int y)
{
    const QPoint inImage = QPoint(x, y) - drawn.offset;
    if (!drawn.image.Rect().contains(inImage)) return 0;
    return static_cast<int>(drawn.image.GetColor(inImage.x(), inImage.y()).Alpha());
}

/// The first pixel that isn't as a square with a hole has it; empty when all are.
QString Difference(const PlacedImage& drawn, const QRect& square, const QRect& hole, int alpha)
{
    for (int y = 0; y < Canvas.height(); ++y) {
        for (int x = 0; x < Canvas.width(); ++x) {
            const int expected = square.contains(x, y) && !hole.contains(x, y) ? alpha : 0;
            const int actual = AlphaAt(drawn, x, y);
            if (qAbs(actual - expected) > 1) return QString("%1, %2: %3").arg(x).arg(y).arg(actual);
        }
    }
    return QString();
}
} // namespace

/// Bold texts in fonts with and without bold letters.
class TestTextBold : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void lettersWithoutABoldFontAreThickened_data();
    void lettersWithoutABoldFontAreThickened();
    void theBoxHoldsWhatWasAdded();
    void lettersOfABoldFontAreLeftAlone();
};

void TestTextBold::initTestCase()
{
    const int font = QFontDatabase::addApplicationFont(QStringLiteral(ZK_TEST_FONTS "/PlainSquares.ttf"));
    QCOMPARE(QFontDatabase::applicationFontFamilies(font), QStringList("Plain Squares"));
}

void TestTextBold::lettersWithoutABoldFontAreThickened_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("mode");
    for (const int mode : {TextContent::Antialiased, TextContent::Aliased}) {
        const char* edges = mode == TextContent::Aliased ? "hard" : "soft";
        QTest::addRow("%s, outlines one way round", edges) << QString(QChar(0xE001)) << mode;
        QTest::addRow("%s, outlines the other way round", edges) << QString(QChar(0xE002)) << mode;
    }
}

void TestTextBold::lettersWithoutABoldFontAreThickened()
{
    QFETCH(const QString, text);
    QFETCH(const int, mode);
    const QRect square(10, 52, 48, 48);
    const QRect hole(22, 64, 24, 24);
    for (const int alpha : {255, 100}) {
        TextContent plain = Bold(false, text);
        TextContent bold = Bold(true, text);
        for (TextContent* content : {&plain, &bold}) {
            content->renderMode = mode;
            content->brush = QColor(0, 0, 0, alpha);
        }
        QCOMPARE(Difference(TextRaster::Render(plain, Canvas), square, hole, alpha), QString());
        QCOMPARE(Difference(TextRaster::Render(bold, Canvas), square.adjusted(-2, -2, 2, 2),
                            hole.adjusted(2, 2, -2, -2), alpha),
                 QString());
    }
}

void TestTextBold::theBoxHoldsWhatWasAdded()
{
    const QRectF box = TextGeometry(Bold(true, QString(QChar(0xE001)))).Box();
    QVERIFY(box.left() < 8.1);
    QVERIFY(TextGeometry(Bold(false, QString(QChar(0xE001)))).Box().left() > 9.9);
}

void TestTextBold::lettersOfABoldFontAreLeftAlone()
{
    QFont font = TextFixture::Font(40);
    font.setBold(true);
    QVERIFY(TextLines("Heavy", font).Thickening().isEmpty());
    font.setFamily(QStringLiteral("Plain Squares"));
    QVERIFY(!TextLines(QString(QChar(0xE001)), font).Thickening().isEmpty());
}

ZK_REGISTER_TEST(tst_textbold, TestTextBold)
#include "tst_textbold.moc"
