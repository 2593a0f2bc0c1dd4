#include "app/WidgetGallery.h"
#include "document/LXDocumentInterface.h"
#include "resource/ResourceFolder.h"
#include "resource/Theme.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QGraphicsScene>
#include <QImage>
#include <QSet>
#include <QTest>
#include <QThreadPool>

namespace {
QRgb ColorAt(const QImage& image, int ground)
{
    constexpr int side = WidgetGallery::GroundSize;
    return image.pixel(ground * side + side / 2, side / 2);
}
} // namespace

/// The samples of what tools build with.
class TestWidgetGallery : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everySampleShowsSomething_data();
    void everySampleShowsSomething();
    void itemsLieOnFourGrounds();

private:
    DocumentFixture::OwnedDocument m_pDocument;
};

void TestWidgetGallery::initTestCase()
{
    Theme::Apply(Theme::Look::Dark, ResourceFolder::Path());
    const QSize size(160, 100);
    DocumentFixture::Random random(7);
    m_pDocument = DocumentFixture::Make(size);
    m_pDocument->AddLayer(QStringLiteral("Photo"), DocumentFixture::Noise(random, size), QPoint(0, 0));
}

void TestWidgetGallery::everySampleShowsSomething_data()
{
    QTest::addColumn<int>("index");
    QSet<QString> names;
    for (int i = 0; i < WidgetGallery::Samples().size(); ++i) {
        const char* name = WidgetGallery::Samples()[i].name;
        QVERIFY2(!names.contains(name), name);
        names.insert(name);
        QTest::newRow(name) << i;
    }
}

void TestWidgetGallery::everySampleShowsSomething()
{
    QFETCH(const int, index);
    QWidget window;
    const std::unique_ptr<QWidget> widget =
        WidgetGallery::Samples()[index].make({&window, m_pDocument.get()});
    widget->show();
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    const QImage image = widget->grab().toImage();
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    }
    // More than a ground and a frame.
    QVERIFY2(colors.size() > 3, qPrintable(QString::number(colors.size())));
}

void TestWidgetGallery::itemsLieOnFourGrounds()
{
    const auto bare = WidgetGallery::OnGrounds([](QGraphicsScene&) {});
    const QImage grounds = bare->grab().toImage();
    QCOMPARE(ColorAt(grounds, 0), qRgb(255, 255, 255));
    QCOMPARE(ColorAt(grounds, 1), qRgb(0, 0, 0));
    QCOMPARE(ColorAt(grounds, 2), qRgb(128, 128, 128));

    const auto lined = WidgetGallery::OnGrounds([](QGraphicsScene& scene) {
        scene.addRect(scene.sceneRect().adjusted(0, 50, 0, -50), Qt::NoPen, Qt::red);
    });
    const QImage line = lined->grab().toImage();
    for (int i = 0; i < WidgetGallery::GroundCount; ++i)
        QCOMPARE(ColorAt(line, i), qRgb(255, 0, 0));
}

ZK_REGISTER_TEST(tst_widgetgallery, TestWidgetGallery)
#include "tst_widgetgallery.moc"
