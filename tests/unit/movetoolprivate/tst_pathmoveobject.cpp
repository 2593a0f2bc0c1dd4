#include "movetoolprivate/PathMoveObject.h"

#include "document/LXPathSelectionModel.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "support/DocumentFixture.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

using namespace DocumentFixture;
using namespace PathFixture;

class TestPathMoveObject : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aWholePathFollowsTheWay();
    void aSubPathFollowsAloneAndIsCommitted();
    void everyMoveStartsFromTheOriginal();
    void cancellingBringsThePathBack_data();
    void cancellingBringsThePathBack();
    void aSubPathsMoveIsOneStep();
    void withoutAHistoryTheSubPathStaysMoved();
    void aWholePathsMoveLeavesNoStep();
    void withTwoPathsSelectedNothingMoves();
    void withNoPathSelectedNothingMoves();
    void withoutAViewNothingMoves();
    void aSecondBeginIsRefused();
    void whatItThrowsIsNotItsOwnToCatch();

private:
    void Select(int row, int subPath = -1);
    LXSubPaths Path(int row) const;

    OwnedDocument m_pDocument;
    std::unique_ptr<LexoUndoStack> m_pHistory;
    std::unique_ptr<ZKDocumentView> m_pView;
    LXPathsListModel* m_pPaths = nullptr;
};

namespace {
const QRectF First(2, 3, 10, 6);
const QRectF Second(20, 5, 8, 8);

LXSubPaths TwoRectangles(const QPointF& firstDelta, const QPointF& secondDelta)
{
    return {{Rectangle(First.translated(firstDelta)), LXPathsListModel::Unite},
            {Rectangle(Second.translated(secondDelta)), LXPathsListModel::Subtract}};
}
} // namespace

void TestPathMoveObject::init()
{
    m_pDocument = Make(QSize(40, 30));
    m_pHistory = std::make_unique<LexoUndoStack>();
    m_pPaths = m_pDocument->GetPathListModel();
    m_pPaths->InsertPath(0, "first", TwoRectangles({}, {}));
    m_pPaths->InsertPath(1, "second", TwoRectangles({5, 5}, {5, 5}));
    m_pView = std::make_unique<ZKDocumentView>(m_pDocument.get(), m_pHistory.get());
}

void TestPathMoveObject::cleanup()
{
    m_pView.reset();
    m_pHistory.reset();
    m_pDocument.reset();
}

void TestPathMoveObject::Select(int row, int subPath)
{
    auto* selection = qobject_cast<LXPathSelectionModel*>(m_pView->GetPathSelection());
    selection->setCurrentIndex(m_pPaths->index(row), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selection->SelectSubpath(subPath);
}

LXSubPaths TestPathMoveObject::Path(int row) const
{
    return m_pPaths->GetPath(row);
}

void TestPathMoveObject::aWholePathFollowsTheWay()
{
    Select(0);
    PathMoveObject path;
    QVERIFY(path.Begin(m_pView.get(), 0));
    QVERIFY(path.Move(QPoint(4, -3)));
    QCOMPARE(Path(0), TwoRectangles({4, -3}, {4, -3}));
    QCOMPARE(Path(1), TwoRectangles({5, 5}, {5, 5}));
}

void TestPathMoveObject::aSubPathFollowsAloneAndIsCommitted()
{
    Select(0, 1);
    PathMoveObject path;
    QVERIFY(path.Begin(m_pView.get(), 0));
    PathSignals log(m_pPaths);
    QVERIFY(path.Move(QPoint(4, -3)));
    QCOMPARE(Path(0), TwoRectangles({}, {4, -3}));
    QVERIFY(log.Take().contains("ChangesCommitted 0 1"));
}

void TestPathMoveObject::everyMoveStartsFromTheOriginal()
{
    for (const int subPath : {-1, 0}) {
        Select(1, subPath);
        const LXSubPaths before = Path(1);
        PathMoveObject path;
        QVERIFY(path.Begin(m_pView.get(), 0));
        for (const QPoint& delta : {QPoint(100, 3), QPoint(-7, 8), QPoint(1, 1), QPoint(0, 0)})
            QVERIFY(path.Move(delta));
        QCOMPARE(Path(1), before);
    }
}

void TestPathMoveObject::cancellingBringsThePathBack_data()
{
    QTest::addColumn<int>("subPath");
    QTest::newRow("whole path") << -1;
    QTest::newRow("sub path") << 0;
}

void TestPathMoveObject::cancellingBringsThePathBack()
{
    QFETCH(int, subPath);
    Select(0, subPath);
    PathMoveObject path;
    QVERIFY(path.Begin(m_pView.get(), 0));
    QVERIFY(path.Move(QPoint(4, -3)));
    QVERIFY(path.Cancel());
    QCOMPARE(Path(0), TwoRectangles({}, {}));
    QCOMPARE(m_pHistory->count(), 0);
}

void TestPathMoveObject::aSubPathsMoveIsOneStep()
{
    Select(0, 0);
    PathMoveObject path;
    QVERIFY(path.Begin(m_pView.get(), 0));
    QVERIFY(path.Move(QPoint(4, -3)));
    QVERIFY(path.Commit(m_pHistory.get()));
    QCOMPARE(m_pHistory->count(), 1);
    QCOMPARE(m_pHistory->undoText(), QString("Move path"));
    QCOMPARE(Path(0), TwoRectangles({4, -3}, {}));
    m_pHistory->undo();
    QCOMPARE(Path(0), TwoRectangles({}, {}));
    m_pHistory->redo();
    QCOMPARE(Path(0), TwoRectangles({4, -3}, {}));
}

void TestPathMoveObject::withoutAHistoryTheSubPathStaysMoved()
{
    Select(0, 0);
    PathMoveObject path;
    QVERIFY(path.Begin(m_pView.get(), 0));
    QVERIFY(path.Move(QPoint(4, -3)));
    QVERIFY(path.Commit(nullptr));
    QCOMPARE(Path(0), TwoRectangles({4, -3}, {}));
}

void TestPathMoveObject::aWholePathsMoveLeavesNoStep()
{
    Select(0);
    PathMoveObject path;
    QVERIFY(path.Begin(m_pView.get(), 0));
    QVERIFY(path.Move(QPoint(4, -3)));
    QVERIFY(path.Commit(m_pHistory.get()));
    QCOMPARE(m_pHistory->count(), 0);
    QCOMPARE(Path(0), TwoRectangles({4, -3}, {4, -3}));
}

void TestPathMoveObject::withTwoPathsSelectedNothingMoves()
{
    for (const int subPath : {-1, 0}) {
        Select(0);
        Select(1, subPath);
        PathMoveObject path;
        QVERIFY(path.Begin(m_pView.get(), 0));
        QVERIFY(path.Move(QPoint(4, -3)));
        QVERIFY(path.Commit(m_pHistory.get()));
        QVERIFY(path.Cancel());
        QCOMPARE(Path(0), TwoRectangles({}, {}));
        QCOMPARE(Path(1), TwoRectangles({5, 5}, {5, 5}));
        QCOMPARE(m_pHistory->count(), 0);
    }
}

void TestPathMoveObject::withNoPathSelectedNothingMoves()
{
    PathMoveObject path;
    QVERIFY(path.Begin(m_pView.get(), 0));
    QVERIFY(path.Move(QPoint(4, -3)));
    QVERIFY(path.Cancel());
    QVERIFY(path.Commit(m_pHistory.get()));
    QCOMPARE(Path(0), TwoRectangles({}, {}));
}

void TestPathMoveObject::withoutAViewNothingMoves()
{
    PathMoveObject path;
    QVERIFY(path.Begin(nullptr, 0));
    QVERIFY(path.Move(QPoint(4, -3)));
    QVERIFY(path.Cancel());
    QVERIFY(!path.Commit(m_pHistory.get()));
}

void TestPathMoveObject::aSecondBeginIsRefused()
{
    Select(0);
    PathMoveObject path;
    QVERIFY(path.Begin(m_pView.get(), 0));
    QVERIFY(!path.Begin(m_pView.get(), 0));
}

void TestPathMoveObject::whatItThrowsIsNotItsOwnToCatch()
{
    Select(0);
    PathMoveObject path;
    QVERIFY(path.Begin(m_pView.get(), 0));
    connect(m_pPaths, &LXPathsListModel::PathChanged, [] { throw 5; });
    QVERIFY_EXCEPTION_THROWN(path.Move(QPoint(1, 1)), int);
}

ZK_REGISTER_TEST(tst_pathmoveobject, TestPathMoveObject)
#include "tst_pathmoveobject.moc"
