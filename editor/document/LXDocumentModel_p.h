#pragma once

#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"

/// The insides of the layer list: changes of the list's rows with the model's notifications around them, and
/// the properties that its setters write. Main thread.
class LXDocumentModelPrivate
{
public:
    LXDocumentModelPrivate(LXDocumentModel* model, LXDocumentInterface* document);

    static LXDocumentModelPrivate* Get(const LXDocumentModel* model);
    static LXDocumentModel* Create(LXDocumentInterface* document);

    void InsertRow(int row, std::shared_ptr<Layer> layer);
    void RemoveRow(int row);

    bool IsRow(int row) const;
    LayerProperties Properties(int row) const;
    /// Writes and tells views; nothing for a bad row.
    void Change(int row, const LayerList::Change& change, int role);
    void Notify(int row, const QVector<int>& roles);

    /// Announces that the merged picture changes where the layer lies.
    void InvalidateLayer(int row);
    QVariant LayerThumbnail(int row);
    QVariant MaskThumbnail(int row);

    LXDocumentModel* const model;
    LXDocumentInterface* const document;

    LXDocumentInterfacePrivate* Document() const { return LXDocumentInterfacePrivate::Get(document); }
};
