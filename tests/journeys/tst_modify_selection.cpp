#include "app/MainWindow.h"
#include "document/LXDocumentInterface.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QSpinBox>
#include <QTest>

namespace {
void SelectSquare(const EditorFixture& editor)
{
    LXImage32 mask(10, 10);
    mask.Fill(LXRGBA32i(0xFF000000));
    editor.Document()->SetSelectionMask(mask, QPoint(20, 20));
}

/// So large that changing it takes a worker.
QRect SelectLargeSquare(const EditorFixture& editor)
{
    LXImage32 mask(1000, 1000);
    mask.Fill(LXRGBA32i(0xFF000000));
    editor.Document()->SetSelectionMask(mask, QPoint(250, 250));
    return QRect(250, 250, 1000, 1000);
}

/// Opens the dialog of an action, with what is done to it.
void Modify(EditorFixture& editor, const char* action, const std::function<void(QWidget*)>& inDialog)
{
    editor.GetInput().WhenModalShows(inDialog);
    editor.Window()->findChild<QAction*>(action)->trigger();
}
} // namespace

/// The sub menu "Modify" of the menu "Selection", with the keyboard alone.
class TestModifySelection : public QObject
{
    Q_OBJECT

private slots:
    void theSelectionFollowsWhatIsTyped();
    void escapeGivesTheSelectionBack();
    void theLastRadiusIsOfferedAgain();
    void theDocumentIsHeldWhileTheDialogIsOpen();
    void aBusyDocumentIsNotModified();
    void aLargeChangeIsMadeInTheBackground();
    void enterWaitsForALargeChange();
    void escapeEndsALargeChange();
    void aFailureGivesTheDocumentFree();
    void missingMemoryIsToldAndAnotherRadiusTried();
};

void TestModifySelection::theSelectionFollowsWhatIsTyped()
{
    EditorFixture editor(60, 60);
    SelectSquare(editor);
    InputDriver& input = editor.GetInput();
    QList<QRect> seen;
    Modify(editor, "growSelectionAction", [&](QWidget*) {
        seen += editor.Document()->GetSelectionGeometry();
        input.Type("3");
        seen += editor.Document()->GetSelectionGeometry();
        input.Key(Qt::Key_Up);
        seen += editor.Document()->GetSelectionGeometry();
        input.Key(Qt::Key_Return);
    });
    const QRect square(20, 20, 10, 10);
    QCOMPARE(seen, (QList<QRect>{square.adjusted(-5, -5, 5, 5), square.adjusted(-3, -3, 3, 3),
                                 square.adjusted(-4, -4, 4, 4)}));
    QCOMPARE(editor.HistoryTexts(), QStringList{"Grow selection"});
    QCOMPARE(editor.Document()->GetSelectionGeometry(), square.adjusted(-4, -4, 4, 4));
    input.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Document()->GetSelectionGeometry(), square);
    editor.Settle();
}

void TestModifySelection::escapeGivesTheSelectionBack()
{
    EditorFixture editor(60, 60);
    SelectSquare(editor);
    for (const char* action : {"growSelectionAction", "shrinkSelectionAction", "borderSelectionAction",
                               "featherSelectionAction", "smoothSelectionAction"}) {
        Modify(editor, action, [&](QWidget*) { editor.GetInput().Key(Qt::Key_Escape); });
        QCOMPARE(editor.Document()->GetSelectionGeometry(), QRect(20, 20, 10, 10));
        QCOMPARE(editor.Document()->GetSelectionMask().GetColor(0, 0).value, 0xFF000000U);
    }
    QCOMPARE(editor.HistoryTexts(), QStringList());
    editor.Settle();
}

void TestModifySelection::theLastRadiusIsOfferedAgain()
{
    EditorFixture editor(60, 60);
    SelectSquare(editor);
    Modify(editor, "featherSelectionAction", [&](QWidget*) {
        editor.GetInput().Type("2");
        editor.GetInput().Key(Qt::Key_Return);
    });
    int offered = 0;
    Modify(editor, "featherSelectionAction", [&](QWidget* dialog) {
        offered = dialog->findChild<QSpinBox*>()->value();
        editor.GetInput().Key(Qt::Key_Escape);
    });
    QCOMPARE(offered, 2);
    // Each entry has its own.
    Modify(editor, "smoothSelectionAction", [&](QWidget* dialog) {
        offered = dialog->findChild<QSpinBox*>()->value();
        editor.GetInput().Key(Qt::Key_Escape);
    });
    QCOMPARE(offered, 5);
}

void TestModifySelection::theDocumentIsHeldWhileTheDialogIsOpen()
{
    EditorFixture editor(60, 60);
    SelectSquare(editor);
    bool isHeld = false;
    Modify(editor, "shrinkSelectionAction", [&](QWidget*) {
        isHeld = editor.Document()->GetLockState();
        editor.GetInput().Key(Qt::Key_Escape);
    });
    QVERIFY(isHeld);
    QVERIFY(!editor.Document()->GetLockState());
}

void TestModifySelection::aBusyDocumentIsNotModified()
{
    EditorFixture editor(60, 60);
    QVERIFY(!editor.Window()->findChild<QAction*>("growSelectionAction")->isEnabled());
    SelectSquare(editor);
    QVERIFY(editor.Window()->findChild<QAction*>("growSelectionAction")->isEnabled());
    editor.Document()->Lock();
    QVERIFY(!editor.Window()->findChild<QAction*>("growSelectionAction")->isEnabled());
    editor.Document()->Unlock();
    QVERIFY(editor.Window()->findChild<QAction*>("growSelectionAction")->isEnabled());
}

void TestModifySelection::aLargeChangeIsMadeInTheBackground()
{
    EditorFixture editor(1500, 1500);
    const QRect square = SelectLargeSquare(editor);
    QList<QRect> seen;
    Modify(editor, "growSelectionAction", [&](QWidget* dialog) {
        const auto* bar = dialog->findChild<QProgressBar*>();
        editor.GetInput().Type("50");
        QVERIFY(bar->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!bar->isVisible(), 60000);
        seen += editor.Document()->GetSelectionGeometry();
        editor.GetInput().Key(Qt::Key_Return);
    });
    QCOMPARE(seen, QList<QRect>{square.adjusted(-50, -50, 50, 50)});
    QCOMPARE(editor.HistoryTexts(), QStringList{"Grow selection"});
    editor.History()->undo();
    QCOMPARE(editor.Document()->GetSelectionGeometry(), square);
    editor.Settle();
}

void TestModifySelection::enterWaitsForALargeChange()
{
    EditorFixture editor(1500, 1500);
    const QRect square = SelectLargeSquare(editor);
    Modify(editor, "growSelectionAction", [&](QWidget* dialog) {
        editor.GetInput().Type("50");
        editor.GetInput().Key(Qt::Key_Return);
        QVERIFY(dialog->isVisible());
        QVERIFY(!dialog->findChild<QSpinBox*>()->isEnabled());
    });
    QCOMPARE(editor.Document()->GetSelectionGeometry(), square.adjusted(-50, -50, 50, 50));
    QCOMPARE(editor.HistoryTexts(), QStringList{"Grow selection"});
    editor.Settle();
}

void TestModifySelection::escapeEndsALargeChange()
{
    EditorFixture editor(1500, 1500);
    const QRect square = SelectLargeSquare(editor);
    Modify(editor, "smoothSelectionAction", [&](QWidget*) {
        editor.GetInput().Type("100");
        editor.GetInput().Key(Qt::Key_Escape);
    });
    editor.Settle();
    QCOMPARE(editor.Document()->GetSelectionGeometry(), square);
    QCOMPARE(editor.HistoryTexts(), QStringList());
}

void TestModifySelection::aFailureGivesTheDocumentFree()
{
    EditorFixture editor(60, 60);
    SelectSquare(editor);
    editor.Settle();
    auto* grow = editor.Window()->findChild<QAction*>("growSelectionAction");
    const auto disarm = qScopeGuard([] { FaultSeams::Reset(); });
    // Nobody expects this one, so it comes out of the menu.
    FaultSeams::FailNth(FaultSeams::Seam::StrangeTileAllocation, 1);
    bool hasFailed = false;
    try {
        grow->trigger();
    } catch (const FaultSeams::StrangeFailure&) {
        hasFailed = true;
    }
    QVERIFY(hasFailed);
    QVERIFY(!editor.Document()->GetLockState());
    QCOMPARE(editor.Document()->GetSelectionGeometry(), QRect(20, 20, 10, 10));
    QCOMPARE(editor.HistoryTexts(), QStringList());

    Modify(editor, "growSelectionAction", [&](QWidget*) { editor.GetInput().Key(Qt::Key_Return); });
    QCOMPARE(editor.HistoryTexts(), QStringList{"Grow selection"});
    editor.Settle();
}

void TestModifySelection::missingMemoryIsToldAndAnotherRadiusTried()
{
    EditorFixture editor(60, 60);
    SelectSquare(editor);
    editor.Settle();
    const QRect square(20, 20, 10, 10);
    const auto disarm = qScopeGuard([] { FaultSeams::Reset(); });
    QString note;
    bool mayAccept = true;
    QList<QRect> seen;
    Modify(editor, "growSelectionAction", [&](QWidget* dialog) {
        const auto* ok = dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
        seen += editor.Document()->GetSelectionGeometry();
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
        editor.GetInput().Type("3");
        note = dialog->findChild<QLabel*>("m_pNoteLbl")->text();
        mayAccept = ok->isEnabled();
        seen += editor.Document()->GetSelectionGeometry();
        // Enter tries once more, and accepts nothing.
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
        editor.GetInput().Key(Qt::Key_Return);
        QVERIFY(dialog->isVisible());

        editor.GetInput().Key(Qt::Key_Up);
        QCOMPARE(dialog->findChild<QLabel*>("m_pNoteLbl")->text(), QString());
        QVERIFY(ok->isEnabled());
        seen += editor.Document()->GetSelectionGeometry();
        editor.GetInput().Key(Qt::Key_Return);
    });
    QCOMPARE(note, QString("There is not enough memory."));
    QVERIFY(!mayAccept);
    QCOMPARE(seen, (QList<QRect>{square.adjusted(-5, -5, 5, 5), square, square.adjusted(-4, -4, 4, 4)}));
    QCOMPARE(editor.HistoryTexts(), QStringList{"Grow selection"});
    editor.History()->undo();
    QCOMPARE(editor.Document()->GetSelectionGeometry(), square);
    editor.Settle();
}

ZK_REGISTER_TEST(tst_modify_selection, TestModifySelection)
#include "tst_modify_selection.moc"
