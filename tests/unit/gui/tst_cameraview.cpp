#include "GuiFixture.h"

#include "core/ZKCMSManager.h"
#include "document/LXColorTransformBase.h"
#include "gui/CameraView.h"
#include "gui/DisplayColors.h"
#include "image/LXImage.h"
#include "resource/Theme.h"
#include "scripting/InputDriver.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>

using GuiFixture::MakeDocument;
using GuiFixture::MakeImage;

namespace {
/// Every pixel has its own color.
QRgb ColorAt(int x, int y)
{
    return qRgb(10 * x, 10 * y, 90);
}

/// Swaps red and blue.
struct Swapping : LXColorTransformBase
{
    void operator()(QColor& color) const override
    {
        color = QColor(color.blue(), color.green(), color.red(), color.alpha());
    }
};

const QSize GlassSize(160, 120);
} // namespace

/// The magnifying glass.
class TestCameraView : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void pixelsStandAsSquaresRoundThePoint();
    void pointsWithinOnePixelLookTheSame();
    void withoutAPointTheMiddleIsShown();
    void outsideTheCanvasIsTheSurround();
    void strangePointsAreHarmless();
    void transparencyIsACheckerThatDoesNotScale();
    void aLayerIsShownWhereItLies();
    void aLayerThatIsNotThereIsAnEmptyCanvas();
    void anImageTakesThePlaceOfADocument();
    void withoutADocumentNothingIsShown();
    void aDocumentThatGoesLeavesNothing();
    void changesAreShownWhenAskedFor();
    void colorsAreThoseOfTheScreen();
    void withoutATransformTheProfilesGiveIt();
    void anImageIsShownInTheColorsOfItsProfile();
    void gridLinesLieBetweenThePixels();
    void anyOtherGridTypeIsNone();
    void theGridWaitsUntilThereIsRoom();
    void aMarkStandsRoundThePixelWhereThereIsRoom();
    void theWheelChangesTheScaleAndTells();
    void partsOfANotchAddUp();
    void scalesAreBroughtIntoTheirRange_data();
    void scalesAreBroughtIntoTheirRange();
    void theSameScaleIsNotToldAgain();
    void keysScaleAndLookAround();
    void keysStayOnTheCanvas();
    void whatRunsOutOfMemoryShowsTheSurround();
    void bothLooksHaveTheirSurround();
    void itCanBeReachedAndHasAName();

private:
    QColor ShownAt(int docX, int docY, const QPoint& lookedAt = {10, 8}) const
    {
        // The middle of a square may be a line between two widget pixels: the one before it is meant.
        const double scale = m_pGlass->GetScaleFactor();
        return m_pGlass->grab().toImage().pixelColor(
            int(std::ceil(GlassSize.width() / 2.0 + (docX - lookedAt.x()) * scale)) - 1,
            int(std::ceil(GlassSize.height() / 2.0 + (docY - lookedAt.y()) * scale)) - 1);
    }

    QColor Surround() const { return m_pGlass->palette().color(QPalette::Dark).rgb(); }

    GuiFixture::OwnedDocument m_pDocument;
    std::unique_ptr<CameraView> m_pGlass;
};

void TestCameraView::init()
{
    m_pDocument = MakeDocument({20, 16}, &ColorAt);
    m_pGlass = std::make_unique<CameraView>();
    m_pGlass->resize(GlassSize);
    m_pGlass->SetDocument(m_pDocument.get());
    m_pGlass->SetLookPoint({10, 8});
    m_pGlass->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pGlass.get()));
}

void TestCameraView::cleanup()
{
    FaultSeams::Reset();
    ZKCMSManager::GetInstance()->SetDisplay(ZKCMSProfile(), {});
    m_pGlass.reset();
    m_pDocument.reset();
}

void TestCameraView::pixelsStandAsSquaresRoundThePoint()
{
    for (const double scale : {1.0, 2.0, 5.0, 13.5, 32.0}) {
        m_pGlass->SetScaleFactor(scale);
        for (const QPoint& pixel : {QPoint(10, 8), QPoint(9, 8), QPoint(11, 9)})
            QCOMPARE(ShownAt(pixel.x(), pixel.y()), QColor(ColorAt(pixel.x(), pixel.y())));
    }
    // All of the square, and nothing but it.
    m_pGlass->SetScaleFactor(5);
    const QImage shown = m_pGlass->grab().toImage();
    for (int x = 0; x < 20; ++x)
        QCOMPARE(QColor(shown.pixel(77 + x, 60)), QColor(ColorAt(10 + x / 5, 8)));
}

void TestCameraView::pointsWithinOnePixelLookTheSame()
{
    const QImage before = m_pGlass->grab().toImage();
    m_pGlass->SetLookPoint({10.99, 8.5});
    QCOMPARE(m_pGlass->grab().toImage(), before);
    m_pGlass->SetLookPoint({9.99, 8.5});
    QVERIFY(m_pGlass->grab().toImage() != before);
}

void TestCameraView::withoutAPointTheMiddleIsShown()
{
    CameraView glass;
    glass.resize(GlassSize);
    glass.SetDocument(m_pDocument.get());
    QCOMPARE(glass.GetLookPoint(), QPointF(10, 8));
    m_pGlass->clearFocus();
    QCOMPARE(glass.grab().toImage(), m_pGlass->grab().toImage());
}

void TestCameraView::outsideTheCanvasIsTheSurround()
{
    m_pGlass->SetScaleFactor(8);
    m_pGlass->SetLookPoint({0, 0});
    QCOMPARE(ShownAt(0, 0, {0, 0}), QColor(ColorAt(0, 0)));
    QCOMPARE(ShownAt(-3, 0, {0, 0}), Surround());
    QCOMPARE(ShownAt(0, -3, {0, 0}), Surround());
    m_pGlass->SetLookPoint({-700, 300});
    QCOMPARE(ShownAt(-700, 300, {-700, 300}), Surround());
}

void TestCameraView::strangePointsAreHarmless()
{
    m_pGlass->SetLookPoint({std::numeric_limits<double>::quiet_NaN(), 3});
    QCOMPARE(m_pGlass->GetLookPoint(), QPointF(10, 8));
    for (const double far : {1e300, -1e300}) {
        m_pGlass->SetLookPoint({far, far});
        QCOMPARE(ShownAt(10, 8), Surround());
    }
}

void TestCameraView::transparencyIsACheckerThatDoesNotScale()
{
    const auto transparent = MakeDocument({20, 16}, [](int, int) { return 0U; });
    m_pGlass->SetDocument(transparent.get());
    for (const double scale : {8.0, 24.0}) {
        m_pGlass->SetScaleFactor(scale);
        m_pGlass->SetLookPoint({0, 0});
        // The canvas begins half a pixel beside the middle.
        const QPoint corner(GlassSize.width() / 2 - int(scale) / 2, GlassSize.height() / 2 - int(scale) / 2);
        const QImage shown = m_pGlass->grab().toImage();
        const QRgb first = shown.pixel(corner + QPoint(60, 20));
        QVERIFY(shown.pixel(corner + QPoint(68, 20)) != first);
        QCOMPARE(shown.pixel(corner + QPoint(68, 28)), first);
        QVERIFY(first != Surround().rgb());
    }
}

void TestCameraView::aLayerIsShownWhereItLies()
{
    const LXImage32 red = MakeImage({2, 2}, [](int, int) { return qRgb(255, 0, 0); });
    const unsigned int id = m_pDocument->AddLayer("Red", red, QPoint(10, 8));
    m_pGlass->SetScaleFactor(4);
    m_pGlass->SetDocument(m_pDocument.get(), id);
    QCOMPARE(ShownAt(10, 8), QColor(Qt::red));
    QCOMPARE(ShownAt(11, 9), QColor(Qt::red));
    // The layer below isn't asked for.
    QVERIFY(ShownAt(12, 8) != QColor(ColorAt(12, 8)));
    QVERIFY(ShownAt(9, 8) != QColor(ColorAt(9, 8)));
    m_pGlass->SetDocument(m_pDocument.get(), id + 1);
    QCOMPARE(ShownAt(10, 8), QColor(ColorAt(10, 8)));
    m_pGlass->SetDocument(m_pDocument.get(), 0);
    QCOMPARE(ShownAt(10, 8), QColor(Qt::red));
    QCOMPARE(ShownAt(9, 8), QColor(ColorAt(9, 8)));
}

void TestCameraView::aLayerThatIsNotThereIsAnEmptyCanvas()
{
    m_pGlass->SetScaleFactor(4);
    m_pGlass->SetDocument(m_pDocument.get(), 7);
    const QColor middle = ShownAt(10, 8);
    QVERIFY(middle != QColor(ColorAt(10, 8)) && middle != Surround());
}

void TestCameraView::anImageTakesThePlaceOfADocument()
{
    m_pGlass->SetScaleFactor(4);
    m_pGlass->SetImage(MakeImage({12, 9}, [](int x, int) { return qRgb(0, 20 * x, 0); }));
    QCOMPARE(ShownAt(10, 8), QColor(0, 200, 0));
    QCOMPARE(ShownAt(14, 8), Surround());
    m_pGlass->SetDocument(m_pDocument.get());
    QCOMPARE(ShownAt(14, 8), QColor(ColorAt(14, 8)));
    m_pGlass->SetImage(LXImage32());
    QCOMPARE(ShownAt(10, 8), Surround());
}

void TestCameraView::withoutADocumentNothingIsShown()
{
    m_pGlass->SetDocument(nullptr);
    m_pGlass->RebuildView();
    QCOMPARE(ShownAt(10, 8), Surround());
    m_pGlass->SetDocument(nullptr, 3);
    QCOMPARE(ShownAt(10, 8), Surround());
}

void TestCameraView::aDocumentThatGoesLeavesNothing()
{
    QCOMPARE(ShownAt(10, 8), QColor(ColorAt(10, 8)));
    m_pDocument.reset();
    QCOMPARE(ShownAt(10, 8), Surround());
    m_pGlass->RebuildView();
    QCOMPARE(ShownAt(10, 8), Surround());
}

void TestCameraView::changesAreShownWhenAskedFor()
{
    QCOMPARE(ShownAt(10, 8), QColor(ColorAt(10, 8)));
    m_pDocument->SetLayerImage(1, MakeImage({20, 16}, [](int, int) { return qRgb(0, 0, 255); }), {0, 0});
    m_pDocument->UpdateDocumentRect(QRect());
    QCOMPARE(ShownAt(10, 8), QColor(ColorAt(10, 8)));
    m_pGlass->RebuildView();
    QCOMPARE(ShownAt(10, 8), QColor(Qt::blue));
}

void TestCameraView::colorsAreThoseOfTheScreen()
{
    m_pGlass->SetColorTransform(std::make_shared<Swapping>());
    QCOMPARE(ShownAt(10, 8), QColor(90, 80, 100));
    m_pGlass->SetColorTransform(nullptr);
    QCOMPARE(ShownAt(10, 8), QColor(100, 80, 90));
}

void TestCameraView::withoutATransformTheProfilesGiveIt()
{
    const QColor paint(ColorAt(10, 8));
    const auto expected = [&] { return QColor(DisplayColors::Shown(m_pDocument.get(), paint).rgb()); };
    m_pDocument->SetICCProfile(IccProfiles::AdobeRgb());
    QVERIFY(expected() != paint);
    QCOMPARE(ShownAt(10, 8), expected());
    ZKCMSManager::GetInstance()->SetDisplay(IccProfiles::AdobeRgb(), {});
    QCOMPARE(ShownAt(10, 8), paint);
    m_pDocument->SetICCProfile(ZKCMSProfile());
    QVERIFY(expected() != paint);
    QCOMPARE(ShownAt(10, 8), expected());
    // One that is given is all there is.
    m_pGlass->SetColorTransform(std::make_shared<Swapping>());
    QCOMPARE(ShownAt(10, 8), QColor(90, 80, 100));
}

void TestCameraView::anImageIsShownInTheColorsOfItsProfile()
{
    const QColor paint(100, 80, 90);
    LXImage32 image = MakeImage({20, 16}, [](int, int) { return qRgb(100, 80, 90); });
    image.m_Profile = IccProfiles::AdobeRgb();
    m_pGlass->SetImage(image);
    m_pDocument->SetICCProfile(IccProfiles::AdobeRgb());
    QCOMPARE(ShownAt(10, 8), QColor(DisplayColors::Shown(m_pDocument.get(), paint).rgb()));
    QVERIFY(ShownAt(10, 8) != paint);
}

void TestCameraView::gridLinesLieBetweenThePixels()
{
    const auto gray = MakeDocument({20, 16}, QColor(100, 100, 100));
    m_pGlass->SetDocument(gray.get());
    m_pGlass->SetScaleFactor(10);
    const QPoint line(GlassSize.width() / 2 - 5 - 10, GlassSize.height() / 2);
    const auto onLine = [&](int type) {
        m_pGlass->SetGridType(type);
        return m_pGlass->grab().toImage().pixelColor(line).lightness();
    };
    QCOMPARE(onLine(CameraView::NoGrid), 100);
    QVERIFY(onLine(CameraView::StandardGrid) > 100);
    QVERIFY(onLine(CameraView::LightenGrid) > onLine(CameraView::StandardGrid));
    QVERIFY(onLine(CameraView::DarkenGrid) < 100);
    QCOMPARE(ShownAt(9, 8), QColor(100, 100, 100));
}

void TestCameraView::anyOtherGridTypeIsNone()
{
    for (const int type : {-1, 4, 900}) {
        m_pGlass->SetGridType(CameraView::DarkenGrid);
        QCOMPARE(m_pGlass->GetGridType(), int(CameraView::DarkenGrid));
        m_pGlass->SetGridType(type);
        QCOMPARE(m_pGlass->GetGridType(), int(CameraView::NoGrid));
    }
}

void TestCameraView::theGridWaitsUntilThereIsRoom()
{
    for (const double scale : {1.0, 2.0}) {
        m_pGlass->SetScaleFactor(scale);
        m_pGlass->SetGridType(CameraView::NoGrid);
        const QImage plain = m_pGlass->grab().toImage();
        m_pGlass->SetGridType(CameraView::DarkenGrid);
        QCOMPARE(m_pGlass->grab().toImage() == plain, scale < 2);
    }
}

void TestCameraView::aMarkStandsRoundThePixelWhereThereIsRoom()
{
    // The square at 10 : 1 is 75 to 84; the mark is on the pixels beside it.
    m_pGlass->SetScaleFactor(10);
    const QImage shown = m_pGlass->grab().toImage();
    QCOMPARE(QColor(shown.pixel(74, 60)), QColor(Qt::black));
    QCOMPARE(QColor(shown.pixel(73, 60)), QColor(Qt::white));
    QCOMPARE(QColor(shown.pixel(75, 60)), QColor(ColorAt(10, 8)));
    QCOMPARE(QColor(shown.pixel(84, 60)), QColor(ColorAt(10, 8)));
    QCOMPARE(QColor(shown.pixel(85, 60)), QColor(Qt::black));

    m_pGlass->SetScaleFactor(4);
    QCOMPARE(QColor(m_pGlass->grab().toImage().pixel(77, 60)), QColor(ColorAt(9, 8)));
}

void TestCameraView::theWheelChangesTheScaleAndTells()
{
    QSignalSpy told(m_pGlass.get(), &CameraView::ScaleFactorChanged);
    InputDriver input;
    input.Wheel(m_pGlass.get(), QPoint(20, 20), 120);
    QCOMPARE(m_pGlass->GetScaleFactor(), 3.0);
    QCOMPARE(told.takeFirst().first().toDouble(), 3.0);
    QCOMPARE(ShownAt(9, 8), QColor(ColorAt(9, 8)));
    for (int i = 0; i < 5; ++i)
        input.Wheel(m_pGlass.get(), QPoint(20, 20), -120);
    QCOMPARE(m_pGlass->GetScaleFactor(), 1.0);
    QCOMPARE(told.count(), 2);
    for (int i = 0; i < 20; ++i)
        input.Wheel(m_pGlass.get(), QPoint(20, 20), 120);
    QCOMPARE(m_pGlass->GetScaleFactor(), 32.0);
}

void TestCameraView::partsOfANotchAddUp()
{
    InputDriver input;
    input.Wheel(m_pGlass.get(), QPoint(20, 20), 40);
    input.Wheel(m_pGlass.get(), QPoint(20, 20), 40);
    QCOMPARE(m_pGlass->GetScaleFactor(), 2.0);
    input.Wheel(m_pGlass.get(), QPoint(20, 20), 40);
    QCOMPARE(m_pGlass->GetScaleFactor(), 3.0);
    // Who turns back begins anew.
    input.Wheel(m_pGlass.get(), QPoint(20, 20), 100);
    input.Wheel(m_pGlass.get(), QPoint(20, 20), -100);
    QCOMPARE(m_pGlass->GetScaleFactor(), 3.0);
    input.Wheel(m_pGlass.get(), QPoint(20, 20), -20);
    QCOMPARE(m_pGlass->GetScaleFactor(), 2.0);
}

void TestCameraView::scalesAreBroughtIntoTheirRange_data()
{
    QTest::addColumn<double>("asked");
    QTest::addColumn<double>("scale");
    QTest::newRow("least") << 1.0 << 1.0;
    QTest::newRow("too small") << 0.3 << 1.0;
    QTest::newRow("negative") << -7.0 << 1.0;
    QTest::newRow("between") << 2.5 << 2.5;
    QTest::newRow("largest") << 32.0 << 32.0;
    QTest::newRow("too large") << 33.0 << 32.0;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 32.0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 2.0;
}

void TestCameraView::scalesAreBroughtIntoTheirRange()
{
    QFETCH(const double, asked);
    QFETCH(const double, scale);
    m_pGlass->SetScaleFactor(asked);
    QCOMPARE(m_pGlass->GetScaleFactor(), scale);
    QCOMPARE(ShownAt(10, 8), QColor(ColorAt(10, 8)));
}

void TestCameraView::theSameScaleIsNotToldAgain()
{
    QSignalSpy told(m_pGlass.get(), &CameraView::ScaleFactorChanged);
    m_pGlass->SetScaleFactor(5);
    m_pGlass->SetScaleFactor(5);
    QCOMPARE(told.count(), 1);
}

void TestCameraView::keysScaleAndLookAround()
{
    InputDriver input;
    m_pGlass->setFocus();
    input.Key(Qt::Key_Plus);
    QCOMPARE(m_pGlass->GetScaleFactor(), 3.0);
    input.Key(Qt::Key_Minus);
    QCOMPARE(m_pGlass->GetScaleFactor(), 2.0);
    input.Key(Qt::Key_Right);
    input.Key(Qt::Key_Down);
    QCOMPARE(m_pGlass->GetLookPoint(), QPointF(11, 9));
    input.Key(Qt::Key_Left);
    input.Key(Qt::Key_Up);
    input.Key(Qt::Key_Left);
    QCOMPARE(m_pGlass->GetLookPoint(), QPointF(9, 8));
    QCOMPARE(ShownAt(9, 8, {9, 8}), QColor(ColorAt(9, 8)));
}

void TestCameraView::keysStayOnTheCanvas()
{
    InputDriver input;
    m_pGlass->setFocus();
    input.Key(Qt::Key_Right, Qt::ShiftModifier);
    input.Key(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(m_pGlass->GetLookPoint(), QPointF(19, 15));
    m_pGlass->SetDocument(nullptr);
    input.Key(Qt::Key_Right);
    QCOMPARE(m_pGlass->GetLookPoint(), QPointF(19, 15));
}

void TestCameraView::whatRunsOutOfMemoryShowsTheSurround()
{
    m_pDocument->AddLayer("Noise", MakeImage({20, 16}, &ColorAt), QPoint(1, 1));
    m_pDocument->UpdateDocumentRect(QRect());
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    m_pGlass->RebuildView();
    QCOMPARE(ShownAt(10, 8), Surround());
    m_pGlass->RebuildView();
    QCOMPARE(ShownAt(10, 8), QColor(ColorAt(9, 7)));
}

void TestCameraView::bothLooksHaveTheirSurround()
{
    m_pGlass->SetDocument(nullptr);
    for (const Theme::Look look : {Theme::Look::Light, Theme::Look::Dark}) {
        m_pGlass->setPalette(Theme::Palette(Theme::Tokens(look)));
        QCOMPARE(ShownAt(10, 8), QColor(Theme::Tokens(look).window));
    }
}

void TestCameraView::itCanBeReachedAndHasAName()
{
    QCOMPARE(m_pGlass->accessibleName(), QString("Magnifier"));
    QVERIFY(m_pGlass->focusPolicy() & Qt::TabFocus);
}

ZK_REGISTER_TEST(tst_cameraview, TestCameraView)
#include "tst_cameraview.moc"
