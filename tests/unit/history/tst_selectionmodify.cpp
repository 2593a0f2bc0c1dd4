#include "document/LXDocumentInterface.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/SelectionModify.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

using Kind = SelectionModify::Kind;

namespace {
const QRect Canvas(0, 0, 40, 30);

PlacedMask Selected(const QRect& rect, quint32 color = 0xFF000000)
{
    PlacedMask placed{LXImage32(rect.width(), rect.height()), rect.topLeft()};
    placed.mask.Fill(LXRGBA32i(color));
    return placed;
}

QRect RectOf(const QRect& selected, Kind kind, int radius)
{
    return SelectionModify::Modified(Selected(selected), Canvas, kind, radius).Rect();
}
} // namespace

/// Selections made of the present one.
class TestSelectionModify : public QObject
{
    Q_OBJECT

private slots:
    void whatGrowsHasRoomAroundIt();
    void nothingGrowsBeyondTheCanvas();
    void whatLiesOutsideTheCanvasStays();
    void whatShrinksIsTrimmed();
    void tooMuchShrinkingLeavesNothing();
    void everyKindOfNothingIsNothing();
    void oneStepLeadsThereAndBack();
};

void TestSelectionModify::whatGrowsHasRoomAroundIt()
{
    const QRect square(15, 10, 5, 5);
    QCOMPARE(RectOf(square, Kind::Grow, 3), square.adjusted(-3, -3, 3, 3));
    QCOMPARE(RectOf(square, Kind::Border, 3), square.adjusted(-3, -3, 3, 3));
    QCOMPARE(RectOf(square, Kind::Feather, 1), square.adjusted(-3, -3, 3, 3));
    QCOMPARE(RectOf(square, Kind::Smooth, 1), square);
}

void TestSelectionModify::nothingGrowsBeyondTheCanvas()
{
    for (const Kind kind : {Kind::Grow, Kind::Border, Kind::Feather})
        QCOMPARE(RectOf(QRect(1, 1, 38, 28), kind, 4), Canvas);
}

void TestSelectionModify::whatLiesOutsideTheCanvasStays()
{
    // It has room up to its own former edge.
    QCOMPARE(RectOf(QRect(-10, 5, 20, 10), Kind::Grow, 2), QRect(-10, 3, 22, 14));
}

void TestSelectionModify::whatShrinksIsTrimmed()
{
    QCOMPARE(RectOf(QRect(10, 10, 12, 9), Kind::Shrink, 3), QRect(13, 13, 6, 3));
    QCOMPARE(RectOf(Canvas, Kind::Shrink, 2), Canvas.adjusted(2, 2, -2, -2));
}

void TestSelectionModify::tooMuchShrinkingLeavesNothing()
{
    QVERIFY(SelectionModify::Modified(Selected(QRect(10, 10, 12, 9)), Canvas, Kind::Shrink, 5).mask.IsNull());
}

void TestSelectionModify::everyKindOfNothingIsNothing()
{
    for (const Kind kind : {Kind::Grow, Kind::Shrink, Kind::Border, Kind::Feather, Kind::Smooth})
        QVERIFY(SelectionModify::Modified(PlacedMask(), Canvas, kind, 5).mask.IsNull());
}

void TestSelectionModify::oneStepLeadsThereAndBack()
{
    const DocumentFixture::OwnedDocument document = DocumentFixture::Make(Canvas.size());
    LexoUndoStack history;
    const PlacedMask before = Selected(QRect(15, 10, 5, 5), 0x80000000);
    document->SetSelectionMask(before.mask, before.offset);
    const PlacedMask after = SelectionModify::Modified(before, Canvas, Kind::Grow, 2);
    document->SetSelectionMask(after.mask, after.offset);

    history.push(SelectionModify::StepFrom(before, document.get(), "Grow selection"));
    QCOMPARE(document->GetSelectionGeometry(), after.Rect());
    QCOMPARE(history.text(0), QString("Grow selection"));
    history.undo();
    QCOMPARE(document->GetSelectionGeometry(), before.Rect());
    QCOMPARE(document->GetSelectionMask().GetColor(2, 2).value, 0x80000000U);
    history.redo();
    QCOMPARE(document->GetSelectionGeometry(), after.Rect());
    QCOMPARE(document->GetSelectionMask().GetColor(0, 4).value, 0x80000000U);
    QCOMPARE(document->GetSelectionMask().GetColor(0, 0).value, 0U); // a disk's corner
}

ZK_REGISTER_TEST(tst_selectionmodify, TestSelectionModify)
#include "tst_selectionmodify.moc"
