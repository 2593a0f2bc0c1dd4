#include "document/LXDocumentInterface.h"
#include "history/LexoUndoStack.h"
#include "history/MoveCommand.h"
#include "history/MoveCommandData.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

using namespace DocumentFixture;

namespace {
LexoCommand* Move(LXDocumentInterface* document, const QPoint& delta, const QList<uint>& layers,
                  const QList<uint>& masks, bool apply = true)
{
    auto* data = new MoveCommandData;
    data->SetDelta(delta);
    data->SetLayers(layers);
    data->SetMasks(masks);
    auto* command = new MoveCommand(document, apply);
    command->SetCommandData(data);
    return command;
}

OwnedDocument MakeDocument()
{
    OwnedDocument document = Make(QSize(100, 100));
    document->AddLayer("one", Filled(QSize(10, 10), 0xFF000000), QPoint(0, 0));
    document->AddLayer("two", Filled(QSize(10, 10), 0xFF000000), QPoint(20, 20));
    document->AddMask(1, true);
    document->SetMaskImage(1, Filled(QSize(5, 5), 0x80000000), QPoint(22, 22));
    document->SetSelectionMask(Filled(QSize(5, 5), 0xFF000000), QPoint(50, 50));
    return document;
}
} // namespace

class TestMoveCommand : public QObject
{
    Q_OBJECT

private slots:
    void movesTheListedLayersAndMasksAndTheSelection();
    void emptyListsMoveOnlyTheSelection();
    void whatIsInPlaceStaysThere();
    void aLayerAndItsMaskAreRepaintedOnce();
    void listedLayersThatAreGoneAreHarmless();
};

void TestMoveCommand::movesTheListedLayersAndMasksAndTheSelection()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(Move(document.get(), QPoint(3, -4), {2}, {1}));
    QCOMPARE(document->GetLayerGeometry(1), QRect(20, 20, 10, 10));
    QCOMPARE(document->GetMaskGeometry(1), QRect(25, 18, 5, 5));
    QCOMPARE(document->GetLayerGeometry(2), QRect(3, -4, 10, 10));
    QCOMPARE(document->GetSelectionGeometry(), QRect(53, 46, 5, 5));
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
}

void TestMoveCommand::emptyListsMoveOnlyTheSelection()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    SignalLog log(document.get());
    stack.push(Move(document.get(), QPoint(1, 1), {}, {}));
    QCOMPARE(log.Take(), QStringList({"SelectionChanged"}));
    QCOMPARE(document->GetSelectionGeometry(), QRect(51, 51, 5, 5));
}

void TestMoveCommand::whatIsInPlaceStaysThere()
{
    const OwnedDocument document = MakeDocument();
    document->SetLayerOffset(1, QPoint(30, 30));
    document->TranslateSelection(QPoint(10, 10));
    const QStringList moved = Describe(document.get());
    LexoUndoStack stack;
    stack.push(Move(document.get(), QPoint(10, 10), {1}, {}, false));
    QCOMPARE(Describe(document.get()), moved);
    stack.undo();
    QCOMPARE(document->GetLayerGeometry(1), QRect(20, 20, 10, 10));
    QCOMPARE(document->GetSelectionGeometry(), QRect(50, 50, 5, 5));
    stack.redo();
    QCOMPARE(Describe(document.get()), moved);
}

void TestMoveCommand::aLayerAndItsMaskAreRepaintedOnce()
{
    const OwnedDocument document = MakeDocument();
    document->SetSelectionMask(LXImage32(), QPoint());
    LexoUndoStack stack;
    SignalLog log(document.get());
    stack.push(Move(document.get(), QPoint(10, 0), {1}, {1}));
    QCOMPARE(log.Take(), QStringList({"LayerPositionChanged 1 (30,20)", "MaskPositionChanged 1 (32,22)",
                                      "CompositionChanged (20,20 20x10)"}));
}

void TestMoveCommand::listedLayersThatAreGoneAreHarmless()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    stack.push(Move(document.get(), QPoint(10, 0), {7, 0}, {7, 2}));
    QCOMPARE(document->GetLayerGeometry(2), QRect(0, 0, 10, 10));
}

ZK_REGISTER_TEST(tst_movecommand, TestMoveCommand)
#include "tst_movecommand.moc"
