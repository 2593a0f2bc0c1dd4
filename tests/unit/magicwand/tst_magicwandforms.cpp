#include "MagicWandFixture.h"

#include "core/ZKActivateAction.h"
#include "core/ZKApplication.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/LexoAppKeyHook.h"
#include "history/LexoCommand.h"
#include "history/MWSelectionCommandData.h"
#include "support/TestRegistry.h"
#include "utils/ZKIconHelper.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>

#include <algorithm>

// The option bar, the panel, the keys that change the mode, and the settings.
class TestMagicWandForms : public QObject, private MagicWandFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theInterfacesAreAnswered();
    void theFormsHaveTheirTitlesAndTexts();
    void theFormsHaveTheirSizes();
    void theToolBoxButtonStandsForTheTool();
    void theToolBoxButtonHasTheSecondPlace();
    void comboAndButtonsDriveEachOther_data();
    void comboAndButtonsDriveEachOther();
    void sliderAndSpinBoxAgree();
    void heldKeysChangeTheModeUntilTheRelease_data();
    void heldKeysChangeTheModeUntilTheRelease();
    void theReleasedShiftGivesTheUsersChoiceBack();
    void controlCancelsShiftAndAlt();
    void aRepeatedOrStrangeKeyChangesNothing();
    void theModeOfAKeyReachesTheFill();
    void aKeyHeldAtTheBeginningOfTheTurnWaitsForTheNext();
    void aKeyHeldAtTheEndOfTheTurnIsForgotten();
    void everyModeHasACursorOfItsOwn();
    void theOldCursorComesBack();
    void theHandStaysWhileTheViewIsPanned();
    void aTurnWhilePanningLeavesTheHand();
    void settingsComeBack();
    void damagedSettingsAreIgnored();
    void theAntialiasingBoxIsNeitherStoredNorRead();
    void theRefineButtonFollowsTheRegisteredAction();

private:
    int Mode() { return InPanel<QComboBox>("m_pModeCombo")->currentIndex(); }
};

namespace {
const char* const Buttons[] = {"m_pReplace", "m_pUnite", "m_pSubtract", "m_pIntersect"};
const char* const ButtonIcons[] = {"theme:add_sel.png", "theme:unite_sel.png", "theme:subtract_sel.png",
                                   "theme:intersect_sel.png"};
/// By the rows of the mode combo.
const char* const Cursors[] = {"theme:magic_ward_cursor.png", "theme:magic_ward_plus_cursor.png",
                               "theme:magic_ward_minus_cursor.png", "theme:magic_ward_delete_cursor.png"};

QImage Picture(const QIcon& icon)
{
    return icon.pixmap(24, 24).toImage();
}
} // namespace

void TestMagicWandForms::init()
{
    MakeTool();
}

void TestMagicWandForms::cleanup()
{
    VERIFY_NOTHING_IS_HELD();
    DropTool();
}

void TestMagicWandForms::theInterfacesAreAnswered()
{
    for (const char* name :
         {"ITool/1.0", "IDocumentViewTool/1.0", "IDocumentViewState/1.0", "MagicWandTool"}) {
        QVERIFY2(m_pTool->qt_metacast(name), name);
    }
    QVERIFY(!m_pTool->qt_metacast("IMainMenuActionList/1.0"));
    QVERIFY(!m_pTool->qt_metacast("IWidgetTool/1.0"));
    QCOMPARE(m_pTool->GetDocumentViewState(), quint64(0));
    QVERIFY(m_pTool->IsActive());
}

void TestMagicWandForms::theFormsHaveTheirTitlesAndTexts()
{
    QCOMPARE(Bar()->windowTitle(), QString("Magic wand toolbar"));
    QCOMPARE(Panel()->windowTitle(), QString("Magic wand"));
    const QStringList tips{"Replace", "Unite", "Subtract", "Intersect"};
    for (int i = 0; i < 4; ++i) {
        auto* button = InBar<QToolButton>(Buttons[i]);
        QCOMPARE(button->toolTip(), tips[i]);
        QVERIFY(button->isCheckable() && button->autoExclusive());
        QCOMPARE(button->isChecked(), i == 0);
        QCOMPARE(Picture(button->icon()), Picture(ZKIconHelper::DisabledIcon(ButtonIcons[i])));
    }
    const QIcon wand = ZKIconHelper::DisabledIcon("theme:tool-bar-wand.png");
    auto* label = InBar<QLabel>("m_pPictureLabelMain");
    QCOMPARE(label->pixmap(Qt::ReturnByValue).toImage(), wand.pixmap(40, 40).toImage());
    auto* combo = InPanel<QComboBox>("m_pModeCombo");
    QStringList modes;
    for (int i = 0; i < combo->count(); ++i) {
        modes.append(combo->itemText(i));
    }
    QCOMPARE(modes, QStringList({"Create new", "Add", "Subtract", "Intersect"}));
    QCOMPARE(InPanel<QLabel>("m_pModeLabel")->text(), QString("Mode: "));
    QCOMPARE(InPanel<QLabel>("m_pToleranceLabel")->text(), QString("Tolerance: "));
    QCOMPARE(InPanel<QCheckBox>("m_pSelectionChB")->text(), QString("Selection antialiasing"));
    QVERIFY(!InPanel<QCheckBox>("m_pSelectionChB")->isChecked());
    QCOMPARE(InPanel<QCheckBox>("m_pSampleAllLayers")->text(), QString("Sample all layers"));
    QVERIFY(InPanel<QCheckBox>("m_pSampleAllLayers")->isChecked());
    QCOMPARE(InPanel<QCheckBox>("m_pContiguousAreas")->text(), QString("Contiguous"));
    QVERIFY(InPanel<QCheckBox>("m_pContiguousAreas")->isChecked());
}

void TestMagicWandForms::theToolBoxButtonStandsForTheTool()
{
    auto* button = LToolBoxWidget::GetInstance()->findChild<LToolBoxButton*>();
    QVERIFY(button->isChecked());
    const QAction* action = button->defaultAction();
    QCOMPARE(action->text(), QString("Magic Wand"));
    QCOMPARE(Picture(action->icon()), Picture(ZKIconHelper::DisabledIcon("theme:tool-bar-wand.png")));
    QVERIFY(action->isCheckable() && action->isChecked());
    ZKToolGroupManager::Activate(nullptr);
    QVERIFY(!button->isChecked());
    QVERIFY(!m_pTool->IsActive());
    QVERIFY(!LXToolWidgetManager::instance()->GetCurrentWidget());
    QVERIFY(button->defaultAction()->isChecked());
    emit button->LMousePressed(button);
    QVERIFY(m_pTool->IsActive());
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), m_pTool->GetActivateAction());
    ZKToolGroupManager::Activate(nullptr);
    emit button->RMousePressed(button);
    QVERIFY(m_pTool->IsActive());
}

void TestMagicWandForms::theToolBoxButtonHasTheSecondPlace()
{
    LToolBoxWidget box;
    LToolBoxButton second;
    LToolBoxButton third;
    box.AddToolButton(&third, 3);
    box.AddToolButton(&second, 2);
    m_pTool->SetToolBox(&box);
    box.resize(40, 400);
    box.show();
    QList<LToolBoxButton*> buttons = box.findChildren<LToolBoxButton*>();
    std::sort(buttons.begin(), buttons.end(),
              [](const LToolBoxButton* a, const LToolBoxButton* b) { return a->y() < b->y(); });
    m_pTool->SetToolBox(LToolBoxWidget::GetInstance());
    // Of equal places the one that came first stands first.
    QCOMPARE(buttons.size(), 3);
    QCOMPARE(buttons.indexOf(&second), 0);
    QCOMPARE(buttons.indexOf(&third), 2);
}

void TestMagicWandForms::theFormsHaveTheirSizes()
{
    const auto sizes = [](const QWidget* widget) {
        return QVector<QSize>({widget->minimumSize(), widget->maximumSize()});
    };
    const int any = QWIDGETSIZE_MAX;
    QCOMPARE(sizes(InBar<QLabel>("m_pPictureLabelMain")), QVector<QSize>(2, {40, 40}));
    for (const char* name : Buttons) {
        QCOMPARE(sizes(InBar<QToolButton>(name)), QVector<QSize>(2, {24, 24}));
    }
    for (const char* name : {"frame_3", "frame_4"}) {
        QCOMPARE(sizes(InBar<QFrame>(name)), QVector<QSize>({{1, 0}, {1, any}}));
    }
    QCOMPARE(sizes(InBar<QToolButton>("m_pRefineSelection")), QVector<QSize>({{0, 24}, {any, 24}}));

    QCOMPARE(sizes(InPanel<QComboBox>("m_pModeCombo")), QVector<QSize>({{0, 24}, {any, 22}}));
    QCOMPARE(InPanel<QSpinBox>("m_pToleranceSpin")->maximumWidth(), 50);
    for (const char* name : {"m_pModeLabel", "m_pToleranceLabel"}) {
        QCOMPARE(InPanel<QLabel>(name)->styleSheet(), QString("padding:0px;"));
    }
    QVERIFY(InPanel<QFrame>("line"));
    for (const char* name : {"gridLayout", "m_pParamsLayout", "m_pToleranceLayout"}) {
        QVERIFY2(InPanel<QLayout>(name), name);
    }
}

void TestMagicWandForms::comboAndButtonsDriveEachOther_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < 4; ++row) {
        QTest::newRow(Buttons[row]) << row;
    }
}

void TestMagicWandForms::comboAndButtonsDriveEachOther()
{
    QFETCH(int, row);
    SetMode((row + 1) % 4);
    SetMode(row);
    QVERIFY(InBar<QToolButton>(Buttons[row])->isChecked());
    SetMode((row + 2) % 4);
    InBar<QToolButton>(Buttons[row])->click();
    QCOMPARE(Mode(), row);
    for (int other = 0; other < 4; ++other) {
        QCOMPARE(InBar<QToolButton>(Buttons[other])->isChecked(), other == row);
    }
}

void TestMagicWandForms::sliderAndSpinBoxAgree()
{
    auto* slider = InPanel<QSlider>("m_pToleranceSlider");
    auto* spin = InPanel<QSpinBox>("m_pToleranceSpin");
    QCOMPARE(slider->value(), 32);
    QCOMPARE(spin->value(), 32);
    QCOMPARE(slider->minimum(), 0);
    QCOMPARE(slider->maximum(), 255);
    QCOMPARE(spin->maximum(), 255);
    slider->setValue(7);
    QCOMPARE(spin->value(), 7);
    spin->setValue(255);
    QCOMPARE(slider->value(), 255);
}

// ---- keys

void TestMagicWandForms::heldKeysChangeTheModeUntilTheRelease_data()
{
    QTest::addColumn<QList<int>>("keys");
    QTest::addColumn<int>("mode");
    QTest::newRow("Shift adds") << QList<int>{Qt::Key_Shift} << 1;
    QTest::newRow("Alt subtracts") << QList<int>{Qt::Key_Alt} << 2;
    QTest::newRow("AltGr subtracts") << QList<int>{Qt::Key_AltGr} << 2;
    QTest::newRow("both intersect") << QList<int>{Qt::Key_Shift, Qt::Key_Alt} << 3;
}

void TestMagicWandForms::heldKeysChangeTheModeUntilTheRelease()
{
    QFETCH(QList<int>, keys);
    QFETCH(int, mode);
    for (const int key : keys) {
        SendKey(key, true);
    }
    QCOMPARE(Mode(), mode);
    QVERIFY(InBar<QToolButton>(Buttons[mode])->isChecked());
    for (const int key : keys) {
        SendKey(key, false);
    }
    QCOMPARE(Mode(), 0);
}

void TestMagicWandForms::theReleasedShiftGivesTheUsersChoiceBack()
{
    SetMode(3);
    SendKey(Qt::Key_Shift, true);
    QCOMPARE(Mode(), 1);
    SendKey(Qt::Key_Alt, true);
    SendKey(Qt::Key_Alt, false);
    QCOMPARE(Mode(), 1);
    SendKey(Qt::Key_Shift, false);
    QCOMPARE(Mode(), 3);
}

void TestMagicWandForms::controlCancelsShiftAndAlt()
{
    SetMode(2);
    SendKey(Qt::Key_Shift, true);
    QCOMPARE(Mode(), 1);
    SendKey(Qt::Key_Control, true);
    QCOMPARE(Mode(), 2);
    SendKey(Qt::Key_Alt, true);
    QCOMPARE(Mode(), 2);
    SendKey(Qt::Key_Control, false);
    QCOMPARE(Mode(), 3);
    SendKey(Qt::Key_Shift, false);
    SendKey(Qt::Key_Alt, false);
    QCOMPARE(Mode(), 2);
}

void TestMagicWandForms::aRepeatedOrStrangeKeyChangesNothing()
{
    SendKey(Qt::Key_Shift, true);
    InBar<QToolButton>("m_pIntersect")->click();
    // The same keys are down as before: what the user has chosen meanwhile stands.
    SendKey(Qt::Key_Shift, true);
    SendKey(Qt::Key_X, true);
    QCOMPARE(Mode(), 3);
    SendKey(Qt::Key_Shift, false);
    QCOMPARE(Mode(), 3);
}

void TestMagicWandForms::theModeOfAKeyReachesTheFill()
{
    Click({2.5, 2.5});
    SendKey(Qt::Key_Shift, true);
    Click({6.5, 2.5});
    SendKey(Qt::Key_Shift, false);
    QCOMPARE(Selection().first(), QString("####.###"));
    const auto* data =
        dynamic_cast<const MWSelectionCommandData*>(m_pFixture->History().command(1)->GetCommandData());
    QVERIFY(data);
    QCOMPARE(data->GetRedoOp(), SelectionCommandData::Unite);
}

void TestMagicWandForms::aKeyHeldAtTheBeginningOfTheTurnWaitsForTheNext()
{
    ZKToolGroupManager::Activate(nullptr);
    m_pFixture->Input().HoldModifiers(Qt::ShiftModifier);
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
    QCOMPARE(Mode(), 0);
    QCOMPARE(m_pFixture->View()->cursor().pixmap().toImage(),
             ZKIconHelper::ThemePixmap(Cursors[0]).toImage());
    SendKey(Qt::Key_X, true);
    QCOMPARE(Mode(), 1);
    m_pFixture->Input().HoldModifiers(Qt::NoModifier);
    QCOMPARE(Mode(), 0);
}

void TestMagicWandForms::aKeyHeldAtTheEndOfTheTurnIsForgotten()
{
    SendKey(Qt::Key_Shift, true);
    ZKToolGroupManager::Activate(nullptr);
    SendKey(Qt::Key_Shift, false);
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
    QCOMPARE(Mode(), 0);
    SendKey(Qt::Key_X, true);
    QCOMPARE(Mode(), 0);
}

// ---- cursor

void TestMagicWandForms::everyModeHasACursorOfItsOwn()
{
    QList<QImage> images;
    for (int row = 0; row < 4; ++row) {
        SetMode(row);
        const QCursor cursor = m_pFixture->View()->cursor();
        QCOMPARE(cursor.hotSpot(), QPoint(3, 3));
        const QImage image = cursor.pixmap().toImage();
        QVERIFY(!image.isNull());
        QCOMPARE(image, ZKIconHelper::ThemePixmap(Cursors[row]).toImage());
        QVERIFY(!images.contains(image));
        images.append(image);
    }
}

void TestMagicWandForms::theOldCursorComesBack()
{
    ZKToolGroupManager::Activate(nullptr);
    m_pFixture->View()->setCursor(Qt::PointingHandCursor);
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::BitmapCursor);
    m_pTool->SetDocumentView(nullptr);
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::PointingHandCursor);
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::BitmapCursor);
    ZKToolGroupManager::Activate(nullptr);
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::PointingHandCursor);
    // What changes while the tool is inactive leaves the view alone.
    SendKey(Qt::Key_Shift, true);
    SendKey(Qt::Key_Shift, false);
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::PointingHandCursor);
}

void TestMagicWandForms::theHandStaysWhileTheViewIsPanned()
{
    ZKDocumentView* view = m_pFixture->View();
    SetMode(1);
    const QImage plus = view->cursor().pixmap().toImage();
    SetMode(0);
    view->EnablePanning(true);
    SendKey(Qt::Key_Shift, true);
    QCOMPARE(view->cursor().shape(), Qt::OpenHandCursor);
    view->EnablePanning(false);
    QCOMPARE(view->cursor().pixmap().toImage(), plus);
    SendKey(Qt::Key_Shift, false);
}

void TestMagicWandForms::aTurnWhilePanningLeavesTheHand()
{
    ZKDocumentView* view = m_pFixture->View();
    const QImage wand = view->cursor().pixmap().toImage();
    ZKToolGroupManager::Activate(nullptr);
    view->setCursor(Qt::CrossCursor);
    view->EnablePanning(true);
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
    QCOMPARE(view->cursor().shape(), Qt::OpenHandCursor);
    view->EnablePanning(false);
    QCOMPARE(view->cursor().pixmap().toImage(), wand);

    view->EnablePanning(true);
    ZKToolGroupManager::Activate(nullptr);
    QCOMPARE(view->cursor().shape(), Qt::OpenHandCursor);
    view->EnablePanning(false);
    QCOMPARE(view->cursor().shape(), Qt::CrossCursor);

    // Taken and left before the hand goes.
    view->EnablePanning(true);
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
    ZKToolGroupManager::Activate(nullptr);
    QCOMPARE(view->cursor().shape(), Qt::OpenHandCursor);
    view->EnablePanning(false);
    QCOMPARE(view->cursor().shape(), Qt::CrossCursor);
}

// ---- settings

void TestMagicWandForms::settingsComeBack()
{
    SetMode(2);
    InPanel<QSpinBox>("m_pToleranceSpin")->setValue(99);
    InPanel<QCheckBox>("m_pSampleAllLayers")->setChecked(false);
    InPanel<QCheckBox>("m_pContiguousAreas")->setChecked(false);
    m_pTool->SaveSettings();
    QCOMPARE(ZKApplication::GetUserValue("MagicWandTool/Tolerance", 0).toInt(), 99);
    QCOMPARE(ZKApplication::GetUserValue("MagicWandTool/Mode", 0).toInt(), 2);
    QCOMPARE(ZKApplication::GetUserValue("MagicWandTool/SampleAll", true).toBool(), false);
    QCOMPARE(ZKApplication::GetUserValue("MagicWandTool/Contiguous", true).toBool(), false);
    QCOMPARE(ZKApplication::GetUserValue("MagicWandTool/Active", false).toBool(), true);

    DropTool();
    MakeTool();
    m_pTool->LoadSettings();
    QVERIFY(m_pTool->IsActive());
    QCOMPARE(Mode(), 2);
    QVERIFY(InBar<QToolButton>("m_pSubtract")->isChecked());
    QCOMPARE(InPanel<QSpinBox>("m_pToleranceSpin")->value(), 99);
    QCOMPARE(InPanel<QSlider>("m_pToleranceSlider")->value(), 99);
    QVERIFY(!InPanel<QCheckBox>("m_pSampleAllLayers")->isChecked());
    QVERIFY(!InPanel<QCheckBox>("m_pContiguousAreas")->isChecked());
}

void TestMagicWandForms::damagedSettingsAreIgnored()
{
    ZKApplication::SetUserValue("MagicWandTool/Active", true);
    for (const int mode : {-1, 4}) {
        ZKApplication::SetUserValue("MagicWandTool/Mode", mode);
        ZKApplication::SetUserValue("MagicWandTool/Tolerance", 1000);
        m_pTool->LoadSettings();
        QCOMPARE(Mode(), 0);
        QCOMPARE(InPanel<QSpinBox>("m_pToleranceSpin")->value(), 255);
    }
}

void TestMagicWandForms::theAntialiasingBoxIsNeitherStoredNorRead()
{
    InPanel<QCheckBox>("m_pSelectionChB")->setChecked(true);
    Click({2.5, 2.5});
    QCOMPARE(Selection().first(), QString("####...."));
    m_pTool->SaveSettings();
    DropTool();
    MakeTool();
    m_pTool->LoadSettings();
    QVERIFY(!InPanel<QCheckBox>("m_pSelectionChB")->isChecked());
}

void TestMagicWandForms::theRefineButtonFollowsTheRegisteredAction()
{
    auto* button = InBar<QToolButton>("m_pRefineSelection");
    QCOMPARE(button->text(), QString("Refine selection"));
    QVERIFY(!button->isEnabled());
    {
        QAction refine(ZKIconHelper::DisabledIcon("theme:add_sel.png"), "Refine it");
        refine.setStatusTip("Makes its edge better");
        int triggered = 0;
        connect(&refine, &QAction::triggered, this, [&] { ++triggered; });
        ZKApplication::GetInstance()->RegisterRefineSelection(&refine);
        QCOMPARE(button->defaultAction(), &refine);
        QVERIFY(!button->icon().isNull());
        QCOMPARE(button->toolTip(), QString("Refine it"));
        QVERIFY(button->isEnabled());
        button->click();
        QCOMPARE(triggered, 1);
        ZKApplication::GetInstance()->RegisterRefineSelection(nullptr);
        QVERIFY(!button->defaultAction());
    }
    QCOMPARE(button->text(), QString("Refine selection"));
    QCOMPARE(button->toolTip(), QString("Refine selection"));
    QCOMPARE(button->statusTip(), QString());
    QVERIFY(button->icon().isNull());
    QVERIFY(!button->isEnabled());
}

ZK_REGISTER_TEST(tst_magicwandforms, TestMagicWandForms)

#include "tst_magicwandforms.moc"
