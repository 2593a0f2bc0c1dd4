#include "GuiFixture.h"
#include "ViewFixture.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "gui/CanvasPainter.h"
#include "support/TestRegistry.h"

#include <QPainter>
#include <QScrollBar>
#include <QTest>

#include <cmath>
#include <random>

using namespace ViewFixture;
using GuiFixture::MakeDocument;

/// Which part of the picture is read, and so composed, to paint a part of the viewport.
class TestCanvasPainter : public QObject
{
    Q_OBJECT

private slots:
    void paintingReadsNothingElseOfThePicture();
    void aLargePartIsPaintedLikeItsPieces();
    void aLargePictureIsComposedWhereItIsSeen();
    void whatWasNotSeenIsComposedWhenItComesIntoSight();
};

namespace {
LXImage32 Filled(const QSize& size, quint32 argb)
{
    LXImage32 image(size.width(), size.height());
    image.Fill(LXRGBA32i(argb));
    return image;
}

LXImage32 Noise(const QSize& size, std::mt19937& random)
{
    LXImage32 image(size.width(), size.height());
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.SetColor(x, y, LXRGBA32i(static_cast<quint32>(random())));
    }
    return image;
}

QImage Painted(const QRect& exposed, const CanvasPlace& place, const LXImage32& picture,
               ScaledTileCache& cache)
{
    QImage viewport(300, 200, QImage::Format_ARGB32_Premultiplied);
    viewport.fill(Qt::black);
    QPainter painter(&viewport);
    PaintCanvas(painter, exposed, place, CanvasLook::ForSurround(Qt::gray), picture, cache);
    return viewport;
}

bool HasColor(const QImage& image, const QColor& color)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == color) return true;
        }
    }
    return false;
}

quint64 ComposedTiles(const LXDocumentInterface* document)
{
    return LXDocumentInterfacePrivate::Get(document)->merged.ComposedTiles();
}
} // namespace

void TestCanvasPainter::paintingReadsNothingElseOfThePicture()
{
    std::mt19937 random(1);
    const auto pick = [&random](int from, int to) {
        return from + static_cast<int>(random() % static_cast<unsigned int>(to - from + 1));
    };
    const QSize size(700, 500);
    const LXImage32 picture = Noise(size, random);
    for (int round = 0; round < 60; ++round) {
        CanvasPlace place;
        place.size = size;
        place.scale = std::exp2(pick(-300, 200) / 100.0);
        place.origin = QPoint(pick(-400, 200), pick(-300, 150));
        const QRect exposed(pick(0, 200), pick(0, 150), pick(1, 100), pick(1, 50));

        LXImage32 elsewhereAnother = Filled(size, 0xFF00FF00);
        const QRect behind = PictureBehind(exposed, place);
        BlendOn(picture, behind, BlendMode::Source, elsewhereAnother, behind, 1.0, false);
        ScaledTileCache first(1 << 26);
        ScaledTileCache second(1 << 26);
        QCOMPARE(Painted(exposed, place, elsewhereAnother, first), Painted(exposed, place, picture, second));
    }
}

void TestCanvasPainter::aLargePartIsPaintedLikeItsPieces()
{
    std::mt19937 random(2);
    const LXImage32 picture = Noise({700, 500}, random);
    // Steps that binary numbers hold, so that no piece begins a hair beside the whole.
    for (const double scale : {0.375, 0.75, 1.0, 2.0}) {
        CanvasPlace place;
        place.size = QSize(700, 500);
        place.scale = scale;
        place.origin = QPoint(-20, 13);
        const QRect exposed(5, 3, 580, 390);
        ScaledTileCache cache(1 << 26);
        const CanvasLook look = CanvasLook::ForSurround(Qt::gray);
        QImage whole(600, 400, QImage::Format_RGB32);
        whole.fill(Qt::black);
        QImage pieces = whole;
        {
            QPainter painter(&whole);
            PaintCanvas(painter, exposed, place, look, picture, cache);
        }
        {
            QPainter painter(&pieces);
            for (int top = exposed.top(); top <= exposed.bottom(); top += 30) {
                PaintCanvas(painter, QRect(exposed.left(), top, exposed.width(), 30) & exposed, place, look,
                            picture, cache);
            }
        }
        QCOMPARE(whole, pieces);
    }
}

void TestCanvasPainter::aLargePictureIsComposedWhereItIsSeen()
{
    const auto document = MakeDocument({4000, 4000});
    const auto view = ShowView(document);
    view->Zoom(1, Middle(*view), false);
    Shown(*view);
    const quint64 before = ComposedTiles(document.get());
    document->LayerImageChanged(1, QRect());
    Shown(*view);
    // 400 x 300 viewport pixels touch no more than 5 x 4 tiles of a thousand; nothing is scaled down.
    QVERIFY(ComposedTiles(document.get()) > before);
    QVERIFY(ComposedTiles(document.get()) - before <= 20);
}

void TestCanvasPainter::whatWasNotSeenIsComposedWhenItComesIntoSight()
{
    const auto document = MakeDocument({2000, 2000});
    const auto view = ShowView(document);
    for (const double scale : {1.0, 0.4}) {
        view->Zoom(scale, Middle(*view), false);
        for (QScrollBar* bar : {view->horizontalScrollBar(), view->verticalScrollBar()})
            bar->setValue(bar->minimum());
        document->SetLayerImage(1, Filled(QSize(2000, 2000), 0xFFFF0000), QPoint());
        {
            const LXDocumentLayerLockerForRead whole(document.get(), 0);
        }
        document->SetLayerImage(1, Filled(QSize(2000, 2000), 0xFF0000FF), QPoint());
        Shown(*view);
        // Tiles that were seen in part come first.
        for (int step = 0; step < 12; ++step) {
            for (QScrollBar* bar : {view->horizontalScrollBar(), view->verticalScrollBar()})
                bar->setValue(bar->value() + 60);
            QVERIFY(!HasColor(Shown(*view), Qt::red));
        }
    }
}

ZK_REGISTER_TEST(tst_canvaspainter, TestCanvasPainter)
#include "tst_canvaspainter.moc"
