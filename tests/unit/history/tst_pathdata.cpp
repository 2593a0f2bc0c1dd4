#include "MemoryFile.h"

#include "document/LXColorSampleModel.h"
#include "document/LXDocumentInterface.h"
#include "history/ChangeSubpathCommandData.h"
#include "history/ColorSamplesCommand.h"
#include "history/ColorSamplesCommandDataAdd.h"
#include "history/ColorSamplesCommandDataClear.h"
#include "history/ColorSamplesCommandDataMove.h"
#include "history/ColorSamplesCommandDataRemove.h"
#include "history/InsertPathCommandData.h"
#include "history/InsertSubpathCommandData.h"
#include "history/PathCommand.h"
#include "history/PathCommands.h"
#include "history/RemovePathCommandData.h"
#include "history/RemoveSubpathCommandData.h"
#include "history/SubpathCommand.h"
#include "history/TransformPathCommandData.h"
#include "support/DocumentFixture.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QSet>
#include <QTest>
#include <QtEndian>

using namespace DocumentFixture;
using namespace PathFixture;

namespace {
using CommandPointer = std::unique_ptr<LexoCommand>;
/// Makes a command with values, or with none when false.
using MakeCommand = std::function<CommandPointer(LXDocumentInterface*, bool)>;

template <class Command, class Data>
CommandPointer With(LXDocumentInterface* document, Data* data)
{
    auto command = std::make_unique<Command>(document);
    command->SetCommandData(data);
    return command;
}

CommandPointer MakeTransform(LXDocumentInterface* document, bool hasValues)
{
    auto* data = new TransformPathCommandData;
    if (hasValues) {
        data->SetPathIndex(0);
        data->SetSubpathIndex(1);
        data->SetPath(document->GetPathListModel()->GetPath(0));
        data->SetTransform(QTransform(1, 0.5, 0, 2, 3, 4));
    }
    return With<PathCommand>(document, data);
}

CommandPointer MakeChange(LXDocumentInterface* document, bool hasValues)
{
    auto* data = new ChangeSubpathCommandData;
    if (hasValues) {
        data->SetPathIndex(0);
        data->SetSubpathIndex(1);
        data->SetUndoData(document->GetPathListModel()->GetPath(0)[1].first);
        data->SetRedoData(Ellipse(QRectF(0.1, 0.2, 7, 9)));
    }
    return With<SubpathCommand>(document, data);
}

CommandPointer MakeRemoveSub(LXDocumentInterface* document, bool hasValues)
{
    auto* data = new RemoveSubpathCommandData;
    if (hasValues) {
        data->SetPathIndex(0);
        data->SetSubpathIndex(1);
        data->SetLogicalOp(LXPathsListModel::Exclude);
        data->SetUndoData(document->GetPathListModel()->GetPath(0)[1].first);
    }
    return With<SubpathCommand>(document, data);
}

CommandPointer MakeInsertSub(LXDocumentInterface* document, bool hasValues)
{
    auto* data = new InsertSubpathCommandData;
    if (hasValues) {
        data->SetPathIndex(0);
        data->SetSubpathIndex(1);
        data->SetLogicalOp(LXPathsListModel::Intersect);
        LXPath ring = Rectangle(QRectF(0, 0, 9, 9)) + Rectangle(QRectF(3, 3, 3, 3));
        ring[5].SetStartsContour(true);
        data->SetData(ring);
    }
    return With<SubpathCommand>(document, data);
}

CommandPointer MakeRemove(LXDocumentInterface* document, bool hasValues)
{
    auto* data = new RemovePathCommandData;
    if (hasValues) {
        data->SetPathIndex(0);
        data->SetPathName("one");
        data->SetPath(document->GetPathListModel()->GetPath(0));
        data->SetPathVisible(true);
    }
    return With<PathCommand>(document, data);
}

CommandPointer MakeInsert(LXDocumentInterface* document, bool hasValues)
{
    auto* data = new InsertPathCommandData;
    if (hasValues) {
        data->SetPathIndex(1);
        data->SetPathName("new");
    }
    return With<PathCommand>(document, data);
}

CommandPointer MakeSampleAdd(LXDocumentInterface* document, bool hasValues)
{
    auto* data = new ColorSamplesCommandDataAdd;
    if (hasValues) data->SetSamplePoint({5, 6});
    return With<ColorSamplesCommand>(document, data);
}

CommandPointer MakeSampleRemove(LXDocumentInterface* document, bool hasValues)
{
    auto* data = new ColorSamplesCommandDataRemove;
    if (hasValues) data->SetSamplePoint(1, {2, 2});
    return With<ColorSamplesCommand>(document, data);
}

CommandPointer MakeSampleMove(LXDocumentInterface* document, bool hasValues)
{
    auto* data = new ColorSamplesCommandDataMove;
    if (hasValues) data->SetData(1, {7, 7});
    return With<ColorSamplesCommand>(document, data);
}

CommandPointer MakeSampleClear(LXDocumentInterface* document, bool hasValues)
{
    auto* data = new ColorSamplesCommandDataClear;
    if (hasValues) data->SetData({{1, 1}, {2, 2}});
    return With<ColorSamplesCommand>(document, data);
}

OwnedDocument MakeDocument()
{
    OwnedDocument document = Make(QSize(90, 60));
    LXPathsListModel* paths = document->GetPathListModel();
    paths->InsertPath(0, "one",
                      {{Rectangle(QRectF(1, 2, 30, 40)), LXPathsListModel::Unite},
                       {Ellipse(QRectF(5, 6, 7, 8)), LXPathsListModel::Exclude}});
    paths->InsertPath(1, "two");
    paths->SetPathVisible(0, true);
    LXColorSampleModel* samples = document->GetColorSamples();
    samples->InsertSample(0, {1, 1});
    samples->InsertSample(1, {2, 2});
    samples->SetSampleRadius(1, 3);
    samples->SetDisplayFormat(1, LXColorSampleModel::CMYK);
    return document;
}

QByteArray SerialForm(const CommandPointer& command)
{
    MemoryFile file;
    return command->GetCommandData()->Serialize(&file) ? file.bytes : QByteArray();
}
} // namespace

Q_DECLARE_METATYPE(MakeCommand)

/// The serial forms of the data of paths and color samples.
class TestPathData : public QObject
{
    Q_OBJECT

private slots:

    void comesBackFromItsSerialForm_data() { AddRows(); }

    void comesBackFromItsSerialForm();

    void doesTheSameAfterItsSerialForm_data() { AddRows(); }

    void doesTheSameAfterItsSerialForm();

    void undoesTheSameAfterItsSerialForm_data() { AddRows(); }

    void undoesTheSameAfterItsSerialForm();

    void shortInputChangesNothing_data() { AddRows(); }

    void shortInputChangesNothing();
    void everyKindHasItsNumber();
    void lengthBeyondTheBytesIsDamage();
    void unknownFormatIsDamage();

private:
    void AddRows();
};

void TestPathData::AddRows()
{
    QTest::addColumn<MakeCommand>("make");
    const std::pair<const char*, MakeCommand> rows[] = {
        {"transform", MakeTransform},
        {"change sub path", MakeChange},
        {"remove sub path", MakeRemoveSub},
        {"insert sub path", MakeInsertSub},
        {"remove path", MakeRemove},
        {"insert path", MakeInsert},
        {"add sample", MakeSampleAdd},
        {"remove sample", MakeSampleRemove},
        {"move sample", MakeSampleMove},
        {"clear samples", MakeSampleClear},
        {"rename path",
         [](LXDocumentInterface* document, bool hasValues) {
             return CommandPointer(PathCommands::Rename(document, hasValues ? 0 : 7, "other"));
         }},
        {"show path",
         [](LXDocumentInterface* document, bool hasValues) {
             return CommandPointer(PathCommands::SetVisible(document, hasValues ? 0 : 7, false));
         }},
        {"move path",
         [](LXDocumentInterface* document, bool hasValues) {
             return CommandPointer(PathCommands::Move(document, hasValues ? 0 : 7, 1));
         }},
    };
    for (const auto& [name, make] : rows)
        QTest::newRow(name) << make;
}

void TestPathData::comesBackFromItsSerialForm()
{
    QFETCH(MakeCommand, make);
    const OwnedDocument document = MakeDocument();
    const CommandPointer command = make(document.get(), true);
    const CommandPointer read = make(document.get(), false);
    MemoryFile file;
    QVERIFY(command->GetCommandData()->Serialize(&file));
    QVERIFY(SerialForm(read) != file.bytes);
    QVERIFY(read->GetCommandData()->Deserialize(&file));
    QCOMPARE(SerialForm(read), file.bytes);
}

void TestPathData::doesTheSameAfterItsSerialForm()
{
    QFETCH(MakeCommand, make);
    const OwnedDocument document = MakeDocument();
    const OwnedDocument twin = MakeDocument();
    const CommandPointer command = make(document.get(), true);
    const CommandPointer read = make(twin.get(), false);
    MemoryFile file;
    QVERIFY(command->GetCommandData()->Serialize(&file));
    QVERIFY(read->GetCommandData()->Deserialize(&file));
    command->redo();
    read->redo();
    QCOMPARE(Describe(twin.get()), Describe(document.get()));
}

void TestPathData::undoesTheSameAfterItsSerialForm()
{
    QFETCH(MakeCommand, make);
    const OwnedDocument document = MakeDocument();
    const CommandPointer command = make(document.get(), true);
    const QStringList before = Describe(document.get());
    command->redo();
    const QStringList after = Describe(document.get());
    const CommandPointer read = make(document.get(), false);
    MemoryFile file;
    QVERIFY(command->GetCommandData()->Serialize(&file));
    QVERIFY(read->GetCommandData()->Deserialize(&file));
    command->undo();
    const QStringList undone = Describe(document.get());
    command->redo();
    read->undo();
    QCOMPARE(Describe(document.get()), undone);
    read->redo();
    QCOMPARE(Describe(document.get()), after);
    // A move's sample stands in its new place already when the command comes.
    if (command->GetCommandData()->GetDataType() !=
        MakeSampleMove(document.get(), false)->GetCommandData()->GetDataType())
        QCOMPARE(undone, before);
}

void TestPathData::shortInputChangesNothing()
{
    QFETCH(MakeCommand, make);
    const OwnedDocument document = MakeDocument();
    const QByteArray whole = SerialForm(make(document.get(), true));
    const CommandPointer target = make(document.get(), false);
    const QByteArray before = SerialForm(target);
    for (int length = 0; length < whole.size(); ++length) {
        MemoryFile cut;
        cut.bytes = whole.left(length);
        QVERIFY(!target->GetCommandData()->Deserialize(&cut));
    }
    MemoryFile full;
    full.isFull = true;
    QVERIFY(!target->GetCommandData()->Serialize(&full));
    QCOMPARE(SerialForm(target), before);
}

void TestPathData::everyKindHasItsNumber()
{
    const OwnedDocument document = MakeDocument();
    QSet<int> numbers;
    for (const auto& make : {MakeTransform, MakeChange, MakeRemoveSub, MakeInsertSub, MakeRemove, MakeInsert,
                             MakeSampleAdd, MakeSampleRemove, MakeSampleMove, MakeSampleClear}) {
        numbers << make(document.get(), false)->GetCommandData()->GetDataType();
    }
    numbers << CommandPointer(PathCommands::Move(document.get(), 0, 1))->GetCommandData()->GetDataType();
    numbers << CommandPointer(PathCommands::Rename(document.get(), 0, "x"))->GetCommandData()->GetDataType();
    QCOMPARE(numbers.size(), 12);
}

/// A count of two thousand millions of anchors is refused, not reserved.
void TestPathData::lengthBeyondTheBytesIsDamage()
{
    const OwnedDocument document = MakeDocument();
    const CommandPointer command = MakeInsertSub(document.get(), true);
    MemoryFile file;
    QVERIFY(command->GetCommandData()->Serialize(&file));
    // The length of the record (8), path, sub path and operation (4 each), then the count of anchors.
    constexpr int countAt = 8 + 3 * 4;
    QCOMPARE(qFromBigEndian<qint32>(file.bytes.constData() + countAt), 10);
    for (const qint32 count : {qint32(11), qint32(0x7FFFFFFF), qint32(-1)}) {
        MemoryFile damaged;
        damaged.bytes = file.bytes;
        qToBigEndian(count, damaged.bytes.data() + countAt);
        QVERIFY(!MakeInsertSub(document.get(), false)->GetCommandData()->Deserialize(&damaged));
    }
}

void TestPathData::unknownFormatIsDamage()
{
    const OwnedDocument document = MakeDocument();
    MemoryFile file;
    QVERIFY(MakeSampleRemove(document.get(), true)->GetCommandData()->Serialize(&file));
    // The length of the record (8), the row (4), the point (8), the radius (4), the format.
    constexpr int radiusAt = 8 + 4 + 8;
    for (const int place : {radiusAt, radiusAt + 4}) {
        MemoryFile damaged;
        damaged.bytes = file.bytes;
        qToBigEndian(qint32(4), damaged.bytes.data() + place);
        QVERIFY(!MakeSampleRemove(document.get(), false)->GetCommandData()->Deserialize(&damaged));
    }
}

ZK_REGISTER_TEST(tst_pathdata, TestPathData)
#include "tst_pathdata.moc"
