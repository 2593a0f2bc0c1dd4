#pragma once

#include "document/DocumentPath.h"
#include "document/LXPathsListModel.h"

#include <QImage>

#include <functional>
#include <mutex>
#include <vector>

/// The insides of the list of paths. The mutex guards the rows, so that workers may read and write points;
/// rows come and go on the main thread only. Nothing else is locked, and nothing sent, under it.
class LXPathsListModelPrivate
{
public:
    using Path = DocumentPath;

    LXPathsListModelPrivate(LXPathsListModel* model, LXDocumentInterface* document);

    static LXPathsListModelPrivate* Get(const LXPathsListModel* model);
    static LXPathsListModel* Create(LXDocumentInterface* document);

    /// All paths of one moment. Any thread.
    std::vector<Path> Snapshot() const;
    /// Fills the empty list of a new document; sends nothing.
    void Fill(const std::vector<Path>& paths);

    bool IsRow(int row) const;
    /// An empty one for a bad row. Any thread.
    Path Row(int row) const;
    /// False for a bad row; the change isn't called then. Any thread.
    bool Change(int row, const std::function<void(Path&)>& change);

    /// The points of a path are other ones: thumbnail, dataChanged, PathChanged. Any thread.
    void TellPointsChanged(int row);
    void Notify(int row, const QVector<int>& roles);
    void DropThumbnails();
    QVariant GetThumbnail(int row);

    LXPathsListModel* const model;
    LXDocumentInterface* const document;

    /// A path comes in, goes, or changes its place, with the list locked.
    void Insert(int row, const Path& path);
    void Remove(int row);
    void Move(int from, int to);

private:
    mutable std::mutex m_Mutex;
    std::vector<Path> m_Paths;
    std::vector<QImage> m_Thumbnails; ///< main thread; null until asked for
};
