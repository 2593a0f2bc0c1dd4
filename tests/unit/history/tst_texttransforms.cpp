#include "TextLayerFixture.h"
#include "UndoLaw.h"

#include "history/ChangeCommandHelper.h"
#include "history/ImageSizeCommand.h"
#include "history/ImageSizeCommandData.h"
#include "history/LexoUndoStack.h"
#include "history/MoveCommand.h"
#include "history/MoveCommandData.h"
#include "history/TransformCommand.h"
#include "history/TransformCommandData.h"
#include "support/TestRegistry.h"

#include <QMatrix4x4>
#include <QTest>

using namespace DocumentFixture;
using namespace TextLayerFixture;

namespace {
LexoCommand* Move(LXDocumentInterface* document, const QPoint& delta, const QTransform& from,
                  const QTransform& to, bool applyOnPush)
{
    auto* data = new MoveCommandData;
    data->SetDelta(delta);
    data->SetLayers({TextId});
    data->SetTextLayerOldTransformation(from);
    data->SetTextLayerNewTransformation(to);
    auto* command = new MoveCommand(document, applyOnPush);
    command->SetCommandData(data);
    return command;
}

LexoCommand* Transform(LXDocumentInterface* document, const QTransform& transform)
{
    auto* data = new TransformCommandData;
    data->SetUndoLayerImage(TextId, *document->GetLayerImage(TextId),
                            document->GetLayerGeometry(TextId).topLeft());
    data->SetTransform(transform);
    data->SetOldTransform(MatrixOf(document));
    auto* command = new TransformCommand(document, true);
    command->SetCommandData(data);
    return command;
}
} // namespace

/// Texts under steps that know nothing of texts: they move them, transform them, and change the canvas.
class TestTextTransforms : public QObject
{
    Q_OBJECT

private slots:
    void anUntouchedMatrixComesBackInFullPrecision();
    void aMoveMovesTheText();
    void anotherLayersTransformationIsNotTaken();
    void aTransformationIsTakenByTheMatrix();
    void aCropMovesTheTextAndKeepsItsPixels();
    void aTurnedCanvasDrawsTheTextAnew();
    void whatACropCutsOffStaysInTheText();
    void aLargerImageHasASharpText();
};

void TestTextTransforms::anUntouchedMatrixComesBackInFullPrecision()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    const QPoint topLeft = document->GetLayerGeometry(TextId).topLeft();
    // A third can't be told in single precision.
    stack.push(Transform(document.get(), QTransform::fromScale(1 / 3.0, 1 / 3.0) *
                                             QTransform::fromTranslate(topLeft.x(), topLeft.y())));
    const QTransform exact = MatrixOf(document.get());
    ChangeCommandHelper::MakeChangeTextLayerCommand(&stack, document.get(), TextId, "change");
    document->SetText(TextId, "Other");
    stack.commit();
    stack.undo();
    QCOMPARE(document->GetText(TextId), QString("Word"));
    QCOMPARE(MatrixOf(document.get()).m11(), exact.m11());
    QCOMPARE(MatrixOf(document.get()).dx(), exact.dx());
}

void TestTextTransforms::aMoveMovesTheText()
{
    const QPoint delta(13, -8);
    const QTransform by = QTransform::fromTranslate(delta.x(), delta.y());
    for (const bool isTold : {false, true}) {
        const OwnedDocument document = MakeDocument();
        document->SetTextLayerTransformation(TextId, QMatrix4x4(QTransform().rotate(7)));
        const QTransform old = MatrixOf(document.get());
        const QRect rect = document->GetLayerGeometry(TextId);
        LexoCommand* command = isTold ? Move(document.get(), delta, old, old * by, true)
                                      : Move(document.get(), delta, QTransform(), QTransform(), true);
        QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
        QCOMPARE(document->GetLayerGeometry(TextId), rect.translated(delta));
        QCOMPARE(MatrixOf(document.get()), old * by);
    }
    // And when the tool has moved it already.
    const OwnedDocument document = MakeDocument();
    const QStringList before = DescribeWhole(document.get());
    const QTransform old = MatrixOf(document.get());
    document->SetLayerOffset(TextId, document->GetLayerGeometry(TextId).topLeft() + delta);
    LexoUndoStack stack;
    stack.push(Move(document.get(), delta, old, old * by, false));
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());
}

/// The tools hand over the transformation of the first layer of all, which need not be a text.
void TestTextTransforms::anotherLayersTransformationIsNotTaken()
{
    const OwnedDocument document = MakeDocument();
    document->SetTextLayerTransformation(TextId, QMatrix4x4(QTransform().rotate(7)));
    const QTransform old = MatrixOf(document.get());
    LexoUndoStack stack;
    stack.push(Move(document.get(), QPoint(5, 6), QTransform(), QTransform::fromTranslate(5, 6), true));
    QCOMPARE(MatrixOf(document.get()), old * QTransform::fromTranslate(5, 6));
}

void TestTextTransforms::aTransformationIsTakenByTheMatrix()
{
    const OwnedDocument document = MakeDocument();
    document->SetTextLayerTransformation(TextId, QMatrix4x4(QTransform().rotate(-5)));
    const QTransform old = MatrixOf(document.get());
    const QPoint topLeft = document->GetLayerGeometry(TextId).topLeft();
    const QTransform transform = QTransform().translate(90, 5).rotate(60).scale(0.7, 1.1);
    QCOMPARE(UndoLaw::BrokenBy(document.get(), Transform(document.get(), transform)), QString());
    QCOMPARE(MatrixOf(document.get()),
             old * QTransform::fromTranslate(-topLeft.x(), -topLeft.y()) * transform);
    QCOMPARE(document->GetText(TextId), QString("Word"));
}

void TestTextTransforms::aCropMovesTheTextAndKeepsItsPixels()
{
    const OwnedDocument document = MakeDocument();
    const auto tiles = document->GetLayerImage(TextId)->m_Tiles;
    const QRect rect = document->GetLayerGeometry(TextId);
    const QStringList before = DescribeWhole(document.get());
    LexoUndoStack stack;
    QVERIFY(ChangeCommandHelper::MakeCropCommand(document.get(), "Crop", QTransform::fromTranslate(-10, -20),
                                                 QSize(100, 70), true, false, &stack));
    QCOMPARE(document->GetLayerGeometry(TextId), rect.translated(-10, -20));
    QVERIFY(document->GetLayerImage(TextId)->m_Tiles == tiles);
    QCOMPARE(MatrixOf(document.get()), QTransform::fromTranslate(-10, -20));
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());
}

void TestTextTransforms::aTurnedCanvasDrawsTheTextAnew()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = DescribeWhole(document.get());
    LexoUndoStack stack;
    const QTransform turn = QTransform().translate(100, 0).rotate(90);
    QVERIFY(ChangeCommandHelper::MakeCropCommand(document.get(), "Turn", turn, QSize(100, 160), true, false,
                                                 &stack));
    QCOMPARE(document->GetLayerKind(TextId), LayerKind::Text);
    QCOMPARE(MatrixOf(document.get()), turn);
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());
    // Turned back, it lies where it lay.
    const QRect box = document->GetTextBox(TextId).toAlignedRect();
    QVERIFY(QRect(0, 0, 100, 160).contains(box.center()));
}

void TestTextTransforms::whatACropCutsOffStaysInTheText()
{
    const OwnedDocument document = MakeDocument();
    const QRect rect = document->GetLayerGeometry(TextId);
    LexoUndoStack stack;
    QVERIFY(ChangeCommandHelper::MakeCropCommand(document.get(), "Crop", QTransform(), QSize(40, 60), false,
                                                 false, &stack));
    QCOMPARE(document->GetLayerGeometry(TextId), rect);
    QCOMPARE(document->GetText(TextId), QString("Word"));
}

void TestTextTransforms::aLargerImageHasASharpText()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = DescribeWhole(document.get());
    auto* data = new ImageSizeCommandData;
    data->Init(document.get(), QSize(160, 100), 72, QSize(640, 400), 72, true,
               ImageSizeCommandData::Bilinear);
    auto* command = new ImageSizeCommand(document.get());
    command->SetCommandData(data);
    LexoUndoStack stack;
    stack.push(command);
    QCOMPARE(MatrixOf(document.get()), QTransform::fromScale(4, 4));
    QCOMPARE(document->GetTextFont(TextId), TextFixture::Font(36));
    // As if it had been written so large.
    const OwnedDocument large = Make(QSize(640, 400));
    large->AddTextLayer("Text Layer", QPointF(81, 280));
    large->SetTextFont(1, TextFixture::Font(144));
    large->SetText(1, "Word");
    QCOMPARE(document->GetLayerGeometry(TextId), large->GetLayerGeometry(1));
    const LXImage32& one = *document->GetLayerImage(TextId);
    const LXImage32& other = *large->GetLayerImage(1);
    int largest = 0;
    for (int y = 0; y < one.Height(); ++y) {
        for (int x = 0; x < one.Width(); ++x) {
            largest = qMax(largest, qAbs(static_cast<int>(one.GetColor(x, y).Alpha()) -
                                         static_cast<int>(other.GetColor(x, y).Alpha())));
        }
    }
    QVERIFY2(largest <= 2, qPrintable(QString::number(largest)));
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());
}

ZK_REGISTER_TEST(tst_texttransforms, TestTextTransforms)
#include "tst_texttransforms.moc"
