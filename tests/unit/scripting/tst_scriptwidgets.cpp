#include "app/MainWindow.h"
#include "gui/CameraView.h"
#include "gui/HistogramWidget.h"
#include "gui/LXAnchorSelection.h"
#include "gui/LXColorButton.h"
#include "gui/NavigatorWidget.h"
#include "gui/TransformationCenterPointControl.h"
#include "support/EditorScriptFixture.h"
#include "support/TestRegistry.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

/// `widgets` and the widgets it gives.
class TestScriptWidgets : public QObject
{
    Q_OBJECT

private slots:
    void widgetsAreFoundByNameClassAndTitle();
    void anUnclearPathNamesTheCandidates();
    void ofEqualNamesTheVisibleOneCounts();
    void whatCanBeReadIsRead();
    void aClickIsRealAndRefusesWhatAPersonCouldNotClick();
    void checkMarksAreSetByClicks();
    void colorsAreReadAndChosen();
    void cellsAreReadAndChosen();
    void theFrameOfANavigatorAndTheLevelsOfAHistogramAreRead();
    void theStateOfAMagnifierIsRead();
    void valuesAreTypedIntoSpinBoxes();
    void aSliderIsDragged();
    void fieldsAreTypedOver();
    void itemsAreChosen();
    void anItemIsHitWhereItLies();
    void whatDoesNotFitTheKindIsRefused();
    void theTreeShowsWhatIsThere();
    void aWidgetThatIsGoneSaysSo();
    void widgetsBehindAModalWindowAreBlocked();
};

namespace {
/// A window of every kind of control.
class Controls : public QWidget
{
public:
    explicit Controls(QWidget* parent) : QWidget(parent, Qt::Window)
    {
        setObjectName("controls");
        setWindowTitle("All controls");
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(&button);
        layout->addWidget(&check);
        layout->addWidget(&radio);
        layout->addWidget(&nearby);
        layout->addWidget(&spin);
        layout->addWidget(&fraction);
        layout->addWidget(&slider);
        layout->addWidget(&line);
        layout->addWidget(&page);
        layout->addWidget(&combo);
        layout->addWidget(&list);
        layout->addWidget(&tabs);
        layout->addWidget(&label);
        layout->addWidget(&group);
        const QList<QPair<QWidget*, const char*>> names{
            {&button, "button"}, {&check, "check"}, {&radio, "radio"}, {&spin, "spin"},   {&fraction, "part"},
            {&slider, "bar"},    {&line, "line"},   {&page, "page"},   {&combo, "combo"}, {&list, "list"},
            {&tabs, "tabs"},     {&label, "label"}, {&group, "group"}};
        for (const auto& [widget, name] : names)
            widget->setObjectName(name);
        spin.setRange(0, 500);
        fraction.setRange(0, 10);
        slider.setRange(0, 50);
        combo.addItems({"red", "green", "blue"});
        list.addItems({"one", "two, whose text is much wider than the list that shows it " + QString(80, 'x'),
                       "three"});
        tabs.addTab(new QLabel("first page"), "&First");
        tabs.addTab(new QLabel("second page"), "S&econd");
        button.setToolTip("Does it");
        button.setAccessibleName("Doer");
        resize(500, 560);
        show();
    }

    QPushButton button{"&Do it"};
    QCheckBox check{"&Wide"};
    QRadioButton radio{"Far"};
    QRadioButton nearby{"Near"};
    QSpinBox spin;
    QDoubleSpinBox fraction;
    QSlider slider{Qt::Horizontal};
    QLineEdit line;
    QPlainTextEdit page;
    QComboBox combo;
    QListWidget list;
    QTabWidget tabs;
    QLabel label{"Read & write"};
    QGroupBox group{"&Group"};
};
} // namespace

void TestScriptWidgets::widgetsAreFoundByNameClassAndTitle()
{
    EditorScriptFixture editor;
    const Controls controls(editor.Window());
    editor.Check(R"(
        expect.equal(widgets.find("controls/spin").className, "QSpinBox")
        expect.equal(widgets.find("All controls/QSlider").name, "bar")
        expect.equal(widgets.find("mainWindow/All controls").name, "controls")
        expect.equal(widgets.find("controls").find("line").name, "line")
        expect.equal(widgets.findAll("All controls/QAbstractButton").map(widget => widget.name).slice(0, 3),
                     ["button", "check", "radio"])
        expect.equal([widgets.shows("controls/line"), widgets.shows("controls/liner")], [true, false])
        expect.throws(function() { widgets.find("controls/liner") }, "There is no widget \"controls/liner\".")
        expect.throws(function() { widgets.find("") }, "There is no widget")
    )");
}

void TestScriptWidgets::anUnclearPathNamesTheCandidates()
{
    EditorScriptFixture editor;
    const Controls controls(editor.Window());
    editor.Check(R"(
        expect.throws(function() { widgets.find("controls/QAbstractSpinBox") },
                      "\"controls/QAbstractSpinBox\" names 2 widgets")
        expect.throws(function() { widgets.find("controls/QAbstractSpinBox") }, "controls/part")
    )");
}

void TestScriptWidgets::ofEqualNamesTheVisibleOneCounts()
{
    EditorScriptFixture editor;
    Controls controls(editor.Window());
    QLabel hidden("hidden", &controls);
    hidden.setObjectName("label");
    hidden.hide();
    editor.Check(R"(
        expect.equal(widgets.find("controls/label").text, "Read & write")
        expect.equal(widgets.findAll("controls/label").map(label => label.visible), [true, false])
    )");
}

void TestScriptWidgets::whatCanBeReadIsRead()
{
    EditorScriptFixture editor;
    Controls controls(editor.Window());
    controls.spin.setValue(7);
    controls.line.setText("words");
    controls.page.setPlainText("a page");
    controls.radio.setEnabled(false);
    controls.combo.setCurrentIndex(1);
    editor.Check(R"(
        const at = name => widgets.find("controls/" + name)
        expect.equal(["button", "check", "label", "group", "line", "page", "combo", "tabs", "spin"].map(name =>
            at(name).text), ["Do it", "Wide", "Read & write", "Group", "words", "a page", "green", "First", "7"])
        expect.equal([at("spin").value, at("bar").value, at("part").value, at("line").value], [7, 0, 0, undefined])
        expect.equal([at("combo").items, at("list").items, at("tabs").items],
                     [["red", "green", "blue"], ["one", at("list").items[1], "three"], ["First", "Second"]])
        expect.equal([at("combo").index, at("list").index, at("tabs").index, at("spin").index], [1, -1, 0, -1])
        expect.equal([at("button").toolTip, at("button").accessibleName], ["Does it", "Doer"])
        expect.equal([at("radio").enabled, at("button").enabled, at("check").checked], [false, true, false])
        expect.equal(widgets.find("controls").title, "All controls")
        expect.equal(widgets.find("controls").geometry, { x: 0, y: 0, width: 500, height: 560 })
    )");
}

void TestScriptWidgets::aClickIsRealAndRefusesWhatAPersonCouldNotClick()
{
    EditorScriptFixture editor;
    Controls controls(editor.Window());
    const QSignalSpy pressed(&controls.button, &QAbstractButton::pressed);
    const QSignalSpy clicked(&controls.button, &QAbstractButton::clicked);
    editor.Check("widgets.find('controls/button').click()");
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(clicked.count(), 1);

    controls.button.setEnabled(false);
    controls.check.hide();
    editor.Check(R"(
        expect.throws(function() { widgets.find("controls/button").click() }, "is disabled.")
        expect.throws(function() { widgets.find("controls/check").click() }, "is hidden.")
        expect.throws(function() { input.click(1, 1, { in: "controls/button" }) }, "is disabled.")
    )");
    QCOMPARE(clicked.count(), 1);
}

void TestScriptWidgets::checkMarksAreSetByClicks()
{
    EditorScriptFixture editor;
    Controls controls(editor.Window());
    const QSignalSpy clicked(&controls.check, &QAbstractButton::clicked);
    editor.Check(R"(
        const check = widgets.find("controls/check")
        check.setChecked(true)
        check.setChecked(true)
        expect.equal(check.checked, true)
        widgets.find("controls/radio").setChecked(true)
        expect.throws(function() { widgets.find("controls/button").setChecked(true) }, "has no check mark")
        expect.throws(function() { widgets.find("controls/radio").setChecked(false) }, "can't be unchecked")
    )");
    QCOMPARE(clicked.count(), 1);
    QVERIFY(controls.radio.isChecked());
}

void TestScriptWidgets::theStateOfAMagnifierIsRead()
{
    EditorScriptFixture editor(40, 30);
    QDialog window(editor.Window());
    auto* layout = new QVBoxLayout(&window);
    auto* magnifier = new CameraView(&window);
    layout->addWidget(magnifier);
    magnifier->SetDocument(editor.Document());
    window.show();
    editor.Check(R"(
        const magnifier = widgets.find("CameraView")
        expect.equal(magnifier.value, { x: 20, y: 15, scale: 2, grid: "none" })
        magnifier.focus()
        input.key("Right")
        input.key("+")
        expect.equal(magnifier.value, { x: 21, y: 15, scale: 3, grid: "none" })
    )");
    const QStringList words{"none", "standard", "lighten", "darken"};
    for (int type = CameraView::NoGrid; type <= CameraView::DarkenGrid; ++type) {
        magnifier->SetGridType(type);
        editor.Check(
            QString(R"(expect.equal(widgets.find("CameraView").value.grid, "%1"))").arg(words[type]));
    }
}

void TestScriptWidgets::valuesAreTypedIntoSpinBoxes()
{
    EditorScriptFixture editor;
    Controls controls(editor.Window());
    const QSignalSpy finished(&controls.spin, &QAbstractSpinBox::editingFinished);
    editor.Check(R"(
        widgets.find("controls/spin").setValue(250)
        widgets.find("controls/part").setValue(2.5)
        expect.throws(function() { widgets.find("controls/spin").setValue(501) }, "goes from 0 to 500, not to 501")
        expect.throws(function() { widgets.find("controls/spin").setValue("many") }, "value has to be a number")
    )");
    QCOMPARE(controls.spin.value(), 250);
    QCOMPARE(controls.fraction.value(), 2.5);
    QVERIFY(finished.count() > 0);
}

void TestScriptWidgets::aSliderIsDragged()
{
    EditorScriptFixture editor;
    Controls controls(editor.Window());
    const QSignalSpy moved(&controls.slider, &QAbstractSlider::sliderMoved);
    const QSignalSpy released(&controls.slider, &QAbstractSlider::sliderReleased);
    editor.Check("widgets.find('controls/bar').setValue(33)");
    QCOMPARE(controls.slider.value(), 33);
    QCOMPARE(moved.count(), 1);
    QCOMPARE(released.count(), 1);
}

void TestScriptWidgets::fieldsAreTypedOver()
{
    EditorScriptFixture editor;
    Controls controls(editor.Window());
    controls.line.setText("old");
    controls.page.setPlainText("old page");
    const QSignalSpy returned(&controls.line, &QLineEdit::returnPressed);
    editor.Check(R"(
        widgets.find("controls/line").setText("New & bold")
        widgets.find("controls/page").setText("One\nTwo")
    )");
    QCOMPARE(controls.line.text(), QString("New & bold"));
    QCOMPARE(controls.page.toPlainText(), QString("One\nTwo"));
    QCOMPARE(returned.count(), 1);
    editor.Check("widgets.find('controls/line').setText('')");
    QCOMPARE(controls.line.text(), QString());
}

void TestScriptWidgets::itemsAreChosen()
{
    EditorScriptFixture editor;
    Controls controls(editor.Window());
    const QSignalSpy activated(&controls.combo, qOverload<int>(&QComboBox::activated));
    editor.Check(R"(
        const at = name => widgets.find("controls/" + name)
        at("combo").choose("blue")
        expect.equal(at("combo").index, 2)
        for (const index of [0, 1, 0, 1, 2, 1]) {
            at("combo").choose(index)
            expect.equal(at("combo").index, index)
        }
        at("list").choose("three")
        expect.equal(at("list").index, 2)
        at("tabs").choose("Second")
        expect.equal(at("tabs").index, 1)
        expect.ok(widgets.shows("controls/tabs/QLabel"))
        expect.throws(function() { at("combo").choose("pink") }, "has no item \"pink\"; there are: red, green, blue")
        expect.throws(function() { at("list").choose(3) }, "has 3 items, and no item 3")
    )");
    QCOMPARE(activated.count(), 7);
}

void TestScriptWidgets::anItemIsHitWhereItLies()
{
    EditorScriptFixture editor;
    Controls controls(editor.Window());
    editor.Check(R"(
        const list = widgets.find("controls/list"), place = list.itemGeometry(1)
        input.click(place.x + 2, place.y + place.height - 1, { in: list })
        expect.equal(list.index, 1)
        expect.ok(place.x + place.width <= list.geometry.width, "what is seen")
        expect.equal(list.itemGeometry(3), null)
        expect.equal(widgets.find("controls/line").itemGeometry(0), null)
        const tabs = widgets.find("controls/tabs/QTabBar"), second = tabs.itemGeometry(1)
        input.click(second.x + second.width / 2, second.y + second.height / 2, { in: tabs })
        expect.equal(tabs.text, "Second")
    )");
    QCOMPARE(controls.list.currentRow(), 1);
}

void TestScriptWidgets::whatDoesNotFitTheKindIsRefused()
{
    EditorScriptFixture editor;
    const Controls controls(editor.Window());
    editor.Check(R"(
        const at = name => widgets.find("controls/" + name)
        expect.throws(function() { at("line").setValue(1) }, "has no value that can be set")
        expect.throws(function() { at("label").setText("x") }, "has no text that can be typed")
        expect.throws(function() { at("button").choose(0) }, "has 0 items")
    )");
}

void TestScriptWidgets::theTreeShowsWhatIsThere()
{
    EditorScriptFixture editor;
    Controls controls(editor.Window());
    controls.radio.setEnabled(false);
    controls.check.setChecked(true);
    editor.Check(R"(
        const lines = widgets.find("controls").tree().split("\n")
        expect.equal(lines[0], "QWidget controls \"All controls\"")
        expect.contains(lines, "  QPushButton button \"Do it\"")
        expect.contains(lines, "  QCheckBox check \"Wide\" checked")
        expect.contains(lines, "  QRadioButton radio \"Far\" disabled")
        expect.contains(widgets.tree(), "MainWindow mainWindow")
    )");
}

void TestScriptWidgets::aWidgetThatIsGoneSaysSo()
{
    EditorScriptFixture editor;
    auto* controls = new Controls(editor.Window());
    controls->setAttribute(Qt::WA_DeleteOnClose);
    editor.Check(R"(
        const gone = widgets.find("controls")
        gone.close()
        expect.equal(gone.exists, false)
        expect.throws(function() { gone.text }, "The widget is no longer there.")
        expect.throws(function() { gone.click() }, "The widget is no longer there.")
        expect.equal(widgets.modal, null)
    )");
}

void TestScriptWidgets::widgetsBehindAModalWindowAreBlocked()
{
    EditorScriptFixture editor;
    Controls controls(editor.Window());
    QDialog dialog(editor.Window());
    dialog.setWindowTitle("Question");
    connect(&controls.button, &QAbstractButton::clicked, &dialog, &QDialog::exec);
    editor.Check(R"(
        let blocked = "", modal = ""
        dialogs.expect({ title: "Question", answer: "" }, function(dialog) {
            modal = widgets.modal.title
            try { widgets.find("controls/check").click() } catch (error) { blocked = error.message }
        })
        widgets.find("controls/button").click()
        expect.equal(modal, "Question")
        expect.contains(blocked, "is blocked by \"Question\"")
    )");
    QVERIFY(!controls.check.isChecked());
}

void TestScriptWidgets::colorsAreReadAndChosen()
{
    EditorScriptFixture editor(4, 3);
    QDialog window(editor.Window());
    auto* button = new LXColorButton(&window);
    button->setObjectName("probe");
    button->SetColor(QColor(10, 20, 30));
    button->SetDialogTitle("Pick one");
    window.show();
    editor.Check(R"(
        const probe = widgets.find("probe")
        expect.equal(probe.value, "#ff0a141e")
        dialogs.expect({ title: "Pick one" }, function(dialog) {
            expect.equal(dialog.value, "#ff0a141e")
            dialog.find("m_pRedSpn").setValue(200)
            expect.equal(dialog.value, "#ffc8141e")
            input.key("Return")
        })
        probe.click()
        expect.equal(probe.value, "#ffc8141e")
    )");
    QCOMPARE(button->GetColor(), QColor(200, 20, 30));
}

void TestScriptWidgets::cellsAreReadAndChosen()
{
    EditorScriptFixture editor(4, 3);
    QDialog window(editor.Window());
    auto* layout = new QVBoxLayout(&window);
    auto* anchor = new LXAnchorSelection(&window);
    auto* center = new TransformationCenterPointControl(&window);
    layout->addWidget(anchor);
    layout->addWidget(center);
    window.show();
    QSignalSpy changed(center, &TransformationCenterPointControl::StateChanged);
    editor.Check(R"(
        const anchor = widgets.find("LXAnchorSelection")
        expect.equal([anchor.items.length, anchor.items[0], anchor.index], [9, "Top left", 4])
        anchor.choose("Top right")
        expect.equal(anchor.index, 2)
        const place = anchor.itemGeometry(7)
        input.click(place.x + place.width / 2, place.y + place.height / 2, { in: anchor })
        expect.equal(anchor.index, 7)
        expect.equal(anchor.itemGeometry(9), null)

        const center = widgets.find("TransformationCenterPointControl")
        expect.equal(center.index, -1)
        center.choose(8)
        expect.equal(center.index, 8)
        expect.throws(function() { center.choose("Outside") }, "Top left, ")
    )");
    QCOMPARE(anchor->GetState(), LXAnchorSelection::Bottom);
    QCOMPARE(center->GetState(), TransformationCenterPointControl::BottomRight);
    QCOMPARE(changed.count(), 1);
}

void TestScriptWidgets::theFrameOfANavigatorAndTheLevelsOfAHistogramAreRead()
{
    EditorScriptFixture editor(40, 30);
    QDialog window(editor.Window());
    auto* layout = new QVBoxLayout(&window);
    auto* navigator = new NavigatorWidget(&window);
    auto* histogram = new HistogramWidget(&window);
    layout->addWidget(navigator);
    layout->addWidget(histogram);
    navigator->SetDocument(editor.Document(), nullptr);
    navigator->SetViewRect(QRectF(3, 4, 20.5, 10));
    histogram->SetDocument(editor.Document());
    window.show();
    editor.Check(R"(
        expect.equal(widgets.find("NavigatorWidget").value, { x: 3, y: 4, width: 20.5, height: 10 })
        const histogram = widgets.find("HistogramWidget")
        expect.equal(histogram.value, { first: 0, last: 255 })
        histogram.focus()
        input.key("Home")
        input.key("Shift+Right")
        expect.equal(histogram.value, { first: 0, last: 1 })
        input.key("Esc")
        expect.equal(histogram.value, { first: 0, last: 255 })
    )");
}

#include "tst_scriptwidgets.moc"
ZK_REGISTER_TEST(tst_scriptwidgets, TestScriptWidgets)
