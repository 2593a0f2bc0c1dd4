#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

using FaultSeams::Seam;

/// Clicks of the fill can that go wrong in every place where they can: the log and the person are told, the
/// picture stays, everything held is given back (the fixture looks after each click), and the next click
/// works.
class TestFailingFill : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void aFailedJobIsReportedAndRolledBack_data();
    void aFailedJobIsReportedAndRolledBack();
    void aFailedMaskJobIsReportedAndRolledBack_data();
    void aFailedMaskJobIsReportedAndRolledBack();
    void aFailedPushIsReportedAndRolledBack_data();
    void aFailedPushIsReportedAndRolledBack();
    void aJobThatFailsUnderTheProgressDialogClosesIt();
    void aRefusedLockFillsNothingInSilence();
};

namespace {
constexpr int Width = 40;
constexpr int Height = 30;
const QPointF Inside(20, 15);
const QStringList OperationError{"Operation error", "Cannot fill. Unexpected error occurred."};

const char* const KnownException = "Unexpected exception: line=%1, file=\"src/fillcan/FillCan_p\"";
const char* const UnknownException = "Unexpected unknown exception: line=%1, file=\"src/fillcan/FillCan_p\"";

/// The report in the log that has to come.
void ExpectReport(const QString& format, const QString& line)
{
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(format.arg(line)));
}

/// Clicks, and closes the message that has to come. Its title and text; nothing unless it is a box of the
/// main window that tells of an error and can only be closed.
QStringList ClickAndReadMessage(EditorFixture& editor)
{
    QStringList shown;
    editor.GetInput().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        const QList<QPushButton*> buttons = box->findChildren<QPushButton*>();
        const bool isOfTheWindow = box->parentWidget() == editor.Window();
        if (isOfTheWindow && box->GetIcon() == LXMessageBox::CriticalIcon && buttons.size() == 1) {
            shown = QStringList{box->windowTitle(), box->GetText()};
        }
        editor.GetInput().Key(Qt::Key_Escape);
    });
    editor.Tool("Fillcan").Click(Inside);
    return shown;
}

/// A picture of two colors, so that a fill writes a part of the layer only.
void BlackenLeftColumn(const EditorFixture& editor)
{
    for (int y = 0; y < Height; ++y) {
        editor.Document()->GetLayerImage(1)->SetColor(0, y, LXRGBA32i(0xFF000000));
    }
    editor.Document()->LayerImageChanged(1, QRect());
}
} // namespace

void TestFailingFill::aFailedJobIsReportedAndRolledBack_data()
{
    QTest::addColumn<int>("seam");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("line");
    QTest::newRow("exception") << int(Seam::FloodFill) << QString(KnownException) << "1416";
    QTest::newRow("no tile") << int(Seam::TileAllocation) << QString(KnownException) << "1416";
    QTest::newRow("anything else") << int(Seam::StrangeTileAllocation) << QString(UnknownException) << "1421";
}

void TestFailingFill::aFailedJobIsReportedAndRolledBack()
{
    QFETCH(int, seam);
    QFETCH(QString, format);
    QFETCH(QString, line);
    EditorFixture editor(Width, Height);
    const QImage before = editor.Pixels(0);
    editor.Tool("Fillcan");

    FaultSeams::FailNth(Seam(seam), 1);
    ExpectReport(format, line);
    QCOMPARE(ClickAndReadMessage(editor), OperationError);
    QCOMPARE(editor.HistoryTexts(), QStringList());
    QCOMPARE(editor.Pixels(0), before);

    editor.Tool("Fillcan").Click(Inside);
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});
}

void TestFailingFill::aFailedMaskJobIsReportedAndRolledBack_data()
{
    QTest::addColumn<int>("seam");
    QTest::addColumn<QString>("format");
    QTest::newRow("exception") << int(Seam::FloodFill) << QString(KnownException);
    QTest::newRow("anything else") << int(Seam::StrangeTileAllocation) << QString(UnknownException);
}

void TestFailingFill::aFailedMaskJobIsReportedAndRolledBack()
{
    QFETCH(int, seam);
    QFETCH(QString, format);
    EditorFixture editor(Width, Height);
    editor.Document()->AddMask(1, true);
    editor.Document()->GetModel()->SetMaskSelected(0, true);
    const QImage before = editor.Pixels(0);
    editor.Tool("Fillcan");

    FaultSeams::FailNth(Seam(seam), 1);
    ExpectReport(format, "\\d+");
    QCOMPARE(ClickAndReadMessage(editor), OperationError);
    QCOMPARE(editor.HistoryTexts(), QStringList());
    QCOMPARE(editor.Pixels(0), before);
}

void TestFailingFill::aFailedPushIsReportedAndRolledBack_data()
{
    QTest::addColumn<int>("seam");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("line");
    QTest::newRow("exception") << int(Seam::TileAllocation) << QString(KnownException) << "501";
    QTest::newRow("anything else") << int(Seam::StrangeTileAllocation) << QString(UnknownException) << "506";
}

void TestFailingFill::aFailedPushIsReportedAndRolledBack()
{
    QFETCH(int, seam);
    QFETCH(QString, format);
    QFETCH(QString, line);
    EditorFixture editor(Width, Height);
    BlackenLeftColumn(editor);
    const QImage before = editor.Pixels(0);
    // Shared, so that the push can't write without a tile of its own.
    const LXImage32 shared = *editor.Document()->GetLayerImage(1);
    const auto arm = connect(editor.History(), &LexoUndoStack::aboutIndexChanged, this,
                             [&] { FaultSeams::FailNth(Seam(seam), 1); });
    ExpectReport(format, line);
    QCOMPARE(ClickAndReadMessage(editor), OperationError);
    disconnect(arm);
    QCOMPARE(editor.HistoryTexts(), QStringList());
    QCOMPARE(editor.Pixels(0), before);

    editor.Tool("Fillcan").Click(Inside);
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});
}

void TestFailingFill::aJobThatFailsUnderTheProgressDialogClosesIt()
{
    EditorFixture editor(Width, Height);
    FaultSeams::SlowDown(Seam::FloodFill, 1500);
    FaultSeams::FailNth(Seam::FloodFill, 1);
    ExpectReport(KnownException, "1416");
    bool hasProgress = false;
    editor.GetInput().WhenModalShows([&](QWidget* dialog) {
        hasProgress = dialog->inherits("FillCanProgress");
        FaultSeams::SlowDown(Seam::FloodFill, 0);
    });
    QCOMPARE(ClickAndReadMessage(editor), OperationError);
    QVERIFY(hasProgress);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QCOMPARE(editor.HistoryTexts(), QStringList());
}

void TestFailingFill::aRefusedLockFillsNothingInSilence()
{
    EditorFixture editor(Width, Height);
    const QImage before = editor.Pixels(0);
    editor.Tool("Fillcan");
    FaultSeams::FailNth(Seam::DocumentLock, 1);
    editor.Tool("Fillcan").Click(Inside);
    QCOMPARE(editor.HistoryTexts(), QStringList());
    QCOMPARE(editor.Pixels(0), before);
    QVERIFY(!QApplication::activeModalWidget());
}

ZK_REGISTER_TEST(tst_failing_fill, TestFailingFill)
#include "tst_failing_fill.moc"
