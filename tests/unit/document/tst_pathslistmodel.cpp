#include "document/LXDocumentFactory.h"
#include "document/LXPathsListModel.h"
#include "support/DocumentFixture.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QAbstractItemModelTester>
#include <QImage>
#include <QSignalSpy>
#include <QTest>

#include <thread>

using namespace DocumentFixture;
using namespace PathFixture;
using Model = LXPathsListModel;

/// The list of a document's paths, without undo.
class TestPathsListModel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void newDocumentHasNoPath();
    void pathsComeInWhereToldAndGo();
    void subPathsComeInWhereToldAndGo();
    void setSubPathTellsACommitOnlyWhenAsked();
    void setPathReplacesAllSubPaths();
    void unknownOperationsCountAsNone();
    void badIndicesAreHarmless();
    void pathsMoveInTheList();
    void nameAndVisibilityAreTold();
    void rolesTellWhatTheRowShows();
    void thumbnailFollowsThePathAndTheCanvas();
    void copiedDocumentHasItsOwnPaths();
    void aWorkersChangeIsToldOnTheMainThread();
    void aWorkersChangeOfAPathThatWentIsHarmless();

private:
    LXSubPaths TwoSubPaths() const
    {
        return {{Rectangle(QRectF(1, 2, 3, 4)), Model::Unite}, {Line({5, 6}, {7, 8}), Model::Exclude}};
    }

    OwnedDocument m_pDocument;
    Model* m_pPaths = nullptr;
    std::unique_ptr<QAbstractItemModelTester> m_pTester;
};

void TestPathsListModel::init()
{
    m_pDocument = Make(QSize(60, 40));
    m_pPaths = m_pDocument->GetPathListModel();
    m_pTester = std::make_unique<QAbstractItemModelTester>(
        m_pPaths, QAbstractItemModelTester::FailureReportingMode::QtTest);
}

void TestPathsListModel::cleanup()
{
    m_pTester.reset();
    m_pDocument.reset();
}

void TestPathsListModel::newDocumentHasNoPath()
{
    QCOMPARE(m_pPaths->rowCount(), 0);
    QCOMPARE(m_pPaths->GetDocument(), m_pDocument.get());
}

void TestPathsListModel::pathsComeInWhereToldAndGo()
{
    PathSignals told(m_pPaths);
    m_pPaths->InsertPath(0, "one");
    QCOMPARE(told.Take(), (QStringList{"rowsInserted 0", "PathChanged"}));
    m_pPaths->InsertPath(0, "two", TwoSubPaths());
    m_pPaths->InsertPath(99, "three");
    told.Take();
    QCOMPARE(m_pPaths->rowCount(), 3);
    QCOMPARE(m_pPaths->GetPathName(0), QString("two"));
    QCOMPARE(m_pPaths->GetPath(0), TwoSubPaths());
    QCOMPARE(m_pPaths->GetPathName(2), QString("three"));
    m_pPaths->RemovePath(0);
    QCOMPARE(told.Take(), (QStringList{"rowsRemoved 0", "PathChanged"}));
    QCOMPARE(m_pPaths->GetPathName(0), QString("one"));
}

void TestPathsListModel::subPathsComeInWhereToldAndGo()
{
    m_pPaths->InsertPath(0, "path", TwoSubPaths());
    PathSignals told(m_pPaths);
    m_pPaths->InsertSubPath(0, 1, Line({0, 0}, {1, 1}), Model::Subtract);
    QCOMPARE(told.Take(), (QStringList{"SubpathInserted 0 1", "PathChanged"}));
    m_pPaths->InsertSubPath(0, 99, Line({2, 2}, {3, 3}), Model::Intersect);
    QCOMPARE(told.Take(), (QStringList{"SubpathInserted 0 3", "PathChanged"}));
    LXPath elements;
    Model::LogicalOp operation = Model::None;
    QVERIFY(m_pPaths->GetSubPath(0, 1, elements, operation));
    QCOMPARE(elements, Line({0, 0}, {1, 1}));
    QCOMPARE(operation, Model::Subtract);
    QCOMPARE(m_pPaths->GetSubPathsCount(0), 4);

    m_pPaths->RemoveSubPath(0, 1);
    m_pPaths->RemoveSubPath(0, 2);
    QCOMPARE(told.Take(),
             (QStringList{"SubpathRemoved 0 1", "PathChanged", "SubpathRemoved 0 2", "PathChanged"}));
    QCOMPARE(m_pPaths->GetPath(0), TwoSubPaths());
}

void TestPathsListModel::setSubPathTellsACommitOnlyWhenAsked()
{
    m_pPaths->InsertPath(0, "path", TwoSubPaths());
    PathSignals told(m_pPaths);
    m_pPaths->SetSubPath(0, 1, Line({0, 0}, {1, 1}), false);
    QCOMPARE(told.Take(), QStringList{"PathChanged"});
    m_pPaths->SetSubPath(0, 1, Line({0, 0}, {2, 2}), true);
    QCOMPARE(told.Take(), (QStringList{"PathChanged", "ChangesCommitted 0 1"}));
    LXSubPaths expected = TwoSubPaths();
    expected[1].first = Line({0, 0}, {2, 2});
    QCOMPARE(m_pPaths->GetPath(0), expected);
}

void TestPathsListModel::setPathReplacesAllSubPaths()
{
    m_pPaths->InsertPath(0, "path", {{Line({0, 0}, {1, 1}), Model::Unite}});
    PathSignals told(m_pPaths);
    m_pPaths->SetPath(0, TwoSubPaths());
    QCOMPARE(told.Take(), QStringList{"PathChanged"});
    QCOMPARE(m_pPaths->GetPath(0), TwoSubPaths());
}

void TestPathsListModel::unknownOperationsCountAsNone()
{
    m_pPaths->InsertPath(0, "path", {{Line({0, 0}, {1, 1}), 17}});
    m_pPaths->InsertSubPath(0, 1, Line({0, 0}, {1, 1}), -1);
    QCOMPARE(m_pPaths->GetPath(0)[0].second, int(Model::None));
    QCOMPARE(m_pPaths->GetPath(0)[1].second, int(Model::None));
}

void TestPathsListModel::badIndicesAreHarmless()
{
    m_pPaths->InsertPath(0, "path", TwoSubPaths());
    m_pPaths->SetPathVisible(0, true);
    PathSignals told(m_pPaths);
    for (const int row : {-1, 1}) {
        m_pPaths->SetPath(row, {});
        m_pPaths->SetSubPath(row, 0, {}, true);
        m_pPaths->InsertSubPath(row, 0, {}, Model::Unite);
        m_pPaths->RemoveSubPath(row, 0);
        m_pPaths->SetPathName(row, "other");
        m_pPaths->SetPathVisible(row, true);
        m_pPaths->RemovePath(row);
        m_pPaths->MovePath(row, 0);
        m_pPaths->MovePath(0, row);
        QCOMPARE(m_pPaths->GetPathName(row), QString());
        QVERIFY(m_pPaths->GetPath(row).isEmpty());
        QCOMPARE(m_pPaths->GetSubPathsCount(row), 0);
        QVERIFY(!m_pPaths->GetPathVisible(row));
    }
    LXPath elements = Line({1, 1}, {2, 2});
    Model::LogicalOp operation = Model::Exclude;
    for (const int subPath : {-1, 2}) {
        m_pPaths->SetSubPath(0, subPath, {}, true);
        m_pPaths->RemoveSubPath(0, subPath);
        QVERIFY(!m_pPaths->GetSubPath(0, subPath, elements, operation));
    }
    QCOMPARE(elements, Line({1, 1}, {2, 2}));
    QCOMPARE(operation, Model::Exclude);
    QCOMPARE(told.Take(), QStringList());
    QCOMPARE(m_pPaths->GetPath(0), TwoSubPaths());
}

void TestPathsListModel::pathsMoveInTheList()
{
    for (const char* name : {"c", "b", "a"})
        m_pPaths->InsertPath(0, name);
    const auto names = [this] {
        return m_pPaths->GetPathName(0) + m_pPaths->GetPathName(1) + m_pPaths->GetPathName(2);
    };
    m_pPaths->MovePath(0, 2);
    QCOMPARE(names(), QString("bca"));
    m_pPaths->MovePath(2, 1);
    QCOMPARE(names(), QString("bac"));
    PathSignals told(m_pPaths);
    m_pPaths->MovePath(1, 1);
    QCOMPARE(told.Take(), QStringList());
}

void TestPathsListModel::nameAndVisibilityAreTold()
{
    m_pPaths->InsertPath(0, "path");
    QSignalSpy changed(m_pPaths, &Model::dataChanged);
    m_pPaths->SetPathName(0, "other");
    m_pPaths->SetPathVisible(0, true);
    QCOMPARE(changed.count(), 2);
    m_pPaths->SetPathName(0, "other");
    m_pPaths->SetPathVisible(0, true);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(m_pPaths->GetPathName(0), QString("other"));
    QVERIFY(m_pPaths->GetPathVisible(0));
}

void TestPathsListModel::rolesTellWhatTheRowShows()
{
    m_pPaths->InsertPath(0, "path");
    const QModelIndex index = m_pPaths->index(0);
    QCOMPARE(index.data().toString(), QString("path"));
    QCOMPARE(index.data(Qt::EditRole).toString(), QString("path"));
    QVERIFY(!index.data(Model::VisibleRole).toBool());
    QVERIFY(index.flags().testFlag(Qt::ItemIsEditable));
    QVERIFY(!m_pPaths->index(1).isValid());
}

void TestPathsListModel::thumbnailFollowsThePathAndTheCanvas()
{
    m_pPaths->InsertPath(0, "path");
    const auto thumbnail = [this] { return m_pPaths->index(0).data(Qt::DecorationRole).value<QImage>(); };
    QCOMPARE(thumbnail().size(), QSize(64, 42));
    QCOMPARE(thumbnail().pixelColor(32, 21), QColor(0x80, 0x80, 0x80));
    m_pPaths->SetPath(0, {{Rectangle(QRectF(0, 0, 60, 40)), Model::Unite}});
    QCOMPARE(thumbnail().pixelColor(32, 21), QColor(Qt::white));
    m_pDocument->SetDocumentSize(QSize(40, 60));
    QCOMPARE(thumbnail().size(), QSize(42, 64));
}

void TestPathsListModel::copiedDocumentHasItsOwnPaths()
{
    m_pPaths->InsertPath(0, "path", TwoSubPaths());
    m_pPaths->SetPathVisible(0, true);
    const OwnedDocument copy(LXDocumentFactory::Instance()->Copy(m_pDocument.get()));
    Model* copied = copy->GetPathListModel();
    QCOMPARE(copied->GetPathName(0), QString("path"));
    QCOMPARE(copied->GetPath(0), TwoSubPaths());
    QVERIFY(copied->GetPathVisible(0));
    copied->SetPath(0, {});
    QCOMPARE(m_pPaths->GetPath(0), TwoSubPaths());
    QVERIFY(!copied->index(0).data(Qt::DecorationRole).value<QImage>().isNull());
}

void TestPathsListModel::aWorkersChangeIsToldOnTheMainThread()
{
    m_pPaths->InsertPath(0, "path", TwoSubPaths());
    PathSignals told(m_pPaths);
    std::thread worker([this] {
        m_pPaths->SetPath(0, {{Line({1, 1}, {2, 2}), Model::Unite}});
        m_pPaths->SetSubPath(0, 0, Line({3, 3}, {4, 4}), true);
    });
    worker.join();
    QCOMPARE(m_pPaths->GetPath(0), (LXSubPaths{{Line({3, 3}, {4, 4}), Model::Unite}}));
    QCOMPARE(told.Take(), QStringList());
    QCoreApplication::sendPostedEvents(m_pDocument.get());
    QCOMPARE(told.Take(), (QStringList{"PathChanged", "PathChanged", "ChangesCommitted 0 0"}));
}

void TestPathsListModel::aWorkersChangeOfAPathThatWentIsHarmless()
{
    m_pPaths->InsertPath(0, "path", TwoSubPaths());
    std::thread worker([this] { m_pPaths->SetPath(0, {}); });
    worker.join();
    m_pPaths->RemovePath(0);
    PathSignals told(m_pPaths);
    QCoreApplication::sendPostedEvents(m_pDocument.get());
    QCOMPARE(told.Take(), QStringList{"PathChanged"});
}

ZK_REGISTER_TEST(tst_pathslistmodel, TestPathsListModel)
#include "tst_pathslistmodel.moc"
