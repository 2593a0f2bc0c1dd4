#include "document/LXDocumentInterface.h"
#include "history/ChangeSubpathCommandData.h"
#include "history/InsertPathCommandData.h"
#include "history/InsertSubpathCommandData.h"
#include "history/LexoUndoStack.h"
#include "history/MoveCommandData.h"
#include "history/PathCommand.h"
#include "history/PathCommands.h"
#include "history/RemovePathCommandData.h"
#include "history/RemoveSubpathCommandData.h"
#include "history/SubpathCommand.h"
#include "history/TransformPathCommandData.h"
#include "support/DocumentFixture.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

using namespace DocumentFixture;
using namespace PathFixture;
using Model = LXPathsListModel;

namespace {
template <class Command>
LexoCommand* With(LXDocumentInterface* document, LexoCommandData* data)
{
    auto* command = new Command(document);
    command->SetCommandData(data);
    return command;
}

LexoCommandData* Transforming(const LXSubPaths& before, int subPath, const QTransform& transform)
{
    auto* data = new TransformPathCommandData;
    data->SetPathIndex(0);
    data->SetSubpathIndex(subPath);
    data->SetPath(before);
    data->SetTransform(transform);
    return data;
}

LexoCommandData* Changing(int row, int subPath, const LXPath& before, const LXPath& after)
{
    auto* data = new ChangeSubpathCommandData;
    data->SetPathIndex(row);
    data->SetSubpathIndex(subPath);
    data->SetUndoData(before);
    data->SetRedoData(after);
    return data;
}

LexoCommandData* RemovingSub(int row, int subPath, int operation, const LXPath& elements)
{
    auto* data = new RemoveSubpathCommandData;
    data->SetPathIndex(row);
    data->SetSubpathIndex(subPath);
    data->SetLogicalOp(operation);
    data->SetUndoData(elements);
    return data;
}

LexoCommandData* InsertingSub(int row, int subPath, int operation, const LXPath& elements)
{
    auto* data = new InsertSubpathCommandData;
    data->SetPathIndex(row);
    data->SetSubpathIndex(subPath);
    data->SetLogicalOp(operation);
    data->SetData(elements);
    return data;
}

LexoCommandData* RemovingPath(int row, const QString& name, const LXSubPaths& path)
{
    auto* data = new RemovePathCommandData;
    data->SetPathIndex(row);
    data->SetPathName(name);
    data->SetPath(path);
    return data;
}

LexoCommandData* InsertingPath(int row, const QString& name)
{
    auto* data = new InsertPathCommandData;
    data->SetPathIndex(row);
    data->SetPathName(name);
    return data;
}
} // namespace

using MakeCommand = std::function<LexoCommand*(LXDocumentInterface*)>;
Q_DECLARE_METATYPE(MakeCommand)

/// The commands of paths and sub paths.
class TestPathCommands : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void undoAndRedoAreExact_data();
    void undoAndRedoAreExact();
    void badIndicesChangeNothing_data();
    void badIndicesChangeNothing();
    void changedSubPathIsCommittedAtEveryStep();
    void insertedSubPathIsToldEachWay();
    void removedSubPathIsToldEachWay();
    void insertedPathIsToldEachWay();
    void transformMapsTheBoxFromTheOrigin();
    void transformOfASubPathLeavesTheOthers();
    void transformIsCommittedForEachSubPathItMaps();
    void transformTakesThePathBeforeFromItsData();
    void lastSubPathAndItsPathGoInOneMacro();
    void indexBeyondTheEndMeansTheEnd();
    void bothCommandsTakeAllDataOfPaths();
    void otherDataIsRefused();
    void editorsCommandsHaveTexts();

private:
    LexoCommand* Push(LexoCommand* command)
    {
        m_pStack->push(command);
        return command;
    }

    OwnedDocument m_pDocument;
    Model* m_pPaths = nullptr;
    std::unique_ptr<LexoUndoStack> m_pStack;
};

/// Path "one": a rectangle at (10, 20), 30 x 40, and a line from (100, 100) to (110, 140). Path "two": empty.
void TestPathCommands::init()
{
    m_pDocument = Make(QSize(200, 150));
    m_pPaths = m_pDocument->GetPathListModel();
    m_pPaths->InsertPath(
        0, "one",
        {{Rectangle(QRectF(10, 20, 30, 40)), Model::Unite}, {Line({100, 100}, {110, 140}), Model::Exclude}});
    m_pPaths->InsertPath(1, "two");
    m_pPaths->SetPathVisible(0, true);
    m_pStack = std::make_unique<LexoUndoStack>();
}

void TestPathCommands::cleanup()
{
    m_pStack.reset();
    m_pDocument.reset();
}

void TestPathCommands::undoAndRedoAreExact_data()
{
    QTest::addColumn<MakeCommand>("make");
    const auto add = [](const char* name, const MakeCommand& make) { QTest::newRow(name) << make; };
    const LXPath other = Ellipse(QRectF(1.1, 2.2, 33.3, 44.4));
    add("transformed path", [](LXDocumentInterface* document) {
        return With<PathCommand>(document, Transforming(document->GetPathListModel()->GetPath(0), -1,
                                                        QTransform().rotate(31).scale(0.3, 1.7)));
    });
    add("transformed sub path", [](LXDocumentInterface* document) {
        return With<PathCommand>(document, Transforming(document->GetPathListModel()->GetPath(0), 1,
                                                        QTransform().shear(0.1, 0.7)));
    });
    add("changed sub path", [other](LXDocumentInterface* document) {
        const LXPath before = document->GetPathListModel()->GetPath(0)[1].first;
        return With<SubpathCommand>(document, Changing(0, 1, before, other));
    });
    add("removed sub path", [](LXDocumentInterface* document) {
        const auto before = document->GetPathListModel()->GetPath(0)[0];
        return With<SubpathCommand>(document, RemovingSub(0, 0, before.second, before.first));
    });
    add("inserted sub path", [other](LXDocumentInterface* document) {
        return With<SubpathCommand>(document, InsertingSub(0, 1, Model::Subtract, other));
    });
    add("removed path", [](LXDocumentInterface* document) {
        const Model* paths = document->GetPathListModel();
        return With<PathCommand>(document, RemovingPath(0, paths->GetPathName(0), paths->GetPath(0)));
    });
    add("inserted path", [](LXDocumentInterface* document) {
        return With<PathCommand>(document, InsertingPath(1, "Work path"));
    });
    add("panel: new", [](LXDocumentInterface* document) { return PathCommands::Add(document, 2, "new"); });
    add("panel: delete", [](LXDocumentInterface* document) { return PathCommands::Remove(document, 0); });
    add("panel: move", [](LXDocumentInterface* document) { return PathCommands::Move(document, 0, 1); });
    add("panel: rename",
        [](LXDocumentInterface* document) { return PathCommands::Rename(document, 1, "other"); });
    add("panel: show",
        [](LXDocumentInterface* document) { return PathCommands::SetVisible(document, 1, true); });
}

void TestPathCommands::undoAndRedoAreExact()
{
    QFETCH(MakeCommand, make);
    const QStringList before = Describe(m_pDocument.get());
    Push(make(m_pDocument.get()));
    const QStringList after = Describe(m_pDocument.get());
    QVERIFY(before != after);
    for (int i = 0; i < 2; ++i) {
        m_pStack->undo();
        QCOMPARE(Describe(m_pDocument.get()), before);
        m_pStack->redo();
        QCOMPARE(Describe(m_pDocument.get()), after);
    }
}

void TestPathCommands::badIndicesChangeNothing_data()
{
    QTest::addColumn<MakeCommand>("make");
    const auto add = [](const char* name, const MakeCommand& make) { QTest::newRow(name) << make; };
    const LXPath line = Line({1, 1}, {2, 2});
    add("transformed path", [line](LXDocumentInterface* document) {
        auto* data = Transforming({{line, Model::Unite}}, -1, QTransform());
        static_cast<TransformPathCommandData*>(data)->SetPathIndex(7);
        return With<PathCommand>(document, data);
    });
    add("changed sub path", [line](LXDocumentInterface* document) {
        return With<SubpathCommand>(document, Changing(0, 2, line, line));
    });
    add("removed sub path", [line](LXDocumentInterface* document) {
        return With<SubpathCommand>(document, RemovingSub(0, 2, Model::Unite, line));
    });
    add("removed sub path before the first", [line](LXDocumentInterface* document) {
        return With<SubpathCommand>(document, RemovingSub(0, -2, Model::Unite, line));
    });
    add("removed sub path of no path", [line](LXDocumentInterface* document) {
        return With<SubpathCommand>(document, RemovingSub(-1, 0, Model::Unite, line));
    });
    add("inserted sub path", [line](LXDocumentInterface* document) {
        return With<SubpathCommand>(document, InsertingSub(2, 0, Model::Unite, line));
    });
    add("removed path", [line](LXDocumentInterface* document) {
        return With<PathCommand>(document, RemovingPath(2, "gone", {{line, Model::Unite}}));
    });
    add("panel: delete", [](LXDocumentInterface* document) { return PathCommands::Remove(document, -1); });
    add("panel: move", [](LXDocumentInterface* document) { return PathCommands::Move(document, 0, 2); });
    add("panel: rename",
        [](LXDocumentInterface* document) { return PathCommands::Rename(document, 2, "x"); });
    add("panel: show",
        [](LXDocumentInterface* document) { return PathCommands::SetVisible(document, -1, true); });
}

void TestPathCommands::badIndicesChangeNothing()
{
    QFETCH(MakeCommand, make);
    const QStringList before = Describe(m_pDocument.get());
    PathSignals told(m_pPaths);
    Push(make(m_pDocument.get()));
    QCOMPARE(Describe(m_pDocument.get()), before);
    m_pStack->undo();
    QCOMPARE(Describe(m_pDocument.get()), before);
    m_pStack->redo();
    QCOMPARE(told.Take(), QStringList());
}

void TestPathCommands::changedSubPathIsCommittedAtEveryStep()
{
    PathSignals told(m_pPaths);
    const LXPath before = m_pPaths->GetPath(0)[1].first;
    Push(With<SubpathCommand>(m_pDocument.get(), Changing(0, 1, before, Line({0, 0}, {9, 9}))));
    QCOMPARE(told.Take(), (QStringList{"PathChanged", "ChangesCommitted 0 1"}));
    QCOMPARE(m_pPaths->GetPath(0)[1].first, Line({0, 0}, {9, 9}));
    m_pStack->undo();
    QCOMPARE(told.Take(), (QStringList{"PathChanged", "ChangesCommitted 0 1"}));
    m_pStack->redo();
    QCOMPARE(told.Take(), (QStringList{"PathChanged", "ChangesCommitted 0 1"}));
}

void TestPathCommands::insertedSubPathIsToldEachWay()
{
    PathSignals told(m_pPaths);
    Push(With<SubpathCommand>(m_pDocument.get(), InsertingSub(0, 2, Model::Subtract, Line({0, 0}, {9, 9}))));
    QCOMPARE(told.Take(), (QStringList{"SubpathInserted 0 2", "PathChanged"}));
    QCOMPARE(m_pPaths->GetPath(0)[2].second, int(Model::Subtract));
    m_pStack->undo();
    QCOMPARE(told.Take(), (QStringList{"SubpathRemoved 0 2", "PathChanged"}));
}

void TestPathCommands::removedSubPathIsToldEachWay()
{
    PathSignals told(m_pPaths);
    const auto before = m_pPaths->GetPath(0)[0];
    Push(With<SubpathCommand>(m_pDocument.get(), RemovingSub(0, 0, before.second, before.first)));
    QCOMPARE(told.Take(), (QStringList{"SubpathRemoved 0 0", "PathChanged"}));
    m_pStack->undo();
    QCOMPARE(told.Take(), (QStringList{"SubpathInserted 0 0", "PathChanged"}));
}

void TestPathCommands::insertedPathIsToldEachWay()
{
    PathSignals told(m_pPaths);
    Push(With<PathCommand>(m_pDocument.get(), InsertingPath(2, "Work path")));
    QCOMPARE(told.Take(), (QStringList{"rowsInserted 2", "PathChanged"}));
    QCOMPARE(m_pPaths->GetPathName(2), QString("Work path"));
    m_pStack->undo();
    QCOMPARE(told.Take(), (QStringList{"rowsRemoved 2", "PathChanged"}));
}

/// The box of path "one" is (10, 20) to (110, 140).
void TestPathCommands::transformMapsTheBoxFromTheOrigin()
{
    const QTransform toPlace = QTransform(2, 0, 0, 3, 5, 7);
    Push(With<PathCommand>(m_pDocument.get(), Transforming(m_pPaths->GetPath(0), -1, toPlace)));
    const LXSubPaths path = m_pPaths->GetPath(0);
    QCOMPARE(path[0].first, Rectangle(QRectF(5, 7, 60, 120)));
    QCOMPARE(path[1].first, Line({2 * 90 + 5, 3 * 80 + 7}, {2 * 100 + 5, 3 * 120 + 7}));
    QCOMPARE(path[1].second, int(Model::Exclude));
}

void TestPathCommands::transformOfASubPathLeavesTheOthers()
{
    const LXSubPaths before = m_pPaths->GetPath(0);
    Push(With<PathCommand>(m_pDocument.get(), Transforming(before, 1, QTransform::fromTranslate(1, 2))));
    QCOMPARE(m_pPaths->GetPath(0)[0], before[0]);
    // The box of the line has its corner at (100, 100).
    QCOMPARE(m_pPaths->GetPath(0)[1].first, Line({1, 2}, {11, 42}));
}

void TestPathCommands::transformIsCommittedForEachSubPathItMaps()
{
    PathSignals told(m_pPaths);
    Push(With<PathCommand>(m_pDocument.get(), Transforming(m_pPaths->GetPath(0), -1, QTransform())));
    const QStringList all{"PathChanged", "ChangesCommitted 0 0", "ChangesCommitted 0 1"};
    QCOMPARE(told.Take(), all);
    m_pStack->undo();
    QCOMPARE(told.Take(), all);
    Push(With<PathCommand>(m_pDocument.get(), Transforming(m_pPaths->GetPath(0), 1, QTransform())));
    QCOMPARE(told.Take(), (QStringList{"PathChanged", "ChangesCommitted 0 1"}));
}

/// A preview has moved the path before the push.
void TestPathCommands::transformTakesThePathBeforeFromItsData()
{
    const LXSubPaths before = m_pPaths->GetPath(0);
    m_pPaths->SetPath(0, {});
    Push(With<PathCommand>(m_pDocument.get(), Transforming(before, -1, QTransform::fromTranslate(10, 20))));
    QCOMPARE(m_pPaths->GetPath(0), before);
    m_pPaths->SetPath(0, {});
    m_pStack->undo();
    QCOMPARE(m_pPaths->GetPath(0), before);
}

/// The tool reads the path for the second command before it pushes the first.
void TestPathCommands::lastSubPathAndItsPathGoInOneMacro()
{
    m_pPaths->RemoveSubPath(0, 1);
    const QStringList before = Describe(m_pDocument.get());
    const auto last = m_pPaths->GetPath(0)[0];
    LexoCommandData* wholePath = RemovingPath(0, "one", m_pPaths->GetPath(0));
    m_pStack->beginMacro("Remove subpath");
    Push(With<SubpathCommand>(m_pDocument.get(), RemovingSub(0, 0, last.second, last.first)));
    Push(With<PathCommand>(m_pDocument.get(), wholePath));
    m_pStack->endMacro();
    QCOMPARE(m_pPaths->rowCount(), 1);
    m_pStack->undo();
    QCOMPARE(Describe(m_pDocument.get()), before);
}

void TestPathCommands::indexBeyondTheEndMeansTheEnd()
{
    const QStringList before = Describe(m_pDocument.get());
    Push(With<PathCommand>(m_pDocument.get(), InsertingPath(99, "last")));
    QCOMPARE(m_pPaths->GetPathName(2), QString("last"));
    Push(With<SubpathCommand>(m_pDocument.get(), InsertingSub(0, 99, Model::Unite, Line({0, 0}, {1, 1}))));
    QCOMPARE(m_pPaths->GetPath(0)[2].first, Line({0, 0}, {1, 1}));
    m_pStack->undo();
    m_pStack->undo();
    QCOMPARE(Describe(m_pDocument.get()), before);
}

void TestPathCommands::bothCommandsTakeAllDataOfPaths()
{
    const QStringList before = Describe(m_pDocument.get());
    Push(With<SubpathCommand>(m_pDocument.get(), InsertingPath(0, "new")));
    Push(With<PathCommand>(m_pDocument.get(), InsertingSub(0, 0, Model::Unite, Line({0, 0}, {1, 1}))));
    QCOMPARE(m_pPaths->GetSubPathsCount(0), 1);
    m_pStack->undo();
    m_pStack->undo();
    QCOMPARE(Describe(m_pDocument.get()), before);
}

void TestPathCommands::otherDataIsRefused()
{
    PathCommand command(m_pDocument.get());
    MoveCommandData other;
    QVERIFY(!command.SetCommandData(&other));
    QVERIFY(!command.SetCommandData(nullptr));
    command.redo();
    command.undo();
}

void TestPathCommands::editorsCommandsHaveTexts()
{
    LXDocumentInterface* document = m_pDocument.get();
    QStringList texts;
    for (LexoCommand* command :
         {PathCommands::Add(document, 0, "x"), PathCommands::Remove(document, 0),
          PathCommands::Move(document, 0, 1), PathCommands::Rename(document, 0, "y"),
          PathCommands::SetVisible(document, 0, true), PathCommands::SetVisible(document, 0, false)}) {
        texts << Push(command)->text();
    }
    QCOMPARE(texts, (QStringList{"New path", "Delete path", "Move path in the list", "Rename path",
                                 "Show path", "Hide path"}));
}

ZK_REGISTER_TEST(tst_pathcommands, TestPathCommands)
#include "tst_pathcommands.moc"
