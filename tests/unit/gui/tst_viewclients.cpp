#include "ViewFixture.h"

#include "document/LXColorInfoHelper.h"
#include "document/LXColorSampleModel.h"
#include "document/LXColorTransformBase.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentModel.h"
#include "geometryengine/ControlNode.h"
#include "gui/CameraView.h"
#include "gui/NavigatorWidget.h"
#include "history/ColorSamplesCommand.h"
#include "history/ColorSamplesCommandDataAdd.h"
#include "history/ColorSamplesCommandDataClear.h"
#include "history/ColorSamplesCommandDataMove.h"
#include "history/ColorSamplesCommandDataRemove.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QDoubleSpinBox>
#include <QFutureWatcher>
#include <QRubberBand>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSignalSpy>
#include <QTest>
#include <QtConcurrentRun>

using namespace ViewFixture;
using GuiFixture::MakeDocument;

namespace {
constexpr int Limit = 10000; ///< milliseconds

QRectF SeenOf(const ZKDocumentView& view)
{
    return view.mapToScene(view.viewport()->rect()).boundingRect();
}

/// Zooms as a tool does that knows of the view what its header tells.
class Zoomer
{
public:
    explicit Zoomer(ZKDocumentView& view) : m_View(view) {}

    void ZoomTo(double scale)
    {
        const QPoint middle = m_View.viewport()->rect().center();
        const QPointF point = m_View.mapToScene(middle);
        m_View.Zoom(scale, middle, false);
        m_View.centerOn(point);
    }

    void ZoomAt(double factor, const QPointF& scenePos)
    {
        m_View.Zoom(m_View.GetScale() * factor, m_View.mapFromScene(scenePos), false);
    }

    void ZoomToRect(const QRect& rect)
    {
        const QRectF part = m_View.mapToScene(rect).boundingRect();
        const QRectF all = SeenOf(m_View);
        const double factor = qMin(all.width() / part.width(), all.height() / part.height());
        ZoomAt(factor, part.center());
        m_View.centerOn(part.center());
    }

private:
    ZKDocumentView& m_View;
};

/// A panel that shows where the view stands and moves it.
class Navigation : public QObject
{
public:
    explicit Navigation(ZKDocumentView* view) : m_pView(view)
    {
        m_Navigator.resize(208, 158);
        m_Navigator.SetViewRect(SeenOf(*view));
        m_Navigator.SetDocument(view->GetModel()->GetDocument(), view->GetColorTransform());
        m_Scale.setRange(5, 4000);
        m_Scale.setValue(view->GetScale() * 100);
        connect(&m_Scale, qOverload<double>(&QDoubleSpinBox::valueChanged), this, &Navigation::SetScale);
        connect(view, &ZKDocumentView::ScaleChanged, this, &Navigation::Follow);
        connect(view, &ZKDocumentView::SceneAreaChanged, this, &Navigation::Follow);
        connect(&m_Navigator, &NavigatorWidget::ViewRectPosChanged, view,
                [view](const QPoint& center) { view->centerOn(center); });
    }

    void SetScale(double percent)
    {
        ++m_Changes;
        const QPoint middle = m_pView->viewport()->rect().center();
        const QPointF point = m_pView->mapToScene(middle);
        m_pView->Scale(percent / 100 / m_pView->GetScale(), middle);
        m_pView->centerOn(point);
    }

    void Follow()
    {
        m_Navigator.SetViewRect(SeenOf(*m_pView));
        const QSignalBlocker blocker(m_Scale);
        m_Scale.setValue(m_pView->GetScale() * 100);
    }

    ZKDocumentView* m_pView;
    NavigatorWidget m_Navigator;
    QDoubleSpinBox m_Scale;
    int m_Changes = 0;
};
} // namespace

/// Small clients that use views, small pictures and samples as tools do.
class TestViewClients : public QObject
{
    Q_OBJECT

private slots:
    void zoomingKeepsTheMiddle_data();
    void zoomingKeepsTheMiddle();
    void zoomingThereAndBackComesHome();
    void aRectangleFillsTheView_data();
    void aRectangleFillsTheView();
    void aClickKeepsItsPoint();
    void aRubberBandLiesOnTheView();
    void theNavigatorFollowsTheView();
    void theScaleIsSetThroughThePanel_data();
    void theScaleIsSetThroughThePanel();
    void theFrameMovesTheView();
    void escapeBringsTheViewBack();
    void aMergedCopyIsReadWhileTheDocumentChanges();
    void handlesFollowSamplesThroughTheirHistory();
};

void TestViewClients::zoomingKeepsTheMiddle_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("even") << QSize(400, 300);
    QTest::newRow("odd") << QSize(401, 303);
}

void TestViewClients::zoomingKeepsTheMiddle()
{
    QFETCH(const QSize, size);
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document, size);
    view->Zoom(1, Middle(*view), false);
    view->centerOn(777, 1111);
    Zoomer zoomer(*view);
    for (const double scale : {2.0, 0.5, 4.0, 6.0, 8.0, 10.0, 1.0}) {
        const QPointF before = PointAt(*view, Middle(*view));
        zoomer.ZoomTo(scale);
        QCOMPARE(view->GetScale(), scale);
        // Two pixels of the screen, at the larger scale: the middle is a whole pixel, before and after.
        COMPARE_POINTS(PointAt(*view, Middle(*view)), before, 4 / qMin(1.0, scale));
    }
}

void TestViewClients::zoomingThereAndBackComesHome()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    view->centerOn(777, 1111);
    const QPointF before = PointAt(*view, Middle(*view));
    Zoomer zoomer(*view);
    for (int i = 0; i < 5; ++i)
        zoomer.ZoomAt(2, view->mapToScene(view->viewport()->rect().center()));
    QCOMPARE(view->GetScale(), 32.0);
    for (int i = 0; i < 5; ++i)
        zoomer.ZoomAt(0.5, view->mapToScene(view->viewport()->rect().center()));
    QCOMPARE(view->GetScale(), 1.0);
    COMPARE_POINTS(PointAt(*view, Middle(*view)), before, 2.0);
}

void TestViewClients::aRectangleFillsTheView_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::newRow("wide") << QRect(40, 60, 120, 30);
    QTest::newRow("high") << QRect(140, 20, 30, 120);
    QTest::newRow("at a corner") << QRect(0, 0, 60, 45);
    QTest::newRow("two pixels") << QRect(200, 100, 2, 2);
}

void TestViewClients::aRectangleFillsTheView()
{
    QFETCH(const QRect, rect);
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    view->centerOn(1500, 1000);
    const QRectF part = view->mapToScene(rect).boundingRect();
    Zoomer(*view).ZoomToRect(rect);
    const QRectF seen = SeenOf(*view);
    const double pixel = 2 / view->GetScale();
    QVERIFY(seen.adjusted(-pixel, -pixel, pixel, pixel).contains(part));
    COMPARE_POINTS(seen.center(), part.center(), 2 * pixel);
    const double share = qMax(part.width() / seen.width(), part.height() / seen.height());
    QVERIFY(view->GetScale() == ZKDocumentView::MaxScale || share > 0.95);
}

void TestViewClients::aClickKeepsItsPoint()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    view->centerOn(1500, 1000);
    for (const double factor : {2.0, 0.5}) {
        const QPointF point = view->mapToScene(100, 200);
        Zoomer(*view).ZoomAt(factor, point);
        COMPARE_POINTS(QPointF(view->mapFromScene(point)), QPointF(100, 200), 2.0);
    }
}

void TestViewClients::aRubberBandLiesOnTheView()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    QRubberBand band(QRubberBand::Rectangle, view.get());
    InputDriver input;
    const QPointF from = view->mapToScene(100, 80);
    const QPointF to = view->mapToScene(220, 160);
    input.PressInScene(view.get(), from);
    band.setGeometry(QRect(view->mapFromScene(from), QSize()));
    band.show();
    input.MoveInScene(view.get(), to);
    band.setGeometry(QRect(view->mapFromScene(from), view->mapFromScene(to)).normalized());
    // The band takes no mouse: the release reaches the view.
    QSignalSpy moved(view.get(), &ZKDocumentView::CursorMoved);
    input.MoveInScene(view.get(), from);
    QCOMPARE(moved.count(), 1);
    input.ReleaseInScene(view.get(), to);
    QCOMPARE(band.geometry(), QRect(QPoint(100, 80), QPoint(220, 160)));
}

void TestViewClients::theNavigatorFollowsTheView()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    Navigation panel(view.get());
    view->Zoom(2, Middle(*view), false);
    QCOMPARE(panel.m_Scale.value(), 200.0);
    QCOMPARE(panel.m_Navigator.GetViewRect(), SeenOf(*view));
    view->horizontalScrollBar()->setValue(view->horizontalScrollBar()->value() + 50);
    QCOMPARE(panel.m_Navigator.GetViewRect(), SeenOf(*view));
    view->resize(300, 200);
    QCOMPARE(panel.m_Navigator.GetViewRect(), SeenOf(*view));
    // None of it went back into the view.
    QCOMPARE(panel.m_Changes, 0);
}

void TestViewClients::theScaleIsSetThroughThePanel_data()
{
    QTest::addColumn<double>("percent");
    for (const double percent : {5.0, 25.0, 50.0, 100.0, 130.0, 200.0, 3200.0, 4000.0})
        QTest::addRow("%g", percent) << percent;
}

void TestViewClients::theScaleIsSetThroughThePanel()
{
    QFETCH(const double, percent);
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    Navigation panel(view.get());
    panel.m_Scale.setValue(percent);
    // The view has exactly these scales, so the box doesn't change by itself.
    QCOMPARE(view->GetScale(), percent / 100);
    QCOMPARE(panel.m_Scale.value(), percent);
    QCOMPARE(panel.m_Navigator.GetViewRect(), SeenOf(*view));
}

void TestViewClients::theFrameMovesTheView()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    Navigation panel(view.get());
    panel.m_Navigator.show();
    QVERIFY(QTest::qWaitForWindowActive(&panel.m_Navigator));
    const QRect picture = panel.m_Navigator.GetPictureRect();
    InputDriver input;
    input.Press(&panel.m_Navigator, picture.center());
    input.Move(&panel.m_Navigator, picture.topLeft() + QPoint(1, 1));
    // The corner of the canvas is seen, and not much beside it.
    COMPARE_POINTS(SeenOf(*view).topLeft(), QPointF(0, 0), 2.0);
    input.Release(&panel.m_Navigator, picture.bottomRight());
    COMPARE_POINTS(SeenOf(*view).bottomRight(), QPointF(3000, 2000), 3.0);
    input.Key(Qt::Key_Left, Qt::ShiftModifier);
    QVERIFY(SeenOf(*view).right() < 2700);
}

void TestViewClients::escapeBringsTheViewBack()
{
    const auto document = MakeDocument({3000, 2000});
    const auto view = ShowView(document);
    view->Zoom(2, Middle(*view), false);
    view->centerOn(900, 700);
    Navigation panel(view.get());
    panel.m_Navigator.show();
    QVERIFY(QTest::qWaitForWindowActive(&panel.m_Navigator));
    const QRectF before = SeenOf(*view);
    const QRect picture = panel.m_Navigator.GetPictureRect();
    InputDriver input;
    for (const QPoint& from :
         {picture.bottomRight() - QPoint(5, 5),
          picture.topLeft() + QPoint(picture.width() * 9 / 30, picture.height() * 7 / 20)}) {
        input.Press(&panel.m_Navigator, from);
        input.Move(&panel.m_Navigator, from - QPoint(20, 30));
        QVERIFY(SeenOf(*view) != before);
        input.Key(Qt::Key_Escape);
        COMPARE_POINTS(SeenOf(*view).center(), before.center(), 1.0);
        input.Move(&panel.m_Navigator, from);
        input.Release(&panel.m_Navigator, from);
        COMPARE_POINTS(SeenOf(*view).center(), before.center(), 1.0);
    }
}

void TestViewClients::aMergedCopyIsReadWhileTheDocumentChanges()
{
    auto document = MakeDocument({300, 200}, QColor(200, 100, 50));
    const auto view = ShowView(document);
    CameraView glass;
    glass.resize(160, 120);

    QFutureWatcher<LXDocumentInterface*> watcher;
    QSignalSpy finished(&watcher, &QFutureWatcherBase::finished);
    LXDocumentInterface* source = document.get();
    watcher.setFuture(QtConcurrent::run([source] {
        LXDocumentInterface* copy = LXDocumentFactory::Instance()->Copy(source);
        // Composed where it is made, not where it is shown.
        const LXDocumentLayerLockerForRead locker(copy, 0);
        return copy;
    }));
    QVERIFY(finished.wait(Limit));
    const GuiFixture::OwnedDocument copy(watcher.result());
    glass.SetDocument(copy.get(), 0);
    glass.SetLookPoint({10, 10});
    document->AddLayer("Above", GuiFixture::MakeImage({300, 200}, [](int, int) { return qRgb(0, 0, 255); }),
                       QPoint(0, 0));

    const std::shared_ptr<const LXColorTransformBase> toScreen = view->GetColorTransform();
    const QColor kept = LXColorInfoHelper::AverageColor(copy.get(), 0, {10, 10}, 3, *toScreen);
    QCOMPARE(kept, QColor(200, 100, 50));
    QCOMPARE(glass.grab().toImage().pixelColor(80, 60), kept);
    QCOMPARE(LXColorInfoHelper::AverageColor(document.get(), 0, {10, 10}, 3, *toScreen), QColor(0, 0, 255));
    QVERIFY(!LXColorInfoHelper::AverageColor(copy.get(), 0, {300, 10}, 3, *toScreen).isValid());
    // The transform outlives view and document.
    document->SetDocumentName("gone");
    glass.SetDocument(nullptr, 0);
}

namespace {
/// Puts a handle on each sample.
class SampleHandles : public QObject
{
public:
    explicit SampleHandles(ZKDocumentView* view)
        : m_pView(view), m_pSamples(view->GetModel()->GetDocument()->GetColorSamples())
    {
        connect(m_pSamples, &LXColorSampleModel::SampleInserted, this, &SampleHandles::Insert);
        connect(m_pSamples, &LXColorSampleModel::SampleRemoved, this, [this](int row) {
            delete m_Nodes.takeAt(row);
            Number();
        });
        connect(m_pSamples, &LXColorSampleModel::SamplePosChanged, this, [this](int row) {
            const QSignalBlocker blocker(m_Nodes[row]);
            m_Nodes[row]->setPos(m_pSamples->GetPoint(row));
        });
    }

    ~SampleHandles() override { qDeleteAll(m_Nodes); }

    Q_DISABLE_COPY(SampleHandles)

    void Insert(int row)
    {
        auto* node = new ControlNode;
        node->useInverseColor(true);
        node->setPos(m_pSamples->GetPoint(row));
        m_pView->scene()->addItem(node);
        m_Nodes.insert(row, node);
        Number();
        connect(node, &ControlNode::mousePressed, this,
                [this](ControlNode* pressed) { m_Pressed = m_pSamples->GetPoint(m_Nodes.indexOf(pressed)); });
        connect(node, &ControlNode::positionChanged, this, [this](ControlNode* moved, const QPointF& pos) {
            const QSize canvas = m_pSamples->GetDocument()->GetDocumentSize();
            const QPoint kept(qBound(0, int(pos.x()), canvas.width() - 1),
                              qBound(0, int(pos.y()), canvas.height() - 1));
            moved->setPos(kept);
            m_pSamples->SetPoint(m_Nodes.indexOf(moved), kept);
        });
        connect(node, &ControlNode::mouseReleased, this, &SampleHandles::Release);
    }

    void Release(ControlNode* node)
    {
        const int row = m_Nodes.indexOf(node);
        if (m_pSamples->GetPoint(row) == m_Pressed) return;
        auto* data = new ColorSamplesCommandDataMove;
        data->SetData(row, m_Pressed);
        Push(data, "Move sample point");
    }

    void Push(LexoCommandData* data, const QString& text) const
    {
        auto* command = new ColorSamplesCommand(m_pSamples->GetDocument());
        command->setText(text);
        QVERIFY(command->SetCommandData(data));
        m_pView->GetHistory()->push(command);
    }

    void Number()
    {
        for (int row = 0; row < m_Nodes.size(); ++row)
            m_Nodes[row]->setLabel(QString::number(row + 1), QFont());
    }

    /// "1: 5, 6".
    QStringList Told() const
    {
        QStringList lines;
        for (const ControlNode* node : m_Nodes)
            lines << QString("%1: %2, %3").arg(node->label()).arg(node->pos().x()).arg(node->pos().y());
        return lines;
    }

    ZKDocumentView* m_pView;
    LXColorSampleModel* m_pSamples;
    QList<ControlNode*> m_Nodes;
    QPoint m_Pressed;
};
} // namespace

void TestViewClients::handlesFollowSamplesThroughTheirHistory()
{
    const auto document = MakeDocument({300, 200});
    LexoUndoStack history;
    ZKDocumentView view(document.get(), &history);
    view.resize(400, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    view.ShowSampleMarks(false);
    SampleHandles handles(&view);
    for (const QPoint& point : {QPoint(50, 60), QPoint(150, 20), QPoint(250, 150)}) {
        auto* data = new ColorSamplesCommandDataAdd;
        data->SetSamplePoint(point);
        handles.Push(data, "Add sample point");
    }
    const QStringList three{"1: 50, 60", "2: 150, 20", "3: 250, 150"};
    QCOMPARE(handles.Told(), three);

    // A click on a handle is no step, a drag is one; it ends at the edge of the canvas.
    InputDriver input;
    input.ClickInScene(&view, {150, 20});
    QCOMPARE(history.count(), 3);
    input.DragInScene(&view, {{150, 20}, {170, 40}, {170, -60}});
    QCOMPARE(history.count(), 4);
    QCOMPARE(handles.Told(), (QStringList{"1: 50, 60", "2: 170, 0", "3: 250, 150"}));
    history.undo();
    QCOMPARE(handles.Told(), three);

    auto* removal = new ColorSamplesCommandDataRemove;
    removal->SetSamplePoint(0, handles.m_pSamples->GetPoint(0));
    handles.Push(removal, "Remove sample point");
    QCOMPARE(handles.Told(), (QStringList{"1: 150, 20", "2: 250, 150"}));
    auto* clear = new ColorSamplesCommandDataClear;
    clear->SetData({{150, 20}, {250, 150}});
    handles.Push(clear, "Clear color samples");
    QCOMPARE(handles.Told(), QStringList());
    history.undo();
    QCOMPARE(handles.Told(), (QStringList{"1: 150, 20", "2: 250, 150"}));
    history.undo();
    QCOMPARE(handles.Told(), three);
}

ZK_REGISTER_TEST(tst_viewclients, TestViewClients)
#include "tst_viewclients.moc"
