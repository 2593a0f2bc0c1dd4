#include "CanvasDocument.h"
#include "UndoLaw.h"

#include "history/ImageSizeCommand.h"
#include "history/ImageSizeCommandData.h"
#include "history/LexoUndoStack.h"
#include "history/MoveCommandData.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <new>

using namespace DocumentFixture;

namespace {
using ResampleType = ImageSizeCommandData::ResampleType;

LexoCommand* Resize(LXDocumentInterface* document, const QSize& size, double resolution,
                    ResampleType type = ImageSizeCommandData::Bicubic, bool resample = true)
{
    auto* data = new ImageSizeCommandData;
    data->Init(document, document->GetDocumentSize(), document->GetDPI(), size, resolution, resample, type);
    auto* command = new ImageSizeCommand(document);
    command->SetCommandData(data);
    return command;
}

LXImage32 Row(std::initializer_list<quint32> pixels)
{
    LXImage32 row(static_cast<int>(pixels.size()), 1);
    int x = 0;
    for (const quint32 pixel : pixels) {
        row.SetColor(x++, 0, LXRGBA32i(pixel));
    }
    return row;
}

/// Six pixels, whose mask and selection have one value on the left and another on the right.
OwnedDocument MakeTwoValued()
{
    const LXImage32 values = Row({0x40000000, 0x40000000, 0x40000000, 0xC0000000, 0xC0000000, 0xC0000000});
    OwnedDocument document = Make(QSize(6, 1));
    document->AddLayer("layer", Filled(QSize(6, 1), 0xFFFFFFFF), QPoint());
    document->AddMask(1, true);
    document->SetMaskImage(1, values, QPoint());
    document->SetSelectionMask(values, QPoint());
    return document;
}
} // namespace

class TestImageSizeCommand : public QObject
{
    Q_OBJECT

private slots:
    void everythingIsScaled();
    void theMethodMakesThePixels_data();
    void theMethodMakesThePixels();
    void enlargedBordersStayOpaque();
    void masksAndTheSelectionStayBetweenTheirValues();
    void nearestNeighbourMakesNoNewValues();
    void withoutResamplingOnlyTheResolutionChanges();
    void anEqualSizeChangesOnlyTheResolution();
    void impossibleSizesChangeNothing();
    void aSizeThatIsTooLargeThrowsAndChangesNothing();
    void aPictureOfOnePixelIsLeft();
    void dataOfOtherCommandsIsRefused();

    void theUndoLawHolds_data();
    void theUndoLawHolds();
};

void TestImageSizeCommand::everythingIsScaled()
{
    const OwnedDocument document = MakeCanvasDocument();
    LexoUndoStack stack;
    stack.push(Resize(document.get(), QSize(200, 40), 144));
    QCOMPARE(document->GetDocumentSize(), QSize(200, 40));
    QCOMPARE(document->GetDPI(), 144.0);
    QCOMPARE(document->GetLayerGeometry(2), QRect(0, 0, 200, 40));
    QCOMPARE(document->GetLayerGeometry(1), QRect(160, -5, 80, 15));
    QCOMPARE(document->GetMaskGeometry(1), QRect(170, 0, 60, 10));
    QCOMPARE(document->GetMaskGeometry(2), QRect(0, 0, 200, 40));
    QCOMPARE(document->GetSelectionGeometry(), QRect(60, 20, 40, 5));
    QVERIFY(AreEqual(document->GetSelectionMask(), Filled(QSize(40, 5), 0xFF000000)));
    const SelectionChannel kept = ChannelsOf(document.get())->All().first();
    QCOMPARE(kept.coverage.Rect(), QRect(100, 5, 20, 10));
    QVERIFY(AreEqual(kept.coverage.image, Filled(QSize(20, 10), 0xFF000000)));
    const LXPath path = document->GetPathListModel()->GetPath(0).first().first;
    QCOMPARE(path[0].GetCenterPoint(), QPointF(20, 10));
    QCOMPARE(path[1].GetCenterPoint(), QPointF(61, 20));
    QCOMPARE(document->GetColorSamples()->GetPoint(0), QPoint(25, 17));
    QCOMPARE(document->GetGuides(), LXGuides({{Qt::Horizontal, 10}, {Qt::Vertical, 180}}));
}

void TestImageSizeCommand::theMethodMakesThePixels_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<quint32>("second");
    QTest::addColumn<quint32>("third");
    // 0, 100, 100, 100 become eight. The second new pixel lies a quarter after the first old one's middle,
    // the third a quarter before the second's.
    QTest::newRow("nearest neighbour")
        << int(ImageSizeCommandData::NearestNeighbour) << 0xFF000000u << 0xFF000064u;
    QTest::newRow("bilinear") << int(ImageSizeCommandData::Bilinear) << 0xFF000019u << 0xFF00004Bu;
    // The curve weighs 0.8671875, 0.2265625, -0.0703125 and -0.0234375 at distances of 0.25, 0.75, 1.25 and
    // 1.75. What lies before the border is left out and the rest brought to 1: 20.3125 / 1.0703125 and
    // 79.6875 / 1.0234375.
    QTest::newRow("bicubic") << int(ImageSizeCommandData::Bicubic) << 0xFF000013u << 0xFF00004Eu;
}

void TestImageSizeCommand::theMethodMakesThePixels()
{
    QFETCH(int, type);
    QFETCH(quint32, second);
    QFETCH(quint32, third);
    const OwnedDocument document = Make(QSize(4, 1));
    document->AddLayer("layer", Row({0xFF000000, 0xFF000064, 0xFF000064, 0xFF000064}), QPoint());
    LexoUndoStack stack;
    stack.push(Resize(document.get(), QSize(8, 1), 72, static_cast<ResampleType>(type)));
    QCOMPARE(document->GetLayerImage(1)->GetColor(1, 0).value, second);
    QCOMPARE(document->GetLayerImage(1)->GetColor(2, 0).value, third);
}

void TestImageSizeCommand::enlargedBordersStayOpaque()
{
    for (const ResampleType type : {ImageSizeCommandData::NearestNeighbour, ImageSizeCommandData::Bilinear,
                                    ImageSizeCommandData::Bicubic}) {
        const OwnedDocument document = Make(QSize(30, 20));
        document->AddLayer("layer", Filled(QSize(30, 20), 0xFF3366CC), QPoint());
        LexoUndoStack stack;
        stack.push(Resize(document.get(), QSize(101, 77), 72, type));
        QVERIFY(AreEqual(*document->GetLayerImage(1), Filled(QSize(101, 77), 0xFF3366CC)));
    }
}

void TestImageSizeCommand::masksAndTheSelectionStayBetweenTheirValues()
{
    const OwnedDocument document = MakeTwoValued();
    LexoUndoStack stack;
    stack.push(Resize(document.get(), QSize(24, 1), 72));
    for (const LXImage32& image : {*document->GetMaskImage(1), document->GetSelectionMask()}) {
        for (int x = 0; x < 24; ++x) {
            const LXRGBA32i value = image.GetColor(x, 0);
            QVERIFY(value.Alpha() >= 0x40 && value.Alpha() <= 0xC0);
            QCOMPARE(value.value & 0xFFFFFF, 0u);
        }
    }
}

void TestImageSizeCommand::nearestNeighbourMakesNoNewValues()
{
    const OwnedDocument document = MakeTwoValued();
    LexoUndoStack stack;
    stack.push(Resize(document.get(), QSize(24, 1), 72, ImageSizeCommandData::NearestNeighbour));
    for (const LXImage32& image : {*document->GetMaskImage(1), document->GetSelectionMask()}) {
        for (int x = 0; x < 24; ++x) {
            QCOMPARE(image.GetColor(x, 0).value, x < 12 ? 0x40000000u : 0xC0000000u);
        }
    }
}

void TestImageSizeCommand::withoutResamplingOnlyTheResolutionChanges()
{
    const OwnedDocument document = MakeCanvasDocument();
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    SignalLog log(document.get());
    stack.push(Resize(document.get(), QSize(50, 40), 300, ImageSizeCommandData::Bicubic, false));
    QCOMPARE(document->GetDPI(), 300.0);
    QCOMPARE(log.Take().filter("CompositionChanged"), QStringList());
    QCOMPARE(Describe(document.get()), before);
    stack.undo();
    QCOMPARE(document->GetDPI(), 72.0);
}

void TestImageSizeCommand::anEqualSizeChangesOnlyTheResolution()
{
    const OwnedDocument document = MakeCanvasDocument();
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(Resize(document.get(), QSize(100, 80), 300));
    QCOMPARE(stack.count(), 1);
    QCOMPARE(document->GetDPI(), 300.0);
    QCOMPARE(Describe(document.get()), before);
    stack.undo();
    QCOMPARE(document->GetDPI(), 72.0);
    QCOMPARE(Describe(document.get()), before);
}

void TestImageSizeCommand::impossibleSizesChangeNothing()
{
    const OwnedDocument document = MakeCanvasDocument();
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    for (const QSize& size :
         {QSize(0, 10), QSize(10, -1), QSize(LXDocumentInterface::MAX_DOC_DIMENSION + 1, 10)}) {
        stack.push(Resize(document.get(), size, 72));
        QCOMPARE(Describe(document.get()), before);
        stack.undo();
        QCOMPARE(Describe(document.get()), before);
    }
}

void TestImageSizeCommand::aSizeThatIsTooLargeThrowsAndChangesNothing()
{
    const OwnedDocument document = MakeCanvasDocument();
    const QStringList before = DescribeWhole(document.get());
    LexoUndoStack stack;
    const int most = LXDocumentInterface::MAX_DOC_DIMENSION;
    QVERIFY_EXCEPTION_THROWN(stack.push(Resize(document.get(), QSize(most, most), 300)), std::bad_alloc);
    QCOMPARE(stack.count(), 0);
    QCOMPARE(DescribeWhole(document.get()), before);
}

void TestImageSizeCommand::aPictureOfOnePixelIsLeft()
{
    const OwnedDocument document = Make(QSize(40, 30));
    document->AddLayer("layer", Filled(QSize(40, 30), 0xFF3366CC), QPoint());
    QCOMPARE(UndoLaw::BrokenBy(document.get(), Resize(document.get(), QSize(1, 1), 72)), QString());
    QCOMPARE(document->GetLayerImage(1)->GetColor(0, 0).value, 0xFF3366CCu);
}

void TestImageSizeCommand::dataOfOtherCommandsIsRefused()
{
    const OwnedDocument document = MakeCanvasDocument();
    MoveCommandData other;
    QVERIFY(!ImageSizeCommand(document.get()).SetCommandData(&other));
}

void TestImageSizeCommand::theUndoLawHolds_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("resample");
    QTest::newRow("larger") << QSize(150, 170) << true;
    QTest::newRow("smaller") << QSize(33, 27) << true;
    QTest::newRow("resolution") << QSize(100, 80) << false;
}

void TestImageSizeCommand::theUndoLawHolds()
{
    QFETCH(QSize, size);
    QFETCH(bool, resample);
    for (const ResampleType type : {ImageSizeCommandData::NearestNeighbour, ImageSizeCommandData::Bilinear,
                                    ImageSizeCommandData::Bicubic}) {
        const OwnedDocument document = MakeCanvasDocument();
        QCOMPARE(UndoLaw::BrokenBy(document.get(), Resize(document.get(), size, 123.5, type, resample)),
                 QString());
        QCOMPARE(document->GetDPI(), 123.5);
    }
}

ZK_REGISTER_TEST(tst_imagesizecommand, TestImageSizeCommand)
#include "tst_imagesizecommand.moc"
