#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "history/LayerMaskPaintCommand.h"
#include "history/LayerMaskPaintCommandData.h"
#include "history/LayerPaintCommand.h"
#include "history/LayerPaintCommandData.h"
#include "history/LexoUndoStack.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QTest>

using namespace DocumentFixture;

namespace {
constexpr bool ApplyOnPush = true;
constexpr bool AlreadyApplied = false;
constexpr quint32 Opaque = 0xFF000000;

const QRect Canvas(0, 0, 300, 200);

struct Paint
{
    unsigned int id = 1;
    bool isMask = false;
    bool apply = ApplyOnPush;
    QRect before;
    QRect after;
    LXImage32 undoImage;
    LXImage32 redoImage;
};

template <class Command, class Data>
LexoCommand* MakeCommand(LXDocumentInterface* document, const Paint& paint)
{
    auto* data = new Data;
    data->SetLayerID(paint.id);
    data->SetUndoImage(paint.undoImage, QRect());
    data->SetRedoImage(paint.redoImage, QRect());
    data->SetUndoGeometry(paint.before);
    data->SetRedoGeometry(paint.after);
    auto* command = new Command(document, paint.apply);
    command->SetCommandData(data);
    return command;
}

LexoCommand* Make(LXDocumentInterface* document, const Paint& paint)
{
    return paint.isMask ? MakeCommand<LayerMaskPaintCommand, LayerMaskPaintCommandData>(document, paint)
                        : MakeCommand<LayerPaintCommand, LayerPaintCommandData>(document, paint);
}

OwnedDocument MakeWithLayer(const LXImage32& image, const QPoint& offset)
{
    OwnedDocument document = DocumentFixture::Make(Canvas.size());
    document->AddLayer("layer", image, offset);
    return document;
}

quint32 PixelAt(LXDocumentInterface* document, const QPoint& docPos)
{
    const QPoint inLayer = docPos - document->GetLayerGeometry(1).topLeft();
    return document->GetLayerImage(1)->GetColor(inLayer.x(), inLayer.y()).value;
}
} // namespace

class TestPaintCommands : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void redoReplacesThePlacedPixels();
    void redoGrowsALayerWithTransparency();
    void redoGrowsAMaskWithItsDefault_data();
    void redoGrowsAMaskWithItsDefault();
    void undoCutsTheLayerBack();
    void undoOfAPieceThatReachesOutsideKeepsTheLayersSize();
    void pixelsThatAreThereAlreadyAreLeftAlone();
    void emptyImagesWriteNothing();
    void theRectangleFoundDoesNotMatter();
    void profileAndResolutionOfTheLayerStay();
    void signalsTellOfTheChangedRectangle();
    void maskSignalsTellOfTheMask();
    void aLayerThatIsGoneIsHarmless();
    void withoutAMaskAMaskPaintIsHarmless();
    void commandsWorkWhileTheDocumentIsLockedAndTheirCallerReads();
    void whatThrowsChangesNothing();
    void unchangedTilesStayShared();
    void undoLawOverRandomPaints_data();
    void undoLawOverRandomPaints();
};

void TestPaintCommands::redoReplacesThePlacedPixels()
{
    const OwnedDocument document = MakeWithLayer(Filled(QSize(50, 50), 0xFF111111), QPoint(10, 10));
    LexoUndoStack stack;
    Paint paint;
    paint.before = QRect(10, 10, 50, 50);
    paint.after = QRect(20, 20, 5, 5);
    paint.undoImage = Filled(QSize(5, 5), 0xFF111111);
    paint.redoImage = Filled(QSize(5, 5), 0x00445566);
    stack.push(Make(document.get(), paint));
    QCOMPARE(PixelAt(document.get(), QPoint(20, 20)), 0x00445566u);
    QCOMPARE(PixelAt(document.get(), QPoint(24, 24)), 0x00445566u);
    QCOMPARE(PixelAt(document.get(), QPoint(25, 24)), 0xFF111111u);
    stack.undo();
    QCOMPARE(PixelAt(document.get(), QPoint(20, 20)), 0xFF111111u);
}

void TestPaintCommands::redoGrowsALayerWithTransparency()
{
    const OwnedDocument document = MakeWithLayer(Filled(QSize(50, 50), 0xFF111111), QPoint(10, 10));
    LexoUndoStack stack;
    Paint paint;
    paint.before = QRect(10, 10, 50, 50);
    paint.after = QRect(0, 100, 5, 5);
    paint.undoImage = *document->GetLayerImage(1);
    paint.redoImage = Filled(QSize(5, 5), 0xFF222222);
    stack.push(Make(document.get(), paint));
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 10, 60, 95));
    QCOMPARE(PixelAt(document.get(), QPoint(0, 100)), 0xFF222222u);
    QCOMPARE(PixelAt(document.get(), QPoint(10, 10)), 0xFF111111u);
    QCOMPARE(PixelAt(document.get(), QPoint(0, 50)), 0u);
}

void TestPaintCommands::redoGrowsAMaskWithItsDefault_data()
{
    QTest::addColumn<bool>("reveals");
    QTest::addColumn<quint32>("ground");
    QTest::newRow("reveals") << true << Opaque;
    QTest::newRow("hides") << false << 0u;
}

void TestPaintCommands::redoGrowsAMaskWithItsDefault()
{
    QFETCH(bool, reveals);
    QFETCH(quint32, ground);
    const OwnedDocument document = MakeWithLayer(LXImage32(300, 200), QPoint());
    document->AddMask(1, reveals);
    document->SetMaskImage(1, Filled(QSize(10, 10), 0x80000000), QPoint(0, 0));
    LexoUndoStack stack;
    Paint paint;
    paint.isMask = true;
    paint.before = QRect(0, 0, 10, 10);
    paint.after = QRect(20, 0, 5, 5);
    paint.undoImage = *document->GetMaskImage(1);
    paint.redoImage = Filled(QSize(5, 5), 0x40000000);
    stack.push(Make(document.get(), paint));
    QCOMPARE(document->GetMaskGeometry(1), QRect(0, 0, 25, 10));
    QCOMPARE(document->GetMaskImage(1)->GetColor(5, 5).value, 0x80000000u);
    QCOMPARE(document->GetMaskImage(1)->GetColor(20, 0).value, 0x40000000u);
    QCOMPARE(document->GetMaskImage(1)->GetColor(15, 5).value, ground);
    stack.undo();
    QCOMPARE(document->GetMaskGeometry(1), QRect(0, 0, 10, 10));
}

void TestPaintCommands::undoCutsTheLayerBack()
{
    const OwnedDocument document = MakeWithLayer(Filled(QSize(50, 50), 0xFF111111), QPoint(10, 10));
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    Paint paint;
    paint.before = QRect(10, 10, 50, 50);
    paint.after = QRect(50, 50, 30, 30);
    paint.undoImage = Filled(QSize(10, 10), 0xFF111111);
    paint.redoImage = Filled(QSize(30, 30), 0xFF222222);
    stack.push(Make(document.get(), paint));
    QCOMPARE(document->GetLayerGeometry(1), QRect(10, 10, 70, 70));
    SignalLog log(document.get());
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
    QCOMPARE(log.Take(), QStringList({"LayerDataChanged 1", "CompositionChanged (10,10 70x70)"}));
}

void TestPaintCommands::undoOfAPieceThatReachesOutsideKeepsTheLayersSize()
{
    // A lifted piece reaches outside the layer: its pixels there were never the layer's.
    const OwnedDocument document = MakeWithLayer(Filled(QSize(50, 50), 0), QPoint(0, 0));
    Paint paint;
    paint.apply = AlreadyApplied;
    paint.before = QRect(0, 0, 50, 50);
    paint.after = QRect(40, 40, 20, 20);
    paint.undoImage = Filled(QSize(20, 20), 0xFF333333);
    paint.redoImage = Filled(QSize(10, 10), 0);
    LexoUndoStack stack;
    stack.push(Make(document.get(), paint));
    stack.undo();
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 0, 50, 50));
    QCOMPARE(PixelAt(document.get(), QPoint(40, 40)), 0xFF333333u);
    QCOMPARE(PixelAt(document.get(), QPoint(39, 40)), 0u);
    stack.redo();
    QCOMPARE(PixelAt(document.get(), QPoint(40, 40)), 0u);
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 0, 50, 50));
}

void TestPaintCommands::pixelsThatAreThereAlreadyAreLeftAlone()
{
    const OwnedDocument document = MakeWithLayer(Filled(QSize(50, 50), 0xFF111111), QPoint(0, 0));
    Paint paint;
    paint.apply = AlreadyApplied;
    paint.before = paint.after = QRect(0, 0, 50, 50);
    paint.undoImage = Filled(QSize(50, 50), 0xFF000000);
    paint.redoImage = Filled(QSize(50, 50), 0xFF222222);
    LexoUndoStack stack;
    SignalLog log(document.get());
    stack.push(Make(document.get(), paint));
    QCOMPARE(PixelAt(document.get(), QPoint(0, 0)), 0xFF111111u);
    QCOMPARE(log.Take(), QStringList({"LayerDataChanged 1", "CompositionChanged (0,0 50x50)"}));
    stack.undo();
    QCOMPARE(PixelAt(document.get(), QPoint(0, 0)), 0xFF000000u);
    stack.redo();
    QCOMPARE(PixelAt(document.get(), QPoint(0, 0)), 0xFF222222u);
}

void TestPaintCommands::emptyImagesWriteNothing()
{
    const OwnedDocument document = MakeWithLayer(Filled(QSize(50, 50), 0xFF111111), QPoint(0, 0));
    const QStringList before = Describe(document.get());
    Paint paint;
    paint.before = QRect(0, 0, 50, 50);
    paint.after = QRect(100, 100, 20, 20);
    LexoUndoStack stack;
    stack.push(Make(document.get(), paint));
    QCOMPARE(Describe(document.get()), before);
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
    QCOMPARE(stack.count(), 1);
}

void TestPaintCommands::theRectangleFoundDoesNotMatter()
{
    const OwnedDocument document = MakeWithLayer(Filled(QSize(90, 90), 0xFF111111), QPoint(-20, -20));
    Paint paint;
    paint.before = QRect(0, 0, 50, 50);
    paint.after = QRect(40, 40, 20, 20);
    paint.undoImage = Filled(QSize(10, 10), 0xFF333333);
    paint.redoImage = Filled(QSize(20, 20), 0xFF222222);
    LexoUndoStack stack;
    stack.push(Make(document.get(), paint));
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 0, 60, 60));
    stack.undo();
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 0, 50, 50));
}

void TestPaintCommands::profileAndResolutionOfTheLayerStay()
{
    LXImage32 image = Filled(QSize(50, 50), 0xFF111111);
    image.m_Profile = ZKCMSProfile(QByteArray("icc"));
    image.m_DpiX = 300;
    const OwnedDocument document = MakeWithLayer(image, QPoint(0, 0));
    Paint paint;
    paint.before = QRect(0, 0, 50, 50);
    paint.after = QRect(0, 0, 60, 60);
    paint.undoImage = image;
    paint.redoImage = Filled(QSize(60, 60), 0xFF222222);
    LexoUndoStack stack;
    stack.push(Make(document.get(), paint));
    QCOMPARE(document->GetLayerImage(1)->m_Profile, image.m_Profile);
    QCOMPARE(document->GetLayerImage(1)->m_DpiX, 300);
    stack.undo();
    QCOMPARE(document->GetLayerImage(1)->m_Profile, image.m_Profile);
}

void TestPaintCommands::signalsTellOfTheChangedRectangle()
{
    const OwnedDocument document = MakeWithLayer(Filled(QSize(50, 50), 0xFF111111), QPoint(0, 0));
    Paint paint;
    paint.before = QRect(0, 0, 50, 50);
    paint.after = QRect(10, 10, 20, 20);
    paint.undoImage = Filled(QSize(20, 20), 0xFF111111);
    paint.redoImage = Filled(QSize(20, 20), 0xFF222222);
    LexoUndoStack stack;
    QStringList order;
    connect(&stack, &LexoUndoStack::aboutIndexChanged, this, [&] { order << "aboutIndexChanged"; });
    connect(document->GetModel(), &LXDocumentModel::LayerDataChanged, this, [&] { order << "data"; });
    connect(document.get(), &LXDocumentInterface::CompositionChanged, this, [&](const QRect& rect) {
        QCOMPARE(rect, QRect(10, 10, 20, 20));
        order << "composition";
    });
    connect(&stack, &LexoUndoStack::indexChanged, this, [&] { order << "indexChanged"; });
    const QStringList expected{"aboutIndexChanged", "data", "composition", "indexChanged"};
    stack.push(Make(document.get(), paint));
    QCOMPARE(std::exchange(order, QStringList()), expected);
    stack.undo();
    QCOMPARE(std::exchange(order, QStringList()), expected);
}

void TestPaintCommands::maskSignalsTellOfTheMask()
{
    const OwnedDocument document = MakeWithLayer(Filled(QSize(50, 50), 0xFF111111), QPoint(0, 0));
    document->AddMask(1, true);
    Paint paint;
    paint.isMask = true;
    paint.before = QRect(Canvas);
    paint.after = QRect(40, 40, 20, 20);
    paint.undoImage = Filled(QSize(20, 20), Opaque);
    paint.redoImage = Filled(QSize(20, 20), 0);
    LexoUndoStack stack;
    SignalLog log(document.get());
    stack.push(Make(document.get(), paint));
    // Outside the layer the mask shows nothing.
    QCOMPARE(log.Take(), QStringList({"LayerMaskChanged 1", "CompositionChanged (40,40 10x10)"}));
}

void TestPaintCommands::aLayerThatIsGoneIsHarmless()
{
    const OwnedDocument document = DocumentFixture::Make(Canvas.size());
    SignalLog log(document.get());
    LexoUndoStack stack;
    for (const unsigned int id : {0u, 3u}) {
        Paint paint;
        paint.id = id;
        paint.before = paint.after = QRect(0, 0, 20, 20);
        paint.undoImage = paint.redoImage = Filled(QSize(20, 20), Opaque);
        stack.push(Make(document.get(), paint));
        stack.undo();
    }
    QCOMPARE(log.Take(), QStringList());
}

void TestPaintCommands::withoutAMaskAMaskPaintIsHarmless()
{
    const OwnedDocument document = MakeWithLayer(Filled(QSize(50, 50), 0xFF111111), QPoint(0, 0));
    const QStringList before = Describe(document.get());
    Paint paint;
    paint.isMask = true;
    paint.before = paint.after = QRect(0, 0, 20, 20);
    paint.undoImage = paint.redoImage = Filled(QSize(20, 20), Opaque);
    LexoUndoStack stack;
    stack.push(Make(document.get(), paint));
    QCOMPARE(Describe(document.get()), before);
}

void TestPaintCommands::commandsWorkWhileTheDocumentIsLockedAndTheirCallerReads()
{
    const OwnedDocument document = MakeWithLayer(Filled(QSize(50, 50), 0xFF111111), QPoint(0, 0));
    QVERIFY(document->Lock());
    const LXDocumentLayerLockerForRead merged(document.get(), 0);
    const LXDocumentLayerLockerForRead layer(document.get(), 1);
    Paint paint;
    paint.before = paint.after = QRect(0, 0, 50, 50);
    paint.undoImage = Filled(QSize(50, 50), 0xFF111111);
    paint.redoImage = Filled(QSize(50, 50), 0xFF222222);
    LexoUndoStack stack;
    stack.push(Make(document.get(), paint));
    QCOMPARE(PixelAt(document.get(), QPoint(0, 0)), 0xFF222222u);
    QVERIFY(document->GetLockState());
}

void TestPaintCommands::whatThrowsChangesNothing()
{
    Random random(5);
    const OwnedDocument document = MakeWithLayer(Noise(random, QSize(300, 200)), QPoint(0, 0));
    const QStringList before = Describe(document.get());
    Paint paint;
    paint.before = QRect(0, 0, 300, 200);
    paint.after = QRect(50, 50, 270, 100);
    paint.undoImage = document->GetLayerImage(1)->Copy(paint.before & paint.after);
    paint.redoImage = Noise(random, paint.after.size());
    LexoUndoStack stack;
    for (const int nth : {1, 2, 4}) {
        LexoCommand* command = Make(document.get(), paint);
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, nth);
        QVERIFY_EXCEPTION_THROWN(stack.push(command), std::bad_alloc);
        FaultSeams::Reset();
        QCOMPARE(Describe(document.get()), before);
        QCOMPARE(stack.count(), 0);
    }
}

void TestPaintCommands::unchangedTilesStayShared()
{
    Random random(5);
    const LXImage32 image = Noise(random, QSize(300, 200));
    const OwnedDocument document = MakeWithLayer(image, QPoint(0, 0));
    Paint paint;
    paint.before = QRect(0, 0, 300, 200);
    paint.after = QRect(10, 10, 5, 5);
    paint.undoImage = image.Copy(paint.after);
    paint.redoImage = Filled(QSize(5, 5), Opaque);
    LexoUndoStack stack;
    stack.push(Make(document.get(), paint));
    QVERIFY(document->GetLayerImage(1)->TileAt(0, 0) != image.TileAt(0, 0));
    QVERIFY(document->GetLayerImage(1)->TileAt(1, 0) == image.TileAt(1, 0));
    QVERIFY(document->GetLayerImage(1)->TileAt(2, 1) == image.TileAt(2, 1));
}

void TestPaintCommands::undoLawOverRandomPaints_data()
{
    QTest::addColumn<bool>("isMask");
    QTest::newRow("layer") << false;
    QTest::newRow("mask") << true;
}

void TestPaintCommands::undoLawOverRandomPaints()
{
    QFETCH(bool, isMask);
    Random random(99);
    const OwnedDocument document = MakeWithLayer(Noise(random, QSize(150, 140)), QPoint(-20, 30));
    document->AddMask(1, true);
    document->SetMaskImage(1, MaskNoise(random, QSize(130, 90)), QPoint(15, 25));
    LexoUndoStack stack;
    QList<QStringList> states{Describe(document.get())};
    for (int step = 0; step < 60; ++step) {
        Paint paint;
        paint.isMask = isMask;
        paint.before = isMask ? document->GetMaskGeometry(1) : document->GetLayerGeometry(1);
        paint.after = PickRect(random, Canvas, 30);
        const LXImage32& image = isMask ? *document->GetMaskImage(1) : *document->GetLayerImage(1);
        const QRect common = paint.before & paint.after;
        const bool keepsWhole = common.isEmpty() || Pick(random, 0, 1) == 0;
        paint.undoImage = keepsWhole ? image : image.Copy(common.translated(-paint.before.topLeft()));
        paint.redoImage = isMask ? MaskNoise(random, paint.after.size()) : Noise(random, paint.after.size());
        stack.push(Make(document.get(), paint));
        states << Describe(document.get());
    }
    for (int index = states.size() - 2; index >= 0; --index) {
        stack.undo();
        QCOMPARE(Describe(document.get()), states[index]);
    }
    for (int index = 1; index < states.size(); ++index) {
        stack.redo();
        QCOMPARE(Describe(document.get()), states[index]);
    }
}

ZK_REGISTER_TEST(tst_paintcommands, TestPaintCommands)
#include "tst_paintcommands.moc"
