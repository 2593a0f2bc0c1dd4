#include "ToolTable.h"
#include "ZKOldPluginWrapper.h"

#include "support/TestRegistry.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <algorithm>

class TestToolTable : public QObject
{
    Q_OBJECT

private slots:
    void theFillCanIsTheFirstTool();
    void theMagicWandComesAfterTheSelectionMenu();
    void theMoveToolComesBeforeTheMagicWand();
    void theClipboardIsTheLastTool();
    void identifiersRiseAndAreUnique();
    void aWrapperAnswersForItsTool();
    void aWrapperOwnsItsTool();
};

void TestToolTable::theFillCanIsTheFirstTool()
{
    QCOMPARE(ToolTable().front().id, "{B0000000-0000-0000-0000-000000000010}");
    QCOMPARE(ToolTable().front().name, "Fillcan");
}

void TestToolTable::theMagicWandComesAfterTheSelectionMenu()
{
    QStringList names;
    for (const ToolRow& row : ToolTable()) {
        names.append(row.name);
        if (names.last() == "Magic wand") QCOMPARE(row.id, "{B0000000-0000-0000-0000-000000000026}");
    }
    QVERIFY(names.contains("Magic wand"));
    QVERIFY(names.indexOf("Magic wand") > names.indexOf("Selection menu"));
}

void TestToolTable::theMoveToolComesBeforeTheMagicWand()
{
    const std::vector<ToolRow>& rows = ToolTable();
    const auto move = std::find_if(rows.begin(), rows.end(),
                                   [](const ToolRow& row) { return QLatin1String("Move tool") == row.name; });
    QVERIFY(move != rows.end());
    QCOMPARE(move->id, "{B0000000-0000-0000-0000-000000000025}");
    QCOMPARE((move + 1)->name, "Magic wand");
}

void TestToolTable::theClipboardIsTheLastTool()
{
    QCOMPARE(ToolTable().back().id, "{B0000000-0000-0000-0000-000000000027}");
    QCOMPARE(ToolTable().back().name, "Clipboard");
}

void TestToolTable::identifiersRiseAndAreUnique()
{
    const QRegularExpression form("^\\{B0000000-0000-0000-0000-0000000000[0-9]{2}\\}$");
    QString previous;
    for (const ToolRow& row : ToolTable()) {
        QVERIFY2(form.match(row.id).hasMatch(), row.id);
        QVERIFY2(previous < row.id, row.id);
        previous = row.id;
    }
}

void TestToolTable::aWrapperAnswersForItsTool()
{
    auto* tool = new QObject;
    ZKOldPluginWrapper wrapper(tool, "Fillcan", "{id}");
    QCOMPARE(wrapper.GetType(), 1);
    QCOMPARE(wrapper.GetName(), QString("Fillcan"));
    QCOMPARE(wrapper.GetParent(), nullptr);
    QCOMPARE(wrapper.GetId(), QString("{id}"));
    QCOMPARE(wrapper.property("tool").value<QObject*>(), tool);
    QVERIFY(wrapper.qt_metacast("ZKOldPluginWrapper"));
    QVERIFY(wrapper.qt_metacast("ZKPlugin"));
    QVERIFY(!wrapper.qt_metacast("ITool/1.0"));
}

void TestToolTable::aWrapperOwnsItsTool()
{
    QPointer<QObject> tool = new QObject;
    {
        ZKOldPluginWrapper wrapper(tool, "name", "id");
    }
    QVERIFY(!tool);
}

ZK_REGISTER_TEST(tst_tooltable, TestToolTable)

#include "tst_tooltable.moc"
