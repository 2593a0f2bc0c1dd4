#include "history/PaintPlacement.h"
#include "support/TestRegistry.h"

#include <QTest>

/// The shapes in which tools hand their images over.
class TestPaintPlacement : public QObject
{
    Q_OBJECT

private slots:
    void imagesAreFoundByTheirSize_data();
    void imagesAreFoundByTheirSize();
};

void TestPaintPlacement::imagesAreFoundByTheirSize_data()
{
    QTest::addColumn<QRect>("before");
    QTest::addColumn<QRect>("after");
    QTest::addColumn<QSize>("undoSize");
    QTest::addColumn<QRect>("undoPlace");
    QTest::addColumn<QSize>("redoSize");
    QTest::addColumn<QRect>("redoPlace");

    const QRect layer(0, 0, 100, 80);
    const QRect inside(10, 20, 30, 40);
    const QRect across(90, 70, 30, 40);
    const QRect outside(200, 10, 30, 40);
    const QRect acrossPart = layer & across;
    const QRect acrossUnion = layer | across;
    const QRect outsideUnion = layer | outside;

    QTest::newRow("fill: the filled area inside the layer")
        << layer << inside << inside.size() << inside << inside.size() << inside;
    QTest::newRow("fill that grows the layer: undo holds the common part")
        << layer << across << acrossPart.size() << acrossPart << across.size() << across;
    QTest::newRow("fill beside the layer: undo holds the whole layer")
        << layer << outside << layer.size() << layer << outside.size() << outside;
    QTest::newRow("fill menu, clean up alpha, delete: both whole")
        << layer << layer << layer.size() << layer << layer.size() << layer;
    QTest::newRow("fill menu with a selection: whole images, the working rectangle as geometry")
        << layer << inside << layer.size() << layer << layer.size() << layer;
    QTest::newRow("clipboard's cut and paste: the common part of layer and selection")
        << layer << across << acrossPart.size() << acrossPart << acrossPart.size() << acrossPart;
    QTest::newRow("a selection beside the layer: nothing to write")
        << layer << outside << QSize(0, 0) << QRect() << QSize(0, 0) << QRect();
    QTest::newRow("lifted piece: undo holds the erased pixels, redo what lies there now")
        << layer << across << across.size() << across << acrossPart.size() << acrossPart;
    QTest::newRow("floating piece put down: undo the common part, redo the piece's rectangle")
        << layer << across << acrossPart.size() << acrossPart << across.size() << across;
    QTest::newRow("paste into a mask: the whole mask before, the covered part after")
        << layer << inside << layer.size() << layer << inside.size() << inside;
    QTest::newRow("gradient on a layer: the whole layer before, the union after")
        << layer << acrossUnion << layer.size() << layer << acrossUnion.size() << acrossUnion;
    QTest::newRow("gradient on a mask: both images of the union, the path's rectangle as geometry")
        << layer << outside << outsideUnion.size() << outsideUnion << outsideUnion.size() << outsideUnion;
    QTest::newRow("gradient's wedges on a mask: both the common part")
        << layer << inside << inside.size() << inside << inside.size() << inside;
    QTest::newRow("path fill: the layer before, the union after")
        << layer << outsideUnion << layer.size() << layer << outsideUnion.size() << outsideUnion;
    QTest::newRow("transformation: the layer before, the bound of the rendered piece after")
        << layer << across << layer.size() << layer << across.size() << across;
    QTest::newRow("first paint on an empty layer")
        << QRect() << inside << QSize(0, 0) << QRect() << inside.size() << inside;
    QTest::newRow("a size that fits nowhere is not placed")
        << layer << inside << QSize(7, 7) << QRect() << QSize(7, 7) << QRect();
    QTest::newRow("equal sizes: undo prefers the layer, redo its own rectangle")
        << layer << layer.translated(50, 0) << layer.size() << layer << layer.size()
        << layer.translated(50, 0);
}

void TestPaintPlacement::imagesAreFoundByTheirSize()
{
    QFETCH(QRect, before);
    QFETCH(QRect, after);
    QFETCH(QSize, undoSize);
    QFETCH(QRect, undoPlace);
    QFETCH(QSize, redoSize);
    QFETCH(QRect, redoPlace);
    QCOMPARE(PaintPlacement::OfUndoImage(undoSize, before, after), undoPlace);
    QCOMPARE(PaintPlacement::OfRedoImage(redoSize, before, after), redoPlace);
}

ZK_REGISTER_TEST(tst_paintplacement, TestPaintPlacement)
#include "tst_paintplacement.moc"
