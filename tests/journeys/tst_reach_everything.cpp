#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "app/PanelArea.h"
#include "core/ZKApplication.h"
#include "resource/Theme.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"
#include "support/WidgetWalk.h"

#include <QAction>
#include <QDialog>
#include <QDockWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

/// Every window, panel, menu and dialog without a mouse, without eyes, and with weak ones.
class TestReachEverything : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void windowsAreNamedReachedAndRead_data();
    void windowsAreNamedReachedAndRead();

    void panelsAreNamedReachedAndRead_data() { Looks(); }

    void panelsAreNamedReachedAndRead();

    void menusAreRead_data() { Looks(); }

    void menusAreRead();
    void dialogsAreNamedReachedAndRead_data();
    void dialogsAreNamedReachedAndRead();

private:
    static void Looks();
    static void UseLook(const QString& name);
};

namespace {
void Check(InputDriver& input, QWidget* window)
{
    QVERIFY(!WidgetWalk::Controls(window).isEmpty());
    QCOMPARE(WidgetWalk::WithoutName(window).join("; "), QString());
    QCOMPARE(WidgetWalk::TooPale(window).join("; "), QString());
    QCOMPARE(WidgetWalk::OutOfReach(input, window).join("; "), QString());
}

std::unique_ptr<EditorFixture> MakeEditor(bool hasDocument)
{
    return hasDocument ? std::make_unique<EditorFixture>(40, 30) : std::make_unique<EditorFixture>();
}
} // namespace

void TestReachEverything::cleanup()
{
    UseLook("dark");
}

void TestReachEverything::Looks()
{
    QTest::addColumn<QString>("look");
    QTest::newRow("dark") << "dark";
    QTest::newRow("light") << "light";
}

void TestReachEverything::UseLook(const QString& name)
{
    Theme::Apply(name == QLatin1String("light") ? Theme::Look::Light : Theme::Look::Dark,
                 ZKApplication::GetResourcePath());
}

void TestReachEverything::windowsAreNamedReachedAndRead_data()
{
    QTest::addColumn<QString>("look");
    QTest::addColumn<bool>("hasDocument");
    QTest::addColumn<bool>("hasTool");
    for (const char* look : {"dark", "light"}) {
        QTest::addRow("empty, %s", look) << QString(look) << false << false;
        QTest::addRow("a document, %s", look) << QString(look) << true << false;
        QTest::addRow("a document and the fill can, %s", look) << QString(look) << true << true;
    }
}

void TestReachEverything::windowsAreNamedReachedAndRead()
{
    QFETCH(QString, look);
    QFETCH(bool, hasDocument);
    QFETCH(bool, hasTool);
    const auto editor = MakeEditor(hasDocument);
    UseLook(look);
    if (hasTool) editor->Tool("Fillcan");
    Check(editor->GetInput(), editor->Window());
}

void TestReachEverything::panelsAreNamedReachedAndRead()
{
    QFETCH(QString, look);
    EditorFixture editor(40, 30);
    UseLook(look);
    editor.Tool("Fillcan").Click(QPointF(5, 5));
    editor.GetInput().Key(Qt::Key_Z, Qt::ControlModifier);
    editor.Settle();
    for (QDockWidget* panel : editor.Window()->GetPanels()->GetPanels()) {
        editor.Window()->GetPanels()->Show(panel);
        QVERIFY2(panel->isAncestorOf(QApplication::focusWidget()) || WidgetWalk::Controls(panel).isEmpty(),
                 qPrintable(panel->windowTitle()));
        Check(editor.GetInput(), editor.Window());
    }
}

void TestReachEverything::menusAreRead()
{
    QFETCH(QString, look);
    EditorFixture editor(40, 30);
    UseLook(look);
    for (const QAction* title : editor.Window()->menuBar()->actions()) {
        if (!title->isVisible() || !title->menu()) continue;
        title->menu()->popup(editor.Window()->mapToGlobal(QPoint(0, 0)));
        QCOMPARE(WidgetWalk::TooPale(title->menu()).join("; "), QString());
        title->menu()->hide();
    }
}

void TestReachEverything::dialogsAreNamedReachedAndRead_data()
{
    QTest::addColumn<QString>("look");
    QTest::addColumn<QString>("dialog");
    for (const char* look : {"dark", "light"}) {
        for (const char* dialog :
             {"new", "preferences", "about", "guide", "fill", "modify selection", "close question"})
            QTest::addRow("%s, %s", dialog, look) << QString(look) << QString(dialog);
    }
}

void TestReachEverything::dialogsAreNamedReachedAndRead()
{
    QFETCH(QString, look);
    QFETCH(QString, dialog);
    EditorFixture editor(40, 30);
    UseLook(look);
    editor.Tool("Fillcan").Click(QPointF(5, 5));
    InputDriver& input = editor.GetInput();
    bool hasShown = false;
    input.WhenModalShows<QDialog>([&](QDialog* shown) {
        hasShown = true;
        input.HoldModifiers(Qt::NoModifier); // the key that opened the dialog is still down
        Check(input, shown);
        input.Key(Qt::Key_Escape);
        if (shown->isVisible()) shown->reject();
    });
    if (dialog == QLatin1String("new")) input.Key(Qt::Key_N, Qt::ControlModifier);
    if (dialog == QLatin1String("preferences")) input.Key(Qt::Key_Comma, Qt::ControlModifier);
    if (dialog == QLatin1String("about")) editor.Window()->findChild<QAction*>("aboutAction")->trigger();
    if (dialog == QLatin1String("guide")) editor.Window()->findChild<QAction*>("addGuideAction")->trigger();
    if (dialog == QLatin1String("modify selection")) {
        input.Key(Qt::Key_A, Qt::ControlModifier);
        editor.Window()->findChild<QAction*>("shrinkSelectionAction")->trigger();
    }
    if (dialog == QLatin1String("fill")) input.Key(Qt::Key_Backspace, Qt::ShiftModifier);
    if (dialog == QLatin1String("close question")) input.Key(Qt::Key_W, Qt::ControlModifier);
    QVERIFY(hasShown);
    QVERIFY(editor.Document());
}

ZK_REGISTER_TEST(tst_reach_everything, TestReachEverything)
#include "tst_reach_everything.moc"
