#include "ViewFixture.h"

#include "document/LXDocumentModel.h"
#include "geometryengine/ControlNode.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QGraphicsPathItem>
#include <QGraphicsSceneMouseEvent>
#include <QGuiApplication>
#include <QPainterPath>
#include <QPixmap>
#include <QScreen>
#include <QTest>

using namespace ViewFixture;

namespace {
constexpr int HandleCount = 8;

/// The handles of a box: corners and middles of its edges, from the top left on, with the clock.
QVector<QPointF> HandlePlaces(const QRectF& box)
{
    const QPointF middle = box.center();
    return {box.topLeft(),     {middle.x(), box.top()},    box.topRight(),   {box.right(), middle.y()},
            box.bottomRight(), {middle.x(), box.bottom()}, box.bottomLeft(), {box.left(), middle.y()}};
}

/// A box as tools put it over a picture to transform or to crop it: handles that don't move by themselves, an
/// outline below them, a shade around. It hears the mouse by a filter on the scene, and says what it heard.
class Box : public QObject
{
public:
    Box(ZKDocumentView& view, const QRectF& rect)
        : m_View(view), m_pOutline(new QGraphicsPathItem), m_pShade(new QGraphicsPathItem)
    {
        for (int i = 0; i < HandleCount; ++i) {
            auto* const handle = new ControlNode;
            handle->setFlag(QGraphicsItem::ItemIsMovable, false);
            view.scene()->addItem(handle);
            connect(handle, &ControlNode::mousePressed, this,
                    [this, i] { heard << QString("handle %1").arg(i); });
            connect(handle, &ControlNode::mouseReleased, this,
                    [this, i] { heard << QString("handle %1 let go").arg(i); });
            handles << handle;
        }
        QPen pen(Qt::black, 0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
        pen.setCosmetic(true);
        m_pOutline->setPen(pen);
        m_pOutline->setZValue(-1);
        m_pShade->setBrush(Qt::black);
        m_pShade->setPen(Qt::NoPen);
        m_pShade->setOpacity(0.5);
        m_pShade->setZValue(-2);
        view.scene()->addItem(m_pOutline);
        view.scene()->addItem(m_pShade);
        SetRect(rect);
        view.scene()->installEventFilter(this);
    }

    ~Box() override
    {
        qDeleteAll(handles);
        delete m_pOutline;
        delete m_pShade;
    }

    void SetRect(const QRectF& rect)
    {
        QPainterPath outline;
        outline.addRect(rect);
        m_pOutline->setPath(outline);
        QPainterPath shade;
        shade.addRect(QRectF(QPointF(), QSizeF(m_View.GetModel()->GetDocument()->GetDocumentSize())));
        m_pShade->setPath(shade.subtracted(outline));
        const QVector<QPointF> places = HandlePlaces(rect);
        for (int i = 0; i < HandleCount; ++i)
            handles[i]->setPos(places[i]);
    }

    QRectF Rect() const { return m_pOutline->path().boundingRect(); }

    QVector<ControlNode*> handles;
    QStringList heard;
    int moveSteps = 0;       ///< with the button down on a handle
    bool doesFollow = false; ///< whether the corner that is held goes with the pointer

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::GraphicsSceneMousePress ||
            event->type() == QEvent::GraphicsSceneMouseDoubleClick) {
            heard << PressAt(static_cast<QGraphicsSceneMouseEvent*>(event));
        }
        if (event->type() == QEvent::GraphicsSceneMouseMove)
            OnMove(static_cast<QGraphicsSceneMouseEvent*>(event)->scenePos());
        return false;
    }

private:
    QString PressAt(const QGraphicsSceneMouseEvent* event) const
    {
        const QPointF pos = event->scenePos();
        QString where = m_pOutline->contains(m_pOutline->mapFromScene(pos)) ? "inside" : "outside";
        for (int i = 0; i < HandleCount; ++i) {
            if (handles[i]->contains(handles[i]->mapFromScene(pos))) where = QString("on %1").arg(i);
        }
        return QString("button %1 %2").arg(event->button()).arg(where);
    }

    void OnMove(const QPointF& pos)
    {
        const bool isHeld = handles[4]->mouseButtonState() == Qt::LeftButton;
        if (!isHeld || !(QGuiApplication::mouseButtons() & Qt::LeftButton)) return;
        ++moveSteps;
        if (doesFollow) SetRect(QRectF(Rect().topLeft(), pos));
    }

    ZKDocumentView& m_View;
    QGraphicsPathItem* m_pOutline;
    QGraphicsPathItem* m_pShade;
};

/// What the window shows, after all the partial repaints that led there.
QImage OnScreen(const ZKDocumentView& view)
{
    const QImage window = QGuiApplication::primaryScreen()->grabWindow(view.winId()).toImage();
    return window.copy(QRect(view.viewport()->pos(), view.viewport()->size()))
        .convertToFormat(QImage::Format_RGB32);
}

/// So many viewport pixels round the middle of the view.
QRectF BoxInMiddle(const ZKDocumentView& view, const QSizeF& half)
{
    const QPointF middle = Middle(view);
    const QPointF reach(half.width(), half.height());
    return QRectF(PointAt(view, middle - reach), PointAt(view, middle + reach));
}
} // namespace

/// Boxes with handles over the picture of a document, with real input.
class TestBoxOfHandles : public QObject
{
    Q_OBJECT

private slots:
    void aPressIsHeardByTheSceneAndByTheHandleThatItHits_data();
    void aPressIsHeardByTheSceneAndByTheHandleThatItHits();
    void handlesOfASmallBoxAreEachHit();
    void theSecondPressOfADoubleClickIsAPress();
    void panningOverAHandleHoldsNothing();
    void zoomingInADragKeepsTheHandle();
    void hiddenAndDisabledHandlesAreNone();
    void theItemUnderThePointerIsTheHandle();
    void aBoxLeavesNothingBehind_data();
    void aBoxLeavesNothingBehind();
};

void TestBoxOfHandles::aPressIsHeardByTheSceneAndByTheHandleThatItHits_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("0.05") << ZKDocumentView::MinScale;
    QTest::newRow("1") << 1.0;
    QTest::newRow("40") << ZKDocumentView::MaxScale;
}

void TestBoxOfHandles::aPressIsHeardByTheSceneAndByTheHandleThatItHits()
{
    QFETCH(double, scale);
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({6000, 4000});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    view->Zoom(scale, Middle(*view), false);
    const QRectF rect = BoxInMiddle(*view, {90, 60});
    Box box(*view, rect);
    InputDriver input;
    const auto at = [&](double x, double y) { return PointAt(*view, Middle(*view) + QPointF(x, y)); };

    input.DragInScene(view.get(), {at(94, 53), at(120, 80)});
    QCOMPARE(box.heard, QStringList({"button 1 on 4", "handle 4", "handle 4 let go"}));
    QVERIFY(box.moveSteps >= 4);
    QCOMPARE(int(box.handles[4]->mouseButtonState()), 0);
    QCOMPARE(box.Rect(), rect);

    box.heard.clear();
    input.DragInScene(view.get(), {at(30, 20), at(60, 40)});
    input.DragInScene(view.get(), {at(120, 20), at(140, 40)});
    input.ClickInScene(view.get(), at(90, 60), Qt::RightButton);
    QCOMPARE(box.heard, QStringList({"button 1 inside", "button 1 outside", "button 2 on 4"}));
}

void TestBoxOfHandles::handlesOfASmallBoxAreEachHit()
{
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({300, 200});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    Box box(*view, BoxInMiddle(*view, {8, 8}));
    InputDriver input;
    for (int i = 0; i < HandleCount; ++i) {
        box.heard.clear();
        input.ClickInScene(view.get(), box.handles[i]->scenePos());
        QVERIFY2(box.heard.contains(QString("handle %1").arg(i)), qPrintable(box.heard.join(", ")));
        QCOMPARE(box.heard.filter("let go").size(), 1);
    }
}

void TestBoxOfHandles::theSecondPressOfADoubleClickIsAPress()
{
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({300, 200});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    Box box(*view, BoxInMiddle(*view, {60, 40}));
    InputDriver input;
    input.DoubleClickInScene(view.get(), box.handles[2]->scenePos());
    QCOMPARE(box.heard, QStringList({"button 1 on 2", "handle 2", "handle 2 let go", "button 1 on 2",
                                     "handle 2", "handle 2 let go"}));
    QCOMPARE(int(box.handles[2]->mouseButtonState()), 0);
}

void TestBoxOfHandles::panningOverAHandleHoldsNothing()
{
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({1000, 800});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    view->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(view.get()));
    Box box(*view, BoxInMiddle(*view, {60, 40}));
    InputDriver input;
    input.KeyDown(Qt::Key_Space);
    QVERIFY(view->IsPanningEnabled());
    input.PressInScene(view.get(), box.handles[4]->scenePos());
    QCOMPARE(int(box.handles[4]->mouseButtonState()), 0);
    input.ReleaseInScene(view.get(), box.handles[4]->scenePos());
    input.KeyUp(Qt::Key_Space);
    QCOMPARE(box.heard, QStringList("button 1 on 4"));
    // And while panning is forbidden, Space leaves the handle to the person.
    view->AllowPanning(false);
    input.KeyDown(Qt::Key_Space);
    input.ClickInScene(view.get(), box.handles[4]->scenePos());
    input.KeyUp(Qt::Key_Space);
    view->AllowPanning(true);
    QCOMPARE(box.heard.filter("handle 4").size(), 2);
}

void TestBoxOfHandles::zoomingInADragKeepsTheHandle()
{
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({1000, 800});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    Box box(*view, BoxInMiddle(*view, {60, 40}));
    box.doesFollow = true;
    InputDriver input;
    const QPointF corner = box.handles[4]->scenePos();
    input.PressInScene(view.get(), corner);
    input.WheelInScene(view.get(), corner, 120);
    QVERIFY(view->GetScale() > 1);
    QCOMPARE(int(box.handles[4]->mouseButtonState()), 1);
    const QPointF to = PointAt(*view, Middle(*view) + QPointF(110, 90));
    input.MoveInScene(view.get(), to);
    COMPARE_POINTS(box.handles[4]->scenePos(), to, 2.0);
    input.ReleaseInScene(view.get(), to);
    QCOMPARE(box.heard, QStringList({"button 1 on 4", "handle 4", "handle 4 let go"}));
}

void TestBoxOfHandles::hiddenAndDisabledHandlesAreNone()
{
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({300, 200});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    Box box(*view, BoxInMiddle(*view, {60, 40}));
    InputDriver input;
    box.handles[1]->setEnabled(false);
    box.handles[1]->setVisible(false);
    box.handles[3]->setEnabled(false);
    input.ClickInScene(view.get(), box.handles[1]->scenePos());
    input.ClickInScene(view.get(), box.handles[3]->scenePos());
    QVERIFY(box.heard.filter("handle").isEmpty());
}

void TestBoxOfHandles::theItemUnderThePointerIsTheHandle()
{
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({300, 200});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    for (const double scale : {0.4, 1.0, 7.0}) {
        view->Zoom(scale, Middle(*view), false);
        Box box(*view, BoxInMiddle(*view, {60, 40}));
        const auto isHandle = [&](const QPointF& beside) {
            const QPoint at = (Middle(*view) + QPointF(60, 40) + beside).toPoint();
            return view->itemAt(at) == box.handles[4];
        };
        QVERIFY(isHandle({0, 0}));
        QVERIFY(isHandle({9, 0}));
        QVERIFY(!isHandle({14, 0}));
        QVERIFY(!isHandle({-14, -14}));
    }
}

void TestBoxOfHandles::aBoxLeavesNothingBehind_data()
{
    aPressIsHeardByTheSceneAndByTheHandleThatItHits_data();
}

void TestBoxOfHandles::aBoxLeavesNothingBehind()
{
    QFETCH(double, scale);
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({600, 400});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    view->Zoom(scale, Middle(*view), false);
    QCoreApplication::processEvents();
    const QImage bare = OnScreen(*view);
    {
        Box box(*view, BoxInMiddle(*view, {90, 60}));
        box.doesFollow = true;
        InputDriver input;
        const auto at = [&](double x, double y) { return PointAt(*view, Middle(*view) + QPointF(x, y)); };
        input.DragInScene(view.get(), {at(90, 60), at(120, 20), at(-40, 90), at(60, 50)});
        QCoreApplication::processEvents();
        QCOMPARE(OnScreen(*view), Shown(*view).convertToFormat(QImage::Format_RGB32));
        QVERIFY(OnScreen(*view) != bare);
    }
    QCoreApplication::processEvents();
    QCOMPARE(OnScreen(*view), bare);
}

ZK_REGISTER_TEST(tst_boxofhandles, TestBoxOfHandles)

#include "tst_boxofhandles.moc"
