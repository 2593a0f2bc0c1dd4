#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerLocks.h"
#include "document/Thumbnail.h"
#include "image/LXImage.h"
#include "image/LXTileManager.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QAbstractItemModelTester>
#include <QImage>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

#include <random>

using namespace DocumentFixture;

class TestDocumentModel : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheRulesOfItemModels();
    void settersTellViewsAndThePicture();
    void valuesAreKeptInRange();
    void badRowsAnswerDefaults();
    void rolesTellWhatTheGettersTell();
    void thumbnailsShowTheCanvas();
    void thumbnailsAreMeansOfPoints_data();
    void thumbnailsAreMeansOfPoints();
    void thumbnailsFollowChanges();
    void maskThumbnailsAreGray();
    void thumbnailsOfPixelsThatCannotBeReadComeLater();
    void selectionsFollowALayerThatMoves();
};

void TestDocumentModel::keepsTheRulesOfItemModels()
{
    const OwnedDocument document = Make(QSize(20, 20));
    LXDocumentModel* model = document->GetModel();
    const QAbstractItemModelTester tester(model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    for (const char* name : {"a", "b", "c", "d"}) {
        document->AddLayer(name, LXImage32(5, 5), QPoint());
    }
    model->MoveLayer(0, 3);
    model->MoveLayer(2, 1);
    model->MoveLayer(1, 1);
    model->MoveLayer(-1, 2);
    model->MoveLayer(1, 4);
    document->RemoveLayer(2);
    QStringList names;
    for (int row = 0; row < model->rowCount(); ++row) {
        names << model->data(model->index(row)).toString();
    }
    QCOMPARE(names, QStringList({"c", "b", "d"}));
}

void TestDocumentModel::settersTellViewsAndThePicture()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("layer", LXImage32(5, 5), QPoint(1, 1));
    LXDocumentModel* model = document->GetModel();
    QSignalSpy changed(model, &QAbstractItemModel::dataChanged);
    SignalLog log(document.get());

    model->SetName(0, "other");
    model->SetLockFlags(0, LayerLocks::Pixels);
    QCOMPARE(log.Take(), QStringList({"LocksChanged 1 2"}));
    QCOMPARE(document->GetLayerLockFlags(1), LayerLocks::Pixels);
    model->SetOpacity(0, 0.5);
    model->SetBlendMode(0, BlendMode::Multiply);
    model->SetVisible(0, false);
    QCOMPARE(log.Take(), QStringList({"CompositionChanged (1,1 5x5)", "CompositionChanged (1,1 5x5)",
                                      "CompositionChanged (1,1 5x5)"}));
    QCOMPARE(changed.count(), 5);

    model->SetName(0, "other");
    model->SetLockFlags(0, LayerLocks::Pixels);
    model->SetOpacity(0, 0.5);
    model->SetBlendMode(0, BlendMode::Multiply);
    model->SetVisible(0, false);
    QCOMPARE(log.Take(), QStringList());
    QCOMPARE(changed.count(), 5);
}

void TestDocumentModel::valuesAreKeptInRange()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("layer", LXImage32(5, 5), QPoint(1, 1));
    LXDocumentModel* model = document->GetModel();
    model->SetOpacity(0, -2.0);
    QCOMPARE(model->GetOpacity(0), 0.0);
    model->SetOpacity(0, 7.0);
    QCOMPARE(model->GetOpacity(0), 1.0);
    model->SetLockFlags(0, 0xFF);
    QCOMPARE(model->GetLockFlags(0), LayerLocks::Every);
}

void TestDocumentModel::badRowsAnswerDefaults()
{
    const OwnedDocument document = Make(QSize(20, 20));
    LXDocumentModel* model = document->GetModel();
    SignalLog log(document.get());
    for (const int row : {-1, 0, 5}) {
        model->SetName(row, "x");
        model->SetOpacity(row, 0.1);
        model->SetBlendMode(row, 13);
        model->SetVisible(row, false);
        model->SetLockFlags(row, 1);
        model->SetMaskSelected(row, true);
        model->SetMaskLinked(row, false);
        model->UpdateLayerThumbnail(row);
        model->UpdateMaskThumbnail(row);
        QCOMPARE(model->GetName(row), QString());
        QVERIFY(!model->GetLayerSelected(row));
        QVERIFY(!model->GetMaskSelected(row));
        QCOMPARE(model->GetLayerOffset(row), QPoint());
    }
    QCOMPARE(log.Take(), QStringList());
}

void TestDocumentModel::rolesTellWhatTheGettersTell()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("layer", LXImage32(5, 5), QPoint(1, 1));
    document->AddMask(1, true);
    LXDocumentModel* model = document->GetModel();
    model->SetMaskSelected(0, true);
    model->SetMaskLinked(0, false);
    model->SetOpacity(0, 0.25);
    const QModelIndex index = model->index(0);
    QCOMPARE(index.data().toString(), QString("layer"));
    QCOMPARE(index.data(LXDocumentModel::HasMaskRole).toBool(), true);
    QCOMPARE(index.data(LXDocumentModel::MaskSelectedRole).toBool(), true);
    QCOMPARE(index.data(LXDocumentModel::MaskLinkedRole).toBool(), false);
    QCOMPARE(index.data(LXDocumentModel::OpacityRole).toDouble(), 0.25);
    QCOMPARE(index.data(LXDocumentModel::BlendModeRole).toUInt(), 0u);
    QCOMPARE(index.data(LXDocumentModel::VisibleRole).toBool(), true);
    QCOMPARE(index.data(LXDocumentModel::LocksRole).toUInt(), 0u);
    QCOMPARE(index.data(LXDocumentModel::KindRole).toInt(), 0);
    QVERIFY(!index.data(Qt::ToolTipRole).isValid());
}

void TestDocumentModel::thumbnailsShowTheCanvas()
{
    const OwnedDocument document = Make(QSize(256, 128));
    document->AddLayer("right half", Filled(QSize(128, 128), 0xFFFF0000), QPoint(128, 0));
    const auto thumbnail = document->GetModel()->index(0).data(Qt::DecorationRole).value<QImage>();
    QCOMPARE(thumbnail.size(), QSize(64, 32));
    QCOMPARE(thumbnail.pixel(48, 16), qRgba(255, 0, 0, 255));
    QCOMPARE(qAlpha(thumbnail.pixel(16, 16)), 0);
}

void TestDocumentModel::thumbnailsAreMeansOfPoints_data()
{
    QTest::addColumn<QSize>("canvas");
    QTest::addColumn<QRect>("layer");
    QTest::newRow("smaller than a thumbnail") << QSize(30, 20) << QRect(0, 0, 30, 20);
    QTest::newRow("one pixel") << QSize(1, 1) << QRect(0, 0, 1, 1);
    QTest::newRow("on several tiles") << QSize(700, 300) << QRect(0, 0, 700, 300);
    QTest::newRow("beyond the top left") << QSize(400, 500) << QRect(-150, -70, 300, 290);
    QTest::newRow("within the canvas") << QSize(400, 500) << QRect(131, 77, 129, 300);
    QTest::newRow("beside the canvas") << QSize(200, 200) << QRect(250, 0, 20, 20);
}

// The mean of four by four points in each pixel, colors weighing as much as they cover.
void TestDocumentModel::thumbnailsAreMeansOfPoints()
{
    QFETCH(QSize, canvas);
    QFETCH(QRect, layer);
    LXImage32 image(layer.width(), layer.height());
    image.Fill(LXRGBA32i(0x80204060));
    std::mt19937 random(3);
    for (int y = 0; y < image.Height() * 2 / 3; ++y) {
        for (int x = 0; x < image.Width(); ++x)
            image.SetColor(x, y, LXRGBA32i(quint32(random())));
    }
    const QImage thumbnail = Thumbnail::OfLayer(image, layer.topLeft(), canvas);
    const auto canvasPoint = [](int point, int pixels, int length) {
        return qMin(length - 1, int((point + 0.5) / 4 * length / pixels));
    };
    for (int y = 0; y < thumbnail.height(); ++y) {
        for (int x = 0; x < thumbnail.width(); ++x) {
            int sums[4] = {};
            for (int i = 0; i < 16; ++i) {
                const QPoint point(canvasPoint(4 * x + i % 4, thumbnail.width(), canvas.width()),
                                   canvasPoint(4 * y + i / 4, thumbnail.height(), canvas.height()));
                if (!layer.contains(point)) continue;
                const QPoint inLayer = point - layer.topLeft();
                const LXRGBA32i pixel = image.GetColor(inLayer.x(), inLayer.y());
                sums[0] += pixel.Alpha();
                sums[1] += pixel.Alpha() * pixel.Red();
                sums[2] += pixel.Alpha() * pixel.Green();
                sums[3] += pixel.Alpha() * pixel.Blue();
            }
            const int weight = qMax(1, sums[0]);
            const QRgb expected =
                sums[0] == 0 ? 0 : qRgba(sums[1] / weight, sums[2] / weight, sums[3] / weight, sums[0] / 16);
            QCOMPARE(thumbnail.pixel(x, y), expected);
        }
    }
}

void TestDocumentModel::thumbnailsFollowChanges()
{
    const OwnedDocument document = Make(QSize(64, 64));
    document->AddLayer("layer", Filled(QSize(64, 64), 0xFFFF0000), QPoint());
    LXDocumentModel* model = document->GetModel();
    QCOMPARE(model->index(0).data(Qt::DecorationRole).value<QImage>().pixel(5, 5), 0xFFFF0000);
    document->SetLayerImage(1, Filled(QSize(64, 64), 0xFF0000FF), QPoint());
    QCOMPARE(model->index(0).data(Qt::DecorationRole).value<QImage>().pixel(5, 5), 0xFF0000FF);
}

void TestDocumentModel::maskThumbnailsAreGray()
{
    const OwnedDocument document = Make(QSize(64, 64));
    document->AddLayer("layer", LXImage32(64, 64), QPoint());
    const QModelIndex index = document->GetModel()->index(0);
    QVERIFY(!index.data(LXDocumentModel::MaskThumbnailRole).isValid());
    document->AddMask(1, true);
    document->SetMaskImage(1, Filled(QSize(32, 64), 0x40000000), QPoint());
    const auto thumbnail = index.data(LXDocumentModel::MaskThumbnailRole).value<QImage>();
    QCOMPARE(thumbnail.pixel(5, 5), qRgb(0x40, 0x40, 0x40));
    QCOMPARE(thumbnail.pixel(60, 5), qRgb(255, 255, 255));
}

void TestDocumentModel::selectionsFollowALayerThatMoves()
{
    const OwnedDocument document = Make(QSize(64, 64));
    for (const char* name : {"c", "b", "a"}) {
        document->AddLayer(name, LXImage32(5, 5), QPoint());
    }
    const QPersistentModelIndex top = document->GetModel()->index(0);
    document->GetModel()->MoveLayer(0, 2);
    QCOMPARE(top.row(), 2);
    QCOMPARE(top.data().toString(), QString("a"));
}

void TestDocumentModel::thumbnailsOfPixelsThatCannotBeReadComeLater()
{
    const auto restore = qScopeGuard([budget = LXTileManager::Instance().MemoryBudget()] {
        FaultSeams::Reset();
        LXTileManager::Instance().SetMemoryBudget(budget);
    });
    const OwnedDocument document = Make(QSize(128, 128));
    LXImage32 pixels = Filled(QSize(128, 128), 0xFFFF0000);
    pixels.SetColor(0, 0, LXRGBA32i(0xFF00FF00));
    document->AddLayer("layer", pixels, QPoint());
    document->AddMask(1, true);
    document->SetMaskImage(1, Filled(QSize(128, 128), 0x40000000), QPoint());
    for (const int role : {int(Qt::DecorationRole), int(LXDocumentModel::MaskThumbnailRole)}) {
        document->GetModel()->UpdateLayerThumbnail(0);
        document->GetModel()->UpdateMaskThumbnail(0);
        // All that is not pinned goes to the disk.
        LXTileManager::Instance().SetMemoryBudget(0);
        LXImage32 other(128, 128);
        other.SetColor(0, 0, LXRGBA32i(0xFF000000));
        FaultSeams::FailNth(FaultSeams::Seam::SwapRead, 1);
        const QModelIndex index = document->GetModel()->index(0);
        QVERIFY(index.data(role).value<QImage>().isNull());
        QCOMPARE(index.data(role).value<QImage>().size(), QSize(64, 64));
    }
}

ZK_REGISTER_TEST(tst_documentmodel, TestDocumentModel)
#include "tst_documentmodel.moc"
