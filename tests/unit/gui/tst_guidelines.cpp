#include "GuiFixture.h"
#include "ViewFixture.h"

#include "support/TestRegistry.h"

#include <QCoreApplication>
#include <QTest>

using namespace ViewFixture;
using GuiFixture::MakeDocument;

namespace {
const QColor Guide(0x00, 0xb8, 0xd4);
} // namespace

/// Guides in a view.
class TestGuideLines : public QObject
{
    Q_OBJECT

private slots:
    void linesRunAcrossTheViewport();
    void theyLieOnTheEdgesOfPixelsAtAnyScale();
    void oldLinesGoWhenGuidesChange();
    void theyCanBeHidden();
    void aGuideFarAwayIsHarmless();
    void onlyTheLinesAreRepainted();
};

void TestGuideLines::linesRunAcrossTheViewport()
{
    const auto document = MakeDocument({64, 48});
    document->SetGuides({{Qt::Vertical, 20}, {Qt::Horizontal, 10}});
    const auto view = ShowView(document);
    view->Zoom(2, Middle(*view), false);
    const QImage shown = Shown(*view);
    const QPoint crossing = view->mapFromScene(QPointF(20, 10));
    for (const int y : {0, crossing.y(), shown.height() - 1}) {
        COMPARE_COLORS(shown.pixelColor(crossing.x(), y), Guide);
    }
    for (const int x : {0, crossing.x(), shown.width() - 1}) {
        COMPARE_COLORS(shown.pixelColor(x, crossing.y()), Guide);
    }
    COMPARE_COLORS(shown.pixelColor(crossing + QPoint(1, 1)), QColor(Qt::white));
    COMPARE_COLORS(shown.pixelColor(crossing - QPoint(1, 1)), QColor(Qt::white));
}

void TestGuideLines::theyLieOnTheEdgesOfPixelsAtAnyScale()
{
    const auto document = MakeDocument({64, 48});
    document->SetGuides({{Qt::Vertical, 32}});
    const auto view = ShowView(document);
    for (const double scale : {0.5, 1.0, 4.0}) {
        view->Zoom(scale, Middle(*view), false);
        const QPoint edge = view->mapFromScene(QPointF(32, 24));
        COMPARE_COLORS(Shown(*view).pixelColor(edge), Guide);
        QVERIFY(Shown(*view).pixelColor(edge - QPoint(1, 0)) != Guide);
    }
}

void TestGuideLines::oldLinesGoWhenGuidesChange()
{
    const auto document = MakeDocument({64, 48});
    document->SetGuides({{Qt::Vertical, 20}});
    const auto view = ShowView(document);
    view->Zoom(2, Middle(*view), false);
    const QPoint was = view->mapFromScene(QPointF(20, 10));
    const QPoint is = view->mapFromScene(QPointF(30, 10));
    COMPARE_COLORS(Shown(*view).pixelColor(was), Guide);
    document->SetGuides({{Qt::Vertical, 30}});
    COMPARE_COLORS(Shown(*view).pixelColor(was), QColor(Qt::white));
    COMPARE_COLORS(Shown(*view).pixelColor(is), Guide);
    document->SetGuides({});
    COMPARE_COLORS(Shown(*view).pixelColor(is), QColor(Qt::white));
}

void TestGuideLines::theyCanBeHidden()
{
    const auto document = MakeDocument({64, 48});
    document->SetGuides({{Qt::Vertical, 20}});
    const auto view = ShowView(document);
    view->Zoom(2, Middle(*view), false);
    const QPoint place = view->mapFromScene(QPointF(20, 10));
    QVERIFY(view->AreGuidesShown());
    view->ShowGuides(false);
    QVERIFY(!view->AreGuidesShown());
    COMPARE_COLORS(Shown(*view).pixelColor(place), QColor(Qt::white));
    view->ShowGuides(true);
    COMPARE_COLORS(Shown(*view).pixelColor(place), Guide);
}

void TestGuideLines::aGuideFarAwayIsHarmless()
{
    const auto document = MakeDocument({64, 48});
    document->SetGuides({{Qt::Vertical, 1e12}, {Qt::Horizontal, -1e12}});
    const auto view = ShowView(document);
    const QImage shown = Shown(*view);
    for (const QPoint& corner : {shown.rect().topLeft(), shown.rect().topRight(), shown.rect().bottomLeft(),
                                 shown.rect().bottomRight()}) {
        QVERIFY(shown.pixelColor(corner) != Guide);
    }
}

void TestGuideLines::onlyTheLinesAreRepainted()
{
    const auto document = MakeDocument({64, 48});
    const auto view = ShowView(document);
    QCoreApplication::processEvents();
    PaintedRegion painted(view->viewport());
    document->SetGuides({{Qt::Vertical, 20}});
    QTRY_VERIFY(!painted.m_Region.isEmpty());
    const int column = view->mapFromScene(QPointF(20, 10)).x();
    QCOMPARE(painted.m_Region.boundingRect(), QRect(column, 0, 1, view->viewport()->height()));
}

ZK_REGISTER_TEST(tst_guidelines, TestGuideLines)
#include "tst_guidelines.moc"
