#include "PieceFixture.h"

#include "document/LXDocumentInterface_p.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QCursor>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QVector>

#include <stdexcept>

using namespace DocumentFixture;

/// How pieces begin, move and end, what they tell, and what remains when they fail.
class TestFloatingPieceLife : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void macrosHaveTheirTextsAndCommands_data();
    void macrosHaveTheirTextsAndCommands();
    void aWayOfNothingStillYieldsAllCommands();
    void withoutAHistoryTheDocumentIsChangedAllTheSame_data();
    void withoutAHistoryTheDocumentIsChangedAllTheSame();
    void theOverlayGoesWithThePiece_data();
    void theOverlayGoesWithThePiece();
    void whatFloatsElsewhereLandsBeforeItIsRead();
    void aMoveTouchesNoPixel();
    void aMoveRepaintsTheOldAndTheNewPlace();
    void theSelectionGoesAlong();
    void anotherLevelOfTheViewShowsThePieceAnew();
    void aSelectionThatMissesTheTargetLiftsNothing_data();
    void aSelectionThatMissesTheTargetLiftsNothing();
    void whatIsNotThereIsRefused();
    void aSecondBeginIsRefused();
    void nothingFloatingIsNothingToEnd();
    void onAnAdjustmentLayerTheSelectionAloneMoves_data();
    void onAnAdjustmentLayerTheSelectionAloneMoves();
    void aMaskOfAnAdjustmentLayerFloatsLikeAnother();
    void droppedWhileItFloatsItLeavesEveryByte_data();
    void droppedWhileItFloatsItLeavesEveryByte();
    void aLiftThatFailsLeavesNothingBehind_data();
    void aLiftThatFailsLeavesNothingBehind();
    void aStrangeFailureGoesOn();
    void aLandingThatFailsCanBeCancelled_data();
    void aLandingThatFailsCanBeCancelled();
    void aCancelThatFailsCanBeRepeated();
    void theCursorWaitsWhileALargePieceIsWorkedOn();
    void aMoveThatFailsIsReportedAndAnswersFalse();

private:
    static void AddAdjustmentLayer(PieceFixture& fixture);
};

namespace {
constexpr quint32 Red = 0xFFFF0000;

struct KindRow
{
    const char* name;
    const char* text;
    PieceKind kind;
    int commands;
};

const KindRow Kinds[] = {
    {"layer copy", "Copy", PieceKind::LayerCopy, 2},
    {"mask copy", "Cut", PieceKind::MaskCopy, 2},
    {"layer cut", "Cut", PieceKind::LayerCut, 3},
    {"mask cut", "Cut", PieceKind::MaskCut, 3},
};

void AddKinds()
{
    QTest::addColumn<PieceKind>("kind");
    for (const KindRow& row : Kinds)
        QTest::newRow(row.name) << row.kind;
}

/// A red layer over the whole canvas with a mask, of which (5, 5) to (14, 14) are selected.
void FillPlain(PieceFixture& fixture)
{
    fixture.document->AddLayer("layer", Filled(QSize(40, 30), Red), QPoint());
    fixture.document->AddMask(1, true);
    fixture.document->SetSelectionMask(Filled(QSize(10, 10), 0xFF000000), QPoint(5, 5));
}

/// A layer and a mask of noise over the whole canvas, and a soft selection inside it.
void FillSoft(PieceFixture& fixture)
{
    Random random(5);
    fixture.document->AddLayer("layer", Noise(random, QSize(40, 30)), QPoint());
    fixture.document->AddMask(1, true);
    fixture.document->SetMaskImage(1, MaskNoise(random, QSize(40, 30)), QPoint());
    fixture.document->SetSelectionMask(Filled(QSize(10, 10), 0x80000000), QPoint(5, 5));
}

QRect FloatingRect(const PieceFixture& fixture)
{
    return fixture.document->GetAdditionalLayerGeometry(1) | fixture.document->GetAdditionalMaskGeometry(1);
}

/// How many commands the last step was made of: the history tells of each, and of the macro's two ends.
int CommandsOf(const QSignalSpy& historyChanged)
{
    return historyChanged.count() - 2;
}

const char* FileOf(PieceKind kind)
{
    return PieceFixture::IsCut(kind) ? "CutPasteObject" : "CopyPasteObject";
}

QRegularExpression Report(PieceKind kind, const char* opening)
{
    return QRegularExpression(
        QString("%1: line=\\d+, file=\"src/movetoolprivate/%2\"").arg(opening, FileOf(kind)));
}
} // namespace

void TestFloatingPieceLife::AddAdjustmentLayer(PieceFixture& fixture)
{
    LayerState layer;
    layer.properties.kind = 2;
    LXDocumentInterfacePrivate::Get(fixture.document.get())->InsertLayer(0, layer);
    fixture.document->AddMask(1, true);
    fixture.document->SetSelectionMask(Filled(QSize(10, 10), 0xFF000000), QPoint(5, 5));
}

void TestFloatingPieceLife::cleanup()
{
    FaultSeams::Reset();
}

void TestFloatingPieceLife::macrosHaveTheirTextsAndCommands_data()
{
    QTest::addColumn<PieceKind>("kind");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("commands");
    for (const KindRow& row : Kinds)
        QTest::newRow(row.name) << row.kind << row.text << row.commands;
}

void TestFloatingPieceLife::macrosHaveTheirTextsAndCommands()
{
    QFETCH(PieceKind, kind);
    QFETCH(QString, text);
    QFETCH(int, commands);
    PieceFixture fixture;
    FillPlain(fixture);
    const auto piece = PieceFixture::MakePiece(kind);
    QVERIFY(piece->Begin(fixture.view.get(), 1));
    QCOMPARE(fixture.history.count(), 0);
    QVERIFY(piece->Move(QPoint(8, 9)));
    QSignalSpy changed(&fixture.history, &LexoUndoStack::historyChanged);
    QVERIFY(piece->Commit(&fixture.history));
    QCOMPARE(fixture.history.count(), 1);
    QCOMPARE(fixture.history.undoText(), text);
    QCOMPARE(CommandsOf(changed), commands);
}

void TestFloatingPieceLife::aWayOfNothingStillYieldsAllCommands()
{
    PieceFixture fixture;
    FillPlain(fixture);
    LayerCutPasteObject cut;
    QVERIFY(cut.Begin(fixture.view.get(), 1));
    QSignalSpy changed(&fixture.history, &LexoUndoStack::historyChanged);
    QVERIFY(cut.Commit(&fixture.history));
    QCOMPARE(CommandsOf(changed), 3);
}

void TestFloatingPieceLife::withoutAHistoryTheDocumentIsChangedAllTheSame_data()
{
    AddKinds();
}

void TestFloatingPieceLife::withoutAHistoryTheDocumentIsChangedAllTheSame()
{
    QFETCH(PieceKind, kind);
    PieceFixture with;
    PieceFixture without;
    for (PieceFixture* fixture : {&with, &without}) {
        Random random(7);
        fixture->FillWithNoise(random);
        const auto piece = PieceFixture::MakePiece(kind);
        QVERIFY(piece->Begin(fixture->view.get(), 1));
        QVERIFY(piece->Move(fixture->document->GetSelectionMaskOffset() + QPoint(3, -2)));
        QVERIFY(piece->Commit(fixture == &with ? &with.history : nullptr));
    }
    QCOMPARE(without.Describe(), with.Describe());
    QCOMPARE(without.history.count(), 0);
}

void TestFloatingPieceLife::theOverlayGoesWithThePiece_data()
{
    AddKinds();
}

void TestFloatingPieceLife::theOverlayGoesWithThePiece()
{
    QFETCH(PieceKind, kind);
    for (const bool isCommitted : {true, false}) {
        PieceFixture fixture;
        FillPlain(fixture);
        const auto piece = PieceFixture::MakePiece(kind);
        QVERIFY(piece->Begin(fixture.view.get(), 1));
        QCOMPARE(FloatingRect(fixture), QRect(5, 5, 10, 10));
        QVERIFY(isCommitted ? piece->Commit(&fixture.history) : piece->Cancel());
        QCOMPARE(FloatingRect(fixture), QRect());
        // Used once: there is nothing left to move or end.
        const QStringList before = fixture.Describe();
        QVERIFY(piece->Move(QPoint(1, 1)));
        QVERIFY(!piece->Commit(&fixture.history));
        QVERIFY(piece->Cancel());
        QCOMPARE(fixture.Describe(), before);
    }
}

void TestFloatingPieceLife::whatFloatsElsewhereLandsBeforeItIsRead()
{
    PieceFixture fixture;
    FillPlain(fixture);
    const auto landOnce = connect(&fixture.history, &LexoUndoStack::aboutCommit, [&] {
        fixture.document->GetLayerImage(1)->SetColor(6, 6, LXRGBA32i(0xFF00FF00));
    });
    LayerCopyPasteObject copy;
    QVERIFY(copy.Begin(fixture.view.get(), 1));
    disconnect(landOnce);
    QCOMPARE(fixture.document->GetAdditionalLayerImage(1)->GetColor(1, 1).value, 0xFF00FF00u);
}

void TestFloatingPieceLife::aMoveTouchesNoPixel()
{
    PieceFixture fixture(QSize(300, 300));
    Random random(3);
    fixture.FillWithNoise(random);
    LayerCutPasteObject cut;
    QVERIFY(cut.Begin(fixture.view.get(), 1));
    const auto layer = fixture.document->GetLayerImage(1)->m_Tiles;
    const auto overlay = fixture.document->GetAdditionalLayerImage(1)->m_Tiles;
    const QSignalSpy data(fixture.document.get(), &LXDocumentInterface::LayerDataChanged);
    QVERIFY(cut.Move(QPoint(20, 30)));
    QVERIFY(fixture.document->GetLayerImage(1)->m_Tiles == layer);
    QVERIFY(fixture.document->GetAdditionalLayerImage(1)->m_Tiles == overlay);
    QCOMPARE(data.count(), 0);
}

void TestFloatingPieceLife::aMoveRepaintsTheOldAndTheNewPlace()
{
    PieceFixture fixture;
    FillPlain(fixture);
    LayerCopyPasteObject copy;
    QVERIFY(copy.Begin(fixture.view.get(), 1));
    SignalLog log(fixture.document.get());
    QVERIFY(copy.Move(QPoint(8, 4)));
    // (5, 5) to (14, 14) and (8, 4) to (17, 13), one pixel larger on all sides.
    const QRect dirty(QPoint(4, 3), QPoint(18, 15));
    const QString composition = QString("CompositionChanged (%1,%2 %3x%4)")
                                    .arg(dirty.x())
                                    .arg(dirty.y())
                                    .arg(dirty.width())
                                    .arg(dirty.height());
    QCOMPARE(log.Take(), QStringList({composition, "AboutSelectionMove", "SelectionChanged", composition}));
}

void TestFloatingPieceLife::theSelectionGoesAlong()
{
    PieceFixture fixture;
    FillPlain(fixture);
    MaskCopyPasteObject copy;
    QVERIFY(copy.Begin(fixture.view.get(), 1));
    QVERIFY(copy.Move(QPoint(30, -6)));
    QCOMPARE(fixture.document->GetSelectionGeometry(), QRect(30, -6, 10, 10));
    QCOMPARE(fixture.document->GetAdditionalMaskGeometry(1), QRect(30, -6, 10, 10));
}

void TestFloatingPieceLife::anotherLevelOfTheViewShowsThePieceAnew()
{
    PieceFixture fixture;
    FillPlain(fixture);
    LayerCutPasteObject cut;
    const QSignalSpy composed(fixture.document.get(), &LXDocumentInterface::CompositionChanged);
    cut.OnCurrentViewLevelChanged();
    QCOMPARE(composed.count(), 0);
    QVERIFY(cut.Begin(fixture.view.get(), 1));
    const int before = composed.count();
    cut.OnCurrentViewLevelChanged();
    QCOMPARE(composed.count(), before + 1);
    QCOMPARE(composed.last()[0].toRect(), QRect(5, 5, 10, 10));
}

void TestFloatingPieceLife::aSelectionThatMissesTheTargetLiftsNothing_data()
{
    AddKinds();
}

void TestFloatingPieceLife::aSelectionThatMissesTheTargetLiftsNothing()
{
    QFETCH(PieceKind, kind);
    PieceFixture fixture;
    FillPlain(fixture);
    fixture.document->SetSelectionMask(Filled(QSize(5, 5), 0xFF000000), QPoint(60, 3));
    const QStringList before = fixture.Describe();
    const auto piece = PieceFixture::MakePiece(kind);
    QVERIFY(piece->Begin(fixture.view.get(), 1));
    QCOMPARE(fixture.Describe(), before);
    QVERIFY(piece->Move(QPoint(3, 3)));
    QVERIFY(piece->Commit(&fixture.history));
    QCOMPARE(fixture.history.count(), 1);
    QCOMPARE(fixture.document->GetSelectionMaskOffset(), QPoint(3, 3));
    fixture.history.undo();
    QCOMPARE(fixture.Describe(), before);
}

void TestFloatingPieceLife::whatIsNotThereIsRefused()
{
    PieceFixture fixture;
    FillPlain(fixture);
    fixture.document->RemoveMask(1);
    const QStringList before = fixture.Describe();
    QVERIFY(!LayerCutPasteObject().Begin(fixture.view.get(), 9));
    QVERIFY(!LayerCopyPasteObject().Begin(fixture.view.get(), 0));
    QVERIFY(!MaskCutPasteObject().Begin(fixture.view.get(), 1));
    QVERIFY(!MaskCopyPasteObject().Begin(fixture.view.get(), 1));
    QVERIFY(!LayerCutPasteObject().Begin(nullptr, 1));
    QCOMPARE(fixture.Describe(), before);
}

void TestFloatingPieceLife::aSecondBeginIsRefused()
{
    PieceFixture fixture;
    FillPlain(fixture);
    LayerCutPasteObject cut;
    QVERIFY(cut.Begin(fixture.view.get(), 1));
    QVERIFY(!cut.Begin(fixture.view.get(), 1));
    QVERIFY(cut.Cancel());
    QCOMPARE(fixture.Target(PieceKind::LayerCut).At(QPoint(7, 7), LXRGBA32i()).value, Red);
}

void TestFloatingPieceLife::nothingFloatingIsNothingToEnd()
{
    for (const KindRow& row : Kinds) {
        LexoUndoStack history;
        const auto piece = PieceFixture::MakePiece(row.kind);
        QVERIFY(piece->Cancel());
        QVERIFY(!piece->Commit(&history));
        QVERIFY(piece->Move(QPoint(1, 1)));
        QCOMPARE(history.count(), 0);
    }
}

void TestFloatingPieceLife::onAnAdjustmentLayerTheSelectionAloneMoves_data()
{
    QTest::addColumn<PieceKind>("kind");
    QTest::newRow("layer copy") << PieceKind::LayerCopy;
    QTest::newRow("layer cut") << PieceKind::LayerCut;
}

void TestFloatingPieceLife::onAnAdjustmentLayerTheSelectionAloneMoves()
{
    QFETCH(PieceKind, kind);
    PieceFixture fixture;
    AddAdjustmentLayer(fixture);

    const auto cancelled = PieceFixture::MakePiece(kind);
    QVERIFY(!cancelled->Begin(fixture.view.get(), 1));
    QVERIFY(cancelled->Move(QPoint(9, 9)));
    QCOMPARE(fixture.document->GetSelectionMaskOffset(), QPoint(9, 9));
    QCOMPARE(FloatingRect(fixture), QRect());
    QVERIFY(cancelled->Cancel());
    QCOMPARE(fixture.document->GetSelectionMaskOffset(), QPoint(5, 5));

    const auto committed = PieceFixture::MakePiece(kind);
    QVERIFY(!committed->Begin(fixture.view.get(), 1));
    QVERIFY(committed->Move(QPoint(9, 9)));
    QSignalSpy changed(&fixture.history, &LexoUndoStack::historyChanged);
    QVERIFY(committed->Commit(&fixture.history));
    QCOMPARE(fixture.history.undoText(), QString("Cut"));
    QCOMPARE(CommandsOf(changed), 1);
    fixture.history.undo();
    QCOMPARE(fixture.document->GetSelectionMaskOffset(), QPoint(5, 5));
}

void TestFloatingPieceLife::aMaskOfAnAdjustmentLayerFloatsLikeAnother()
{
    PieceFixture fixture;
    AddAdjustmentLayer(fixture);
    MaskCutPasteObject cut;
    QVERIFY(cut.Begin(fixture.view.get(), 1));
    QCOMPARE(fixture.document->GetAdditionalMaskGeometry(1), QRect(5, 5, 10, 10));
    QVERIFY(cut.Cancel());
}

void TestFloatingPieceLife::droppedWhileItFloatsItLeavesEveryByte_data()
{
    AddKinds();
}

void TestFloatingPieceLife::droppedWhileItFloatsItLeavesEveryByte()
{
    QFETCH(PieceKind, kind);
    PieceFixture fixture;
    Random random(11);
    fixture.FillWithNoise(random);
    const PieceTwin::Placed before = fixture.Target(kind);
    auto piece = PieceFixture::MakePiece(kind);
    QVERIFY(piece->Begin(fixture.view.get(), 1));
    QVERIFY(piece->Move(QPoint(2, 2)));
    piece.reset();
    QCOMPARE(fixture.Target(kind).rect, before.rect);
    QCOMPARE(TestImages::Difference(fixture.Target(kind).pixels, before.pixels), QString());
    QCOMPARE(FloatingRect(fixture), QRect());
}

void TestFloatingPieceLife::aLiftThatFailsLeavesNothingBehind_data()
{
    AddKinds();
}

void TestFloatingPieceLife::aLiftThatFailsLeavesNothingBehind()
{
    QFETCH(PieceKind, kind);
    PieceFixture fixture;
    FillSoft(fixture);
    const QStringList before = fixture.Describe();
    int failures = 0;
    for (bool hasBegun = false; !hasBegun; ++failures) {
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, failures + 1);
        const auto piece = PieceFixture::MakePiece(kind);
        QTest::ignoreMessage(QtDebugMsg, Report(kind, "Unexpected exception"));
        hasBegun = piece->Begin(fixture.view.get(), 1);
        FaultSeams::Reset();
        if (hasBegun) {
            // Nothing was reported this time: take the expected message up.
            qDebug("Unexpected exception: line=0, file=\"src/movetoolprivate/%s\"", FileOf(kind));
            QVERIFY(piece->Cancel());
        }
        QCOMPARE(FloatingRect(fixture), QRect());
        QCOMPARE(fixture.Describe(), before);
    }
    QVERIFY(failures > 1);
}

void TestFloatingPieceLife::aStrangeFailureGoesOn()
{
    PieceFixture fixture;
    FillPlain(fixture);
    const QStringList before = fixture.Describe();
    {
        LayerCutPasteObject cut;
        FaultSeams::FailNth(FaultSeams::Seam::StrangeTileAllocation, 1);
        QTest::ignoreMessage(QtDebugMsg, Report(PieceKind::LayerCut, "Unexpected unknown exception"));
        QVERIFY_EXCEPTION_THROWN(cut.Begin(fixture.view.get(), 1), FaultSeams::StrangeFailure);
    }
    QCOMPARE(FloatingRect(fixture), QRect());
    QCOMPARE(fixture.Describe(), before);
}

void TestFloatingPieceLife::aLandingThatFailsCanBeCancelled_data()
{
    AddKinds();
}

void TestFloatingPieceLife::aLandingThatFailsCanBeCancelled()
{
    QFETCH(PieceKind, kind);
    int failures = 0;
    for (bool hasLanded = false; !hasLanded; ++failures) {
        PieceFixture fixture;
        FillSoft(fixture);
        const QStringList before = fixture.Describe();
        const auto piece = PieceFixture::MakePiece(kind);
        QVERIFY(piece->Begin(fixture.view.get(), 1));
        QVERIFY(piece->Move(fixture.document->GetSelectionMaskOffset() + QPoint(2, 1)));
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, failures + 1);
        QTest::ignoreMessage(QtDebugMsg, Report(kind, "Unexpected exception"));
        hasLanded = piece->Commit(&fixture.history);
        FaultSeams::Reset();
        QVERIFY(!fixture.history.isMacroOpen());
        QCOMPARE(fixture.history.count(), hasLanded ? 1 : 0);
        QCOMPARE(fixture.history.isClean(), !hasLanded);
        if (hasLanded) {
            qDebug("Unexpected exception: line=0, file=\"src/movetoolprivate/%s\"", FileOf(kind));
            fixture.history.undo();
        } else {
            QVERIFY(piece->Cancel());
        }
        QCOMPARE(FloatingRect(fixture), QRect());
        QCOMPARE(fixture.Describe(), before);
    }
    QVERIFY(failures > 1);
}

void TestFloatingPieceLife::aCancelThatFailsCanBeRepeated()
{
    PieceFixture fixture;
    FillSoft(fixture);
    const QStringList before = fixture.Describe();
    LayerCutPasteObject cut;
    QVERIFY(cut.Begin(fixture.view.get(), 1));
    // A tile that is shared must be detached before it is written.
    const LXImage32 shared = *fixture.document->GetLayerImage(1);
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    QTest::ignoreMessage(QtDebugMsg, Report(PieceKind::LayerCut, "Unexpected exception"));
    QVERIFY(!cut.Cancel());
    FaultSeams::Reset();
    QVERIFY(cut.Cancel());
    QCOMPARE(fixture.Describe(), before);
}

void TestFloatingPieceLife::theCursorWaitsWhileALargePieceIsWorkedOn()
{
    for (const int side : {1024, 1000}) {
        const bool isLarge = side == 1024;
        PieceFixture fixture(QSize(1100, 1100));
        fixture.document->AddLayer("layer", Filled(QSize(1100, 1100), Red), QPoint());
        fixture.document->SetSelectionMask(Filled(QSize(side, side), 0xFF000000), QPoint(5, 5));
        QVector<bool> waits;
        connect(fixture.document.get(), &LXDocumentInterface::CompositionChanged,
                [&waits] { waits << (QGuiApplication::overrideCursor() != nullptr); });
        LayerCutPasteObject cut;
        QVERIFY(cut.Begin(fixture.view.get(), 1));
        QVERIFY(!waits.isEmpty());
        QCOMPARE(waits.count(isLarge), waits.size());
        QVERIFY(!QGuiApplication::overrideCursor());
        waits.clear();
        QVERIFY(cut.Commit(&fixture.history));
        QVERIFY(!waits.isEmpty());
        QCOMPARE(waits.count(isLarge), waits.size());
        QVERIFY(!QGuiApplication::overrideCursor());
    }
}

void TestFloatingPieceLife::aMoveThatFailsIsReportedAndAnswersFalse()
{
    for (const KindRow& row : Kinds) {
        PieceFixture fixture;
        FillPlain(fixture);
        const auto piece = PieceFixture::MakePiece(row.kind);
        QVERIFY(piece->Begin(fixture.view.get(), 1));
        const auto failing = connect(fixture.document.get(), &LXDocumentInterface::AboutSelectionMove,
                                     [] { throw std::runtime_error("no way"); });
        QTest::ignoreMessage(QtDebugMsg, Report(row.kind, "Unexpected exception"));
        QVERIFY(!piece->Move(QPoint(8, 8)));
        disconnect(failing);
        QVERIFY(piece->Cancel());
        QCOMPARE(fixture.document->GetSelectionMaskOffset(), QPoint(5, 5));
    }
}

ZK_REGISTER_TEST(tst_floatingpiecelife, TestFloatingPieceLife)
#include "tst_floatingpiecelife.moc"
