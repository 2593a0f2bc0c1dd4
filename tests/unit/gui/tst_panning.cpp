#include "GuiFixture.h"

#include "gui/LexoAppKeyHook.h"
#include "gui/ViewAutoscroll.h"
#include "gui/ZKDocumentView.h"
#include "support/TestRegistry.h"

#include <QAbstractEventDispatcher>
#include <QGraphicsRectItem>
#include <QGraphicsSceneMouseEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

/// The hand: Space and the left button, or the middle button; and scrolling during a tool's drag.
class TestPanning : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void spaceAndDragMoveThePicture();
    void middleDragMovesThePicture();
    void middleDragEndsWithItsButton();
    void filtersOfTheSceneHearWhatItemsDont();
    void panningIsStillOnWhenTheReleaseReachesTheScene();
    void dragOutlivesTheReleaseOfSpace();
    void spaceStartsNothingWhileAButtonIsHeld();
    void spaceStartsNothingWithoutTheFocus();
    void spaceIsTypedWhileATextHasItsCaret();
    void autoRepeatOfSpaceChangesNothing();
    void forbiddenPanningDoesNotStartAndEnds();
    void cursorIsTheHandsAndComesBack();
    void panningWorksWhileShortcutsAreOff();
    void enablingTwiceIsToldOnce();

    void autoscrollFollowsADragOutOfTheViewport();
    void noAutoscrollUnlessEnabled();

private:
    QPoint ScrollPos() const
    {
        return {m_pView->horizontalScrollBar()->value(), m_pView->verticalScrollBar()->value()};
    }

    /// Events of the window system, which also set what QGuiApplication knows of the mouse.
    void Mouse(QEvent::Type type, Qt::MouseButton button, const QPoint& viewPos)
    {
        QWindow* const window = m_pView->windowHandle();
        const QPoint pos = m_pView->viewport()->mapTo(m_pView.get(), viewPos);
        switch (type) {
        case QEvent::MouseButtonPress: QTest::mousePress(window, button, Qt::NoModifier, pos); break;
        case QEvent::MouseButtonRelease: QTest::mouseRelease(window, button, Qt::NoModifier, pos); break;
        default: QTest::mouseMove(window, pos); break;
        }
        QCoreApplication::processEvents();
    }

    bool IsAutoscrolling() const
    {
        auto* const autoscroll = m_pView->findChild<ViewAutoscroll*>();
        return !QAbstractEventDispatcher::instance()->registeredTimers(autoscroll).isEmpty();
    }

    GuiFixture::OwnedDocument m_pDocument;
    std::unique_ptr<ZKDocumentView> m_pView;
};

namespace {
/// What a tool's filter of the scene sees.
class SceneLog : public QObject
{
public:
    explicit SceneLog(const ZKDocumentView* view) : m_pView(view) { view->scene()->installEventFilter(this); }

    QStringList m_Lines;

    bool eventFilter(QObject*, QEvent* event) override
    {
        const QString panning = m_pView->IsPanningEnabled() ? " panning" : "";
        if (event->type() == QEvent::GraphicsSceneMousePress) m_Lines.append("press" + panning);
        if (event->type() == QEvent::GraphicsSceneMouseRelease) m_Lines.append("release" + panning);
        return false;
    }

private:
    const ZKDocumentView* m_pView;
};

/// A handle that would follow the mouse.
QGraphicsRectItem* AddHandle(const ZKDocumentView& view, const QRectF& rect)
{
    QGraphicsRectItem* handle = view.scene()->addRect(rect);
    handle->setFlag(QGraphicsItem::ItemIsMovable);
    return handle;
}
} // namespace

void TestPanning::init()
{
    m_pDocument = GuiFixture::MakeDocument({2000, 1500});
    m_pView = std::make_unique<ZKDocumentView>(m_pDocument.get(), nullptr);
    m_pView->resize(400, 300);
    m_pView->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pView.get()));
    m_pView->setFocus();
    m_pView->Zoom(1, QPointF(200, 150), false);
}

void TestPanning::cleanup()
{
    LexoAppKeyHook::instance()->EnableAllRegisteredShortcuts();
    m_pView.reset();
    m_pDocument.reset();
}

void TestPanning::spaceAndDragMoveThePicture()
{
    QSignalSpy panning(m_pView.get(), &ZKDocumentView::PanningEnabled);
    const QPoint before = ScrollPos();
    QTest::keyPress(m_pView.get(), Qt::Key_Space);
    QVERIFY(m_pView->IsPanningEnabled());
    Mouse(QEvent::MouseButtonPress, Qt::LeftButton, {100, 100});
    Mouse(QEvent::MouseMove, Qt::NoButton, {130, 80});
    QCOMPARE(ScrollPos(), before + QPoint(-30, 20));
    Mouse(QEvent::MouseButtonRelease, Qt::LeftButton, {130, 80});
    QVERIFY(m_pView->IsPanningEnabled());
    QTest::keyRelease(m_pView.get(), Qt::Key_Space);
    QVERIFY(!m_pView->IsPanningEnabled());
    QCOMPARE(panning.count(), 2);
    QCOMPARE(panning[0][0].toBool(), true);
    QCOMPARE(panning[1][0].toBool(), false);
}

void TestPanning::middleDragMovesThePicture()
{
    const QPoint before = ScrollPos();
    Mouse(QEvent::MouseButtonPress, Qt::MiddleButton, {100, 100});
    QVERIFY(m_pView->IsPanningEnabled());
    Mouse(QEvent::MouseMove, Qt::NoButton, {90, 110});
    Mouse(QEvent::MouseMove, Qt::NoButton, {80, 120});
    QCOMPARE(ScrollPos(), before + QPoint(20, -20));
    Mouse(QEvent::MouseButtonRelease, Qt::MiddleButton, {80, 120});
    QVERIFY(!m_pView->IsPanningEnabled());
}

void TestPanning::middleDragEndsWithItsButton()
{
    Mouse(QEvent::MouseButtonPress, Qt::MiddleButton, {100, 100});
    Mouse(QEvent::MouseButtonPress, Qt::RightButton, {100, 100});
    Mouse(QEvent::MouseButtonRelease, Qt::RightButton, {100, 100});
    QVERIFY(m_pView->IsPanningEnabled());
    Mouse(QEvent::MouseButtonRelease, Qt::MiddleButton, {100, 100});
    QVERIFY(!m_pView->IsPanningEnabled());
}

void TestPanning::filtersOfTheSceneHearWhatItemsDont()
{
    const QPointF at = m_pView->mapToScene(100, 100);
    const QGraphicsRectItem* handle = AddHandle(*m_pView, QRectF(at.x() - 20, at.y() - 20, 40, 40));
    const SceneLog log(m_pView.get());
    QTest::keyPress(m_pView.get(), Qt::Key_Space);
    Mouse(QEvent::MouseButtonPress, Qt::LeftButton, {100, 100});
    Mouse(QEvent::MouseMove, Qt::NoButton, {150, 100});
    Mouse(QEvent::MouseButtonRelease, Qt::LeftButton, {150, 100});
    QTest::keyRelease(m_pView.get(), Qt::Key_Space);
    QCOMPARE(handle->pos(), QPointF(0, 0));
    QCOMPARE(log.m_Lines, (QStringList{"press panning", "release panning"}));

    // The same without the hand drags the handle.
    Mouse(QEvent::MouseButtonPress, Qt::LeftButton, {150, 100});
    Mouse(QEvent::MouseMove, Qt::NoButton, {160, 100});
    Mouse(QEvent::MouseButtonRelease, Qt::LeftButton, {160, 100});
    QVERIFY(handle->pos() != QPointF(0, 0));
}

void TestPanning::panningIsStillOnWhenTheReleaseReachesTheScene()
{
    const SceneLog log(m_pView.get());
    Mouse(QEvent::MouseButtonPress, Qt::MiddleButton, {100, 100});
    Mouse(QEvent::MouseButtonRelease, Qt::MiddleButton, {100, 100});
    QCOMPARE(log.m_Lines, (QStringList{"press panning", "release panning"}));
}

void TestPanning::dragOutlivesTheReleaseOfSpace()
{
    QTest::keyPress(m_pView.get(), Qt::Key_Space);
    Mouse(QEvent::MouseButtonPress, Qt::LeftButton, {100, 100});
    QTest::keyRelease(m_pView.get(), Qt::Key_Space);
    QVERIFY(m_pView->IsPanningEnabled());
    const QPoint before = ScrollPos();
    Mouse(QEvent::MouseMove, Qt::NoButton, {110, 100});
    QCOMPARE(ScrollPos(), before + QPoint(-10, 0));
    Mouse(QEvent::MouseButtonRelease, Qt::LeftButton, {110, 100});
    QVERIFY(!m_pView->IsPanningEnabled());
}

void TestPanning::spaceStartsNothingWhileAButtonIsHeld()
{
    Mouse(QEvent::MouseButtonPress, Qt::LeftButton, {100, 100});
    QTest::keyPress(m_pView.get(), Qt::Key_Space);
    QVERIFY(!m_pView->IsPanningEnabled());
    Mouse(QEvent::MouseButtonRelease, Qt::LeftButton, {100, 100});
    QTest::keyRelease(m_pView.get(), Qt::Key_Space);
}

void TestPanning::spaceStartsNothingWithoutTheFocus()
{
    m_pView->clearFocus();
    QTest::keyPress(m_pView.get(), Qt::Key_Space);
    QVERIFY(!m_pView->IsPanningEnabled());
    QTest::keyRelease(m_pView.get(), Qt::Key_Space);
}

void TestPanning::spaceIsTypedWhileATextHasItsCaret()
{
    m_pDocument->AddTextLayer("Text Layer", QPointF(40, 60));
    m_pDocument->SetTextCaret(1, 0, true);
    const Qt::CursorShape shape = m_pView->cursor().shape();
    QTest::keyPress(m_pView.get(), Qt::Key_Space);
    QVERIFY(!m_pView->IsPanningEnabled());
    QCOMPARE(m_pView->cursor().shape(), shape);
    QTest::keyRelease(m_pView.get(), Qt::Key_Space);
    // The middle button still moves the picture.
    Mouse(QEvent::MouseButtonPress, Qt::MiddleButton, {100, 100});
    QVERIFY(m_pView->IsPanningEnabled());
    Mouse(QEvent::MouseButtonRelease, Qt::MiddleButton, {100, 100});

    m_pDocument->SetTextCaret(1, 0, false);
    QTest::keyPress(m_pView.get(), Qt::Key_Space);
    QVERIFY(m_pView->IsPanningEnabled());
    QTest::keyRelease(m_pView.get(), Qt::Key_Space);
}

void TestPanning::autoRepeatOfSpaceChangesNothing()
{
    QSignalSpy panning(m_pView.get(), &ZKDocumentView::PanningEnabled);
    QTest::keyPress(m_pView.get(), Qt::Key_Space);
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, " ", true);
    QCoreApplication::sendEvent(m_pView.get(), &up);
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
    QCoreApplication::sendEvent(m_pView.get(), &down);
    QVERIFY(m_pView->IsPanningEnabled());
    QCOMPARE(panning.count(), 1);
    QTest::keyRelease(m_pView.get(), Qt::Key_Space);
}

void TestPanning::forbiddenPanningDoesNotStartAndEnds()
{
    m_pView->AllowPanning(false);
    QVERIFY(!m_pView->IsPanningAllowed());
    m_pView->EnablePanning(true);
    QTest::keyPress(m_pView.get(), Qt::Key_Space);
    QVERIFY(!m_pView->IsPanningEnabled());
    QTest::keyRelease(m_pView.get(), Qt::Key_Space);

    m_pView->AllowPanning(true);
    m_pView->EnablePanning(true);
    QVERIFY(m_pView->IsPanningEnabled());
    m_pView->AllowPanning(false);
    QVERIFY(!m_pView->IsPanningEnabled());
    m_pView->AllowPanning(true);
}

void TestPanning::cursorIsTheHandsAndComesBack()
{
    m_pView->setCursor(Qt::CrossCursor);
    QTest::keyPress(m_pView.get(), Qt::Key_Space);
    QCOMPARE(m_pView->cursor().shape(), Qt::OpenHandCursor);
    Mouse(QEvent::MouseButtonPress, Qt::LeftButton, {100, 100});
    QCOMPARE(m_pView->cursor().shape(), Qt::ClosedHandCursor);
    Mouse(QEvent::MouseButtonRelease, Qt::LeftButton, {100, 100});
    QCOMPARE(m_pView->cursor().shape(), Qt::OpenHandCursor);

    // Before the end is told, so that a tool may set its own there.
    Qt::CursorShape atTheEnd = Qt::ArrowCursor;
    connect(m_pView.get(), &ZKDocumentView::PanningEnabled, this,
            [&] { atTheEnd = m_pView->cursor().shape(); });
    QTest::keyRelease(m_pView.get(), Qt::Key_Space);
    QCOMPARE(atTheEnd, Qt::CrossCursor);
    QCOMPARE(m_pView->cursor().shape(), Qt::CrossCursor);
}

void TestPanning::panningWorksWhileShortcutsAreOff()
{
    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    QTest::keyPress(m_pView.get(), Qt::Key_Space);
    QVERIFY(m_pView->IsPanningEnabled());
    QTest::keyRelease(m_pView.get(), Qt::Key_Space);
    QVERIFY(!m_pView->IsPanningEnabled());
}

void TestPanning::enablingTwiceIsToldOnce()
{
    QSignalSpy panning(m_pView.get(), &ZKDocumentView::PanningEnabled);
    m_pView->EnablePanning(true);
    m_pView->EnablePanning(true);
    m_pView->EnablePanning(false);
    m_pView->EnablePanning(false);
    QCOMPARE(panning.count(), 2);
}

void TestPanning::autoscrollFollowsADragOutOfTheViewport()
{
    m_pView->EnableAutoscroll(true);
    const QPoint before = ScrollPos();
    QSignalSpy moved(m_pView.get(), &ZKDocumentView::CursorMoved);
    Mouse(QEvent::MouseButtonPress, Qt::LeftButton, {100, 100});
    Mouse(QEvent::MouseMove, Qt::NoButton, {-20, 100});
    const int movesBefore = moved.count();
    QTRY_VERIFY(ScrollPos().x() <= before.x() - 40);
    QCOMPARE(ScrollPos().y(), before.y());
    QVERIFY(moved.count() > movesBefore);
    QVERIFY(IsAutoscrolling());

    Mouse(QEvent::MouseButtonRelease, Qt::LeftButton, {-20, 100});
    QVERIFY(!IsAutoscrolling());
}

void TestPanning::noAutoscrollUnlessEnabled()
{
    Mouse(QEvent::MouseButtonPress, Qt::LeftButton, {100, 100});
    Mouse(QEvent::MouseMove, Qt::NoButton, {-20, 100});
    QVERIFY(!IsAutoscrolling());
    Mouse(QEvent::MouseButtonRelease, Qt::LeftButton, {-20, 100});
}

ZK_REGISTER_TEST(tst_panning, TestPanning)
#include "tst_panning.moc"
