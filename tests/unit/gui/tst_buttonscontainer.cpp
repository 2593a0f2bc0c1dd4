#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxWidget.h"
#include "gui/ZKButtonsContainer.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

/// The button that stands for several tools.
class TestButtonsContainer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theFirstBoundToolIsShownAndNothingIsChecked();
    void aPressChoosesTheShownTool();
    void aPressOnTheChosenToolChangesNothing();
    void aRightPressOpensTheMenuAndChoosesNothing();
    void holdingTheButtonDownOpensTheMenu();
    void aLineOfTheMenuChoosesItsTool();
    void pictureAndCheckFollowTheChosenTool();
    void anotherToolTakesTheCheckAwayAndLeavesThePicture();
    void theKeyChoosesTheShownTool();
    void theCycleKeyGoesRoundAllTools();
    void aRefusalLeavesCheckPictureAndMarksAsTheyWere();
    void aToolThatIsCheckedBeforeIsShownAtOnce();
    void nullAndRepeatedToolsAreIgnored();
    void aDeletedToolLeaves();
    void withoutToolsAPressDoesNothing();
    void theButtonStandsAtItsPlaceInTheToolBox();

private:
    class Tool : public ZKActivateAction
    {
    public:
        Tool() : ZKActivateAction(nullptr) { ZKToolGroupManager::Add(this); }

        bool IsAllowChange() override { return allowsChange; }

        bool allowsChange = true;
    };

    QList<QAction*> Lines() const { return m_pButton->menu()->actions(); }

    std::unique_ptr<Tool> m_pPicker;
    std::unique_ptr<Tool> m_pSampler;
    std::unique_ptr<Tool> m_pOther;
    std::unique_ptr<ZKButtonsContainer> m_pButton;
};

namespace {
QIcon IconOf(const QColor& color)
{
    QPixmap pixmap(24, 24);
    pixmap.fill(color);
    return pixmap;
}

QColor ColorOf(const QIcon& icon)
{
    return icon.pixmap(24, 24).toImage().pixelColor(12, 12);
}
} // namespace

void TestButtonsContainer::init()
{
    m_pPicker = std::make_unique<Tool>();
    m_pSampler = std::make_unique<Tool>();
    m_pOther = std::make_unique<Tool>();
    m_pButton = std::make_unique<ZKButtonsContainer>();
    m_pButton->BindAction(m_pPicker.get(), "Color picker tool", IconOf(Qt::red));
    m_pButton->BindAction(m_pSampler.get(), "Color sampler tool", IconOf(Qt::blue));
    m_pButton->SetShortcut(Qt::Key_I);
    m_pButton->SetCycleShortcut(Qt::SHIFT + Qt::Key_I);
    m_pButton->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pButton.get()));
}

void TestButtonsContainer::cleanup()
{
    m_pButton.reset();
    m_pPicker.reset();
    m_pSampler.reset();
    m_pOther.reset();
}

void TestButtonsContainer::theFirstBoundToolIsShownAndNothingIsChecked()
{
    QCOMPARE(ColorOf(m_pButton->icon()), QColor(Qt::red));
    QCOMPARE(m_pButton->toolTip(), QString("Color picker tool"));
    QCOMPARE(m_pButton->accessibleName(), QString("Color picker tool"));
    QVERIFY(!m_pButton->isChecked());
    QVERIFY(!ZKToolGroupManager::GetExplicitAction());
}

void TestButtonsContainer::aPressChoosesTheShownTool()
{
    QTest::mousePress(m_pButton.get(), Qt::LeftButton);
    QVERIFY(m_pPicker->IsChecked());
    QVERIFY(m_pButton->isChecked());
    QTest::mouseRelease(m_pButton.get(), Qt::LeftButton);
    QVERIFY(m_pPicker->IsChecked());
    QVERIFY(m_pButton->isChecked());
}

void TestButtonsContainer::aPressOnTheChosenToolChangesNothing()
{
    m_pPicker->SetChecked(true);
    const QSignalSpy toggled(m_pPicker.get(), &ZKActivateAction::Toggled);
    QTest::mouseClick(m_pButton.get(), Qt::LeftButton);
    QCOMPARE(toggled.count(), 0);
    QVERIFY(m_pButton->isChecked());
}

void TestButtonsContainer::aRightPressOpensTheMenuAndChoosesNothing()
{
    QTest::mousePress(m_pButton.get(), Qt::RightButton);
    QVERIFY(m_pButton->menu()->isVisible());
    QCOMPARE(Lines().size(), 2);
    QCOMPARE(Lines()[0]->text(), QString("Color picker tool"));
    QCOMPARE(Lines()[1]->text(), QString("Color sampler tool"));
    QVERIFY(!ZKToolGroupManager::GetExplicitAction());
    m_pButton->menu()->close();
    QTest::mouseRelease(m_pButton.get(), Qt::RightButton);
}

void TestButtonsContainer::holdingTheButtonDownOpensTheMenu()
{
    QSignalSpy opened(m_pButton->menu(), &QMenu::aboutToShow);
    // The menu runs a loop of its own until it closes.
    connect(m_pButton->menu(), &QMenu::aboutToShow, m_pButton->menu(), &QWidget::hide, Qt::QueuedConnection);
    QTest::mousePress(m_pButton.get(), Qt::LeftButton);
    QVERIFY(opened.count() == 1 || opened.wait());
    QTest::mouseRelease(m_pButton.get(), Qt::LeftButton);
}

void TestButtonsContainer::aLineOfTheMenuChoosesItsTool()
{
    Lines()[1]->trigger();
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), m_pSampler.get());
    QVERIFY(Lines()[1]->isChecked());
    QVERIFY(!Lines()[0]->isChecked());

    Lines()[1]->trigger();
    QVERIFY(Lines()[1]->isChecked());
    QVERIFY(m_pSampler->IsChecked());
}

void TestButtonsContainer::pictureAndCheckFollowTheChosenTool()
{
    ZKToolGroupManager::Activate(m_pSampler.get());
    QCOMPARE(ColorOf(m_pButton->icon()), QColor(Qt::blue));
    QCOMPARE(m_pButton->accessibleName(), QString("Color sampler tool"));
    QVERIFY(m_pButton->isChecked());

    ZKToolGroupManager::Activate(m_pPicker.get());
    QCOMPARE(ColorOf(m_pButton->icon()), QColor(Qt::red));
    QVERIFY(m_pButton->isChecked());
}

void TestButtonsContainer::anotherToolTakesTheCheckAwayAndLeavesThePicture()
{
    ZKToolGroupManager::Activate(m_pSampler.get());
    ZKToolGroupManager::Activate(m_pOther.get());
    QVERIFY(!m_pButton->isChecked());
    QCOMPARE(ColorOf(m_pButton->icon()), QColor(Qt::blue));

    QTest::mouseClick(m_pButton.get(), Qt::LeftButton);
    QVERIFY(m_pSampler->IsChecked());
}

void TestButtonsContainer::theKeyChoosesTheShownTool()
{
    QTest::keyClick(m_pButton.get(), Qt::Key_I);
    QVERIFY(m_pPicker->IsChecked());
}

void TestButtonsContainer::theCycleKeyGoesRoundAllTools()
{
    m_pPicker->SetChecked(true);
    InputDriver().Key(Qt::Key_I, Qt::ShiftModifier);
    QVERIFY(m_pSampler->IsChecked());
    InputDriver().Key(Qt::Key_I, Qt::ShiftModifier);
    QVERIFY(m_pPicker->IsChecked());
}

void TestButtonsContainer::aRefusalLeavesCheckPictureAndMarksAsTheyWere()
{
    ZKToolGroupManager::Activate(m_pOther.get());
    m_pOther->allowsChange = false;
    QTest::mouseClick(m_pButton.get(), Qt::LeftButton);
    QVERIFY(!m_pButton->isChecked());
    Lines()[1]->trigger();
    QVERIFY(m_pOther->IsChecked());
    QVERIFY(!m_pButton->isChecked());
    QVERIFY(!Lines()[1]->isChecked());
    QCOMPARE(ColorOf(m_pButton->icon()), QColor(Qt::red));
}

void TestButtonsContainer::aToolThatIsCheckedBeforeIsShownAtOnce()
{
    m_pSampler->SetChecked(true);
    ZKButtonsContainer button;
    button.BindAction(m_pPicker.get(), "Color picker tool", IconOf(Qt::red));
    QVERIFY(!button.isChecked());
    button.BindAction(m_pSampler.get(), "Color sampler tool", IconOf(Qt::blue));
    QVERIFY(button.isChecked());
    QCOMPARE(ColorOf(button.icon()), QColor(Qt::blue));
}

void TestButtonsContainer::nullAndRepeatedToolsAreIgnored()
{
    m_pButton->BindAction(nullptr, "Nothing", QIcon());
    m_pButton->BindAction(m_pPicker.get(), "Again", QIcon());
    QCOMPARE(Lines().size(), 2);
}

void TestButtonsContainer::aDeletedToolLeaves()
{
    m_pPicker.reset();
    QCOMPARE(Lines().size(), 1);
    QCOMPARE(ColorOf(m_pButton->icon()), QColor(Qt::blue));
    QTest::mouseClick(m_pButton.get(), Qt::LeftButton);
    QVERIFY(m_pSampler->IsChecked());
}

void TestButtonsContainer::withoutToolsAPressDoesNothing()
{
    m_pPicker.reset();
    m_pSampler.reset();
    QTest::mouseClick(m_pButton.get(), Qt::LeftButton);
    InputDriver().Key(Qt::Key_I, Qt::ShiftModifier);
    QVERIFY(!m_pButton->isChecked());
    QVERIFY(!ZKToolGroupManager::GetExplicitAction());
}

void TestButtonsContainer::theButtonStandsAtItsPlaceInTheToolBox()
{
    LToolBoxButton before;
    LToolBoxButton behind;
    LToolBoxWidget* box = LToolBoxWidget::GetInstance();
    box->AddToolButton(&behind, 11);
    m_pButton->RegisterButton(10);
    box->AddToolButton(&before, 9);
    QCOMPARE(m_pButton->parentWidget(), box);
    QVERIFY(before.y() < m_pButton->y());
    QVERIFY(m_pButton->y() < behind.y());
    m_pButton.reset();
    delete box;
}

ZK_REGISTER_TEST(tst_buttonscontainer, TestButtonsContainer)
#include "tst_buttonscontainer.moc"
