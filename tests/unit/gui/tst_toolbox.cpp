#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LexoAppKeyHook.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QHelpEvent>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

/// The tool box and its buttons.
class TestToolBox : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void pressTellsAndLeavesTheCheckToTheTool();
    void pressLeavesTheDefaultActionAlone();
    void rightPressTellsAndOpensTheMenu();
    void keyActsAsALeftPress();
    void keyIsDeadWhileTheButtonIsDisabled();
    void keyIsDeadWhileShortcutsAreOff();
    void spaceOnTheFocusedButtonActsAsALeftPress();
    void cycleKeyTakesTheNextActionAndStartsOver();
    void toolTipEndsWithTheKey();

    void buttonsStandByPosition();
    void equalPositionsStandInOrderOfComing();
    void removedButtonLeavesAndLivesOn();
    void addingTwiceMoves();
    void buttonsWithoutAPlaceAndNullAreIgnored();
    void deletedButtonLeaves();
    void buttonsOutliveTheBox();
    void lowBoxHasTwoColumns();
    void sharedBoxIsMadeAgainAfterItsWindowDied();
};

namespace {
std::unique_ptr<LToolBoxButton> MakeButton(const char* name = "Tool")
{
    auto button = std::make_unique<LToolBoxButton>();
    button->setObjectName(name);
    return button;
}

/// The names of the buttons that show, from the top.
QStringList NamesDown(const LToolBoxWidget& box)
{
    QList<LToolBoxButton*> buttons = box.findChildren<LToolBoxButton*>();
    std::sort(buttons.begin(), buttons.end(), [](const LToolBoxButton* a, const LToolBoxButton* b) {
        return std::pair(a->y(), a->x()) < std::pair(b->y(), b->x());
    });
    QStringList names;
    for (const LToolBoxButton* button : qAsConst(buttons)) {
        if (!button->isHidden()) names.append(button->objectName());
    }
    return names;
}
} // namespace

void TestToolBox::cleanup()
{
    LexoAppKeyHook::instance()->EnableAllRegisteredShortcuts();
}

void TestToolBox::pressTellsAndLeavesTheCheckToTheTool()
{
    const auto button = MakeButton();
    button->show();
    QSignalSpy left(button.get(), &LToolBoxButton::LMousePressed);
    QSignalSpy right(button.get(), &LToolBoxButton::RMousePressed);
    QTest::mousePress(button.get(), Qt::LeftButton);
    QCOMPARE(left.count(), 1);
    QCOMPARE(left[0][0].value<LToolBoxButton*>(), button.get());
    QTest::mouseRelease(button.get(), Qt::LeftButton);
    QCOMPARE(left.count(), 1);
    QCOMPARE(right.count(), 0);
    QVERIFY(!button->isChecked());
    button->setChecked(true);
    QTest::mouseClick(button.get(), Qt::LeftButton);
    QVERIFY(button->isChecked());
}

void TestToolBox::pressLeavesTheDefaultActionAlone()
{
    QAction action("Fill can tool");
    action.setCheckable(true);
    action.setChecked(true);
    const auto button = MakeButton();
    button->setDefaultAction(&action);
    button->setChecked(false);
    button->show();
    QSignalSpy triggered(&action, &QAction::triggered);
    QTest::mouseClick(button.get(), Qt::LeftButton);
    QCOMPARE(triggered.count(), 0);
    QVERIFY(action.isChecked());
    QVERIFY(!button->isChecked());
}

void TestToolBox::rightPressTellsAndOpensTheMenu()
{
    QMenu menu;
    menu.addAction("One");
    const auto button = MakeButton();
    button->setMenu(&menu);
    button->show();
    QSignalSpy left(button.get(), &LToolBoxButton::LMousePressed);
    QSignalSpy right(button.get(), &LToolBoxButton::RMousePressed);
    QTest::mousePress(button.get(), Qt::RightButton);
    QCOMPARE(right.count(), 1);
    QCOMPARE(left.count(), 0);
    QVERIFY(menu.isVisible());
    menu.close();
    QTest::mouseRelease(button.get(), Qt::RightButton);
}

void TestToolBox::keyActsAsALeftPress()
{
    const auto button = MakeButton();
    button->SetShortcut(Qt::Key_F);
    button->show();
    QVERIFY(QTest::qWaitForWindowActive(button.get()));
    QSignalSpy left(button.get(), &LToolBoxButton::LMousePressed);
    QTest::keyClick(button.get(), Qt::Key_F);
    QCOMPARE(left.count(), 1);
    button->SetShortcut(QKeySequence());
    QTest::keyClick(button.get(), Qt::Key_F);
    QCOMPARE(left.count(), 1);
}

void TestToolBox::keyIsDeadWhileTheButtonIsDisabled()
{
    LToolBoxWidget box;
    const auto button = MakeButton();
    button->SetShortcut(Qt::Key_F);
    box.AddToolButton(button.get(), 1);
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    QSignalSpy left(button.get(), &LToolBoxButton::LMousePressed);
    box.setEnabled(false);
    QTest::keyClick(&box, Qt::Key_F);
    QCOMPARE(left.count(), 0);
    box.setEnabled(true);
    QTest::keyClick(&box, Qt::Key_F);
    QCOMPARE(left.count(), 1);
}

void TestToolBox::keyIsDeadWhileShortcutsAreOff()
{
    const auto button = MakeButton();
    button->SetShortcut(Qt::Key_F);
    button->show();
    QVERIFY(QTest::qWaitForWindowActive(button.get()));
    QSignalSpy left(button.get(), &LToolBoxButton::LMousePressed);
    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    QTest::keyClick(button.get(), Qt::Key_F);
    QCOMPARE(left.count(), 0);
}

void TestToolBox::spaceOnTheFocusedButtonActsAsALeftPress()
{
    const auto button = MakeButton();
    button->show();
    QVERIFY(QTest::qWaitForWindowActive(button.get()));
    button->setFocus();
    QSignalSpy left(button.get(), &LToolBoxButton::LMousePressed);
    QTest::keyClick(button.get(), Qt::Key_Space);
    QTest::keyClick(button.get(), Qt::Key_Return);
    QCOMPARE(left.count(), 2);
}

void TestToolBox::cycleKeyTakesTheNextActionAndStartsOver()
{
    QMenu menu;
    const QAction* first = menu.addAction("Linear");
    menu.addSeparator();
    menu.addAction("Off")->setEnabled(false);
    const QAction* last = menu.addAction("Angle");
    const auto button = MakeButton();
    button->setMenu(&menu);
    button->setDefaultAction(menu.actions().first());
    connect(&menu, &QMenu::triggered, button.get(), &QToolButton::setDefaultAction);
    button->SetCycleShortcut(QKeySequence("Shift+G"));
    button->show();
    QVERIFY(QTest::qWaitForWindowActive(button.get()));
    InputDriver().Key(Qt::Key_G, Qt::ShiftModifier);
    QCOMPARE(button->defaultAction(), last);
    InputDriver().Key(Qt::Key_G, Qt::ShiftModifier);
    QCOMPARE(button->defaultAction(), first);
}

void TestToolBox::toolTipEndsWithTheKey()
{
    const auto button = MakeButton();
    button->setToolTip("Fill can tool");
    button->SetShortcut(Qt::Key_F);
    button->show();
    QHelpEvent hover(QEvent::ToolTip, QPoint(4, 4), button->mapToGlobal(QPoint(4, 4)));
    QCoreApplication::sendEvent(button.get(), &hover);
    QCOMPARE(QToolTip::text(), QString("Fill can tool (F)"));
}

void TestToolBox::buttonsStandByPosition()
{
    LToolBoxWidget box;
    const auto gradient = MakeButton("gradient");
    const auto move = MakeButton("move");
    const auto fill = MakeButton("fill");
    box.AddToolButton(gradient.get(), 15);
    box.AddToolButton(move.get(), 1);
    box.AddToolButton(fill.get(), 7);
    QCOMPARE(NamesDown(box), (QStringList{"move", "fill", "gradient"}));
    QCOMPARE(move->size(), QSize(32, 32));
}

void TestToolBox::equalPositionsStandInOrderOfComing()
{
    LToolBoxWidget box;
    const auto a = MakeButton("a");
    const auto b = MakeButton("b");
    box.AddToolButton(a.get(), 3);
    box.AddToolButton(b.get(), 3);
    QCOMPARE(NamesDown(box), (QStringList{"a", "b"}));
}

void TestToolBox::removedButtonLeavesAndLivesOn()
{
    LToolBoxWidget box;
    const auto a = MakeButton("a");
    const auto b = MakeButton("b");
    box.AddToolButton(a.get(), 1);
    box.AddToolButton(b.get(), 2);
    const QPoint top = a->pos();
    box.RemoveButton(a.get());
    QVERIFY(!a->parent());
    QVERIFY(!a->isVisible());
    QCOMPARE(b->pos(), top);
    box.RemoveButton(a.get());
    box.RemoveButton(nullptr);
    QCOMPARE(NamesDown(box), QStringList{"b"});
}

void TestToolBox::addingTwiceMoves()
{
    LToolBoxWidget box;
    const auto a = MakeButton("a");
    const auto b = MakeButton("b");
    box.AddToolButton(a.get(), 1);
    box.AddToolButton(b.get(), 2);
    box.AddToolButton(a.get(), 3);
    QCOMPARE(NamesDown(box), (QStringList{"b", "a"}));
}

void TestToolBox::buttonsWithoutAPlaceAndNullAreIgnored()
{
    LToolBoxWidget box;
    const auto button = MakeButton();
    box.AddToolButton(nullptr, 1);
    box.AddToolButton(button.get(), -1);
    QVERIFY(!button->parent());
    QCOMPARE(NamesDown(box), QStringList());
}

void TestToolBox::deletedButtonLeaves()
{
    LToolBoxWidget box;
    auto a = MakeButton("a");
    const auto b = MakeButton("b");
    box.AddToolButton(a.get(), 1);
    box.AddToolButton(b.get(), 2);
    const QPoint top = a->pos();
    a.reset();
    QCOMPARE(b->pos(), top);
}

void TestToolBox::buttonsOutliveTheBox()
{
    const auto button = MakeButton();
    {
        LToolBoxWidget box;
        box.AddToolButton(button.get(), 1);
        QCOMPARE(button->parentWidget(), &box);
    }
    QVERIFY(!button->parent());
}

void TestToolBox::lowBoxHasTwoColumns()
{
    LToolBoxWidget box;
    std::vector<std::unique_ptr<LToolBoxButton>> buttons;
    for (const int position : {1, 2, 4, 7, 10, 12, 13}) {
        buttons.push_back(MakeButton());
        box.AddToolButton(buttons.back().get(), position);
    }
    box.show();
    box.resize(box.width(), box.sizeHint().height());
    QCOMPARE(box.width(), 40);
    QCOMPARE(buttons[1]->x(), buttons[0]->x());
    QVERIFY(buttons[2]->y() > buttons[1]->y() + 32); // a line stands between the groups
    QVERIFY(buttons.back()->geometry().bottom() < box.height());

    box.resize(box.width(), box.sizeHint().height() - 1);
    QCOMPARE(box.width(), 72);
    QCOMPARE(buttons[1]->y(), buttons[0]->y());
    box.resize(box.width(), box.minimumSizeHint().height());
    QVERIFY(buttons.back()->geometry().bottom() < box.height());

    box.resize(box.width(), box.sizeHint().height());
    QCOMPARE(box.width(), 40);
}

void TestToolBox::sharedBoxIsMadeAgainAfterItsWindowDied()
{
    auto window = std::make_unique<QWidget>();
    LToolBoxWidget::GetInstance()->setParent(window.get());
    const QPointer<LToolBoxWidget> first = LToolBoxWidget::GetInstance();
    QCOMPARE(LToolBoxWidget::GetInstance(), first.data());
    window.reset();
    QVERIFY(first.isNull());
    QVERIFY(LToolBoxWidget::GetInstance());
    delete LToolBoxWidget::GetInstance();
}

ZK_REGISTER_TEST(tst_toolbox, TestToolBox)
#include "tst_toolbox.moc"
