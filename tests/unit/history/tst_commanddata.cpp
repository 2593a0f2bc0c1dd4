#include "MemoryFile.h"

#include "document/LXDocumentInterface.h"
#include "document/LayerLocks.h"
#include "history/LayerCommands.h"
#include "history/LayerCreateCommandData.h"
#include "history/LexoCommand.h"
#include "history/MWSelectionCommandData.h"
#include "history/MoveCommandData.h"
#include "history/SelectionCommandData.h"
#include "history/SelectionMoveCommandData.h"
#include "history/TransformCommandData.h"
#include "history/TransformSelectionCommandData.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QSet>
#include <QTest>

using namespace DocumentFixture;

namespace {
using DataPointer = std::shared_ptr<LexoCommandData>;
/// Makes data with values, or with none when false.
using MakeData = std::function<DataPointer(LXDocumentInterface*, bool)>;

/// The data of one of the editor's own commands, kept alive by its command.
DataPointer DataOf(LexoCommand* command)
{
    command->redo();
    const std::shared_ptr<LexoCommand> owner(command);
    return DataPointer(owner, command->GetCommandData());
}

DataPointer MakeSelection(LXDocumentInterface*, bool hasValues)
{
    auto data = std::make_shared<SelectionCommandData>();
    if (!hasValues) return data;
    QPainterPath path;
    path.addEllipse(QRectF(1.5, 2.5, 30, 40));
    data->SetSelectionGeometry(path);
    data->SetSelectionOp(SelectionCommandData::Intersect);
    data->SetUndoSel(QPoint(-3, 4), Filled(QSize(20, 10), 0x80000000));
    return data;
}

DataPointer MakeMWSelection(LXDocumentInterface*, bool hasValues)
{
    auto data = std::make_shared<MWSelectionCommandData>();
    if (!hasValues) return data;
    data->SetNoUndoSelection(true);
    data->SetUndoSel(QPoint(-3, 4), Filled(QSize(20, 10), 0x80000000));
    data->SetRedoSel(QPoint(5, 6), Filled(QSize(130, 10), 0x40000000), SelectionCommandData::Subtract);
    return data;
}

DataPointer MakeSelectionMove(LXDocumentInterface*, bool hasValues)
{
    auto data = std::make_shared<SelectionMoveCommandData>();
    if (!hasValues) return data;
    data->SetUndoPosition(QPoint(1, -2));
    data->SetRedoPosition(QPoint(3, 4));
    return data;
}

DataPointer MakeMove(LXDocumentInterface*, bool hasValues)
{
    auto data = std::make_shared<MoveCommandData>();
    if (!hasValues) return data;
    data->SetDelta(QPoint(1, -2));
    data->SetLayers({1, 2, 7});
    data->SetMasks({3});
    return data;
}

DataPointer MakeLayerCreate(LXDocumentInterface*, bool hasValues)
{
    auto data =
        std::make_shared<LayerCreateCommandData>(nullptr, LayerCreateCommandData::Raster, hasValues ? 5 : 0);
    if (!hasValues) return data;
    data->SetLayerName("layer");
    data->SetBlendMode(13);
    data->SetOpacity(0.5);
    return data;
}

DataPointer MakeTransform(LXDocumentInterface*, bool hasValues)
{
    auto data = std::make_shared<TransformCommandData>();
    if (!hasValues) return data;
    data->SetUndoLayerImage(2, Filled(QSize(140, 10), 0x40102030), QPoint(3, -4));
    data->SetTransform(QTransform(1, 2, 0.001, 3, 4, 0.002, 5, 6, 1));
    data->SetOldTransform(QTransform::fromScale(2, 3));
    data->SetMaskTarget(true);
    return data;
}

DataPointer MakeTransformSelection(LXDocumentInterface*, bool hasValues)
{
    auto data = std::make_shared<TransformSelectionCommandData>();
    if (!hasValues) return data;
    data->SetUndoImage(Filled(QSize(20, 140), 0x40000000), QPoint(3, -4));
    data->SetTransform(QTransform().rotate(30));
    return data;
}
} // namespace

Q_DECLARE_METATYPE(MakeData)

/// What all data of commands have in common; the paint data has a suite of its own.
class TestCommandData : public QObject
{
    Q_OBJECT

private slots:

    void comesBackFromItsSerialForm_data() { AddRows(); }

    void comesBackFromItsSerialForm();

    void shortInputChangesNothing_data() { AddRows(); }

    void shortInputChangesNothing();

    void releasedDataCostsNothingAndComesBack_data() { AddRows(); }

    void releasedDataCostsNothingAndComesBack();
    void everyKindHasItsNumber();
    void unknownOperationsAreDamage();

private:
    void AddRows();
};

void TestCommandData::AddRows()
{
    QTest::addColumn<MakeData>("make");
    QTest::newRow("selection") << MakeData(MakeSelection);
    QTest::newRow("mask selection") << MakeData(MakeMWSelection);
    QTest::newRow("selection move") << MakeData(MakeSelectionMove);
    QTest::newRow("move") << MakeData(MakeMove);
    QTest::newRow("layer create") << MakeData(MakeLayerCreate);
    QTest::newRow("transform") << MakeData(MakeTransform);
    QTest::newRow("transformed selection") << MakeData(MakeTransformSelection);
    QTest::newRow("layer property") << MakeData([](LXDocumentInterface* document, bool hasValues) {
        return DataOf(hasValues ? LayerCommands::SetOpacity(document, 1, 0.25)
                                : LayerCommands::Rename(document, 2, "other"));
    });
    QTest::newRow("layer order") << MakeData([](LXDocumentInterface* document, bool hasValues) {
        return DataOf(LayerCommands::Move(document, hasValues ? 1 : 2, hasValues ? 2 : 1));
    });
    QTest::newRow("removed layer") << MakeData([](LXDocumentInterface* document, bool hasValues) {
        return DataOf(LayerCommands::Remove(document, nullptr, hasValues ? 1 : 9));
    });
    QTest::newRow("removed mask") << MakeData([](LXDocumentInterface* document, bool hasValues) {
        return DataOf(LayerCommands::RemoveMask(document, hasValues ? 1 : 9));
    });
}

namespace {
OwnedDocument MakeDocument()
{
    Random random(17);
    OwnedDocument document = Make(QSize(90, 60));
    document->AddLayer("low", Noise(random, QSize(90, 60)), QPoint());
    document->AddLayer("high", Noise(random, QSize(140, 30)), QPoint(-7, 9));
    document->AddMask(1, false);
    document->SetMaskImage(1, MaskNoise(random, QSize(20, 20)), QPoint(2, 2));
    document->GetModel()->SetLockFlags(0, LayerLocks::Position);
    return document;
}

QByteArray SerialForm(const DataPointer& data)
{
    MemoryFile file;
    return data->Serialize(&file) ? file.bytes : QByteArray();
}
} // namespace

void TestCommandData::comesBackFromItsSerialForm()
{
    QFETCH(MakeData, make);
    const OwnedDocument document = MakeDocument();
    const DataPointer data = make(document.get(), true);
    const DataPointer read = make(document.get(), false);
    MemoryFile file;
    QVERIFY(data->Serialize(&file));
    QVERIFY(SerialForm(read) != file.bytes);
    QVERIFY(read->Deserialize(&file));
    QCOMPARE(SerialForm(read), file.bytes);
    QCOMPARE(read->GetMemoryCost(), data->GetMemoryCost());
}

void TestCommandData::shortInputChangesNothing()
{
    QFETCH(MakeData, make);
    const OwnedDocument document = MakeDocument();
    const QByteArray whole = SerialForm(make(document.get(), true));
    const DataPointer target = make(document.get(), false);
    const QByteArray before = SerialForm(target);
    for (int length = 0; length < whole.size(); length += qMax(1, whole.size() / 50)) {
        MemoryFile cut;
        cut.bytes = whole.left(length);
        QVERIFY(!target->Deserialize(&cut));
    }
    MemoryFile full;
    full.isFull = true;
    QVERIFY(!target->Serialize(&full));
    QCOMPARE(SerialForm(target), before);
}

void TestCommandData::releasedDataCostsNothingAndComesBack()
{
    QFETCH(MakeData, make);
    const OwnedDocument document = MakeDocument();
    const DataPointer data = make(document.get(), true);
    MemoryFile file;
    QVERIFY(data->Serialize(&file));
    data->ReleaseSerializeData();
    QCOMPARE(data->GetMemoryCost(), qint64(0));
    QVERIFY(data->Deserialize(&file));
    QCOMPARE(SerialForm(data), file.bytes);
}

void TestCommandData::everyKindHasItsNumber()
{
    const OwnedDocument document = MakeDocument();
    QSet<int> numbers;
    for (const DataPointer& data :
         {MakeSelection(nullptr, false), MakeMWSelection(nullptr, false), MakeSelectionMove(nullptr, false),
          MakeMove(nullptr, false), MakeLayerCreate(nullptr, false), MakeTransform(nullptr, false),
          MakeTransformSelection(nullptr, false), DataOf(LayerCommands::Move(document.get(), 1, 2)),
          DataOf(LayerCommands::Rename(document.get(), 1, "x")),
          DataOf(LayerCommands::RemoveMask(document.get(), 1)),
          DataOf(LayerCommands::Remove(document.get(), nullptr, 1))}) {
        numbers << data->GetDataType();
    }
    QCOMPARE(numbers.size(), 11);
}

void TestCommandData::unknownOperationsAreDamage()
{
    SelectionCommandData data;
    data.SetSelectionOp(static_cast<SelectionCommandData::LogicalOp>(4));
    MemoryFile file;
    QVERIFY(data.Serialize(&file));
    SelectionCommandData read;
    QVERIFY(!read.Deserialize(&file));
    QCOMPARE(read.GetSelectionOp(), SelectionCommandData::Replace);
}

ZK_REGISTER_TEST(tst_commanddata, TestCommandData)
#include "tst_commanddata.moc"
