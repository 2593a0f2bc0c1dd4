#include "IDocumentView.h"

#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "support/TestRegistry.h"
#include "support/ViewFixture.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsScene>
#include <QLineF>
#include <QMainWindow>
#include <QSignalSpy>
#include <QTest>

class TestDocumentView : public QObject
{
    Q_OBJECT

private slots:
    void itGivesWhatBelongsToTheView();
    void theLockIsTakenOnceByWhoever();
    void unlockIsAlwaysTrue();
    void stateChangesAreToldOnce();
    void anotherWidgetStartsAnew();
    void scalesAreClampedAndReturned_data();
    void scalesAreClampedAndReturned();
    void cursorsAreKeptAndRestored();
    void mappingsGoThereAndBack();
    void aMappedRectangleIsTheBoundOfItsPolygon();
    void itemsAreFoundByPointRectangleAndEllipse();
    void panningNeedsToBeEnabledAndAllowed();
    void theViewIsMovedToAPlace();
    void theViewIsMovedToShowSomething();
    void theWholeDocumentIsMadeToFit();
    void theCentreOfAScaleIsRounded();
    void scrollingMovesWhatTheWidgetShows();
    void withoutAMainWindowTheCentralRectIsNull();
    void theCentralRectIsThatOfTheCentralWidget();
};

void TestDocumentView::itGivesWhatBelongsToTheView()
{
    ViewFixture fixture;
    IDocumentView& view = fixture.ToolView();
    QCOMPARE(view.GetDocumentView(), fixture.View());
    QCOMPARE(view.GetDocument(), fixture.Document());
    QCOMPARE(view.GetHistory(), &fixture.History());
    QCOMPARE(view.Scene(), fixture.View()->scene());
    QCOMPARE(view.Rect(), fixture.View()->rect());
}

void TestDocumentView::theLockIsTakenOnceByWhoever()
{
    IDocumentView view;
    QVERIFY(view.Lock(this));
    QCOMPARE(view.GetState(), quint64(1));
    QVERIFY(!view.Lock(this));
    QVERIFY(!view.Lock(nullptr));
}

void TestDocumentView::unlockIsAlwaysTrue()
{
    IDocumentView view;
    QVERIFY(view.Unlock(this));
    view.Lock(this);
    QVERIFY(view.Unlock(nullptr));
    QCOMPARE(view.GetState(), quint64(0));
}

void TestDocumentView::stateChangesAreToldOnce()
{
    IDocumentView view;
    QSignalSpy changes(view.GetNotifier(), &DocumentViewNotifier::StateChanged);
    view.Lock(this);
    view.Lock(this);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes[0][0].toULongLong(), 0ULL);
    QCOMPARE(changes[0][1].toULongLong(), 1ULL);
    view.Unlock(this);
    view.Unlock(this);
    QCOMPARE(changes.count(), 2);
}

void TestDocumentView::anotherWidgetStartsAnew()
{
    ViewFixture fixture;
    IDocumentView& view = fixture.ToolView();
    view.SetCursor(Qt::CrossCursor);
    view.SetCursor(Qt::IBeamCursor);
    view.Lock(this);
    QSignalSpy changes(view.GetNotifier(), &DocumentViewNotifier::StateChanged);

    view.SetDocumentWidget(fixture.Widget());
    QCOMPARE(view.GetState(), quint64(0));
    QCOMPARE(changes.count(), 1);
    view.RestoreCursor();
    QCOMPARE(view.Cursor().shape(), Qt::ArrowCursor);
}

void TestDocumentView::scalesAreClampedAndReturned_data()
{
    QTest::addColumn<double>("wanted");
    QTest::addColumn<double>("scale");
    QTest::newRow("inside") << 2.0 << 2.0;
    QTest::newRow("too large") << 100.0 << 40.0;
    QTest::newRow("too small") << 0.01 << 0.05;
}

void TestDocumentView::scalesAreClampedAndReturned()
{
    QFETCH(double, wanted);
    QFETCH(double, scale);
    ViewFixture fixture;
    QCOMPARE(fixture.ToolView().SetScale(wanted, {10.4, 10.4}), scale);
    QCOMPARE(fixture.ToolView().GetScale(), scale);
}

void TestDocumentView::cursorsAreKeptAndRestored()
{
    ViewFixture fixture;
    fixture.View()->setCursor(Qt::CrossCursor);
    QVERIFY(fixture.ToolView().SetCursor(Qt::IBeamCursor));
    QCOMPARE(fixture.ToolView().Cursor().shape(), Qt::IBeamCursor);
    QVERIFY(fixture.ToolView().RestoreCursor());
    QCOMPARE(fixture.View()->cursor().shape(), Qt::CrossCursor);
}

void TestDocumentView::mappingsGoThereAndBack()
{
    ViewFixture fixture;
    IDocumentView& view = fixture.ToolView();
    const QPoint point(31, 17);
    QCOMPARE(view.MapFromGlobal(view.MapToGlobal(point)), point);
    QCOMPARE(view.MapFromScene(view.MapToScene(point)), point);
}

void TestDocumentView::aMappedRectangleIsTheBoundOfItsPolygon()
{
    ViewFixture fixture;
    IDocumentView& view = fixture.ToolView();
    view.SetScale(2.0, {});
    QCOMPARE(view.MapToScene(QRect(0, 0, 20, 10)).size(), QSizeF(10, 5));
    QCOMPARE(view.MapFromScene(QRectF(0, 0, 10, 5)),
             fixture.View()->mapFromScene(QRectF(0, 0, 10, 5)).boundingRect());
}

void TestDocumentView::itemsAreFoundByPointRectangleAndEllipse()
{
    ViewFixture fixture;
    IDocumentView& view = fixture.ToolView();
    auto* item = new QGraphicsEllipseItem(20, 20, 4, 4);
    fixture.View()->scene()->addItem(item);
    const QPoint middle = view.MapFromScene(QPointF(22, 22));

    QCOMPARE(view.ItemAt(middle), item);
    QVERIFY(view.Items().contains(item));
    QVERIFY(view.Items(middle).contains(item));
    QVERIFY(view.Items(QRect(middle, QSize(2, 2))).contains(item));
    QVERIFY(!view.ItemAt(middle + QPoint(30, 0)));
    QVERIFY(view.ItemsInEllipse(middle + QPoint(12, 0), 15, 5).contains(item));
    QVERIFY(!view.ItemsInEllipse(middle + QPoint(40, 0), 15, 5).contains(item));
}

void TestDocumentView::panningNeedsToBeEnabledAndAllowed()
{
    ViewFixture fixture;
    IDocumentView& view = fixture.ToolView();
    QVERIFY(!view.IsPanning());
    fixture.View()->EnablePanning(true);
    QVERIFY(view.IsPanning());
    view.DisablePanning();
    QVERIFY(!view.IsPanning());
}

void TestDocumentView::theViewIsMovedToAPlace()
{
    ViewFixture fixture(600, 600);
    IDocumentView& view = fixture.ToolView();
    auto* item = new QGraphicsEllipseItem(498, 98, 4, 4);
    fixture.View()->scene()->addItem(item);
    view.SetScale(4.0, {});
    const auto distanceTo = [&](const QPointF& scenePos) {
        return QLineF(view.MapToScene(view.Rect()).center(), scenePos).length();
    };

    view.CenterOn(QPointF(300, 200));
    QVERIFY(distanceTo({300, 200}) < 5);
    view.CenterOn(200, 400);
    QVERIFY(distanceTo({200, 400}) < 5);
    view.CenterOn(item);
    QVERIFY(distanceTo({500, 100}) < 5);
}

void TestDocumentView::theViewIsMovedToShowSomething()
{
    ViewFixture fixture(600, 600);
    IDocumentView& view = fixture.ToolView();
    auto* item = new QGraphicsEllipseItem(498, 98, 4, 4);
    fixture.View()->scene()->addItem(item);
    view.SetScale(4.0, {});
    view.CenterOn(QPointF(300, 300));

    QVERIFY(!view.MapToScene(view.Rect()).contains(item->rect()));
    view.EnsureVisible(item);
    QVERIFY(view.MapToScene(view.Rect()).contains(item->rect()));
    const QRectF other(100, 500, 10, 10);
    QVERIFY(!view.MapToScene(view.Rect()).contains(other));
    view.EnsureVisible(other, 0, 0);
    QVERIFY(view.MapToScene(view.Rect()).contains(other));
}

void TestDocumentView::theWholeDocumentIsMadeToFit()
{
    ViewFixture fixture(600, 600);
    IDocumentView& view = fixture.ToolView();
    view.SetScale(4.0, {});
    QVERIFY(!view.MapToScene(view.Rect()).contains(QRectF(0, 0, 600, 600)));
    view.FitSizeToViewPort();
    QVERIFY(view.GetScale() < 1.0);
    QVERIFY(view.MapToScene(view.Rect()).contains(QRectF(0, 0, 600, 600)));
}

void TestDocumentView::theCentreOfAScaleIsRounded()
{
    ViewFixture rough(600, 600);
    ViewFixture exact(600, 600);
    for (ViewFixture* fixture : {&rough, &exact}) {
        fixture->ToolView().SetScale(2.0, {});
        fixture->ToolView().CenterOn(QPointF(300, 300));
    }
    rough.ToolView().SetScale(8.0, {100.4, 80.6});
    exact.ToolView().SetScale(8.0, {100, 81});
    QCOMPARE(rough.ToolView().MapToScene(QPoint(0, 0)), exact.ToolView().MapToScene(QPoint(0, 0)));
}

void TestDocumentView::scrollingMovesWhatTheWidgetShows()
{
    ViewFixture fixture;
    auto* child = new QWidget(fixture.View());
    child->setGeometry(10, 20, 5, 5);
    fixture.ToolView().Scroll(7, -3);
    QCOMPARE(child->pos(), QPoint(17, 17));
}

void TestDocumentView::withoutAMainWindowTheCentralRectIsNull()
{
    QCOMPARE(IDocumentView::CentralRect(), QRect());
}

void TestDocumentView::theCentralRectIsThatOfTheCentralWidget()
{
    QMainWindow window;
    window.setCentralWidget(LXDocumentManager::GetDocumentArea());
    window.resize(500, 400);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(IDocumentView::CentralRect(), QRect({}, LXDocumentManager::GetDocumentArea()->size()));
}

ZK_REGISTER_TEST(tst_documentview, TestDocumentView)

#include "tst_documentview.moc"
