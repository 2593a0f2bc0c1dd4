#include "document/LXDocumentModel_p.h"
#include "document/Thumbnail.h"

namespace {
/// A list that is painted can neither be refused nor hear of it: pixels that can't be read now are looked at
/// again when the row is painted the next time.
template <class Make>
QImage OrNull(const Make& make)
{
    try {
        return make();
    } catch (...) {
        return QImage();
    }
}
} // namespace

LXDocumentModelPrivate::LXDocumentModelPrivate(LXDocumentModel* owner, LXDocumentInterface* ofDocument)
    : model(owner), document(ofDocument)
{}

LXDocumentModelPrivate* LXDocumentModelPrivate::Get(const LXDocumentModel* model)
{
    return model->m_pPrivate.get();
}

LXDocumentModel* LXDocumentModelPrivate::Create(LXDocumentInterface* document)
{
    return new LXDocumentModel(document);
}

void LXDocumentModelPrivate::InsertRow(int row, std::shared_ptr<Layer> layer)
{
    model->beginInsertRows(QModelIndex(), row, row);
    Document()->layers.Insert(row, std::move(layer));
    model->endInsertRows();
}

void LXDocumentModelPrivate::RemoveRow(int row)
{
    model->beginRemoveRows(QModelIndex(), row, row);
    Document()->layers.Remove(row);
    model->endRemoveRows();
}

bool LXDocumentModelPrivate::IsRow(int row) const
{
    return row >= 0 && row < Document()->layers.Count();
}

LayerProperties LXDocumentModelPrivate::Properties(int row) const
{
    return row >= 0 ? Document()->layers.Properties(static_cast<unsigned int>(row) + 1) : LayerProperties();
}

void LXDocumentModelPrivate::Change(int row, const LayerList::Change& change, int role)
{
    if (!IsRow(row)) return;
    Document()->layers.ChangeProperties(static_cast<unsigned int>(row) + 1, change);
    Notify(row, {role});
}

void LXDocumentModelPrivate::Notify(int row, const QVector<int>& roles)
{
    const QModelIndex changed = model->index(row);
    emit model->dataChanged(changed, changed, roles);
}

void LXDocumentModelPrivate::InvalidateLayer(int row)
{
    Document()->Invalidate(Document()->Extent(static_cast<unsigned int>(row) + 1));
}

QVariant LXDocumentModelPrivate::LayerThumbnail(int row)
{
    const std::shared_ptr<Layer> layer = Document()->layers.Find(static_cast<unsigned int>(row) + 1);
    if (layer->thumbnail.isNull()) {
        const PixelReadScope scope(*Document()->locks, layer->key);
        layer->thumbnail = OrNull([&] {
            return Thumbnail::OfLayer(layer->image, Properties(row).rect.topLeft(),
                                      document->GetDocumentSize());
        });
    }
    return layer->thumbnail;
}

QVariant LXDocumentModelPrivate::MaskThumbnail(int row)
{
    const LayerProperties properties = Properties(row);
    if (!properties.hasMask) return QVariant();

    const std::shared_ptr<Layer> layer = Document()->layers.Find(static_cast<unsigned int>(row) + 1);
    if (layer->maskThumbnail.isNull()) {
        const PixelReadScope scope(*Document()->locks, layer->key);
        layer->maskThumbnail = OrNull([&] {
            return Thumbnail::OfMask(layer->mask, properties.maskRect.topLeft(), properties.maskReveals,
                                     document->GetDocumentSize());
        });
    }
    return layer->maskThumbnail;
}
