#include "LXViewTool.h"
#include "fillmenu/LXFillTool.h"

#include "core/ZKApplication.h"
#include "core/ZKMenuManager.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "gui/LXFillOptionsDialog.h"
#include "gui/LXUndefinedOperationProgress.h"
#include "gui/LayersWidget.h"
#include "gui/LexoAppKeyHook.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoCommand.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"
#include "support/ViewFixture.h"
#include "utils/FaultSeams.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QRegularExpression>
#include <QSemaphore>
#include <QSpinBox>
#include <QTest>

#include <algorithm>

namespace {
LXImage32 Coverage(int width, int height, quint8 value = 255)
{
    LXImage32 mask(width, height);
    mask.Fill(LXRGBA32i(quint32(value) << 24));
    return mask;
}
} // namespace

class TestFillMenu : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theEntriesStandInOrder();
    void theSubMenuHoldsColorsInOrder();
    void threeEntriesHaveApplicationShortcuts();
    void everythingIsOffWithoutAView();

    void everyColorHasItsTextAndPixels_data();
    void everyColorHasItsTextAndPixels();
    void greyTakesTheCustomRoad();
    void greyOnAMaskIsCalledFillMask();
    void aMaskTakesTheMasksColors();
    void undoAndRedoOfAFill();
    void aFillStaysInsideTheSelection();
    void aSelectionThatMissesTheLayerIsStillAStep();
    void lockedTransparencyKeepsAlphaUnderEverySolidColor();
    void withoutAHistoryTheFillIsDone();

    void transparentClearsTheLayer();
    void transparentHidesThroughAMask();
    void transparentWithASelectionDeletesThroughThePanel();
    void transparentOnLockedTransparencyPushesAndChangesNothing();
    void transparentThroughASelectionKeepsLockedTransparency();
    void transparentTakesCoverageFromAMaskInSpiteOfTheLayersLock();
    void deletingFromALockedLayerIsRefused_data();
    void deletingFromALockedLayerIsRefused();

    void customAsksAndFills();
    void aCancelledCustomFillsNothing();
    void customTakesItsContentsFromTheDialog_data();
    void customTakesItsContentsFromTheDialog();
    void customFillsWithAPattern();
    void customFillsAMaskWithTheMasksColors_data();
    void customFillsAMaskWithTheMasksColors();
    void customTakesTheGrayOfAColorToAMask();
    void customMixesByItsOpacity();
    void customOffersTheLastAnswersAgain();

    void cleanUpMakesTheLayerOpaque();
    void cleanUpStaysInsideTheSelection();
    void cleanUpOfAMissedLayerIsAStepWithoutAChange();
    void cleanUpWhileTheMaskIsTheTargetRespectsTheLayersLock();

    void commandsFollowLayerSelection();
    void commandsFollowLocks_data();
    void commandsFollowLocks();
    void commandsFollowTheDocumentLock();
    void aMaskAsTargetOpensThemOnALockedPixelLayer();
    void layersWithoutPixelsOpenThemByAnUnlockedMaskAlone_data();
    void layersWithoutPixelsOpenThemByAnUnlockedMaskAlone();

    void theAmbiguousKeyFillsWithTheForeground();
    void anotherAmbiguousKeyIsIgnored();
    void aFailedFillSaysSoAndChangesNothing();
    void aFailedCleaningSaysSo();
    void failingWorkIsReportedAndChangesNothing_data();
    void failingWorkIsReportedAndChangesNothing();
    void aFailedPushIsReportedAndRolledBack_data();
    void aFailedPushIsReportedAndRolledBack();
    void longWorkSaysWhatItDoes_data();
    void longWorkSaysWhatItDoes();
    void shortWorkShowsNoDialog();
    void longWorkShowsItsLabelAndCantBeClosed();

private:
    QAction* Action(const QString& text) const;

    void Trigger(const QString& text) const { Action(text)->trigger(); }

    /// Of "Clean up alpha" and the fifteen fills.
    int EnabledCount() const;
    QStringList HistoryTexts() const;
    void GiveMask(bool select);
    int MaskValue(int x, int y) const;
    void ArmFailure();
    void ExpectError(const QString& text);
    void ExpectBox(const QStringList& titleAndText, LXMessageBox::Icon expectedIcon);
    /// Sets the controls of the dialog of "Custom", and accepts it.
    void AnswerCustom(const QString& contents, const QString& mode, int opacity);
    PlainImage LayerPixels() const;
    PlainImage MaskPixels() const;
    QString FailureText(const QString& action) const;

    std::unique_ptr<ViewFixture> m_pFixture;
    std::unique_ptr<LayersWidget> m_pPanel;
    std::unique_ptr<LXViewTool> m_pTool;
};

void TestFillMenu::init()
{
    m_pFixture = std::make_unique<ViewFixture>(40, 30, QColor(200, 100, 50, 128));
    m_pPanel = std::make_unique<LayersWidget>();
    m_pPanel->SetView(m_pFixture->View());
    m_pTool = std::make_unique<LXViewTool>(new LXFillTool(nullptr));
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    ZKApplication::SetForeground(QColor(1, 2, 3));
    ZKApplication::SetBackground(QColor(4, 5, 6));
}

void TestFillMenu::cleanup()
{
    FaultSeams::Reset();
    m_pTool.reset();
    m_pPanel.reset();
    m_pFixture.reset();
    QVERIFY(!QApplication::activeModalWidget());
}

QAction* TestFillMenu::Action(const QString& text) const
{
    const MainMenuEntries entries = m_pTool->GetMainMenuEntries();
    for (const MainMenuEntry& entry : entries) {
        if (entry.pAction && entry.pAction->text() == text) return entry.pAction;
        if (!entry.pMenu) continue;
        const QList<QAction*> actions = entry.pMenu->actions();
        for (QAction* action : actions) {
            if (action->text() == text) return action;
        }
    }
    qFatal("no entry %s", qUtf8Printable(text));
}

int TestFillMenu::EnabledCount() const
{
    const QStringList texts{"Clean up alpha", "Foreground", "Background", "Transparent",
                            "Custom",         "Dark grey",  "Grey",       "Light grey",
                            "White",          "Red",        "Green",      "Blue",
                            "Cyan",           "Magenta",    "Yellow",     "Black"};
    return static_cast<int>(std::count_if(texts.begin(), texts.end(),
                                          [this](const QString& text) { return Action(text)->isEnabled(); }));
}

QStringList TestFillMenu::HistoryTexts() const
{
    QStringList texts;
    for (int i = 0; i < m_pFixture->History().count(); ++i) {
        texts.append(m_pFixture->History().text(i));
    }
    return texts;
}

void TestFillMenu::GiveMask(bool select)
{
    m_pFixture->Document()->AddMask(1, true);
    m_pFixture->Document()->GetModel()->SetMaskSelected(0, select);
}

int TestFillMenu::MaskValue(int x, int y) const
{
    return m_pFixture->Document()->GetMaskImage(1)->GetColor(x, y).Alpha();
}

/// The next tile fails, which is the operation's: a hidden view doesn't paint, so it needs none.
void TestFillMenu::ArmFailure()
{
    m_pFixture->Widget()->hide();
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Unexpected exception"));
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
}

void TestFillMenu::ExpectError(const QString& text)
{
    ExpectBox({"Operation error", text}, LXMessageBox::CriticalIcon);
}

void TestFillMenu::ExpectBox(const QStringList& titleAndText, LXMessageBox::Icon expectedIcon)
{
    m_pFixture->Input().WhenModalShows<LXMessageBox>([=](LXMessageBox* box) {
        const QStringList shown{box->windowTitle(), box->GetText()};
        const LXMessageBox::Icon icon = box->GetIcon();
        box->close();
        QCOMPARE(shown, titleAndText);
        QCOMPARE(icon, expectedIcon);
    });
}

void TestFillMenu::theEntriesStandInOrder()
{
    QStringList rows;
    const MainMenuEntries entries = m_pTool->GetMainMenuEntries();
    for (const MainMenuEntry& entry : entries) {
        const QString text = entry.pMenu ? entry.pMenu->title()
                                         : (entry.pAction->isSeparator() ? "--" : entry.pAction->text());
        rows.append(QString("%1,%2 %3").arg(entry.path.at(0)).arg(entry.path.at(1)).arg(text));
    }
    QCOMPARE(rows, QStringList({"1,11 --", "1,12 Clean up alpha", "1,13 &Fill"}));
}

void TestFillMenu::theSubMenuHoldsColorsInOrder()
{
    QStringList rows;
    const MainMenuEntries entries = m_pTool->GetMainMenuEntries();
    const QList<QAction*> actions = entries.rbegin()->pMenu->actions();
    for (const QAction* action : actions) {
        rows.append(action->isSeparator() ? "--" : action->text());
    }
    QCOMPARE(rows, QStringList({"Foreground", "Background", "Transparent", "Custom", "--", "Dark grey",
                                "Grey", "Light grey", "White", "Red", "Green", "Blue", "Cyan", "Magenta",
                                "Yellow", "Black"}));
}

void TestFillMenu::threeEntriesHaveApplicationShortcuts()
{
    const QList<std::pair<QString, QString>> keys{
        {"Foreground", "Alt+Backspace"}, {"Background", "Ctrl+Backspace"}, {"Custom", "Shift+Backspace"}};
    for (const auto& [text, key] : keys) {
        QCOMPARE(Action(text)->shortcut(), QKeySequence(key));
        QCOMPARE(Action(text)->shortcutContext(), Qt::ApplicationShortcut);
    }
    QVERIFY(Action("Transparent")->shortcut().isEmpty());
}

void TestFillMenu::everythingIsOffWithoutAView()
{
    QVERIFY(Action("Red")->isEnabled());
    m_pTool->SetDocumentView(nullptr);
    for (const char* text : {"Foreground", "Custom", "Red", "Clean up alpha"}) {
        QVERIFY2(!Action(text)->isEnabled(), text);
    }
    QVERIFY(!m_pTool->GetMainMenuEntries().rbegin()->pMenu->menuAction()->isEnabled());
}

void TestFillMenu::everyColorHasItsTextAndPixels_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("color");
    QTest::newRow("Foreground") << "Fill with foreground" << QColor(1, 2, 3);
    QTest::newRow("Background") << "Fill with background" << QColor(4, 5, 6);
    QTest::newRow("Dark grey") << "Fill with dark grey" << QColor(Qt::darkGray);
    QTest::newRow("Light grey") << "Fill with light grey" << QColor(Qt::lightGray);
    QTest::newRow("White") << "Fill with white" << QColor(Qt::white);
    QTest::newRow("Red") << "Fill with red" << QColor(Qt::red);
    QTest::newRow("Green") << "Fill with green" << QColor(Qt::green);
    QTest::newRow("Blue") << "Fill with blue" << QColor(Qt::blue);
    QTest::newRow("Cyan") << "Fill with cyan" << QColor(Qt::cyan);
    QTest::newRow("Magenta") << "Fill with magenta" << QColor(Qt::magenta);
    QTest::newRow("Yellow") << "Fill with yellow" << QColor(Qt::yellow);
    QTest::newRow("Black") << "Fill with black" << QColor(Qt::black);
}

void TestFillMenu::everyColorHasItsTextAndPixels()
{
    QFETCH(QString, text);
    QFETCH(QColor, color);
    Trigger(QTest::currentDataTag());
    QCOMPARE(HistoryTexts(), QStringList({text}));
    QCOMPARE(m_pFixture->Pixel(0, 0), color.rgb());
    QCOMPARE(m_pFixture->Pixel(39, 29), color.rgb());
}

void TestFillMenu::greyTakesTheCustomRoad()
{
    Trigger("Grey");
    Trigger("Dark grey");
    QCOMPARE(HistoryTexts(), QStringList({"Fill layer", "Fill with dark grey"}));
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Pixel(5, 5), QColor(Qt::gray).rgb());
}

void TestFillMenu::greyOnAMaskIsCalledFillMask()
{
    GiveMask(true);
    Trigger("Grey");
    QCOMPARE(HistoryTexts(), QStringList({"Fill mask"}));
    QCOMPARE(MaskValue(5, 5), QColor(Qt::gray).lightness());
    QCOMPARE(m_pFixture->Pixel(5, 5), QColor(200, 100, 50, 128).rgba());
}

void TestFillMenu::aMaskTakesTheMasksColors()
{
    GiveMask(true);
    Trigger("Black");
    QCOMPARE(MaskValue(5, 5), 0);
    Trigger("Foreground");
    QCOMPARE(MaskValue(5, 5), ZKApplication::GetMaskForeground().lightness());
    Trigger("Background");
    QCOMPARE(MaskValue(5, 5), ZKApplication::GetMaskBackground().lightness());
    QCOMPARE(HistoryTexts(),
             QStringList({"Fill with black", "Fill with foreground", "Fill with background"}));
}

void TestFillMenu::undoAndRedoOfAFill()
{
    const QRgb before = m_pFixture->Pixel(7, 7);
    Trigger("Red");
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Pixel(7, 7), before);
    m_pFixture->History().redo();
    QCOMPARE(m_pFixture->Pixel(7, 7), QColor(Qt::red).rgb());
}

void TestFillMenu::aFillStaysInsideTheSelection()
{
    m_pFixture->Document()->SetSelectionMask(Coverage(5, 5), {10, 10});
    const QRgb before = m_pFixture->Pixel(9, 10);
    Trigger("Red");
    QCOMPARE(m_pFixture->Pixel(10, 10), QColor(Qt::red).rgb());
    QCOMPARE(m_pFixture->Pixel(14, 14), QColor(Qt::red).rgb());
    QCOMPARE(m_pFixture->Pixel(9, 10), before);
    QCOMPARE(m_pFixture->Pixel(15, 14), before);
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Pixel(10, 10), before);
}

void TestFillMenu::aSelectionThatMissesTheLayerIsStillAStep()
{
    m_pFixture->Document()->SetLayerOffset(1, {20, 0});
    m_pFixture->Document()->SetSelectionMask(Coverage(5, 5), {1, 1});
    const QRgb before = m_pFixture->Pixel(25, 5);
    Trigger("Red");
    Trigger("Grey");
    QCOMPARE(m_pFixture->Pixel(25, 5), before);
    QCOMPARE(m_pFixture->Document()->GetLayerGeometry(1), QRect(20, 0, 40, 30));
    QCOMPARE(HistoryTexts(), QStringList({"Fill with red", "Fill layer"}));
    m_pFixture->History().undo();
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Pixel(25, 5), before);
}

void TestFillMenu::lockedTransparencyKeepsAlphaUnderEverySolidColor()
{
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::Transparency);
    for (const char* text : {"Foreground", "Background", "Dark grey", "Grey", "Light grey", "White", "Red",
                             "Green", "Blue", "Cyan", "Magenta", "Yellow", "Black"}) {
        Trigger(text);
        QVERIFY2(qAlpha(m_pFixture->Pixel(3, 3)) == 128, text);
    }
    QCOMPARE(m_pFixture->Pixel(3, 3), qRgba(0, 0, 0, 128));
}

void TestFillMenu::withoutAHistoryTheFillIsDone()
{
    ZKDocumentWidget bare(m_pFixture->Document(), nullptr);
    bare.GetView()->GetLayerSelection()->select(m_pFixture->Document()->GetModel()->index(0, 0),
                                                QItemSelectionModel::ClearAndSelect);
    IDocumentView view;
    view.SetDocumentWidget(&bare);
    m_pTool->SetDocumentView(nullptr);
    m_pTool->SetDocumentView(&view);
    Trigger("Red");
    QCOMPARE(m_pFixture->Pixel(3, 3), QColor(Qt::red).rgb());
    m_pTool->SetDocumentView(nullptr);
}

void TestFillMenu::transparentClearsTheLayer()
{
    Trigger("Transparent");
    QCOMPARE(m_pFixture->Pixel(3, 3), 0U);
    QCOMPARE(HistoryTexts(), QStringList({"Fill with transparent"}));
}

void TestFillMenu::transparentHidesThroughAMask()
{
    GiveMask(true);
    Trigger("Transparent");
    QCOMPARE(MaskValue(3, 3), 0);
    QCOMPARE(HistoryTexts(), QStringList({"Fill with transparent"}));
}

void TestFillMenu::transparentWithASelectionDeletesThroughThePanel()
{
    m_pFixture->Document()->SetSelectionMask(Coverage(5, 5, 100), {10, 10});
    Trigger("Transparent");
    // Alpha 128 less (128 x 100 + 127) / 255 = 50; the color stays.
    QCOMPARE(m_pFixture->Pixel(10, 10), qRgba(200, 100, 50, 78));
    QCOMPARE(m_pFixture->Pixel(9, 10), qRgba(200, 100, 50, 128));
    QCOMPARE(HistoryTexts(), QStringList({"Fill with transparent"}));

    // Without the panel's view nothing happens at all: no fill stands in for it.
    m_pPanel->SetView(nullptr);
    Trigger("Transparent");
    QCOMPARE(m_pFixture->Pixel(10, 10), qRgba(200, 100, 50, 78));
    QCOMPARE(HistoryTexts(), QStringList({"Fill with transparent"}));
}

void TestFillMenu::transparentOnLockedTransparencyPushesAndChangesNothing()
{
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::Transparency);
    Trigger("Transparent");
    QCOMPARE(m_pFixture->Pixel(3, 3), qRgba(200, 100, 50, 128));
    QCOMPARE(HistoryTexts(), QStringList({"Fill with transparent"}));
}

void TestFillMenu::transparentThroughASelectionKeepsLockedTransparency()
{
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::Transparency);
    m_pFixture->Document()->SetSelectionMask(Coverage(5, 5, 100), {10, 10});
    const PlainImage before = LayerPixels();
    Trigger("Transparent");
    QCOMPARE(TestImages::Difference(LayerPixels(), before), QString());
    QCOMPARE(HistoryTexts(), QStringList({"Fill with transparent"}));
    m_pFixture->History().undo();
    QCOMPARE(TestImages::Difference(LayerPixels(), before), QString());
}

void TestFillMenu::transparentTakesCoverageFromAMaskInSpiteOfTheLayersLock()
{
    GiveMask(true);
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::Transparency | LayerLocks::Pixels);
    m_pFixture->Document()->SetSelectionMask(Coverage(5, 5, 100), {10, 10});
    const PlainImage layer = LayerPixels();
    const PlainImage mask = MaskPixels();
    PlainImage expected = mask;
    for (int y = 10; y < 15; ++y) {
        for (int x = 10; x < 15; ++x)
            expected.At(x, y) = LXRGBA32i(qRgba(0, 0, 0, 155));
    }
    Trigger("Transparent");
    QCOMPARE(HistoryTexts(), QStringList({"Fill with transparent"}));
    QCOMPARE(TestImages::Difference(MaskPixels(), expected), QString());
    QCOMPARE(TestImages::Difference(LayerPixels(), layer), QString());
    m_pFixture->History().undo();
    QCOMPARE(TestImages::Difference(MaskPixels(), mask), QString());
    m_pFixture->History().redo();
    QCOMPARE(TestImages::Difference(MaskPixels(), expected), QString());
    QCOMPARE(TestImages::Difference(LayerPixels(), layer), QString());
}

void TestFillMenu::deletingFromALockedLayerIsRefused_data()
{
    QTest::addColumn<bool>("onMask");
    QTest::addColumn<unsigned int>("locks");
    QTest::newRow("pixels of the layer") << false << LayerLocks::Pixels;
    QTest::newRow("all of the layer") << false << LayerLocks::All;
    QTest::newRow("all of the mask") << true << LayerLocks::All;
}

void TestFillMenu::deletingFromALockedLayerIsRefused()
{
    QFETCH(bool, onMask);
    QFETCH(unsigned int, locks);
    GiveMask(onMask);
    m_pFixture->Document()->SetSelectionMask(Coverage(5, 5, 100), {10, 10});
    m_pFixture->Document()->GetModel()->SetLockFlags(0, locks);
    const PlainImage layer = LayerPixels();
    const PlainImage mask = MaskPixels();
    QVERIFY(!LayersWidget::GetInstance()->DeleteSelection("Delete"));
    QCOMPARE(HistoryTexts(), QStringList());
    QCOMPARE(TestImages::Difference(LayerPixels(), layer), QString());
    QCOMPARE(TestImages::Difference(MaskPixels(), mask), QString());

    m_pFixture->Document()->GetModel()->SetLockFlags(0, 0);
    QVERIFY(LayersWidget::GetInstance()->DeleteSelection("Delete"));
    QCOMPARE(HistoryTexts(), QStringList("Delete"));
}

void TestFillMenu::customAsksAndFills()
{
    bool asksForEdges = true;
    m_pFixture->Input().WhenModalShows<LXFillOptionsDialog>([&](LXFillOptionsDialog* dialog) {
        asksForEdges = dialog->findChild<QWidget*>("m_pAntialiasingChb")->isVisible();
        dialog->findChild<QComboBox*>("m_pContentsCmb")->setCurrentText("White");
        dialog->findChild<QComboBox*>("m_pModeCmb")->setCurrentText("Multiply");
        dialog->findChild<QSpinBox*>("m_pOpacitySpn")->setValue(100);
        dialog->Accept();
    });
    Trigger("Custom");
    QVERIFY(!asksForEdges);
    // White multiplied leaves the color: alpha 255 over 128.
    QCOMPARE(qAlpha(m_pFixture->Pixel(3, 3)), 255);
    QCOMPARE(HistoryTexts(), QStringList({"Fill layer"}));
}

void TestFillMenu::aCancelledCustomFillsNothing()
{
    m_pFixture->Input().WhenModalShows<LXFillOptionsDialog>(
        [](LXFillOptionsDialog* dialog) { dialog->Reject(); });
    Trigger("Custom");
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestFillMenu::AnswerCustom(const QString& contents, const QString& mode, int opacity)
{
    ZKApplication::SetUserValue("FillOptions/Color", QColor(10, 200, 30));
    m_pFixture->Input().WhenModalShows<LXFillOptionsDialog>([=](LXFillOptionsDialog* dialog) {
        dialog->findChild<QComboBox*>("m_pContentsCmb")->setCurrentText(contents);
        dialog->findChild<QComboBox*>("m_pModeCmb")->setCurrentText(mode);
        dialog->findChild<QSpinBox*>("m_pOpacitySpn")->setValue(opacity);
        auto* patterns = dialog->findChild<QComboBox*>("m_pPatternCmb");
        patterns->setCurrentIndex(patterns->count() - 1);
        dialog->Accept();
    });
}

void TestFillMenu::customTakesItsContentsFromTheDialog_data()
{
    QTest::addColumn<QColor>("color");
    QTest::newRow("Foreground") << QColor(1, 2, 3);
    QTest::newRow("Background") << QColor(4, 5, 6);
    QTest::newRow("Color") << QColor(10, 200, 30);
    QTest::newRow("Black") << QColor(Qt::black);
    QTest::newRow("Grey") << QColor(Qt::gray);
    QTest::newRow("White") << QColor(Qt::white);
}

void TestFillMenu::customTakesItsContentsFromTheDialog()
{
    QFETCH(QColor, color);
    AnswerCustom(QTest::currentDataTag(), "Normal", 100);
    Trigger("Custom");
    QCOMPARE(m_pFixture->Pixel(3, 3), color.rgb());
    QCOMPARE(m_pFixture->Pixel(39, 29), color.rgb());
    QCOMPARE(HistoryTexts(), QStringList({"Fill layer"}));
}

void TestFillMenu::customFillsWithAPattern()
{
    const int last = ZKApplication::GetPatternCount() - 1;
    QVERIFY(last >= 1);
    const QImage pattern(ZKApplication::GetPatternFile(last));
    QVERIFY(!pattern.isNull());
    AnswerCustom("Pattern", "Normal", 100);
    Trigger("Custom");
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x)
            QCOMPARE(m_pFixture->Pixel(x, y), pattern.pixel(x % pattern.width(), y % pattern.height()));
    }
}

void TestFillMenu::customFillsAMaskWithTheMasksColors_data()
{
    QTest::addColumn<int>("value");
    QTest::newRow("Foreground") << 127;
    QTest::newRow("Background") << 110;
    QTest::newRow("Color") << 105;
    QTest::newRow("Black") << 0;
}

void TestFillMenu::customFillsAMaskWithTheMasksColors()
{
    QFETCH(int, value);
    ZKApplication::SetForeground(Qt::red);
    ZKApplication::SetBackground(QColor(100, 180, 40));
    GiveMask(true);
    const PlainImage layer = LayerPixels();
    AnswerCustom(QTest::currentDataTag(), "Normal", 100);
    Trigger("Custom");
    QCOMPARE(MaskValue(0, 0), value);
    QCOMPARE(MaskValue(39, 29), value);
    QCOMPARE(TestImages::Difference(LayerPixels(), layer), QString());
    QCOMPARE(HistoryTexts(), QStringList({"Fill mask"}));
}

void TestFillMenu::customTakesTheGrayOfAColorToAMask()
{
    ZKApplication::SetForeground(Qt::red);
    GiveMask(true);
    AnswerCustom("Foreground", "Difference", 100);
    Trigger("Custom");
    // The red itself would make (0, 255, 255) of white, whose lightness is 127.
    QCOMPARE(MaskValue(3, 3), 255 - ZKApplication::GetMaskForeground().lightness());
    QCOMPARE(MaskValue(3, 3), 128);
}

void TestFillMenu::customMixesByItsOpacity()
{
    Trigger("Red");
    AnswerCustom("White", "Normal", 50);
    Trigger("Custom");
    // Strength 128 of 255.
    QCOMPARE(m_pFixture->Pixel(3, 3), qRgb(255, 128, 128));
    AnswerCustom("Black", "Normal", 20);
    Trigger("Custom");
    // Strength 51 of 255.
    QCOMPARE(m_pFixture->Pixel(3, 3), qRgb(204, 102, 102));
}

void TestFillMenu::customOffersTheLastAnswersAgain()
{
    AnswerCustom("Pattern", "Screen", 37);
    Trigger("Custom");
    QStringList offered;
    QColor color;
    m_pFixture->Input().WhenModalShows<LXFillOptionsDialog>([&](LXFillOptionsDialog* dialog) {
        for (const char* name : {"m_pContentsCmb", "m_pModeCmb"})
            offered.append(dialog->findChild<QComboBox*>(name)->currentText());
        offered.append(QString::number(dialog->findChild<QComboBox*>("m_pPatternCmb")->currentIndex()));
        offered.append(QString::number(dialog->GetOpacity()));
        dialog->findChild<QComboBox*>("m_pContentsCmb")->setCurrentText("Color");
        color = dialog->GetContentsBrush().color();
        // What is rejected isn't kept.
        dialog->findChild<QSpinBox*>("m_pOpacitySpn")->setValue(5);
        dialog->Reject();
    });
    Trigger("Custom");
    const QString lastPattern = QString::number(ZKApplication::GetPatternCount() - 1);
    QCOMPARE(offered, QStringList({"Pattern", "Screen", lastPattern, "37"}));
    QCOMPARE(color, QColor(10, 200, 30));
    QCOMPARE(LXFillOptionsDialog(nullptr).GetOpacity(), 37);
}

void TestFillMenu::cleanUpMakesTheLayerOpaque()
{
    Trigger("Clean up alpha");
    QCOMPARE(m_pFixture->Pixel(3, 3), qRgb(200, 100, 50));
    QCOMPARE(HistoryTexts(), QStringList({"Clean up alpha"}));
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Pixel(3, 3), qRgba(200, 100, 50, 128));
    m_pFixture->History().redo();
    QCOMPARE(m_pFixture->Pixel(3, 3), qRgb(200, 100, 50));
}

void TestFillMenu::cleanUpStaysInsideTheSelection()
{
    m_pFixture->Document()->SetSelectionMask(Coverage(5, 5), {10, 10});
    Trigger("Clean up alpha");
    QCOMPARE(m_pFixture->Pixel(10, 10), qRgb(200, 100, 50));
    QCOMPARE(m_pFixture->Pixel(9, 10), qRgba(200, 100, 50, 128));
}

void TestFillMenu::cleanUpOfAMissedLayerIsAStepWithoutAChange()
{
    m_pFixture->Document()->SetLayerOffset(1, {20, 0});
    m_pFixture->Document()->SetSelectionMask(Coverage(5, 5), {1, 1});
    Trigger("Clean up alpha");
    QCOMPARE(m_pFixture->Pixel(25, 5), qRgba(200, 100, 50, 128));
    QCOMPARE(HistoryTexts(), QStringList({"Clean up alpha"}));
}

void TestFillMenu::cleanUpWhileTheMaskIsTheTargetRespectsTheLayersLock()
{
    GiveMask(true);
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::Pixels);
    QVERIFY(Action("Clean up alpha")->isEnabled());
    QStringList shown;
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        shown = QStringList{box->windowTitle(), box->GetText()};
        box->close();
    });
    Trigger("Clean up alpha");
    QCOMPARE(shown, QStringList({"Zenkari", "Cannot fill. Layer is locked."}));
    QCOMPARE(m_pFixture->Pixel(3, 3), qRgba(200, 100, 50, 128));
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestFillMenu::commandsFollowLayerSelection()
{
    m_pFixture->Document()->AddLayer("Second", LXImage32(4, 4), {});
    m_pFixture->SelectLayers({0, 1});
    QVERIFY(!Action("Red")->isEnabled());
    m_pFixture->SelectLayers({1});
    QVERIFY(Action("Red")->isEnabled());
    m_pFixture->SelectLayers({});
    QVERIFY(!Action("Red")->isEnabled());
}

void TestFillMenu::commandsFollowLocks_data()
{
    QTest::addColumn<unsigned int>("flags");
    QTest::addColumn<bool>("layerOpen");
    QTest::addColumn<bool>("maskOpen");
    QTest::newRow("transparency") << LayerLocks::Transparency << true << true;
    QTest::newRow("pixels") << LayerLocks::Pixels << false << true;
    QTest::newRow("position") << LayerLocks::Position << true << true;
    QTest::newRow("all") << LayerLocks::All << false << false;
}

void TestFillMenu::commandsFollowLocks()
{
    QFETCH(unsigned int, flags);
    GiveMask(false);
    m_pFixture->Document()->GetModel()->SetLockFlags(0, flags);
    QTEST(Action("Red")->isEnabled(), "layerOpen");
    m_pFixture->Document()->GetModel()->SetMaskSelected(0, true);
    QTEST(Action("Red")->isEnabled(), "maskOpen");
}

void TestFillMenu::commandsFollowTheDocumentLock()
{
    m_pFixture->Document()->Lock();
    QVERIFY(!Action("Red")->isEnabled());
    m_pFixture->Document()->Unlock();
    QVERIFY(Action("Red")->isEnabled());
}

void TestFillMenu::layersWithoutPixelsOpenThemByAnUnlockedMaskAlone_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("text") << int(LayerKind::Text);
    QTest::newRow("adjustment") << int(LayerKind::Adjustment);
}

void TestFillMenu::layersWithoutPixelsOpenThemByAnUnlockedMaskAlone()
{
    QFETCH(int, kind);
    LayerState layer;
    layer.properties.kind = kind;
    layer.properties.rect = QRect(0, 0, 10, 10);
    layer.image = Coverage(10, 10);
    LXDocumentInterfacePrivate::Get(m_pFixture->Document())->InsertLayer(0, layer);
    m_pFixture->SelectLayers({0});
    QCOMPARE(EnabledCount(), 0);

    // A mask that isn't selected changes nothing.
    m_pFixture->Document()->AddMask(1, true);
    QCOMPARE(EnabledCount(), 0);
    m_pFixture->Document()->GetModel()->SetMaskSelected(0, true);
    QCOMPARE(EnabledCount(), 16);
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::All);
    QCOMPARE(EnabledCount(), 0);
    m_pFixture->Document()->GetModel()->SetLockFlags(0, 0);

    // Cleaning up is about the layer's own pixels.
    QStringList shown;
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        shown.append(box->GetText());
        box->close();
    });
    Trigger("Clean up alpha");
    QCOMPARE(shown, QStringList("Cannot rasterize. Pixel data are not editable."));
    Trigger("Black");
    QCOMPARE(MaskValue(3, 3), 0);
    QCOMPARE(m_pFixture->Pixel(3, 3), 0xFF000000u);
}

void TestFillMenu::aMaskAsTargetOpensThemOnALockedPixelLayer()
{
    GiveMask(true);
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::Pixels);
    Trigger("Black");
    QCOMPARE(MaskValue(3, 3), 0);
    QCOMPARE(m_pFixture->Pixel(3, 3), qRgba(200, 100, 50, 128));
}

void TestFillMenu::theAmbiguousKeyFillsWithTheForeground()
{
    emit LexoAppKeyHook::instance()->UnregisteredActivatedAmbiguously(QKeySequence("Alt+Backspace"), 1);
    QCOMPARE(HistoryTexts(), QStringList({"Fill with foreground"}));
}

void TestFillMenu::anotherAmbiguousKeyIsIgnored()
{
    emit LexoAppKeyHook::instance()->UnregisteredActivatedAmbiguously(QKeySequence("Ctrl+Backspace"), 1);
    emit LexoAppKeyHook::instance()->UnregisteredActivatedAmbiguously(QKeySequence("Alt+Backspace, A"), 1);
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestFillMenu::aFailedFillSaysSoAndChangesNothing()
{
    ArmFailure();
    ExpectError("Cannot fill pixels. Unexpected error occurred.");
    Trigger("Red");
    QCOMPARE(m_pFixture->Pixel(3, 3), qRgba(200, 100, 50, 128));
    QCOMPARE(HistoryTexts(), QStringList());

    GiveMask(true);
    ArmFailure();
    ExpectError("Cannot fill mask. Unexpected error occurred.");
    Trigger("Black");

    ArmFailure();
    ExpectError("Cannot fill mask pixels. Unexpected error occurred.");
    Trigger("Grey");
    QCOMPARE(MaskValue(3, 3), 255);
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestFillMenu::aFailedCleaningSaysSo()
{
    ArmFailure();
    ExpectError("Cannot cleans up alpha. Unexpected error occurred.");
    Trigger("Clean up alpha");
    QCOMPARE(m_pFixture->Pixel(3, 3), qRgba(200, 100, 50, 128));
    QCOMPARE(HistoryTexts(), QStringList());
}

PlainImage TestFillMenu::LayerPixels() const
{
    return TestImages::ToPlain(*m_pFixture->Document()->GetLayerImage(1));
}

PlainImage TestFillMenu::MaskPixels() const
{
    return TestImages::ToPlain(*m_pFixture->Document()->GetMaskImage(1));
}

QString TestFillMenu::FailureText(const QString& action) const
{
    if (action == "Clean up alpha") return "Cannot cleans up alpha. Unexpected error occurred.";
    const bool onMask = m_pFixture->Document()->GetModel()->GetMaskSelected(0);
    if (!onMask || action == "Transparent") return "Cannot fill pixels. Unexpected error occurred.";
    return action == "Grey" ? "Cannot fill mask pixels. Unexpected error occurred."
                            : "Cannot fill mask. Unexpected error occurred.";
}

void TestFillMenu::failingWorkIsReportedAndChangesNothing_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<bool>("onMask");
    QTest::addColumn<int>("seam");
    QTest::addColumn<QString>("report");
    const QString known = "Unexpected exception: line=\\d+, file=\"src/fillmenu/";
    const QString unknown = "Unexpected unknown exception: line=\\d+, file=\"src/fillmenu/";
    for (const char* action : {"Red", "Grey", "Clean up alpha"}) {
        QTest::addRow("%s", action) << action << false << int(FaultSeams::Seam::TileAllocation) << known;
        QTest::addRow("%s, strange", action)
            << action << false << int(FaultSeams::Seam::StrangeTileAllocation) << unknown;
    }
    for (const char* action : {"Black", "Grey"}) {
        QTest::addRow("%s on a mask", action)
            << action << true << int(FaultSeams::Seam::TileAllocation) << known;
        QTest::addRow("%s on a mask, strange", action)
            << action << true << int(FaultSeams::Seam::StrangeTileAllocation) << unknown;
    }
}

void TestFillMenu::failingWorkIsReportedAndChangesNothing()
{
    QFETCH(QString, action);
    QFETCH(bool, onMask);
    QFETCH(int, seam);
    QFETCH(QString, report);
    GiveMask(onMask);
    const PlainImage layer = LayerPixels();
    const PlainImage mask = MaskPixels();
    // A hidden view doesn't paint, so it needs no tile.
    m_pFixture->Widget()->hide();
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(report));
    ExpectError(FailureText(action));
    FaultSeams::FailNth(FaultSeams::Seam(seam), 1);
    Trigger(action);
    QCOMPARE(m_pFixture->Input().CountWaitingActions(), 0);
    QCOMPARE(HistoryTexts(), QStringList());
    QCOMPARE(TestImages::Difference(LayerPixels(), layer), QString());
    QCOMPARE(TestImages::Difference(MaskPixels(), mask), QString());

    Trigger(action);
    QCOMPARE(m_pFixture->History().count(), 1);
}

void TestFillMenu::aFailedPushIsReportedAndRolledBack_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<bool>("onMask");
    QTest::addColumn<int>("seam");
    for (const char* action : {"Red", "Grey", "Transparent"}) {
        for (const bool onMask : {false, true}) {
            const char* where = onMask ? "mask" : "layer";
            QTest::addRow("%s, %s", action, where)
                << action << onMask << int(FaultSeams::Seam::TileAllocation);
            QTest::addRow("%s, %s, strange", action, where)
                << action << onMask << int(FaultSeams::Seam::StrangeTileAllocation);
        }
    }
}

void TestFillMenu::aFailedPushIsReportedAndRolledBack()
{
    QFETCH(QString, action);
    QFETCH(bool, onMask);
    QFETCH(int, seam);
    GiveMask(onMask);
    m_pFixture->Document()->SetSelectionMask(Coverage(5, 5, 100), {10, 10});
    m_pFixture->Widget()->hide();
    const PlainImage layer = LayerPixels();
    const PlainImage mask = MaskPixels();
    // Shared, so that the push can't write without a tile of its own.
    const LXImage32 sharedLayer = *m_pFixture->Document()->GetLayerImage(1);
    const LXImage32 sharedMask = *m_pFixture->Document()->GetMaskImage(1);
    const bool isStrange = FaultSeams::Seam(seam) == FaultSeams::Seam::StrangeTileAllocation;
    if (action == "Transparent" && !isStrange) {
        // The layers panel does this, and tells by itself what it lacked.
        ExpectBox({"Zenkari", "This could not be done: there is not enough memory. Close what is not needed, "
                              "then try again."},
                  LXMessageBox::WarningIcon);
    } else {
        const QString report = isStrange ? "Unexpected unknown exception" : "Unexpected exception";
        QTest::ignoreMessage(QtDebugMsg,
                             QRegularExpression(report + ": line=\\d+, file=\"src/fillmenu/LXFillTool\""));
        ExpectError(FailureText(action));
    }
    const auto arm = connect(&m_pFixture->History(), &LexoUndoStack::aboutIndexChanged, this,
                             [seam] { FaultSeams::FailNth(FaultSeams::Seam(seam), 1); });
    Trigger(action);
    disconnect(arm);
    QCOMPARE(m_pFixture->Input().CountWaitingActions(), 0);
    QCOMPARE(HistoryTexts(), QStringList());
    QCOMPARE(TestImages::Difference(LayerPixels(), layer), QString());
    QCOMPARE(TestImages::Difference(MaskPixels(), mask), QString());

    Trigger(action);
    QCOMPARE(m_pFixture->History().count(), 1);
}

void TestFillMenu::longWorkSaysWhatItDoes_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<bool>("onMask");
    QTest::addColumn<QString>("label");
    QTest::newRow("solid") << "Red" << false << "Fill a layer:";
    QTest::newRow("custom") << "Grey" << false << "Fill layer:";
    QTest::newRow("solid on a mask") << "Black" << true << "Fill mask:";
    QTest::newRow("custom on a mask") << "Grey" << true << "Fill mask:";
    QTest::newRow("cleaning") << "Clean up alpha" << false << "Clean up alpha:";
}

void TestFillMenu::longWorkSaysWhatItDoes()
{
    QFETCH(QString, action);
    QFETCH(bool, onMask);
    QFETCH(QString, label);
    GiveMask(onMask);
    m_pFixture->Widget()->hide();
    QStringList shown;
    m_pFixture->Input().WhenModalShows<LXUndefinedOperationProgress>(
        [&](LXUndefinedOperationProgress* progress) {
            shown.append(progress->findChild<QLabel*>()->text());
            shown.append(progress->findChild<QProgressBar*>()->accessibleName());
            FaultSeams::Reset();
        });
    // Longer than work may take without a dialog.
    FaultSeams::SlowDown(FaultSeams::Seam::TileAllocation, 600);
    Trigger(action);
    QCOMPARE(shown, QStringList({label, label}));
    QCOMPARE(m_pFixture->History().count(), 1);
}

void TestFillMenu::shortWorkShowsNoDialog()
{
    struct Quick : LXUndefinedOperationProgress
    {
        bool done = false;

        void Run() override { done = true; }
    } progress;

    bool shown = false;
    m_pFixture->Input().WhenModalShows([&](QWidget* dialog) {
        shown = true;
        dialog->close();
    });
    QCOMPARE(progress.Execute(), 1);
    QVERIFY(progress.done);
    QVERIFY(!shown);
}

void TestFillMenu::longWorkShowsItsLabelAndCantBeClosed()
{
    struct Slow : LXUndefinedOperationProgress
    {
        QSemaphore release;
        bool done = false;

        void Run() override
        {
            release.acquire();
            done = true;
        }
    } progress;

    progress.SetProgressLabel("Fill a layer:");
    bool stayed = false;
    m_pFixture->Input().WhenModalShows([&](QWidget* dialog) {
        QCOMPARE(dialog->findChild<QLabel*>()->text(), QString("Fill a layer:"));
        qobject_cast<QDialog*>(dialog)->reject();
        stayed = dialog->isVisible();
        progress.release.release();
    });
    QCOMPARE(progress.Execute(), 1);
    QVERIFY(progress.done);
    QVERIFY(stayed);
}

ZK_REGISTER_TEST(tst_fillmenu, TestFillMenu)
#include "tst_fillmenu.moc"
