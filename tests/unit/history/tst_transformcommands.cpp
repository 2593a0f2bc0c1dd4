#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"
#include "history/LexoUndoStack.h"
#include "history/MoveCommandData.h"
#include "history/TransformCommand.h"
#include "history/TransformCommandData.h"
#include "history/TransformSelectionCommand.h"
#include "history/TransformSelectionCommandData.h"
#include "image/ImageMetadata.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <limits>

using namespace DocumentFixture;

namespace {
constexpr bool LacksInitialState = true;

LexoCommand* TransformLayer(LXDocumentInterface* document, unsigned int id, const LXImage32& image,
                            const QPoint& position, const QTransform& transform,
                            bool lacksInitialState = LacksInitialState)
{
    auto* data = new TransformCommandData;
    data->SetUndoLayerImage(id, image, position);
    data->SetTransform(transform);
    auto* command = new TransformCommand(document, lacksInitialState);
    command->SetCommandData(data);
    return command;
}

/// From the layer or mask as it lies in the document.
LexoCommand* TransformLayer(LXDocumentInterface* document, unsigned int id, const QTransform& transform)
{
    const bool isMask = document->GetModel()->GetMaskSelected(static_cast<int>(id) - 1);
    const LXImage32 image = isMask ? *document->GetMaskImage(id) : *document->GetLayerImage(id);
    const QRect rect = isMask ? document->GetMaskGeometry(id) : document->GetLayerGeometry(id);
    return TransformLayer(document, id, image, rect.topLeft(), transform);
}

LexoCommand* TransformSelection(LXDocumentInterface* document, const QTransform& transform)
{
    auto* data = new TransformSelectionCommandData;
    data->SetUndoImage(document->GetSelectionMask(), document->GetSelectionMaskOffset());
    data->SetTransform(transform);
    auto* command = new TransformSelectionCommand(document);
    command->SetCommandData(data);
    return command;
}

/// A canvas of 100 x 80 with noise of 20 x 10 at (30, 40), a mask on it and a selection.
OwnedDocument MakeDocument()
{
    Random random(3);
    OwnedDocument document = Make(QSize(100, 80));
    document->AddLayer("layer", Noise(random, QSize(20, 10)), QPoint(30, 40));
    document->AddMask(1, true);
    document->SetMaskImage(1, Filled(QSize(10, 10), 0x40000000), QPoint(35, 40));
    document->SetSelectionMask(Filled(QSize(10, 6), 0xFF000000), QPoint(70, 60));
    return document;
}

unsigned int AlphaAt(const LXImage32& image, int x, int y)
{
    return image.GetColor(x, y).value >> 24;
}
} // namespace

class TestTransformCommands : public QObject
{
    Q_OBJECT

private slots:
    void aLayerIsRenderedFromItsKeptImage();
    void aTranslationByWholePixelsCopiesBytes();
    void whatLeavesTheCanvasIsCutOff();
    void whatLiesWhollyOutsideLeavesAnEmptyLayer_data();
    void whatLiesWhollyOutsideLeavesAnEmptyLayer();
    void whatAnImageCarriesStaysWithTheLayer();
    void aPreviewInTheDocumentIsNotKept();
    void withoutAPreviewTheFirstRedoKeepsTheLayer();
    void theMaskIsMeantWhenItWasTheTargetOfTheRow();
    void aMaskIsMixedAsGrayOnItsDefault();
    void aTurnedMaskLeavesItsDefault();
    void lettersAreNotResampled();
    void aLayerThatIsGoneIsHarmless();
    void theSelectionIsRenderedAsFarAsTheCanvasReaches();
    void aSelectionThatLeavesTheCanvasIsNoSelection();
    void dataOfOtherCommandsIsRefused();
};

void TestTransformCommands::aLayerIsRenderedFromItsKeptImage()
{
    const OwnedDocument document = MakeDocument();
    document->SetLayerImage(1, Filled(QSize(20, 10), 0xFF3366CC), QPoint(30, 40));
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    // The image's top left lies at the origin, not where the layer lies.
    stack.push(TransformLayer(document.get(), 1, QTransform().translate(5, 6).scale(2, 3)));
    QCOMPARE(document->GetLayerGeometry(1), QRect(5, 6, 40, 30));
    QVERIFY(AreEqual(*document->GetLayerImage(1), Filled(QSize(40, 30), 0xFF3366CC)));
    const QStringList after = Describe(document.get());
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
    stack.redo();
    QCOMPARE(Describe(document.get()), after);
}

void TestTransformCommands::aTranslationByWholePixelsCopiesBytes()
{
    const OwnedDocument document = MakeDocument();
    const LXImage32 image = *document->GetLayerImage(1);
    LexoUndoStack stack;
    stack.push(TransformLayer(document.get(), 1, QTransform::fromTranslate(31, 42)));
    QCOMPARE(document->GetLayerGeometry(1), QRect(31, 42, 20, 10));
    QVERIFY(AreEqual(*document->GetLayerImage(1), image));
}

void TestTransformCommands::whatLeavesTheCanvasIsCutOff()
{
    const OwnedDocument document = MakeDocument();
    const LXImage32 image = *document->GetLayerImage(1);
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(TransformLayer(document.get(), 1, QTransform::fromTranslate(-5, 77)));
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 77, 15, 3));
    QVERIFY(AreEqual(*document->GetLayerImage(1), image.Copy(QRect(5, 0, 15, 3))));
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
}

void TestTransformCommands::whatLiesWhollyOutsideLeavesAnEmptyLayer_data()
{
    QTest::addColumn<QTransform>("transform");
    QTest::newRow("left") << QTransform::fromTranslate(-20, 0);
    QTest::newRow("below") << QTransform::fromTranslate(0, 80);
    QTest::newRow("flattened") << QTransform::fromScale(1, 0);
    QTest::newRow("no number") << QTransform::fromScale(std::numeric_limits<double>::quiet_NaN(), 1);
    QTest::newRow("infinite") << QTransform::fromScale(1, std::numeric_limits<double>::infinity());
}

void TestTransformCommands::whatLiesWhollyOutsideLeavesAnEmptyLayer()
{
    QFETCH(QTransform, transform);
    const OwnedDocument document = MakeDocument();
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(TransformLayer(document.get(), 1, transform));
    QVERIFY(document->GetLayerImage(1)->IsNull());
    QVERIFY(document->GetLayerGeometry(1).isEmpty());
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
    stack.redo();
    QVERIFY(document->GetLayerImage(1)->IsNull());
}

void TestTransformCommands::whatAnImageCarriesStaysWithTheLayer()
{
    const OwnedDocument document = MakeDocument();
    LXImage32 image = *document->GetLayerImage(1);
    image.m_ExifData = {ZKEXIFElement{0, "block"}};
    image.m_DpiX = 300;
    document->SetLayerImage(1, image, QPoint(30, 40));
    LexoUndoStack stack;
    stack.push(TransformLayer(document.get(), 1, QTransform().translate(20, 20).rotate(10)));
    QVERIFY(ImageMetadata::AreSame(*document->GetLayerImage(1), image));
}

void TestTransformCommands::aPreviewInTheDocumentIsNotKept()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = Describe(document.get());
    const LXImage32 image = *document->GetLayerImage(1);
    document->SetLayerImage(1, Filled(QSize(3, 3), 0xFFFF0000), QPoint(1, 1));
    LexoUndoStack stack;
    stack.push(TransformLayer(document.get(), 1, image, QPoint(30, 40), QTransform::fromScale(2, 2)));
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
}

void TestTransformCommands::withoutAPreviewTheFirstRedoKeepsTheLayer()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(TransformLayer(document.get(), 1, LXImage32(), QPoint(), QTransform::fromScale(2, 2),
                              !LacksInitialState));
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 0, 40, 20));
    const QStringList after = Describe(document.get());
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
    stack.redo();
    QCOMPARE(Describe(document.get()), after);
}

void TestTransformCommands::theMaskIsMeantWhenItWasTheTargetOfTheRow()
{
    const OwnedDocument document = MakeDocument();
    document->GetModel()->SetMaskSelected(0, true);
    LexoCommand* command = TransformLayer(document.get(), 1, QTransform::fromTranslate(1, 2));
    document->GetModel()->SetMaskSelected(0, false);
    const QStringList before = Describe(document.get());

    LexoUndoStack stack;
    stack.push(command);
    QCOMPARE(document->GetLayerGeometry(1), QRect(30, 40, 20, 10));
    QCOMPARE(document->GetMaskGeometry(1), QRect(1, 2, 10, 10));
    QVERIFY(AreEqual(*document->GetMaskImage(1), Filled(QSize(10, 10), 0x40000000)));
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
}

void TestTransformCommands::aMaskIsMixedAsGrayOnItsDefault()
{
    const OwnedDocument document = MakeDocument();
    LXImage32 mask(2, 1);
    mask.SetColor(0, 0, LXRGBA32i(0xFF000000));
    document->SetMaskImage(1, mask, QPoint(3, 3));
    document->GetModel()->SetMaskSelected(0, true);
    LexoUndoStack stack;
    stack.push(TransformLayer(document.get(), 1, QTransform().translate(10, 10).scale(2, 1)));
    QCOMPARE(document->GetMaskGeometry(1), QRect(10, 10, 4, 1));
    const LXImage32& wide = *document->GetMaskImage(1);
    // Middles at a quarter, three quarters and so on: 255, 191.25, 63.75, 0; colors stay 0.
    QCOMPARE(wide.GetColor(0, 0).value, 0xFF000000u);
    QCOMPARE(wide.GetColor(1, 0).value, 0xBF000000u);
    QCOMPARE(wide.GetColor(2, 0).value, 0x40000000u);
    QCOMPARE(wide.GetColor(3, 0).value, 0x00000000u);
}

void TestTransformCommands::aTurnedMaskLeavesItsDefault()
{
    for (const bool reveals : {true, false}) {
        const OwnedDocument document = MakeDocument();
        document->AddMask(1, reveals);
        document->SetMaskImage(1, Filled(QSize(20, 20), 0x80000000), QPoint(40, 40));
        document->GetModel()->SetMaskSelected(0, true);
        LexoUndoStack stack;
        stack.push(TransformLayer(document.get(), 1, QTransform().translate(50, 30).rotate(45)));
        const QRect rect = document->GetMaskGeometry(1);
        const LXImage32& mask = *document->GetMaskImage(1);
        QCOMPARE(rect, QRect(36, 30, 29, 29));
        QCOMPARE(AlphaAt(mask, 0, 0), reveals ? 255u : 0u);
        QCOMPARE(AlphaAt(mask, 28, 28), reveals ? 255u : 0u);
        QCOMPARE(AlphaAt(mask, 14, 14), 0x80u);
        for (int y = 0; y < mask.Height(); ++y) {
            for (int x = 0; x < mask.Width(); ++x) {
                const unsigned int value = AlphaAt(mask, x, y);
                // Between the value and the default, but for what a mode that truncates takes off.
                QVERIFY(reveals ? value >= 0x7F : value <= 0x80);
            }
        }
    }
}

void TestTransformCommands::lettersAreNotResampled()
{
    const OwnedDocument document = MakeDocument();
    LayerState letters = LXDocumentInterfacePrivate::Get(document.get())->GetLayerState(1);
    letters.properties.kind = LayerKind::Text;
    LXDocumentInterfacePrivate::Get(document.get())->InsertLayer(0, letters);
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(TransformLayer(document.get(), 1, QTransform::fromScale(2, 2)));
    QCOMPARE(Describe(document.get()), before);
    stack.undo();
    QCOMPARE(Describe(document.get()), before);

    // The mask of such a layer is like any other.
    document->GetModel()->SetMaskSelected(0, true);
    stack.push(TransformLayer(document.get(), 1, QTransform::fromScale(2, 2)));
    QCOMPARE(document->GetMaskGeometry(1), QRect(0, 0, 20, 20));
}

void TestTransformCommands::aLayerThatIsGoneIsHarmless()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    for (const unsigned int id : {0u, 7u}) {
        stack.push(
            TransformLayer(document.get(), id, Filled(QSize(2, 2), 0xFFFFFFFF), QPoint(), QTransform()));
        stack.undo();
    }
    QCOMPARE(Describe(document.get()), before);
}

void TestTransformCommands::theSelectionIsRenderedAsFarAsTheCanvasReaches()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(TransformSelection(document.get(), QTransform().translate(90, 70).scale(3, 2)));
    QCOMPARE(document->GetSelectionGeometry(), QRect(90, 70, 10, 10));
    QVERIFY(AreEqual(document->GetSelectionMask(), Filled(QSize(10, 10), 0xFF000000)));
    const QStringList after = Describe(document.get());
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
    stack.redo();
    QCOMPARE(Describe(document.get()), after);

    stack.push(TransformSelection(document.get(), QTransform().translate(50, 50).rotate(20)));
    QVERIFY(document->HasAboveSelected(254));
    QCOMPARE(document->GetSelectionMask().GetColor(4, 5).value & 0xFFFFFF, 0u);
}

void TestTransformCommands::aSelectionThatLeavesTheCanvasIsNoSelection()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(TransformSelection(document.get(), QTransform::fromTranslate(100, 0)));
    QVERIFY(!document->HasSelection());
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
}

void TestTransformCommands::dataOfOtherCommandsIsRefused()
{
    const OwnedDocument document = MakeDocument();
    MoveCommandData other;
    QVERIFY(!TransformCommand(document.get(), true).SetCommandData(&other));
    QVERIFY(!TransformSelectionCommand(document.get()).SetCommandData(&other));
}

ZK_REGISTER_TEST(tst_transformcommands, TestTransformCommands)
#include "tst_transformcommands.moc"
