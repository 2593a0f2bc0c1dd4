#include "GuiFixture.h"
#include "ViewFixture.h"

#include "core/ZKCMSManager.h"
#include "document/LXColorTransformBase.h"
#include "gui/DisplayColors.h"
#include "gui/NavigatorWidget.h"
#include "gui/NavigatorWidget_p.h"
#include "image/LXImage.h"
#include "resource/Theme.h"
#include "scripting/InputDriver.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QSignalSpy>
#include <QTest>

using GuiFixture::MakeDocument;
using GuiFixture::MakeImage;

namespace {
constexpr int Limit = 10000; ///< milliseconds

/// Swaps red and blue.
struct Swapping : LXColorTransformBase
{
    void operator()(QColor& color) const override
    {
        color = QColor(color.blue(), color.green(), color.red(), color.alpha());
    }
};

/// May be moved to screens with finer pixels.
class MovableNavigator : public NavigatorWidget
{
public:
    void MoveToScreen(int ratio)
    {
        m_Ratio = ratio;
        QEvent moved(QEvent::ScreenChangeInternal);
        QCoreApplication::sendEvent(this, &moved);
    }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        if (metric == PdmDevicePixelRatio) return m_Ratio;
        if (metric == PdmDevicePixelRatioScaled) return int(m_Ratio * devicePixelRatioFScale());
        return NavigatorWidget::metric(metric);
    }

private:
    int m_Ratio = 1;
};

/// Red on the left half, green on the right one, darker below.
QRgb ColorAt(int x, int y)
{
    const int value = y < 200 ? 255 : 128;
    return x < 400 ? qRgb(value, 0, 0) : qRgb(0, value, 0);
}
} // namespace

/// The small picture with the frame of the view.
class TestNavigatorWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theWholeCanvasIsShown();
    void onlyWhatChangedIsMadeAnew();
    void onlyWhatChangedIsPaintedAnew();
    void changesAreShownWhenAskedFor();
    void colorsAreThoseOfTheScreen();
    void withoutATransformTheProfilesGiveIt();
    void anotherProfileReplacesTheTransform();
    void aFineScreenGetsFinePixels();
    void anotherScreenGetsItsOwnPixels();
    void aSmallPictureIsEnlargedWithSharpPixels();
    void transparencyIsAChecker();
    void anotherCanvasIsShown();
    void aLargeCanvasIsNeverMadeInFull();
    void anotherSizeOfTheWidgetKeepsThePicture();
    void withoutRoomThePictureStays();
    void hiddenItMakesNothing();
    void theFrameStandsWhereItIsSet();
    void theFrameMayBeSetBeforeTheDocument();
    void aPressBesideTheFrameBringsItThere();
    void aDragBesideTheFrameGoesOn();
    void aDragTakesTheFrameWhereItIsHeld();
    void aClickInsideTheFrameBringsItsMiddle();
    void theFrameIsKeptOnTheCanvas();
    void escapeEndsADragWhereItBegan();
    void otherButtonsEndADrag();
    void arrowsMoveTheFrame();
    void arrowsStopAtTheEdge();
    void withoutADocumentNothingIsAsked();
    void aDocumentThatGoesLeavesNothing();
    void failedPartsComeWithTheNextRebuild();
    void bothLooksHaveTheirSurround();
    void itCanBeReachedAndHasAName();

private:
    bool WaitUntilMade() const
    {
        return QTest::qWaitFor([this] { return !m_pNavigator->IsRebuilding(); }, Limit);
    }

    QColor Surround() const { return m_pNavigator->palette().color(QPalette::Dark).rgb(); }

    QImage Shown() const { return m_pNavigator->grab().toImage(); }

    QPoint WidgetPoint(const QPointF& docPoint) const
    {
        return NavigatorWidgetPrivate::Get(m_pNavigator.get())
            ->Place()
            .ToWidget(QRectF(docPoint, QSizeF(0, 0)))
            .topLeft()
            .toPoint();
    }

    QColor ShownAt(const QPointF& docPoint) const { return Shown().pixelColor(WidgetPoint(docPoint)); }

    qint64 TakenTiles() const
    {
        return NavigatorWidgetPrivate::Get(m_pNavigator.get())->Survey().TakenTiles();
    }

    /// The points that the widget asked for.
    QVector<QPoint> Asked()
    {
        QVector<QPoint> points;
        for (const QVariantList& arguments : *m_pAsked)
            points.append(arguments.first().toPoint());
        m_pAsked->clear();
        return points;
    }

    GuiFixture::OwnedDocument m_pDocument;
    std::unique_ptr<NavigatorWidget> m_pNavigator;
    std::unique_ptr<QSignalSpy> m_pAsked;
};

void TestNavigatorWidget::init()
{
    m_pDocument = MakeDocument({800, 400}, &ColorAt);
    m_pNavigator = std::make_unique<NavigatorWidget>();
    m_pNavigator->resize(208, 158); // 1 : 4 with its padding
    m_pNavigator->SetDocument(m_pDocument.get(), nullptr);
    m_pNavigator->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pNavigator.get()));
    QVERIFY(WaitUntilMade());
    m_pAsked = std::make_unique<QSignalSpy>(m_pNavigator.get(), &NavigatorWidget::ViewRectPosChanged);
}

void TestNavigatorWidget::cleanup()
{
    FaultSeams::Reset();
    ZKCMSManager::GetInstance()->SetDisplay(ZKCMSProfile(), {});
    m_pAsked.reset();
    m_pNavigator.reset();
    m_pDocument.reset();
}

void TestNavigatorWidget::theWholeCanvasIsShown()
{
    QCOMPARE(m_pNavigator->GetPictureRect(), QRect(4, 29, 200, 100));
    for (const QPoint& point :
         {QPoint(2, 2), QPoint(390, 20), QPoint(410, 20), QPoint(797, 2), QPoint(2, 397), QPoint(797, 397)})
        QCOMPARE(ShownAt(point), QColor(ColorAt(point.x(), point.y())));
    QCOMPARE(QColor(Shown().pixel(100, 10)), Surround());
}

void TestNavigatorWidget::onlyWhatChangedIsMadeAnew()
{
    QCOMPARE(TakenTiles(), 7 * 4);
    m_pDocument->SetLayerImage(1, MakeImage({800, 400}, [](int, int) { return qRgb(0, 0, 255); }), {0, 0});
    m_pDocument->LayerImageChanged(1, QRect(0, 0, 10, 10));
    m_pNavigator->RebuildView();
    QVERIFY(WaitUntilMade());
    QVERIFY(TakenTiles() > 7 * 4);
    const qint64 before = TakenTiles();
    m_pDocument->LayerImageChanged(1, QRect(130, 130, 10, 10));
    m_pNavigator->RebuildView();
    QVERIFY(WaitUntilMade());
    QCOMPARE(TakenTiles(), before + 1);
    QCOMPARE(ShownAt({135, 135}), QColor(Qt::blue));
}

void TestNavigatorWidget::onlyWhatChangedIsPaintedAnew()
{
    QCoreApplication::processEvents();
    ViewFixture::PaintedRegion painted(m_pNavigator.get());
    m_pDocument->LayerImageChanged(1, QRect(10, 10, 10, 10));
    m_pNavigator->RebuildView();
    QVERIFY(WaitUntilMade());
    QTRY_VERIFY_WITH_TIMEOUT(!painted.m_Region.isEmpty(), Limit);
    QVERIFY(painted.m_Region.boundingRect().width() < 60);
}

void TestNavigatorWidget::changesAreShownWhenAskedFor()
{
    m_pDocument->SetLayerImage(1, MakeImage({800, 400}, [](int, int) { return qRgb(0, 0, 255); }), {0, 0});
    m_pDocument->UpdateDocumentRect(QRect());
    QCoreApplication::processEvents();
    QCOMPARE(ShownAt({20, 20}), QColor(Qt::red));
    m_pNavigator->RebuildView();
    QVERIFY(WaitUntilMade());
    QCOMPARE(ShownAt({20, 20}), QColor(Qt::blue));
}

void TestNavigatorWidget::colorsAreThoseOfTheScreen()
{
    m_pNavigator->SetDocument(m_pDocument.get(), std::make_shared<Swapping>());
    QVERIFY(WaitUntilMade());
    QCOMPARE(ShownAt({20, 20}), QColor(Qt::blue));
    QCOMPARE(ShownAt({700, 20}), QColor(Qt::green));
}

void TestNavigatorWidget::withoutATransformTheProfilesGiveIt()
{
    const QColor paint(200, 90, 40);
    const auto document = MakeDocument({800, 400}, paint);
    document->SetICCProfile(IccProfiles::AdobeRgb());
    m_pNavigator->SetDocument(document.get(), nullptr);
    QVERIFY(WaitUntilMade());
    const QColor shown = DisplayColors::Shown(document.get(), paint);
    QVERIFY(shown != paint);
    QCOMPARE(ShownAt({20, 20}), QColor(shown.rgb()));
    ZKCMSManager::GetInstance()->SetDisplay(IccProfiles::AdobeRgb(), {});
    QVERIFY(WaitUntilMade());
    QCOMPARE(ShownAt({20, 20}), paint);
    document->SetICCProfile(ZKCMSProfile());
    QVERIFY(WaitUntilMade());
    QCOMPARE(ShownAt({20, 20}), QColor(DisplayColors::Shown(document.get(), paint).rgb()));
    // One that is given is all there is.
    m_pNavigator->SetDocument(document.get(), std::make_shared<Swapping>());
    QVERIFY(WaitUntilMade());
    QCOMPARE(ShownAt({20, 20}), QColor(40, 90, 200));
}

void TestNavigatorWidget::anotherProfileReplacesTheTransform()
{
    m_pNavigator->SetDocument(m_pDocument.get(), std::make_shared<Swapping>());
    ZKCMSManager::GetInstance()->SetDisplay(IccProfiles::AdobeRgb(), {});
    QVERIFY(WaitUntilMade());
    QImage red(1, 1, QImage::Format_ARGB32);
    red.fill(Qt::red);
    QCOMPARE(ShownAt({20, 20}), DisplayColors::Shown(m_pDocument.get(), red).pixelColor(0, 0));
}

void TestNavigatorWidget::aFineScreenGetsFinePixels()
{
    // Stripes of two pixels: at 1 : 4 they melt, on a screen twice as fine at 1 : 2 they don't.
    const auto striped =
        MakeDocument({800, 400}, [](int x, int) { return x / 2 % 2 ? qRgb(255, 255, 255) : qRgb(0, 0, 0); });
    m_pNavigator->SetDocument(striped.get(), nullptr);
    QVERIFY(WaitUntilMade());
    QCOMPARE(ShownAt({400, 200}), QColor(128, 128, 128));
    QCOMPARE(NavigatorPlace({800, 400}, QRect(0, 0, 200, 100)).Level(2), 1);

    PictureSurvey::Batch batch;
    batch.picture = MakeImage({800, 400}, [](int x, int) { return x / 2 % 2 ? 0xFFFFFFFFU : 0xFF000000U; });
    batch.tiles = {{1, 0}};
    const auto pieces = NavigatorPicture::Reduce(batch, 1, nullptr);
    QCOMPARE(pieces.front().first, QPoint(64, 0));
    QCOMPARE(pieces.front().second.pixel(0, 0), 0xFF000000U);
    QCOMPARE(pieces.front().second.pixel(1, 0), 0xFFFFFFFFU);
}

void TestNavigatorWidget::anotherScreenGetsItsOwnPixels()
{
    const auto striped =
        MakeDocument({800, 400}, [](int x, int) { return x / 2 % 2 ? qRgb(255, 255, 255) : qRgb(0, 0, 0); });
    MovableNavigator navigator;
    navigator.resize(208, 158);
    navigator.SetDocument(striped.get(), nullptr);
    navigator.show();
    const auto isMade = [&navigator] { return !navigator.IsRebuilding(); };
    QVERIFY(QTest::qWaitFor(isMade, Limit));
    // Two columns of the screen for each pair of stripes, as they would be seen there.
    const auto shown = [&navigator] {
        QImage picture(navigator.size() * 2, QImage::Format_RGB32);
        picture.setDevicePixelRatio(2);
        navigator.render(&picture);
        return QVector<QRgb>({picture.pixel(208, 158), picture.pixel(209, 158)});
    };
    const QVector<QRgb> melted(2, qRgb(128, 128, 128));
    QCOMPARE(shown(), melted);
    navigator.MoveToScreen(2);
    QVERIFY(QTest::qWaitFor(isMade, Limit));
    const QVector<QRgb> sharp = shown();
    QVERIFY(qAbs(qRed(sharp[0]) - qRed(sharp[1])) > 200);
    navigator.MoveToScreen(1);
    QVERIFY(QTest::qWaitFor(isMade, Limit));
    QCOMPARE(shown(), melted);
}

void TestNavigatorWidget::aSmallPictureIsEnlargedWithSharpPixels()
{
    const auto small = MakeDocument({2, 1}, [](int x, int) { return x ? qRgb(255, 0, 0) : qRgb(0, 0, 255); });
    m_pNavigator->SetDocument(small.get(), nullptr);
    QVERIFY(WaitUntilMade());
    QCOMPARE(m_pNavigator->GetPictureRect(), QRect(4, 29, 200, 100));
    QCOMPARE(QColor(Shown().pixel(102, 80)), QColor(Qt::blue));
    QCOMPARE(QColor(Shown().pixel(105, 80)), QColor(Qt::red));
}

void TestNavigatorWidget::transparencyIsAChecker()
{
    const auto transparent = MakeDocument({800, 400}, [](int, int) { return 0U; });
    m_pNavigator->SetDocument(transparent.get(), nullptr);
    QVERIFY(WaitUntilMade());
    const QImage shown = Shown();
    QVERIFY(shown.pixel(8, 33) != shown.pixel(16, 33));
    QCOMPARE(shown.pixel(8, 33), shown.pixel(16, 41));
}

void TestNavigatorWidget::anotherCanvasIsShown()
{
    m_pDocument->SetDocumentSize({400, 400});
    QVERIFY(WaitUntilMade());
    QCOMPARE(m_pNavigator->GetPictureRect(), QRect(29, 4, 150, 150));
    QCOMPARE(ShownAt({20, 20}), QColor(Qt::red));
    QCOMPARE(ShownAt({390, 390}), QColor(128, 0, 0));
}

void TestNavigatorWidget::aLargeCanvasIsNeverMadeInFull()
{
    NavigatorPicture picture(nullptr);
    int widest = 0;
    // As the widget does it: the level is chosen when the canvas is known.
    connect(&picture, &NavigatorPicture::Changed, &picture, [&](const QRect& rect) {
        widest = qMax(widest, picture.Image().width());
        const QSize canvas = picture.Survey().GetCanvas();
        if (rect.isEmpty() && !canvas.isEmpty()) picture.SetLevel(canvas.width() > 800 ? 3 : 2);
    });
    picture.Survey().SetSeen(true);
    picture.SetDocument(m_pDocument.get(), nullptr);
    QTRY_VERIFY_WITH_TIMEOUT(!picture.Survey().IsUnderWay(), Limit);
    QCOMPARE(widest, 200);
    m_pDocument->SetDocumentSize({1600, 400});
    QTRY_VERIFY_WITH_TIMEOUT(!picture.Survey().IsUnderWay(), Limit);
    QCOMPARE(widest, 200);
    QCOMPARE(picture.Image().size(), QSize(200, 50));
}

void TestNavigatorWidget::anotherSizeOfTheWidgetKeepsThePicture()
{
    // The first moment shows the old pixels, scaled.
    m_pNavigator->resize(58, 58);
    QCOMPARE(ShownAt({100, 100}), QColor(Qt::red));
    m_pNavigator->resize(780, 580);
    QCOMPARE(ShownAt({700, 100}), QColor(Qt::green));
    QVERIFY(WaitUntilMade());
    QCOMPARE(ShownAt({700, 100}), QColor(Qt::green));
    QCOMPARE(ShownAt({401, 300}), QColor(0, 128, 0));
}

void TestNavigatorWidget::withoutRoomThePictureStays()
{
    const qint64 before = TakenTiles();
    m_pNavigator->setMinimumSize(1, 1);
    m_pNavigator->resize(208, 6);
    QVERIFY(m_pNavigator->GetPictureRect().isEmpty());
    QVERIFY(WaitUntilMade());
    m_pNavigator->resize(208, 158);
    QVERIFY(WaitUntilMade());
    QCOMPARE(TakenTiles(), before);
}

void TestNavigatorWidget::hiddenItMakesNothing()
{
    m_pNavigator->hide();
    const qint64 before = TakenTiles();
    m_pDocument->UpdateDocumentRect(QRect());
    m_pNavigator->RebuildView();
    QCoreApplication::processEvents();
    QCOMPARE(TakenTiles(), before);
    m_pNavigator->show();
    QVERIFY(WaitUntilMade());
    QCOMPARE(TakenTiles(), 2 * before);
}

void TestNavigatorWidget::theFrameStandsWhereItIsSet()
{
    m_pNavigator->SetViewRect(QRectF(200, 100, 400, 200));
    QCOMPARE(m_pNavigator->GetViewRect(), QRectF(200, 100, 400, 200));
    const QImage shown = Shown();
    QCOMPARE(QColor(shown.pixel(54, 70)), QColor(Qt::white));
    QCOMPARE(QColor(shown.pixel(153, 70)), QColor(Qt::white));
    QCOMPARE(QColor(shown.pixel(80, 54)), QColor(Qt::white));
    QCOMPARE(QColor(shown.pixel(80, 103)), QColor(Qt::white));
    // Inside and outside the picture is seen as it is.
    QCOMPARE(QColor(shown.pixel(50, 70)), QColor(Qt::red));
    QCOMPARE(QColor(shown.pixel(58, 70)), QColor(Qt::red));
    m_pNavigator->SetViewRect(QRectF());
    QCOMPARE(QColor(Shown().pixel(54, 70)), QColor(Qt::red));
}

void TestNavigatorWidget::theFrameMayBeSetBeforeTheDocument()
{
    m_pNavigator->SetDocument(nullptr, nullptr);
    m_pNavigator->SetViewRect(QRectF(200, 100, 400, 200));
    m_pNavigator->SetDocument(m_pDocument.get(), nullptr);
    QVERIFY(WaitUntilMade());
    QCOMPARE(QColor(Shown().pixel(54, 70)), QColor(Qt::white));
}

void TestNavigatorWidget::aPressBesideTheFrameBringsItThere()
{
    m_pNavigator->SetViewRect(QRectF(0, 0, 200, 100));
    InputDriver input;
    input.Press(m_pNavigator.get(), WidgetPoint({400, 200}));
    QCOMPARE(Asked(), QVector<QPoint>({{400, 200}}));
    input.Release(m_pNavigator.get(), WidgetPoint({400, 200}));
    QCOMPARE(Asked(), QVector<QPoint>());
}

void TestNavigatorWidget::aDragBesideTheFrameGoesOn()
{
    m_pNavigator->SetViewRect(QRectF(0, 0, 200, 100));
    InputDriver input;
    input.Press(m_pNavigator.get(), WidgetPoint({400, 200}));
    input.Move(m_pNavigator.get(), WidgetPoint({480, 220}));
    input.Release(m_pNavigator.get(), WidgetPoint({500, 240}));
    QCOMPARE(Asked(), QVector<QPoint>({{400, 200}, {480, 220}, {500, 240}}));
    input.Move(m_pNavigator.get(), WidgetPoint({300, 200}));
    QCOMPARE(Asked(), QVector<QPoint>());
}

void TestNavigatorWidget::aDragTakesTheFrameWhereItIsHeld()
{
    // Its middle is (300, 200), the hand 40 right and 20 above of it.
    m_pNavigator->SetViewRect(QRectF(200, 150, 200, 100));
    InputDriver input;
    input.Press(m_pNavigator.get(), WidgetPoint({340, 180}));
    QCOMPARE(Asked(), QVector<QPoint>());
    input.Move(m_pNavigator.get(), WidgetPoint({440, 260}));
    QCOMPARE(Asked(), QVector<QPoint>({{400, 280}}));
    m_pNavigator->SetViewRect(QRectF(300, 230, 200, 100));
    input.Move(m_pNavigator.get(), WidgetPoint({340, 180}));
    input.Release(m_pNavigator.get(), WidgetPoint({340, 180}));
    QCOMPARE(Asked(), QVector<QPoint>({{300, 200}}));
}

void TestNavigatorWidget::aClickInsideTheFrameBringsItsMiddle()
{
    m_pNavigator->SetViewRect(QRectF(200, 150, 200, 100));
    InputDriver().Click(m_pNavigator.get(), WidgetPoint({340, 180}));
    QCOMPARE(Asked(), QVector<QPoint>({{340, 180}}));
}

void TestNavigatorWidget::theFrameIsKeptOnTheCanvas()
{
    m_pNavigator->SetViewRect(QRectF(200, 150, 200, 100));
    InputDriver input;
    input.Drag(m_pNavigator.get(), {WidgetPoint({300, 200}), QPoint(2, 2)}, Qt::LeftButton, {}, 1);
    QCOMPARE(Asked().last(), QPoint(100, 50));
    input.Drag(m_pNavigator.get(), {WidgetPoint({300, 200}), QPoint(205, 155)}, Qt::LeftButton, {}, 1);
    QCOMPARE(Asked().last(), QPoint(700, 350));
    // What is larger than the canvas stays in its middle.
    m_pNavigator->SetViewRect(QRectF(-100, 150, 1000, 100));
    input.Drag(m_pNavigator.get(), {WidgetPoint({300, 200}), WidgetPoint({340, 240})}, Qt::LeftButton, {}, 1);
    QCOMPARE(Asked().last(), QPoint(400, 240));
}

void TestNavigatorWidget::escapeEndsADragWhereItBegan()
{
    m_pNavigator->SetViewRect(QRectF(200, 150, 200, 100));
    InputDriver input;
    input.Press(m_pNavigator.get(), WidgetPoint({300, 200}));
    input.Move(m_pNavigator.get(), WidgetPoint({400, 240}));
    Asked();
    input.Key(Qt::Key_Escape);
    QCOMPARE(Asked(), QVector<QPoint>({{300, 200}}));
    input.Move(m_pNavigator.get(), WidgetPoint({500, 240}));
    input.Release(m_pNavigator.get(), WidgetPoint({500, 240}));
    QCOMPARE(Asked(), QVector<QPoint>());
}

void TestNavigatorWidget::otherButtonsEndADrag()
{
    m_pNavigator->SetViewRect(QRectF(200, 150, 200, 100));
    InputDriver input;
    input.Press(m_pNavigator.get(), WidgetPoint({300, 200}), Qt::RightButton);
    input.Release(m_pNavigator.get(), WidgetPoint({300, 200}), Qt::RightButton);
    QCOMPARE(Asked(), QVector<QPoint>());
    input.Press(m_pNavigator.get(), WidgetPoint({300, 200}));
    input.Move(m_pNavigator.get(), WidgetPoint({400, 240}));
    input.Press(m_pNavigator.get(), WidgetPoint({400, 240}), Qt::RightButton);
    Asked();
    input.Move(m_pNavigator.get(), WidgetPoint({500, 240}));
    QCOMPARE(Asked(), QVector<QPoint>());
}

void TestNavigatorWidget::arrowsMoveTheFrame()
{
    m_pNavigator->SetViewRect(QRectF(200, 150, 200, 100));
    m_pNavigator->setFocus();
    InputDriver input;
    for (const int key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down})
        input.Key(key);
    QCOMPARE(Asked(), QVector<QPoint>({{280, 200}, {320, 200}, {300, 190}, {300, 210}}));
    input.Key(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(Asked(), QVector<QPoint>({{500, 200}}));
}

void TestNavigatorWidget::arrowsStopAtTheEdge()
{
    m_pNavigator->SetViewRect(QRectF(590, 150, 200, 100));
    m_pNavigator->setFocus();
    InputDriver().Key(Qt::Key_Right);
    QCOMPARE(Asked(), QVector<QPoint>({{700, 200}}));
}

void TestNavigatorWidget::withoutADocumentNothingIsAsked()
{
    m_pNavigator->SetViewRect(QRectF(200, 150, 200, 100));
    m_pNavigator->SetDocument(nullptr, nullptr);
    m_pNavigator->RebuildView();
    m_pNavigator->setFocus();
    InputDriver input;
    input.Click(m_pNavigator.get(), QPoint(100, 80));
    input.Key(Qt::Key_Left);
    QCOMPARE(Asked(), QVector<QPoint>());
    QVERIFY(m_pNavigator->GetPictureRect().isEmpty());
    QCOMPARE(QColor(Shown().pixel(100, 80)), Surround());
}

void TestNavigatorWidget::aDocumentThatGoesLeavesNothing()
{
    m_pNavigator->SetViewRect(QRectF(200, 150, 200, 100));
    InputDriver input;
    input.Press(m_pNavigator.get(), WidgetPoint({300, 200}));
    m_pDocument->UpdateDocumentRect(QRect());
    m_pNavigator->RebuildView();
    m_pDocument.reset();
    QVERIFY(WaitUntilMade());
    input.Move(m_pNavigator.get(), QPoint(30, 30));
    input.Release(m_pNavigator.get(), QPoint(30, 30));
    QCOMPARE(Asked(), QVector<QPoint>());
    QCOMPARE(QColor(Shown().pixel(100, 80)), Surround());
}

void TestNavigatorWidget::failedPartsComeWithTheNextRebuild()
{
    m_pDocument->SetLayerImage(1, MakeImage({800, 400}, [](int, int) { return qRgb(0, 0, 255); }), {0, 0});
    m_pDocument->AddLayer("Above", MakeImage({800, 400}, [](int, int) { return 0x80FF0000U; }), QPoint(0, 0));
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    m_pNavigator->RebuildView();
    QVERIFY(WaitUntilMade());
    FaultSeams::Reset();
    m_pNavigator->RebuildView();
    QVERIFY(WaitUntilMade());
    QCOMPARE(ShownAt({20, 20}), QColor(128, 0, 127));
    QCOMPARE(ShownAt({700, 380}), QColor(128, 0, 127));
}

void TestNavigatorWidget::bothLooksHaveTheirSurround()
{
    m_pNavigator->SetDocument(nullptr, nullptr);
    for (const Theme::Look look : {Theme::Look::Light, Theme::Look::Dark}) {
        m_pNavigator->setPalette(Theme::Palette(Theme::Tokens(look)));
        QCOMPARE(QColor(Shown().pixel(100, 80)), QColor(Theme::Tokens(look).window));
    }
}

void TestNavigatorWidget::itCanBeReachedAndHasAName()
{
    QCOMPARE(m_pNavigator->accessibleName(), QString("Navigator"));
    QVERIFY(m_pNavigator->focusPolicy() & Qt::TabFocus);
}

ZK_REGISTER_TEST(tst_navigatorwidget, TestNavigatorWidget)
#include "tst_navigatorwidget.moc"
