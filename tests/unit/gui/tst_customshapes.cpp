#include "gui/LexoCustomShapePresetModel.h"
#include "guicore/LexoListView.h"
#include "support/TestRegistry.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QTest>

/// The shapes that come with the program.
class TestCustomShapes : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void thereAreTwoShapesWithNames();
    void shapesAreClosedAndDiffer();
    void aBadRowHasNoShape();
    void theModelKeepsTheRules();
    void thePreviewIsDrawnInTheInkOfTheMoment();
    void thePreviewIsAsLargeAsItsPlaceAllows();
};

namespace {
QImage PreviewOf(const QIcon& icon, const QSize& size)
{
    return icon.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// The box round what is painted at all.
QRect PaintedPart(const QImage& image)
{
    QRect part;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0) part |= QRect(x, y, 1, 1);
        }
    }
    return part;
}
} // namespace

void TestCustomShapes::cleanup()
{
    QApplication::setPalette(QPalette());
}

void TestCustomShapes::thereAreTwoShapesWithNames()
{
    const LexoCustomShapePresetModel model;
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.index(0).data().toString(), QString("Demo 1"));
    QCOMPARE(model.index(1).data().toString(), QString("Demo 2"));
}

void TestCustomShapes::shapesAreClosedAndDiffer()
{
    const LexoCustomShapePresetModel model;
    for (int row = 0; row < 2; ++row) {
        const QPainterPath path = model.GetPath(row);
        QVERIFY(path.boundingRect().width() > 0 && path.boundingRect().height() > 0);
        for (const QPolygonF& subPath : path.toSubpathPolygons())
            QVERIFY(subPath.isClosed());
        QVERIFY(path.contains(path.boundingRect().center()));
    }
    QVERIFY(model.GetPath(0) != model.GetPath(1));
}

void TestCustomShapes::aBadRowHasNoShape()
{
    const LexoCustomShapePresetModel model;
    QVERIFY(model.GetPath(-1).isEmpty());
    QVERIFY(model.GetPath(2).isEmpty());
    QVERIFY(!model.data(QModelIndex()).isValid());
    QVERIFY(!model.data(model.index(0), Qt::UserRole).isValid());
}

void TestCustomShapes::theModelKeepsTheRules()
{
    LexoCustomShapePresetModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(model.rowCount(model.index(0)), 0);
}

void TestCustomShapes::thePreviewIsDrawnInTheInkOfTheMoment()
{
    const LexoCustomShapePresetModel model;
    const QIcon icon = model.index(0).data(Qt::DecorationRole).value<QIcon>();
    for (const QColor& ink : {QColor(0xe4, 0xe4, 0xe4), QColor(0x1e, 0x1e, 0x1e)}) {
        QPalette palette;
        palette.setColor(QPalette::Text, ink);
        QApplication::setPalette(palette);
        QCOMPARE(PreviewOf(icon, {48, 48}).pixelColor(24, 24), ink);
    }
}

void TestCustomShapes::thePreviewIsAsLargeAsItsPlaceAllows()
{
    const LexoCustomShapePresetModel model;
    for (int row = 0; row < 2; ++row) {
        const QIcon icon = model.index(row).data(Qt::DecorationRole).value<QIcon>();
        const QRect part = PaintedPart(PreviewOf(icon, {48, 48}));
        const QSizeF shape = model.GetPath(row).boundingRect().size();
        QVERIFY(qMax(part.width(), part.height()) >= 43 && qMax(part.width(), part.height()) <= 46);
        QVERIFY(qAbs(double(part.width()) / part.height() - shape.width() / shape.height()) < 0.06);
        QVERIFY((part.center() - QPoint(23, 23)).manhattanLength() <= 2);
    }
}

ZK_REGISTER_TEST(tst_customshapes, TestCustomShapes)
#include "tst_customshapes.moc"
