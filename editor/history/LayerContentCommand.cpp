#include "history/LayerContentCommand.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "history/LayerStream.h"

static QDataStream& operator<<(QDataStream& stream, const LayerContentValues& values)
{
    return stream << values.isAdded << qint32(values.row) << values.layer << values.hasChanged;
}

static QDataStream& operator>>(QDataStream& stream, LayerContentValues& values)
{
    return stream >> values.isAdded >> values.row >> values.layer >> values.hasChanged;
}

qint64 LayerContentValues::GetMemoryCost() const
{
    return DataStream::BytesOf(layer.image) + DataStream::BytesOf(layer.mask);
}

void LayerContentValues::ReleaseImages()
{
    layer.image = LXImage32();
    layer.mask = LXImage32();
}

LayerContentCommand::LayerContentCommand(LXDocumentInterface* document, QItemSelectionModel* selection,
                                         const LayerContentValues& values)
    : ValueCommand(values), m_pDocument(document), m_Selected(selection)
{}

LayerContentCommand* LayerContentCommand::Removing(LXDocumentInterface* document,
                                                   QItemSelectionModel* selection, int row)
{
    return new LayerContentCommand(document, selection, {false, row, LayerState(), false});
}

LayerContentCommand* LayerContentCommand::Adding(LXDocumentInterface* document,
                                                 QItemSelectionModel* selection, int row,
                                                 const LayerState& layer)
{
    return new LayerContentCommand(document, selection, {true, row, layer, false});
}

void LayerContentCommand::Redo(LayerContentValues& values)
{
    m_Selected.Remember();
    values.hasChanged = values.isAdded ? Add(values) : Remove(values);
    if (values.hasChanged) m_Selected.SelectOnly(values.row);
}

void LayerContentCommand::Undo(LayerContentValues& values)
{
    if (!values.hasChanged) return;
    if (values.isAdded) {
        Remove(values);
    } else {
        Add(values);
    }
    m_Selected.Restore();
}

/// False for a row that isn't there.
bool LayerContentCommand::Add(const LayerContentValues& values)
{
    if (values.row < 0 || values.row > m_pDocument->GetModel()->rowCount()) return false;
    LXDocumentInterfacePrivate::Get(m_pDocument)->InsertLayer(values.row, values.layer);
    return true;
}

/// Keeps the layer as it goes, for its way back. False for a row that isn't there.
bool LayerContentCommand::Remove(LayerContentValues& values)
{
    if (values.row < 0 || values.row >= m_pDocument->GetModel()->rowCount()) return false;
    LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(m_pDocument);
    values.layer = insides->GetLayerState(static_cast<unsigned int>(values.row) + 1);
    insides->RemoveLayer(values.row);
    return true;
}
