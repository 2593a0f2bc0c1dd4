#include "core/ZKToolGroupManager.h"
#include "geometryengine/ControlNode.h"
#include "gui/ZKDocumentView.h"
#include "support/EditorScriptFixture.h"
#include "support/TestRegistry.h"
#include "utils/ZKIconHelper.h"

#include <QCursor>
#include <QGraphicsScene>
#include <QGuiApplication>
#include <QPixmap>

/// `tools`, and `view` beside it.
class TestScriptTools : public QObject
{
    Q_OBJECT

private slots:
    void aToolIsChosenByName();
    void aToolIsChosenByItsPlaceInTheBox();
    void aToolIsChosenByItsKey();
    void theCursorIsToldByThemeAndHotSpot();
    void everyCursorOfTheThemeHasItsName();
    void theViewTellsAndSetsItsScale();
    void theViewScrollsAndFits();
    void handlesAreSeenAndDragged();
    void handlesThatAreNotThereAreToldOf();
};

void TestScriptTools::aToolIsChosenByName()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(R"(
        expect.contains(tools.names, "Fillcan")
        expect.equal([tools.active, tools.running], ["Move tool", "Move tool"], "an editor begins with it")
        expect.equal(tools.activate("Fillcan"), true)
        expect.equal([tools.active, tools.running], ["Fillcan", "Fillcan"])
        expect.throws(function() { tools.activate("Hammer") }, "There is no tool \"Hammer\"; there are: ")
        expect.equal(tools.active, "Fillcan")
        tools.activate("")
        expect.equal([tools.active, tools.running], ["", ""])
    )");
    QVERIFY(!ZKToolGroupManager::GetExplicitAction());
}

void TestScriptTools::aToolIsChosenByItsPlaceInTheBox()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(R"(
        const place = tools.box.findIndex(tip => /bucket|fill/i.test(tip))
        expect.ok(place >= 0, "the fill can's button in " + tools.box)
        tools.activateAt(place)
        expect.equal(tools.active, "Fillcan")
        expect.throws(function() { tools.activateAt(tools.box.length) }, "position has to be")
    )");
}

void TestScriptTools::aToolIsChosenByItsKey()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(R"(
        tools.activateByKey("F")
        expect.equal(tools.active, "Fillcan")
        expect.throws(function() { tools.activateByKey("Tree") }, "\"Tree\" is no key")
    )");
}

void TestScriptTools::theCursorIsToldByThemeAndHotSpot()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(R"(
        tools.activate("")
        expect.equal(tools.cursor, { shape: "Arrow" })
        tools.activate("Fillcan")
        expect.equal(tools.cursor, { theme: "bucket_cursor", x: 3, y: 17 })
        tools.activate("")
        layers.at(0).locks = ["all"]
        tools.activate("Fillcan")
        expect.equal(tools.cursor, { shape: "Forbidden" })
        expect.equal(application.overrideCursor, null)
    )");
}

void TestScriptTools::everyCursorOfTheThemeHasItsName()
{
    EditorScriptFixture editor(4, 3);
    for (const char* name : {"finger_cur", "pen_cursor_add", "zoom-cursor"}) {
        const QPixmap picture = ZKIconHelper::ThemePixmap(QString("theme:%1.png").arg(name));
        QGuiApplication::setOverrideCursor(QCursor(picture, 1, 0));
        editor.Check(
            QString("expect.equal(application.overrideCursor, { theme: \"%1\", x: 1, y: 0 })").arg(name));
        QGuiApplication::restoreOverrideCursor();
    }
}

void TestScriptTools::theViewTellsAndSetsItsScale()
{
    EditorScriptFixture editor(400, 300);
    editor.Check(R"(
        view.scale = 2
        expect.equal(view.scale, 2)
        input.wheel(200, 150, 1)
        expect.near(view.scale, 2 * Math.pow(2, 1 / 3), 0.01)
        expect.throws(function() { view.scale = 0.04 }, "from 0.05 to 40")
        expect.throws(function() { view.scale = 41 }, "from 0.05 to 40")
        expect.equal(view.panning, false)
        input.keyDown("Space")
        expect.equal(view.panning, true)
        input.keyUp("Space")
        expect.equal(view.panning, false)
    )");
}

void TestScriptTools::theViewScrollsAndFits()
{
    EditorScriptFixture editor(4000, 3000);
    editor.Check(R"(
        view.scale = 1
        view.centerOn(1000, 2000)
        expect.near([view.center.x, view.center.y], [1000, 2000], 1)
        const part = view.visible
        expect.near(part.x + part.width / 2, 1000, 1)
        view.fit()
        expect.ok(view.scale < 0.5 && view.visible.width >= 4000 && view.visible.height >= 3000)
    )");
}

void TestScriptTools::handlesAreSeenAndDragged()
{
    EditorScriptFixture editor(400, 300);
    auto* hidden = new ControlNode;
    auto* node = new ControlNode;
    editor.View()->scene()->addItem(hidden);
    editor.View()->scene()->addItem(node);
    hidden->hide();
    node->setPos(100.5, 80);
    node->setLabel(QStringLiteral("1"), QFont());
    node->setSunken(true);
    QPointF told;
    connect(node, &ControlNode::positionChanged, this, [&](ControlNode*, const QPointF& pos) { told = pos; });
    editor.Check(R"(
        view.scale = 2
        expect.equal(view.handles.length, 1)
        const handle = view.handles[0]
        expect.equal([handle.x, handle.y, handle.label], [100.5, 80, "1"])
        expect.equal([handle.movable, handle.selected, handle.sunken], [true, false, true])
        expect.near(handle.inView.x, (100.5 - view.visible.x) * 2, 1)
        view.dragHandle(0, 120.5, 70)
        expect.equal([view.handles[0].x, view.handles[0].y, view.handles[0].selected], [120.5, 70, true])
        const at = view.handles[0].inView
        input.drag([[at.x, at.y], [at.x + 20, at.y - 8]], { in: "ZKDocumentView" })
        expect.equal([view.handles[0].x, view.handles[0].y], [130.5, 66])
    )");
    QCOMPARE(told, QPointF(130.5, 66));
}

void TestScriptTools::handlesThatAreNotThereAreToldOf()
{
    EditorScriptFixture editor(400, 300);
    editor.Check("expect.throws(function() { view.dragHandle(0, 1, 1) }, \"There are no handles.\")");
    auto* node = new ControlNode;
    editor.View()->scene()->addItem(node);
    node->setPos(399, 299);
    editor.Check(R"(
        expect.throws(function() { view.dragHandle(1, 1, 1) }, "index")
        expect.throws(function() { view.dragHandle(0, 1, 1, { button: "right" }) }, "button")
        view.scale = 8
        view.centerOn(10, 10)
        expect.throws(function() { view.dragHandle(0, 1, 1) }, "The handle 0 isn't in sight")
        expect.equal([view.handles[0].x, view.handles[0].y], [399, 299])
    )");
}

#include "tst_scripttools.moc"
ZK_REGISTER_TEST(tst_scripttools, TestScriptTools)
