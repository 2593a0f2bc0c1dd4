#include "IMainMenuActionList.h"
#include "LXViewTool.h"

#include "core/ZKActivateAction.h"
#include "core/ZKApplication.h"
#include "core/ZKToolBarManager.h"
#include "core/ZKToolGroupManager.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "document/LayerLocks.h"
#include "fillcan/FillCanProgress.h"
#include "fillcan/FillCan_p.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/LexoAppKeyHook.h"
#include "gui/PatternSelectWidget.h"
#include "guicore/LXMessageBox.h"
#include "resource/ResourceFolder.h"
#include "resource/Theme.h"
#include "support/TestRegistry.h"
#include "support/ViewFixture.h"
#include "utils/FaultSeams.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QRegularExpression>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>

class TestFillCan : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void theFormsHaveTheirNamesRangesAndDefaults();
    void thePairsOfTheTwoFormsAgree();
    void theButtonStandsInTheToolBox();
    void settingsRememberTheActiveTool();
    void listsAreEmpty();

    void aClickFillsAndCanBeUndone();
    void theOptionsReachTheFill();
    void otherButtonsDoNothing();
    void twoButtonsDoNothing();
    void aClickOutsideTheCanvasDoesNothing_data();
    void aClickOutsideTheCanvasDoesNothing();
    void aLockedLayerIsToldAbout();
    void aLayerLockedForMovesIsFilled();
    void aMaskLockedOnlyForPixelsIsFilled();
    void twoSelectedLayersDoNothingInSilence();
    void theMaskIsFilledWhenItIsTheTarget();
    void aPatternFillsInPatternMode();
    void theTargetShowsInTheCursor();
    void anotherSelectionChangesTheCursor();

    void aFloatingPieceLandsBeforeTheFill();
    void aSecondClickWaitsForTheFirst();
    void aDocumentLockedBySomebodyElseIsLeftAlone();
    void aRefusedLockDropsTheJob();
    void aFailedJobIsToldAndRolledBack();
    void aFailedPushIsToldAndRolledBack();
    void aLongJobShowsTheProgressDialog();
    void theWorkIsHeldWhileTheJobRuns();
    void anotherToolMayComeWhileTheJobRuns();
    void aViewThatGoesAwayGetsItsFillFirst();
    void aDocumentThatClosesDropsTheJob();
    void aToolThatDiesLeavesNothingBehind();
    void withoutAHistoryTheFillIsKept();

    void shortcutsStepThroughTheBlendModes();
    void shortcutsLeaveADisabledComboAlone();
    void shortcutsLiveWithTheActiveTool();
    void thePatternListOpensUnderItsButton();
    void thePatternListClosesWithItsButton();

private:
    QWidget* Bar() const;
    QWidget* Panel() const;

    template <class Control>
    Control* InBar(const char* name) const
    {
        return Bar()->findChild<Control*>(name);
    }

    template <class Control>
    Control* InPanel(const char* name) const
    {
        return Panel()->findChild<Control*>(name);
    }

    void Click(const QPointF& scenePos) { m_pFixture->Input().ClickInScene(m_pFixture->View(), scenePos); }

    void WaitForTheJob() { QTRY_VERIFY(!m_pFixture->Document()->GetLockState()); }

    void SendShortcut(const char* key);
    void BlackenFirstColumn();

    std::unique_ptr<ViewFixture> m_pFixture;
    std::unique_ptr<LXViewTool> m_pAdapter;
    FillCanPrivate* m_pTool = nullptr;
};

// What must hold after every gesture.
#define VERIFY_NOTHING_IS_HELD()                                                                             \
    QVERIFY(!m_pFixture->Document()->GetLockState());                                                        \
    QVERIFY(LexoAppKeyHook::instance()->AreShortcutsEnabled());                                              \
    QVERIFY(!QGuiApplication::overrideCursor())

void TestFillCan::initTestCase()
{
    Theme::Apply(Theme::Look::Dark, ResourceFolder::Path());
}

void TestFillCan::init()
{
    m_pFixture = std::make_unique<ViewFixture>(8, 6, Qt::white);
    m_pTool = new FillCanPrivate(nullptr);
    m_pAdapter = std::make_unique<LXViewTool>(m_pTool);
    m_pAdapter->SetToolBarManager(ZKToolBarManager::GetInstance());
    m_pAdapter->SetToolBox(LToolBoxWidget::GetInstance());
    m_pAdapter->SetDocumentView(&m_pFixture->ToolView());
    ZKApplication::SetForeground(Qt::red);
    ZKToolGroupManager::Activate(m_pAdapter->GetActivateAction());
}

void TestFillCan::cleanup()
{
    FaultSeams::Reset();
    VERIFY_NOTHING_IS_HELD();
    m_pAdapter.reset();
    m_pFixture.reset();
}

QWidget* TestFillCan::Bar() const
{
    for (QWidget* widget : QApplication::allWidgets()) {
        if (widget->objectName() == "FillCanToolBar") return widget;
    }
    return nullptr;
}

QWidget* TestFillCan::Panel() const
{
    return LXToolWidgetManager::instance()->GetCurrentWidget();
}

void TestFillCan::SendShortcut(const char* key)
{
    emit LexoAppKeyHook::instance()->ShortcutActivated(QKeySequence(key), 0);
}

void TestFillCan::BlackenFirstColumn()
{
    for (int y = 0; y < 6; ++y) {
        m_pFixture->Document()->GetLayerImage(1)->SetColor(0, y, LXRGBA32i(0xFF000000));
    }
}

void TestFillCan::theFormsHaveTheirNamesRangesAndDefaults()
{
    QCOMPARE(Bar()->windowTitle(), QString("Bucket toolbar"));
    QCOMPARE(Bar()->maximumHeight(), 24);
    QCOMPARE(Panel()->windowTitle(), QString("Fill can"));
    for (QWidget* form : {Bar(), Panel()}) {
        const auto* tolerance = form->findChild<QSpinBox*>("m_pToleranceSpn");
        QCOMPARE(tolerance->minimum(), 0);
        QCOMPARE(tolerance->maximum(), 255);
        QCOMPARE(tolerance->value(), 32);
        const auto* opacity = form->findChild<QSpinBox*>("m_pOpacitySpn");
        QCOMPARE(opacity->minimum(), 0);
        QCOMPARE(opacity->maximum(), 100);
        QCOMPARE(opacity->value(), 100);
        QCOMPARE(opacity->suffix(), QString(" %"));
        QCOMPARE(form->findChild<QComboBox*>("m_pBlendCombo")->count(), 13);
        QCOMPARE(form->findChild<QComboBox*>("m_pBlendCombo")->currentText(), QString("Normal"));
        const auto* fillMode = form->findChild<QComboBox*>("m_pFillModeCmb");
        QCOMPARE(fillMode->count(), 2);
        QCOMPARE(fillMode->itemText(0), QString("Color"));
        QCOMPARE(fillMode->itemText(1), QString("Pattern"));
        for (const char* name :
             {"m_pIgnoreChb", "m_pAntialiasingChb", "m_pContiguousChb", "m_pAllLayersChb"}) {
            QVERIFY(!form->findChild<QCheckBox*>(name)->isChecked());
        }
    }
    QCOMPARE(InBar<QSpinBox>("m_pToleranceSpn")->width(), 50);
    QCOMPARE(InBar<QToolButton>("m_pSelectPatternBtn")->toolTip(), QString("Click to select a fill pattern"));
}

void TestFillCan::thePairsOfTheTwoFormsAgree()
{
    InBar<QSpinBox>("m_pToleranceSpn")->setValue(77);
    QCOMPARE(InPanel<QSpinBox>("m_pToleranceSpn")->value(), 77);
    QCOMPARE(InPanel<QSlider>("m_pToleranceSldr")->value(), 77);
    InPanel<QSlider>("m_pToleranceSldr")->setValue(5);
    QCOMPARE(InBar<QSpinBox>("m_pToleranceSpn")->value(), 5);

    InPanel<QSlider>("m_pOpacitySldr")->setValue(50);
    QCOMPARE(InBar<QSpinBox>("m_pOpacitySpn")->value(), 50);
    InBar<QSpinBox>("m_pOpacitySpn")->setValue(10);
    QCOMPARE(InPanel<QSpinBox>("m_pOpacitySpn")->value(), 10);

    for (const char* name : {"m_pBlendCombo", "m_pFillModeCmb"}) {
        InBar<QComboBox>(name)->setCurrentIndex(1);
        QCOMPARE(InPanel<QComboBox>(name)->currentIndex(), 1);
        InPanel<QComboBox>(name)->setCurrentIndex(0);
        QCOMPARE(InBar<QComboBox>(name)->currentIndex(), 0);
    }
    for (const char* name : {"m_pIgnoreChb", "m_pAntialiasingChb", "m_pContiguousChb", "m_pAllLayersChb"}) {
        InBar<QCheckBox>(name)->setChecked(true);
        QVERIFY(InPanel<QCheckBox>(name)->isChecked());
        InPanel<QCheckBox>(name)->setChecked(false);
        QVERIFY(!InBar<QCheckBox>(name)->isChecked());
    }
}

void TestFillCan::theButtonStandsInTheToolBox()
{
    const auto buttons = LToolBoxWidget::GetInstance()->findChildren<LToolBoxButton*>();
    QCOMPARE(buttons.size(), 1);
    QVERIFY(buttons[0]->isChecked());
    QCOMPARE(buttons[0]->defaultAction()->text(), QString("Fill can tool"));
    ZKToolGroupManager::Activate(nullptr);
    QVERIFY(!buttons[0]->isChecked());
    emit buttons[0]->LMousePressed(buttons[0]);
    QVERIFY(m_pTool->IsActive());
    QVERIFY(buttons[0]->isChecked());
}

void TestFillCan::settingsRememberTheActiveTool()
{
    m_pTool->SaveSettings();
    QCOMPARE(ZKApplication::GetUserValue("FillCanTool/Active", false).toBool(), true);
    ZKToolGroupManager::Activate(nullptr);
    m_pTool->LoadSettings();
    QVERIFY(m_pTool->IsActive());

    ZKToolGroupManager::Activate(nullptr);
    m_pTool->SaveSettings();
    QCOMPARE(ZKApplication::GetUserValue("FillCanTool/Active", true).toBool(), false);
    m_pTool->LoadSettings();
    QVERIFY(!m_pTool->IsActive());
}

void TestFillCan::listsAreEmpty()
{
    QVERIFY(m_pAdapter->GetMenuActions().isEmpty());
    QVERIFY(m_pAdapter->GetToolBarActions().isEmpty());
    QVERIFY(m_pAdapter->GetMainMenuEntries().empty());
}

void TestFillCan::aClickFillsAndCanBeUndone()
{
    Click({3.5, 2.5});
    WaitForTheJob();
    QCOMPARE(m_pFixture->History().count(), 1);
    QCOMPARE(m_pFixture->History().text(0), QString("Fill"));
    QCOMPARE(m_pFixture->Pixel(0, 0), QRgb(0xFFFF0000));
    QCOMPARE(m_pFixture->Pixel(7, 5), QRgb(0xFFFF0000));
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Pixel(0, 0), QRgb(0xFFFFFFFF));
}

void TestFillCan::theOptionsReachTheFill()
{
    m_pFixture->Document()->GetLayerImage(1)->SetColor(4, 0, LXRGBA32i(0xFFF0F0F0));
    InBar<QSpinBox>("m_pOpacitySpn")->setValue(20);
    InBar<QSpinBox>("m_pToleranceSpn")->setValue(0);
    InBar<QComboBox>("m_pBlendCombo")->setCurrentIndex(1);
    ZKApplication::SetForeground(Qt::black);
    Click({3.5, 2.5});
    WaitForTheJob();
    QCOMPARE(m_pFixture->Pixel(0, 0), QRgb(0xFFCCCCCC));
    QCOMPARE(m_pFixture->Pixel(4, 0), QRgb(0xFFF0F0F0));
}

void TestFillCan::otherButtonsDoNothing()
{
    m_pFixture->Input().ClickInScene(m_pFixture->View(), {3.5, 2.5}, Qt::RightButton);
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QCOMPARE(m_pFixture->History().count(), 0);
}

void TestFillCan::twoButtonsDoNothing()
{
    InputDriver& input = m_pFixture->Input();
    input.PressInScene(m_pFixture->View(), {3.5, 2.5}, Qt::RightButton);
    input.PressInScene(m_pFixture->View(), {3.5, 2.5}, Qt::LeftButton);
    QVERIFY(!m_pFixture->Document()->GetLockState());
    input.ReleaseInScene(m_pFixture->View(), {3.5, 2.5}, Qt::LeftButton);
    input.ReleaseInScene(m_pFixture->View(), {3.5, 2.5}, Qt::RightButton);
    QCOMPARE(m_pFixture->History().count(), 0);
}

void TestFillCan::aClickOutsideTheCanvasDoesNothing_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::newRow("left") << QPointF(-0.5, 3.2);
    QTest::newRow("above") << QPointF(3.2, -0.5);
    QTest::newRow("on the right edge") << QPointF(8.0, 3.2);
    QTest::newRow("on the bottom edge") << QPointF(3.2, 6.0);
}

void TestFillCan::aClickOutsideTheCanvasDoesNothing()
{
    QFETCH(QPointF, position);
    emit m_pTool->OnMousePress(position, Qt::MouseButtons(Qt::LeftButton));
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QCOMPARE(m_pFixture->History().count(), 0);
}

void TestFillCan::aLockedLayerIsToldAbout()
{
    for (const unsigned int lock : {LayerLocks::Pixels, LayerLocks::All}) {
        m_pFixture->Document()->GetModel()->SetLockFlags(0, lock);
        QString text;
        QString title;
        m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
            text = box->GetText();
            title = box->windowTitle();
            box->close();
        });
        Click({3.5, 2.5});
        QCOMPARE(text, QString("Cannot fill. Layer is locked."));
        QCOMPARE(title, QString("Zenkari"));
        QVERIFY(!m_pFixture->Document()->GetLockState());
        QCOMPARE(m_pFixture->History().count(), 0);
    }
}

void TestFillCan::aLayerLockedForMovesIsFilled()
{
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::Position | LayerLocks::Transparency);
    Click({3.5, 2.5});
    WaitForTheJob();
    QCOMPARE(m_pFixture->History().count(), 1);
}

void TestFillCan::aMaskLockedOnlyForPixelsIsFilled()
{
    m_pFixture->Document()->AddMask(1, true);
    m_pFixture->Document()->GetModel()->SetMaskSelected(0, true);
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::Pixels);
    Click({3.5, 2.5});
    WaitForTheJob();
    QCOMPARE(m_pFixture->History().text(0), QString("Fill with mask"));
}

void TestFillCan::twoSelectedLayersDoNothingInSilence()
{
    m_pFixture->Document()->AddLayer("top", LXImage32(8, 6), {});
    m_pFixture->SelectLayers({0, 1});
    Click({3.5, 2.5});
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QCOMPARE(m_pFixture->History().count(), 0);
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::ForbiddenCursor);
}

void TestFillCan::theMaskIsFilledWhenItIsTheTarget()
{
    m_pFixture->Document()->AddMask(1, true);
    m_pFixture->Document()->GetModel()->SetMaskSelected(0, true);
    ZKApplication::SetForeground(Qt::black);
    Click({3.5, 2.5});
    WaitForTheJob();
    QCOMPARE(m_pFixture->History().text(0), QString("Fill with mask"));
    QCOMPARE(m_pFixture->Document()->GetMaskImage(1)->GetColor(3, 2).Alpha(), 0);
    QCOMPARE(m_pFixture->Pixel(3, 2), QRgb(0xFFFFFFFF));
}

void TestFillCan::aPatternFillsInPatternMode()
{
    auto* patterns = Bar()->findChild<PatternSelectWidget*>();
    QVERIFY(patterns->GetItemCount() > 0);
    patterns->SelectItem(patterns->GetItemCount() - 1);
    InPanel<QComboBox>("m_pFillModeCmb")->setCurrentIndex(1);
    Click({3.5, 2.5});
    WaitForTheJob();
    const QImage pattern = patterns->GetItemImage(patterns->GetCurrentItem()).toImage();
    // An opaque white layer under the pattern: where the pattern is opaque, its color shows.
    for (const QPoint position : {QPoint(0, 0), QPoint(5, 3)}) {
        const QRgb expected = pattern.pixel(position.x() % pattern.width(), position.y() % pattern.height());
        if (qAlpha(expected) == 255) QCOMPARE(m_pFixture->Pixel(position.x(), position.y()), expected);
    }
    QVERIFY(m_pFixture->Pixel(3, 2) != QRgb(0xFFFF0000));
}

void TestFillCan::theTargetShowsInTheCursor()
{
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::BitmapCursor);
    QCOMPARE(m_pFixture->View()->cursor().hotSpot(), QPoint(3, 17));
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::All);
    m_pTool->RefreshCursor();
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::ForbiddenCursor);
}

void TestFillCan::anotherSelectionChangesTheCursor()
{
    m_pFixture->Input().MoveInScene(m_pFixture->View(), {3.5, 2.5});
    m_pFixture->SelectLayers({});
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::ForbiddenCursor);
    m_pFixture->SelectLayers({0});
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::BitmapCursor);
}

void TestFillCan::aFloatingPieceLandsBeforeTheFill()
{
    // Put down in black at the commit, the first column is no longer what the click finds.
    const auto piece =
        connect(&m_pFixture->History(), &LexoUndoStack::aboutCommit, this, &TestFillCan::BlackenFirstColumn);
    Click({3.5, 2.5});
    WaitForTheJob();
    disconnect(piece);
    QCOMPARE(m_pFixture->Pixel(0, 0), QRgb(0xFF000000));
    QCOMPARE(m_pFixture->Pixel(1, 0), QRgb(0xFFFF0000));
}

void TestFillCan::aSecondClickWaitsForTheFirst()
{
    Click({3.5, 2.5});
    ZKApplication::SetForeground(Qt::blue);
    Click({3.5, 2.5});
    WaitForTheJob();
    QCOMPARE(m_pFixture->History().count(), 2);
    QCOMPARE(m_pFixture->Pixel(3, 2), QRgb(0xFF0000FF));
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Pixel(3, 2), QRgb(0xFFFF0000));
}

void TestFillCan::aDocumentLockedBySomebodyElseIsLeftAlone()
{
    m_pFixture->Document()->Lock();
    Click({3.5, 2.5});
    QVERIFY(m_pFixture->Document()->GetLockState());
    QVERIFY(!QGuiApplication::overrideCursor());
    QVERIFY(LexoAppKeyHook::instance()->AreShortcutsEnabled());
    QCOMPARE(m_pFixture->History().count(), 0);
    m_pFixture->Document()->Unlock();
}

void TestFillCan::aRefusedLockDropsTheJob()
{
    FaultSeams::FailNth(FaultSeams::Seam::DocumentLock, 1);
    Click({3.5, 2.5});
    VERIFY_NOTHING_IS_HELD();
    QCoreApplication::processEvents();
    QCOMPARE(m_pFixture->History().count(), 0);
}

void TestFillCan::aFailedJobIsToldAndRolledBack()
{
    FaultSeams::FailNth(FaultSeams::Seam::FloodFill, 1);
    QTest::ignoreMessage(
        QtDebugMsg, QRegularExpression("line=1416, file=\"src/fillcan/FillCan_p\"\\. Exception content"));
    QStringList shown;
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        shown = QStringList{box->windowTitle(), box->GetText()};
        box->close();
    });
    Click({3.5, 2.5});
    QTRY_COMPARE(shown, QStringList({"Operation error", "Cannot fill. Unexpected error occurred."}));
    WaitForTheJob();
    QCOMPARE(m_pFixture->History().count(), 0);
    QCOMPARE(m_pFixture->Pixel(3, 2), QRgb(0xFFFFFFFF));
}

void TestFillCan::aFailedPushIsToldAndRolledBack()
{
    // There is no tile for the pixels that the push writes: the layer's own is shared.
    BlackenFirstColumn();
    const LXImage32 shared = *m_pFixture->Document()->GetLayerImage(1);
    const auto failing = connect(&m_pFixture->History(), &LexoUndoStack::aboutIndexChanged, this,
                                 [] { FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1); });
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression("line=501, file=\"src/fillcan/FillCan_p\"\\. Exception content"));
    bool shown = false;
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        shown = true;
        box->close();
    });
    Click({3.5, 2.5});
    QTRY_VERIFY(shown);
    WaitForTheJob();
    disconnect(failing);
    QCOMPARE(m_pFixture->History().count(), 0);
    QCOMPARE(m_pFixture->Pixel(3, 2), QRgb(0xFFFFFFFF));
}

void TestFillCan::aLongJobShowsTheProgressDialog()
{
    LXDocumentLayerLockerForWrite locker(m_pFixture->Document(), 1);
    bool shown = false;
    m_pFixture->Input().WhenModalShows<FillCanProgress>([&](FillCanProgress* progress) {
        shown = true;
        QVERIFY(progress->isModal());
        QVERIFY(!QGuiApplication::overrideCursor());
        QVERIFY(m_pFixture->Document()->GetLockState());
        locker.Unlock();
    });
    Click({3.5, 2.5});
    QTRY_VERIFY_WITH_TIMEOUT(shown, 10000);
    WaitForTheJob();
    QCOMPARE(m_pFixture->History().count(), 1);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestFillCan::theWorkIsHeldWhileTheJobRuns()
{
    LXDocumentLayerLockerForWrite locker(m_pFixture->Document(), 1);
    Click({3.5, 2.5});
    QVERIFY(m_pFixture->Document()->GetLockState());
    QVERIFY(!LexoAppKeyHook::instance()->AreShortcutsEnabled());
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    locker.Unlock();
    WaitForTheJob();
    VERIFY_NOTHING_IS_HELD();
}

void TestFillCan::anotherToolMayComeWhileTheJobRuns()
{
    LXDocumentLayerLockerForWrite locker(m_pFixture->Document(), 1);
    Click({3.5, 2.5});
    ZKToolGroupManager::Activate(nullptr);
    QVERIFY(!m_pTool->IsActive());
    locker.Unlock();
    WaitForTheJob();
    QCOMPARE(m_pFixture->History().count(), 1);
}

void TestFillCan::aViewThatGoesAwayGetsItsFillFirst()
{
    FaultSeams::SlowDown(FaultSeams::Seam::FloodFill, 50);
    Click({3.5, 2.5});
    QVERIFY(m_pFixture->Document()->GetLockState());
    m_pAdapter->SetDocumentView(nullptr);
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(m_pFixture->History().count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(m_pFixture->History().count(), 1);
}

void TestFillCan::aDocumentThatClosesDropsTheJob()
{
    FaultSeams::SlowDown(FaultSeams::Seam::FloodFill, 50);
    Click({3.5, 2.5});
    emit m_pFixture->Document()->AboutToClose(m_pFixture->Document());
    VERIFY_NOTHING_IS_HELD();
    QCoreApplication::processEvents();
    QCOMPARE(m_pFixture->History().count(), 0);
}

void TestFillCan::aToolThatDiesLeavesNothingBehind()
{
    QPointer<QWidget> bar = Bar();
    QPointer<QWidget> panel = Panel();
    FaultSeams::SlowDown(FaultSeams::Seam::FloodFill, 50);
    Click({3.5, 2.5});
    m_pAdapter.reset();
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(m_pFixture->History().count(), 0);
    QVERIFY(!bar);
    QVERIFY(!panel);
    QVERIFY(LToolBoxWidget::GetInstance()->findChildren<LToolBoxButton*>().isEmpty());
    QVERIFY(!LXToolWidgetManager::instance()->GetCurrentWidget());
    QVERIFY(!ZKToolGroupManager::GetExplicitAction());
}

void TestFillCan::withoutAHistoryTheFillIsKept()
{
    ZKDocumentWidget widget(m_pFixture->Document(), nullptr);
    widget.resize(400, 300);
    widget.show();
    widget.GetView()->GetLayerSelection()->select(m_pFixture->Document()->GetModel()->index(0, 0),
                                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
    IDocumentView view;
    view.SetDocumentWidget(&widget);
    m_pAdapter->SetDocumentView(&view);
    emit m_pTool->OnMousePress(QPointF(3.5, 2.5), Qt::MouseButtons(Qt::LeftButton));
    WaitForTheJob();
    QCOMPARE(m_pFixture->Pixel(3, 2), QRgb(0xFFFF0000));
    m_pAdapter->SetDocumentView(nullptr);
}

void TestFillCan::shortcutsStepThroughTheBlendModes()
{
    auto* combo = InPanel<QComboBox>("m_pBlendCombo");
    SendShortcut("Shift++");
    QCOMPARE(combo->currentIndex(), 1);
    SendShortcut("Shift+-");
    SendShortcut("Shift+-");
    QCOMPARE(combo->currentText(), QString("Addition"));
    SendShortcut("Shift+Alt+D");
    QCOMPARE(combo->currentText(), QString("Color dodge"));
    QCOMPARE(InBar<QComboBox>("m_pBlendCombo")->currentText(), QString("Color dodge"));
    emit LexoAppKeyHook::instance()->ShortcutActivatedAmbiguously(QKeySequence("Shift+Alt+N"), 0);
    QCOMPARE(combo->currentIndex(), 0);
}

void TestFillCan::shortcutsLeaveADisabledComboAlone()
{
    auto* combo = InPanel<QComboBox>("m_pBlendCombo");
    combo->setCurrentIndex(5);
    combo->setEnabled(false);
    SendShortcut("Shift+Alt+N");
    SendShortcut("Shift++");
    QCOMPARE(combo->currentIndex(), 5);
}

void TestFillCan::shortcutsLiveWithTheActiveTool()
{
    auto* combo = InPanel<QComboBox>("m_pBlendCombo");
    ZKToolGroupManager::Activate(nullptr);
    SendShortcut("Shift++");
    QCOMPARE(combo->currentIndex(), 0);
    ZKToolGroupManager::Activate(m_pAdapter->GetActivateAction());
    SendShortcut("Shift++");
    QCOMPARE(combo->currentIndex(), 1);
}

void TestFillCan::thePatternListOpensUnderItsButton()
{
    auto* button = InBar<QToolButton>("m_pSelectPatternBtn");
    auto* patterns = Bar()->findChild<PatternSelectWidget*>();
    Bar()->show();
    button->setChecked(true);
    QVERIFY(patterns->isVisible());
    QCOMPARE(patterns->pos(), button->mapToGlobal(QPoint(0, button->height() + 1)));
    QVERIFY(!button->icon().isNull());

    emit patterns->ItemDoubleClicked(0);
    QVERIFY(!button->isChecked());
    QVERIFY(!patterns->isVisible());
}

void TestFillCan::thePatternListClosesWithItsButton()
{
    auto* button = InBar<QToolButton>("m_pSelectPatternBtn");
    auto* patterns = Bar()->findChild<PatternSelectWidget*>();
    Bar()->show();
    button->setChecked(true);
    patterns->hide();
    QVERIFY(!button->isChecked());

    button->setChecked(true);
    QCursor::setPos(799, 599);
    QEvent deactivate(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(patterns, &deactivate);
    QVERIFY(!patterns->isVisible());
    QVERIFY(!button->isChecked());

    button->setChecked(true);
    QCursor::setPos(button->mapToGlobal(QPoint(2, 2)));
    QCoreApplication::sendEvent(patterns, &deactivate);
    QVERIFY(patterns->isVisible());
    button->setChecked(false);
    QVERIFY(!patterns->isVisible());
}

ZK_REGISTER_TEST(tst_fillcan, TestFillCan)

#include "tst_fillcan.moc"
