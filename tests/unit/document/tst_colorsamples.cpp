#include "document/LXColorInfoHelper.h"
#include "document/LXColorSampleModel.h"
#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface_p.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QAbstractItemModelTester>
#include <QTest>

using namespace DocumentFixture;

namespace {
/// Every signal of a list of samples, in order, as "Name row".
class SampleSignals
{
public:
    explicit SampleSignals(const LXColorSampleModel* samples)
    {
        using M = LXColorSampleModel;
        const auto note = [lines = m_pLines](const char* name) {
            return [lines, name](int row) { *lines << QString("%1 %2").arg(name).arg(row); };
        };
        QObject::connect(samples, &M::SampleInserted, note("Inserted"));
        QObject::connect(samples, &M::SampleRemoved, note("Removed"));
        QObject::connect(samples, &M::SamplePosChanged, note("Pos"));
        QObject::connect(samples, &M::SampleColorChanged, note("Color"));
    }

    QStringList Take() { return std::exchange(*m_pLines, QStringList()); }

private:
    std::shared_ptr<QStringList> m_pLines = std::make_shared<QStringList>();
};

LXImage32 OnePixel(quint32 argb)
{
    return Filled(QSize(1, 1), argb);
}
} // namespace

/// The color samples of a document, without undo.
class TestColorSamples : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void samplesComeInAndGo();
    void colorIsThatOfTheMergedPicture();
    void onlyWhatIsReadOfALargePictureIsComposed();
    void radiusTakesTheMeanOfASquare();
    void meanIsWeightedByAlpha();
    void squareIsCutByTheCanvas();
    void pointOutsideTheCanvasHasNoColor();
    void colorFollowsTheComposition();
    void colorFollowsTheCanvas();
    void movedSampleIsTold();
    void radiusIsClamped();
    void formatsAreWords();
    void newSampleIsLikeTheLast();
    void badRowsAreHarmless();
    void copiedDocumentHasItsOwnSamples();

private:
    OwnedDocument m_pDocument;
    LXColorSampleModel* m_pSamples = nullptr;
    std::unique_ptr<QAbstractItemModelTester> m_pTester;
};

/// An opaque canvas of (10, 20, 30) with a layer of nothing above it.
void TestColorSamples::init()
{
    m_pDocument = Make(QSize(20, 20));
    m_pDocument->AddLayer("ground", Filled(QSize(20, 20), 0xFF0A141E), QPoint());
    m_pSamples = m_pDocument->GetColorSamples();
    m_pTester = std::make_unique<QAbstractItemModelTester>(
        m_pSamples, QAbstractItemModelTester::FailureReportingMode::QtTest);
}

void TestColorSamples::cleanup()
{
    m_pTester.reset();
    m_pDocument.reset();
}

void TestColorSamples::samplesComeInAndGo()
{
    SampleSignals told(m_pSamples);
    m_pSamples->InsertSample(0, {1, 1});
    m_pSamples->InsertSample(99, {2, 2});
    m_pSamples->InsertSample(0, {3, 3});
    QCOMPARE(told.Take(), (QStringList{"Inserted 0", "Inserted 1", "Inserted 0"}));
    QCOMPARE(m_pSamples->rowCount(), 3);
    QCOMPARE(m_pSamples->GetPoint(0), QPoint(3, 3));
    QCOMPARE(m_pSamples->GetPoint(2), QPoint(2, 2));
    m_pSamples->RemoveSample(1);
    QCOMPARE(told.Take(), QStringList{"Removed 1"});
    QCOMPARE(m_pSamples->GetPoint(1), QPoint(2, 2));
}

void TestColorSamples::colorIsThatOfTheMergedPicture()
{
    m_pSamples->InsertSample(0, {5, 6});
    QCOMPARE(m_pSamples->GetColor(0), QColor(10, 20, 30));
    m_pDocument->AddLayer("dot", OnePixel(0xFF0000FF), QPoint(5, 6));
    QCOMPARE(m_pSamples->GetColor(0), QColor(0, 0, 255));
    QCOMPARE(m_pSamples->index(0).data(Qt::DecorationRole).value<QColor>(), QColor(0, 0, 255));
}

void TestColorSamples::onlyWhatIsReadOfALargePictureIsComposed()
{
    const OwnedDocument document = Make(QSize(1280, 1280));
    document->AddLayer("ground", Filled(QSize(1280, 1280), 0xFF0A141E), QPoint());
    const auto composed = [&document] {
        return LXDocumentInterfacePrivate::Get(document.get())->merged.ComposedTiles();
    };
    const quint64 before = composed();
    document->GetColorSamples()->InsertSample(0, {640, 300});
    QCOMPARE(document->GetColorSamples()->GetColor(0), QColor(10, 20, 30));
    QCOMPARE(composed(), before + 1);
    // The square reaches over the edge of a tile.
    QCOMPARE(LXColorInfoHelper::AverageColor(document.get(), 0, {640, 300}, 1), QColor(10, 20, 30));
    QCOMPARE(composed(), before + 2);
    QVERIFY(!LXColorInfoHelper::AverageColor(document.get(), 0, {1280, 300}, 1).isValid());
    QCOMPARE(composed(), before + 2);
}

void TestColorSamples::radiusTakesTheMeanOfASquare()
{
    m_pSamples->InsertSample(0, {5, 5});
    m_pDocument->AddLayer("dot", OnePixel(0xFFFF141E), QPoint(8, 5));
    for (const int radius : {0, 1, 2}) {
        m_pSamples->SetSampleRadius(0, radius);
        QCOMPARE(m_pSamples->GetColor(0), QColor(10, 20, 30));
    }
    m_pSamples->SetSampleRadius(0, 3);
    // (48 x 10 + 255) / 49 = 15.
    QCOMPARE(m_pSamples->GetColor(0), QColor(15, 20, 30));
}

void TestColorSamples::meanIsWeightedByAlpha()
{
    const OwnedDocument document = Make(QSize(3, 3));
    document->AddLayer("two", OnePixel(0xFFC80000), QPoint(0, 0));
    document->AddLayer("dots", OnePixel(0x330000C8), QPoint(2, 2));
    LXColorSampleModel* samples = document->GetColorSamples();
    samples->InsertSample(0, {1, 1});
    QCOMPARE(samples->GetColor(0), QColor(0, 0, 0, 0));
    samples->SetSampleRadius(0, 1);
    // Alphas 255 and 51 of nine pixels: alpha 34; red 255 x 200 / 306 = 166.7, blue 51 x 200 / 306 = 33.3.
    QCOMPARE(samples->GetColor(0), QColor(167, 0, 33, 34));
}

void TestColorSamples::squareIsCutByTheCanvas()
{
    m_pSamples->InsertSample(0, {0, 0});
    m_pSamples->SetSampleRadius(0, 1);
    m_pDocument->AddLayer("dot", OnePixel(0xFF32141E), QPoint(1, 1));
    // Four pixels: (3 x 10 + 50) / 4.
    QCOMPARE(m_pSamples->GetColor(0), QColor(20, 20, 30));
}

void TestColorSamples::pointOutsideTheCanvasHasNoColor()
{
    m_pSamples->InsertSample(0, {-1, 3});
    m_pSamples->InsertSample(1, {20, 3});
    QVERIFY(!m_pSamples->GetColor(0).isValid());
    QVERIFY(!m_pSamples->GetColor(1).isValid());
    QCOMPARE(m_pSamples->GetColorText(0), QString("–"));
}

void TestColorSamples::colorFollowsTheComposition()
{
    m_pSamples->InsertSample(0, {2, 2});
    m_pSamples->InsertSample(1, {10, 10});
    m_pSamples->SetSampleRadius(1, 2);
    SampleSignals told(m_pSamples);
    m_pDocument->UpdateDocumentRect(QRect(12, 12, 1, 1));
    QCOMPARE(told.Take(), QStringList{"Color 1"});
    m_pDocument->UpdateDocumentRect(QRect(13, 13, 5, 5));
    m_pDocument->UpdateDocumentRect(QRect(3, 2, 2, 2));
    QCOMPARE(told.Take(), QStringList());
    m_pDocument->UpdateDocumentRect(QRect(0, 0, 3, 3));
    QCOMPARE(told.Take(), QStringList{"Color 0"});
}

void TestColorSamples::colorFollowsTheCanvas()
{
    m_pSamples->InsertSample(0, {15, 15});
    SampleSignals told(m_pSamples);
    m_pDocument->SetDocumentSize(QSize(10, 10));
    QVERIFY(told.Take().contains("Color 0"));
    QVERIFY(!m_pSamples->GetColor(0).isValid());
}

void TestColorSamples::movedSampleIsTold()
{
    m_pSamples->InsertSample(0, {1, 1});
    SampleSignals told(m_pSamples);
    m_pSamples->SetPoint(0, {2, 2});
    QCOMPARE(told.Take(), (QStringList{"Pos 0", "Color 0"}));
    m_pSamples->SetPoint(0, {2, 2});
    QCOMPARE(told.Take(), QStringList());
}

void TestColorSamples::radiusIsClamped()
{
    m_pSamples->InsertSample(0, {1, 1});
    m_pSamples->SetSampleRadius(0, 9);
    QCOMPARE(m_pSamples->GetSampleRadius(0), 3);
    m_pSamples->SetSampleRadius(0, -1);
    QCOMPARE(m_pSamples->GetSampleRadius(0), 0);
}

void TestColorSamples::formatsAreWords()
{
    m_pDocument->AddLayer("dot", OnePixel(0xFFFF8000), QPoint(1, 1));
    m_pSamples->InsertSample(0, {1, 1});
    QCOMPARE(m_pSamples->GetDisplayFormat(0), LXColorSampleModel::RGB);
    QCOMPARE(m_pSamples->GetColorText(0), QString("R 255  G 128  B 0"));
    SampleSignals told(m_pSamples);
    m_pSamples->SetDisplayFormat(0, LXColorSampleModel::CMYK);
    QCOMPARE(told.Take(), QStringList{"Color 0"});
    // 1 - 128 / 255 = 0.498.
    QCOMPARE(m_pSamples->GetColorText(0), QString("C 0 %  M 50 %  Y 100 %  K 0 %"));
    QCOMPARE(m_pSamples->index(0).data().toString(), QString("1, 1: C 0 %  M 50 %  Y 100 %  K 0 %"));
}

void TestColorSamples::newSampleIsLikeTheLast()
{
    m_pSamples->InsertSample(0, {1, 1});
    m_pSamples->SetSampleRadius(0, 2);
    m_pSamples->SetDisplayFormat(0, LXColorSampleModel::CMYK);
    m_pSamples->InsertSample(1, {5, 5});
    QCOMPARE(m_pSamples->GetSampleRadius(1), 2);
    QCOMPARE(m_pSamples->GetDisplayFormat(1), LXColorSampleModel::CMYK);
    QCOMPARE(m_pSamples->GetPoint(1), QPoint(5, 5));
}

void TestColorSamples::badRowsAreHarmless()
{
    m_pSamples->InsertSample(0, {1, 1});
    SampleSignals told(m_pSamples);
    for (const int row : {-1, 1}) {
        m_pSamples->SetPoint(row, {3, 3});
        m_pSamples->SetSampleRadius(row, 2);
        m_pSamples->SetDisplayFormat(row, LXColorSampleModel::CMYK);
        m_pSamples->RemoveSample(row);
        QVERIFY(!m_pSamples->GetColor(row).isValid());
        QCOMPARE(m_pSamples->GetPoint(row), QPoint());
        QCOMPARE(m_pSamples->GetSampleRadius(row), 0);
    }
    QCOMPARE(told.Take(), QStringList());
}

void TestColorSamples::copiedDocumentHasItsOwnSamples()
{
    m_pSamples->InsertSample(0, {4, 4});
    m_pSamples->SetSampleRadius(0, 1);
    const OwnedDocument copy(LXDocumentFactory::Instance()->Copy(m_pDocument.get()));
    LXColorSampleModel* copied = copy->GetColorSamples();
    QCOMPARE(copied->GetPoint(0), QPoint(4, 4));
    QCOMPARE(copied->GetSampleRadius(0), 1);
    QCOMPARE(copied->GetColor(0), QColor(10, 20, 30));
    copied->SetPoint(0, {5, 5});
    QCOMPARE(m_pSamples->GetPoint(0), QPoint(4, 4));
}

ZK_REGISTER_TEST(tst_colorsamples, TestColorSamples)
#include "tst_colorsamples.moc"
