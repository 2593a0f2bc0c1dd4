#include "ViewFixture.h"

#include "geometryengine/ControlNode.h"
#include "geometryengine/PathStrokeItem.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QGuiApplication>
#include <QPainterPath>
#include <QPixmap>
#include <QScreen>
#include <QScrollBar>
#include <QTest>

using namespace ViewFixture;

/// Handles and lines over the picture of a document.
class TestSceneItems : public QObject
{
    Q_OBJECT

private slots:
    void aHandleFollowsThePointer_data();
    void aHandleFollowsThePointer();
    void aHandleLeavesPanningAlone();
    void theCursorOfAnItemIsSeenOnItAlone();
    void theHandIsSeenOnItemsToo();
    void aLineInInverseLeavesNothingBehind_data();
    void aLineInInverseLeavesNothingBehind();
    void aDragOfALineReadsLittleOfThePicture();
};

namespace {
void AddScales()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("0.05") << ZKDocumentView::MinScale;
    QTest::newRow("1") << 1.0;
    QTest::newRow("40") << ZKDocumentView::MaxScale;
}

ControlNode* AddNode(ZKDocumentView& view, const QPointF& pos)
{
    auto* node = new ControlNode;
    view.scene()->addItem(node);
    node->setPos(pos);
    return node;
}

PathStrokeItem* AddLine(ZKDocumentView& view)
{
    auto* line = new PathStrokeItem;
    line->useInverseColor(true);
    view.scene()->addItem(line);
    return line;
}

QPainterPath Line(const QPointF& from, const QPointF& to)
{
    QPainterPath path(from);
    path.lineTo(to);
    return path;
}

/// What the window shows, after all the partial repaints that led there.
QImage OnScreen(const ZKDocumentView& view)
{
    const QImage window = QGuiApplication::primaryScreen()->grabWindow(view.winId()).toImage();
    return window.copy(QRect(view.viewport()->pos(), view.viewport()->size()))
        .convertToFormat(QImage::Format_RGB32);
}
} // namespace

void TestSceneItems::aHandleFollowsThePointer_data()
{
    AddScales();
}

void TestSceneItems::aHandleFollowsThePointer()
{
    QFETCH(double, scale);
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({600, 400});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    view->Zoom(scale, Middle(*view), false);
    const QPointF start = PointAt(*view, Middle(*view));
    ControlNode* const node = AddNode(*view, start);
    InputDriver input;
    const QPointF from = PointAt(*view, Middle(*view) + QPointF(4, -6));
    const QPointF to = PointAt(*view, Middle(*view) + QPointF(-56, 34));
    input.DragInScene(view.get(), {from, to});
    COMPARE_POINTS((node->pos() - start) * scale, QPointF(-60, 40), 2.0);
    QCOMPARE(int(node->mouseButtonState()), 0);
}

void TestSceneItems::aHandleLeavesPanningAlone()
{
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({1000, 800});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    const QPointF start = PointAt(*view, Middle(*view));
    ControlNode* const node = AddNode(*view, start);
    const int before = view->horizontalScrollBar()->value();
    InputDriver input;
    const QPoint middle = Middle(*view).toPoint();
    input.Drag(view->viewport(), {middle, middle - QPoint(50, 0)}, Qt::MiddleButton);
    QCOMPARE(view->horizontalScrollBar()->value(), before + 50);
    QCOMPARE(node->pos(), start);
}

void TestSceneItems::theCursorOfAnItemIsSeenOnItAlone()
{
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({300, 200});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    AddNode(*view, {100, 100})->setCursor(Qt::PointingHandCursor);
    const auto seen = [&view] { return view->viewport()->cursor().shape(); };
    InputDriver input;
    view->setCursor(Qt::CrossCursor);
    input.MoveInScene(view.get(), {150, 100});
    QCOMPARE(seen(), Qt::CrossCursor);
    input.MoveInScene(view.get(), {100, 100});
    QCOMPARE(seen(), Qt::PointingHandCursor);
    // Another tool takes over while the pointer is on the handle.
    view->setCursor(Qt::IBeamCursor);
    QCOMPARE(seen(), Qt::PointingHandCursor);
    input.MoveInScene(view.get(), {150, 100});
    QCOMPARE(seen(), Qt::IBeamCursor);
    view->setCursor(Qt::ForbiddenCursor);
    QCOMPARE(seen(), Qt::ForbiddenCursor);
}

void TestSceneItems::theHandIsSeenOnItemsToo()
{
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({300, 200});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    AddNode(*view, {100, 100})->setCursor(Qt::PointingHandCursor);
    const auto seen = [&view] { return view->viewport()->cursor().shape(); };
    InputDriver input;
    view->setCursor(Qt::CrossCursor);
    input.MoveInScene(view.get(), {100, 100});
    view->EnablePanning(true);
    QCOMPARE(seen(), Qt::OpenHandCursor);
    input.MoveInScene(view.get(), {102, 100});
    QCOMPARE(seen(), Qt::OpenHandCursor);
    view->EnablePanning(false);
    input.MoveInScene(view.get(), {101, 100});
    QCOMPARE(seen(), Qt::PointingHandCursor);
    input.MoveInScene(view.get(), {150, 100});
    QCOMPARE(seen(), Qt::CrossCursor);
}

void TestSceneItems::aLineInInverseLeavesNothingBehind_data()
{
    AddScales();
}

void TestSceneItems::aLineInInverseLeavesNothingBehind()
{
    QFETCH(double, scale);
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({600, 400});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document);
    view->Zoom(scale, Middle(*view), false);
    QCoreApplication::processEvents();
    PathStrokeItem* const line = AddLine(*view);
    for (int turn = 0; turn < 30; ++turn) {
        const QPointF away((turn * 37) % 180 - 90, (turn * 53) % 140 - 70);
        line->setPath(Line(PointAt(*view, Middle(*view)), PointAt(*view, Middle(*view) + away)));
        if (turn % 10 == 9) view->horizontalScrollBar()->setValue(view->horizontalScrollBar()->value() + 7);
        QCoreApplication::processEvents();
    }
    QCOMPARE(OnScreen(*view), Shown(*view).convertToFormat(QImage::Format_RGB32));
    delete line;
    QCoreApplication::processEvents();
    QCOMPARE(OnScreen(*view), Shown(*view).convertToFormat(QImage::Format_RGB32));
}

void TestSceneItems::aDragOfALineReadsLittleOfThePicture()
{
    const GuiFixture::OwnedDocument document = GuiFixture::MakePhoto({600, 400});
    const std::unique_ptr<ZKDocumentView> view = ShowView(document, {600, 500});
    view->Zoom(1, Middle(*view), false);
    PathStrokeItem* const line = AddLine(*view);
    line->setPath(Line({10, 10}, {300, 200}));
    line->setPath(Line({10, 10}, {580, 380}));
    QCoreApplication::processEvents();
    PaintedRegion painted(view->viewport());
    line->setPath(Line({10, 10}, {580, 384}));
    QTRY_VERIFY(!painted.m_Region.isEmpty());
    qint64 pixels = 0;
    for (const QRect& rect : painted.m_Region)
        pixels += qint64(rect.width()) * rect.height();
    // The rectangle round the line holds 213000.
    QVERIFY2(pixels < 75000, qPrintable(QString::number(pixels)));
}

ZK_REGISTER_TEST(tst_sceneitems, TestSceneItems)

#include "tst_sceneitems.moc"
