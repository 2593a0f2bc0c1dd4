#include "PieceFixture.h"

#include "support/TestRegistry.h"

#include <QTest>

using namespace DocumentFixture;

/// What lifting, carrying and laying down does to pixels, of all four kinds of pieces.
class TestFloatingPieces : public QObject
{
    Q_OBJECT

private slots:
    void layingDownAgreesWithTheTwin_data();
    void layingDownAgreesWithTheTwin();
    void cancellingBringsEveryByteBack_data();
    void cancellingBringsEveryByteBack();
    void layingDownWhereItWasLiftedChangesNoPixel_data();
    void layingDownWhereItWasLiftedChangesNoPixel();
    void whileItFloatsACopyLeavesTheTargetAlone();
    void whileACutFloatsTheTargetIsErased();
    void aPartlySelectedPixelIsDivided();
    void aPieceBeyondTheCanvasIsCutToItAndTheSelectionIsNot();
    void aPieceBeyondTheLayerMakesItLargerAndUndoSmallerAgain();
    void aPieceBeyondAMaskStandsOnTheDefault();
    void aPieceOverlappingItsOwnHoleFillsIt();
    void blackMaskBackgroundHidesWhatWasCut();
};

namespace {
constexpr quint32 Red = 0xFFFF0000;
constexpr int Seeds = 40;

const std::pair<const char*, PieceKind> Kinds[] = {
    {"layer copy", PieceKind::LayerCopy},
    {"mask copy", PieceKind::MaskCopy},
    {"layer cut", PieceKind::LayerCut},
    {"mask cut", PieceKind::MaskCut},
};

void AddKinds()
{
    QTest::addColumn<PieceKind>("kind");
    for (const auto& [name, kind] : Kinds)
        QTest::newRow(name) << kind;
}

/// A few cross the edges of tiles.
QSize CanvasFor(int seed)
{
    return seed % 8 == 0 ? QSize(170, 140) : QSize(40, 30);
}

/// A way as the pointer might take it; its end may be far outside.
QPoint RandomDelta(Random& random)
{
    return QPoint(Pick(random, -30, 30), Pick(random, -30, 30));
}

/// A layer of one color over the whole canvas of 40 x 30, with a selection of one coverage.
void FillPlain(PieceFixture& fixture, quint32 argb, const QRect& selection, quint32 coverage = 255)
{
    fixture.document->AddLayer("layer", Filled(QSize(40, 30), argb), QPoint());
    fixture.document->SetSelectionMask(Filled(selection.size(), coverage << 24), selection.topLeft());
}

quint32 LayerPixel(const PieceFixture& fixture, int x, int y)
{
    return fixture.Target(PieceKind::LayerCut).At(QPoint(x, y), LXRGBA32i()).value;
}

int MaskValue(const PieceFixture& fixture, int x, int y)
{
    return fixture.Target(PieceKind::MaskCut).At(QPoint(x, y), LXRGBA32i()).Alpha();
}

QString Different(const PieceTwin::Placed& actual, const PieceTwin::Placed& expected)
{
    if (actual.rect != expected.rect) return QString("another rectangle");
    return TestImages::Difference(actual.pixels, expected.pixels);
}
} // namespace

void TestFloatingPieces::layingDownAgreesWithTheTwin_data()
{
    AddKinds();
}

void TestFloatingPieces::layingDownAgreesWithTheTwin()
{
    QFETCH(PieceKind, kind);
    for (int seed = 0; seed < Seeds; ++seed) {
        Random random(static_cast<unsigned int>(seed));
        PieceFixture fixture(CanvasFor(seed));
        fixture.FillWithNoise(random);
        const PieceTwin::Case piece = fixture.Case(kind);
        const QStringList before = fixture.Describe();
        const QPoint start = fixture.document->GetSelectionMaskOffset();
        const QPoint delta = RandomDelta(random);

        const auto object = PieceFixture::MakePiece(kind);
        QVERIFY(object->Begin(fixture.view.get(), 1));
        QCOMPARE(Different(fixture.Target(kind), PieceTwin::Below(piece)), QString());
        QVERIFY(object->Move(start + RandomDelta(random)));
        QVERIFY(object->Move(start + delta));
        QVERIFY(object->Commit(&fixture.history));
        QCOMPARE(Different(fixture.Target(kind), PieceTwin::LaidDown(piece, delta)), QString());
        QCOMPARE(fixture.document->GetSelectionMaskOffset(), start + delta);
        QCOMPARE(fixture.Selection().rect.size(), piece.selection.rect.size());

        const QStringList after = fixture.Describe();
        QCOMPARE(fixture.history.count(), 1);
        fixture.history.undo();
        QCOMPARE(fixture.Describe(), before);
        fixture.history.redo();
        QCOMPARE(fixture.Describe(), after);
    }
}

void TestFloatingPieces::cancellingBringsEveryByteBack_data()
{
    AddKinds();
}

void TestFloatingPieces::cancellingBringsEveryByteBack()
{
    QFETCH(PieceKind, kind);
    for (int seed = 0; seed < Seeds; ++seed) {
        Random random(static_cast<unsigned int>(seed));
        PieceFixture fixture(CanvasFor(seed));
        fixture.FillWithNoise(random);
        const QStringList before = fixture.Describe();
        const QPoint start = fixture.document->GetSelectionMaskOffset();

        const auto object = PieceFixture::MakePiece(kind);
        QVERIFY(object->Begin(fixture.view.get(), 1));
        QVERIFY(object->Move(start + RandomDelta(random)));
        QVERIFY(object->Cancel());
        QCOMPARE(fixture.Describe(), before);
        QCOMPARE(fixture.history.count(), 0);
    }
}

void TestFloatingPieces::layingDownWhereItWasLiftedChangesNoPixel_data()
{
    AddKinds();
}

void TestFloatingPieces::layingDownWhereItWasLiftedChangesNoPixel()
{
    QFETCH(PieceKind, kind);
    for (int seed = 0; seed < Seeds; ++seed) {
        Random random(static_cast<unsigned int>(seed));
        PieceFixture fixture(CanvasFor(seed));
        fixture.FillWithNoise(random);
        const QStringList before = fixture.Describe();
        const QPoint start = fixture.document->GetSelectionMaskOffset();

        const auto object = PieceFixture::MakePiece(kind);
        QVERIFY(object->Begin(fixture.view.get(), 1));
        if (seed % 2 == 1) {
            QVERIFY(object->Move(start + RandomDelta(random)));
            QVERIFY(object->Move(start));
        }
        QVERIFY(object->Commit(&fixture.history));
        QCOMPARE(fixture.Describe(), before);
        QCOMPARE(fixture.history.count(), 1);
        fixture.history.undo();
        QCOMPARE(fixture.Describe(), before);
        fixture.history.redo();
        QCOMPARE(fixture.Describe(), before);
    }
}

void TestFloatingPieces::whileItFloatsACopyLeavesTheTargetAlone()
{
    PieceFixture fixture;
    FillPlain(fixture, Red, QRect(5, 5, 10, 10));
    LayerCopyPasteObject copy;
    QVERIFY(copy.Begin(fixture.view.get(), 1));
    QVERIFY(copy.Move(QPoint(20, 5)));
    QCOMPARE(LayerPixel(fixture, 7, 7), Red);
    QCOMPARE(fixture.document->GetAdditionalLayerGeometry(1), QRect(20, 5, 10, 10));
}

void TestFloatingPieces::whileACutFloatsTheTargetIsErased()
{
    PieceFixture fixture;
    FillPlain(fixture, Red, QRect(5, 5, 10, 10));
    LayerCutPasteObject cut;
    QVERIFY(cut.Begin(fixture.view.get(), 1));
    QCOMPARE(LayerPixel(fixture, 5, 5), 0x00FF0000u);
    QCOMPARE(LayerPixel(fixture, 14, 14), 0x00FF0000u);
    QCOMPARE(LayerPixel(fixture, 15, 14), Red);
    QCOMPARE(fixture.document->GetAdditionalLayerImage(1)->GetColor(0, 0).value, Red);
}

void TestFloatingPieces::aPartlySelectedPixelIsDivided()
{
    // 200 x 128 / 255 = 100.4: 100 go along, and 100 stay.
    PieceFixture fixture;
    FillPlain(fixture, 0xC8102030, QRect(5, 5, 10, 10), 128);
    LayerCutPasteObject cut;
    QVERIFY(cut.Begin(fixture.view.get(), 1));
    QCOMPARE(LayerPixel(fixture, 7, 7), 0x64102030u);
    QCOMPARE(fixture.document->GetAdditionalLayerImage(1)->GetColor(2, 2).value, 0x64102030u);
    QVERIFY(cut.Move(QPoint(25, 5)));
    QVERIFY(cut.Commit(&fixture.history));
    QCOMPARE(LayerPixel(fixture, 7, 7), 0x64102030u);
    // 100 over 200: 100 + 200 x 155 / 255 = 221.6.
    QCOMPARE(LayerPixel(fixture, 27, 7), 0xDE102030u);
}

void TestFloatingPieces::aPieceBeyondTheCanvasIsCutToItAndTheSelectionIsNot()
{
    PieceFixture fixture;
    FillPlain(fixture, Red, QRect(5, 5, 10, 10));
    LayerCutPasteObject cut;
    QVERIFY(cut.Begin(fixture.view.get(), 1));
    QVERIFY(cut.Move(QPoint(35, -4)));
    QVERIFY(cut.Commit(&fixture.history));
    QCOMPARE(fixture.document->GetLayerGeometry(1), QRect(0, 0, 40, 30));
    QCOMPARE(fixture.document->GetSelectionGeometry(), QRect(35, -4, 10, 10));
    fixture.history.undo();
    QCOMPARE(LayerPixel(fixture, 5, 5), Red);
    QCOMPARE(fixture.document->GetSelectionGeometry(), QRect(5, 5, 10, 10));
}

void TestFloatingPieces::aPieceBeyondTheLayerMakesItLargerAndUndoSmallerAgain()
{
    PieceFixture fixture;
    fixture.document->AddLayer("layer", Filled(QSize(10, 10), Red), QPoint(5, 5));
    fixture.document->SetSelectionMask(Filled(QSize(4, 4), 0xFF000000), QPoint(5, 5));
    LayerCopyPasteObject copy;
    QVERIFY(copy.Begin(fixture.view.get(), 1));
    QVERIFY(copy.Move(QPoint(20, 1)));
    QVERIFY(copy.Commit(&fixture.history));
    QCOMPARE(fixture.document->GetLayerGeometry(1), QRect(QPoint(5, 1), QPoint(23, 14)));
    QCOMPARE(LayerPixel(fixture, 20, 1), Red);
    QCOMPARE(LayerPixel(fixture, 19, 1), 0u);
    fixture.history.undo();
    QCOMPARE(fixture.document->GetLayerGeometry(1), QRect(5, 5, 10, 10));
}

void TestFloatingPieces::aPieceBeyondAMaskStandsOnTheDefault()
{
    PieceFixture fixture;
    FillPlain(fixture, Red, QRect(5, 5, 4, 4), 128);
    fixture.document->AddMask(1, true);
    fixture.document->SetMaskImage(1, Filled(QSize(10, 10), 0x00000000), QPoint(5, 5));
    MaskCopyPasteObject copy;
    QVERIFY(copy.Begin(fixture.view.get(), 1));
    QVERIFY(copy.Move(QPoint(20, 5)));
    QVERIFY(copy.Commit(&fixture.history));
    // Black at 128 over the 255 of a mask that reveals: 255 x 127 / 255.
    QCOMPARE(MaskValue(fixture, 20, 5), 127);
    QCOMPARE(MaskValue(fixture, 18, 5), 255);
    QCOMPARE(MaskValue(fixture, 5, 5), 0);
}

void TestFloatingPieces::aPieceOverlappingItsOwnHoleFillsIt()
{
    PieceFixture fixture;
    FillPlain(fixture, Red, QRect(5, 5, 10, 10));
    LayerCutPasteObject cut;
    QVERIFY(cut.Begin(fixture.view.get(), 1));
    QVERIFY(cut.Move(QPoint(8, 5)));
    QVERIFY(cut.Commit(&fixture.history));
    QCOMPARE(LayerPixel(fixture, 7, 7), 0x00FF0000u);
    QCOMPARE(LayerPixel(fixture, 8, 7), Red);
}

void TestFloatingPieces::blackMaskBackgroundHidesWhatWasCut()
{
    const QColor background = ZKApplication::GetBackground();
    ZKApplication::SetBackground(Qt::black);
    PieceFixture fixture;
    FillPlain(fixture, Red, QRect(5, 5, 10, 10), 255);
    fixture.document->AddMask(1, true);
    MaskCutPasteObject cut;
    const bool hasBegun = cut.Begin(fixture.view.get(), 1);
    ZKApplication::SetBackground(background);
    QVERIFY(hasBegun);
    QCOMPARE(MaskValue(fixture, 7, 7), 0);
    QCOMPARE(MaskValue(fixture, 4, 7), 255);
    // The layer below the mask keeps its pixels.
    QCOMPARE(LayerPixel(fixture, 7, 7), Red);
}

ZK_REGISTER_TEST(tst_floatingpieces, TestFloatingPieces)
#include "tst_floatingpieces.moc"
