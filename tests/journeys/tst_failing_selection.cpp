#include "app/MainWindow.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"
#include "document/SelectionChannels.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "image/LXTileExceptions.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QTest>

/// Kept selections that can't be brought back: the person is told, everything stays, and the next try works.
class TestFailingSelection : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void aFailedLoadIsToldAndChangesNothing_data();
    void aFailedLoadIsToldAndChangesNothing();
};

namespace {
enum Failure
{
    NoTile,
    FullSwap,
    NoSwap,
};

void Fail(Failure failure)
{
    switch (failure) {
    case NoTile: return FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    case FullSwap: throw LXTMSwapError();
    case NoSwap: throw LXTMSwapFileError();
    }
}

LXImage32 Coverage(quint32 value)
{
    LXImage32 mask(10, 10);
    mask.Fill(LXRGBA32i(value << 24));
    return mask;
}

/// Intersects the selection with the kept one.
void Load(EditorFixture& editor)
{
    editor.GetInput().WhenModalShows<QDialog>([&](QDialog* dialog) {
        dialog->findChild<QComboBox*>("m_pModeCmb")->setCurrentIndex(3);
        editor.GetInput().Key(Qt::Key_Return);
    });
    editor.Window()->findChild<QAction*>("loadSelectionAction")->trigger();
}

int CoverageAt(const EditorFixture& editor, const QPoint& pos)
{
    const QPoint inMask = pos - editor.Document()->GetSelectionMaskOffset();
    return editor.Document()->GetSelectionMask().GetColor(inMask.x(), inMask.y()).Alpha();
}
} // namespace

void TestFailingSelection::aFailedLoadIsToldAndChangesNothing_data()
{
    QTest::addColumn<int>("failure");
    QTest::newRow("no tile") << int(NoTile);
    QTest::newRow("full swap") << int(FullSwap);
    QTest::newRow("no swap") << int(NoSwap);
}

void TestFailingSelection::aFailedLoadIsToldAndChangesNothing()
{
    QFETCH(int, failure);
    EditorFixture editor(60, 40);
    editor.Document()->SetSelectionMask(Coverage(100), QPoint(2, 2));
    LXDocumentInterfacePrivate::Get(editor.Document())
        ->channels->Set({{QStringLiteral("Kept"), Coverage(255), QPoint(7, 7)}});
    editor.Settle();

    const auto arm = connect(editor.History(), &LexoUndoStack::aboutIndexChanged, this,
                             [failure] { Fail(Failure(failure)); });
    QStringList shown;
    editor.GetInput().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        shown = QStringList{box->windowTitle(), box->GetText()};
        editor.GetInput().Key(Qt::Key_Return);
    });
    Load(editor);
    disconnect(arm);
    QCOMPARE(shown, QStringList({"Load selection", "There is not enough memory to combine the selections."}));
    QCOMPARE(editor.HistoryTexts(), QStringList());
    QCOMPARE(editor.Document()->GetSelectionGeometry(), QRect(2, 2, 10, 10));
    QCOMPARE(CoverageAt(editor, QPoint(2, 2)), 100);
    QCOMPARE(CoverageAt(editor, QPoint(8, 8)), 100);

    Load(editor);
    QCOMPARE(editor.HistoryTexts(), QStringList{"Load selection"});
    QCOMPARE(editor.Document()->GetSelectionGeometry(), QRect(7, 7, 5, 5));
    QCOMPARE(CoverageAt(editor, QPoint(8, 8)), 100);
    editor.Settle();
}

ZK_REGISTER_TEST(tst_failing_selection, TestFailingSelection)
#include "tst_failing_selection.moc"
