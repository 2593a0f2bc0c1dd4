#include "TextLayerFixture.h"
#include "UndoLaw.h"

#include "document/LXDocumentInterface_p.h"
#include "history/ChangeCommandHelper.h"
#include "history/LexoUndoStack.h"
#include "history/NewLayerCommand.h"
#include "history/NewLayerData.h"
#include "history/NewTextLayerData.h"
#include "history/TextLayerChangeCommand.h"
#include "history/TextLayerChangeCommandData.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QItemSelectionModel>
#include <QMatrix4x4>
#include <QSignalSpy>
#include <QTest>

using namespace DocumentFixture;
using namespace TextLayerFixture;

class TestTextCommands : public QObject
{
    Q_OBJECT

private slots:
    void aChangeStaysOpenUntilItIsCommitted();
    void aChangeThatIsPushedTakesWhatTheLayerIs();
    void undoTellsWhatChanges();
    void theHelperFillsInEveryValue();
    void theHelperRefusesOtherLayersAndNoStack();
    void valuesComeBackFromTheData();
    void aNewTextLayerIsClosedOverTheLayerThatIsThere();
    void aNewTextLayerCanBeMadeByItsCommand();
    void aNewLayerWithoutATextIsTransparent();
    void theSelectedRowFollowsANewLayer();
    void removingATextLayerIsUndone();
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

ZK_REGISTER_TEST(tst_textcommands, TestTextCommands)
#include "tst_textcommands.moc"
