#include "LXViewTool.h"
#include "selectionmenu/ColorRangeSelect_p.h"
#include "selectionmenu/ColorSwatch.h"
#include "selectionmenu/SelectColorRangeDlg.h"

#include "core/ZKMenuManager.h"
#include "gui/LXColorDlg.h"
#include "gui/LexoAppKeyHook.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoCommand.h"
#include "support/TestRegistry.h"
#include "support/ViewFixture.h"
#include "utils/FaultSeams.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QSemaphore>
#include <QSpinBox>
#include <QTest>
#include <QThreadPool>
#include <QtConcurrentRun>

Q_DECLARE_METATYPE(FaultSeams::Seam)

namespace {
/// Holds every thread of the global pool while it lives, so that no job ends.
class HeldPool
{
public:
    HeldPool()
    {
        for (int i = 0; i < QThreadPool::globalInstance()->maxThreadCount(); ++i) {
            QtConcurrent::run([this] { m_Release.acquire(); });
        }
    }

    ~HeldPool() { m_Release.release(QThreadPool::globalInstance()->maxThreadCount()); }

    Q_DISABLE_COPY(HeldPool)

private:
    QSemaphore m_Release;
};

LXImage32 Coverage(int width, int height)
{
    LXImage32 mask(width, height);
    mask.Fill(LXRGBA32i(0xFF000000U));
    return mask;
}
} // namespace

class TestColorRangeSelect : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theEntryStandsInTheSelectionMenu();
    void theEntryFollowsDocumentAndLocks();
    void theDialogStandsWhileThePictureIsClicked();
    void aClickAddsItsColorAndMakesItCurrent();
    void aRepeatedColorAddsNothing();
    void transparentBecomesWhite();
    void theListHolds256Colors();
    void clicksBesideThePictureAndOfOtherButtonsAreIgnored();
    void clicksUnderTheDialogAreIgnored();
    void twoClicksDuringAConversionKeepTheSecondAlone();
    void theCurrentColorIsRemoved();
    void allColorsAreRemoved();
    void swatchesAreChosenByMouseAndKey();
    void thePreviewShowsWhatMatches();
    void aRequestDuringAPreviewIsMadeUpLater();
    void aPictureThatCantBeReadIsReadNextTime_data();
    void aPictureThatCantBeReadIsReadNextTime();

    void acceptingSelectsWhatMatches();
    void modesCombineWithTheSelection_data();
    void modesCombineWithTheSelection();
    void withoutASelectionEveryModeReplaces();
    void aSelectionThatComesOutEmptyIsTold();
    void aFirstSelectionThatIsEmptySaysNothing();
    void rejectingChangesNothing();
    void undoAndRedo();
    void withoutAHistoryTheSelectionIsMade();
    void aFailureIsToldAndChangesNothing_data();
    void aFailureIsToldAndChangesNothing();
    void theSelectionIsMadeUnderTheWaitCursor();

    void keysReachTheDialogFromThePicture();
    void keysInTheDialogAreItsOwn();
    void aColorIsChosenInADialog_data();
    void aColorIsChosenInADialog();
    void keysOfAMenuAreItsOwn();
    void anotherViewRejects();

private:
    QAction* Entry() const { return m_pTool->GetMainMenuEntries().begin()->pAction; }

    void Start();
    SelectColorRangeDlg* Dialog() const;
    void Click(const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton);
    QStringList Swatches() const;
    void WaitForJobs() const;
    QStringList HistoryTexts() const;
    QVector<int> SelectedColumns() const;

    std::unique_ptr<ViewFixture> m_pFixture;
    std::unique_ptr<LXViewTool> m_pTool;
};

void TestColorRangeSelect::init()
{
    // Four columns of ten pixels: red, a little less red, blue, transparent.
    m_pFixture = std::make_unique<ViewFixture>(40, 10, Qt::red);
    LXImage32* image = m_pFixture->Document()->GetLayerImage(1);
    for (int y = 0; y < 10; ++y) {
        for (int x = 10; x < 40; ++x) {
            const QRgb color = x < 20 ? qRgb(245, 0, 0) : x < 30 ? qRgb(0, 0, 255) : qRgba(0, 0, 0, 0);
            image->SetColor(x, y, LXRGBA32i(color));
        }
    }
    m_pFixture->Document()->UpdateDocumentRect({});
    m_pTool = std::make_unique<LXViewTool>(new ColorRangeSelectPrivate(nullptr));
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
}

void TestColorRangeSelect::cleanup()
{
    FaultSeams::Reset();
    WaitForJobs();
    m_pTool.reset();
    QVERIFY(!QGuiApplication::overrideCursor());
    QVERIFY(!m_pFixture->Document()->GetLockState());
    m_pFixture.reset();
}

void TestColorRangeSelect::Start()
{
    Entry()->trigger();
    QVERIFY(Dialog());
    // Beside the view, so that the picture can be clicked.
    Dialog()->move(420, 0);
}

SelectColorRangeDlg* TestColorRangeSelect::Dialog() const
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        auto* dialog = qobject_cast<SelectColorRangeDlg*>(window);
        if (dialog && dialog->isVisible()) return dialog;
    }
    return nullptr;
}

void TestColorRangeSelect::Click(const QPointF& scenePos, Qt::MouseButton button)
{
    ZKDocumentView* view = m_pFixture->View();
    m_pFixture->Input().Click(view->viewport(), InputDriver::ViewPoint(view, scenePos), button);
}

void TestColorRangeSelect::WaitForJobs() const
{
    // A finished job may want another one.
    for (int i = 0; i < 5; ++i) {
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

QStringList TestColorRangeSelect::Swatches() const
{
    WaitForJobs();
    QStringList names;
    const QList<ColorSwatch*> swatches = Dialog()->findChildren<ColorSwatch*>();
    for (const ColorSwatch* swatch : swatches) {
        names.append(swatch->toolTip());
    }
    return names;
}

QStringList TestColorRangeSelect::HistoryTexts() const
{
    QStringList texts;
    for (int i = 0; i < m_pFixture->History().count(); ++i) {
        texts.append(m_pFixture->History().text(i));
    }
    return texts;
}

/// The first column of each of the four bands that is selected in its middle row.
QVector<int> TestColorRangeSelect::SelectedColumns() const
{
    QVector<int> columns;
    const LXDocumentInterface* document = m_pFixture->Document();
    for (const int x : {0, 10, 20, 30}) {
        const QPoint pos = QPoint(x, 5) - document->GetSelectionMaskOffset();
        const LXImage32& mask = document->GetSelectionMask();
        if (mask.Rect().contains(pos) && mask.GetColor(pos.x(), pos.y()).Alpha() == 255) columns.append(x);
    }
    return columns;
}

void TestColorRangeSelect::theEntryStandsInTheSelectionMenu()
{
    const MainMenuEntries entries = m_pTool->GetMainMenuEntries();
    QCOMPARE(entries.size(), std::size_t(1));
    QCOMPARE(entries.begin()->path, (std::vector<int>{ZKMenuManager::Selection, 6}));
}

void TestColorRangeSelect::theEntryFollowsDocumentAndLocks()
{
    QVERIFY(Entry()->isEnabled());
    m_pFixture->Document()->Lock();
    QVERIFY(!Entry()->isEnabled());
    m_pFixture->Document()->Unlock();
    QVERIFY(Entry()->isEnabled());
    m_pFixture->ToolView().Lock(this);
    QVERIFY(!Entry()->isEnabled());
    m_pFixture->ToolView().Unlock(this);
    QVERIFY(Entry()->isEnabled());
    m_pTool->SetDocumentView(nullptr);
    QVERIFY(!Entry()->isEnabled());
}

void TestColorRangeSelect::theDialogStandsWhileThePictureIsClicked()
{
    Start();
    QCOMPARE(Dialog()->windowTitle(), QString("Select color range"));
    QVERIFY(!Dialog()->isModal());
    QVERIFY(m_pFixture->Document()->GetLockState());
    QVERIFY(m_pTool->IsActive());
    Dialog()->Reject();
    QVERIFY(!Dialog());
    QVERIFY(!m_pTool->IsActive());
}

void TestColorRangeSelect::aClickAddsItsColorAndMakesItCurrent()
{
    Start();
    QVERIFY(!Dialog()->findChild<QPushButton*>("m_pRemoveBtn")->isEnabled());
    Click({5, 5});
    QCOMPARE(Swatches(), QStringList({"#ff0000"}));
    Click({25, 5});
    QCOMPARE(Swatches(), QStringList({"#ff0000", "#0000ff"}));
    QVERIFY(Dialog()->findChild<QPushButton*>("m_pRemoveBtn")->isEnabled());
    QCOMPARE(Dialog()->findChildren<ColorSwatch*>().first()->maximumSize(), QSize(16, 16));

    Dialog()->findChild<QPushButton*>("m_pRemoveBtn")->click();
    QCOMPARE(Swatches(), QStringList({"#ff0000"}));
    Dialog()->Reject();
}

void TestColorRangeSelect::aRepeatedColorAddsNothing()
{
    Start();
    Click({5, 5});
    WaitForJobs();
    Click({6, 6});
    QCOMPARE(Swatches(), QStringList({"#ff0000"}));
    Dialog()->Reject();
}

void TestColorRangeSelect::transparentBecomesWhite()
{
    Start();
    Click({35, 5});
    QCOMPARE(Swatches(), QStringList({"#ffffff"}));
    Dialog()->Reject();
}

void TestColorRangeSelect::theListHolds256Colors()
{
    LXImage32* image = m_pFixture->Document()->GetLayerImage(1);
    for (int i = 0; i < 300; ++i) {
        image->SetColor(i % 40, i / 40, LXRGBA32i(qRgb(i % 256, i / 256, 7)));
    }
    m_pFixture->Document()->UpdateDocumentRect({});
    Start();
    auto* tool = m_pTool->findChild<ColorRangeSelectPrivate*>();
    for (int i = 0; i < 300; ++i) {
        const QPoint pixel(i % 40, i / 40);
        QVERIFY(QMetaObject::invokeMethod(tool, "OnProcessPointSlot",
                                          Q_ARG(QPointF, QPointF(pixel) + QPointF(0.5, 0.5))));
        WaitForJobs();
    }
    QCOMPARE(Dialog()->findChildren<ColorSwatch*>().size(), 256);
    Dialog()->Reject();
}

void TestColorRangeSelect::clicksBesideThePictureAndOfOtherButtonsAreIgnored()
{
    Start();
    Click({-0.5, 5});
    Click({40.5, 5});
    Click({5, 5}, Qt::RightButton);
    QCOMPARE(Swatches(), QStringList());
    Dialog()->Reject();
}

void TestColorRangeSelect::clicksUnderTheDialogAreIgnored()
{
    Start();
    Dialog()->move(0, 0);
    auto* tool = m_pTool->findChild<ColorRangeSelectPrivate*>();
    QMetaObject::invokeMethod(tool, "OnProcessPointSlot", Q_ARG(QPointF, QPointF(5, 5)));
    QCOMPARE(Swatches(), QStringList());
    Dialog()->Reject();
}

void TestColorRangeSelect::twoClicksDuringAConversionKeepTheSecondAlone()
{
    Start();
    WaitForJobs();
    {
        const HeldPool held;
        Click({5, 5});
        Click({15, 5});
        Click({25, 5});
    }
    QCOMPARE(Swatches(), QStringList({"#ff0000", "#0000ff"}));
    Dialog()->Reject();
}

void TestColorRangeSelect::theCurrentColorIsRemoved()
{
    Start();
    for (const int x : {5, 15, 25}) {
        Click(QPointF(x, 5));
        WaitForJobs();
    }
    m_pFixture->Input().Click(Dialog()->findChildren<ColorSwatch*>().at(1), {8, 8});
    Dialog()->findChild<QPushButton*>("m_pRemoveBtn")->click();
    QCOMPARE(Swatches(), QStringList({"#ff0000", "#0000ff"}));
    // The next one is current now.
    Dialog()->findChild<QPushButton*>("m_pRemoveBtn")->click();
    QCOMPARE(Swatches(), QStringList({"#ff0000"}));
    Dialog()->Reject();
}

void TestColorRangeSelect::allColorsAreRemoved()
{
    Start();
    Click({5, 5});
    WaitForJobs();
    Click({25, 5});
    WaitForJobs();
    auto* removeAll = Dialog()->findChild<QPushButton*>("m_pRemoveAllBtn");
    QCOMPARE(removeAll->toolTip(), QString("Remove all colors"));
    removeAll->click();
    QCOMPARE(Swatches(), QStringList());
    QVERIFY(!removeAll->isEnabled());
    Dialog()->Accept();
    QVERIFY(!m_pFixture->Document()->HasSelection());
}

void TestColorRangeSelect::swatchesAreChosenByMouseAndKey()
{
    ColorSwatch swatch(Qt::red, nullptr);
    int chosen = 0;
    connect(&swatch, &ColorSwatch::Chosen, this, [&chosen] { ++chosen; });
    QTest::keyClick(&swatch, Qt::Key_Space);
    QTest::mouseClick(&swatch, Qt::LeftButton);
    QTest::mouseClick(&swatch, Qt::RightButton);
    QCOMPARE(chosen, 2);
    QVERIFY(swatch.focusPolicy() & Qt::TabFocus);
}

void TestColorRangeSelect::thePreviewShowsWhatMatches()
{
    Start();
    Click({25, 5});
    WaitForJobs();
    const QImage preview = Dialog()->findChild<QLabel*>("m_pPreviewLbl")->pixmap(Qt::ReturnByValue).toImage();
    QCOMPARE(preview.size(), QSize(40, 10));
    QCOMPARE(preview.pixelColor(25, 5), QColor(Qt::white));
    QCOMPARE(preview.pixelColor(5, 5), QColor(Qt::black));
    Dialog()->Reject();
}

void TestColorRangeSelect::aRequestDuringAPreviewIsMadeUpLater()
{
    Start();
    Click({5, 5});
    WaitForJobs();
    auto* tolerance = Dialog()->findChild<QSpinBox*>("m_pToleranceSpn");
    {
        const HeldPool held;
        tolerance->setValue(1);
        tolerance->setValue(2);
        tolerance->setValue(10);
    }
    WaitForJobs();
    const QImage preview = Dialog()->findChild<QLabel*>("m_pPreviewLbl")->pixmap(Qt::ReturnByValue).toImage();
    QCOMPARE(preview.pixelColor(15, 5), QColor(Qt::white));
    Dialog()->Reject();
}

void TestColorRangeSelect::aPictureThatCantBeReadIsReadNextTime_data()
{
    QTest::addColumn<FaultSeams::Seam>("seam");
    QTest::addColumn<QString>("report");
    QTest::newRow("memory") << FaultSeams::Seam::TileAllocation << "Unexpected exception";
    QTest::newRow("anything else") << FaultSeams::Seam::StrangeTileAllocation
                                   << "Unexpected unknown exception";
}

void TestColorRangeSelect::aPictureThatCantBeReadIsReadNextTime()
{
    QFETCH(FaultSeams::Seam, seam);
    QFETCH(QString, report);
    Start();
    Click({5, 5});
    WaitForJobs();
    auto* tolerance = Dialog()->findChild<QSpinBox*>("m_pToleranceSpn");
    m_pFixture->Document()->UpdateDocumentRect({});
    FaultSeams::FailNth(seam, 1);
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression(report + ": .*file=\"src/selectionmenu/ColorRangeSelect_p\""));
    tolerance->setValue(1);
    WaitForJobs();
    QVERIFY(Dialog());
    const auto preview = [this] {
        return Dialog()->findChild<QLabel*>("m_pPreviewLbl")->pixmap(Qt::ReturnByValue).toImage();
    };
    QCOMPARE(preview().pixelColor(15, 5), QColor(Qt::white));

    tolerance->setValue(2);
    WaitForJobs();
    QCOMPARE(preview().pixelColor(15, 5), QColor(Qt::black));
    Dialog()->Reject();
}

void TestColorRangeSelect::acceptingSelectsWhatMatches()
{
    Start();
    Click({5, 5});
    WaitForJobs();
    Dialog()->findChild<QSpinBox*>("m_pToleranceSpn")->setValue(9);
    Dialog()->Accept();
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(0, 0, 10, 10));
    QCOMPARE(SelectedColumns(), QVector<int>({0}));
    QCOMPARE(HistoryTexts(), QStringList({"Color range selection"}));
    QVERIFY(!m_pFixture->Document()->GetLockState());

    Start();
    Click({5, 5});
    WaitForJobs();
    Dialog()->findChild<QSpinBox*>("m_pToleranceSpn")->setValue(10);
    Dialog()->Accept();
    QCOMPARE(SelectedColumns(), QVector<int>({0, 10}));
}

void TestColorRangeSelect::modesCombineWithTheSelection_data()
{
    QTest::addColumn<QVector<int>>("columns");
    // The selection holds the bands 0 and 20, the colors give the bands 0 and 10.
    QTest::newRow("create new") << QVector<int>({0, 10});
    QTest::newRow("add") << QVector<int>({0, 10, 20});
    QTest::newRow("subtract") << QVector<int>({20});
    QTest::newRow("intersect") << QVector<int>({0});
}

void TestColorRangeSelect::modesCombineWithTheSelection()
{
    LXImage32 mask = Coverage(30, 10);
    for (int y = 0; y < 10; ++y) {
        for (int x = 10; x < 20; ++x) {
            mask.SetColor(x, y, LXRGBA32i());
        }
    }
    m_pFixture->Document()->SetSelectionMask(mask, {});
    Start();
    Click({5, 5});
    WaitForJobs();
    Dialog()->findChild<QSpinBox*>("m_pToleranceSpn")->setValue(10);
    Dialog()->findChild<QComboBox*>("m_pModeCmb")->setCurrentText(QTest::currentDataTag());
    Dialog()->Accept();
    QTEST(SelectedColumns(), "columns");
}

void TestColorRangeSelect::withoutASelectionEveryModeReplaces()
{
    for (int row = 0; row < 4; ++row) {
        m_pFixture->Document()->SetSelectionMask({}, {});
        Start();
        Click({25, 5});
        WaitForJobs();
        Dialog()->findChild<QComboBox*>("m_pModeCmb")->setCurrentIndex(row);
        Dialog()->Accept();
        QCOMPARE(SelectedColumns(), QVector<int>({20}));
    }
}

void TestColorRangeSelect::aSelectionThatComesOutEmptyIsTold()
{
    m_pFixture->Document()->SetSelectionMask(Coverage(10, 10), {0, 0});
    Start();
    Click({5, 5});
    WaitForJobs();
    Dialog()->findChild<QComboBox*>("m_pModeCmb")->setCurrentText("subtract");
    QStringList shown;
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        shown = QStringList{box->windowTitle(), box->GetText()};
        box->close();
    });
    Dialog()->Accept();
    QCOMPARE(shown, QStringList({"Zenkari", "Warning. No pixels selected."}));
    QVERIFY(!m_pFixture->Document()->HasSelection());
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(0, 0, 10, 10));
}

void TestColorRangeSelect::aFirstSelectionThatIsEmptySaysNothing()
{
    Start();
    Dialog()->Accept();
    QVERIFY(!m_pFixture->Document()->HasSelection());
    QCOMPARE(HistoryTexts(), QStringList({"Color range selection"}));
    QCOMPARE(m_pFixture->Input().CountWaitingActions(), 0);
}

void TestColorRangeSelect::rejectingChangesNothing()
{
    Start();
    Click({5, 5});
    WaitForJobs();
    Dialog()->close();
    QVERIFY(!m_pFixture->Document()->HasSelection());
    QCOMPARE(HistoryTexts(), QStringList());
    // The next dialog begins anew.
    Start();
    QCOMPARE(Swatches(), QStringList());
    Dialog()->Reject();
}

void TestColorRangeSelect::undoAndRedo()
{
    m_pFixture->Document()->SetSelectionMask(Coverage(3, 3), {1, 1});
    Start();
    Click({25, 5});
    WaitForJobs();
    Dialog()->Accept();
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(1, 1, 3, 3));
    m_pFixture->History().redo();
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(20, 0, 10, 10));
}

void TestColorRangeSelect::withoutAHistoryTheSelectionIsMade()
{
    ZKDocumentWidget bare(m_pFixture->Document(), nullptr);
    IDocumentView view;
    view.SetDocumentWidget(&bare);
    m_pTool->SetDocumentView(nullptr);
    m_pTool->SetDocumentView(&view);
    Start();
    auto* tool = m_pTool->findChild<ColorRangeSelectPrivate*>();
    QMetaObject::invokeMethod(tool, "OnProcessPointSlot", Q_ARG(QPointF, QPointF(25, 5)));
    WaitForJobs();
    Dialog()->Accept();
    QCOMPARE(SelectedColumns(), QVector<int>({20}));
    m_pTool->SetDocumentView(nullptr);
}

void TestColorRangeSelect::aFailureIsToldAndChangesNothing_data()
{
    QTest::addColumn<FaultSeams::Seam>("seam");
    QTest::addColumn<QString>("report");
    const QString place("line=\\d+, file=\"src/selectionmenu/ColorRangeSelect_p\"");
    QTest::newRow("memory") << FaultSeams::Seam::TileAllocation
                            << "Unexpected exception: " + place + "\\. Exception content:";
    QTest::newRow("anything else") << FaultSeams::Seam::StrangeTileAllocation
                                   << "Unexpected unknown exception: " + place + "$";
}

void TestColorRangeSelect::aFailureIsToldAndChangesNothing()
{
    QFETCH(FaultSeams::Seam, seam);
    QFETCH(QString, report);
    Start();
    Click({25, 5});
    WaitForJobs();
    QStringList shown;
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        shown = QStringList{box->windowTitle(), box->GetText()};
        box->close();
    });
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(report));
    FaultSeams::FailNth(seam, 1);
    Dialog()->Accept();
    QCOMPARE(shown,
             QStringList({"Operation error", "Cannot select the color range. Unexpected error occurred."}));
    QVERIFY(!m_pFixture->Document()->HasSelection());
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestColorRangeSelect::theSelectionIsMadeUnderTheWaitCursor()
{
    Start();
    Click({25, 5});
    WaitForJobs();
    QVector<int> cursors;
    connect(m_pFixture->Document(), &LXDocumentInterface::SelectionChanged, this, [&cursors] {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        cursors.append(cursor ? int(cursor->shape()) : -1);
    });
    Dialog()->Accept();
    disconnect(m_pFixture->Document(), nullptr, this, nullptr);
    QVERIFY(!cursors.isEmpty());
    QCOMPARE(cursors.count(Qt::WaitCursor), cursors.size());
}

void TestColorRangeSelect::keysReachTheDialogFromThePicture()
{
    Start();
    m_pFixture->Widget()->activateWindow();
    QTRY_VERIFY(!Dialog()->isActiveWindow());
    emit LexoAppKeyHook::instance()->KeyPressed(Qt::Key_A);
    QVERIFY(Dialog());
    emit LexoAppKeyHook::instance()->KeyPressed(Qt::Key_Escape);
    QVERIFY(!Dialog());
    QCOMPARE(HistoryTexts(), QStringList());

    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        Start();
        m_pFixture->Widget()->activateWindow();
        QTRY_VERIFY(!Dialog()->isActiveWindow());
        emit LexoAppKeyHook::instance()->KeyPressed(key);
        QVERIFY(!Dialog());
    }
    QCOMPARE(HistoryTexts().size(), 2);
}

void TestColorRangeSelect::keysInTheDialogAreItsOwn()
{
    Start();
    Dialog()->activateWindow();
    QTRY_VERIFY(Dialog()->isActiveWindow());
    emit LexoAppKeyHook::instance()->KeyPressed(Qt::Key_Return);
    QVERIFY(Dialog());
    Dialog()->Reject();
}

void TestColorRangeSelect::aColorIsChosenInADialog_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QStringList>("swatches");
    QTest::newRow("Return") << int(Qt::Key_Return) << QStringList("#0a141e");
    QTest::newRow("Enter") << int(Qt::Key_Enter) << QStringList("#0a141e");
    QTest::newRow("Escape") << int(Qt::Key_Escape) << QStringList();
}

void TestColorRangeSelect::aColorIsChosenInADialog()
{
    QFETCH(int, key);
    QFETCH(QStringList, swatches);
    Start();
    auto* choose = Dialog()->findChild<QPushButton*>("m_pChooseBtn");
    QCOMPARE(choose->text(), QString("Choose a color"));
    auto* remove = Dialog()->findChild<QPushButton*>("m_pRemoveBtn");
    QCOMPARE(remove->text(), QString("Remove"));
    QCOMPARE(remove->toolTip(), QString("Remove the selected color"));

    QString title;
    m_pFixture->Input().WhenModalShows<LXColorDlg>([&](LXColorDlg* asked) {
        title = asked->windowTitle();
        asked->SetColor(QColor(10, 20, 30));
        m_pFixture->Input().Key(key);
    });
    m_pFixture->Input().Click(choose);
    QCOMPARE(title, QString("Choose a color"));
    QVERIFY(Dialog());
    QCOMPARE(Swatches(), swatches);
    QCOMPARE(HistoryTexts(), QStringList());
    Dialog()->Reject();
}

void TestColorRangeSelect::keysOfAMenuAreItsOwn()
{
    Start();
    m_pFixture->Widget()->activateWindow();
    QTRY_VERIFY(!Dialog()->isActiveWindow());
    QMenu menu(m_pFixture->Widget());
    menu.addAction("Something");
    menu.popup(m_pFixture->Widget()->mapToGlobal({10, 10}));
    QTRY_VERIFY(menu.isVisible());
    m_pFixture->Input().Key(Qt::Key_Escape);
    QVERIFY(!menu.isVisible());
    QVERIFY(Dialog());
    Dialog()->Reject();
}

void TestColorRangeSelect::anotherViewRejects()
{
    Start();
    m_pTool->SetDocumentView(nullptr);
    QVERIFY(!Dialog());
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QVERIFY(!m_pFixture->View()->IsLayerOrderBlocked());
}

ZK_REGISTER_TEST(tst_colorrangeselect, TestColorRangeSelect)
#include "tst_colorrangeselect.moc"
