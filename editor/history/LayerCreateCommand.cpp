#include "history/LayerCreateCommand.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "history/LayerCreateCommandData.h"
#include "history/SelectedRows.h"

class LayerCreateCommandPrivate
{
public:
    int RowOf(const LayerCreateCommandData& data) const;

    LXDocumentInterface* document = nullptr;
    bool isApplied = false; ///< the next redo finds the layer in the document
    SelectedRows selected;
};

int LayerCreateCommandPrivate::RowOf(const LayerCreateCommandData& data) const
{
    return qBound(0, data.GetRow(), document->GetModel()->rowCount());
}

LayerCreateCommand::LayerCreateCommand(LXDocumentInterface* document, bool applyOnPush)
    : m_pPrivate(std::make_unique<LayerCreateCommandPrivate>())
{
    m_pPrivate->document = document;
    m_pPrivate->isApplied = !applyOnPush;
}

LayerCreateCommand::~LayerCreateCommand() = default;

void LayerCreateCommand::RedoExecute(LexoCommandData* data)
{
    if (std::exchange(m_pPrivate->isApplied, false)) return;
    const auto& create = static_cast<LayerCreateCommandData&>(*data);
    m_pPrivate->selected = SelectedRows(create.GetSelection());
    m_pPrivate->selected.Remember();

    const QSize size = m_pPrivate->document->GetDocumentSize();
    LayerState layer;
    layer.properties.name = create.GetLayerName();
    layer.properties.blendMode = create.GetBlendMode();
    layer.properties.opacity = create.GetOpacity();
    layer.properties.rect = QRect(QPoint(0, 0), size);
    layer.image = LXImage32(size.width(), size.height());
    const int row = m_pPrivate->RowOf(create);
    LXDocumentInterfacePrivate::Get(m_pPrivate->document)->InsertLayer(row, layer);
    m_pPrivate->selected.SelectOnly(row);
}

void LayerCreateCommand::UndoExecute(LexoCommandData* data)
{
    const auto& create = static_cast<LayerCreateCommandData&>(*data);
    m_pPrivate->isApplied = false; // a step that was open has had no first redo
    const int last = m_pPrivate->document->GetModel()->rowCount() - 1;
    if (last < 0) return;
    LXDocumentInterfacePrivate::Get(m_pPrivate->document)->RemoveLayer(qBound(0, create.GetRow(), last));
    m_pPrivate->selected.Restore();
}

bool LayerCreateCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const LayerCreateCommandData*>(data) != nullptr;
}
