#include "app/MainWindow.h"
#include "gui/ZKDocumentView.h"
#include "support/EditorScriptFixture.h"
#include "support/TestRegistry.h"

#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QLineEdit>
#include <QMouseEvent>

/// `input`: what arrives of a script's mouse and keys.
class TestScriptInput : public QObject
{
    Q_OBJECT

private slots:
    void aClickHitsTheDocumentPixel();
    void aDragGoesThroughItsPointsInSteps();
    void buttonAndModifiersArriveWithTheEvent();
    void modifiersAreHeldUntilTheyAreLetGo();
    void pressAndReleaseAreApart();
    void aPointOutsideTheViewIsRefused();
    void aDragMayLeaveTheView();
    void widgetsTakeTheirOwnCoordinates();
    void keysAreTypedAndPressed();
    void wrongWordsAreRefused_data();
    void wrongWordsAreRefused();
};

namespace {
/// Writes down what reaches the scene of a view: "press 3,4 left Ctrl".
class SceneLog : public QObject
{
public:
    explicit SceneLog(ZKDocumentView* view) { view->scene()->installEventFilter(this); }

    QStringList lines;

    bool eventFilter(QObject*, QEvent* event) override
    {
        const QMap<QEvent::Type, QString> names{{QEvent::GraphicsSceneMousePress, "press"},
                                                {QEvent::GraphicsSceneMouseMove, "move"},
                                                {QEvent::GraphicsSceneMouseRelease, "release"},
                                                {QEvent::GraphicsSceneMouseDoubleClick, "double"}};
        if (!names.contains(event->type())) return false;
        const auto* mouse = static_cast<QGraphicsSceneMouseEvent*>(event);
        const QPointF place = mouse->scenePos();
        QString line = QStringLiteral("%1 %2,%3")
                           .arg(names[event->type()])
                           .arg(qRound(place.x() - 0.001))
                           .arg(qRound(place.y() - 0.001));
        if (mouse->button() == Qt::RightButton) line += " right";
        if (mouse->modifiers() & Qt::ControlModifier) line += " Ctrl";
        if (mouse->modifiers() & Qt::ShiftModifier) line += " Shift";
        // The pointer's way to the place is of no interest here.
        if (event->type() == QEvent::GraphicsSceneMouseMove && mouse->buttons() == Qt::NoButton) return false;
        lines.append(line);
        return false;
    }
};
} // namespace

void TestScriptInput::aClickHitsTheDocumentPixel()
{
    EditorScriptFixture editor(100, 80);
    const SceneLog log(editor.View());
    editor.Check("input.click(13, 17); input.doubleClick(20, 21)");
    QCOMPARE(log.lines, QStringList({"press 13,17", "release 13,17", "press 20,21", "release 20,21",
                                     "double 20,21", "release 20,21"}));
}

void TestScriptInput::aDragGoesThroughItsPointsInSteps()
{
    EditorScriptFixture editor(100, 80);
    const SceneLog log(editor.View());
    editor.Check("input.drag([[10, 10], { x: 14, y: 10 }, [14, 20]], { steps: 2 })");
    QCOMPARE(log.lines, QStringList({"press 10,10", "move 12,10", "move 14,10", "move 14,15", "move 14,20",
                                     "release 14,20"}));
}

void TestScriptInput::buttonAndModifiersArriveWithTheEvent()
{
    EditorScriptFixture editor(100, 80);
    const SceneLog log(editor.View());
    editor.Check(R"(
        input.click(5, 6, { button: "right", modifiers: "Ctrl+Shift" })
        input.click(7, 8, { modifiers: ["shift"] })
        expect.equal([input.modifiers, input.buttons], ["", []])
    )");
    QCOMPARE(log.lines, QStringList({"press 5,6 right Ctrl Shift", "release 5,6 right Ctrl Shift",
                                     "press 7,8 Shift", "release 7,8 Shift"}));
}

void TestScriptInput::modifiersAreHeldUntilTheyAreLetGo()
{
    EditorScriptFixture editor(100, 80);
    const SceneLog log(editor.View());
    editor.Check(R"(
        input.hold("Shift")
        expect.equal(input.modifiers, "Shift")
        input.click(5, 6)
        input.hold("")
        input.click(5, 6)
    )");
    QCOMPARE(log.lines, QStringList({"press 5,6 Shift", "release 5,6 Shift", "press 5,6", "release 5,6"}));
}

void TestScriptInput::pressAndReleaseAreApart()
{
    EditorScriptFixture editor(100, 80);
    const SceneLog log(editor.View());
    editor.Check(R"(
        expect.throws(function() { input.release(1, 1) }, "The button isn't down.")
        input.press(5, 6)
        expect.equal(input.buttons, ["left"])
        input.move(9, 9)
        input.release(9, 9)
        expect.equal(input.buttons, [])
    )");
    QCOMPARE(log.lines, QStringList({"press 5,6", "move 9,9", "release 9,9"}));
}

void TestScriptInput::aPointOutsideTheViewIsRefused()
{
    EditorScriptFixture editor(100, 80);
    const SceneLog log(editor.View());
    editor.Check(R"(
        view.scale = 40
        for (const act of [() => input.click(-500, 0), () => input.press(-500, 0), () => input.move(-500, 0),
                           () => input.doubleClick(-500, 0), () => input.wheel(-500, 0, 1),
                           () => input.drag([[-500, 0], [50, 50]])])
            expect.throws(act, "The point (-500, 0) isn't seen in the view")
    )");
    QCOMPARE(log.lines, QStringList());
}

void TestScriptInput::aDragMayLeaveTheView()
{
    EditorScriptFixture editor(100, 80);
    const SceneLog log(editor.View());
    editor.Check("input.drag([[50, 50], [5000, 50]], { steps: 1 })");
    QCOMPARE(log.lines, QStringList({"press 50,50", "move 5000,50", "release 5000,50"}));
}

void TestScriptInput::widgetsTakeTheirOwnCoordinates()
{
    EditorScriptFixture editor(100, 80);
    QLineEdit field(editor.Window());
    field.setObjectName("field");
    field.setGeometry(300, 300, 200, 40);
    field.setText("some text");
    field.show();
    editor.Check(R"(
        input.doubleClick(20, 20, { in: "field" })
        input.type("Any")
        const held = widgets.find("field")
        expect.equal(held.text, "Any text")
        input.click(180, 20, { in: held })
        input.type("!")
        expect.throws(function() { input.click(200, 20, { in: held }) }, "The point (200, 20) isn't seen in")
    )");
    QCOMPARE(field.text(), QString("Any text!"));
}

void TestScriptInput::keysAreTypedAndPressed()
{
    EditorScriptFixture editor(100, 80);
    QLineEdit field(editor.Window());
    field.setObjectName("field");
    field.show();
    editor.Check(R"(
        widgets.find("field").focus()
        input.type("Aé b1")
        input.key("Left")
        input.key("Backspace")
        input.keyDown("x")
        input.repeatKey("x")
        input.keyUp("x")
        expect.equal(widgets.focused.name, "field")
    )");
    QCOMPARE(field.text(), QString("Aé xx1"));
    editor.Check("input.key('Ctrl+A'); input.key('Delete')");
    QCOMPARE(field.text(), QString());
}

void TestScriptInput::wrongWordsAreRefused_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("words");
    QTest::newRow("a key") << "input.key('Tree')"
                           << "\"Tree\" is no key";
    QTest::newRow("no key") << "input.key('')"
                            << "\"\" is no key";
    QTest::newRow("a button") << "input.click(1, 1, { button: 'top' })"
                              << "\"top\" is no button";
    QTest::newRow("a modifier") << "input.click(1, 1, { modifiers: 'Fn' })"
                                << "\"Fn\" is no modifier";
    QTest::newRow("an option") << "input.click(1, 1, { buton: 'left' })"
                               << "There is no option \"buton\"";
    QTest::newRow("a place") << "input.click('a', 1)"
                             << "x has to be a number, not \"a\"";
    QTest::newRow("no place") << "input.click(NaN, 1)"
                              << "x has to be a number";
    QTest::newRow("no points") << "input.drag([])"
                               << "A list of points is needed.";
    QTest::newRow("a wrong point") << "input.drag([7])"
                                   << "A point is {x, y} or [x, y], not 7.";
    QTest::newRow("no steps") << "input.drag([[1, 1]], { steps: 0 })"
                              << "steps has to be a whole number";
    QTest::newRow("a widget") << "input.click(1, 1, { in: 'nowhere' })"
                              << "There is no widget \"nowhere\".";
}

void TestScriptInput::wrongWordsAreRefused()
{
    QFETCH(QString, call);
    QFETCH(QString, words);
    EditorScriptFixture editor(100, 80);
    const ScriptOutcome outcome = editor.Run(call);
    QVERIFY2(outcome.message.contains(words), qPrintable(outcome.message));
}

#include "tst_scriptinput.moc"
ZK_REGISTER_TEST(tst_scriptinput, TestScriptInput)
