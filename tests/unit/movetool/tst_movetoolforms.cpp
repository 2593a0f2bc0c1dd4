#include "MoveToolFixture.h"

#include "core/ZKActivateAction.h"
#include "core/ZKApplication.h"
#include "core/ZKToolGroupManager.h"
#include "document/LayerKind.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LexoAppKeyHook.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QLabel>
#include <QPen>

// The option bar, the tool-box button, the cursor, the settings, and the frame around what is selected.
class TestMoveToolForms : public QObject, private MoveToolFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theInterfacesAreAnswered();
    void theFormHasItsTitlesAndTexts();
    void theToolBoxButtonStandsForTheTool();
    void aTurnForAMomentLeavesButtonAndBar();
    void theCursorPointsWithItsMiddle();
    void theOldCursorComesBack();
    void aTurnWhilePanningLeavesTheHand();
    void aToolLeftWhilePanningLeavesNoCursor();
    void theToolIsActiveUnlessTheSettingsSayElse();

    void theFrameLiesAroundTheSelectedLayers();
    void theFrameIsAThinBlackLine();
    void aSelectedMaskIsFramedAlone();
    void aLinkedMaskIsFramedWithItsLayer();
    void theFrameFollowsTheDrag();
    void theFrameOfALinkedMaskFollowsTheDrag();
    void theFrameFollowsWhatIsSelectedAndMoved();
    void withoutRowsThereIsNoFrame();
    void anAdjustmentLayerHasNoFrameButItsMask();
    void theDeactivationTakesTheFrameAway();
    void theUncheckedBoxTakesTheFrameAway();

private:
    static QWidget* Bar()
    {
        for (QWidget* widget : QApplication::allWidgets()) {
            if (widget->objectName() == "MoveToolBar") return widget;
        }
        return nullptr;
    }

    static QCheckBox* Box() { return Bar()->findChild<QCheckBox*>("m_pShowTransformControls"); }

    /// Null without one.
    QGraphicsRectItem* Frame() const
    {
        for (QGraphicsItem* item : m_pFixture->View()->scene()->items()) {
            if (auto* rect = qgraphicsitem_cast<QGraphicsRectItem*>(item)) return rect;
        }
        return nullptr;
    }

    QRectF FrameRect() const { return Frame() ? Frame()->rect().translated(Frame()->pos()) : QRectF(); }
};

void TestMoveToolForms::init()
{
    MakeTool();
}

void TestMoveToolForms::cleanup()
{
    m_pFixture->History().commit();
    VERIFY_NOTHING_IS_HELD();
    DropTool();
}

void TestMoveToolForms::theInterfacesAreAnswered()
{
    for (const char* name : {"ITool/1.0", "IDocumentViewTool/1.0", "MoveTool"}) {
        QVERIFY2(m_pTool->qt_metacast(name), name);
    }
    for (const char* name : {"IDocumentViewState/1.0", "IMainMenuActionList/1.0", "IWidgetTool/1.0"}) {
        QVERIFY2(!m_pTool->qt_metacast(name), name);
    }
    QCOMPARE(m_pTool->GetDocumentViewState(), quint64(0));
    QVERIFY(m_pTool->IsActive());
}

void TestMoveToolForms::theFormHasItsTitlesAndTexts()
{
    QCOMPARE(Bar()->windowTitle(), QString("Move toolbar"));
    QCOMPARE(Box()->text(), QString("Show frame"));
    QVERIFY(!Box()->isChecked());
    QVERIFY(Box()->isEnabled());
    QVERIFY(!Bar()->findChild<QLabel*>("m_pPictureLabelMain")->pixmap(Qt::ReturnByValue).isNull());
}

void TestMoveToolForms::theToolBoxButtonStandsForTheTool()
{
    auto* button = LToolBoxWidget::GetInstance()->findChild<LToolBoxButton*>();
    QVERIFY(button->isChecked());
    QCOMPARE(button->defaultAction()->text(), QString("Move tool"));
    ZKToolGroupManager::Activate(nullptr);
    QVERIFY(!button->isChecked());
    QVERIFY(!m_pTool->IsActive());
    emit button->LMousePressed(button);
    QVERIFY(m_pTool->IsActive());
    ZKToolGroupManager::Activate(nullptr);
    emit button->RMousePressed(button);
    QVERIFY(m_pTool->IsActive());
}

void TestMoveToolForms::aTurnForAMomentLeavesButtonAndBar()
{
    ZKToolGroupManager::Activate(nullptr);
    SendKey(Qt::Key_Control, true);
    QVERIFY(m_pTool->IsActive());
    QVERIFY(!LToolBoxWidget::GetInstance()->findChild<LToolBoxButton*>()->isChecked());
    SendKey(Qt::Key_Control, false);
    QVERIFY(!m_pTool->IsActive());
}

void TestMoveToolForms::theCursorPointsWithItsMiddle()
{
    const QCursor cursor = m_pFixture->View()->cursor();
    QVERIFY(!cursor.pixmap().isNull());
    const QSize size = cursor.pixmap().size() / cursor.pixmap().devicePixelRatio();
    QCOMPARE(cursor.hotSpot(), QPoint(size.width() / 2, size.height() / 2));
}

void TestMoveToolForms::theOldCursorComesBack()
{
    ZKToolGroupManager::Activate(nullptr);
    m_pFixture->View()->setCursor(Qt::CrossCursor);
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::BitmapCursor);
    ZKToolGroupManager::Activate(nullptr);
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::CrossCursor);
}

void TestMoveToolForms::aTurnWhilePanningLeavesTheHand()
{
    ZKToolGroupManager::Activate(nullptr);
    ZKDocumentView* view = m_pFixture->View();
    view->setCursor(Qt::CrossCursor);
    view->EnablePanning(true);
    SendKey(Qt::Key_Control, true);
    QVERIFY(m_pTool->IsActive());
    QCOMPARE(view->cursor().shape(), Qt::OpenHandCursor);
    view->EnablePanning(false);
    QCOMPARE(view->cursor().shape(), Qt::BitmapCursor);
    SendKey(Qt::Key_Control, false);
    QCOMPARE(view->cursor().shape(), Qt::CrossCursor);

    // And over before the hand is.
    view->EnablePanning(true);
    SendKey(Qt::Key_Control, true);
    SendKey(Qt::Key_Control, false);
    QCOMPARE(view->cursor().shape(), Qt::OpenHandCursor);
    view->EnablePanning(false);
    QCOMPARE(view->cursor().shape(), Qt::CrossCursor);
}

void TestMoveToolForms::aToolLeftWhilePanningLeavesNoCursor()
{
    ZKDocumentView* view = m_pFixture->View();
    ZKToolGroupManager::Activate(nullptr);
    view->setCursor(Qt::CrossCursor);
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
    view->EnablePanning(true);
    ZKToolGroupManager::Activate(nullptr);
    QCOMPARE(view->cursor().shape(), Qt::OpenHandCursor);
    view->EnablePanning(false);
    QCOMPARE(view->cursor().shape(), Qt::CrossCursor);
}

void TestMoveToolForms::theToolIsActiveUnlessTheSettingsSayElse()
{
    ZKToolGroupManager::Activate(nullptr);
    ZKApplication::SetUserValue("MoveTool/Active", QVariant());
    m_pTool->LoadSettings();
    QVERIFY(m_pTool->IsActive());

    ZKToolGroupManager::Activate(nullptr);
    m_pTool->SaveSettings();
    QCOMPARE(ZKApplication::GetUserValue("MoveTool/Active", true).toBool(), false);
    m_pTool->LoadSettings();
    QVERIFY(!m_pTool->IsActive());

    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
    m_pTool->SaveSettings();
    QCOMPARE(ZKApplication::GetUserValue("MoveTool/Active", false).toBool(), true);
}

// ---- the frame

void TestMoveToolForms::theFrameLiesAroundTheSelectedLayers()
{
    AddLayer({-3, 4, 2, 2}, Qt::blue);
    AddLayer({20, 20, 5, 5}, Qt::green);
    m_pFixture->SelectLayers({1, 2});
    QVERIFY(!Frame());
    Box()->setChecked(true);
    // (-3, 4) to (15, 11), and the canvas from row 0 on.
    QCOMPARE(FrameRect(), QRectF(-3, 0, 19, 12));
}

void TestMoveToolForms::theFrameIsAThinBlackLine()
{
    Box()->setChecked(true);
    const QPen pen = Frame()->pen();
    QCOMPARE(pen.color(), QColor(Qt::black));
    QCOMPARE(pen.widthF(), 0.0);
    QCOMPARE(pen.style(), Qt::SolidLine);
    QCOMPARE(pen.capStyle(), Qt::SquareCap);
    QCOMPARE(pen.joinStyle(), Qt::BevelJoin);
}

void TestMoveToolForms::aSelectedMaskIsFramedAlone()
{
    AddMask({0, 0, 4, 4});
    Document()->SetMaskOffset(1, {30, 0});
    Model()->SetMaskLinked(0, false);
    Box()->setChecked(true);
    QCOMPARE(FrameRect(), QRectF(0, 0, 16, 12));
    Model()->SetMaskSelected(0, true);
    QCOMPARE(FrameRect(), QRectF(30, 0, 16, 12));
}

void TestMoveToolForms::aLinkedMaskIsFramedWithItsLayer()
{
    AddMask({0, 0, 4, 4});
    Document()->SetMaskOffset(1, {30, 0});
    Box()->setChecked(true);
    QCOMPARE(FrameRect(), QRectF(0, 0, 46, 12));
}

void TestMoveToolForms::theFrameFollowsTheDrag()
{
    Box()->setChecked(true);
    Press({2.5, 2.5});
    Move({4.5, 3.5});
    QCOMPARE(FrameRect(), QRectF(2, 1, 16, 12));
    Move({6.5, 3.5});
    QCOMPARE(FrameRect(), QRectF(4, 1, 16, 12));
    Release({5.5, 3.5});
    QCOMPARE(FrameRect(), QRectF(3, 1, 16, 12));
    m_pFixture->History().undo();
    QCOMPARE(FrameRect(), QRectF(0, 0, 16, 12));
}

void TestMoveToolForms::theFrameOfALinkedMaskFollowsTheDrag()
{
    AddMask({0, 0, 4, 4});
    Model()->SetMaskSelected(0, true);
    Box()->setChecked(true);
    const QRectF before = FrameRect();
    Press({8.5, 8.5});
    Move({10.5, 9.5});
    QCOMPARE(FrameRect(), before.translated(2, 1));
    Release({9.5, 9.5});
    QCOMPARE(FrameRect(), before.translated(1, 1));
}

void TestMoveToolForms::theFrameFollowsWhatIsSelectedAndMoved()
{
    AddLayer({1, 1, 2, 2}, Qt::blue);
    Box()->setChecked(true);
    m_pFixture->SelectLayers({0});
    QCOMPARE(FrameRect(), QRectF(1, 1, 2, 2));
    Document()->SetLayerOffset(1, {5, 6});
    QCOMPARE(FrameRect(), QRectF(5, 6, 2, 2));
    LXImage32 larger(4, 3);
    Document()->SetLayerImage(1, larger, {5, 6});
    QCOMPARE(FrameRect(), QRectF(5, 6, 4, 3));
}

void TestMoveToolForms::withoutRowsThereIsNoFrame()
{
    Box()->setChecked(true);
    m_pFixture->SelectLayers({});
    QVERIFY(!Box()->isEnabled());
    QVERIFY(!Frame());
    m_pFixture->SelectLayers({0});
    QVERIFY(Box()->isEnabled());
    QVERIFY(Frame());
}

void TestMoveToolForms::anAdjustmentLayerHasNoFrameButItsMask()
{
    Box()->setChecked(true);
    AddLayerOfKind(LayerKind::Adjustment);
    QVERIFY(!Box()->isEnabled());
    QVERIFY(!Frame());
    AddMask({0, 0, 1, 1});
    Model()->SetMaskLinked(0, false);
    Model()->SetMaskSelected(0, true);
    QVERIFY(Box()->isEnabled());
    QCOMPARE(FrameRect(), QRectF(0, 0, 16, 12));
}

void TestMoveToolForms::theDeactivationTakesTheFrameAway()
{
    Box()->setChecked(true);
    QVERIFY(Frame());
    ZKToolGroupManager::Activate(nullptr);
    QVERIFY(!Frame());
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
    QVERIFY(Frame());
}

void TestMoveToolForms::theUncheckedBoxTakesTheFrameAway()
{
    Box()->setChecked(true);
    Box()->setChecked(false);
    QVERIFY(!Frame());
}

ZK_REGISTER_TEST(tst_movetoolforms, TestMoveToolForms)

#include "tst_movetoolforms.moc"
