#include "clipboardprivate/ClipboardPixels.h"

#include "image/BlendMode.h"
#include "image/ZKCMSTransform.h"
#include "support/BlendTwin.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"

#include <QTest>

using ClipboardPixels::PasteThrough;
using ClipboardPixels::Placed;

namespace {
/// A plain picture with its place, for the twins.
struct PlainPlaced
{
    PlainImage image;
    QPoint topLeft;

    LXRGBA32i At(const QPoint& point) const
    {
        const QPoint own = point - topLeft;
        return image.Contains(own.x(), own.y()) ? image.At(own.x(), own.y()) : LXRGBA32i();
    }

    QRect Rect() const { return {topLeft, QSize(image.width, image.height)}; }

    Placed ToTiles() const { return {TestImages::ToTiles(image), topLeft}; }
};

PlainPlaced Random(const QRect& rect, std::mt19937& random)
{
    return {TestImages::Random(rect.width(), rect.height(), random), rect.topLeft()};
}

PlainPlaced RandomMask(const QRect& rect, std::mt19937& random)
{
    PlainPlaced mask = Random(rect, random);
    for (LXRGBA32i& pixel : mask.image.pixels)
        pixel = LXRGBA32i(pixel.value & 0xFF000000u);
    return mask;
}

/// The picture whose pixel at a point of the document the function gives.
template <class ColorAt>
PlainImage Made(const QRect& rect, ColorAt colorAt)
{
    PlainImage image(rect.width(), rect.height());
    for (int y = 0; y < rect.height(); ++y) {
        for (int x = 0; x < rect.width(); ++x)
            image.At(x, y) = colorAt(rect.topLeft() + QPoint(x, y));
    }
    return image;
}

PlainImage PartOf(const PlainPlaced& source, const QRect& rect)
{
    return Made(rect, [&](const QPoint& point) { return source.At(point); });
}

LXRGBA32i Gray(int value)
{
    return LXRGBA32i(qRgba(value, value, value, 255));
}

/// CRC-32 bit by bit over the bytes of all rows.
unsigned int SlowChecksum(const PlainImage& image)
{
    quint32 crc = 0xFFFFFFFFu;
    for (const LXRGBA32i pixel : image.pixels) {
        for (const quint8 byte : pixel.bytes) {
            crc ^= byte;
            for (int bit = 0; bit < 8; ++bit)
                crc = (crc & 1) != 0 ? (crc >> 1) ^ 0xEDB88320u : crc >> 1;
        }
    }
    return ~crc;
}

constexpr QRect LayerRect(10, -20, 200, 170);
constexpr QRect SelectionRect(-15, 5, 160, 300);
} // namespace

class TestClipboardPixels : public QObject
{
    Q_OBJECT

private slots:
    void aCopyIsTheLayerThroughTheSelection();
    void aCopyOfWhatIsBesideTheLayerIsNothing();
    void aCopyOfAMaskIsGrayThroughTheSelection();
    void aCutKeepsWhatTheCopyDidNotTake();
    void aCutOfAMaskPaintsItsGround();
    void aPasteBlendsInsideTheLayer_data();
    void aPasteBlendsInsideTheLayer();
    void aPasteBesideTheLayerTouchesNothing();
    void picturesAreCenteredByHalvesTowardZero_data();
    void picturesAreCenteredByHalvesTowardZero();
    void theChecksumGoesOverAllRows_data();
    void theChecksumGoesOverAllRows();
    void picturesFitIntoSquares_data();
    void picturesFitIntoSquares();
    void theSystemClipboardGetsNoLongerSideThan5000_data();
    void theSystemClipboardGetsNoLongerSideThan5000();
    void theSystemClipboardGetsTheBytes();
    void theSystemClipboardGetsTheColorsOfSRgb();

private:
    std::mt19937 m_Random{7};
};

void TestClipboardPixels::aCopyIsTheLayerThroughTheSelection()
{
    const PlainPlaced layer = Random(LayerRect, m_Random);
    const PlainPlaced selection = RandomMask(SelectionRect, m_Random);
    const QRect common(10, 5, 135, 145); // worked out by hand from the two
    const PlainImage expected = Made(common, [&](const QPoint& point) {
        return BlendTwin::BlendPixel(BlendMode::Normal, LXRGBA32i(), layer.At(point), 1.0,
                                     selection.At(point).Alpha(), false);
    });

    const Placed copy = ClipboardPixels::Lift(layer.ToTiles(), selection.ToTiles());
    QCOMPARE(copy.Rect(), common);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(copy.image), expected), QString());
}

void TestClipboardPixels::aCopyOfWhatIsBesideTheLayerIsNothing()
{
    const PlainPlaced layer = Random(QRect(0, 0, 20, 10), m_Random);
    const PlainPlaced selection = RandomMask(QRect(20, 0, 5, 10), m_Random);
    QVERIFY(ClipboardPixels::Lift(layer.ToTiles(), selection.ToTiles()).image.IsNull());
    QVERIFY(ClipboardPixels::LiftMask(layer.ToTiles(), selection.ToTiles()).image.IsNull());
}

void TestClipboardPixels::aCopyOfAMaskIsGrayThroughTheSelection()
{
    const PlainPlaced mask = RandomMask(LayerRect, m_Random);
    const PlainPlaced selection = RandomMask(SelectionRect, m_Random);
    const QRect common = LayerRect & SelectionRect;
    const PlainImage expected = Made(common, [&](const QPoint& point) {
        return BlendTwin::BlendPixel(BlendMode::Normal, LXRGBA32i(), Gray(mask.At(point).Alpha()), 1.0,
                                     selection.At(point).Alpha(), false);
    });

    const Placed copy = ClipboardPixels::LiftMask(mask.ToTiles(), selection.ToTiles());
    QCOMPARE(copy.Rect(), common);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(copy.image), expected), QString());
}

void TestClipboardPixels::aCutKeepsWhatTheCopyDidNotTake()
{
    const PlainPlaced layer = Random(LayerRect, m_Random);
    const PlainPlaced selection = RandomMask(SelectionRect, m_Random);
    const QRect common = LayerRect & SelectionRect;
    const ClipboardPixels::Change cut = ClipboardPixels::Cut(layer.ToTiles(), selection.ToTiles());
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(cut.before), PartOf(layer, common)), QString());

    // What is taken and what stays add up; the color stays under every alpha.
    const PlainImage copy =
        TestImages::ToPlain(ClipboardPixels::Lift(layer.ToTiles(), selection.ToTiles()).image);
    const PlainImage expected = Made(common, [&](const QPoint& point) {
        const QPoint own = point - common.topLeft();
        const LXRGBA32i whole = layer.At(point);
        const int left = whole.Alpha() - copy.At(own.x(), own.y()).Alpha();
        return LXRGBA32i((whole.value & 0xFFFFFFu) | quint32(left) << 24);
    });
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(cut.after), expected), QString());
}

void TestClipboardPixels::aCutOfAMaskPaintsItsGround()
{
    const PlainPlaced mask = RandomMask(LayerRect, m_Random);
    const PlainPlaced selection = RandomMask(SelectionRect, m_Random);
    const QRect common = LayerRect & SelectionRect;
    const int ground = 40;
    const ClipboardPixels::Change cut =
        ClipboardPixels::CutMask(mask.ToTiles(), selection.ToTiles(), Gray(ground));
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(cut.before), PartOf(mask, common)), QString());

    const PlainImage expected = Made(common, [&](const QPoint& point) {
        const int coverage = selection.At(point).Alpha();
        const int value = (ground * coverage + (255 - coverage) * mask.At(point).Alpha()) / 255;
        return LXRGBA32i(quint32(value) << 24);
    });
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(cut.after), expected), QString());
}

void TestClipboardPixels::aPasteBlendsInsideTheLayer_data()
{
    QTest::addColumn<int>("through");
    QTest::addColumn<QRect>("target");
    QTest::addColumn<QRect>("touched");

    const auto row = [](const char* name, PasteThrough through, const QRect& target, const QRect& touched) {
        QTest::newRow(name) << static_cast<int>(through) << target << touched;
    };
    row("everything", PasteThrough::Everything, {40, 20, 90, 80}, {40, 20, 90, 80});
    row("over an edge", PasteThrough::Everything, {-30, 100, 90, 80}, {10, 100, 50, 50});
    row("a soft selection", PasteThrough::Selection, SelectionRect, {10, 5, 135, 145});
    row("the layer's shape", PasteThrough::LayerAlpha, {-30, 100, 90, 80}, {10, 100, 50, 50});
}

void TestClipboardPixels::aPasteBlendsInsideTheLayer()
{
    QFETCH(int, through);
    QFETCH(QRect, target);
    QFETCH(QRect, touched);

    const PlainPlaced layer = Random(LayerRect, m_Random);
    const PlainPlaced selection = RandomMask(SelectionRect, m_Random);
    const PlainPlaced item = Random(QRect(target.topLeft(), QSize(90, 80)), m_Random);
    const PlainImage expected = Made(touched, [&](const QPoint& point) {
        if (!item.Rect().contains(point)) return layer.At(point);
        int weight = 255;
        if (through == static_cast<int>(PasteThrough::Selection)) weight = selection.At(point).Alpha();
        if (through == static_cast<int>(PasteThrough::LayerAlpha)) weight = layer.At(point).Alpha();
        return BlendTwin::BlendPixel(BlendMode::Normal, layer.At(point), item.At(point), 1.0, weight, false);
    });

    const ClipboardPixels::Change paste = ClipboardPixels::Paste(
        layer.ToTiles(), item.ToTiles(), target, static_cast<PasteThrough>(through), selection.ToTiles());
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(paste.before), PartOf(layer, touched)), QString());
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(paste.after), expected), QString());
}

void TestClipboardPixels::aPasteBesideTheLayerTouchesNothing()
{
    const PlainPlaced layer = Random(QRect(0, 0, 20, 10), m_Random);
    const PlainPlaced item = Random(QRect(20, 0, 5, 10), m_Random);
    const ClipboardPixels::Change paste =
        ClipboardPixels::Paste(layer.ToTiles(), item.ToTiles(), item.Rect(), PasteThrough::Everything, {});
    QVERIFY(paste.before.IsNull());
    QVERIFY(paste.after.IsNull());
}

void TestClipboardPixels::picturesAreCenteredByHalvesTowardZero_data()
{
    QTest::addColumn<QSize>("canvas");
    QTest::addColumn<QSize>("picture");
    QTest::addColumn<QPoint>("topLeft");

    QTest::newRow("even") << QSize(100, 60) << QSize(40, 20) << QPoint(30, 20);
    QTest::newRow("odd") << QSize(101, 60) << QSize(40, 21) << QPoint(30, 19);
    QTest::newRow("larger by an odd number") << QSize(100, 60) << QSize(103, 65) << QPoint(-1, -2);
    QTest::newRow("larger by one") << QSize(100, 60) << QSize(101, 61) << QPoint(0, 0);
}

void TestClipboardPixels::picturesAreCenteredByHalvesTowardZero()
{
    QFETCH(QSize, canvas);
    QFETCH(QSize, picture);
    QTEST(ClipboardPixels::CenteredIn(canvas, picture), "topLeft");
}

void TestClipboardPixels::theChecksumGoesOverAllRows_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("one pixel") << QSize(1, 1);
    QTest::newRow("a tile") << QSize(128, 128);
    QTest::newRow("across tiles") << QSize(300, 131);
    QTest::newRow("a column") << QSize(1, 260);
}

void TestClipboardPixels::theChecksumGoesOverAllRows()
{
    QFETCH(QSize, size);
    const PlainImage image = TestImages::Random(size.width(), size.height(), m_Random);
    QCOMPARE(ClipboardPixels::Checksum(TestImages::ToTiles(image)), SlowChecksum(image));
}

void TestClipboardPixels::picturesFitIntoSquares_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("fitted");

    QTest::newRow("wide") << QSize(64, 16) << QSize(32, 8);
    QTest::newRow("high") << QSize(20, 64) << QSize(10, 32);
    QTest::newRow("enlarged") << QSize(8, 4) << QSize(32, 16);
    QTest::newRow("truncated") << QSize(64, 21) << QSize(32, 10);
    QTest::newRow("thinner than a pixel") << QSize(640, 2) << QSize(0, 0);
}

void TestClipboardPixels::picturesFitIntoSquares()
{
    QFETCH(QSize, size);
    LXImage32 image(size.width(), size.height());
    image.Fill(LXRGBA32i(0x80FF0000u));
    const QImage fitted = ClipboardPixels::FitInto(image, 32);
    QTEST(fitted.size(), "fitted");
    if (fitted.isNull()) return;
    QCOMPARE(fitted.format(), QImage::Format_ARGB32);
    QCOMPARE(fitted.pixel(fitted.width() - 1, fitted.height() - 1), 0x80FF0000u);
}

void TestClipboardPixels::theSystemClipboardGetsNoLongerSideThan5000_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("given");

    QTest::newRow("the longest side") << QSize(5000, 3) << QSize(5000, 3);
    QTest::newRow("too wide") << QSize(10000, 8) << QSize(5000, 4);
    QTest::newRow("too high") << QSize(8, 10000) << QSize(4, 5000);
}

void TestClipboardPixels::theSystemClipboardGetsNoLongerSideThan5000()
{
    QFETCH(QSize, size);
    QTEST(ClipboardPixels::ForSystemClipboard(LXImage32(size.width(), size.height())).size(), "given");
}

void TestClipboardPixels::theSystemClipboardGetsTheBytes()
{
    const PlainImage image = TestImages::Random(150, 20, m_Random);
    const QImage given = ClipboardPixels::ForSystemClipboard(TestImages::ToTiles(image));
    QCOMPARE(given.format(), QImage::Format_ARGB32);
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x)
            QCOMPARE(given.pixel(x, y), image.At(x, y).value);
    }
}

void TestClipboardPixels::theSystemClipboardGetsTheColorsOfSRgb()
{
    LXImage32 image(20, 10);
    image.Fill(LXRGBA32i(0x80C85A28));
    image.m_Profile = IccProfiles::AdobeRgb();
    LXRGBA32i expected(0x80C85A28);
    ZKCMSTransform(image.m_Profile, ZKCMSProfile())(&expected, 1);
    QVERIFY(expected.value != 0x80C85A28);
    QCOMPARE(ClipboardPixels::ForSystemClipboard(image).pixel(3, 3), expected.value);
    // The row keeps its own.
    QCOMPARE(image.GetColor(3, 3).value, 0x80C85A28U);
    image.m_Profile = ZKCMSProfile("a profile");
    QCOMPARE(ClipboardPixels::ForSystemClipboard(image).pixel(3, 3), 0x80C85A28U);
}

ZK_REGISTER_TEST(tst_clipboardpixels, TestClipboardPixels)
#include "tst_clipboardpixels.moc"
