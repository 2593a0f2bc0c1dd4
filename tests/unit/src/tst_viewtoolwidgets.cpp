#include "LXViewTool.h"
#include "RecordingTool.h"

#include "core/ToolBarArea.h"
#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/LayersWidget.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QPointer>
#include <QTest>

namespace {
/// A tool with a button, an option bar, a panel and entries.
class FurnishedTool : public RecordingTool
{
public:
    FurnishedTool()
    {
        button.setCheckable(true);
        bar->setWindowTitle("Furnished bar");
    }

    ~FurnishedTool() override { delete bar; }

    Q_DISABLE_COPY(FurnishedTool)

    QList<QAction*> GetMenuActions() override { return {&menuAction}; }

    QList<QAction*> GetToolBarActions() override { return {&barAction}; }

    MainMenuEntries GetMainMenuEntries() override { return {MainMenuEntry({1, 2, 3}, &menuAction)}; }

    LToolBoxButton button;
    QPointer<QWidget> bar = new QWidget; // goes with the area, when one took it in
    QWidget panel;
    QAction menuAction;
    QAction barAction;

protected:
    QWidget* GetToolWidget() override { return &panel; }

    QWidget* GetToolBar() override { return bar; }

    LToolBoxButton* GetToolBoxButton() override { return &button; }

    int GetToolBoxPosition() override { return 5; }
};
} // namespace

/// What a view tool shows, and what it is handed, all through its adapter.
class TestViewToolWidgets : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theButtonStandsInTheToolBox();
    void theBarIsTakenInUnderItsTitle();
    void theChosenToolShowsItsInterface();
    void aTemporaryToolLeavesTheInterfaceOfTheChosenOne();
    void aRefusalEndsThePressOnAButton();
    void theLayersPanelIsStoredAfterTheSignal();
    void theListsComeFromTheTool();

private:
    FurnishedTool* m_pTool = nullptr;
    std::unique_ptr<LXViewTool> m_pAdapter;
};

void TestViewToolWidgets::init()
{
    m_pTool = new FurnishedTool;
    m_pAdapter = std::make_unique<LXViewTool>(m_pTool);
}

void TestViewToolWidgets::cleanup()
{
    m_pAdapter.reset();
}

void TestViewToolWidgets::theButtonStandsInTheToolBox()
{
    LToolBoxWidget first;
    LToolBoxWidget second;
    m_pAdapter->SetToolBox(&first);
    QCOMPARE(m_pTool->button.parentWidget(), &first);
    QCOMPARE(m_pTool->GetToolBox(), &first);
    m_pAdapter->SetToolBox(&second);
    QCOMPARE(m_pTool->button.parentWidget(), &second);
    m_pAdapter->SetToolBox(nullptr);
    QVERIFY(!m_pTool->button.parentWidget());
    QVERIFY(!m_pTool->GetToolBox());
}

void TestViewToolWidgets::theBarIsTakenInUnderItsTitle()
{
    ToolBarArea area;
    m_pAdapter->SetToolBarManager(nullptr);
    QVERIFY(area.isAncestorOf(m_pTool->bar));
    QCOMPARE(m_pTool->bar->accessibleName(), QString("Furnished bar"));
}

void TestViewToolWidgets::theChosenToolShowsItsInterface()
{
    ToolBarArea area;
    ZKToolGroupManager::Activate(m_pAdapter->GetActivateAction());
    QVERIFY(m_pTool->button.isChecked());
    QCOMPARE(LXToolWidgetManager::instance()->GetCurrentWidget(), &m_pTool->panel);
    QCOMPARE(area.ShownBar(), m_pTool->bar);

    ZKToolGroupManager::Activate(nullptr);
    QVERIFY(!m_pTool->button.isChecked());
    QVERIFY(!LXToolWidgetManager::instance()->GetCurrentWidget());
    QVERIFY2(area.ShownBar() == m_pTool->bar, "the next tool shows its own bar");
}

void TestViewToolWidgets::aTemporaryToolLeavesTheInterfaceOfTheChosenOne()
{
    LXViewTool temporary(new RecordingTool);
    ZKToolGroupManager::Activate(m_pAdapter->GetActivateAction());
    temporary.GetActivateAction()->SetImplicitChecked(true);
    QVERIFY(!m_pTool->IsActive());
    QVERIFY(m_pTool->button.isChecked());
    QCOMPARE(LXToolWidgetManager::instance()->GetCurrentWidget(), &m_pTool->panel);
    temporary.GetActivateAction()->SetImplicitChecked(false);
    QVERIFY(m_pTool->IsActive());
    ZKToolGroupManager::Activate(nullptr);
}

void TestViewToolWidgets::aRefusalEndsThePressOnAButton()
{
    auto* stubborn = new RecordingTool;
    const LXViewTool other(stubborn);
    ZKToolGroupManager::Activate(stubborn->GetActivateAction());
    stubborn->allowDeactivate = false;
    m_pTool->ToolBoxButtonPressed(&m_pTool->button);
    QVERIFY(!m_pTool->GetActivateAction()->IsChecked());
    QVERIFY(!m_pTool->button.isChecked());
    QVERIFY(stubborn->IsActive());

    stubborn->allowDeactivate = true;
    m_pTool->ToolBoxButtonPressed(&m_pTool->button);
    QVERIFY(m_pTool->IsActive());
    QVERIFY(!stubborn->IsActive());
    ZKToolGroupManager::Activate(nullptr);
}

void TestViewToolWidgets::theLayersPanelIsStoredAfterTheSignal()
{
    LayersWidget first;
    LayersWidget second;
    m_pAdapter->SetLayersWidget(&first);
    int told = 0;
    connect(m_pTool, &LXViewToolBase::LayerWidgetChanged, this,
            [&](LayersWidget* oldPanel, LayersWidget* newPanel) {
                if (oldPanel == &first && newPanel == &second && m_pTool->GetLayersWidget() == &first) ++told;
            });
    m_pAdapter->SetLayersWidget(&first);
    m_pAdapter->SetLayersWidget(&second);
    m_pAdapter->SetLayersWidget(&second);
    QCOMPARE(told, 1);
    QCOMPARE(m_pTool->GetLayersWidget(), &second);
}

void TestViewToolWidgets::theListsComeFromTheTool()
{
    QCOMPARE(m_pAdapter->GetMenuActions(), QList<QAction*>({&m_pTool->menuAction}));
    QCOMPARE(m_pAdapter->GetToolBarActions(), QList<QAction*>({&m_pTool->barAction}));
    QCOMPARE(m_pAdapter->GetMainMenuEntries().size(), std::size_t(1));
}

ZK_REGISTER_TEST(tst_viewtoolwidgets, TestViewToolWidgets)

#include "tst_viewtoolwidgets.moc"
