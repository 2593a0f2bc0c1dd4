#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class LexoCommand;
class LXPathSelectionModel;
class LXPathsListModel;
class ZKDocumentView;

/// What the panel of paths does to the document of a view: each change is one step of its history. Nothing
/// happens while the document is locked, and paths keep their order and number while the view says so. Main
/// thread only.
class PathOperations : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Null: nothing can be done.
    void SetView(ZKDocumentView* view);

    LXPathsListModel* GetModel() const;
    LXPathSelectionModel* GetSelection() const;

    /// What keeps the person from choosing other paths, in words; empty for nothing.
    QString GetChoiceObstacle() const;
    bool CanAdd() const;
    bool CanDelete() const;
    /// Only while exactly one path is selected.
    /// @param by  rows, -1 being up
    bool CanMove(int by) const;

    /// The new path stands behind the last and is the current one.
    void Add();
    /// The selected ones, in one step.
    void Delete();
    void Move(int by);
    void SetVisible(int row, bool visible);
    void Rename(int row, const QString& name);

signals:
    /// What may be done to the paths may have changed.
    void Changed();
    /// A tool has begun or ended its work on the document, which decides about all of it.
    void LockChanged();

private:
    bool MayWork() const;
    bool MayReorder() const;
    QList<int> SelectedRows() const;
    /// False when it can't be done, of which the person has been told.
    bool Push(const std::function<LexoCommand*()>& make) const;
    QString NewName() const;

    QPointer<ZKDocumentView> m_pView;
};
