#pragma once

#include "ZKHostExport.h"

#include <QItemSelectionModel>

#include <memory>

class LXPathSelectionModelPrivate;
class LXPathsListModel;

/// Which paths of a document a view has selected. The current row is the current path; one of its sub paths
/// may be the current one. Main thread.
///
/// A current path that is no longer selected, because it was removed or deselected, is no longer current;
/// when undo brings a removed one back, it is current again, if no other path is. The current sub path
/// follows when sub paths before it come and go.
class ZK_HOST_EXPORT LXPathSelectionModel : public QItemSelectionModel
{
    Q_OBJECT

public:
    explicit LXPathSelectionModel(LXPathsListModel* paths, QObject* parent = nullptr);
    ~LXPathSelectionModel() override;

    /// Row of the current path; -1 without one.
    int CurrentPath() const;
    /// -1 without one.
    int CurrentSubpath() const;
    /// -1 and indices that the current path doesn't have mean none.
    void SelectSubpath(int subPath);

    using QItemSelectionModel::select;
    void select(const QItemSelection& selection, QItemSelectionModel::SelectionFlags command) override;
    void setCurrentIndex(const QModelIndex& index, QItemSelectionModel::SelectionFlags command) override;

signals:
    void CurrentSubpathChanged(int subPath);

private:
    std::unique_ptr<LXPathSelectionModelPrivate> m_pPrivate;
};
