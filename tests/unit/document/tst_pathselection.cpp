#include "document/LXPathSelectionModel.h"
#include "document/LXPathsListModel.h"
#include "support/DocumentFixture.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QTest>

using namespace DocumentFixture;
using namespace PathFixture;

/// Which paths a view has selected, and the current sub path.
class TestPathSelection : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nothingIsSelectedAtFirst();
    void currentPathIsTheCurrentRow();
    void subPathIsOneOfTheCurrentPath();
    void anotherPathHasNoCurrentSubPath();
    void currentSubPathFollowsItsNeighbours();
    void currentSubPathGoesWithThePathsPoints();
    void clearLeavesNoCurrentPath();
    void deselectedPathIsNoLongerCurrent();
    void choosingAnotherPathIsToldOnce();
    void movedPathStaysCurrent();
    void removedPathIsNoLongerCurrent();
    void removedPathIsLeftInOneStepWhileItIsThere();
    void selectedNeighbourOfARemovedPathIsCurrent();
    void pathThatUndoBringsBackIsCurrentAgain();
    void pathThatComesBackDoesNotTakeTheTurnOfAnother();
    void pathThatWasLeftBeforeItWentStaysLeft();

private:
    void Choose(int row, QItemSelectionModel::SelectionFlags how = QItemSelectionModel::ClearAndSelect)
    {
        m_pSelection->setCurrentIndex(m_pPaths->index(row), how);
    }

    OwnedDocument m_pDocument;
    LXPathsListModel* m_pPaths = nullptr;
    std::unique_ptr<LXPathSelectionModel> m_pSelection;
};

/// Paths "a", "b", "c" of three sub paths each.
void TestPathSelection::init()
{
    m_pDocument = Make(QSize(60, 40));
    m_pPaths = m_pDocument->GetPathListModel();
    LXSubPaths path;
    for (int i = 0; i < 3; ++i)
        path.append({Rectangle(QRectF(i, i, 5, 5)), LXPathsListModel::Unite});
    for (const char* name : {"c", "b", "a"})
        m_pPaths->InsertPath(0, name, path);
    m_pSelection = std::make_unique<LXPathSelectionModel>(m_pPaths);
}

void TestPathSelection::cleanup()
{
    m_pSelection.reset();
    m_pDocument.reset();
}

void TestPathSelection::nothingIsSelectedAtFirst()
{
    QCOMPARE(m_pSelection->CurrentPath(), -1);
    QCOMPARE(m_pSelection->CurrentSubpath(), -1);
    QVERIFY(!m_pSelection->hasSelection());
    QCOMPARE(m_pSelection->model(), m_pPaths);
}

void TestPathSelection::currentPathIsTheCurrentRow()
{
    m_pSelection->setCurrentIndex(m_pPaths->index(2), QItemSelectionModel::Select |
                                                          QItemSelectionModel::Current |
                                                          QItemSelectionModel::Rows);
    QCOMPARE(m_pSelection->CurrentPath(), 2);
    QCOMPARE(m_pSelection->selectedRows().size(), 1);
}

void TestPathSelection::subPathIsOneOfTheCurrentPath()
{
    QSignalSpy told(m_pSelection.get(), &LXPathSelectionModel::CurrentSubpathChanged);
    m_pSelection->SelectSubpath(0);
    QCOMPARE(m_pSelection->CurrentSubpath(), -1);
    Choose(1);
    m_pSelection->SelectSubpath(2);
    QCOMPARE(m_pSelection->CurrentSubpath(), 2);
    m_pSelection->SelectSubpath(3);
    QCOMPARE(m_pSelection->CurrentSubpath(), -1);
    QCOMPARE(told.count(), 2);
}

void TestPathSelection::anotherPathHasNoCurrentSubPath()
{
    Choose(1);
    m_pSelection->SelectSubpath(2);
    Choose(0);
    QCOMPARE(m_pSelection->CurrentSubpath(), -1);
}

void TestPathSelection::currentSubPathFollowsItsNeighbours()
{
    Choose(1);
    m_pSelection->SelectSubpath(1);
    m_pPaths->InsertSubPath(1, 2, {}, 0);
    m_pPaths->InsertSubPath(0, 0, {}, 0);
    QCOMPARE(m_pSelection->CurrentSubpath(), 1);
    m_pPaths->InsertSubPath(1, 1, {}, 0);
    QCOMPARE(m_pSelection->CurrentSubpath(), 2);
    m_pPaths->RemoveSubPath(1, 0);
    QCOMPARE(m_pSelection->CurrentSubpath(), 1);
    m_pPaths->RemoveSubPath(1, 3);
    m_pPaths->RemoveSubPath(0, 0);
    QCOMPARE(m_pSelection->CurrentSubpath(), 1);
    m_pPaths->RemoveSubPath(1, 1);
    QCOMPARE(m_pSelection->CurrentSubpath(), -1);
}

void TestPathSelection::currentSubPathGoesWithThePathsPoints()
{
    Choose(1);
    m_pSelection->SelectSubpath(2);
    m_pPaths->SetPath(1, {{Rectangle(QRectF(0, 0, 5, 5)), 0}});
    QCOMPARE(m_pSelection->CurrentSubpath(), -1);
}

void TestPathSelection::clearLeavesNoCurrentPath()
{
    Choose(1);
    m_pSelection->SelectSubpath(1);
    m_pSelection->clear();
    QCOMPARE(m_pSelection->CurrentPath(), -1);
    QCOMPARE(m_pSelection->CurrentSubpath(), -1);
}

void TestPathSelection::deselectedPathIsNoLongerCurrent()
{
    Choose(1);
    m_pSelection->select(QItemSelection(), QItemSelectionModel::Clear);
    QCOMPARE(m_pSelection->CurrentPath(), -1);
    Choose(1);
    Choose(1, QItemSelectionModel::Toggle);
    QCOMPARE(m_pSelection->CurrentPath(), -1);
}

void TestPathSelection::choosingAnotherPathIsToldOnce()
{
    Choose(1);
    QSignalSpy told(m_pSelection.get(), &QItemSelectionModel::currentChanged);
    Choose(2);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.first().at(1).toModelIndex().row(), 1);
}

void TestPathSelection::movedPathStaysCurrent()
{
    Choose(0);
    m_pSelection->SelectSubpath(1);
    m_pPaths->MovePath(0, 2);
    QCOMPARE(m_pSelection->CurrentPath(), 2);
    QCOMPARE(m_pSelection->CurrentSubpath(), 1);
}

void TestPathSelection::removedPathIsNoLongerCurrent()
{
    Choose(1);
    m_pPaths->RemovePath(0);
    QCOMPARE(m_pSelection->CurrentPath(), 0);
    m_pPaths->RemovePath(0);
    QCOMPARE(m_pSelection->CurrentPath(), -1);
    QVERIFY(!m_pSelection->hasSelection());
}

/// Who works on the path can still write to it.
void TestPathSelection::removedPathIsLeftInOneStepWhileItIsThere()
{
    Choose(1);
    QStringList told;
    connect(m_pSelection.get(), &QItemSelectionModel::currentChanged,
            [&](const QModelIndex& current, const QModelIndex& before) {
                told << QString("%1 %2").arg(current.row()).arg(before.data().toString());
            });
    m_pPaths->RemovePath(1);
    QCOMPARE(told, QStringList{"-1 b"});
}

void TestPathSelection::selectedNeighbourOfARemovedPathIsCurrent()
{
    Choose(0);
    Choose(1, QItemSelectionModel::Select);
    m_pPaths->RemovePath(1);
    QCOMPARE(m_pSelection->CurrentPath(), 0);
    QVERIFY(m_pSelection->isSelected(m_pPaths->index(0)));
}

void TestPathSelection::pathThatUndoBringsBackIsCurrentAgain()
{
    Choose(1);
    m_pPaths->RemovePath(1);
    m_pPaths->InsertPath(1, "b");
    QCOMPARE(m_pSelection->CurrentPath(), 1);
    QVERIFY(m_pSelection->isSelected(m_pPaths->index(1)));
}

void TestPathSelection::pathThatComesBackDoesNotTakeTheTurnOfAnother()
{
    Choose(1);
    m_pPaths->RemovePath(1);
    Choose(0);
    m_pPaths->InsertPath(1, "b");
    QCOMPARE(m_pSelection->CurrentPath(), 0);
}

void TestPathSelection::pathThatWasLeftBeforeItWentStaysLeft()
{
    Choose(1);
    m_pSelection->clear();
    m_pPaths->RemovePath(1);
    m_pPaths->InsertPath(1, "b");
    QCOMPARE(m_pSelection->CurrentPath(), -1);
}

ZK_REGISTER_TEST(tst_pathselection, TestPathSelection)
#include "tst_pathselection.moc"
