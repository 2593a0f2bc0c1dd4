#include "app/DocumentFiles.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "image/LXImage.h"
#include "image/LXTileManager.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QAbstractEventDispatcher>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

#include <algorithm>

/// The move tool where it meets the window: closed pictures, keys of locked pictures, the edge of the view.
class TestMoveTool : public QObject
{
    Q_OBJECT

private slots:
    void aClosedPictureTakesItsPieceAndWorkerAlong();
    void keysAreOffWhileThePictureIsLocked();
    void aDragOutOfTheViewScrollsUntilTheRelease();
};

namespace {
void SelectSquare(EditorFixture& editor, const QRect& rect)
{
    LXImage32 mask(rect.width(), rect.height());
    mask.Fill(LXRGBA32i(0xFF000000));
    editor.Document()->SetSelectionMask(mask, rect.topLeft());
}

int CountWorkers()
{
    int count = 0;
    const QDir tasks("/proc/self/task");
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile name(tasks.filePath(task + "/comm"));
        if (name.open(QIODevice::ReadOnly) && name.readAll().startsWith("CopyPasteThread")) ++count;
    }
    return count;
}

/// Whether the view's own scrolling has a timer running.
bool IsScrolling(const ZKDocumentView* view)
{
    const QObjectList& children = view->children();
    return std::any_of(children.begin(), children.end(), [](QObject* child) {
        return child->inherits("ViewAutoscroll") &&
               !QAbstractEventDispatcher::instance()->registeredTimers(child).isEmpty();
    });
}
} // namespace

void TestMoveTool::aClosedPictureTakesItsPieceAndWorkerAlong()
{
    EditorFixture editor(40, 30);
    const auto tiles = LXTileManager::Instance().LiveTileCount();
    QCOMPARE(CountWorkers(), 0);
    editor.Files()->New({60, 40}, Qt::white);
    ToolDriver tool = editor.Tool("Move tool");
    SelectSquare(editor, {10, 10, 10, 10});
    tool.Drag({15.5, 15.5}, {35.5, 20.5});
    QCOMPARE(editor.Document()->GetDocumentState(), 1);
    QCOMPARE(CountWorkers(), 1);

    InputDriver& input = editor.GetInput();
    input.WhenModalShows<LXMessageBox>([&input](LXMessageBox* box) {
        for (QPushButton* button : box->findChildren<QPushButton*>()) {
            if (button->text().remove('&') == "Discard") return input.Click(button);
        }
    });
    QVERIFY(editor.Files()->Close(editor.Document()));
    QTRY_COMPARE(CountWorkers(), 0);
    QTRY_COMPARE(LXTileManager::Instance().LiveTileCount(), tiles);
    editor.CheckNothingIsLeft();
}

void TestMoveTool::keysAreOffWhileThePictureIsLocked()
{
    EditorFixture editor(60, 40);
    SelectSquare(editor, {10, 10, 10, 10});
    const auto place = [&editor] { return editor.Document()->GetSelectionGeometry().topLeft(); };
    InputDriver& input = editor.GetInput();
    QVERIFY(editor.Document()->Lock());
    input.Key(Qt::Key_Right, Qt::ControlModifier);
    input.Key(Qt::Key_Down, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(place(), QPoint(10, 10));
    QVERIFY(editor.Document()->Unlock());
    input.Key(Qt::Key_Right, Qt::ControlModifier);
    QCOMPARE(place(), QPoint(11, 10));
}

void TestMoveTool::aDragOutOfTheViewScrollsUntilTheRelease()
{
    EditorFixture editor(4000, 3000);
    ZKDocumentView* view = editor.View();
    view->Scale(1.0 / view->GetScale(), {});
    view->centerOn(2000, 1500);
    editor.Tool("Move tool");
    InputDriver& input = editor.GetInput();
    QWidget* port = view->viewport();
    const QScrollBar* bar = view->horizontalScrollBar();
    const int before = bar->value();
    const QPointF from = view->mapToScene(port->rect().center());
    input.PressInScene(view, from);
    input.Move(port, {port->width() + 20, port->height() / 2});
    QVERIFY(IsScrolling(view));
    QTRY_VERIFY(bar->value() > before);
    input.Release(port, port->rect().center());
    editor.Settle();
    // The layer has gone where the pointer is, however far the picture was scrolled.
    const QPointF way = view->mapToScene(port->rect().center()) - from;
    QCOMPARE(editor.Document()->GetModel()->GetLayerOffset(0), way.toPoint());

    // A drag that isn't the tool's scrolls nothing: that was switched off with the release.
    input.Press(port, port->rect().center(), Qt::RightButton);
    input.Move(port, {port->width() + 20, port->height() / 2});
    QVERIFY(!IsScrolling(view));
    input.Release(port, port->rect().center(), Qt::RightButton);
}

ZK_REGISTER_TEST(tst_move_tool, TestMoveTool)

#include "tst_move_tool.moc"
