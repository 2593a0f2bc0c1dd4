#include "app/MainWindow.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/HistoryPanel.h"
#include "gui/LayersWidget.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoCommand.h"
#include "history/LexoCommandData.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "image/LXTileManager.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QAction>
#include <QListView>
#include <QPushButton>
#include <QScopeGuard>
#include <QStatusBar>
#include <QTest>
#include <QToolButton>

#include <new>
#include <tuple>
#include <utility>

using FaultSeams::Seam;

/// What the editor itself does to a picture when memory or the disk for temporary files comes to an end: the
/// person is told once, nothing is lost, and the same works when there is room again.
class TestOutOfMemory : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void anUndoThatFailsCanBeTriedAgain();
    void aStateThatCannotBeReachedLeavesTheListWhereItWas();
    void selectingAllCanFail();
    void aSelectionThatCannotBeReadMayBeMadeAgain();
    void aModifiedSelectionCanFail();
    void aChangeOfLayersCanFail();
    void aPictureThatCannotBeShownIsToldInTheStatusBar();
};

namespace {
constexpr int Width = 40;
constexpr int Height = 30;

/// Does something, and reads and closes the boxes that warn of it.
class Warnings
{
public:
    explicit Warnings(EditorFixture& editor) : m_Editor(editor) { Expect(); }

    QStringList Take()
    {
        // A box may come after the event that failed.
        QCoreApplication::processEvents();
        return std::exchange(m_Texts, QStringList());
    }

private:
    void Expect()
    {
        m_Editor.GetInput().WhenModalShows<LXMessageBox>([this](LXMessageBox* box) {
            m_Texts << (box->GetIcon() == LXMessageBox::WarningIcon ? box->GetText() : QString());
            Expect();
            // No key: those that asked for the step are still down.
            box->findChild<QPushButton*>()->click();
        });
    }

    EditorFixture& m_Editor;
    QStringList m_Texts;
};

bool IsAboutMemory(const QStringList& warnings)
{
    return warnings.size() == 1 && warnings.first().contains("not enough memory");
}

/// Data of a command that knows by itself what to do.
class NoData : public LexoCommandData
{
public:
    int GetDataType() const override { return -1; }

    bool Serialize(IWriter*) const override { return false; }

    bool Deserialize(IReader*) override { return false; }
};

/// Blackens a pixel of the layer, and makes it white again. Both need a new tile.
class BlackPixel : public LexoCommand
{
public:
    explicit BlackPixel(LXDocumentInterface* document) : m_pDocument(document)
    {
        setText(QStringLiteral("Black pixel"));
        SetCommandData(new NoData);
    }

    void RedoExecute(LexoCommandData*) override { Write(LXRGBA32i(0xFF000000)); }

    void UndoExecute(LexoCommandData*) override { Write(LXRGBA32i(0xFFFFFFFF)); }

protected:
    bool AcceptsData(const LexoCommandData*) const override { return true; }

private:
    void Write(LXRGBA32i color)
    {
        LXImage32 image = *m_pDocument->GetLayerImage(1);
        image.SetColor(0, 0, color);
        *m_pDocument->GetLayerImage(1) = image;
        m_pDocument->LayerImageChanged(1, QRect());
    }

    LXDocumentInterface* m_pDocument;
};

QListView* StateList(const EditorFixture& editor)
{
    return editor.Window()->findChild<HistoryPanel*>()->findChild<QListView*>("m_pList");
}
} // namespace

void TestOutOfMemory::anUndoThatFailsCanBeTriedAgain()
{
    EditorFixture editor(Width, Height);
    const QImage start = editor.Pixels();
    editor.History()->push(new BlackPixel(editor.Document()));
    editor.Settle();
    const QImage blackened = editor.Pixels();
    QVERIFY(blackened != start);
    Warnings warnings(editor);
    for (const auto& [modifiers, from, to] :
         {std::tuple{Qt::KeyboardModifiers(Qt::ControlModifier), blackened, start},
          std::tuple{Qt::ControlModifier | Qt::ShiftModifier, start, blackened}}) {
        const int index = editor.History()->index();
        FaultSeams::FailNth(Seam::TileAllocation, 1);
        editor.GetInput().Key(Qt::Key_Z, modifiers);
        QVERIFY(IsAboutMemory(warnings.Take()));
        QCOMPARE(editor.History()->index(), index);
        QCOMPARE(editor.Pixels(), from);

        editor.GetInput().Key(Qt::Key_Z, modifiers);
        editor.Settle();
        QCOMPARE(warnings.Take(), QStringList());
        QCOMPARE(editor.History()->index(), 1 - index);
        QCOMPARE(editor.Pixels(), to);
    }
}

void TestOutOfMemory::aStateThatCannotBeReachedLeavesTheListWhereItWas()
{
    EditorFixture editor(Width, Height);
    const QImage start = editor.Pixels();
    editor.History()->push(new BlackPixel(editor.Document()));
    editor.Settle();
    const QImage blackened = editor.Pixels();
    QListView* list = StateList(editor);
    QTRY_COMPARE(list->currentIndex().row(), 1);

    Warnings warnings(editor);
    FaultSeams::FailNth(Seam::TileAllocation, 1);
    list->setCurrentIndex(list->model()->index(0, 0));
    QVERIFY(IsAboutMemory(warnings.Take()));
    QCOMPARE(list->currentIndex().row(), 1);
    QCOMPARE(editor.History()->index(), 1);
    QCOMPARE(editor.Pixels(), blackened);

    list->setCurrentIndex(list->model()->index(0, 0));
    editor.Settle();
    QCOMPARE(warnings.Take(), QStringList());
    QCOMPARE(editor.Pixels(), start);
}

void TestOutOfMemory::selectingAllCanFail()
{
    EditorFixture editor(Width, Height);
    Warnings warnings(editor);
    FaultSeams::FailNth(Seam::TileAllocation, 1);
    editor.GetInput().Key(Qt::Key_A, Qt::ControlModifier);
    QVERIFY(IsAboutMemory(warnings.Take()));
    QVERIFY(!editor.Document()->HasSelection());
    QCOMPARE(editor.History()->count(), 0);

    editor.GetInput().Key(Qt::Key_A, Qt::ControlModifier);
    editor.Settle();
    QVERIFY(editor.Document()->HasSelection());
}

void TestOutOfMemory::aSelectionThatCannotBeReadMayBeMadeAgain()
{
    EditorFixture editor(Width, Height);
    LXTileManager& tiles = LXTileManager::Instance();
    const auto putBack =
        qScopeGuard([&tiles, budget = tiles.MemoryBudget()] { tiles.SetMemoryBudget(budget); });
    editor.GetInput().Key(Qt::Key_A, Qt::ControlModifier);
    editor.Settle();
    const auto* selectAll = editor.Window()->findChild<QAction*>("selectAllAction");
    QVERIFY(!selectAll->isEnabled());

    // All that is not pinned goes to the disk.
    tiles.SetMemoryBudget(0);
    LXImage32 other(1, 1);
    other.SetColor(0, 0, LXRGBA32i(0xFF000000));
    QVERIFY(editor.Document()->Lock());
    FaultSeams::FailNth(Seam::SwapRead, 1);
    QVERIFY(editor.Document()->Unlock());
    QVERIFY(selectAll->isEnabled());
    QVERIFY(editor.Document()->Lock());
    QVERIFY(editor.Document()->Unlock());
    QVERIFY(!selectAll->isEnabled());
}

void TestOutOfMemory::aModifiedSelectionCanFail()
{
    EditorFixture editor(Width, Height);
    LXImage32 mask(10, 10);
    mask.Fill(LXRGBA32i(0xFF000000));
    editor.Document()->SetSelectionMask(mask, QPoint(5, 5));
    const auto arm =
        connect(editor.History(), &LexoUndoStack::aboutIndexChanged, this, [] { throw std::bad_alloc(); });
    QStringList told;
    const auto grow = [&] {
        editor.GetInput().WhenModalShows([&](QWidget*) {
            editor.GetInput().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
                told << box->GetText();
                editor.GetInput().Key(Qt::Key_Escape);
            });
            editor.GetInput().Key(Qt::Key_Return);
        });
        editor.Window()->findChild<QAction*>("growSelectionAction")->trigger();
    };
    grow();
    disconnect(arm);
    QVERIFY(IsAboutMemory(told));
    QCOMPARE(editor.History()->count(), 0);
    QVERIFY(!editor.Document()->GetLockState());
}

void TestOutOfMemory::aChangeOfLayersCanFail()
{
    EditorFixture editor(Width, Height);
    const auto add = [&] {
        editor.GetInput().Click(LayersWidget::GetInstance()->findChild<QToolButton*>("m_pAddBtn"));
    };
    Warnings warnings(editor);
    FaultSeams::FailNth(Seam::TileAllocation, 1);
    add();
    QVERIFY(IsAboutMemory(warnings.Take()));
    QCOMPARE(editor.Document()->GetModel()->rowCount(), 1);
    QCOMPARE(editor.History()->count(), 0);

    add();
    editor.Settle();
    QCOMPARE(warnings.Take(), QStringList());
    QCOMPARE(editor.Document()->GetModel()->rowCount(), 2);
}

void TestOutOfMemory::aPictureThatCannotBeShownIsToldInTheStatusBar()
{
    EditorFixture editor(Width, Height);
    editor.Settle();
    const QStatusBar* const status = editor.Window()->statusBar();
    QCOMPARE(status->currentMessage(), QString());
    editor.Document()->GetLayerImage(1)->SetColor(0, 0, LXRGBA32i(0x80000000));
    editor.Document()->LayerImageChanged(1, QRect());
    const LXImage32 shared = *editor.Document()->GetLayerImage(0);
    FaultSeams::FailNth(Seam::TileAllocation, 1);
    editor.View()->viewport()->repaint();
    QTRY_VERIFY(status->currentMessage().contains("cannot be shown"));
    QVERIFY(!QApplication::activeModalWidget());
    editor.View()->viewport()->repaint();
    QCOMPARE(qAlpha(editor.Pixels(0).pixel(1, 1)), 255);
}

ZK_REGISTER_TEST(tst_out_of_memory, TestOutOfMemory)
#include "tst_out_of_memory.moc"
