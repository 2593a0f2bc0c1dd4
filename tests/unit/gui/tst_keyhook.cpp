#include "gui/LXShortcut.h"
#include "gui/LexoAppKeyHook.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

/// Keys of the whole program: each physical press once, and shortcuts that can be switched off.
class TestKeyHook : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void pressAndReleaseAreToldOnce();
    void aKeyThatAShortcutTakesIsToldToo();
    void autoRepeatIsNoPress();
    void aKeyIsToldUnderTheNameOfItsPress();
    void keysAreReleasedWhenTheProgramLosesTheFocus();
    void keysOfOtherWindowsAreTold();

    void disabledActionShortcutDoesNothingAndItsKeyReachesTheFocus();
    void keysAreToldWhileShortcutsAreOff();
    void disablingTwiceIsUndoneByEnablingOnce();
    void disabledShortcutsStayOffInADialog();
    void mnemonicsOfADialogWorkWhileShortcutsAreOff();
    void typingIntoAFieldBeatsALetterShortcut();

    void shortcutActsAndIsTold();
    void disabledShortcutIsSilent();
    void shortcutWithoutAKeyNeverActs();
    void deletedShortcutIsSilent();
    void shortcutWithoutAParentKeepsItsKey();
    void twoShortcutsOnOneKeyTakeTurns();
    void twoActionsOnOneKeyDoNothingAndAreTold();
    void twoActionsOnOneKeyAreSilentWhileShortcutsAreOff();

private:
    std::unique_ptr<QMainWindow> m_pWindow;
    QLineEdit* m_pField = nullptr;
};

namespace {
/// Counts the key presses that arrive at a widget.
class PressCounter : public QObject
{
public:
    explicit PressCounter(QWidget* widget) { widget->installEventFilter(this); }

    int m_Presses = 0;

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) ++m_Presses;
        return false;
    }
};

/// Two actions of a window that share a key.
struct TwoActions
{
    TwoActions(QWidget* window, const QKeySequence& key)
    {
        for (QAction* action : {&first, &second}) {
            action->setShortcut(key);
            window->addAction(action);
        }
    }

    int CountTriggers() const { return firstTriggered.count() + secondTriggered.count(); }

    QAction first;
    QAction second;
    QSignalSpy firstTriggered{&first, &QAction::triggered};
    QSignalSpy secondTriggered{&second, &QAction::triggered};
};

QList<int> KeysOf(const QSignalSpy& spy)
{
    QList<int> keys;
    for (const QList<QVariant>& arguments : spy)
        keys.append(arguments.first().toInt());
    return keys;
}
} // namespace

void TestKeyHook::init()
{
    LexoAppKeyHook::instance()->EnableAllRegisteredShortcuts();
    m_pWindow = std::make_unique<QMainWindow>();
    m_pField = new QLineEdit;
    m_pWindow->setCentralWidget(m_pField);
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
    m_pWindow->setFocus();
}

void TestKeyHook::cleanup()
{
    LexoAppKeyHook::instance()->EnableAllRegisteredShortcuts();
    m_pWindow.reset();
}

void TestKeyHook::pressAndReleaseAreToldOnce()
{
    QSignalSpy pressed(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyPressed);
    QSignalSpy released(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyReleased);
    // Nobody takes the key, so the event climbs from the field through its parents.
    QTest::keyPress(m_pField, Qt::Key_F9);
    QCOMPARE(KeysOf(pressed), QList<int>{Qt::Key_F9});
    QCOMPARE(KeysOf(released), QList<int>());
    QTest::keyRelease(m_pField, Qt::Key_F9);
    QTest::keyClick(m_pField, Qt::Key_F9);
    QCOMPARE(KeysOf(pressed), (QList<int>{Qt::Key_F9, Qt::Key_F9}));
    QCOMPARE(KeysOf(released), (QList<int>{Qt::Key_F9, Qt::Key_F9}));
}

void TestKeyHook::aKeyThatAShortcutTakesIsToldToo()
{
    QAction action;
    action.setShortcut(Qt::Key_F5);
    m_pWindow->addAction(&action);
    QSignalSpy triggered(&action, &QAction::triggered);
    QSignalSpy pressed(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyPressed);
    QSignalSpy released(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyReleased);
    const PressCounter presses(m_pWindow.get());

    QTest::keyClick(m_pWindow.get(), Qt::Key_F5);

    QCOMPARE(triggered.count(), 1);
    QCOMPARE(presses.m_Presses, 0);
    QCOMPARE(KeysOf(pressed), QList<int>{Qt::Key_F5});
    QCOMPARE(KeysOf(released), QList<int>{Qt::Key_F5});
}

void TestKeyHook::autoRepeatIsNoPress()
{
    QSignalSpy pressed(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyPressed);
    QSignalSpy released(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyReleased);
    QTest::keyPress(m_pWindow.get(), Qt::Key_Space);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent up(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, " ", true);
        QCoreApplication::sendEvent(m_pWindow.get(), &up);
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
        QCoreApplication::sendEvent(m_pWindow.get(), &down);
    }
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(released.count(), 0);
    QTest::keyRelease(m_pWindow.get(), Qt::Key_Space);
    QCOMPARE(released.count(), 1);
}

void TestKeyHook::aKeyIsToldUnderTheNameOfItsPress()
{
    constexpr quint32 scanCode = 10;
    QSignalSpy pressed(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyPressed);
    QSignalSpy released(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyReleased);
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Exclam, Qt::ShiftModifier, scanCode, 0, 0, "!");
    QCoreApplication::sendEvent(m_pWindow.get(), &down);
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_1, Qt::NoModifier, scanCode, 0, 0, "1");
    QCoreApplication::sendEvent(m_pWindow.get(), &up);
    QCOMPARE(KeysOf(pressed), QList<int>{Qt::Key_Exclam});
    QCOMPARE(KeysOf(released), QList<int>{Qt::Key_Exclam});
}

void TestKeyHook::keysAreReleasedWhenTheProgramLosesTheFocus()
{
    QSignalSpy released(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyReleased);
    QTest::keyPress(m_pWindow.get(), Qt::Key_Space);
    QApplicationStateChangeEvent left(Qt::ApplicationInactive);
    QCoreApplication::sendEvent(qApp, &left);
    QCOMPARE(KeysOf(released), QList<int>{Qt::Key_Space});

    QSignalSpy pressed(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyPressed);
    QTest::keyClick(m_pWindow.get(), Qt::Key_Space);
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(released.count(), 2);
}

void TestKeyHook::keysOfOtherWindowsAreTold()
{
    QWidget other;
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QSignalSpy pressed(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyPressed);
    QTest::keyClick(&other, Qt::Key_Shift);
    QCOMPARE(KeysOf(pressed), QList<int>{Qt::Key_Shift});
}

void TestKeyHook::disabledActionShortcutDoesNothingAndItsKeyReachesTheFocus()
{
    QAction undo;
    undo.setShortcut(QKeySequence::Undo);
    m_pWindow->addAction(&undo);
    QSignalSpy triggered(&undo, &QAction::triggered);
    const PressCounter presses(m_pWindow.get());

    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    QTest::keyClick(m_pWindow.get(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(triggered.count(), 0);
    QVERIFY(presses.m_Presses > 0);

    LexoAppKeyHook::instance()->EnableAllRegisteredShortcuts();
    QTest::keyClick(m_pWindow.get(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(triggered.count(), 1);
}

void TestKeyHook::keysAreToldWhileShortcutsAreOff()
{
    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    QSignalSpy pressed(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyPressed);
    QSignalSpy released(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyReleased);
    QTest::keyClick(m_pWindow.get(), Qt::Key_Escape);
    QCOMPARE(KeysOf(pressed), QList<int>{Qt::Key_Escape});
    QCOMPARE(KeysOf(released), QList<int>{Qt::Key_Escape});
}

void TestKeyHook::disablingTwiceIsUndoneByEnablingOnce()
{
    LXShortcut shortcut(m_pWindow.get(), Qt::Key_F6);
    QSignalSpy activated(&shortcut, &LXShortcut::Activated);
    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    QVERIFY(!LexoAppKeyHook::instance()->AreShortcutsEnabled());
    QTest::keyClick(m_pWindow.get(), Qt::Key_F6);
    QCOMPARE(activated.count(), 0);
    LexoAppKeyHook::instance()->EnableAllRegisteredShortcuts();
    QTest::keyClick(m_pWindow.get(), Qt::Key_F6);
    QCOMPARE(activated.count(), 1);
}

void TestKeyHook::disabledShortcutsStayOffInADialog()
{
    QDialog dialog(m_pWindow.get());
    dialog.setModal(true);
    LXShortcut shortcut(&dialog, Qt::Key_F7);
    QSignalSpy activated(&shortcut, &LXShortcut::Activated);
    dialog.show();
    dialog.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &dialog);
    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    QTest::keyClick(&dialog, Qt::Key_F7);
    QCOMPARE(activated.count(), 0);
    LexoAppKeyHook::instance()->EnableAllRegisteredShortcuts();
    QTest::keyClick(&dialog, Qt::Key_F7);
    QCOMPARE(activated.count(), 1);
}

void TestKeyHook::mnemonicsOfADialogWorkWhileShortcutsAreOff()
{
    QDialog dialog(m_pWindow.get());
    QPushButton button("&Yes", &dialog);
    QSignalSpy clicked(&button, &QPushButton::clicked);
    dialog.show();
    dialog.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &dialog);
    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    QTest::keyClick(&dialog, Qt::Key_Y, Qt::AltModifier);
    QTRY_COMPARE(clicked.count(), 1);
}

void TestKeyHook::typingIntoAFieldBeatsALetterShortcut()
{
    LXShortcut shortcut(m_pWindow.get(), Qt::Key_F);
    QSignalSpy activated(&shortcut, &LXShortcut::Activated);
    m_pField->setFocus();
    QTest::keyClick(m_pField, Qt::Key_F);
    QCOMPARE(activated.count(), 0);
    QCOMPARE(m_pField->text(), QString("f"));
    QTest::keyClick(m_pWindow.get(), Qt::Key_F);
    QCOMPARE(activated.count(), 1);
}

void TestKeyHook::shortcutActsAndIsTold()
{
    LXShortcut shortcut(m_pWindow.get());
    shortcut.SetKey(QKeySequence("Shift+Alt+N"));
    QSignalSpy activated(&shortcut, &LXShortcut::Activated);
    QSignalSpy told(LexoAppKeyHook::instance(), &LexoAppKeyHook::ShortcutActivated);
    QTest::keyClick(m_pWindow.get(), Qt::Key_N, Qt::ShiftModifier | Qt::AltModifier);
    QCOMPARE(activated.count(), 1);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told[0][0].value<QKeySequence>(), QKeySequence("Shift+Alt+N"));
}

void TestKeyHook::disabledShortcutIsSilent()
{
    LXShortcut shortcut(m_pWindow.get(), Qt::Key_F6);
    shortcut.SetEnabled(false);
    QVERIFY(!shortcut.IsEnabled());
    QSignalSpy activated(&shortcut, &LXShortcut::Activated);
    QSignalSpy told(LexoAppKeyHook::instance(), &LexoAppKeyHook::ShortcutActivated);
    QTest::keyClick(m_pWindow.get(), Qt::Key_F6);
    QCOMPARE(activated.count() + told.count(), 0);
    shortcut.SetEnabled(true);
    QTest::keyClick(m_pWindow.get(), Qt::Key_F6);
    QCOMPARE(activated.count(), 1);
}

void TestKeyHook::shortcutWithoutAKeyNeverActs()
{
    LXShortcut shortcut(m_pWindow.get(), Qt::Key_F6);
    shortcut.SetKey(QKeySequence());
    QVERIFY(shortcut.Key().isEmpty());
    QSignalSpy activated(&shortcut, &LXShortcut::Activated);
    QTest::keyClick(m_pWindow.get(), Qt::Key_F6);
    QCOMPARE(activated.count(), 0);
}

void TestKeyHook::deletedShortcutIsSilent()
{
    auto shortcut = std::make_unique<LXShortcut>(m_pWindow.get(), Qt::Key_F6);
    shortcut.reset();
    QSignalSpy told(LexoAppKeyHook::instance(), &LexoAppKeyHook::ShortcutActivated);
    const PressCounter presses(m_pWindow.get());
    QTest::keyClick(m_pWindow.get(), Qt::Key_F6);
    QCOMPARE(told.count(), 0);
    QVERIFY(presses.m_Presses > 0);
}

void TestKeyHook::shortcutWithoutAParentKeepsItsKey()
{
    LXShortcut shortcut(nullptr, Qt::Key_F6);
    shortcut.SetShortcutContext(Qt::ApplicationShortcut);
    shortcut.SetEnabled(false);
    QCOMPARE(shortcut.Key(), QKeySequence(Qt::Key_F6));
    QVERIFY(!shortcut.IsEnabled());
}

void TestKeyHook::twoShortcutsOnOneKeyTakeTurns()
{
    LXShortcut first(m_pWindow.get(), Qt::Key_F6);
    LXShortcut second(m_pWindow.get(), Qt::Key_F6);
    QSignalSpy firstActivated(&first, &LXShortcut::Activated);
    QSignalSpy secondActivated(&second, &LXShortcut::Activated);
    QSignalSpy told(LexoAppKeyHook::instance(), &LexoAppKeyHook::ShortcutActivated);
    QSignalSpy toldAmbiguous(LexoAppKeyHook::instance(), &LexoAppKeyHook::ShortcutActivatedAmbiguously);
    QTest::keyClick(m_pWindow.get(), Qt::Key_F6);
    QTest::keyClick(m_pWindow.get(), Qt::Key_F6);
    QCOMPARE(firstActivated.count(), 1);
    QCOMPARE(secondActivated.count(), 1);
    QCOMPARE(told.count(), 0);
    QCOMPARE(toldAmbiguous.count(), 2);
}

void TestKeyHook::twoActionsOnOneKeyDoNothingAndAreTold()
{
    const QKeySequence key("Alt+Backspace");
    const TwoActions actions(m_pWindow.get(), key);
    QSignalSpy told(LexoAppKeyHook::instance(), &LexoAppKeyHook::ShortcutActivated);
    QSignalSpy toldOfShortcuts(LexoAppKeyHook::instance(), &LexoAppKeyHook::ShortcutActivatedAmbiguously);
    QSignalSpy toldOfActions(LexoAppKeyHook::instance(), &LexoAppKeyHook::UnregisteredActivatedAmbiguously);
    for (int presses = 1; presses <= 3; ++presses) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Ambiguous shortcut overload"));
        QTest::keyClick(m_pWindow.get(), Qt::Key_Backspace, Qt::AltModifier);
        QCOMPARE(toldOfActions.count(), presses);
        QCOMPARE(toldOfActions.last()[0].value<QKeySequence>(), key);
    }
    QCOMPARE(actions.CountTriggers(), 0);
    QCOMPARE(told.count() + toldOfShortcuts.count(), 0);
}

void TestKeyHook::twoActionsOnOneKeyAreSilentWhileShortcutsAreOff()
{
    const TwoActions actions(m_pWindow.get(), QKeySequence("Alt+Backspace"));
    QSignalSpy toldOfActions(LexoAppKeyHook::instance(), &LexoAppKeyHook::UnregisteredActivatedAmbiguously);
    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    QTest::keyClick(m_pWindow.get(), Qt::Key_Backspace, Qt::AltModifier);
    QCOMPARE(toldOfActions.count() + actions.CountTriggers(), 0);
}

ZK_REGISTER_TEST(tst_keyhook, TestKeyHook)
#include "tst_keyhook.moc"
