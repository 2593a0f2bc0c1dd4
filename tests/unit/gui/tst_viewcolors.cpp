#include "GuiFixture.h"
#include "ViewFixture.h"

#include "core/ZKApplication.h"
#include "core/ZKCMSManager.h"
#include "document/LXColorSampleModel.h"
#include "document/LXColorTransformBase.h"
#include "gui/ClipboardDelegate.h"
#include "gui/ClipboardRole.h"
#include "gui/ColorWell.h"
#include "gui/DisplayColors.h"
#include "gui/LayersWidget.h"
#include "gui/SamplesWidget.h"
#include "gui/ScaledTileCache.h"
#include "gui/ZKDocumentView_p.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QListView>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTest>

using namespace IccProfiles;
using namespace ViewFixture;
using GuiFixture::MakeDocument;

namespace {
const QColor Paint(200, 90, 40);

/// The color as the library has it, between two profiles.
QColor Converted(QColor color, const ZKCMSProfile& from, const ZKCMSProfile& to)
{
    const ZKCMSTransform transform(from, to);
    transform(color);
    return color;
}

int Distance(const QColor& a, const QColor& b)
{
    return qMax(qAbs(a.red() - b.red()), qMax(qAbs(a.green() - b.green()), qAbs(a.blue() - b.blue())));
}

/// How far the nearest pixel of the widget is from the color.
int NearestTo(QWidget* widget, const QColor& color)
{
    const QImage picture = widget->grab().toImage();
    int nearest = 255;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            nearest = qMin(nearest, Distance(picture.pixelColor(x, y), color));
        }
    }
    return nearest;
}
} // namespace

/// What is shown of a picture goes through its profile to the screen's.
class TestViewColors : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void aPictureWithoutAProfileIsShownAsItIs();
    void aPictureIsShownInTheColorsOfItsProfile();
    void anotherProfileIsSeenAtOnce();
    void anotherScreenIsSeenAtOnce();
    void aDamagedProfileCountsAsSRgb();
    void theTransformIsWhatTheViewDoes();
    void theTransformOutlivesTheView();
    void changesAreToldOnce();
    void reducedAndSoftPixelsAreConvertedToo();
    void theListOfLayersShowsTheSameColors();
    void samplesShowTheSameColors();
    void copiedPicturesShowTheSameColors();
    void wellsAreMeantInTheWorkingProfile();
};

void TestViewColors::cleanup()
{
    ZKCMSManager::GetInstance()->SetDisplay(ZKCMSProfile(), {});
    ZKCMSManager::GetInstance()->SetWorkingRGBIndex(0);
}

void TestViewColors::aPictureWithoutAProfileIsShownAsItIs()
{
    const auto document = MakeDocument({64, 48}, Paint);
    const auto view = ShowView(document);
    COMPARE_COLORS(ShownAt(*view, 5, 5), Paint);
    document->SetICCProfile(ZKCMSProfile::SRGB());
    COMPARE_COLORS(ShownAt(*view, 5, 5), Paint);
}

void TestViewColors::aPictureIsShownInTheColorsOfItsProfile()
{
    const auto document = MakeDocument({64, 48}, Paint);
    document->SetICCProfile(AdobeRgb());
    const auto view = ShowView(document);
    const QColor expected = Converted(Paint, AdobeRgb(), ZKCMSProfile());
    QVERIFY(Distance(expected, Paint) > 10);
    QVERIFY(Distance(ShownAt(*view, 5, 5), expected) <= 1);
}

void TestViewColors::anotherProfileIsSeenAtOnce()
{
    const auto document = MakeDocument({64, 48}, Paint);
    const auto view = ShowView(document);
    COMPARE_COLORS(ShownAt(*view, 5, 5), Paint);
    document->SetICCProfile(WideRgb());
    QVERIFY(Distance(ShownAt(*view, 5, 5), Converted(Paint, WideRgb(), ZKCMSProfile())) <= 1);
    document->SetICCProfile(ZKCMSProfile());
    COMPARE_COLORS(ShownAt(*view, 5, 5), Paint);
}

void TestViewColors::anotherScreenIsSeenAtOnce()
{
    const auto document = MakeDocument({64, 48}, Paint);
    document->SetICCProfile(AdobeRgb());
    const auto view = ShowView(document);
    QVERIFY(Distance(ShownAt(*view, 5, 5), Paint) > 10);
    ZKCMSManager::GetInstance()->SetDisplay(AdobeRgb(), {});
    COMPARE_COLORS(ShownAt(*view, 5, 5), Paint);
    document->SetICCProfile(ZKCMSProfile());
    QVERIFY(Distance(ShownAt(*view, 5, 5), Converted(Paint, ZKCMSProfile(), AdobeRgb())) <= 1);
}

void TestViewColors::aDamagedProfileCountsAsSRgb()
{
    const auto document = MakeDocument({64, 48}, Paint);
    document->SetICCProfile(ZKCMSProfile("a profile"));
    const auto view = ShowView(document);
    COMPARE_COLORS(ShownAt(*view, 5, 5), Paint);
    ZKCMSManager::GetInstance()->SetDisplay(AdobeRgb(), {});
    QVERIFY(Distance(ShownAt(*view, 5, 5), Converted(Paint, ZKCMSProfile(), AdobeRgb())) <= 1);
}

void TestViewColors::theTransformIsWhatTheViewDoes()
{
    const auto document = MakeDocument({64, 48}, Paint);
    const auto view = ShowView(document);
    QColor color = Paint;
    (*view->GetColorTransform())(color);
    QCOMPARE(color, Paint);
    document->SetICCProfile(WideRgb());
    (*view->GetColorTransform())(color);
    QVERIFY(Distance(ShownAt(*view, 5, 5), color) <= 1);
    QVERIFY(Distance(color, Paint) > 10);
    QColor invalid;
    (*view->GetColorTransform())(invalid);
    QVERIFY(!invalid.isValid());
}

void TestViewColors::theTransformOutlivesTheView()
{
    std::shared_ptr<const LXColorTransformBase> transform;
    {
        const auto document = MakeDocument({64, 48}, Paint);
        document->SetICCProfile(AdobeRgb());
        transform = ShowView(document)->GetColorTransform();
    }
    QColor color = Paint;
    (*transform)(color);
    QCOMPARE(color, Converted(Paint, AdobeRgb(), ZKCMSProfile()));
}

void TestViewColors::changesAreToldOnce()
{
    const auto document = MakeDocument({64, 48}, Paint);
    const auto view = ShowView(document);
    QSignalSpy changed(view.get(), &ZKDocumentView::ColorTransformChanged);
    document->SetICCProfile(AdobeRgb());
    QCOMPARE(changed.count(), 1);
    ZKCMSManager::GetInstance()->SetDisplay(WideRgb(), {});
    QCOMPARE(changed.count(), 2);
    document->SetICCProfile(AdobeRgb());
    QCOMPARE(changed.count(), 2);
}

void TestViewColors::reducedAndSoftPixelsAreConvertedToo()
{
    const LXImage32 picture =
        GuiFixture::MakeImage({300, 200}, [](int x, int) { return x < 150 ? 0xffc85a28 : 0x80c85a28; });
    ScaledTileCache cache(1024 * 1024);
    cache.SetColors(ZKCMSTransform(AdobeRgb(), ZKCMSProfile()));
    const QColor expected = Converted(Paint, AdobeRgb(), ZKCMSProfile());
    for (const int level : {0, 2}) {
        const QImage part = cache.Compose(picture, level, QRect(0, 0, 300 >> level, 200 >> level));
        QVERIFY(Distance(part.pixelColor(3, 3), expected) <= 1);
        const QColor soft = part.pixelColor((300 >> level) - 3, 3);
        QCOMPARE(soft.alpha(), 0x80);
        // Half the alpha, half the precision.
        QVERIFY(Distance(soft, expected) <= 2);
    }
    cache.SetColors(ZKCMSTransform());
    QCOMPARE(cache.Compose(picture, 0, QRect(0, 0, 9, 9)).pixel(3, 3), 0xffc85a28U);
}

void TestViewColors::theListOfLayersShowsTheSameColors()
{
    const auto document = MakeDocument({64, 48}, Paint);
    const auto view = ShowView(document);
    LayersWidget panel;
    panel.SetView(view.get());
    panel.resize(300, 400);
    panel.show();
    auto* list = panel.findChild<QListView*>("m_pList");
    QCOMPARE(NearestTo(list->viewport(), Paint), 0);
    document->SetICCProfile(AdobeRgb());
    QVERIFY(NearestTo(list->viewport(), Converted(Paint, AdobeRgb(), ZKCMSProfile())) <= 1);
    QVERIFY(NearestTo(list->viewport(), Paint) > 5);
    panel.SetView(nullptr);
}

void TestViewColors::samplesShowTheSameColors()
{
    const auto document = MakeDocument({64, 48}, Paint);
    document->GetColorSamples()->InsertSample(0, {10, 10});
    const auto view = ShowView(document);
    SamplesWidget panel;
    panel.SetView(view.get());
    panel.resize(300, 300);
    panel.show();
    auto* list = panel.findChild<QListView*>("m_pList");
    QCOMPARE(NearestTo(list->viewport(), Paint), 0);
    document->SetICCProfile(AdobeRgb());
    QVERIFY(NearestTo(list->viewport(), Converted(Paint, AdobeRgb(), ZKCMSProfile())) <= 1);
    QVERIFY(NearestTo(list->viewport(), Paint) > 5);
    // The numbers are those of the document.
    QCOMPARE(document->GetColorSamples()->GetColor(0), Paint);
    panel.SetView(nullptr);
}

void TestViewColors::copiedPicturesShowTheSameColors()
{
    const auto shown = [](const ZKCMSProfile& profile) {
        LXImage32 image(32, 32);
        image.m_Profile = profile;
        QPixmap picture(32, 32);
        picture.fill(Paint);
        QStandardItemModel model;
        auto* first = new QStandardItem(QIcon(picture), QString());
        first->setData(QVariant::fromValue(image), ClipboardRole::Image);
        model.appendRow({first, new QStandardItem("a"), new QStandardItem("b"), new QStandardItem("c")});
        QListView list;
        list.setItemDelegate(new ClipboardDelegate(&list));
        list.setModel(&model);
        list.resize(300, 100);
        list.show();
        return qMakePair(NearestTo(list.viewport(), Paint),
                         NearestTo(list.viewport(), Converted(Paint, profile, ZKCMSProfile())));
    };
    QCOMPARE(shown(ZKCMSProfile()).first, 0);
    QVERIFY(shown(AdobeRgb()).first > 5);
    QVERIFY(shown(AdobeRgb()).second <= 1);
}

void TestViewColors::wellsAreMeantInTheWorkingProfile()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("wide.icc"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(WideRgb().GetData());
    file.close();
    QString message;
    ZKCMSManager* manager = ZKCMSManager::GetInstance();
    const int wide = manager->AddRGBProfile(file.fileName(), &message);
    ColorWell well;
    well.SetColor(Paint);
    well.resize(40, 40);
    QCOMPARE(NearestTo(&well, Paint), 0);
    manager->SetWorkingRGBIndex(wide);
    QVERIFY(NearestTo(&well, Converted(Paint, WideRgb(), ZKCMSProfile())) <= 1);
    QVERIFY(NearestTo(&well, Paint) > 5);
    QCOMPARE(well.GetColor(), Paint);
}

ZK_REGISTER_TEST(tst_viewcolors, TestViewColors)
#include "tst_viewcolors.moc"
