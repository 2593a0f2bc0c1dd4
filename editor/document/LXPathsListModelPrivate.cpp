#include "document/LXDocumentInterface_p.h"
#include "document/LXPathsListModel_p.h"
#include "document/PathShape.h"

namespace {
template <class Element>
void MoveElement(std::vector<Element>& list, int from, int to)
{
    if (from < to) {
        std::rotate(list.begin() + from, list.begin() + from + 1, list.begin() + to + 1);
    } else {
        std::rotate(list.begin() + to, list.begin() + from, list.begin() + from + 1);
    }
}
} // namespace

LXPathsListModelPrivate::LXPathsListModelPrivate(LXPathsListModel* owner, LXDocumentInterface* ofDocument)
    : model(owner), document(ofDocument)
{}

LXPathsListModelPrivate* LXPathsListModelPrivate::Get(const LXPathsListModel* model)
{
    return model->m_pPrivate.get();
}

LXPathsListModel* LXPathsListModelPrivate::Create(LXDocumentInterface* document)
{
    return new LXPathsListModel(document);
}

std::vector<LXPathsListModelPrivate::Path> LXPathsListModelPrivate::Snapshot() const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return m_Paths;
}

void LXPathsListModelPrivate::Fill(const std::vector<Path>& paths)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_Paths = paths;
    m_Thumbnails.assign(paths.size(), QImage());
}

bool LXPathsListModelPrivate::IsRow(int row) const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return row >= 0 && row < static_cast<int>(m_Paths.size());
}

LXPathsListModelPrivate::Path LXPathsListModelPrivate::Row(int row) const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    const bool exists = row >= 0 && row < static_cast<int>(m_Paths.size());
    return exists ? m_Paths[static_cast<size_t>(row)] : Path();
}

bool LXPathsListModelPrivate::Change(int row, const std::function<void(Path&)>& change)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    if (row < 0 || row >= static_cast<int>(m_Paths.size())) return false;
    Path& path = m_Paths[static_cast<size_t>(row)];
    // Done to a copy, which detaches: a list that a reader just let go looks unshared without saying that its
    // reads are over.
    Path changed = path;
    change(changed);
    path = std::move(changed);
    return true;
}

void LXPathsListModelPrivate::TellPointsChanged(int row)
{
    LXDocumentInterfacePrivate::Get(document)->OnMainThread([this, row] {
        // A worker's path may have gone on the way.
        if (IsRow(row)) {
            m_Thumbnails[static_cast<size_t>(row)] = QImage();
            Notify(row, {Qt::DecorationRole});
        }
        emit model->PathChanged();
    });
}

void LXPathsListModelPrivate::Notify(int row, const QVector<int>& roles)
{
    const QModelIndex changed = model->index(row);
    emit model->dataChanged(changed, changed, roles);
}

void LXPathsListModelPrivate::DropThumbnails()
{
    for (size_t row = 0; row < m_Thumbnails.size(); ++row) {
        m_Thumbnails[row] = QImage();
        Notify(static_cast<int>(row), {Qt::DecorationRole});
    }
}

QVariant LXPathsListModelPrivate::GetThumbnail(int row)
{
    QImage& thumbnail = m_Thumbnails[static_cast<size_t>(row)];
    if (thumbnail.isNull())
        thumbnail = PathShape::MakeThumbnail(Row(row).subPaths, document->GetDocumentSize());
    return thumbnail;
}

void LXPathsListModelPrivate::Insert(int row, const Path& path)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_Paths.insert(m_Paths.begin() + row, path);
    m_Thumbnails.insert(m_Thumbnails.begin() + row, QImage());
}

void LXPathsListModelPrivate::Remove(int row)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_Paths.erase(m_Paths.begin() + row);
    m_Thumbnails.erase(m_Thumbnails.begin() + row);
}

void LXPathsListModelPrivate::Move(int from, int to)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    MoveElement(m_Paths, from, to);
    MoveElement(m_Thumbnails, from, to);
}
