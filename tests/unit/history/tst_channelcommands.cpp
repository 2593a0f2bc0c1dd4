#include "UndoLaw.h"

#include "document/LXDocumentInterface.h"
#include "document/SelectionChannels.h"
#include "history/ChannelCommands.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

using namespace DocumentFixture;
using Op = SelectionCommandData::LogicalOp;

Q_DECLARE_METATYPE(Op)

namespace {
/// Selected is a square of 10 at (20, 20); kept is "soft", half of everything from x = 25 on.
OwnedDocument MakeDocument()
{
    OwnedDocument document = Make(QSize(100, 80));
    document->SetSelectionMask(Filled(QSize(10, 10), 0xFF000000), QPoint(20, 20));
    ChannelsOf(document.get())->Set({{"soft", {Filled(QSize(75, 80), 0x80000000), QPoint(25, 0)}}});
    return document;
}

QStringList NamesIn(const OwnedDocument& document)
{
    return ChannelsOf(document.get())->Names();
}
} // namespace

/// Selections that are kept under names: saved, brought back and deleted as steps.
class TestChannelCommands : public QObject
{
    Q_OBJECT

private slots:
    void savingKeepsTheSelectionUnderItsName();
    void aKeptSelectionStaysWhenTheSelectionChanges();
    void savingUnderAnOldNameReplacesInPlace();
    void withoutASelectionOrANameNothingIsSaved();
    void loadingCombines_data();
    void loadingCombines();
    void loadingWithoutASelectionAlwaysReplaces();
    void loadingWhatLeavesNothingDeselects();
    void deletingTakesOneRow();
    void rowsThatAreNotThereGiveNoCommand();
    void everyChangeIsTold();
};

void TestChannelCommands::savingKeepsTheSelectionUnderItsName()
{
    const OwnedDocument document = MakeDocument();
    LexoCommand* command = ChannelCommands::Save(document.get(), "square");
    QCOMPARE(command->text(), QString("Save selection"));
    QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
    QCOMPARE(NamesIn(document), QStringList({"soft", "square"}));
    const SelectionChannel saved = ChannelsOf(document.get())->All().last();
    QCOMPARE(saved.coverage.Rect(), QRect(20, 20, 10, 10));
    QVERIFY(AreEqual(saved.coverage.image, Filled(QSize(10, 10), 0xFF000000)));
}

void TestChannelCommands::aKeptSelectionStaysWhenTheSelectionChanges()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    stack.push(ChannelCommands::Save(document.get(), "square"));
    document->SetSelectionMask(Filled(QSize(3, 3), 0x11000000), QPoint(1, 1));
    document->TranslateSelection(QPoint(5, 5));
    QCOMPARE(ChannelsOf(document.get())->All().last().coverage.Rect(), QRect(20, 20, 10, 10));
    QVERIFY(
        AreEqual(ChannelsOf(document.get())->All().last().coverage.image, Filled(QSize(10, 10), 0xFF000000)));
}

void TestChannelCommands::savingUnderAnOldNameReplacesInPlace()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    stack.push(ChannelCommands::Save(document.get(), "square"));
    LexoCommand* command = ChannelCommands::Save(document.get(), "soft");
    QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
    QCOMPARE(NamesIn(document), QStringList({"soft", "square"}));
    QCOMPARE(ChannelsOf(document.get())->All().first().coverage.Rect(), QRect(20, 20, 10, 10));
}

void TestChannelCommands::withoutASelectionOrANameNothingIsSaved()
{
    const OwnedDocument document = MakeDocument();
    QVERIFY(!ChannelCommands::Save(document.get(), ""));
    document->SetSelectionMask({}, {});
    QVERIFY(!ChannelCommands::Save(document.get(), "nothing"));
}

void TestChannelCommands::loadingCombines_data()
{
    QTest::addColumn<Op>("op");
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<quint32>("left");  ///< in the square only
    QTest::addColumn<quint32>("right"); ///< in both
    QTest::newRow("replace") << SelectionCommandData::Replace << QRect(25, 0, 75, 80) << 0u << 0x80u;
    QTest::newRow("add") << SelectionCommandData::Unite << QRect(20, 0, 80, 80) << 0xFFu << 0xFFu;
    QTest::newRow("subtract") << SelectionCommandData::Subtract << QRect(20, 20, 10, 10) << 0xFFu << 0x7Fu;
    QTest::newRow("intersect") << SelectionCommandData::Intersect << QRect(25, 20, 5, 10) << 0u << 0x80u;
}

void TestChannelCommands::loadingCombines()
{
    QFETCH(Op, op);
    QFETCH(QRect, rect);
    QFETCH(quint32, left);
    QFETCH(quint32, right);
    const OwnedDocument document = MakeDocument();
    LexoCommand* command = ChannelCommands::Load(document.get(), 0, op);
    QCOMPARE(command->text(), QString("Load selection"));
    QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
    QCOMPARE(document->GetSelectionGeometry(), rect);
    const auto coverageAt = [&](const QPoint& point) {
        const QPoint inMask = point - rect.topLeft();
        return rect.contains(point)
                   ? document->GetSelectionMask().GetColor(inMask.x(), inMask.y()).value >> 24
                   : 0u;
    };
    QCOMPARE(coverageAt({22, 22}), left);
    QCOMPARE(coverageAt({27, 22}), right);
    QCOMPARE(NamesIn(document), QStringList("soft"));
}

void TestChannelCommands::loadingWithoutASelectionAlwaysReplaces()
{
    for (const Op op :
         {SelectionCommandData::Unite, SelectionCommandData::Subtract, SelectionCommandData::Intersect}) {
        const OwnedDocument document = MakeDocument();
        document->SetSelectionMask({}, {});
        QCOMPARE(UndoLaw::BrokenBy(document.get(), ChannelCommands::Load(document.get(), 0, op)), QString());
        QCOMPARE(document->GetSelectionGeometry(), QRect(25, 0, 75, 80));
    }
}

void TestChannelCommands::loadingWhatLeavesNothingDeselects()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    stack.push(ChannelCommands::Save(document.get(), "square"));
    LexoCommand* command = ChannelCommands::Load(document.get(), 1, SelectionCommandData::Subtract);
    QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
    QVERIFY(!document->HasSelection());
}

void TestChannelCommands::deletingTakesOneRow()
{
    const OwnedDocument document = MakeDocument();
    LexoUndoStack stack;
    stack.push(ChannelCommands::Save(document.get(), "square"));
    LexoCommand* command = ChannelCommands::Delete(document.get(), 0);
    QCOMPARE(command->text(), QString("Delete saved selection"));
    QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
    QCOMPARE(NamesIn(document), QStringList("square"));
    QCOMPARE(document->GetSelectionGeometry(), QRect(20, 20, 10, 10));
}

void TestChannelCommands::rowsThatAreNotThereGiveNoCommand()
{
    const OwnedDocument document = MakeDocument();
    for (const int row : {-1, 1}) {
        QVERIFY(!ChannelCommands::Delete(document.get(), row));
        QVERIFY(!ChannelCommands::Load(document.get(), row, SelectionCommandData::Replace));
    }
}

void TestChannelCommands::everyChangeIsTold()
{
    const OwnedDocument document = MakeDocument();
    int changes = 0;
    connect(ChannelsOf(document.get()), &SelectionChannels::Changed, this, [&changes] { ++changes; });
    LexoUndoStack stack;
    stack.push(ChannelCommands::Save(document.get(), "square"));
    stack.push(ChannelCommands::Delete(document.get(), 0));
    stack.undo();
    stack.undo();
    QCOMPARE(changes, 4);
    QCOMPARE(NamesIn(document), QStringList("soft"));
}

ZK_REGISTER_TEST(tst_channelcommands, TestChannelCommands)
#include "tst_channelcommands.moc"
