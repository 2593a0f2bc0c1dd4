#include "fillmenu/FillOperations.h"

#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "image/BlendMode.h"
#include "support/BlendTwin.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QRegularExpression>
#include <QTest>

namespace {
constexpr unsigned int Normal = BlendMode::Normal;

PlainImage Coverage(const QSize& size, std::mt19937& random)
{
    PlainImage mask(size.width(), size.height());
    for (LXRGBA32i& pixel : mask.pixels) {
        const int kind = int(random() % 4);
        pixel = LXRGBA32i(qRgba(0, 0, 0, kind == 0 ? 0 : kind == 1 ? 255 : int(random() % 256)));
    }
    return mask;
}

/// A layer over the edge of tiles with a soft selection that reaches over its right edge.
struct Scene
{
    explicit Scene(const QSize& size = {150, 140}, quint32 seed = 1) : random(seed)
    {
        image = TestImages::Random(size.width(), size.height(), random);
        selection = Coverage({90, 60}, random);
        pixels.layerId = 1;
        pixels.image = TestImages::ToTiles(image);
        pixels.geometry = QRect(QPoint(10, 20), size);
    }

    void Select()
    {
        pixels.hasSelection = true;
        pixels.selection = TestImages::ToTiles(selection);
        pixels.workRect = QRect(80, 100, 70, 40);
        pixels.selectionWorkRect = QRect(5, 6, 70, 40);
    }

    void SelectNothing()
    {
        pixels.workRect = image.width > 0 ? QRect(0, 0, image.width, image.height) : QRect();
    }

    BlendTwin::Mask Through() const { return {&selection, pixels.selectionWorkRect}; }

    std::mt19937 random;
    PlainImage image;
    PlainImage selection;
    FillPixels pixels;
};

PlainImage Solid(const QSize& size, LXRGBA32i color)
{
    return {size.width(), size.height(), color};
}

/// Coverage in alpha, as a mask keeps it.
PlainImage MaskOf(const PlainImage& image)
{
    PlainImage mask = image;
    for (LXRGBA32i& pixel : mask.pixels) {
        pixel = LXRGBA32i(pixel.value & 0xFF000000U);
    }
    return mask;
}

void Compare(const LXImage32& actual, const PlainImage& expected)
{
    const QString difference = TestImages::Difference(TestImages::ToPlain(actual), expected);
    QVERIFY2(difference.isEmpty(), qUtf8Printable(difference));
}
} // namespace

class TestFillOperations : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void aSolidFillReplacesEveryPixel();
    void aTranslucentColorCountsAsOpaque();
    void lockedTransparencyKeepsEveryAlpha_data();
    void lockedTransparencyKeepsEveryAlpha();
    void aSolidFillThroughASelectionMixesByItsCoverage();
    void aSelectionThatMissesTheLayerChangesNothing();
    void clearingMakesTransparent();
    void clearingWithLockedTransparencyChangesNothing_data();
    void clearingWithLockedTransparencyChangesNothing();
    void aMaskTakesTheLightness_data();
    void aMaskTakesTheLightness();
    void aMaskFillThroughASelection_data();
    void aMaskFillThroughASelection();

    void aCustomFillBlendsInItsMode_data();
    void aCustomFillBlendsInItsMode();
    void aPatternStartsAtTheWorkingRectangle();
    void aCustomMaskFillPaintsTheLightness();
    void aCustomMaskFillInAModeWorksOnGrays();

    void cleaningMakesOpaque();
    void cleaningThroughASelectionRaisesAlphaAlone();

    void failuresAreReportedAndSetTheFlag();
    void aFailureThroughASelectionHasItsOwnWords();
    void thePixelsThatOthersShareStay();
    void onlyTilesThatTheSelectionTouchesAreDetached();

    void readingCutsTheWorkingRectangle();
    void readingAMissingMaskThrows();
    void aChangeIsCutToTheWorkingRectangle();
};

void TestFillOperations::aSolidFillReplacesEveryPixel()
{
    Scene scene;
    FillSolidOperation fill{scene.pixels, QColor(10, 20, 30)};
    fill();
    QVERIFY(!fill.error);
    Compare(fill.pixels.image, Solid({150, 140}, LXRGBA32i(qRgb(10, 20, 30))));
}

void TestFillOperations::aTranslucentColorCountsAsOpaque()
{
    Scene scene;
    FillSolidOperation fill{scene.pixels, QColor(10, 20, 30, 40)};
    fill();
    QCOMPARE(fill.pixels.image.GetColor(3, 3).value, qRgb(10, 20, 30));
}

void TestFillOperations::lockedTransparencyKeepsEveryAlpha_data()
{
    QTest::addColumn<bool>("selected");
    QTest::newRow("whole layer") << false;
    QTest::newRow("through a selection") << true;
}

void TestFillOperations::lockedTransparencyKeepsEveryAlpha()
{
    QFETCH(bool, selected);
    Scene scene;
    if (selected) scene.Select();
    FillSolidOperation fill{scene.pixels, QColor(10, 20, 30)};
    fill.keepAlpha = true;
    fill();
    const PlainImage after = TestImages::ToPlain(fill.pixels.image);
    int recolored = 0;
    for (std::size_t i = 0; i < after.pixels.size(); ++i) {
        QCOMPARE(after.pixels[i].Alpha(), scene.image.pixels[i].Alpha());
        recolored += after.pixels[i] != scene.image.pixels[i] ? 1 : 0;
    }
    QVERIFY(recolored > 500);
    if (!selected) QCOMPARE(after.pixels[7].value & 0xFFFFFFU, qRgb(10, 20, 30) & 0xFFFFFFU);
}

void TestFillOperations::aSolidFillThroughASelectionMixesByItsCoverage()
{
    Scene scene;
    scene.Select();
    FillSolidOperation fill{scene.pixels, QColor(10, 20, 30)};
    fill();

    PlainImage expected = scene.image;
    const PlainImage ink = Solid({70, 40}, LXRGBA32i(qRgb(10, 20, 30)));
    BlendTwin::Blend(ink, QRect(0, 0, 70, 40), Normal, expected, scene.pixels.workRect, 1.0, false,
                     scene.Through());
    Compare(fill.pixels.image, expected);
}

void TestFillOperations::aSelectionThatMissesTheLayerChangesNothing()
{
    Scene scene;
    scene.pixels.hasSelection = true;
    scene.pixels.selection = TestImages::ToTiles(scene.selection);

    FillSolidOperation solid{scene.pixels, Qt::red};
    LayerFillCustomOperation custom{scene.pixels, QBrush(Qt::red), Normal};
    MaskFillCustomOperation mask{scene.pixels, QBrush(Qt::red), Normal};
    CleanupAlphaOperation cleaning{scene.pixels};
    solid();
    custom();
    mask();
    cleaning();
    for (const FillPixels* pixels : {&solid.pixels, &custom.pixels, &mask.pixels, &cleaning.pixels}) {
        Compare(pixels->image, scene.image);
    }
    QVERIFY(!solid.error && !custom.error && !mask.error && !cleaning.error);
}

void TestFillOperations::clearingMakesTransparent()
{
    Scene scene;
    FillSolidOperation fill{scene.pixels, QColor()};
    fill.clear = true;
    fill();
    Compare(fill.pixels.image, Solid({150, 140}, LXRGBA32i()));
}

void TestFillOperations::clearingWithLockedTransparencyChangesNothing_data()
{
    QTest::addColumn<bool>("selected");
    QTest::newRow("whole layer") << false;
    QTest::newRow("through a selection") << true;
}

void TestFillOperations::clearingWithLockedTransparencyChangesNothing()
{
    QFETCH(bool, selected);
    Scene scene;
    if (selected) scene.Select();
    FillSolidOperation fill{scene.pixels, QColor()};
    fill.clear = true;
    fill.keepAlpha = true;
    fill();
    Compare(fill.pixels.image, scene.image);
}

void TestFillOperations::aMaskTakesTheLightness_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<int>("value");
    QTest::newRow("white") << QColor(Qt::white) << 255;
    QTest::newRow("black") << QColor(Qt::black) << 0;
    QTest::newRow("red") << QColor(Qt::red) << 128; // half of QColor's 65535, rounded up
    QTest::newRow("dark gray") << QColor(Qt::darkGray) << 128;
}

void TestFillOperations::aMaskTakesTheLightness()
{
    QFETCH(QColor, color);
    QFETCH(int, value);
    Scene scene;
    scene.pixels.image = TestImages::ToTiles(MaskOf(scene.image));
    scene.pixels.target = PaintTarget::Mask;
    FillSolidOperation fill{scene.pixels, color};
    fill();
    Compare(fill.pixels.image, Solid({150, 140}, LXRGBA32i(qRgba(0, 0, 0, value))));
}

void TestFillOperations::aMaskFillThroughASelection_data()
{
    QTest::addColumn<QColor>("color");
    QTest::newRow("white") << QColor(Qt::white);
    QTest::newRow("red: a lightness between") << QColor(Qt::red);
    QTest::newRow("black takes coverage out") << QColor(Qt::black);
}

void TestFillOperations::aMaskFillThroughASelection()
{
    QFETCH(QColor, color);
    Scene scene;
    const PlainImage mask = MaskOf(scene.image);
    scene.pixels.image = TestImages::ToTiles(mask);
    scene.pixels.target = PaintTarget::Mask;
    scene.Select();
    FillSolidOperation fill{scene.pixels, color};
    fill();

    PlainImage expected = mask;
    const int value = color.lightness();
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 70; ++x) {
            const int covered = scene.selection.At(x + 5, y + 6).Alpha();
            const int old = mask.At(x + 80, y + 100).Alpha();
            const int now = value == 0 ? old - (old * covered + 127) / 255
                                       : (value * covered + (255 - covered) * old) / 255;
            expected.At(x + 80, y + 100) = LXRGBA32i(qRgba(0, 0, 0, now));
        }
    }
    Compare(fill.pixels.image, expected);
}

void TestFillOperations::aCustomFillBlendsInItsMode_data()
{
    QTest::addColumn<unsigned int>("mode");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("keepAlpha");
    for (const unsigned int mode : {0U, 12U, 13U, 14U, 15U, 16U, 17U, 18U, 19U, 20U, 21U, 22U, 23U}) {
        QTest::addRow("mode %u", mode) << mode << false << false;
        QTest::addRow("mode %u, selected", mode) << mode << true << false;
        QTest::addRow("mode %u, selected, locked", mode) << mode << true << true;
    }
}

void TestFillOperations::aCustomFillBlendsInItsMode()
{
    QFETCH(unsigned int, mode);
    QFETCH(bool, selected);
    QFETCH(bool, keepAlpha);
    Scene scene;
    scene.SelectNothing();
    if (selected) scene.Select();
    LayerFillCustomOperation fill{scene.pixels, QBrush(QColor(200, 100, 50)), mode, 0.7, keepAlpha};
    fill();
    QVERIFY(!fill.error);

    PlainImage expected = scene.image;
    const QRect work = scene.pixels.workRect;
    const PlainImage ink = Solid(work.size(), LXRGBA32i(qRgb(200, 100, 50)));
    BlendTwin::Blend(ink, QRect(QPoint(), work.size()), mode, expected, work, 0.7, keepAlpha,
                     selected ? scene.Through() : BlendTwin::Mask());
    Compare(fill.pixels.image, expected);
}

void TestFillOperations::aPatternStartsAtTheWorkingRectangle()
{
    QImage pattern(2, 2, QImage::Format_ARGB32);
    pattern.setPixel(0, 0, qRgb(255, 0, 0));
    pattern.setPixel(1, 0, qRgb(0, 255, 0));
    pattern.setPixel(0, 1, qRgb(0, 0, 255));
    pattern.setPixel(1, 1, qRgb(255, 255, 255));
    Scene scene;
    scene.Select();
    scene.selection = Solid({90, 60}, LXRGBA32i(0xFF000000U));
    scene.pixels.selection = TestImages::ToTiles(scene.selection);
    scene.pixels.workRect = QRect(81, 101, 69, 39);
    scene.pixels.selectionWorkRect = QRect(6, 7, 69, 39);
    LayerFillCustomOperation fill{scene.pixels, QBrush(pattern), Normal};
    fill();
    QCOMPARE(fill.pixels.image.GetColor(81, 101).value, qRgb(255, 0, 0));
    QCOMPARE(fill.pixels.image.GetColor(82, 101).value, qRgb(0, 255, 0));
    QCOMPARE(fill.pixels.image.GetColor(81, 102).value, qRgb(0, 0, 255));
    QCOMPARE(fill.pixels.image.GetColor(80, 101), scene.image.At(80, 101));
}

void TestFillOperations::aCustomMaskFillPaintsTheLightness()
{
    Scene scene;
    const PlainImage mask = MaskOf(scene.image);
    scene.pixels.image = TestImages::ToTiles(mask);
    scene.Select();
    MaskFillCustomOperation fill{scene.pixels, QBrush(Qt::red), Normal, 0.5};
    fill();

    PlainImage expected = mask;
    // Half of an opaque source is floor(127.5 + 0.5) = 128; then the mode's own two truncating steps.
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 70; ++x) {
            const int covered = scene.selection.At(x + 5, y + 6).Alpha();
            const int old = mask.At(x + 80, y + 100).Alpha();
            const int t = (127 * 128 + (255 - 128) * old) / 255;
            const int now = (t * covered + (255 - covered) * old) / 255;
            expected.At(x + 80, y + 100) = LXRGBA32i(qRgba(0, 0, 0, now));
        }
    }
    Compare(fill.pixels.image, expected);
}

void TestFillOperations::aCustomMaskFillInAModeWorksOnGrays()
{
    Scene scene;
    const PlainImage mask = MaskOf(scene.image);
    scene.pixels.image = TestImages::ToTiles(mask);
    scene.SelectNothing();
    MaskFillCustomOperation fill{scene.pixels, QBrush(QColor(100, 100, 100)), BlendMode::Screen, 1.0};
    fill();
    const PlainImage after = TestImages::ToPlain(fill.pixels.image);
    for (std::size_t i = 0; i < after.pixels.size(); ++i) {
        const int old = mask.pixels[i].Alpha();
        // Screen: 255 - (255 - a)(255 - b) / 255, rounded once.
        const int now = qRound(255 - (255 - old) * (255 - 100) / 255.0);
        QVERIFY2(qAbs(after.pixels[i].Alpha() - now) <= 1, qPrintable(QString::number(i)));
        QCOMPARE(after.pixels[i].value & 0xFFFFFFU, 0U);
    }
}

void TestFillOperations::cleaningMakesOpaque()
{
    Scene scene;
    scene.SelectNothing();
    CleanupAlphaOperation cleaning{scene.pixels};
    cleaning();
    PlainImage expected = scene.image;
    for (LXRGBA32i& pixel : expected.pixels) {
        pixel.bytes[3] = 255;
    }
    Compare(cleaning.pixels.image, expected);
}

void TestFillOperations::cleaningThroughASelectionRaisesAlphaAlone()
{
    Scene scene;
    scene.Select();
    CleanupAlphaOperation cleaning{scene.pixels};
    cleaning();
    const PlainImage after = TestImages::ToPlain(cleaning.pixels.image);
    for (int y = 0; y < 140; ++y) {
        for (int x = 0; x < 150; ++x) {
            const LXRGBA32i before = scene.image.At(x, y);
            const LXRGBA32i now = after.At(x, y);
            const bool inside = scene.pixels.workRect.contains(x, y);
            const int covered = inside ? scene.selection.At(x - 75, y - 94).Alpha() : 0;
            if (covered == 0) {
                QCOMPARE(now, before);
                continue;
            }
            // a = s + d (255 - s) / 255, rounded; the color stays, being mixed with itself.
            const int d = before.Alpha();
            QCOMPARE(now.Alpha(), qRound(covered + d * (255 - covered) / 255.0));
            QCOMPARE(now.value & 0xFFFFFFU, before.value & 0xFFFFFFU);
        }
    }
}

void TestFillOperations::failuresAreReportedAndSetTheFlag()
{
    Scene scene;
    scene.SelectNothing();
    const QRegularExpression report(
        "Unexpected exception: line=\\d+, file=\"src/fillmenu/FillOperations\"\\. Exception content:");
    const auto failOnce = [&report] {
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
        QTest::ignoreMessage(QtDebugMsg, report);
    };
    FillSolidOperation solid{scene.pixels, Qt::red};
    LayerFillCustomOperation custom{scene.pixels, QBrush(Qt::red), Normal};
    MaskFillCustomOperation mask{scene.pixels, QBrush(Qt::red), Normal};
    CleanupAlphaOperation cleaning{scene.pixels};
    failOnce();
    solid();
    failOnce();
    custom();
    failOnce();
    mask();
    failOnce();
    cleaning();
    QVERIFY(solid.error && custom.error && mask.error && cleaning.error);
}

void TestFillOperations::aFailureThroughASelectionHasItsOwnWords()
{
    Scene scene;
    scene.Select();
    FillSolidOperation solid{scene.pixels, Qt::red};
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    QTest::ignoreMessage(
        QtDebugMsg,
        QRegularExpression("^Build date=.*, time=.*\\. Line=\\d+, file=\"src/fillmenu/FillOperations\"\\. "
                           "Fill with selection error\\.$"));
    solid();
    QVERIFY(solid.error);
}

void TestFillOperations::thePixelsThatOthersShareStay()
{
    Scene scene;
    scene.Select();
    FillSolidOperation solid{scene.pixels, Qt::red};
    CleanupAlphaOperation cleaning{scene.pixels};
    solid();
    cleaning();
    Compare(scene.pixels.image, scene.image);
}

void TestFillOperations::onlyTilesThatTheSelectionTouchesAreDetached()
{
    constexpr QSize hundredTiles(1280, 1280);
    Scene scene(hundredTiles);
    scene.Select();
    // In the second tile of the second row.
    scene.pixels.workRect.moveTopLeft({140, 150});
    FillSolidOperation solid{scene.pixels, Qt::red};
    FillSolidOperation locked{scene.pixels, Qt::red};
    locked.keepAlpha = true;
    CleanupAlphaOperation cleaning{scene.pixels};
    const auto run = [](auto& operation) {
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 20);
        operation();
        FaultSeams::Reset();
    };
    run(solid);
    run(locked);
    run(cleaning);
    QVERIFY(!solid.error && !locked.error && !cleaning.error);

    const QRect work = scene.pixels.workRect;
    const PlainImage before = TestImages::ToPlain(CopyPart(scene.pixels.image, work));
    for (const FillPixels* pixels : {&solid.pixels, &locked.pixels, &cleaning.pixels}) {
        const PlainImage after = TestImages::ToPlain(CopyPart(pixels->image, work));
        QVERIFY(!TestImages::Difference(after, before).isEmpty());
    }
}

void TestFillOperations::readingCutsTheWorkingRectangle()
{
    LXDocumentInterface* document = LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32);
    document->SetDocumentSize({100, 100});
    document->AddLayer("Layer", LXImage32(40, 30), {-10, 5});

    FillPixels pixels = ReadFillPixels(document, 1, PaintTarget::Layer);
    QCOMPARE(pixels.geometry, QRect(-10, 5, 40, 30));
    QCOMPARE(pixels.workRect, QRect(0, 0, 40, 30));
    QVERIFY(!pixels.hasSelection);

    LXImage32 mask(20, 20);
    mask.Fill(LXRGBA32i(0xFF000000U));
    document->SetSelectionMask(mask, {20, 0});
    pixels = ReadFillPixels(document, 1, PaintTarget::Layer);
    QVERIFY(pixels.hasSelection);
    // Document (20, 5) to (29, 19): from (30, 0) of the layer and (0, 5) of the selection.
    QCOMPARE(pixels.workRect, QRect(30, 0, 10, 15));
    QCOMPARE(pixels.selectionWorkRect, QRect(0, 5, 10, 15));

    document->SetSelectionMask(mask, {60, 60});
    pixels = ReadFillPixels(document, 1, PaintTarget::Layer);
    QVERIFY(pixels.hasSelection);
    QVERIFY(pixels.workRect.isEmpty());
    LXDocumentFactory::Instance()->Release(document);
}

void TestFillOperations::readingAMissingMaskThrows()
{
    LXDocumentInterface* document = LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32);
    document->SetDocumentSize({10, 10});
    document->AddLayer("Layer", LXImage32(10, 10), {});
    QVERIFY_EXCEPTION_THROWN(ReadFillPixels(document, 1, PaintTarget::Mask), std::runtime_error);
    QVERIFY_EXCEPTION_THROWN(ReadFillPixels(document, 5, PaintTarget::Layer), std::runtime_error);
    LXDocumentFactory::Instance()->Release(document);
}

void TestFillOperations::aChangeIsCutToTheWorkingRectangle()
{
    Scene scene;
    scene.Select();
    LXImage32 after(150, 140);
    PaintChange change = MakePaintChange(scene.pixels, after);
    QCOMPARE(change.undoGeometry, QRect(10, 20, 150, 140));
    QCOMPARE(change.redoGeometry, QRect(90, 120, 70, 40));
    QCOMPARE(change.undoImage.Rect(), QRect(0, 0, 70, 40));
    QCOMPARE(change.redoImage.Rect(), QRect(0, 0, 70, 40));

    scene.pixels.workRect = QRect();
    change = MakePaintChange(scene.pixels, after);
    QVERIFY(change.redoGeometry.isEmpty());
    QVERIFY(change.undoImage.IsNull());
    QVERIFY(change.redoImage.IsNull());
}

ZK_REGISTER_TEST(tst_filloperations, TestFillOperations)
#include "tst_filloperations.moc"
