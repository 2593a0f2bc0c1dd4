#pragma once

#include "ZKHostExport.h"

#include "document/LXPathElement.h"

#include <QAbstractItemModel>
#include <QPainterPath>

#include <memory>

class LXDocumentInterface;
class LXPathsListModelPrivate;

/// The paths of a document as a list of one column; the views' path selection models work on it.
///
/// A path has a name, sub paths, and a flag that asks views to show its outline even while another path is
/// the current one. `Qt::DisplayRole` and `Qt::EditRole` give the name, `Qt::DecorationRole` a thumbnail
/// (QImage), VisibleRole the flag. Points are document coordinates.
///
/// Nothing here can be undone; commands can. Getters answer an empty value and setters do nothing for a bad
/// index. Main thread, but GetPath, SetPath, GetPathName, GetSubPath, SetSubPath, GetSubPathsCount and
/// rowCount may be called by any thread: signals of a worker's change are queued to the main thread.
class ZK_HOST_EXPORT LXPathsListModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    /// How a sub path joins those before it. Not the numbers of `SelectionCommandData::LogicalOp`.
    enum LogicalOp
    {
        None = 0,      ///< its contours are laid to the others as they are
        Unite = 1,     ///< either area
        Subtract = 2,  ///< the area so far without this one
        Intersect = 3, ///< the area that both have
        Exclude = 4    ///< the area that just one of them has
    };

    enum Role
    {
        VisibleRole = Qt::UserRole ///< bool
    };

    ~LXPathsListModel() override;

    LXDocumentInterface* GetDocument() const;

    LXSubPaths GetPath(int row) const;
    /// Operations that aren't a LogicalOp count as None. Sends PathChanged().
    void SetPath(int row, const LXSubPaths& path);

    QString GetPathName(int row) const;
    void SetPathName(int row, const QString& name);
    bool GetPathVisible(int row) const;
    void SetPathVisible(int row, bool visible);

    int GetSubPathsCount(int row) const;
    /// False, with both untouched, for a bad index.
    bool GetSubPath(int row, int subPath, LXPath& elements, LogicalOp& operation) const;
    /// Sends PathChanged(); with `commit` also ChangesCommitted(): false is for the steps of a drag.
    void SetSubPath(int row, int subPath, const LXPath& elements, bool commit);

    /// Adds a path; a row beyond the last means the end. Sends PathChanged().
    void InsertPath(int row, const QString& name, const LXSubPaths& path = LXSubPaths());
    /// Sends PathChanged().
    void RemovePath(int row);
    /// The path at `from` stands at `to` afterwards.
    void MovePath(int from, int to);
    /// Adds a sub path; an index beyond the last means the end. Sends SubpathInserted() and PathChanged().
    void InsertSubPath(int row, int subPath, const LXPath& elements, int operation);
    /// Sends SubpathRemoved() and PathChanged().
    void RemoveSubPath(int row, int subPath);

    /// The area of a path: the sub paths folded by their operations from the first to the last. The first
    /// one stands for itself, unless it subtracts or intersects: then it does so with the canvas.
    QPainterPath CalcShape(const LXSubPaths& path) const;

    using QObject::parent;
    QModelIndex index(int row, int column = 0, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    /// A name can be edited: the delegate turns that into a command.
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

signals:
    /// Some path is another one.
    void PathChanged();
    void SubpathInserted(int row, int subPath);
    void SubpathRemoved(int row, int subPath);
    /// A sub path has its final form: after a drag, and at each step, undo and redo that changes one, those
    /// that change the canvas included. Sub paths that come and go are told by the two above.
    void ChangesCommitted(int row, int subPath);

private:
    friend class LXPathsListModelPrivate;
    explicit LXPathsListModel(LXDocumentInterface* document);

    std::unique_ptr<LXPathsListModelPrivate> m_pPrivate;
};
