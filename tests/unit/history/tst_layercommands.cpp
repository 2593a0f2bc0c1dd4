#include "UndoLaw.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerLocks.h"
#include "history/ChangeCommandHelper.h"
#include "history/LayerCommands.h"
#include "history/LayerCreateCommand.h"
#include "history/LayerCreateCommandData.h"
#include "history/LexoUndoStack.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QItemSelectionModel>
#include <QTest>

using namespace DocumentFixture;

namespace {
using MakeCommand = std::function<LexoCommand*(LXDocumentInterface*)>;

OwnedDocument MakeDocument()
{
    Random random(12);
    OwnedDocument document = Make(QSize(150, 90));
    document->AddLayer("bottom", Noise(random, QSize(150, 90)), QPoint());
    document->AddLayer("middle", Noise(random, QSize(50, 60)), QPoint(-10, 20));
    document->AddLayer("top", Noise(random, QSize(20, 20)), QPoint(60, 30));
    document->AddMask(2, false);
    document->SetMaskImage(2, MaskNoise(random, QSize(40, 40)), QPoint(5, 5));
    return document;
}

QStringList NamesOf(const LXDocumentInterface* document)
{
    QStringList names;
    for (int row = 0; row < document->GetModel()->rowCount(); ++row) {
        names << document->GetModel()->GetName(row);
    }
    return names;
}

LexoCommand* Create(LXDocumentInterface* document, QItemSelectionModel* selection, int row, bool apply = true)
{
    auto* data = new LayerCreateCommandData(selection, LayerCreateCommandData::Raster, row);
    data->SetLayerName("new");
    data->SetBlendMode(BlendMode::Multiply);
    data->SetOpacity(0.5);
    auto* command = new LayerCreateCommand(document, apply);
    command->SetCommandData(data);
    return command;
}
} // namespace

Q_DECLARE_METATYPE(MakeCommand)

class TestLayerCommands : public QObject
{
    Q_OBJECT

private slots:
    void everyCommandKeepsTheUndoLaw_data();
    void everyCommandKeepsTheUndoLaw();
    void badIdsAreHarmless_data();
    void badIdsAreHarmless();
    void aNewLayerIsTransparentAndOfTheCanvasSize();
    void theIdOfANewLayerGivesItsRow();
    void aLayerThatIsThereIsLeftAlone();
    void theSelectedRowFollows();
    void aSelectionMayGoBeforeItsCommand();
    void aDuplicateSharesItsTilesAndLiesAbove();
    void aMaskThatComesBackIsPaintedOnAgain();
    void removalPutsFloatingPiecesDownFirst();
    void removalWithoutAHistory();
};

void TestLayerCommands::everyCommandKeepsTheUndoLaw_data()
{
    QTest::addColumn<MakeCommand>("make");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const char* text, const MakeCommand& make) {
        QTest::newRow(name) << make << QString(text);
    };
    row("remove", "Delete layer", [](auto* d) { return LayerCommands::Remove(d, nullptr, 2); });
    row("remove the last", "Delete layer", [](auto* d) { return LayerCommands::Remove(d, nullptr, 3); });
    row("duplicate", "Duplicate layer",
        [](auto* d) { return LayerCommands::Duplicate(d, nullptr, 2, "copy"); });
    row("move up", "Move layer in the stack", [](auto* d) { return LayerCommands::Move(d, 3, 1); });
    row("move down", "Move layer in the stack", [](auto* d) { return LayerCommands::Move(d, 1, 3); });
    row("rename", "Rename layer", [](auto* d) { return LayerCommands::Rename(d, 1, "other"); });
    row("hide", "Hide layer", [](auto* d) { return LayerCommands::SetVisible(d, 1, false); });
    row("opacity", "Layer opacity", [](auto* d) { return LayerCommands::SetOpacity(d, 1, 0.25); });
    row("blend mode", "Layer blend mode",
        [](auto* d) { return LayerCommands::SetBlendMode(d, 1, BlendMode::Screen); });
    row("locks", "Layer locks", [](auto* d) { return LayerCommands::SetLocks(d, 1, LayerLocks::Pixels); });
    row("unlink", "Unlink mask", [](auto* d) { return LayerCommands::SetMaskLinked(d, 2, false); });
    row("add mask", "Add mask", [](auto* d) { return LayerCommands::AddMask(d, 1, true); });
    row("replace mask", "Add mask", [](auto* d) { return LayerCommands::AddMask(d, 2, true); });
    row("remove mask", "Remove mask", [](auto* d) { return LayerCommands::RemoveMask(d, 2); });
    row("create on top", "", [](auto* d) { return Create(d, nullptr, 0); });
    row("create at the bottom", "", [](auto* d) { return Create(d, nullptr, 99); });
}

void TestLayerCommands::everyCommandKeepsTheUndoLaw()
{
    QFETCH(MakeCommand, make);
    QFETCH(QString, text);
    const OwnedDocument document = MakeDocument();
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(make(document.get()));
    const QStringList after = Describe(document.get());
    QCOMPARE(stack.text(0), text);
    QVERIFY(before != after);
    for (int round = 0; round < 2; ++round) {
        stack.undo();
        QCOMPARE(Describe(document.get()), before);
        stack.redo();
        QCOMPARE(Describe(document.get()), after);
    }
    stack.undo();
    QCOMPARE(UndoLaw::BrokenBy(document.get(), make(document.get())), QString());
}

void TestLayerCommands::badIdsAreHarmless_data()
{
    QTest::addColumn<MakeCommand>("make");
    for (const unsigned int id : {0u, 9u}) {
        const auto row = [id](const char* name, const MakeCommand& make) {
            QTest::addRow("%s %u", name, id) << make;
        };
        row("remove", [id](auto* d) { return LayerCommands::Remove(d, nullptr, id); });
        row("move", [id](auto* d) { return LayerCommands::Move(d, 1, id); });
        row("rename", [id](auto* d) { return LayerCommands::Rename(d, id, "other"); });
        row("add mask", [id](auto* d) { return LayerCommands::AddMask(d, id, true); });
        row("remove mask", [id](auto* d) { return LayerCommands::RemoveMask(d, id); });
        row("duplicate", [id](auto* d) { return LayerCommands::Duplicate(d, nullptr, id, "copy"); });
    }
}

void TestLayerCommands::badIdsAreHarmless()
{
    QFETCH(MakeCommand, make);
    const OwnedDocument document = MakeDocument();
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(make(document.get()));
    QCOMPARE(Describe(document.get()), before);
    stack.undo();
    QCOMPARE(Describe(document.get()), before);
}

void TestLayerCommands::aNewLayerIsTransparentAndOfTheCanvasSize()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    stack.push(Create(document.get(), nullptr, 1));
    QCOMPARE(NamesOf(document.get()), QStringList({"top", "new", "middle", "bottom"}));
    QCOMPARE(document->GetLayerGeometry(2), QRect(0, 0, 150, 90));
    QVERIFY(AreEqual(*document->GetLayerImage(2), LXImage32(150, 90)));
    QCOMPARE(document->GetModel()->GetOpacity(1), 0.5);
    QCOMPARE(document->GetModel()->GetBlendMode(1), unsigned(BlendMode::Multiply));
}

void TestLayerCommands::theIdOfANewLayerGivesItsRow()
{
    LayerCreateCommandData data(nullptr, LayerCreateCommandData::Raster, 0);
    data.SetLayerId(3);
    QCOMPARE(data.GetRow(), 2);
    data.SetOpacity(3.0);
    QCOMPARE(data.GetOpacity(), 1.0);
}

void TestLayerCommands::aLayerThatIsThereIsLeftAlone()
{
    const OwnedDocument document = MakeDocument();
    const QStringList before = Describe(document.get());
    LexoUndoStack stack;
    stack.push(Create(document.get(), nullptr, 0, false));
    QCOMPARE(Describe(document.get()), before);
    stack.undo();
    QCOMPARE(NamesOf(document.get()), QStringList({"middle", "bottom"}));
    stack.redo();
    QCOMPARE(NamesOf(document.get()), QStringList({"new", "middle", "bottom"}));
}

void TestLayerCommands::theSelectedRowFollows()
{
    const OwnedDocument document = MakeDocument();
    QItemSelectionModel selection(document->GetModel());
    selection.setCurrentIndex(document->GetModel()->index(1), QItemSelectionModel::ClearAndSelect);
    const auto selectedRows = [&selection] {
        QList<int> rows;
        for (const QModelIndex& index : selection.selectedRows()) {
            rows << index.row();
        }
        return rows;
    };
    LexoUndoStack stack;
    stack.push(Create(document.get(), &selection, 0));
    QCOMPARE(selectedRows(), QList<int>({0}));
    stack.undo();
    QCOMPARE(selectedRows(), QList<int>({1}));
    stack.push(LayerCommands::Remove(document.get(), &selection, 2));
    QCOMPARE(selectedRows(), QList<int>({1}));
    stack.push(LayerCommands::Remove(document.get(), &selection, 2));
    QCOMPARE(selectedRows(), QList<int>({0}));
    stack.undo();
    stack.undo();
    QCOMPARE(selectedRows(), QList<int>({1}));
    QCOMPARE(selection.currentIndex().row(), 1);
}

void TestLayerCommands::aSelectionMayGoBeforeItsCommand()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    {
        QItemSelectionModel selection(document->GetModel());
        stack.push(Create(document.get(), &selection, 0));
        stack.push(LayerCommands::Remove(document.get(), &selection, 2));
    }
    stack.undo();
    stack.undo();
    stack.redo();
    QCOMPARE(NamesOf(document.get()), QStringList({"new", "top", "middle", "bottom"}));
}

void TestLayerCommands::aDuplicateSharesItsTilesAndLiesAbove()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    stack.push(LayerCommands::Duplicate(document.get(), nullptr, 2, "middle copy"));
    QCOMPARE(NamesOf(document.get()), QStringList({"top", "middle copy", "middle", "bottom"}));
    QVERIFY(document->GetLayerImage(2)->TileAt(0, 0) == document->GetLayerImage(3)->TileAt(0, 0));
    QCOMPARE(document->GetMaskGeometry(2), document->GetMaskGeometry(3));
}

void TestLayerCommands::aMaskThatComesBackIsPaintedOnAgain()
{
    const OwnedDocument document = MakeDocument();
    LXDocumentModel* model = document->GetModel();
    model->SetMaskSelected(1, true);
    LexoUndoStack stack;
    stack.push(LayerCommands::RemoveMask(document.get(), 2));
    QVERIFY(!model->GetMaskSelected(1));
    SignalLog log(document.get());
    stack.undo();
    QVERIFY(model->GetMaskSelected(1));
    const QStringList lines = log.Take();
    QVERIFY(lines.contains("MaskSelectedChanged 1") && lines.contains("LayerSelectedChanged 0"));

    // One that wasn't the target doesn't become it.
    model->SetMaskSelected(1, false);
    stack.redo();
    stack.undo();
    QVERIFY(!model->GetMaskSelected(1));
}

void TestLayerCommands::removalPutsFloatingPiecesDownFirst()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    SignalLog log(document.get());
    QVERIFY(ChangeCommandHelper::RemoveLayer(&stack, document.get(), nullptr, 1, "Remove text layer"));
    QCOMPARE(log.Take().mid(0, 3),
             QStringList({"AboutRequesAdditionalLayer 1", "AboutRequesAdditionalMask 1", "rowsRemoved 0"}));
    QCOMPARE(stack.text(0), QString("Remove text layer"));
    QVERIFY(!ChangeCommandHelper::RemoveLayer(&stack, document.get(), nullptr, 3, "x"));
    QVERIFY(!ChangeCommandHelper::RemoveLayer(&stack, document.get(), nullptr, 0, "x"));
    QCOMPARE(stack.count(), 1);
}

void TestLayerCommands::removalWithoutAHistory()
{
    const OwnedDocument document = MakeDocument();
    QVERIFY(ChangeCommandHelper::RemoveLayer(nullptr, document.get(), nullptr, 3, "gone"));
    QCOMPARE(NamesOf(document.get()), QStringList({"top", "middle"}));
}

ZK_REGISTER_TEST(tst_layercommands, TestLayerCommands)
#include "tst_layercommands.moc"
