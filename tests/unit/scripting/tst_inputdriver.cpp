#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QApplication>
#include <QDialog>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QtMath>

namespace {
QString ButtonsText(Qt::MouseButtons buttons)
{
    QString text;
    if (buttons & Qt::LeftButton) text += 'L';
    if (buttons & Qt::MiddleButton) text += 'M';
    if (buttons & Qt::RightButton) text += 'R';
    return text.isEmpty() ? QStringLiteral("-") : text;
}

QString ModifiersText(Qt::KeyboardModifiers modifiers)
{
    QString text;
    if (modifiers & Qt::ShiftModifier) text += 's';
    if (modifiers & Qt::ControlModifier) text += 'c';
    if (modifiers & Qt::AltModifier) text += 'a';
    return text.isEmpty() ? QStringLiteral("-") : text;
}

/// Writes down what it is sent, a line for each event, with what the program would read globally meanwhile.
class Probe : public QWidget
{
public:
    QStringList log;

    explicit Probe(QWidget* parent = nullptr) : QWidget(parent)
    {
        setMouseTracking(true);
        setFocusPolicy(Qt::StrongFocus);
        resize(200, 150);
    }

    /// The log since the last call.
    QStringList Take()
    {
        QStringList taken;
        std::swap(taken, log);
        return taken;
    }

protected:
    bool event(QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::Enter: log << "enter"; break;
        case QEvent::Leave: log << "leave"; break;
        case QEvent::MouseButtonPress: NoteMouse("press", event); break;
        case QEvent::MouseButtonRelease: NoteMouse("release", event); break;
        case QEvent::MouseButtonDblClick: NoteMouse("double", event); break;
        case QEvent::MouseMove: NoteMouse("move", event); break;
        case QEvent::Wheel: NoteWheel(static_cast<QWheelEvent*>(event)); break;
        case QEvent::KeyPress: NoteKey("down", static_cast<QKeyEvent*>(event)); break;
        case QEvent::KeyRelease: NoteKey("up", static_cast<QKeyEvent*>(event)); break;
        default: return QWidget::event(event);
        }
        event->accept();
        return true;
    }

private:
    void NoteMouse(const QString& what, QEvent* event)
    {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const QPoint cursor = mapFromGlobal(QCursor::pos());
        const QString line = QString("%1 %2,%3 %4 %5")
                                 .arg(what)
                                 .arg(mouse->x())
                                 .arg(mouse->y())
                                 .arg(ButtonsText(mouse->buttons()), ModifiersText(mouse->modifiers()));
        if (cursor != mouse->pos()) log << "cursor elsewhere";
        if (QGuiApplication::mouseButtons() != mouse->buttons()) log << "other buttons globally";
        if (QGuiApplication::keyboardModifiers() != mouse->modifiers()) log << "other modifiers globally";
        log << line;
    }

    void NoteWheel(const QWheelEvent* wheel)
    {
        log << QString("wheel %1,%2 by %3,%4 %5")
                   .arg(wheel->position().x())
                   .arg(wheel->position().y())
                   .arg(wheel->angleDelta().x())
                   .arg(wheel->angleDelta().y())
                   .arg(ModifiersText(wheel->modifiers()));
    }

    void NoteKey(const QString& what, const QKeyEvent* key)
    {
        log << QString("%1 %2 %3%4")
                   .arg(what, QVariant::fromValue(Qt::Key(key->key())).toString().mid(4),
                        ModifiersText(QGuiApplication::keyboardModifiers()),
                        key->isAutoRepeat() ? " repeat" : "");
    }
};

/// A scene that keeps where it was pressed.
class ProbeScene : public QGraphicsScene
{
public:
    using QGraphicsScene::QGraphicsScene;
    QVector<QPointF> presses;

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override { presses << event->scenePos(); }
};

template <typename Widget>
void Show(Widget& widget)
{
    widget.show();
    QVERIFY(QTest::qWaitForWindowActive(&widget));
    widget.setFocus();
}
} // namespace

class TestInputDriver : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void clickIsPressAndReleaseAtTheSpot();
    void otherButtonsAndModifiersAreSeen();
    void twoClicksAreNoDoubleClick();
    void doubleClickIsOne();
    void dragMovesWithTheButtonDown();
    void dragLeavesTheWidgetAndKeepsSendingToIt();
    void enterAndLeaveFollowThePointer();
    void windowBelowADialogHearsNothing();
    void wheelTurns();
    void keysGoToTheFocus();
    void heldModifiersStayDown();
    void shortcutsAreTriggered();
    void textIsTyped();
    void scenePointsHitTheirPixel_data();
    void scenePointsHitTheirPixel();
    void popupGetsTheMouseFirst();
    void modalDialogIsAnsweredFromItsOwnLoop();
    void modalActionsWaitForTheirKindOfWindow();
    void modalActionsChain();
    void pressThatClosesTheWindowIsHarmless();
    void whatIsDownIsLetGoAtTheEnd();
    void twentyRunsAreAlike();
};

void TestInputDriver::init()
{
    QCursor::setPos(790, 590);
    QCoreApplication::processEvents();
}

void TestInputDriver::clickIsPressAndReleaseAtTheSpot()
{
    Probe probe;
    Show(probe);
    InputDriver().Click(&probe, QPoint(30, 40));
    QCOMPARE(probe.Take(), QStringList({"enter", "move 30,40 - -", "press 30,40 L -", "release 30,40 - -"}));
}

void TestInputDriver::otherButtonsAndModifiersAreSeen()
{
    Probe probe;
    Show(probe);
    InputDriver input;
    input.Move(&probe, QPoint(5, 6));
    probe.Take();
    input.Click(&probe, QPoint(5, 6), Qt::RightButton, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(probe.Take(), QStringList({"down Shift s", "down Control sc", "press 5,6 R sc",
                                        "release 5,6 - sc", "up Shift c", "up Control -"}));
}

void TestInputDriver::twoClicksAreNoDoubleClick()
{
    Probe probe;
    Show(probe);
    InputDriver input;
    input.Click(&probe, QPoint(30, 40));
    input.Click(&probe, QPoint(30, 40));
    QCOMPARE(probe.log.filter("double").size(), 0);
    QCOMPARE(probe.log.filter("press").size(), 2);
}

void TestInputDriver::doubleClickIsOne()
{
    Probe probe;
    Show(probe);
    InputDriver input;
    input.Move(&probe, QPoint(30, 40));
    probe.Take();
    input.DoubleClick(&probe, QPoint(30, 40));
    QCOMPARE(probe.Take(),
             QStringList({"press 30,40 L -", "release 30,40 - -", "double 30,40 L -", "release 30,40 - -"}));
}

void TestInputDriver::dragMovesWithTheButtonDown()
{
    Probe probe;
    Show(probe);
    InputDriver input;
    input.Move(&probe, QPoint(10, 10));
    probe.Take();
    input.Drag(&probe, {QPoint(10, 10), QPoint(30, 50), QPoint(30, 10)}, Qt::LeftButton, Qt::NoModifier, 2);
    QCOMPARE(probe.Take(), QStringList({"press 10,10 L -", "move 20,30 L -", "move 30,50 L -",
                                        "move 30,30 L -", "move 30,10 L -", "release 30,10 - -"}));
}

void TestInputDriver::dragLeavesTheWidgetAndKeepsSendingToIt()
{
    Probe probe;
    Show(probe);
    InputDriver input;
    input.Drag(&probe, {QPoint(10, 10), QPoint(-20, 400)}, Qt::LeftButton, Qt::NoModifier, 1);
    QCOMPARE(probe.Take(), QStringList({"enter", "move 10,10 - -", "press 10,10 L -", "move -20,400 L -",
                                        "release -20,400 - -", "leave"}));
}

void TestInputDriver::enterAndLeaveFollowThePointer()
{
    QWidget window;
    window.resize(300, 200);
    Probe left(&window);
    Probe right(&window);
    left.setGeometry(0, 0, 100, 200);
    right.setGeometry(150, 0, 100, 200);
    Show(window);

    InputDriver input;
    input.Move(&left, QPoint(50, 50));
    QCOMPARE(left.Take(), QStringList({"enter", "move 50,50 - -"}));
    input.Move(&right, QPoint(50, 50));
    QCOMPARE(left.Take(), QStringList({"leave"}));
    QCOMPARE(right.Take(), QStringList({"enter", "move 50,50 - -"}));
    QCOMPARE(QApplication::widgetAt(QCursor::pos()), static_cast<QWidget*>(&right));
}

void TestInputDriver::windowBelowADialogHearsNothing()
{
    Probe below;
    below.setGeometry(0, 0, 400, 400);
    Show(below);
    Probe above;
    above.setWindowFlag(Qt::Dialog);
    above.setGeometry(100, 100, 100, 100);
    Show(above);
    below.Take();

    InputDriver().Click(&above, QPoint(30, 30));
    QCOMPARE(below.Take(), QStringList());
    QCOMPARE(above.Take(), QStringList({"enter", "move 30,30 - -", "press 30,30 L -", "release 30,30 - -"}));
}

void TestInputDriver::wheelTurns()
{
    Probe probe;
    Show(probe);
    InputDriver input;
    input.Move(&probe, QPoint(7, 9));
    probe.Take();
    input.Wheel(&probe, QPoint(7, 9), 120);
    input.Wheel(&probe, QPoint(7, 9), -240, Qt::ControlModifier);
    QCOMPARE(probe.log.filter("wheel"), QStringList({"wheel 7,9 by 0,120 -", "wheel 7,9 by 0,-240 c"}));
}

void TestInputDriver::keysGoToTheFocus()
{
    Probe probe;
    Show(probe);
    InputDriver input;
    input.Key(Qt::Key_B, Qt::ControlModifier);
    QCOMPARE(probe.Take(), QStringList({"down Control c", "down B c", "up B c", "up Control -"}));
    input.KeyDown(Qt::Key_Space);
    input.RepeatKey(Qt::Key_Space);
    input.KeyUp(Qt::Key_Space);
    QCOMPARE(probe.Take(), QStringList({"down Space -", "down Space - repeat", "up Space -"}));
}

void TestInputDriver::heldModifiersStayDown()
{
    Probe probe;
    Show(probe);
    InputDriver input;
    input.HoldModifiers(Qt::AltModifier);
    input.Click(&probe, QPoint(1, 2), Qt::LeftButton, Qt::ShiftModifier);
    QVERIFY(probe.log.contains("press 1,2 L sa"));
    QCOMPARE(input.GetModifiers(), Qt::KeyboardModifiers(Qt::AltModifier));
    input.HoldModifiers(Qt::NoModifier);
    QCOMPARE(QGuiApplication::keyboardModifiers(), Qt::KeyboardModifiers(Qt::NoModifier));
}

void TestInputDriver::shortcutsAreTriggered()
{
    Probe probe;
    Show(probe);
    QShortcut shortcut(QKeySequence("Ctrl+Shift+Z"), &probe);
    QSignalSpy spy(&shortcut, &QShortcut::activated);
    InputDriver().Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(spy.size(), 1);
}

void TestInputDriver::textIsTyped()
{
    QLineEdit edit;
    Show(edit);
    QSignalSpy entered(&edit, &QLineEdit::returnPressed);
    InputDriver input;
    input.Type("Lake 2, v1.5\n");
    QCOMPARE(edit.text(), QString("Lake 2, v1.5"));
    QCOMPARE(entered.size(), 1);
}

void TestInputDriver::scenePointsHitTheirPixel_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<QPointF>("scenePos");
    QTest::addColumn<QPoint>("pixel");

    QTest::newRow("whole, 1:1") << 1.0 << QPointF(3, 4) << QPoint(3, 4);
    QTest::newRow("middle, 1:1") << 1.0 << QPointF(3.5, 4.5) << QPoint(3, 4);
    QTest::newRow("end of a pixel, 1:1") << 1.0 << QPointF(3.9, 4.9) << QPoint(3, 4);
    QTest::newRow("just outside") << 1.0 << QPointF(-0.5, 3.2) << QPoint(-1, 3);
    QTest::newRow("middle, 8:1") << 8.0 << QPointF(3.5, 4.5) << QPoint(3, 4);
    QTest::newRow("whole, 3:1") << 3.0 << QPointF(3, 4) << QPoint(3, 4);
}

void TestInputDriver::scenePointsHitTheirPixel()
{
    QFETCH(double, scale);
    QFETCH(QPointF, scenePos);
    QFETCH(QPoint, pixel);
    ProbeScene scene(QRectF(-20, -20, 120, 120));
    QGraphicsView view(&scene);
    view.resize(400, 300);
    view.scale(scale, scale);
    view.centerOn(pixel);
    Show(view);

    InputDriver().ClickInScene(&view, scenePos);
    QCOMPARE(scene.presses.size(), 1);
    const QPointF pressed = scene.presses.first();
    QCOMPARE(QPoint(qFloor(pressed.x() + 1e-6), qFloor(pressed.y() + 1e-6)), pixel);
}

void TestInputDriver::popupGetsTheMouseFirst()
{
    Probe probe;
    Show(probe);
    QMenu menu;
    QAction* entry = menu.addAction("Entry");
    QSignalSpy chosen(entry, &QAction::triggered);
    menu.popup(probe.mapToGlobal(QPoint(20, 20)));
    probe.Take();

    InputDriver input;
    input.Click(&menu, menu.actionGeometry(entry).center());
    QCOMPARE(chosen.size(), 1);

    menu.popup(probe.mapToGlobal(QPoint(20, 20)));
    input.Click(&probe, QPoint(3, 3));
    QVERIFY(!menu.isVisible());
    QCOMPARE(chosen.size(), 1);
}

void TestInputDriver::modalDialogIsAnsweredFromItsOwnLoop()
{
    QPushButton opener("Ask");
    int answer = -1;
    connect(&opener, &QPushButton::clicked, &opener, [&] {
        QMessageBox box(QMessageBox::Question, "Close", "Save?", QMessageBox::Yes | QMessageBox::No, &opener);
        answer = box.exec();
    });
    Show(opener);

    InputDriver input;
    input.WhenModalShows<QMessageBox>([&](QMessageBox* box) { input.Click(box->button(QMessageBox::No)); });
    QCOMPARE(input.CountWaitingActions(), 1);
    input.Click(&opener);
    QCOMPARE(answer, int(QMessageBox::No));
    QCOMPARE(input.CountWaitingActions(), 0);
    QCOMPARE(input.GetButtons(), Qt::MouseButtons(Qt::NoButton));
}

void TestInputDriver::modalActionsWaitForTheirKindOfWindow()
{
    InputDriver input;
    QString seen;
    input.WhenModalShows<QMessageBox>([&](QMessageBox* box) {
        seen += "box ";
        box->reject();
    });
    input.WhenModalShows([&](QWidget* dialog) {
        seen += "dialog ";
        dialog->close();
    });
    QDialog dialog;
    dialog.exec();
    QMessageBox box;
    box.exec();
    QCOMPARE(seen, QString("dialog box "));
}

void TestInputDriver::modalActionsChain()
{
    QDialog outer;
    QVBoxLayout layout(&outer);
    QPushButton opener("More");
    layout.addWidget(&opener);
    bool innerWasShown = false;
    connect(&opener, &QPushButton::clicked, &outer, [&] {
        QMessageBox inner(&outer);
        inner.exec();
        outer.accept();
    });

    InputDriver input;
    input.WhenModalShows<QDialog>([&](QDialog*) {
        input.WhenModalShows<QMessageBox>([&](QMessageBox*) {
            innerWasShown = true;
            input.Key(Qt::Key_Escape);
        });
        input.Click(&opener);
    });
    QCOMPARE(outer.exec(), int(QDialog::Accepted));
    QVERIFY(innerWasShown);
}

void TestInputDriver::pressThatClosesTheWindowIsHarmless()
{
    auto* doomed = new QPushButton("Close");
    Show(*doomed);
    const QPointer<QPushButton> alive(doomed);
    connect(doomed, &QPushButton::pressed, doomed, [doomed] { doomed->deleteLater(); });
    InputDriver input;
    input.Press(doomed, QPoint(2, 2));
    QCoreApplication::sendPostedEvents(doomed, QEvent::DeferredDelete);
    QVERIFY(!alive);

    Probe probe;
    Show(probe);
    input.Release(&probe, QPoint(2, 2));
    QCOMPARE(QGuiApplication::mouseButtons(), Qt::MouseButtons(Qt::NoButton));
}

void TestInputDriver::whatIsDownIsLetGoAtTheEnd()
{
    Probe probe;
    Show(probe);
    {
        InputDriver input;
        input.HoldModifiers(Qt::ControlModifier);
        input.Press(&probe, QPoint(2, 2));
        QCOMPARE(QGuiApplication::mouseButtons(), Qt::MouseButtons(Qt::LeftButton));
    }
    QCOMPARE(QGuiApplication::mouseButtons(), Qt::MouseButtons(Qt::NoButton));
    QCOMPARE(QGuiApplication::keyboardModifiers(), Qt::KeyboardModifiers(Qt::NoModifier));
}

void TestInputDriver::twentyRunsAreAlike()
{
    QStringList first;
    for (int run = 0; run < 20; ++run) {
        init();
        Probe probe;
        Show(probe);
        probe.Take();
        InputDriver input;
        input.Click(&probe, QPoint(50, 60));
        input.DoubleClick(&probe, QPoint(20, 20), Qt::LeftButton, Qt::ShiftModifier);
        input.Drag(&probe, {QPoint(5, 5), QPoint(150, 100)}, Qt::MiddleButton);
        input.Wheel(&probe, QPoint(9, 9), -120);
        input.Key(Qt::Key_Delete);
        const QStringList log = probe.Take();
        if (run == 0) first = log;
        QVERIFY(!log.isEmpty());
        QVERIFY(log.filter("elsewhere").isEmpty() && log.filter("globally").isEmpty());
        QCOMPARE(log, first);
    }
}

ZK_REGISTER_TEST(tst_inputdriver, TestInputDriver)
#include "tst_inputdriver.moc"
