#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "core/MenuPlacement.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "gui/LXDocumentManager.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QUrl>

/// What the menus, their keys and the empty page start.
class TestMenus : public QObject
{
    Q_OBJECT

private slots:
    void newAsksForTheSize();
    void newCancelledMakesNothing();
    void openAsksForTheFile();
    void saveAsPutsTheEndingOn();
    void undoAndRedoInTheMenu();
    void droppedFilesOpen();
    void droppedTextDoesNot();
    void theEmptyPageOpensRecentFiles();
    void noTwoEntriesShareAKey();
    void aKeyWithASecondOwnerStillFillsWithTheForeground();
    void theZoomOfAToolTakesPlaceAndKeys();
};

namespace {
/// Types into the focused field of the next dialog, over what stands there, and presses Enter.
void TypeIntoDialog(InputDriver& input, const QString& text)
{
    input.WhenModalShows([&input, text](QWidget*) {
        input.HoldModifiers(Qt::NoModifier);
        input.Key(Qt::Key_A, Qt::ControlModifier);
        input.Type(text);
        input.Key(Qt::Key_Return);
    });
}

QString MakePictureFile(const EditorFixture& editor, const QString& name, const QColor& color)
{
    QImage picture(24, 16, QImage::Format_ARGB32);
    picture.fill(color);
    const QString path = editor.TempFile(name);
    return picture.save(path) ? path : QString();
}

/// The pop-up menu opened by the letter, as Alt and the letter do.
QMenu* MenuOf(const MainWindow* window, const QString& title)
{
    for (QAction* action : window->menuBar()->actions()) {
        if (action->menu() && action->text().remove('&') == title) return action->menu();
    }
    return nullptr;
}

void Drop(MainWindow* window, const QMimeData& data)
{
    const QPoint middle = window->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &enter);
    if (!enter.isAccepted()) return;
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &drop);
}
} // namespace

void TestMenus::newAsksForTheSize()
{
    EditorFixture editor;
    editor.GetInput().WhenModalShows([&](QWidget* dialog) {
        InputDriver& input = editor.GetInput();
        input.HoldModifiers(Qt::NoModifier);
        input.Key(Qt::Key_A, Qt::ControlModifier);
        input.Type("123");
        input.Key(Qt::Key_Tab);
        input.Key(Qt::Key_A, Qt::ControlModifier);
        input.Type("45");
        QCOMPARE(dialog->findChild<QSpinBox*>("m_pHeightSpn")->value(), 45);
        input.Key(Qt::Key_Return);
    });
    editor.GetInput().Key(Qt::Key_N, Qt::ControlModifier);

    QVERIFY(editor.Document());
    QCOMPARE(editor.Document()->GetDocumentSize(), QSize(123, 45));
    QCOMPARE(editor.Pixels().pixelColor(122, 44), QColor(Qt::white));
    QVERIFY(editor.History()->isClean());
}

void TestMenus::newCancelledMakesNothing()
{
    EditorFixture editor;
    editor.GetInput().WhenModalShows([&](QWidget*) {
        editor.GetInput().HoldModifiers(Qt::NoModifier);
        editor.GetInput().Key(Qt::Key_Escape);
    });
    editor.GetInput().Key(Qt::Key_N, Qt::ControlModifier);
    QVERIFY(!editor.Document());
}

void TestMenus::openAsksForTheFile()
{
    EditorFixture editor;
    const QString path = MakePictureFile(editor, "asked.png", Qt::darkCyan);
    TypeIntoDialog(editor.GetInput(), path);
    editor.GetInput().Key(Qt::Key_O, Qt::ControlModifier);
    QVERIFY(editor.Document());
    QCOMPARE(editor.Files()->GetPath(editor.Document()), path);
}

void TestMenus::saveAsPutsTheEndingOn()
{
    EditorFixture editor(30, 20, Qt::yellow);
    TypeIntoDialog(editor.GetInput(), editor.TempFile("plain"));
    editor.GetInput().Key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(QFileInfo::exists(editor.TempFile("plain.ora")));
    QCOMPARE(editor.Document()->GetDocumentName(), QString("plain.ora"));
    QVERIFY(editor.History()->isClean());
}

void TestMenus::undoAndRedoInTheMenu()
{
    EditorFixture editor(30, 20);
    ZKApplication::SetForeground(Qt::red);
    editor.Tool("Fillcan").Click(QPointF(3, 3));
    QMenu* menu = MenuOf(editor.Window(), "Edit");
    QVERIFY(menu);
    const auto choose = [&](const QString& text) {
        menu->popup(editor.Window()->mapToGlobal(QPoint(60, 30)));
        for (QAction* action : menu->actions()) {
            if (action->text().remove('&') == text) {
                editor.GetInput().Click(menu, menu->actionGeometry(action).center());
                return true;
            }
        }
        menu->close();
        return false;
    };

    QVERIFY(choose("Undo Fill"));
    QCOMPARE(editor.Pixels().pixelColor(3, 3), QColor(Qt::white));
    QVERIFY(choose("Redo Fill"));
    QCOMPARE(editor.Pixels().pixelColor(3, 3), QColor(Qt::red));
}

void TestMenus::droppedFilesOpen()
{
    EditorFixture editor;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(MakePictureFile(editor, "one.png", Qt::red)),
                  QUrl::fromLocalFile(MakePictureFile(editor, "two.png", Qt::blue))});
    Drop(editor.Window(), data);
    QCOMPARE(LXDocumentManager::Instance()->GetDocuments().size(), 2);
    QCOMPARE(editor.Document()->GetDocumentName(), QString("two.png"));
}

void TestMenus::droppedTextDoesNot()
{
    EditorFixture editor;
    QMimeData data;
    data.setText("one.png");
    Drop(editor.Window(), data);
    QVERIFY(!editor.Document());
}

void TestMenus::theEmptyPageOpensRecentFiles()
{
    EditorFixture editor;
    const QString path = MakePictureFile(editor, "again.png", Qt::green);
    QVERIFY(editor.Files()->Open(path));
    editor.GetInput().Key(Qt::Key_W, Qt::ControlModifier);
    QVERIFY(!editor.Document());

    auto* button = editor.Window()->findChild<QPushButton*>("recentFile");
    QTRY_VERIFY(button && button->isVisible() && button->width() > 0);
    editor.GetInput().Click(button);
    QVERIFY(editor.Document());
    QCOMPARE(editor.Files()->GetPath(editor.Document()), path);
}

void TestMenus::noTwoEntriesShareAKey()
{
    EditorFixture editor(30, 20);
    QMap<QString, QString> owners;
    for (const QAction* action : editor.Window()->findChildren<QAction*>()) {
        for (const QKeySequence& key : action->shortcuts()) {
            const QString name = key.toString();
            QVERIFY2(!owners.contains(name), qPrintable(name + ": " + owners[name] + ", " + action->text()));
            owners.insert(name, action->text());
        }
    }
    for (const char* name : {"Ctrl+N", "Ctrl+O", "Ctrl+S", "Ctrl+Shift+S", "Ctrl+W", "Ctrl+Q", "Ctrl+Z",
                             "Ctrl+Shift+Z", "Ctrl+Y", "Ctrl++", "Ctrl+-", "Ctrl+0", "Ctrl+1"}) {
        QVERIFY2(owners.contains(name), name);
    }
}

void TestMenus::aKeyWithASecondOwnerStillFillsWithTheForeground()
{
    EditorFixture editor(30, 20);
    ZKApplication::SetForeground(Qt::red);
    QAction second;
    second.setShortcut(QKeySequence("Alt+Backspace"));
    editor.Window()->addAction(&second);
    QSignalSpy triggered(&second, &QAction::triggered);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Ambiguous shortcut overload"));
    editor.GetInput().Key(Qt::Key_Backspace, Qt::AltModifier);
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill with foreground"});
    QCOMPARE(editor.Pixels().pixelColor(3, 3), QColor(Qt::red));
    QCOMPARE(triggered.count(), 0);
    editor.Settle();
}

void TestMenus::theZoomOfAToolTakesPlaceAndKeys()
{
    EditorFixture editor(40, 30);
    const QMenu* view = MenuPlacement::Instance().RoleMenu(ZKMenuManager::View);
    QAction* own = view->actions().first();
    QCOMPARE(own->shortcut(), QKeySequence(Qt::CTRL + Qt::Key_Plus));
    const double scale = editor.View()->GetScale();
    editor.GetInput().Key(Qt::Key_Plus, Qt::ControlModifier);
    const double larger = editor.View()->GetScale();
    QVERIFY(larger > scale);

    // One comes with its key, the other gets it later.
    QAction zoomIn(QStringLiteral("Zoom in"));
    QAction zoomOut(QStringLiteral("Zoom out"));
    zoomIn.setShortcut(Qt::CTRL + Qt::Key_Plus);
    int triggered = 0;
    connect(&zoomIn, &QAction::triggered, &zoomIn, [&] { ++triggered; });
    connect(&zoomOut, &QAction::triggered, &zoomOut, [&] { ++triggered; });
    ZKMenuManager::CreateAction(ZKMenuManager::View, 0, &zoomIn);
    ZKMenuManager::CreateAction(ZKMenuManager::View, 1, &zoomOut);
    zoomOut.setShortcut(Qt::CTRL + Qt::Key_Minus);
    editor.GetInput().Key(Qt::Key_Plus, Qt::ControlModifier);
    editor.GetInput().Key(Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(triggered, 2);
    QCOMPARE(editor.View()->GetScale(), larger);
    QVERIFY(!view->actions().contains(own));
    QCOMPARE(view->actions().first(), &zoomIn);

    // In the status bar, and with keys that nobody else has.
    own->trigger();
    QVERIFY(editor.View()->GetScale() > larger);
    editor.GetInput().Key(Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(editor.View()->GetScale(), 1.0);
}

ZK_REGISTER_TEST(tst_menus, TestMenus)
#include "tst_menus.moc"
