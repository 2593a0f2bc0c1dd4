#include "document/LXDocumentInterface.h"
#include "history/LexoUndoStack.h"
#include "history/MWSelectionCommand.h"
#include "history/MWSelectionCommandData.h"
#include "history/SelectionCombine.h"
#include "history/SelectionCommand.h"
#include "history/SelectionCommandData.h"
#include "history/SelectionMoveCommand.h"
#include "history/SelectionMoveCommandData.h"
#include "support/DocumentFixture.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"

#include <QTest>

using namespace DocumentFixture;
using Op = SelectionCommandData::LogicalOp;

Q_DECLARE_METATYPE(Op)

namespace {
/// Coverage of a document pixel; 0 outside the mask.
int CoverageAt(const PlacedMask& placed, const QPoint& docPos)
{
    const QPoint pos = docPos - placed.offset;
    return placed.mask.Rect().contains(pos) ? placed.mask.GetColor(pos.x(), pos.y()).Alpha() : 0;
}

int TwinOf(int selected, int added, Op op)
{
    switch (op) {
    case SelectionCommandData::Unite: return qMax(selected, added);
    case SelectionCommandData::Intersect: return (selected * added + 127) / 255;
    case SelectionCommandData::Subtract: return selected - (selected * added + 127) / 255;
    case SelectionCommandData::Replace: break;
    }
    return added;
}

/// Another value in each pixel: empty, whole and all between.
LXImage32 SoftMask(Random& random, const QSize& size)
{
    PlainImage noise = TestImages::Random(size.width(), size.height(), random);
    for (LXRGBA32i& pixel : noise.pixels)
        pixel = LXRGBA32i(pixel.value & 0xFF000000);
    return TestImages::ToTiles(noise);
}

PlacedMask SelectionOf(const LXDocumentInterface* document)
{
    return {document->GetSelectionMask(), document->GetSelectionMaskOffset()};
}

LexoCommand* Wand(LXDocumentInterface* document, const PlacedMask& added, Op op, bool apply = true)
{
    auto* data = new MWSelectionCommandData;
    data->SetNoUndoSelection(!document->HasSelection());
    data->SetUndoSel(document->GetSelectionMaskOffset(), document->GetSelectionMask());
    data->SetRedoSel(added.offset, added.mask, op);
    auto* command = new MWSelectionCommand(document, apply);
    command->SetCommandData(data);
    return command;
}

LexoCommand* PathSelection(LXDocumentInterface* document, const QPainterPath& path, Op op)
{
    auto* data = new SelectionCommandData;
    data->SetSelectionOp(op);
    data->SetSelectionGeometry(path);
    data->SetUndoSel(document->GetSelectionMaskOffset(), document->GetSelectionMask());
    auto* command = new SelectionCommand(document);
    command->SetCommandData(data);
    return command;
}

QPainterPath RectPath(const QRectF& rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}
} // namespace

class TestSelectionCommands : public QObject
{
    Q_OBJECT

private slots:
    void masksCombineAsTheTwinTells_data();
    void masksCombineAsTheTwinTells();
    void resultsAreTrimmed();
    void anAllZeroResultIsNoSelection();
    void aPathIsAntialiasedAndClippedToTheCanvas();
    void aPathThatReachesFarBeyondTheCanvasSelectsTheCanvas_data();
    void aPathThatReachesFarBeyondTheCanvasSelectsTheCanvas();
    void anEmptyPathDeselects();
    void undoBringsTheStoredSelectionBack();
    void undoWithoutAnOldSelectionDeselects();
    void aSelectionThatIsThereIsLeftAlone();
    void theSelectionMoveTakesItsEndFromTheDocument();
    void theSelectionMoveAsksNobody();
    void undoDoesNotBecomeTheNewEnd();
    void signalsOfUndoAreInOrder();
};

void TestSelectionCommands::masksCombineAsTheTwinTells_data()
{
    QTest::addColumn<Op>("op");
    QTest::newRow("unite") << SelectionCommandData::Unite;
    QTest::newRow("intersect") << SelectionCommandData::Intersect;
    QTest::newRow("subtract") << SelectionCommandData::Subtract;
    QTest::newRow("replace") << SelectionCommandData::Replace;
}

void TestSelectionCommands::masksCombineAsTheTwinTells()
{
    QFETCH(Op, op);
    Random random(4);
    const QRect area(-40, -40, 300, 200);
    for (int round = 0; round < 20; ++round) {
        const QRect first = PickRect(random, area, 0);
        const QRect second = PickRect(random, area, 0);
        const PlacedMask selection =
            round == 0 ? PlacedMask() : PlacedMask{SoftMask(random, first.size()), first.topLeft()};
        const PlacedMask added =
            round == 1 ? PlacedMask() : PlacedMask{SoftMask(random, second.size()), second.topLeft()};
        const PlacedMask combined = SelectionCombine::Combined(selection, added, op);
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                const QPoint pos(x, y);
                QCOMPARE(CoverageAt(combined, pos),
                         TwinOf(CoverageAt(selection, pos), CoverageAt(added, pos), op));
            }
        }
    }
}

void TestSelectionCommands::resultsAreTrimmed()
{
    LXImage32 mask(200, 150);
    mask.SetColor(140, 20, LXRGBA32i(0x10000000));
    mask.SetColor(142, 23, LXRGBA32i(0xFF000000));
    const PlacedMask trimmed =
        SelectionCombine::Combined(PlacedMask(), {mask, QPoint(-5, 5)}, SelectionCommandData::Replace);
    QCOMPARE(trimmed.Rect(), QRect(135, 25, 3, 4));
    QCOMPARE(CoverageAt(trimmed, QPoint(135, 25)), 0x10);
    QCOMPARE(CoverageAt(trimmed, QPoint(137, 28)), 0xFF);
}

void TestSelectionCommands::anAllZeroResultIsNoSelection()
{
    const OwnedDocument document = Make(QSize(50, 50));
    document->SetSelectionMask(Filled(QSize(10, 10), 0xFF000000), QPoint(5, 5));
    LexoUndoStack stack;
    stack.push(
        Wand(document.get(), {Filled(QSize(20, 20), 0xFF000000), QPoint()}, SelectionCommandData::Subtract));
    QVERIFY(!document->HasSelection());
    stack.undo();
    QCOMPARE(document->GetSelectionGeometry(), QRect(5, 5, 10, 10));
}

void TestSelectionCommands::aPathIsAntialiasedAndClippedToTheCanvas()
{
    const OwnedDocument document = Make(QSize(50, 40));
    LexoUndoStack stack;
    stack.push(
        PathSelection(document.get(), RectPath(QRectF(-10, 10.5, 20.5, 100)), SelectionCommandData::Replace));
    QCOMPARE(document->GetSelectionGeometry(), QRect(0, 10, 11, 30));
    const PlacedMask selection = SelectionOf(document.get());
    QCOMPARE(CoverageAt(selection, QPoint(5, 20)), 255);
    QVERIFY(qAbs(CoverageAt(selection, QPoint(5, 10)) - 128) <= 2);
    QVERIFY(qAbs(CoverageAt(selection, QPoint(10, 20)) - 128) <= 2);
    QCOMPARE(selection.mask.GetColor(5, 15).value, 0xFF000000u);
}

void TestSelectionCommands::aPathThatReachesFarBeyondTheCanvasSelectsTheCanvas_data()
{
    QTest::addColumn<double>("reach");
    QTest::newRow("beyond the rasterizer's coordinates") << 1e5;
    QTest::newRow("beyond what an int holds") << 1e12;
}

void TestSelectionCommands::aPathThatReachesFarBeyondTheCanvasSelectsTheCanvas()
{
    QFETCH(double, reach);
    const OwnedDocument document = Make(QSize(50, 40));
    QPainterPath path;
    path.addRect(QRectF(-reach, -reach, 2 * reach, 2 * reach));
    LexoUndoStack stack;
    stack.push(PathSelection(document.get(), path, SelectionCommandData::Replace));
    QCOMPARE(document->GetSelectionGeometry(), QRect(0, 0, 50, 40));
    QVERIFY(AreEqual(document->GetSelectionMask(), Filled(QSize(50, 40), 0xFF000000)));
}

void TestSelectionCommands::anEmptyPathDeselects()
{
    const OwnedDocument document = Make(QSize(50, 40));
    document->SetSelectionMask(Filled(QSize(10, 10), 0xFF000000), QPoint(5, 5));
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(PathSelection(document.get(), QPainterPath(), SelectionCommandData::Replace));
    QVERIFY(!document->HasSelection());
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
}

void TestSelectionCommands::undoBringsTheStoredSelectionBack()
{
    Random random(8);
    const OwnedDocument document = Make(QSize(150, 140));
    document->SetSelectionMask(MaskNoise(random, QSize(60, 70)), QPoint(-5, 30));
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(
        Wand(document.get(), {MaskNoise(random, QSize(130, 40)), QPoint(9, 9)}, SelectionCommandData::Unite));
    const QStringList after = Describe(document.get());
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
    stack.redo();
    QCOMPARE(Describe(document.get()), after);
}

void TestSelectionCommands::undoWithoutAnOldSelectionDeselects()
{
    const OwnedDocument document = Make(QSize(50, 40));
    auto* data = new MWSelectionCommandData;
    data->SetNoUndoSelection(true);
    // What is stored must not come back.
    data->SetUndoSel(QPoint(), Filled(QSize(5, 5), 0xFF000000));
    data->SetRedoSel(QPoint(), Filled(QSize(5, 5), 0xFF000000), SelectionCommandData::Replace);
    auto* command = new MWSelectionCommand(document.get(), true);
    command->SetCommandData(data);
    LexoUndoStack stack;
    stack.push(command);
    QVERIFY(document->HasSelection());
    stack.undo();
    QVERIFY(!document->HasSelection());
}

void TestSelectionCommands::aSelectionThatIsThereIsLeftAlone()
{
    const OwnedDocument document = Make(QSize(50, 40));
    LexoCommand* command = Wand(document.get(), {Filled(QSize(5, 5), 0xFF000000), QPoint(1, 1)},
                                SelectionCommandData::Replace, false);
    document->SetSelectionMask(Filled(QSize(9, 9), 0xFF000000), QPoint(3, 3));
    LexoUndoStack stack;
    stack.push(command);
    QCOMPARE(document->GetSelectionGeometry(), QRect(3, 3, 9, 9));
    stack.undo();
    stack.redo();
    QCOMPARE(document->GetSelectionGeometry(), QRect(1, 1, 5, 5));
}

void TestSelectionCommands::theSelectionMoveTakesItsEndFromTheDocument()
{
    const OwnedDocument document = Make(QSize(50, 40));
    document->SetSelectionMask(Filled(QSize(5, 5), 0xFF000000), QPoint(1, 1));
    auto* data = new SelectionMoveCommandData;
    data->SetUndoPosition(QPoint(1, 1));
    data->SetRedoPosition(QPoint(1, 1));
    auto* command = new SelectionMoveCommand(document.get());
    QVERIFY(command->SetCommandData(data));
    LexoUndoStack stack;
    stack.pushDelayed(command);
    document->TranslateSelection(QPoint(3, 0));
    document->TranslateSelection(QPoint(0, 4));
    stack.commit();
    QCOMPARE(stack.text(0), QString("Move selection"));
    QCOMPARE(document->GetSelectionGeometry(), QRect(4, 5, 5, 5));
    stack.undo();
    QCOMPARE(document->GetSelectionGeometry(), QRect(1, 1, 5, 5));
    stack.redo();
    QCOMPARE(document->GetSelectionGeometry(), QRect(4, 5, 5, 5));
}

void TestSelectionCommands::theSelectionMoveAsksNobody()
{
    const OwnedDocument document = Make(QSize(50, 40));
    document->SetSelectionMask(Filled(QSize(5, 5), 0xFF000000), QPoint(1, 1));
    auto* data = new SelectionMoveCommandData;
    data->SetUndoPosition(QPoint(1, 1));
    data->SetRedoPosition(QPoint(9, 9));
    auto* command = new SelectionMoveCommand(document.get());
    command->SetCommandData(data);
    LexoUndoStack stack;
    SignalLog log(document.get());
    stack.push(command);
    stack.undo();
    QCOMPARE(log.Take(), QStringList({"SelectionChanged", "SelectionChanged"}));
}

void TestSelectionCommands::undoDoesNotBecomeTheNewEnd()
{
    const OwnedDocument document = Make(QSize(50, 40));
    document->SetSelectionMask(Filled(QSize(5, 5), 0xFF000000), QPoint(1, 1));
    auto* data = new SelectionMoveCommandData;
    data->SetUndoPosition(QPoint(1, 1));
    auto* command = new SelectionMoveCommand(document.get());
    command->SetCommandData(data);
    LexoUndoStack stack;
    stack.pushDelayed(command);
    document->TranslateSelection(QPoint(3, 0));
    stack.undo();
    QCOMPARE(data->GetRedoPosition(), QPoint(4, 1));
    stack.redo();
    QCOMPARE(document->GetSelectionGeometry(), QRect(4, 1, 5, 5));
}

void TestSelectionCommands::signalsOfUndoAreInOrder()
{
    const OwnedDocument document = Make(QSize(50, 40));
    LexoUndoStack stack;
    stack.push(PathSelection(document.get(), RectPath(QRectF(1, 1, 5, 5)), SelectionCommandData::Replace));
    QStringList order;
    connect(&stack, &LexoUndoStack::aboutIndexChanged, this, [&] { order << "aboutIndexChanged"; });
    connect(document.get(), &LXDocumentInterface::SelectionChanged, this,
            [&] { order << "SelectionChanged"; });
    connect(&stack, &LexoUndoStack::indexChanged, this, [&] { order << "indexChanged"; });
    stack.undo();
    QCOMPARE(order, QStringList({"aboutIndexChanged", "SelectionChanged", "indexChanged"}));
}

ZK_REGISTER_TEST(tst_selectioncommands, TestSelectionCommands)
#include "tst_selectioncommands.moc"
