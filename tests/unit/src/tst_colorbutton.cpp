#include "ColorButton.h"

#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/ZKButtonsContainer.h"
#include "resource/ResourceFolder.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QDir>
#include <QMenu>
#include <QTest>

class TestColorButton : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theButtonNamesThePickerFirst();
    void theButtonStandsAtTheTenthPlace();
    void theKeysChooseAndCycle();
    void aMissingToolIsLeftOut();
    void withoutToolsThereIsNoButton();

private:
    std::unique_ptr<ZKActivateAction> m_pPicker;
    std::unique_ptr<ZKActivateAction> m_pSampler;
};

void TestColorButton::init()
{
    QDir::setSearchPaths("theme", {ResourceFolder::Path() + "/theme/dark"});
    m_pPicker = std::make_unique<ZKActivateAction>(nullptr);
    m_pSampler = std::make_unique<ZKActivateAction>(nullptr);
}

void TestColorButton::cleanup()
{
    m_pPicker.reset();
    m_pSampler.reset();
    delete LToolBoxWidget::GetInstance();
}

void TestColorButton::theButtonNamesThePickerFirst()
{
    const auto button = MakeColorButton(m_pPicker.get(), m_pSampler.get());
    QVERIFY(button);
    QCOMPARE(button->parentWidget(), LToolBoxWidget::GetInstance());
    QCOMPARE(button->toolTip(), QString("Color picker tool"));
    const QList<QAction*> lines = button->menu()->actions();
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines[0]->text(), QString("Color picker tool"));
    QCOMPARE(lines[1]->text(), QString("Color sampler tool"));
    QVERIFY(!lines[0]->icon().isNull());
    QVERIFY(!lines[1]->icon().isNull());
}

void TestColorButton::theButtonStandsAtTheTenthPlace()
{
    LToolBoxWidget* box = LToolBoxWidget::GetInstance();
    LToolBoxButton before;
    LToolBoxButton after;
    box->AddToolButton(&after, 11);
    box->AddToolButton(&before, 9);
    const auto button = MakeColorButton(m_pPicker.get(), m_pSampler.get());
    LToolBoxButton same;
    box->AddToolButton(&same, 10); // equal places are taken in the order of coming
    box->resize(box->sizeHint().width(), 600);
    box->show();
    QVERIFY(QTest::qWaitForWindowExposed(box));
    QVERIFY(before.y() < button->y());
    QVERIFY(button->y() < same.y());
    QVERIFY(same.y() < after.y());
    for (LToolBoxButton* other : {&before, &after, &same})
        box->RemoveButton(other);
}

void TestColorButton::theKeysChooseAndCycle()
{
    const auto button = MakeColorButton(m_pPicker.get(), m_pSampler.get());
    QWidget* box = LToolBoxWidget::GetInstance();
    box->show();
    QVERIFY(QTest::qWaitForWindowActive(box));
    QTest::keyClick(box, Qt::Key_I);
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), m_pPicker.get());
    InputDriver().Key(Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), m_pSampler.get());
    InputDriver().Key(Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), m_pPicker.get());
}

void TestColorButton::aMissingToolIsLeftOut()
{
    const auto button = MakeColorButton(nullptr, m_pSampler.get());
    QVERIFY(button);
    QCOMPARE(button->toolTip(), QString("Color sampler tool"));
    QCOMPARE(button->menu()->actions().size(), 1);
}

void TestColorButton::withoutToolsThereIsNoButton()
{
    QVERIFY(!MakeColorButton(nullptr, nullptr));
}

ZK_REGISTER_TEST(tst_colorbutton, TestColorButton)
#include "tst_colorbutton.moc"
