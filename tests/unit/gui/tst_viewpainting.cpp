#include "GuiFixture.h"
#include "ViewFixture.h"

#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView_p.h"
#include "image/LXImage.h"
#include "support/Settle.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QSignalSpy>
#include <QTest>

using namespace ViewFixture;
using GuiFixture::MakeDocument;

/// What a view shows, and that it repaints no more than has changed.
class TestViewPainting : public QObject
{
    Q_OBJECT

private slots:
    void pixelsStandWhereTheirSceneCoordinatesAre();
    void surroundIsNeutralAndTheCanvasHasAnEdge();
    void checkerDoesNotScale();
    void enlargedPixelsAreSharp();
    void gridStartsAtEight();
    void reducedPictureIsAMean();
    void changeRepaintsOnlyItsPlace();
    void changeOfOneLayerRowIsShown();
    void restingViewMakesNothing();
    void outlineOfTheSelectionIsShown();
    void outlineMarchesInItsPlaceOnly();
    void anotherSelectionRepaintsNoMoreThanBothOutlines();
    void outlineGoesWithTheSelection();
    void aPictureThatCannotBeComposedLeavesTheSurround();
};

namespace {
QRgb Quadrant(int x, int y)
{
    if (y < 24) return x < 32 ? 0xffff0000 : 0xff00ff00;
    return x < 32 ? 0xff0000ff : 0xffffff00;
}
} // namespace

void TestViewPainting::pixelsStandWhereTheirSceneCoordinatesAre()
{
    const auto document = MakeDocument({64, 48}, Quadrant);
    const auto view = ShowView(document);
    QCOMPARE(view->GetScale(), 1.0);
    COMPARE_COLORS(ShownAt(*view, 0, 0), QColor(Qt::red));
    COMPARE_COLORS(ShownAt(*view, 31, 23), QColor(Qt::red));
    COMPARE_COLORS(ShownAt(*view, 32, 23), QColor(Qt::green));
    COMPARE_COLORS(ShownAt(*view, 31, 24), QColor(Qt::blue));
    COMPARE_COLORS(ShownAt(*view, 63, 47), QColor(Qt::yellow));
}

void TestViewPainting::surroundIsNeutralAndTheCanvasHasAnEdge()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    const QColor surround = view->palette().color(QPalette::Dark);
    COMPARE_COLORS(ShownAt(*view, -2, 10), surround);
    COMPARE_COLORS(ShownAt(*view, 65, 47), surround);
    QVERIFY(ShownAt(*view, -1, 10) != surround);
    COMPARE_COLORS(ShownAt(*view, -1, 10), ShownAt(*view, 64, 48));
    COMPARE_COLORS(ShownAt(*view, 0, 10), QColor(Qt::white));
}

void TestViewPainting::checkerDoesNotScale()
{
    const auto document = MakeDocument({64, 48}, Qt::transparent);
    const auto view = ShowView(document);
    for (const double scale : {1.0, 4.0}) {
        view->Zoom(scale, Middle(*view), false);
        const QPoint corner = view->mapFromScene(QPointF(0, 0));
        const QImage shown = Shown(*view);
        const QColor first = shown.pixelColor(corner);
        const QColor second = shown.pixelColor(corner + QPoint(8, 0));
        QVERIFY(first != second);
        COMPARE_COLORS(shown.pixelColor(corner + QPoint(7, 7)), first);
        COMPARE_COLORS(shown.pixelColor(corner + QPoint(15, 0)), second);
        COMPARE_COLORS(shown.pixelColor(corner + QPoint(8, 8)), first);
    }
}

void TestViewPainting::enlargedPixelsAreSharp()
{
    const auto document = MakeDocument({64, 48}, Quadrant);
    const auto view = ShowView(document);
    view->Zoom(6, Middle(*view), false);
    const QImage shown = Shown(*view);
    const QPoint corner = view->mapFromScene(QPointF(32, 24));
    COMPARE_COLORS(shown.pixelColor(corner - QPoint(1, 1)), QColor(Qt::red));
    COMPARE_COLORS(shown.pixelColor(corner - QPoint(0, 1)), QColor(Qt::green));
    COMPARE_COLORS(shown.pixelColor(corner - QPoint(1, 0)), QColor(Qt::blue));
    COMPARE_COLORS(shown.pixelColor(corner), QColor(Qt::yellow));
}

void TestViewPainting::gridStartsAtEight()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    for (const double scale : {7.9, 8.0}) {
        view->Zoom(scale, Middle(*view), false);
        const QPoint between = view->mapFromScene(QPointF(30, 20)) + QPoint(0, 3);
        const QImage shown = Shown(*view);
        QCOMPARE(shown.pixelColor(between) != QColor(Qt::white), scale == 8.0);
        COMPARE_COLORS(shown.pixelColor(between + QPoint(3, 0)), QColor(Qt::white));
    }
}

void TestViewPainting::reducedPictureIsAMean()
{
    const auto document =
        MakeDocument({640, 480}, [](int x, int y) { return (x + y) % 2 ? 0xffffffff : 0xff000000; });
    const auto view = ShowView(document);
    view->Zoom(0.5, Middle(*view), false);
    COMPARE_COLORS(ShownAt(*view, 320, 240), QColor(128, 128, 128));
}

void TestViewPainting::changeRepaintsOnlyItsPlace()
{
    const auto document = MakeDocument({640, 480});
    const auto view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    Shown(*view);
    const qint64 madeBefore = ZKDocumentViewPrivate::Get(view.get())->MadePixels();
    PaintedRegion painted(view->viewport());

    const QRect place(300, 200, 20, 10);
    document->SetLayerImage(
        1,
        GuiFixture::MakeImage({640, 480},
                              [&](int x, int y) { return place.contains(x, y) ? 0xffff0000 : 0xffffffff; }),
        QPoint(0, 0));
    QCoreApplication::processEvents();
    Shown(*view);
    const qint64 madeForAll = ZKDocumentViewPrivate::Get(view.get())->MadePixels() - madeBefore;
    QVERIFY(madeForAll > 0);

    // Now a change that tells its rectangle.
    QCoreApplication::processEvents();
    painted.m_Region = QRegion();
    const qint64 made = ZKDocumentViewPrivate::Get(view.get())->MadePixels();
    document->LayerImageChanged(1, place);
    QTRY_VERIFY(!painted.m_Region.isEmpty());
    const QRect expected(view->mapFromScene(QPointF(place.topLeft())), place.size());
    QCOMPARE(painted.m_Region.boundingRect(), expected);
    QCOMPARE(ZKDocumentViewPrivate::Get(view.get())->MadePixels() - made, qint64(20 * 10));
    COMPARE_COLORS(ShownAt(*view, 310, 205), QColor(Qt::red));
}

void TestViewPainting::changeOfOneLayerRowIsShown()
{
    const auto document = MakeDocument({640, 480});
    const auto view = ShowView(document);
    Shown(*view);
    document->AddLayer("Spot", GuiFixture::MakeImage({10, 10}, [](int, int) { return 0xff0000ffu; }),
                       {600, 400});
    QCoreApplication::processEvents();
    COMPARE_COLORS(ShownAt(*view, 605, 405), QColor(Qt::blue));
    document->GetModel()->SetVisible(0, false);
    QCoreApplication::processEvents();
    COMPARE_COLORS(ShownAt(*view, 605, 405), QColor(Qt::white));
}

void TestViewPainting::restingViewMakesNothing()
{
    const auto document = MakeDocument({640, 480});
    const auto view = ShowView(document);
    Shown(*view);
    const qint64 made = ZKDocumentViewPrivate::Get(view.get())->MadePixels();
    Shown(*view);
    view->viewport()->update();
    QCoreApplication::processEvents();
    QCOMPARE(ZKDocumentViewPrivate::Get(view.get())->MadePixels(), made);
}

void TestViewPainting::outlineOfTheSelectionIsShown()
{
    const auto document = MakeDocument({64, 48}, QColor(200, 40, 40));
    document->SetSelectionMask(GuiFixture::MakeImage({20, 10}, [](int, int) { return 0xff000000; }),
                               {10, 20});
    const auto view = ShowView(document);
    view->Zoom(4, Middle(*view), false);
    const QImage shown = Shown(*view);
    const QPoint corner = view->mapFromScene(QPointF(10, 20));
    const auto isDash = [&](const QPoint& offset) {
        const QColor color = shown.pixelColor(corner + offset);
        return color == Qt::black || color == Qt::white;
    };
    for (int x = 0; x < 20 * 4; ++x)
        QVERIFY(isDash({x, 0}) && isDash({x, 10 * 4}));
    for (int y = 0; y < 10 * 4; ++y)
        QVERIFY(isDash({0, y}) && isDash({20 * 4, y}));
    QVERIFY(!isDash({-1, 5}) && !isDash({1, 5}) && !isDash({40, 20}) && !isDash({20 * 4 + 1, 5}));
    // Four black pixels, four white ones.
    int changes = 0;
    for (int x = 1; x < 17; ++x) {
        changes += shown.pixel(corner + QPoint(x, 0)) != shown.pixel(corner + QPoint(x - 1, 0)) ? 1 : 0;
    }
    QCOMPARE(changes, 4);
}

void TestViewPainting::outlineMarchesInItsPlaceOnly()
{
    const auto document = MakeDocument({640, 480});
    document->SetSelectionMask(GuiFixture::MakeImage({100, 80}, [](int, int) { return 0xff000000; }),
                               {300, 200});
    const auto view = ShowView(document, {700, 600});
    const QImage before = Shown(*view);
    PaintedRegion painted(view->viewport());
    QTRY_VERIFY(!painted.m_Region.isEmpty());
    const QRegion marched = painted.m_Region;
    QVERIFY(Shown(*view) != before);
    const QRect selection(view->mapFromScene(QPointF(300, 200)), QSize(100, 80));
    QVERIFY(selection.adjusted(-32, -32, 32, 32).contains(marched.boundingRect()));
    QVERIFY(!marched.contains(selection.center()));
}

void TestViewPainting::anotherSelectionRepaintsNoMoreThanBothOutlines()
{
    const auto select = [](LXDocumentInterface& document, const QRect& rect) {
        document.SetSelectionMask(GuiFixture::MakeImage(rect.size(), [](int, int) { return 0xff000000; }),
                                  rect.topLeft());
    };
    const auto document = MakeDocument({640, 480});
    const auto view = ShowView(document, {700, 600});
    select(*document, QRect(300, 200, 200, 180));
    QCoreApplication::processEvents();
    PaintedRegion painted(view->viewport());
    select(*document, QRect(20, 30, 150, 140));
    QCoreApplication::processEvents();
    for (const QPoint& middle : {QPoint(400, 290), QPoint(95, 100)})
        QVERIFY(!painted.m_Region.contains(view->mapFromScene(middle)));
    for (const QPoint& onOutline : {QPoint(300, 290), QPoint(400, 380), QPoint(500, 290), QPoint(20, 100),
                                    QPoint(95, 30), QPoint(170, 100)})
        QVERIFY(painted.m_Region.contains(view->mapFromScene(onOutline)));
}

void TestViewPainting::outlineGoesWithTheSelection()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    const QImage without = Shown(*view);
    document->SetSelectionMask(GuiFixture::MakeImage({20, 10}, [](int, int) { return 0xff000000; }),
                               {10, 20});
    QCoreApplication::processEvents();
    QVERIFY(Shown(*view) != without);
    QVERIFY(ZKDocumentViewPrivate::Get(view.get())->Ants().IsMarching());
    document->SetSelectionMask(LXImage32(), {0, 0});
    QCoreApplication::processEvents();
    QCOMPARE(Shown(*view), without);
    QVERIFY(!ZKDocumentViewPrivate::Get(view.get())->Ants().IsMarching());
}

/// Told once, and not painted over and over.
void TestViewPainting::aPictureThatCannotBeComposedLeavesTheSurround()
{
    const auto document = MakeDocument({64, 48}, Quadrant);
    const auto view = ShowView(document);
    const QColor surround = view->palette().color(QPalette::Dark);
    COMPARE_COLORS(ShownAt(*view, 1, 1), QColor(Qt::red));
    QSignalSpy told(ZKDocumentViewPrivate::Get(view.get()), &ZKDocumentViewPrivate::CouldNotPaint);
    // What is shared can't be written without a tile of its own.
    const LXImage32 shared = *document->GetLayerImage(0);
    document->GetLayerImage(1)->SetColor(5, 5, LXRGBA32i(0x80FFFFFF));
    SettleEvents();
    document->LayerImageChanged(1, QRect());
    for (int i = 0; i < 2; ++i) {
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
        const QImage shown = Shown(*view);
        FaultSeams::Reset();
        COMPARE_COLORS(shown.pixelColor(view->mapFromScene(QPointF(1.5, 1.5))), surround);
        COMPARE_COLORS(shown.pixelColor(0, 0), surround);
        QCOMPARE(told.count(), 1);
    }
    // The repaint that the change asked for fails like those, and asks for no other, which would succeed.
    const qint64 made = ZKDocumentViewPrivate::Get(view.get())->MadePixels();
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    SettleEvents();
    QVERIFY(!FaultSeams::Pass(FaultSeams::Seam::TileAllocation));
    QCOMPARE(ZKDocumentViewPrivate::Get(view.get())->MadePixels(), made);

    COMPARE_COLORS(ShownAt(*view, 1, 1), QColor(Qt::red));
    QCOMPARE(told.count(), 1);
}

ZK_REGISTER_TEST(tst_viewpainting, TestViewPainting)
#include "tst_viewpainting.moc"
