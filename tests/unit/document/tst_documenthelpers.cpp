#include "document/LXColorInfoHelper.h"
#include "document/LXColorTransformBase.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LXLayerNameHelper.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

using namespace DocumentFixture;

namespace {
/// Swaps red and blue.
class Swap : public LXColorTransformBase
{
public:
    void operator()(QColor& color) const override
    {
        color = QColor(color.blue(), color.green(), color.red(), color.alpha());
    }
};

QString NameOf(const LXDocumentInterface* document, LXLayerNameHelper::MakeMode mode, unsigned int id)
{
    return LXLayerNameHelper::MakeDefaultName(document, mode, id);
}
} // namespace

/// What reads colors and makes names for people.
class TestDocumentHelpers : public QObject
{
    Q_OBJECT

private slots:
    void radiusZeroIsThePixelItself();
    void theMeanIsWeightedByAlpha();
    void theSquareIsCutAtTheCanvas();
    void whereTheLayerDoesNotReachIsTransparent();
    void allSizes_data();
    void allSizes();
    void nothingButTransparencyIsTransparentBlack();
    void outsideIsInvalid();
    void theMergedPictureIsIdZero();
    void theTransformComesLast();
    void anImageIsReadInItsOwnPixels();
    void newLayersTakeTheFirstFreeNumber();
    void copiesAreNamedAfterTheirLayer();
    void namesWithoutALayer();
};

void TestDocumentHelpers::radiusZeroIsThePixelItself()
{
    const OwnedDocument document = Make(QSize(20, 20));
    LXImage32 image = Filled(QSize(10, 10), 0xFF000000);
    image.SetColor(4, 4, LXRGBA32i(0x7F0A141E));
    document->AddLayer("layer", image, QPoint(5, 5));
    QCOMPARE(LXColorInfoHelper::AverageColor(document.get(), 1, QPoint(9, 9), 0).rgba(), 0x7F0A141Eu);
}

/// (200 x 100 + 50 x 200) / 300 = 100; the alphas of the nine: (100 + 200) / 9 = 33.3.
void TestDocumentHelpers::theMeanIsWeightedByAlpha()
{
    const OwnedDocument document = Make(QSize(20, 20));
    LXImage32 image = Filled(QSize(20, 20), 0x00FFFFFF);
    image.SetColor(9, 9, LXRGBA32i(0x64C80000));
    image.SetColor(10, 11, LXRGBA32i(0xC8320000));
    document->AddLayer("layer", image, QPoint());
    QCOMPARE(LXColorInfoHelper::AverageColor(document.get(), 1, QPoint(10, 10), 1).rgba(), 0x21640000u);
}

/// At the corner of the canvas four of nine pixels are left: one white of four black ones gives 255 / 4
/// = 63.75.
void TestDocumentHelpers::theSquareIsCutAtTheCanvas()
{
    const OwnedDocument document = Make(QSize(20, 20));
    LXImage32 image = Filled(QSize(40, 40), 0xFFFF0000);
    DrawImage(image, BlendMode::Source, QPoint(10, 10), Filled(QSize(20, 20), 0xFF000000), 1.0, false);
    image.SetColor(10, 10, LXRGBA32i(0xFFFFFFFF));
    document->AddLayer("layer", image, QPoint(-10, -10));
    QCOMPARE(LXColorInfoHelper::AverageColor(document.get(), 1, QPoint(0, 0), 1).rgba(), 0xFF404040u);
}

/// The layer covers six of the nine pixels: alpha = 255 x 6 / 9 = 170, the color undiluted.
void TestDocumentHelpers::whereTheLayerDoesNotReachIsTransparent()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("layer", Filled(QSize(10, 20), 0xFF3C5A78), QPoint(10, 0));
    QCOMPARE(LXColorInfoHelper::AverageColor(document.get(), 1, QPoint(10, 10), 1).rgba(), 0xAA3C5A78u);
    QCOMPARE(LXColorInfoHelper::AverageColor(document.get(), 1, QPoint(8, 10), 0).rgba(), 0u);
}

void TestDocumentHelpers::allSizes_data()
{
    QTest::addColumn<int>("radius");
    QTest::addColumn<int>("side");
    QTest::newRow("below 0 counts as 0") << -5 << 1;
    QTest::newRow("0") << 0 << 1;
    QTest::newRow("1") << 1 << 3;
    QTest::newRow("2") << 2 << 5;
    QTest::newRow("3") << 3 << 7;
    QTest::newRow("above 3 counts as 3") << 9 << 7;
}

/// White up to the column of the point: of a square of `side` columns (side + 1) / 2 are white.
void TestDocumentHelpers::allSizes()
{
    QFETCH(int, radius);
    QFETCH(int, side);
    const OwnedDocument document = Make(QSize(20, 20));
    LXImage32 image = Filled(QSize(20, 20), 0xFF000000);
    DrawImage(image, BlendMode::Source, QPoint(), Filled(QSize(11, 20), 0xFFFFFFFF), 1.0, false);
    document->AddLayer("layer", image, QPoint());
    const int whiteColumns = (side + 1) / 2;
    const int white = qRound(255.0 * whiteColumns / side);
    QCOMPARE(LXColorInfoHelper::AverageColor(document.get(), 1, QPoint(10, 10), radius),
             QColor(white, white, white));
}

void TestDocumentHelpers::nothingButTransparencyIsTransparentBlack()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("layer", Filled(QSize(20, 20), 0x00FFFFFF), QPoint());
    const QColor color = LXColorInfoHelper::AverageColor(document.get(), 1, QPoint(3, 3), 1);
    QVERIFY(color.isValid());
    QCOMPARE(color.rgba(), 0u);
}

void TestDocumentHelpers::outsideIsInvalid()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("layer", Filled(QSize(40, 40), 0xFFFFFFFF), QPoint(-10, -10));
    const auto isValid = [&](unsigned int id, const QPoint& point) {
        return LXColorInfoHelper::AverageColor(document.get(), id, point, 3).isValid();
    };
    QVERIFY(isValid(1, QPoint(19, 19)));
    QVERIFY(!isValid(1, QPoint(20, 19)));
    QVERIFY(!isValid(1, QPoint(0, -1)));
    QVERIFY(!isValid(2, QPoint(3, 3)));
    QVERIFY(!LXColorInfoHelper::AverageColor(nullptr, 1, QPoint(3, 3), 0).isValid());
}

void TestDocumentHelpers::theMergedPictureIsIdZero()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("low", Filled(QSize(20, 20), 0xFFFFFFFF), QPoint());
    document->AddLayer("high", Filled(QSize(20, 20), 0xFF000000), QPoint());
    document->GetModel()->SetOpacity(0, 0.2);
    QCOMPARE(LXColorInfoHelper::AverageColor(document.get(), 0, QPoint(3, 3), 2), QColor(204, 204, 204));
}

void TestDocumentHelpers::theTransformComesLast()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("layer", Filled(QSize(20, 20), 0x800A141E), QPoint());
    const QColor swapped = LXColorInfoHelper::AverageColor(document.get(), 1, QPoint(3, 3), 1, Swap());
    QCOMPARE(swapped.rgba(), 0x801E140Au);
    QVERIFY(!LXColorInfoHelper::AverageColor(document.get(), 1, QPoint(33, 3), 1, Swap()).isValid());
}

void TestDocumentHelpers::anImageIsReadInItsOwnPixels()
{
    const LXImage32 image = Filled(QSize(5, 5), 0x800A141E);
    QCOMPARE(LXColorInfoHelper::AverageColor(image, QPoint(0, 4), 3).rgba(), 0x800A141Eu);
    QVERIFY(!LXColorInfoHelper::AverageColor(image, QPoint(5, 4), 3).isValid());
    QVERIFY(!LXColorInfoHelper::AverageColor(LXImage32(), QPoint(0, 0), 3).isValid());
}

void TestDocumentHelpers::newLayersTakeTheFirstFreeNumber()
{
    const OwnedDocument document = Make(QSize(20, 20));
    QCOMPARE(NameOf(document.get(), LXLayerNameHelper::New, 0), QString("Layer 1"));
    document->AddLayer("Layer 1", LXImage32(), QPoint());
    document->AddLayer("Layer 3", LXImage32(), QPoint());
    QCOMPARE(NameOf(document.get(), LXLayerNameHelper::New, 1), QString("Layer 2"));
}

void TestDocumentHelpers::copiesAreNamedAfterTheirLayer()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("Sky", LXImage32(), QPoint());
    QCOMPARE(NameOf(document.get(), LXLayerNameHelper::Copy, 1), QString("Sky copy"));
    document->AddLayer("Sky copy", LXImage32(), QPoint());
    QCOMPARE(NameOf(document.get(), LXLayerNameHelper::Copy, 2), QString("Sky copy 2"));
    document->AddLayer("Sky copy 2", LXImage32(), QPoint());
    QCOMPARE(NameOf(document.get(), LXLayerNameHelper::Copy, 3), QString("Sky copy 3"));
}

void TestDocumentHelpers::namesWithoutALayer()
{
    const OwnedDocument document = Make(QSize(20, 20));
    QCOMPARE(NameOf(document.get(), LXLayerNameHelper::Copy, 0), QString("Layer 1"));
    QCOMPARE(NameOf(document.get(), LXLayerNameHelper::Copy, 4), QString("Layer 1"));
    QCOMPARE(NameOf(nullptr, LXLayerNameHelper::New, 0), QString());
}

ZK_REGISTER_TEST(tst_documenthelpers, TestDocumentHelpers)
#include "tst_documenthelpers.moc"
