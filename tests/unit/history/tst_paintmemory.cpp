#include "MemoryFile.h"

#include "history/LayerPaintCommand.h"
#include "history/LayerPaintCommandData.h"
#include "history/LexoUndoStack.h"
#include "image/LXTileManager.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QTest>

using namespace DocumentFixture;

/// What the steps of paint commands keep: no more than the tiles that differ, wherever the change begins.
class TestPaintMemory : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aChangeInTwoCornersKeepsTheTilesOfTwoCorners();
    void aChangeOffTheGridKeepsTheTilesItTouches();
    void aSmallChangeAcrossTilesKeepsItsRectangle();
    void aLayerThatGrowsByWholeTilesKeepsTheTilesItTouches();
    void undoRestoresWhatTheStepWasToldToRestore();
    void aLayerThatGrowsOffTheGridIsUndoneAsBefore();
    void whatAStepKeepsComesBackFromItsSerialForm();
    void damagedPlacesAreRefused();
    void aFailureKeepsThePixelsAndTheStep();

private:
    LXImage32 Layer() const { return *m_Document->GetLayerImage(1); }

    LayerPaintCommandData* MakeData(const QRect& after, const LXImage32& redoImage) const;
    void Push(LayerPaintCommandData* data);
    /// Over NoisePlace.
    LayerPaintCommandData* PushNoise();

    OwnedDocument m_Document;
    std::unique_ptr<LexoUndoStack> m_History;
};

namespace {
const QRect LayerRect(20, 30, 1024, 1024);
const QRect NoisePlace(100, 100, 500, 500); ///< of the layer; 25 tiles, off the grid
constexpr qint64 Tile = 65536;

void SetPixel(LXImage32& image, int x, int y)
{
    LXTileWriter<LXRGBA32i>(image.TileAt(x / 128, y / 128)).Pixels()[y % 128 * 128 + x % 128].value ^= 0xFF;
}
} // namespace

void TestPaintMemory::init()
{
    Random random(11);
    m_Document = DocumentFixture::Make(QSize(1200, 1200));
    m_Document->AddLayer("layer", Noise(random, LayerRect.size()), LayerRect.topLeft());
    m_History = std::make_unique<LexoUndoStack>();
}

void TestPaintMemory::cleanup()
{
    FaultSeams::Reset();
    m_History.reset();
    m_Document.reset();
}

LayerPaintCommandData* TestPaintMemory::MakeData(const QRect& after, const LXImage32& redoImage) const
{
    auto* data = new LayerPaintCommandData;
    data->SetLayerID(1);
    data->SetUndoGeometry(LayerRect);
    data->SetRedoGeometry(after);
    data->SetUndoImage(CopyPart(Layer(), (after & LayerRect).translated(-LayerRect.topLeft())), QRect());
    data->SetRedoImage(redoImage, QRect());
    return data;
}

void TestPaintMemory::Push(LayerPaintCommandData* data)
{
    auto* command = new LayerPaintCommand(m_Document.get(), true);
    command->SetCommandData(data);
    m_History->push(command);
}

LayerPaintCommandData* TestPaintMemory::PushNoise()
{
    Random random(12);
    LayerPaintCommandData* const data =
        MakeData(NoisePlace.translated(LayerRect.topLeft()), Noise(random, NoisePlace.size()));
    Push(data);
    return data;
}

void TestPaintMemory::aChangeInTwoCornersKeepsTheTilesOfTwoCorners()
{
    const LXImage32 before = Layer();
    const QRect bounds(1, 1, 1021, 1021);
    LXImage32 changed = CopyPart(before, bounds);
    SetPixel(changed, 0, 0);
    SetPixel(changed, 1020, 1020);
    LayerPaintCommandData* const data = MakeData(bounds.translated(LayerRect.topLeft()), changed);
    Push(data);

    QCOMPARE(data->GetMemoryCost(), 4 * Tile);
    QVERIFY(Layer().TileAt(0, 0) != before.TileAt(0, 0));
    QVERIFY(Layer().TileAt(3, 4) == before.TileAt(3, 4));
    const LXImage32 after = Layer();
    m_History->undo();
    QVERIFY(AreEqual(Layer(), before));
    QVERIFY(Layer().TileAt(0, 0) == before.TileAt(0, 0));
    m_History->redo();
    QVERIFY(AreEqual(Layer(), after));
}

void TestPaintMemory::aChangeOffTheGridKeepsTheTilesItTouches()
{
    const LXImage32 before = Layer();
    const int tilesBefore = LXTileManager::Instance().LiveTileCount();
    LayerPaintCommandData* const data = PushNoise();
    QCOMPARE(data->GetMemoryCost(), 2 * 25 * Tile);
    // Those of before are in `before`, those of after in the layer.
    QCOMPARE(LXTileManager::Instance().LiveTileCount() - tilesBefore, 25);
    m_History->undo();
    QVERIFY(AreEqual(Layer(), before));
}

void TestPaintMemory::aSmallChangeAcrossTilesKeepsItsRectangle()
{
    const LXImage32 before = Layer();
    const QRect bounds(120, 120, 10, 10); // of four tiles
    LayerPaintCommandData* const data =
        MakeData(bounds.translated(LayerRect.topLeft()), Filled(bounds.size(), 0xFF123456));
    Push(data);
    QCOMPARE(data->GetMemoryCost(), 2 * Tile);
    m_History->undo();
    QVERIFY(AreEqual(Layer(), before));
}

void TestPaintMemory::aLayerThatGrowsByWholeTilesKeepsTheTilesItTouches()
{
    const LXImage32 before = Layer();
    const QRect after = QRect(20 - 128, 30 + 500, 200, 100); // one column of tiles is new
    LayerPaintCommandData* const data = MakeData(after, Filled(after.size(), 0xFF123456));
    Push(data);
    const LXImage32 grown = Layer();
    QCOMPARE(m_Document->GetLayerGeometry(1), LayerRect | after);
    QVERIFY(grown.TileAt(1, 0) == before.TileAt(0, 0));
    QVERIFY(data->GetUndoImage().TileAt(0, 0) == before.TileAt(0, 3));
    m_History->undo();
    QVERIFY(AreEqual(Layer(), before));
    QCOMPARE(m_Document->GetLayerGeometry(1), LayerRect);
    m_History->redo();
    QVERIFY(AreEqual(Layer(), grown));
}

void TestPaintMemory::undoRestoresWhatTheStepWasToldToRestore()
{
    const QRect bounds(200, 300, 200, 100);
    LayerPaintCommandData* const data =
        MakeData(bounds.translated(LayerRect.topLeft()), Filled(bounds.size(), 0xFF123456));
    data->SetUndoImage(Filled(bounds.size(), 0xFF654321), QRect());
    Push(data);
    m_History->undo();
    QCOMPARE(Layer().GetColor(200, 300).value, 0xFF654321);
    QCOMPARE(Layer().GetColor(399, 399).value, 0xFF654321);
    QVERIFY(Layer().GetColor(199, 300).value != 0xFF654321);
}

void TestPaintMemory::aLayerThatGrowsOffTheGridIsUndoneAsBefore()
{
    const LXImage32 before = Layer();
    const QRect after(5, 35, 200, 100);
    LayerPaintCommandData* const data = MakeData(after, Filled(after.size(), 0xFF123456));
    Push(data);
    // Whole tiles would be shared with nothing.
    QCOMPARE(data->GetRedoImage().Rect(), QRect(0, 0, 200, 100));
    const LXImage32 grown = Layer();
    m_History->undo();
    QVERIFY(AreEqual(Layer(), before));
    m_History->redo();
    QVERIFY(AreEqual(Layer(), grown));
}

void TestPaintMemory::whatAStepKeepsComesBackFromItsSerialForm()
{
    const LayerPaintCommandData* const data = PushNoise();
    MemoryFile file;
    QVERIFY(data->Serialize(&file));
    LayerPaintCommandData read;
    QVERIFY(read.Deserialize(&file));
    QCOMPARE(read.GetPlaces().undoImage, QRect(0, 0, 640, 640).translated(LayerRect.topLeft()));
    QCOMPARE(read.GetPlaces().redoChange, NoisePlace.translated(LayerRect.topLeft()));
    QVERIFY(AreEqual(read.GetUndoImage(), data->GetUndoImage()));
    QVERIFY(AreEqual(read.GetRedoImage(), data->GetRedoImage()));
}

void TestPaintMemory::damagedPlacesAreRefused()
{
    const LayerPaintCommandData* const data = PushNoise();
    MemoryFile whole;
    QVERIFY(data->Serialize(&whole));
    constexpr int firstPlace = 8 + 4 + 2 * 16 + 1; // length, id, geometries, "kept"
    constexpr int imagePlaces = 2 * 16;
    for (int i = firstPlace; i < firstPlace + imagePlaces; ++i) {
        MemoryFile spoilt;
        spoilt.bytes = whole.bytes;
        spoilt.bytes[i] = static_cast<char>(~spoilt.bytes[i]);
        LayerPaintCommandData read;
        QVERIFY2(!read.Deserialize(&spoilt), qPrintable(QString::number(i)));
    }
}

void TestPaintMemory::aFailureKeepsThePixelsAndTheStep()
{
    const LXImage32 before = Layer();
    const QRect bounds(200, 300, 200, 100);
    const LXImage32 redoImage = Filled(bounds.size(), 0xFF123456);
    for (int nth = 1; nth <= 6; ++nth) {
        LayerPaintCommandData* const data = MakeData(bounds.translated(LayerRect.topLeft()), redoImage);
        auto* command = new LayerPaintCommand(m_Document.get(), true);
        command->SetCommandData(data);
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, nth);
        QVERIFY_EXCEPTION_THROWN(m_History->push(command), std::bad_alloc);
        FaultSeams::Reset();
        QVERIFY(AreEqual(Layer(), before));
    }
}

ZK_REGISTER_TEST(tst_paintmemory, TestPaintMemory)
#include "tst_paintmemory.moc"
