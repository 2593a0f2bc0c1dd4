#include "app/MainWindow.h"
#include "support/EditorScriptFixture.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <QSignalSpy>

/// `menus`, and the pop-up menus that `dialogs` expects.
class TestScriptMenus : public QObject
{
    Q_OBJECT

private slots:
    void entriesAreFoundByTheirTexts();
    void entriesTellTheirState();
    void disabledAndMissingEntriesAreRefused();
    void menusAreFilledBeforeTheyAreRead();
    void aContextMenuIsAnsweredByItsEntries();
    void aFunctionDrivesAContextMenu();
    void aContextMenuThatNobodyExpectedEndsTheScript();
    void aMissingEntryOfAContextMenuEndsTheScript();
};

namespace {
/// A field with a context menu that holds the event until it is closed.
class MenuField : public QWidget
{
public:
    explicit MenuField(QWidget* parent) : QWidget(parent)
    {
        setObjectName("field");
        setGeometry(300, 300, 100, 100);
        menu.addAction("&Copy")->setObjectName("copy");
        menu.addAction("Gone")->setEnabled(false);
        QMenu* more = menu.addMenu("More");
        more->addAction("Mirror")->setObjectName("mirror");
        QObject::connect(&menu, &QMenu::triggered, this,
                         [this](const QAction* action) { chosen = action->objectName(); });
        QObject::connect(more, &QMenu::triggered, this,
                         [this](const QAction* action) { chosen = action->objectName(); });
        show();
    }

    QMenu menu;
    QString chosen;

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::RightButton) menu.exec(event->globalPos());
    }
};
} // namespace

void TestScriptMenus::entriesAreFoundByTheirTexts()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(R"(
        const paths = menus.all.map(entry => entry.path)
        for (const path of ["File", "File/Open Recent", "File/Save As…", "Edit/Select All", "View/100 %"])
            expect.contains(paths, path)
        expect.equal(menus.find("File/Save As...").path, "File/Save As…")
        expect.equal([menus.has("Selection/Deselect"), menus.has("Edit/Bake")], [true, false])
        menus.trigger("Edit/Select All")
        expect.equal(pixels.selection.bounds, { x: 0, y: 0, width: 4, height: 3 })
    )");
}

void TestScriptMenus::entriesTellTheirState()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(R"(
        const undo = menus.find("Edit/Undo"), full = menus.find("View/Full Screen")
        expect.equal([undo.enabled, undo.visible, undo.shortcut, undo.checkable], [false, true, "Ctrl+Z", false])
        layers.at(0).opacity = 0.5
        expect.equal([undo.enabled, undo.text], [true, "Undo Layer opacity"])
        expect.equal([full.checkable, full.checked, full.shortcut], [true, false, "F11"])
        expect.equal([menus.find("File").hasMenu, undo.hasMenu], [true, false])
        expect.equal(menus.find("View/Zoom In").hint, "Shows the picture larger")
    )");
}

void TestScriptMenus::disabledAndMissingEntriesAreRefused()
{
    EditorScriptFixture editor;
    editor.Check(R"(
        expect.throws(function() { menus.trigger("File/Save") }, "\"File/Save\" is disabled.")
        expect.throws(function() { menus.trigger("File/Bake") }, "The menus have no entry \"File/Bake\".")
        expect.throws(function() { menus.find("Bake") }, "The menus have no entry \"Bake\".")
        expect.throws(function() { menus.trigger("File") }, "\"File\" only opens a menu.")
    )");
}

void TestScriptMenus::menusAreFilledBeforeTheyAreRead()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(QString(R"(
        documents.active.save(%1)
        expect.ok(menus.has("File/Open Recent/recent.png"))
        documents.active.close()
        menus.trigger("File/Open Recent/recent.png")
        expect.equal(documents.active.name, "recent.png")
    )")
                     .arg(editor.Quoted("recent.png")));
}

void TestScriptMenus::aContextMenuIsAnsweredByItsEntries()
{
    EditorScriptFixture editor;
    const MenuField field(editor.Window());
    editor.Check(R"(
        dialogs.expectMenu("Copy")
        input.click(5, 5, { in: "field", button: "right" })
        expect.equal([dialogs.waiting, dialogs.seen], [0, ["a menu with Copy, Gone, More"]])
    )");
    QCOMPARE(field.chosen, QString("copy"));
    editor.Check("dialogs.expectMenu('More/Mirror'); input.click(5, 5, { in: 'field', button: 'right' })");
    QCOMPARE(field.chosen, QString("mirror"));
}

void TestScriptMenus::aFunctionDrivesAContextMenu()
{
    EditorScriptFixture editor;
    const MenuField field(editor.Window());
    editor.Check(R"(
        let items = []
        dialogs.expectMenu(function(menu) { items = menu.items; input.key("Esc") })
        input.click(5, 5, { in: "field", button: "right" })
        expect.equal(items, ["Copy", "Gone", "More"])
    )");
    QCOMPARE(field.chosen, QString());
}

void TestScriptMenus::aContextMenuThatNobodyExpectedEndsTheScript()
{
    EditorScriptFixture editor;
    const MenuField field(editor.Window());
    const ScriptOutcome outcome = editor.Run(R"(
        try { input.click(5, 5, { in: "field", button: "right" }) } catch (error) { }
        widgets.find("field").close()
    )");
    QVERIFY2(outcome.message.contains("Nobody expected a menu with Copy, Gone, More"),
             qPrintable(outcome.message));
    QVERIFY(!field.menu.isVisible());
}

void TestScriptMenus::aMissingEntryOfAContextMenuEndsTheScript()
{
    EditorScriptFixture editor;
    const MenuField field(editor.Window());
    const auto failureOf = [&editor](const QString& choice) {
        return editor
            .Run(QString("dialogs.expectMenu('%1'); input.click(5, 5, { in: 'field', button: 'right' })")
                     .arg(choice))
            .message;
    };
    QString failure = failureOf("Paste");
    QVERIFY2(failure.contains("no entry \"Paste\"; there are: Copy, Gone, More"), qPrintable(failure));
    failure = failureOf("Gone");
    QVERIFY2(failure.contains("The entry \"Gone\" is disabled."), qPrintable(failure));
    failure = failureOf("Copy/Deep");
    QVERIFY2(failure.contains("\"Copy\" has no menu of its own."), qPrintable(failure));
    QVERIFY(!field.menu.isVisible());
}

#include "tst_scriptmenus.moc"
ZK_REGISTER_TEST(tst_scriptmenus, TestScriptMenus)
