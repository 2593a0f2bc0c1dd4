#include "FillCanFixture.h"

#include "core/ZKActivateAction.h"
#include "core/ZKApplication.h"
#include "core/ZKToolGroupManager.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "document/LayerLocks.h"
#include "fillcan/FillCanProgress.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/LexoAppKeyHook.h"
#include "gui/PatternSelectWidget.h"
#include "guicore/LXMessageBox.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QComboBox>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTest>

#include <algorithm>

// What must hold after every gesture.
#define VERIFY_NOTHING_IS_HELD()                                                                             \
    QVERIFY(!m_pFixture->Document()->GetLockState());                                                        \
    QVERIFY(LexoAppKeyHook::instance()->AreShortcutsEnabled());                                              \
    QVERIFY(!QGuiApplication::overrideCursor())

class TestFillCan : public QObject, private FillCanFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aClickFillsAndCanBeUndone();
    void theOptionsReachTheFill();
    void otherButtonsDoNothing();
    void twoButtonsDoNothing();
    void aClickOutsideTheCanvasDoesNothing_data();
    void aClickOutsideTheCanvasDoesNothing();
    void aLockedLayerIsToldAbout();
    void aLayerWithoutPixelsIsToldAbout_data();
    void aLayerWithoutPixelsIsToldAbout();
    void theMaskOfALayerWithoutPixelsIsFilled();
    void aLayerLockedForMovesIsFilled();
    void lockedTransparencyIsFilledToo();
    void aMaskLockedOnlyForPixelsIsFilled();
    void aMaskLockedAsAWholeIsToldAbout();
    void twoSelectedLayersDoNothingInSilence();
    void theMaskIsFilledWhenItIsTheTarget();
    void aPatternFillsInPatternMode();
    void aPatternFillsTheMaskWithItsLightness();
    void theTargetShowsInTheCursor();
    void anotherSelectionChangesTheCursor();
    void theHandStaysWhileTheViewIsPanned();

    void aFloatingPieceLandsBeforeTheFill();
    void aSecondClickWaitsForTheFirst();
    void aDocumentLockedBySomebodyElseIsLeftAlone();
    void aRefusedLockDropsTheJob();
    void aFailedJobIsToldAndRolledBack();
    void aFailedPushIsToldAndRolledBack();
    void aLongJobShowsTheProgressDialog();
    void theWorkIsHeldWhileTheJobRuns();
    void theWorkIsTakenAndGivenBackInOrder();
    void anotherToolMayComeWhileTheJobRuns();
    void aViewThatGoesAwayGetsItsFillFirst();
    void aFailedFillIsToldAfterItsViewWentAway();
    void aDocumentThatClosesDropsTheJob();
    void aToolThatDiesLeavesNothingBehind();
    void withoutAHistoryTheFillIsKept();

private:
    void WaitForTheJob() { QTRY_VERIFY(!m_pFixture->Document()->GetLockState()); }

    void AddTextLayer(unsigned int locks);
    void BlackenFirstColumn();
};

void TestFillCan::init()
{
    MakeTool();
}

void TestFillCan::cleanup()
{
    FaultSeams::Reset();
    VERIFY_NOTHING_IS_HELD();
    DropTool();
}

// On top, selected.
void TestFillCan::AddTextLayer(unsigned int locks)
{
    LayerState layer;
    layer.properties.kind = LayerKind::Text;
    layer.properties.locks = locks;
    layer.properties.rect = QRect(0, 0, 8, 6);
    layer.image = LXImage32(8, 6);
    LXDocumentInterfacePrivate::Get(m_pFixture->Document())->InsertLayer(0, layer);
    m_pFixture->SelectLayers({0});
}

void TestFillCan::BlackenFirstColumn()
{
    for (int y = 0; y < 6; ++y) {
        m_pFixture->Document()->GetLayerImage(1)->SetColor(0, y, LXRGBA32i(0xFF000000));
    }
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

void TestFillCan::aLayerWithoutPixelsIsToldAbout_data()
{
    QTest::addColumn<unsigned int>("locks");
    QTest::newRow("text") << 0U;
    // What it is comes before whether it is locked.
    QTest::newRow("locked text") << LayerLocks::All;
}

void TestFillCan::aLayerWithoutPixelsIsToldAbout()
{
    QFETCH(unsigned int, locks);
    AddTextLayer(locks);
    QStringList shown;
    QObject* parent = nullptr;
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        shown = QStringList{box->windowTitle(), box->GetText()};
        parent = box->parent();
        box->close();
    });
    Click({3.5, 2.5});
    QCOMPARE(shown, QStringList({"Zenkari", "Cannot rasterize. Pixel data are not editable."}));
    QCOMPARE(parent, m_pFixture->View());
    QCOMPARE(m_pFixture->History().count(), 0);
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::ForbiddenCursor);
}

void TestFillCan::theMaskOfALayerWithoutPixelsIsFilled()
{
    AddTextLayer(LayerLocks::Pixels);
    m_pFixture->Document()->AddMask(1, true);
    m_pFixture->Document()->GetModel()->SetMaskSelected(0, true);
    Click({3.5, 2.5});
    WaitForTheJob();
    QCOMPARE(m_pFixture->History().text(0), QString("Fill with mask"));
}

void TestFillCan::aLayerLockedForMovesIsFilled()
{
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::Position | LayerLocks::Transparency);
    Click({3.5, 2.5});
    WaitForTheJob();
    QCOMPARE(m_pFixture->History().count(), 1);
}

void TestFillCan::lockedTransparencyIsFilledToo()
{
    m_pFixture->Document()->SetLayerImage(1, LXImage32(8, 6), {});
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::Transparency);
    Click({3.5, 2.5});
    WaitForTheJob();
    QCOMPARE(m_pFixture->Pixel(3, 2), QRgb(0xFFFF0000));
}

void TestFillCan::aMaskLockedAsAWholeIsToldAbout()
{
    m_pFixture->Document()->AddMask(1, true);
    m_pFixture->Document()->GetModel()->SetMaskSelected(0, true);
    m_pFixture->Document()->GetModel()->SetLockFlags(0, LayerLocks::All);
    QString text;
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        text = box->GetText();
        box->close();
    });
    Click({3.5, 2.5});
    QCOMPARE(text, QString("Cannot fill. Layer is locked."));
    QCOMPARE(m_pFixture->History().count(), 0);
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

void TestFillCan::aPatternFillsTheMaskWithItsLightness()
{
    m_pFixture->Document()->AddMask(1, false);
    m_pFixture->Document()->GetModel()->SetMaskSelected(0, true);
    auto* patterns = Bar()->findChild<PatternSelectWidget*>();
    patterns->SelectItem(0);
    InPanel<QComboBox>("m_pFillModeCmb")->setCurrentIndex(1);
    Click({3.5, 2.5});
    WaitForTheJob();
    const QImage pattern = patterns->GetItemImage(0).toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 8; ++x) {
            const QColor color = pattern.pixelColor(x % pattern.width(), y % pattern.height());
            const int lightness = (std::max({color.red(), color.green(), color.blue()}) +
                                   std::min({color.red(), color.green(), color.blue()})) /
                                  2;
            QCOMPARE(m_pFixture->Document()->GetMaskImage(1)->GetColor(x, y).Alpha(),
                     lightness * color.alpha() / 255);
        }
    }
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

void TestFillCan::theHandStaysWhileTheViewIsPanned()
{
    m_pFixture->Input().MoveInScene(m_pFixture->View(), {3.5, 2.5});
    m_pFixture->View()->EnablePanning(true);
    m_pFixture->SelectLayers({});
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::OpenHandCursor);
    m_pFixture->View()->EnablePanning(false);
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::ForbiddenCursor);
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
    FaultSeams::FailNth(FaultSeams::Seam::FloodFill, 1);
    Click({3.5, 2.5});
    // No job came past: it might wait for the other's pixels, and the click for the job.
    QVERIFY(FaultSeams::Pass(FaultSeams::Seam::FloodFill));
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

void TestFillCan::theWorkIsTakenAndGivenBackInOrder()
{
    struct Moment
    {
        bool hasCursor = false;
        bool hasShortcuts = false;
        int steps = -1;
    };

    const auto now = [&] {
        return Moment{QGuiApplication::overrideCursor() != nullptr,
                      LexoAppKeyHook::instance()->AreShortcutsEnabled(), m_pFixture->History().count()};
    };
    Moment locked;
    Moment unlocked;
    connect(m_pFixture->Document(), &LXDocumentInterface::Locked, this, [&] { locked = now(); });
    connect(m_pFixture->Document(), &LXDocumentInterface::Unlocked, this, [&] { unlocked = now(); });
    Click({3.5, 2.5});
    WaitForTheJob();
    QVERIFY(locked.hasCursor);
    QVERIFY(locked.hasShortcuts);
    QCOMPARE(locked.steps, 0);
    // The command is there before the document is free; the lock goes before the shortcuts come back.
    QVERIFY(!unlocked.hasCursor);
    QVERIFY(!unlocked.hasShortcuts);
    QCOMPARE(unlocked.steps, 1);
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

void TestFillCan::aFailedFillIsToldAfterItsViewWentAway()
{
    FaultSeams::SlowDown(FaultSeams::Seam::FloodFill, 50);
    FaultSeams::FailNth(FaultSeams::Seam::FloodFill, 1);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("line=1416"));
    QString text;
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        text = box->GetText();
        box->close();
    });
    Click({3.5, 2.5});
    m_pAdapter->SetDocumentView(nullptr);
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(m_pFixture->History().count(), 0);
    QVERIFY(text.isEmpty());
    QTRY_COMPARE(text, QString("Cannot fill. Unexpected error occurred."));
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

ZK_REGISTER_TEST(tst_fillcan, TestFillCan)

#include "tst_fillcan.moc"
