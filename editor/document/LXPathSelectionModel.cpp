#include "document/LXPathSelectionModel.h"

#include "document/LXPathsListModel.h"

#include <QScopedValueRollback>

class LXPathSelectionModelPrivate
{
public:
    explicit LXPathSelectionModelPrivate(LXPathSelectionModel* selection) : m_pSelection(selection) {}

    void Follow(const LXPathsListModel* paths);
    void OnRowsAboutToBeRemoved(int first, int last);
    void OnRowsInserted(int first, int last);
    void OnCurrentChanged();
    void DropUnselectedCurrent();
    void SetSubpath(int subPath);

    LXPathSelectionModel* m_pSelection;
    const LXPathsListModel* m_pPaths = nullptr;
    int m_Subpath = -1;
    int m_LostRow = -1; ///< where the current path was taken away; undo may bring it back
    bool m_bRemoving = false;
    bool m_bSettingCurrent = false;
};

void LXPathSelectionModelPrivate::Follow(const LXPathsListModel* paths)
{
    m_pPaths = paths;
    using M = LXPathsListModel;
    QObject::connect(
        paths, &M::rowsAboutToBeRemoved, m_pSelection,
        [this](const QModelIndex&, int first, int last) { OnRowsAboutToBeRemoved(first, last); });
    QObject::connect(paths, &M::rowsRemoved, m_pSelection, [this] { m_bRemoving = false; });
    QObject::connect(paths, &M::rowsInserted, m_pSelection,
                     [this](const QModelIndex&, int first, int last) { OnRowsInserted(first, last); });
    QObject::connect(paths, &M::SubpathInserted, m_pSelection, [this](int row, int subPath) {
        if (row == m_pSelection->CurrentPath() && subPath <= m_Subpath) SetSubpath(m_Subpath + 1);
    });
    QObject::connect(paths, &M::SubpathRemoved, m_pSelection, [this](int row, int subPath) {
        if (row != m_pSelection->CurrentPath() || subPath > m_Subpath) return;
        SetSubpath(subPath == m_Subpath ? -1 : m_Subpath - 1);
    });
    QObject::connect(paths, &M::PathChanged, m_pSelection, [this] {
        if (m_Subpath >= m_pPaths->GetSubPathsCount(m_pSelection->CurrentPath())) SetSubpath(-1);
    });
    QObject::connect(m_pSelection, &QItemSelectionModel::currentChanged, m_pSelection,
                     [this] { OnCurrentChanged(); });
}

void LXPathSelectionModelPrivate::OnRowsAboutToBeRemoved(int first, int last)
{
    const int current = m_pSelection->CurrentPath();
    m_bRemoving = true;
    if (current < first || current > last) return;
    m_LostRow = current;
    // The base is about to make a neighbour current, whether or not it is selected.
    const QModelIndex neighbour = m_pPaths->index(first > 0 ? first - 1 : last + 1);
    if (!m_pSelection->isSelected(neighbour)) m_pSelection->clearCurrentIndex();
}

void LXPathSelectionModelPrivate::OnRowsInserted(int first, int last)
{
    const bool isBack = m_LostRow >= first && m_LostRow <= last;
    if (!isBack || m_pSelection->currentIndex().isValid()) return;
    m_pSelection->setCurrentIndex(m_pPaths->index(m_LostRow), QItemSelectionModel::ClearAndSelect);
}

void LXPathSelectionModelPrivate::OnCurrentChanged()
{
    if (!m_bRemoving) m_LostRow = -1;
    SetSubpath(-1);
}

void LXPathSelectionModelPrivate::DropUnselectedCurrent()
{
    const QModelIndex current = m_pSelection->currentIndex();
    if (current.isValid() && !m_pSelection->isSelected(current)) m_pSelection->clearCurrentIndex();
}

void LXPathSelectionModelPrivate::SetSubpath(int subPath)
{
    if (subPath == m_Subpath) return;
    m_Subpath = subPath;
    emit m_pSelection->CurrentSubpathChanged(subPath);
}

LXPathSelectionModel::LXPathSelectionModel(LXPathsListModel* paths, QObject* parent)
    : m_pPrivate(std::make_unique<LXPathSelectionModelPrivate>(this))
{
    setParent(parent);
    // Before the base hears of the model: it moves the current index when rows go.
    m_pPrivate->Follow(paths);
    setModel(paths);
}

LXPathSelectionModel::~LXPathSelectionModel() = default;

int LXPathSelectionModel::CurrentPath() const
{
    return currentIndex().row();
}

int LXPathSelectionModel::CurrentSubpath() const
{
    return m_pPrivate->m_Subpath;
}

void LXPathSelectionModel::SelectSubpath(int subPath)
{
    const bool exists = subPath >= 0 && subPath < m_pPrivate->m_pPaths->GetSubPathsCount(CurrentPath());
    m_pPrivate->SetSubpath(exists ? subPath : -1);
}

void LXPathSelectionModel::select(const QItemSelection& selection,
                                  QItemSelectionModel::SelectionFlags command)
{
    QItemSelectionModel::select(selection, command);
    if (command != NoUpdate && !m_pPrivate->m_bSettingCurrent) m_pPrivate->DropUnselectedCurrent();
}

void LXPathSelectionModel::setCurrentIndex(const QModelIndex& index,
                                           QItemSelectionModel::SelectionFlags command)
{
    {
        // The base selects first; the old current path has not been left for good.
        const QScopedValueRollback<bool> setting(m_pPrivate->m_bSettingCurrent, true);
        QItemSelectionModel::setCurrentIndex(index, command);
    }
    if (command != NoUpdate) m_pPrivate->DropUnselectedCurrent();
}
