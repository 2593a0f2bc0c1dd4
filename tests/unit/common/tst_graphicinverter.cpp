#include "common/GraphicInverter.h"
#include "support/TestRegistry.h"

#include <QGraphicsScene>
#include <QImage>
#include <QPainter>
#include <QTest>

class TestGraphicInverter : public QObject
{
    Q_OBJECT

private slots:
    void theBoundIsThePathsBound();
    void whatLiesUnderThePathIsInverted();
};

void TestGraphicInverter::theBoundIsThePathsBound()
{
    QPainterPath path;
    path.addRect(3, 4, 10, 20);
    GraphicInverter item;
    item.SetPath(path);
    QCOMPARE(item.boundingRect(), QRectF(3, 4, 10, 20));
}

void TestGraphicInverter::whatLiesUnderThePathIsInverted()
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(qRgb(10, 200, 0));

    QPainterPath path;
    path.addRect(2, 2, 4, 4);
    auto* item = new GraphicInverter;
    item->SetPath(path);
    QGraphicsScene scene(0, 0, 8, 8);
    scene.addItem(item);
    QPainter painter(&image);
    scene.render(&painter);
    painter.end();

    QCOMPARE(image.pixel(3, 3), qRgb(245, 55, 255));
    QCOMPARE(image.pixel(0, 0), qRgb(10, 200, 0));
}

ZK_REGISTER_TEST(tst_graphicinverter, TestGraphicInverter)

#include "tst_graphicinverter.moc"
