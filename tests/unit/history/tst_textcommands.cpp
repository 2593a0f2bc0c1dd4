#include "UndoLaw.h"

#include "document/LXDocumentInterface_p.h"
#include "history/ChangeCommandHelper.h"
#include "history/ImageSizeCommand.h"
#include "history/ImageSizeCommandData.h"
#include "history/LexoUndoStack.h"
#include "history/MoveCommand.h"
#include "history/MoveCommandData.h"
#include "history/NewLayerCommand.h"
#include "history/NewLayerData.h"
#include "history/NewTextLayerData.h"
#include "history/TextLayerChangeCommand.h"
#include "history/TextLayerChangeCommandData.h"
#include "history/TransformCommand.h"
#include "history/TransformCommandData.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QItemSelectionModel>
#include <QMatrix4x4>
#include <QSignalSpy>
#include <QTest>

using namespace DocumentFixture;

namespace {
constexpr unsigned int TextId = 1;

OwnedDocument MakeDocument()
{
    Random random(4);
    OwnedDocument document = Make(QSize(160, 100));
    document->AddLayer("ground", Noise(random, QSize(160, 100)), QPoint());
    document->AddTextLayer("Text Layer", QPointF(20.25, 70));
    document->SetTextFont(TextId, TextFixture::Font(36));
    document->SetText(TextId, "Word");
    return document;
}

QTransform MatrixOf(LXDocumentInterface* document)
{
    return document->GetModel()->GetTextLayerTransformation(0);
}

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

class TestTextCommands : public QObject
{
    Q_OBJECT

private slots:
    void aChangeStaysOpenUntilItIsCommitted();
    void aChangeThatIsPushedTakesWhatTheLayerIs();
    void undoTellsWhatChanges();
    void anUntouchedMatrixComesBackInFullPrecision();
    void theHelperFillsInEveryValue();
    void theHelperRefusesOtherLayersAndNoStack();
    void valuesComeBackFromTheData();
    void aNewTextLayerIsClosedOverTheLayerThatIsThere();
    void aNewTextLayerCanBeMadeByItsCommand();
    void aNewLayerWithoutATextIsTransparent();
    void theSelectedRowFollowsANewLayer();
    void removingATextLayerIsUndone();
    void aMoveMovesTheText();
    void anotherLayersTransformationIsNotTaken();
    void aTransformationIsTakenByTheMatrix();
    void aCropMovesTheTextAndKeepsItsPixels();
    void aTurnedCanvasDrawsTheTextAnew();
    void whatACropCutsOffStaysInTheText();
    void aLargerImageHasASharpText();
};

void TestTextCommands::aChangeStaysOpenUntilItIsCommitted()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = DescribeWhole(document.get());
    LexoUndoStack stack;
    QSignalSpy index(&stack, &LexoUndoStack::indexChanged);
    QVERIFY(
        ChangeCommandHelper::MakeChangeTextLayerCommand(&stack, document.get(), TextId, "Change text layer"));
    QVERIFY(stack.isDelayedOpen());
    QCOMPARE(stack.count(), 0);
    QCOMPARE(index.count(), 0);
    document->SetTextFont(TextId, TextFixture::Font(20));
    document->SetText(TextId, "Words");
    document->SetTextStyle(TextId, 1);
    document->SetTextBend(TextId, 35);
    document->SetTextLayerTransformation(TextId, QMatrix4x4(QTransform().rotate(12)));
    stack.commit();
    QCOMPARE(stack.count(), 1);
    QCOMPARE(index.count(), 1);
    QCOMPARE(stack.text(0), QString("Change text layer"));
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());
    QCOMPARE(document->GetText(TextId), QString("Words"));
}

void TestTextCommands::aChangeThatIsPushedTakesWhatTheLayerIs()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = DescribeWhole(document.get());
    auto* data = new TextLayerChangeCommandData;
    data->SetLayerID(TextId);
    data->SetUndoText("Word");
    data->SetUndoFont(TextFixture::Font(36));
    data->SetUndoPosition(QPointF(20.25, 70));
    document->SetText(TextId, "Another");
    auto* command = new TextLayerChangeCommand(document.get());
    QVERIFY(command->SetCommandData(data));
    LexoUndoStack stack;
    stack.push(command);
    QCOMPARE(document->GetText(TextId), QString("Another"));
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());
}

void TestTextCommands::undoTellsWhatChanges()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    ChangeCommandHelper::MakeChangeTextLayerCommand(&stack, document.get(), TextId, "change");
    document->SetTextBrush(TextId, Qt::red);
    document->SetTextBend(TextId, 10);
    stack.commit();
    QSignalSpy data(document.get(), &LXDocumentInterface::LayerDataChanged);
    QSignalSpy font(document.get(), &LXDocumentInterface::LayerFontChanged);
    QSignalSpy brush(document.get(), &LXDocumentInterface::LayerBrushChanged);
    QSignalSpy bend(document.get(), &LXDocumentInterface::LayerTextDeformationChanged);
    stack.undo();
    QCOMPARE(data.count(), 1);
    QCOMPARE(font.count(), 0);
    QCOMPARE(brush.count(), 1);
    QCOMPARE(bend.count(), 1);
}

void TestTextCommands::anUntouchedMatrixComesBackInFullPrecision()
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

void TestTextCommands::theHelperFillsInEveryValue()
{
    const OwnedDocument document = MakeDocument();
    document->SetTextBrush(TextId, QColor(1, 2, 3));
    document->SetTextStyle(TextId, 1);
    document->SetTextOrientation(TextId, 1);
    document->SetTextBend(TextId, 11);
    document->SetTextHDistortion(TextId, 12);
    document->SetTextVDistortion(TextId, 13);
    document->SetTextRenderMode(TextId, 0);
    document->SetTextLayerTransformation(TextId, QMatrix4x4(QTransform::fromScale(2, 1)));
    LexoUndoStack stack;
    ChangeCommandHelper::MakeChangeTextLayerCommand(&stack, document.get(), TextId, "change");
    stack.commit();
    const auto* data = static_cast<const TextLayerChangeCommandData*>(stack.command(0)->GetCommandData());
    QCOMPARE(data->GetLayerID(), TextId);
    QCOMPARE(data->GetUndoText(), QString("Word"));
    QCOMPARE(data->GetUndoFont(), TextFixture::Font(36));
    QCOMPARE(data->GetUndoBrush(), QBrush(QColor(1, 2, 3)));
    QCOMPARE(data->GetUndoPosition(), QPointF(20.25, 70));
    QCOMPARE(data->GetUndoStyle(), 1);
    QCOMPARE(data->GetUndoOrientation(), 1);
    QCOMPARE(data->GetUndoBend(), 11.0);
    QCOMPARE(data->GetUndoHDistortion(), 12.0);
    QCOMPARE(data->GetUndoVDistortion(), 13.0);
    QCOMPARE(data->GetUndoRenderMode(), 0);
    QCOMPARE(data->GetUndoTransformation(), QMatrix4x4(QTransform::fromScale(2, 1)));
}

void TestTextCommands::theHelperRefusesOtherLayersAndNoStack()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    for (const unsigned int id : {0U, 2U, 3U})
        QVERIFY(!ChangeCommandHelper::MakeChangeTextLayerCommand(&stack, document.get(), id, "change"));
    QVERIFY(!ChangeCommandHelper::MakeChangeTextLayerCommand(nullptr, document.get(), TextId, "change"));
    QVERIFY(!stack.isDelayedOpen());
}

void TestTextCommands::valuesComeBackFromTheData()
{
    NewTextLayerData data;
    data.SetLayerID(4);
    data.SetName("name");
    data.SetBlendMode(13);
    data.SetLocks(5);
    data.SetOpacity(1.5);
    data.SetMaskCreated(true);
    QCOMPARE(data.GetLayerID(), 4U);
    QCOMPARE(data.GetName(), QString("name"));
    QCOMPARE(data.GetBlendMode(), 13U);
    QCOMPARE(data.GetLocks(), 5U);
    QCOMPARE(data.GetOpacity(), 1.0);
    QVERIFY(data.IsMaskCreated());
    QVERIFY(data.GetDataType() != NewLayerData().GetDataType());
    // Commands take their own kind of data.
    const OwnedDocument document = MakeDocument();
    TextLayerChangeCommand command(document.get());
    NewLayerData other;
    QVERIFY(!command.SetCommandData(&other));
}

/// As the text tool ends: the layer stands in the document, its command is delayed and committed.
void TestTextCommands::aNewTextLayerIsClosedOverTheLayerThatIsThere()
{
    Random random(1);
    const OwnedDocument document = Make(QSize(120, 80));
    document->AddLayer("ground", Noise(random, QSize(120, 80)), QPoint());
    const QStringList before = DescribeWhole(document.get());
    document->AddTextLayer("Text Layer", QPointF(10, 50));
    document->SetTextFont(1, TextFixture::Font(30));
    document->SetText(1, "typed");
    auto* data = new NewTextLayerData;
    data->SetLayerID(1);
    data->SetName("Text Layer");
    data->SetOpacity(1);
    auto* command = new NewLayerCommand(document->GetModel(), nullptr, true);
    command->SetCommandData(data);
    command->setText("New text layer");
    LexoUndoStack stack;
    stack.pushDelayed(command);
    QCOMPARE(document->GetModel()->rowCount(), 2);
    stack.commit();
    QCOMPARE(document->GetModel()->rowCount(), 2);
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());
    QCOMPARE(document->GetText(1), QString("typed"));
    QCOMPARE(document->GetTextFont(1), TextFixture::Font(30));
}

void TestTextCommands::aNewTextLayerCanBeMadeByItsCommand()
{
    const OwnedDocument document = MakeDocument();
    auto* data = new NewTextLayerData;
    data->SetLayerID(2);
    data->SetName("Second");
    data->SetBlendMode(BlendMode::Multiply);
    data->SetLocks(4);
    data->SetOpacity(0.5);
    data->SetMaskCreated(true);
    data->SetFont(TextFixture::Font(12));
    data->SetBrush(Qt::blue);
    data->SetPosition(QPointF(3, 4));
    data->SetStyle(1);
    data->SetBend(50);
    data->SetRenderMode(0);
    data->SetTransformation(QMatrix4x4(QTransform::fromScale(2, 2)));
    auto* command = new NewLayerCommand(document->GetModel(), nullptr, true);
    command->SetCommandData(data);
    QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
    QCOMPARE(document->GetLayerKind(2), LayerKind::Text);
    QCOMPARE(document->GetModel()->GetName(1), QString("Second"));
    QCOMPARE(document->GetModel()->GetOpacity(1), 0.5);
    QCOMPARE(document->GetLayerLockFlags(2), 4U);
    QVERIFY(document->GetModel()->HasMask(1));
    QCOMPARE(document->GetTextBend(2), 50.0);
    QCOMPARE(document->GetTextBrush(2), QBrush(Qt::blue));
    QCOMPARE(document->GetTextLayerMatrix(2), QMatrix4x4(QTransform::fromScale(2, 2)));
}

void TestTextCommands::aNewLayerWithoutATextIsTransparent()
{
    const OwnedDocument document = MakeDocument();
    auto* data = new NewLayerData;
    data->SetLayerID(1);
    data->SetName("plain");
    auto* command = new NewLayerCommand(document->GetModel(), nullptr, true);
    command->SetCommandData(data);
    QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
    QCOMPARE(document->GetLayerKind(1), LayerKind::Raster);
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 0, 160, 100));
}

void TestTextCommands::theSelectedRowFollowsANewLayer()
{
    const OwnedDocument document = MakeDocument();
    QItemSelectionModel selection(document->GetModel());
    selection.select(document->GetModel()->index(1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    auto* data = new NewTextLayerData;
    data->SetLayerID(1);
    auto* command = new NewLayerCommand(document->GetModel(), &selection, true);
    command->SetCommandData(data);
    LexoUndoStack stack;
    stack.push(command);
    QCOMPARE(selection.selectedRows().value(0).row(), 0);
    stack.undo();
    QCOMPARE(selection.selectedRows().value(0).row(), 1);
}

void TestTextCommands::removingATextLayerIsUndone()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = DescribeWhole(document.get());
    LexoUndoStack stack;
    QVERIFY(ChangeCommandHelper::RemoveLayer(&stack, document.get(), nullptr, TextId, "Remove text layer"));
    QCOMPARE(document->GetModel()->rowCount(), 1);
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());
}

void TestTextCommands::aMoveMovesTheText()
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
void TestTextCommands::anotherLayersTransformationIsNotTaken()
{
    const OwnedDocument document = MakeDocument();
    document->SetTextLayerTransformation(TextId, QMatrix4x4(QTransform().rotate(7)));
    const QTransform old = MatrixOf(document.get());
    LexoUndoStack stack;
    stack.push(Move(document.get(), QPoint(5, 6), QTransform(), QTransform::fromTranslate(5, 6), true));
    QCOMPARE(MatrixOf(document.get()), old * QTransform::fromTranslate(5, 6));
}

void TestTextCommands::aTransformationIsTakenByTheMatrix()
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

void TestTextCommands::aCropMovesTheTextAndKeepsItsPixels()
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

void TestTextCommands::aTurnedCanvasDrawsTheTextAnew()
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

void TestTextCommands::whatACropCutsOffStaysInTheText()
{
    const OwnedDocument document = MakeDocument();
    const QRect rect = document->GetLayerGeometry(TextId);
    LexoUndoStack stack;
    QVERIFY(ChangeCommandHelper::MakeCropCommand(document.get(), "Crop", QTransform(), QSize(40, 60), false,
                                                 false, &stack));
    QCOMPARE(document->GetLayerGeometry(TextId), rect);
    QCOMPARE(document->GetText(TextId), QString("Word"));
}

void TestTextCommands::aLargerImageHasASharpText()
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

ZK_REGISTER_TEST(tst_textcommands, TestTextCommands)
#include "tst_textcommands.moc"
