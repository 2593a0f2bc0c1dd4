#include "GuiFixture.h"
#include "ViewFixture.h"

#include "document/LXColorSampleModel.h"
#include "document/LXPathsListModel.h"
#include "gui/ZKDocumentView.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QItemSelectionModel>
#include <QSignalSpy>
#include <QTest>

using namespace ViewFixture;
using namespace PathFixture;
using GuiFixture::MakeDocument;

/// The outlines of paths and the marks of color samples that a view draws over its picture.
class TestPathOutlines : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void currentPathHasAnOutlineWithAHalo();
    void outlineKeepsItsWidthAtAnyScale();
    void pathThatIsNotCurrentShowsNothing();
    void pathThatIsAlwaysSeenIsDimmer();
    void outlineFollowsThePath();
    void changeOfThePathRepaintsItsPlaceOnly();
    void outlineGoesWithTheChoice();
    void outlineOfARemovedPathGoes();
    void pathFarBeyondTheCanvasIsHarmless();
    void eachViewHasItsOwnCurrentPath();
    void orderIsBlockedAndTold();

    void samplesAreMarkedWithTheirNumbers();
    void marksKeepTheirSizeAtAnyScale();
    void marksFollowTheSamples();
    void marksCanBeSwitchedOff();

private:
    LXPathsListModel* Paths() const { return m_pDocument->GetPathListModel(); }

    LXColorSampleModel* Samples() const { return m_pDocument->GetColorSamples(); }

    void Choose(int row) const
    {
        m_pView->GetPathSelection()->setCurrentIndex(Paths()->index(row),
                                                     QItemSelectionModel::ClearAndSelect);
    }

    /// Whether the pixel of the green picture is covered by something.
    bool IsDrawnOn(int x, int y) const { return ShownAt(*m_pView, x, y) != QColor(Qt::green); }

    GuiFixture::OwnedDocument m_pDocument;
    std::unique_ptr<ZKDocumentView> m_pView;
};

/// A green picture of 200 x 150 at 1:1, with a path: a rectangle from (50, 50) to (100, 100).
void TestPathOutlines::init()
{
    m_pDocument = MakeDocument({200, 150}, Qt::green);
    Paths()->InsertPath(0, "path", {{Rectangle(QRectF(50, 50, 50, 50)), LXPathsListModel::Unite}});
    m_pView = ShowView(m_pDocument);
}

void TestPathOutlines::cleanup()
{
    m_pView.reset();
    m_pDocument.reset();
}

void TestPathOutlines::currentPathHasAnOutlineWithAHalo()
{
    Choose(0);
    // The line lies between the pixels 49 and 50, half on each; the halo one further on each side.
    for (const int x : {49, 50}) {
        QVERIFY(ShownAt(*m_pView, x, 75).green() < 200);
        QVERIFY(ShownAt(*m_pView, x, 75) != QColor(Qt::green));
    }
    for (const int x : {48, 51}) {
        const QColor halo = ShownAt(*m_pView, x, 75);
        QVERIFY(halo.red() > 60 && halo.green() > 200);
    }
    QVERIFY(!IsDrawnOn(46, 75));
    QVERIFY(!IsDrawnOn(75, 75));
}

void TestPathOutlines::outlineKeepsItsWidthAtAnyScale()
{
    Choose(0);
    for (const double scale : {0.5, 3.0}) {
        m_pView->Zoom(scale, Middle(*m_pView), false);
        const QImage shown = Shown(*m_pView);
        const QPoint edge = m_pView->mapFromScene(QPointF(50, 75));
        const auto isDrawn = [&](int away) {
            return shown.pixelColor(edge + QPoint(away, 0)) != QColor(Qt::green);
        };
        QVERIFY(isDrawn(0) && isDrawn(-1));
        QVERIFY(!isDrawn(4) && !isDrawn(-4));
    }
}

void TestPathOutlines::pathThatIsNotCurrentShowsNothing()
{
    QVERIFY(!IsDrawnOn(50, 75));
}

void TestPathOutlines::pathThatIsAlwaysSeenIsDimmer()
{
    Choose(0);
    const QColor current = ShownAt(*m_pView, 50, 75);
    m_pView->GetPathSelection()->clear();
    Paths()->SetPathVisible(0, true);
    QVERIFY(IsDrawnOn(50, 75));
    QVERIFY(ShownAt(*m_pView, 50, 75).green() > current.green());
    Paths()->SetPathVisible(0, false);
    QVERIFY(!IsDrawnOn(50, 75));
}

void TestPathOutlines::outlineFollowsThePath()
{
    Choose(0);
    Paths()->SetSubPath(0, 0, Rectangle(QRectF(60, 50, 50, 50)), false);
    QVERIFY(!IsDrawnOn(50, 75));
    QVERIFY(IsDrawnOn(60, 75));
}

void TestPathOutlines::changeOfThePathRepaintsItsPlaceOnly()
{
    Choose(0);
    QTest::qWait(0);
    PaintedRegion painted(m_pView->viewport());
    Paths()->SetSubPath(0, 0, Rectangle(QRectF(60, 50, 50, 50)), false);
    QTRY_VERIFY(!painted.m_Region.isEmpty());
    const QRect place(m_pView->mapFromScene(QPointF(50, 50)), m_pView->mapFromScene(QPointF(110, 100)));
    QVERIFY(place.adjusted(-6, -6, 6, 6).contains(painted.m_Region.boundingRect()));
    QVERIFY(painted.m_Region.contains(place.center()));
}

void TestPathOutlines::outlineGoesWithTheChoice()
{
    Choose(0);
    m_pView->GetPathSelection()->clear();
    QVERIFY(!IsDrawnOn(50, 75));
}

void TestPathOutlines::outlineOfARemovedPathGoes()
{
    Choose(0);
    Paths()->RemovePath(0);
    QVERIFY(!IsDrawnOn(50, 75));
}

void TestPathOutlines::pathFarBeyondTheCanvasIsHarmless()
{
    Paths()->SetPath(0, {{Rectangle(QRectF(-1e12, 75, 2e12, 1e12)), LXPathsListModel::Unite}});
    Choose(0);
    m_pView->Zoom(40, Middle(*m_pView), false);
    m_pView->Zoom(1, Middle(*m_pView), false);
    QVERIFY(!Shown(*m_pView).isNull());
}

void TestPathOutlines::eachViewHasItsOwnCurrentPath()
{
    ZKDocumentView other(m_pDocument.get(), nullptr);
    Choose(0);
    QVERIFY(!other.GetPathSelection()->hasSelection());
    QCOMPARE(other.GetPathSelection()->model(), Paths());
}

void TestPathOutlines::orderIsBlockedAndTold()
{
    QSignalSpy told(m_pView.get(), &ZKDocumentView::PathOrderOperationsBlocked);
    m_pView->BlockPathOrderOperations(true);
    m_pView->BlockPathOrderOperations(true);
    QVERIFY(m_pView->IsPathOrderBlocked());
    QVERIFY(!m_pView->IsLayerOrderBlocked());
    m_pView->BlockPathOrderOperations(false);
    QCOMPARE(told.count(), 2);
    QVERIFY(told[0][0].toBool());
    QVERIFY(!told[1][0].toBool());
}

void TestPathOutlines::samplesAreMarkedWithTheirNumbers()
{
    Samples()->InsertSample(0, {150, 30});
    // The ring leaves the pixel itself free.
    QVERIFY(!IsDrawnOn(150, 30));
    QVERIFY(IsDrawnOn(155, 30));
    QVERIFY(IsDrawnOn(150, 25));
    // The number stands to the right below.
    const QPoint corner = m_pView->mapFromScene(QPointF(157, 36));
    const QImage number = Shown(*m_pView).copy(QRect(corner, QSize(12, 12)));
    int dark = 0;
    for (int y = 0; y < number.height(); ++y) {
        for (int x = 0; x < number.width(); ++x)
            dark += number.pixelColor(x, y).green() < 100;
    }
    QVERIFY(dark > 3);
}

void TestPathOutlines::marksKeepTheirSizeAtAnyScale()
{
    Samples()->InsertSample(0, {100, 75});
    m_pView->Zoom(4, Middle(*m_pView), false);
    const QImage shown = Shown(*m_pView);
    const QPoint middle = m_pView->mapFromScene(QPointF(100.5, 75.5));
    QVERIFY(shown.pixelColor(middle) == QColor(Qt::green));
    QVERIFY(shown.pixelColor(middle - QPoint(5, 0)) != QColor(Qt::green));
    QVERIFY(shown.pixelColor(middle - QPoint(14, 0)) == QColor(Qt::green));
}

void TestPathOutlines::marksFollowTheSamples()
{
    Samples()->InsertSample(0, {150, 30});
    Samples()->SetPoint(0, {30, 120});
    QVERIFY(!IsDrawnOn(155, 30));
    QVERIFY(IsDrawnOn(35, 120));
    Samples()->RemoveSample(0);
    QVERIFY(!IsDrawnOn(35, 120));
}

void TestPathOutlines::marksCanBeSwitchedOff()
{
    Samples()->InsertSample(0, {150, 30});
    QVERIFY(m_pView->AreSampleMarksShown());
    m_pView->ShowSampleMarks(false);
    QVERIFY(!m_pView->AreSampleMarksShown());
    QVERIFY(!IsDrawnOn(155, 30));
    m_pView->ShowSampleMarks(true);
    QVERIFY(IsDrawnOn(155, 30));
}

ZK_REGISTER_TEST(tst_pathoutlines, TestPathOutlines)
#include "tst_pathoutlines.moc"
