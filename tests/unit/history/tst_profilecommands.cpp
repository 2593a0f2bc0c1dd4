#include "CanvasDocument.h"
#include "UndoLaw.h"

#include "document/LXDocumentLayerLockerForRead.h"
#include "history/LayerColors.h"
#include "history/LexoCommand.h"
#include "history/ProfileCommands.h"
#include "image/BrushColors.h"
#include "image/LXTileManager.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"

#include <QBrush>
#include <QLinearGradient>
#include <QTest>

using namespace DocumentFixture;
using namespace IccProfiles;

namespace {
LXImage32 LayerImage(LXDocumentInterface* document, unsigned int id)
{
    const LXDocumentLayerLockerForRead locker(document, id);
    return *document->GetLayerImage(id);
}

LXImage32 MaskImage(LXDocumentInterface* document, unsigned int id)
{
    const LXDocumentLayerLockerForRead locker(document, id);
    return *document->GetMaskImage(id);
}

LexoCommand* Conversion(LXDocumentInterface* document, const ZKCMSProfile& target)
{
    const LayerColors before = LayerColors::Of(document);
    return ProfileCommands::Convert(document, before, before.Converted(target));
}

QColor Through(QColor color, const ZKCMSTransform& transform)
{
    transform(color);
    return color;
}
} // namespace

/// Assigning a profile keeps the values, converting keeps the colors; both are taken back whole.
class TestProfileCommands : public QObject
{
    Q_OBJECT

private slots:
    void assigningKeepsThePixels();
    void assigningTheSameIsNoCommand();
    void convertingChangesThePixelsOfEveryLayer();
    void masksAndTheSelectionStay();
    void textsGetABrushOfTheNewColors();
    void adjustmentsStay();
    void convertingToASpellingOfTheSameKeepsThePixels();
    void withoutAProfileColorsAreSRgb();
    void aDamagedProfileIsTakenForSRgb();
    void thereAndBackIsNearlyTheSame();
    void progressComesToItsEnd();
    void plainTilesStayShared();
    void brushesOfAllKindsAreConverted();
};

void TestProfileCommands::assigningKeepsThePixels()
{
    const OwnedDocument document = MakeCanvasDocument();
    const LXImage32 before = LayerImage(document.get(), 1);
    LexoCommand* command = ProfileCommands::Assign(document.get(), AdobeRgb());
    QCOMPARE(command->text(), QString("Assign profile"));
    QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
    QCOMPARE(document->GetICCProfile(), AdobeRgb());
    QVERIFY(AreEqual(LayerImage(document.get(), 1), before));
}

void TestProfileCommands::assigningTheSameIsNoCommand()
{
    const OwnedDocument document = MakeCanvasDocument();
    QVERIFY(!ProfileCommands::Assign(document.get(), ZKCMSProfile()));
    document->SetICCProfile(AdobeRgb());
    QVERIFY(!ProfileCommands::Assign(document.get(), AdobeRgb()));
}

void TestProfileCommands::convertingChangesThePixelsOfEveryLayer()
{
    const OwnedDocument document = MakeCanvasDocument();
    document->SetICCProfile(AdobeRgb());
    const LXImage32 top = LayerImage(document.get(), 1);
    const LXImage32 bottom = LayerImage(document.get(), 2);
    LexoCommand* command = Conversion(document.get(), WideRgb());
    QCOMPARE(command->text(), QString("Convert to profile"));
    QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());

    QCOMPARE(document->GetICCProfile(), WideRgb());
    const ZKCMSTransform transform(AdobeRgb(), WideRgb());
    LXImage32 expectedTop = top;
    LXImage32 expectedBottom = bottom;
    transform(expectedTop);
    transform(expectedBottom);
    QVERIFY(!AreEqual(expectedTop, top));
    QVERIFY(AreEqual(LayerImage(document.get(), 1), expectedTop));
    QVERIFY(AreEqual(LayerImage(document.get(), 2), expectedBottom));
}

void TestProfileCommands::masksAndTheSelectionStay()
{
    const OwnedDocument document = MakeCanvasDocument();
    document->SetICCProfile(AdobeRgb());
    const LXImage32 mask = MaskImage(document.get(), 1);
    const LXImage32 selection = document->GetSelectionMask();
    SignalLog signalsLog(document.get());
    QCOMPARE(UndoLaw::BrokenBy(document.get(), Conversion(document.get(), WideRgb())), QString());
    QVERIFY(AreEqual(MaskImage(document.get(), 1), mask));
    QVERIFY(AreEqual(document->GetSelectionMask(), selection));
    QVERIFY(!signalsLog.Take().contains("SelectionChanged"));
}

void TestProfileCommands::textsGetABrushOfTheNewColors()
{
    const OwnedDocument document = MakeCanvasDocument();
    document->SetICCProfile(AdobeRgb());
    const unsigned int id = document->AddTextLayer("text", QPointF(10, 40));
    document->SetText(id, "Wide");
    document->SetTextBrush(id, QColor(200, 90, 40));
    QCOMPARE(UndoLaw::BrokenBy(document.get(), Conversion(document.get(), WideRgb())), QString());
    const QColor converted = Through(QColor(200, 90, 40), ZKCMSTransform(AdobeRgb(), WideRgb()));
    QCOMPARE(document->GetTextBrush(id).color().rgba(), converted.rgba());
    // The letters have the color of the brush that they would be drawn with anew.
    const LXImage32 letters = LayerImage(document.get(), id);
    document->SetText(id, "Wid");
    document->SetText(id, "Wide");
    QVERIFY(AreEqual(LayerImage(document.get(), id), letters));
}

void TestProfileCommands::adjustmentsStay()
{
    const OwnedDocument document = MakeCanvasDocument();
    LXAdjustment adjustment;
    adjustment.kind = LXAdjustment::Invert;
    const unsigned int id = document->AddAdjustmentLayer("invert", adjustment);
    QCOMPARE(UndoLaw::BrokenBy(document.get(), Conversion(document.get(), WideRgb())), QString());
    QCOMPARE(document->GetAdjustment(id).kind, int(LXAdjustment::Invert));
}

void TestProfileCommands::convertingToASpellingOfTheSameKeepsThePixels()
{
    const OwnedDocument document = MakeCanvasDocument();
    const LXImage32 before = LayerImage(document.get(), 1);
    QCOMPARE(UndoLaw::BrokenBy(document.get(), Conversion(document.get(), ZKCMSProfile::SRGB())), QString());
    QCOMPARE(document->GetICCProfile(), ZKCMSProfile::SRGB());
    QVERIFY(AreEqual(LayerImage(document.get(), 1), before));
}

void TestProfileCommands::withoutAProfileColorsAreSRgb()
{
    const OwnedDocument document = MakeCanvasDocument();
    LXImage32 expected = LayerImage(document.get(), 1);
    ZKCMSTransform(ZKCMSProfile::SRGB(), WideRgb())(expected);
    QCOMPARE(UndoLaw::BrokenBy(document.get(), Conversion(document.get(), WideRgb())), QString());
    QVERIFY(AreEqual(LayerImage(document.get(), 1), expected));
}

void TestProfileCommands::aDamagedProfileIsTakenForSRgb()
{
    const OwnedDocument document = MakeCanvasDocument();
    document->SetICCProfile(ZKCMSProfile("a profile"));
    LXImage32 expected = LayerImage(document.get(), 1);
    ZKCMSTransform(ZKCMSProfile(), WideRgb())(expected);
    QCOMPARE(UndoLaw::BrokenBy(document.get(), Conversion(document.get(), WideRgb())), QString());
    QVERIFY(AreEqual(LayerImage(document.get(), 1), expected));
}

void TestProfileCommands::thereAndBackIsNearlyTheSame()
{
    const OwnedDocument document = Make(QSize(60, 40));
    document->AddLayer("gray", Filled(QSize(60, 40), 0xFF806040), QPoint());
    const LayerColors before = LayerColors::Of(document.get());
    const LayerColors after = before.Converted(WideRgb()).Converted(ZKCMSProfile::SRGB());
    const LXRGBA32i pixel = after.layers[0].pixels.image.GetColor(5, 5);
    QVERIFY(qAbs(pixel.Red() - 0x80) <= 2 && qAbs(pixel.Green() - 0x60) <= 2 &&
            qAbs(pixel.Blue() - 0x40) <= 2);
}

void TestProfileCommands::progressComesToItsEnd()
{
    const OwnedDocument document = MakeCanvasDocument();
    QList<int> told;
    LayerColors::Of(document.get()).Converted(WideRgb(), {}, [&told](int permille) { told << permille; });
    QCOMPARE(told, (QList<int>{500, 1000}));
}

void TestProfileCommands::plainTilesStayShared()
{
    const OwnedDocument document = Make(QSize(1280, 1280));
    document->AddLayer("plain", Filled(QSize(1280, 1280), 0xFF20C040), QPoint());
    const LayerColors before = LayerColors::Of(document.get());
    const int tiles = LXTileManager::Instance().LiveTileCount();
    const LayerColors after = before.Converted(WideRgb());
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), tiles + 1);
}

void TestProfileCommands::brushesOfAllKindsAreConverted()
{
    const ZKCMSTransform transform(AdobeRgb(), ZKCMSProfile());
    const QColor color(200, 90, 40, 100);
    const QColor converted = Through(color, transform);
    QCOMPARE(BrushColors::Converted(QBrush(color), transform).color(), converted);
    QCOMPARE(BrushColors::Converted(QBrush(Qt::NoBrush), transform), QBrush(Qt::NoBrush));

    QLinearGradient gradient(1, 2, 30, 4);
    gradient.setStops({{0.25, color}, {1, Qt::white}});
    QBrush brush(gradient);
    brush.setTransform(QTransform::fromScale(2, 3));
    const QBrush other = BrushColors::Converted(brush, transform);
    QCOMPARE(other.style(), Qt::LinearGradientPattern);
    QCOMPARE(other.gradient()->stops().first(), (QGradientStop{0.25, converted}));
    QCOMPARE(static_cast<const QLinearGradient*>(other.gradient())->finalStop(), QPointF(30, 4));
    QCOMPARE(other.transform(), brush.transform());

    QImage picture(3, 2, QImage::Format_ARGB32);
    picture.fill(QColor(200, 90, 40));
    const QImage pattern = BrushColors::Converted(QBrush(picture), transform).textureImage();
    LXRGBA32i pixel(0xFFC85A28);
    transform(&pixel, 1);
    QCOMPARE(pattern.pixel(2, 1), pixel.value);

    QCOMPARE(BrushColors::Converted(brush, ZKCMSTransform()), brush);
}

ZK_REGISTER_TEST(tst_profilecommands, TestProfileCommands)
#include "tst_profilecommands.moc"
