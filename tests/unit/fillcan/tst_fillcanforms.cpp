#include "FillCanFixture.h"
#include "IMainMenuActionList.h"

#include "core/ZKActivateAction.h"
#include "core/ZKApplication.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LexoAppKeyHook.h"
#include "gui/PatternSelectWidget.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>

/// The fill can's tool-box button, option bar and panel, and the keys that change them.
class TestFillCanForms : public QObject, private FillCanFixture
{
    Q_OBJECT

private slots:

    void init() { MakeTool(); }

    void cleanup() { DropTool(); }

    void theFormsHaveTheirNamesRangesAndDefaults();
    void theControlsAreLabelled();
    void thePairsOfTheTwoFormsAgree();
    void theButtonStandsInTheToolBox();
    void theButtonsPlaceIsTheSeventh();
    void settingsRememberTheActiveTool();
    void listsAreEmpty();

    void shortcutsStepThroughTheBlendModes();
    void shortcutsLeaveADisabledComboAlone();
    void shortcutsLiveWithTheActiveTool();

    void thePatternsOfTheProgramAreListedByFileName();
    void thePatternButtonShowsTheCurrentPattern();
    void thePatternListOpensUnderItsButton();
    void thePatternListClosesWithItsButton();
};

void TestFillCanForms::theFormsHaveTheirNamesRangesAndDefaults()
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

void TestFillCanForms::theControlsAreLabelled()
{
    for (QWidget* form : {Bar(), Panel()}) {
        QStringList texts;
        for (const QLabel* label : form->findChildren<QLabel*>())
            texts << label->text();
        texts.sort();
        QCOMPARE(texts, QStringList({"Blending:", "Fill  mode:", "Opacity:", "Tolerance:"}));
        QCOMPARE(form->findChild<QCheckBox*>("m_pIgnoreChb")->text(), QString("Ignore transparency"));
        QCOMPARE(form->findChild<QCheckBox*>("m_pAntialiasingChb")->text(), QString("Antialiasing"));
        QCOMPARE(form->findChild<QCheckBox*>("m_pContiguousChb")->text(), QString("Contiguous"));
        QCOMPARE(form->findChild<QCheckBox*>("m_pAllLayersChb")->text(), QString("All layers"));
    }
    QVERIFY(InBar<QToolButton>("m_pSelectPatternBtn")->isCheckable());
}

void TestFillCanForms::thePairsOfTheTwoFormsAgree()
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

void TestFillCanForms::theButtonStandsInTheToolBox()
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

void TestFillCanForms::theButtonsPlaceIsTheSeventh()
{
    LToolBoxButton before;
    LToolBoxButton after;
    LToolBoxWidget* toolBox = LToolBoxWidget::GetInstance();
    const LToolBoxButton* button = toolBox->findChild<LToolBoxButton*>();
    // Of two buttons at one place the one that came later stands lower.
    toolBox->AddToolButton(&after, 7);
    toolBox->AddToolButton(&before, 6);
    toolBox->resize(40, 400);
    QVERIFY(before.y() < button->y());
    QVERIFY(button->y() < after.y());
    toolBox->RemoveButton(&before);
    toolBox->RemoveButton(&after);
}

void TestFillCanForms::settingsRememberTheActiveTool()
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

void TestFillCanForms::listsAreEmpty()
{
    QVERIFY(m_pAdapter->GetMenuActions().isEmpty());
    QVERIFY(m_pAdapter->GetToolBarActions().isEmpty());
    QVERIFY(m_pAdapter->GetMainMenuEntries().empty());
}

void TestFillCanForms::shortcutsStepThroughTheBlendModes()
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

void TestFillCanForms::shortcutsLeaveADisabledComboAlone()
{
    auto* combo = InPanel<QComboBox>("m_pBlendCombo");
    combo->setCurrentIndex(5);
    combo->setEnabled(false);
    SendShortcut("Shift+Alt+N");
    SendShortcut("Shift++");
    QCOMPARE(combo->currentIndex(), 5);
}

void TestFillCanForms::shortcutsLiveWithTheActiveTool()
{
    auto* combo = InPanel<QComboBox>("m_pBlendCombo");
    ZKToolGroupManager::Activate(nullptr);
    SendShortcut("Shift++");
    QCOMPARE(combo->currentIndex(), 0);
    ZKToolGroupManager::Activate(m_pAdapter->GetActivateAction());
    SendShortcut("Shift++");
    QCOMPARE(combo->currentIndex(), 1);
}

void TestFillCanForms::thePatternsOfTheProgramAreListedByFileName()
{
    const auto* list = Bar()->findChild<PatternSelectWidget*>()->findChild<QListWidget*>();
    QVERIFY(list->count() > 1);
    QCOMPARE(list->count(), ZKApplication::GetPatternCount());
    for (int i = 0; i < list->count(); ++i) {
        QCOMPARE(list->item(i)->data(Qt::AccessibleTextRole).toString(),
                 QFileInfo(ZKApplication::GetPatternFile(i)).fileName());
    }
}

void TestFillCanForms::thePatternButtonShowsTheCurrentPattern()
{
    DropTool();
    ZKApplication::SetTexturePatternIndex(1);
    MakeTool();
    auto* patterns = Bar()->findChild<PatternSelectWidget*>();
    const auto* button = InBar<QToolButton>("m_pSelectPatternBtn");
    QCOMPARE(patterns->GetCurrentItem(), 1);
    const QSize size = patterns->GetItemImage(1).size();
    QCOMPARE(button->icon().pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32),
             patterns->GetItemImage(1).toImage().convertToFormat(QImage::Format_ARGB32));

    patterns->SelectItem(0);
    QCOMPARE(button->icon().pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32),
             patterns->GetItemImage(0).toImage().convertToFormat(QImage::Format_ARGB32));
    ZKApplication::SetTexturePatternIndex(0);
}

void TestFillCanForms::thePatternListOpensUnderItsButton()
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

void TestFillCanForms::thePatternListClosesWithItsButton()
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

ZK_REGISTER_TEST(tst_fillcanforms, TestFillCanForms)

#include "tst_fillcanforms.moc"
