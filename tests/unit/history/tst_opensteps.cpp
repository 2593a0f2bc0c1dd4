#include "UndoLaw.h"

#include "history/LayerCreateCommand.h"
#include "history/LayerCreateCommandData.h"
#include "history/LayerMaskPaintCommand.h"
#include "history/LayerMaskPaintCommandData.h"
#include "history/LayerPaintCommand.h"
#include "history/LayerPaintCommandData.h"
#include "history/LexoUndoStack.h"
#include "history/MWSelectionCommand.h"
#include "history/MWSelectionCommandData.h"
#include "history/MoveCommand.h"
#include "history/MoveCommandData.h"
#include "history/NewLayerCommand.h"
#include "history/NewTextLayerData.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QTest>

#include <functional>

using namespace DocumentFixture;

namespace {
constexpr bool IsThereAlready = false;

/// Changes the document and gives the command that doesn't do so at its first redo.
using Change = std::function<LexoCommand*(LXDocumentInterface*)>;

template <class Command, class Data>
LexoCommand* With(Command* command, Data* data)
{
    command->SetCommandData(data);
    return command;
}

template <class Command, class Data>
LexoCommand* Paint(LXDocumentInterface* document, const LXImage32& before, const LXImage32& after)
{
    auto* data = new Data;
    data->SetLayerID(1);
    data->SetUndoImage(before, QRect());
    data->SetRedoImage(after, QRect());
    data->SetUndoGeometry(after.Rect());
    data->SetRedoGeometry(after.Rect());
    return With(new Command(document, IsThereAlready), data);
}

LexoCommand* PaintLayer(LXDocumentInterface* document)
{
    const LXImage32 before = *document->GetLayerImage(1);
    const LXImage32 after = Filled(before.Rect().size(), 0xFF102030);
    document->SetLayerImage(1, after, QPoint());
    return Paint<LayerPaintCommand, LayerPaintCommandData>(document, before, after);
}

LexoCommand* PaintMask(LXDocumentInterface* document)
{
    const LXImage32 before = *document->GetMaskImage(1);
    const LXImage32 after = Filled(before.Rect().size(), 0x30000000);
    document->SetMaskImage(1, after, QPoint());
    return Paint<LayerMaskPaintCommand, LayerMaskPaintCommandData>(document, before, after);
}

LexoCommand* Select(LXDocumentInterface* document)
{
    const LXImage32 after = Filled(QSize(4, 5), 0x80000000);
    document->SetSelectionMask(after, QPoint(1, 2));
    auto* data = new MWSelectionCommandData;
    data->SetNoUndoSelection(true);
    data->SetRedoSel(QPoint(1, 2), after, SelectionCommandData::Replace);
    return With(new MWSelectionCommand(document, IsThereAlready), data);
}

LexoCommand* Move(LXDocumentInterface* document)
{
    document->SetLayerOffset(1, QPoint(3, 4));
    auto* data = new MoveCommandData;
    data->SetDelta(QPoint(3, 4));
    data->SetLayers({1});
    return With(new MoveCommand(document, IsThereAlready), data);
}

LexoCommand* AddLayer(LXDocumentInterface* document)
{
    const QSize size = document->GetDocumentSize();
    document->AddLayer("new", LXImage32(size.width(), size.height()), QPoint());
    auto* data = new LayerCreateCommandData(nullptr, LayerCreateCommandData::Raster, 0);
    data->SetLayerName("new");
    return With(new LayerCreateCommand(document, IsThereAlready), data);
}

LexoCommand* AddText(LXDocumentInterface* document)
{
    document->AddTextLayer("Text Layer", QPointF(5, 30));
    document->SetTextFont(1, TextFixture::Font(20));
    document->SetText(1, "typed");
    auto* data = new NewTextLayerData;
    data->SetLayerID(1);
    data->SetName("Text Layer");
    return With(new NewLayerCommand(document->GetModel(), nullptr, IsThereAlready), data);
}
} // namespace

Q_DECLARE_METATYPE(Change)

/// Commands that are told that their change is there already, and stand open before they become a step.
class TestOpenSteps : public QObject
{
    Q_OBJECT

private slots:
    void anOpenStepIsUndoneAndRedone_data();
    void anOpenStepIsUndoneAndRedone();
};

void TestOpenSteps::anOpenStepIsUndoneAndRedone_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("paint") << Change(PaintLayer);
    QTest::newRow("paint on a mask") << Change(PaintMask);
    QTest::newRow("selection") << Change(Select);
    QTest::newRow("move") << Change(Move);
    QTest::newRow("new layer") << Change(AddLayer);
    QTest::newRow("new text") << Change(AddText);
}

void TestOpenSteps::anOpenStepIsUndoneAndRedone()
{
    QFETCH(const Change, change);
    Random random(5);
    const OwnedDocument document = Make(QSize(60, 40));
    document->AddLayer("ground", Noise(random, QSize(60, 40)), QPoint());
    document->AddMask(1, true);
    const QStringList before = DescribeWhole(document.get());
    LexoUndoStack stack;
    stack.pushDelayed(change(document.get()));
    stack.commit();
    QVERIFY(DescribeWhole(document.get()) != before);
    QCOMPARE(UndoLaw::Broken(document.get(), &stack, stack.command(0), before), QString());
}

ZK_REGISTER_TEST(tst_opensteps, TestOpenSteps)
#include "tst_opensteps.moc"
