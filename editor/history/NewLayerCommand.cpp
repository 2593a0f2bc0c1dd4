#include "history/NewLayerCommand.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "document/TextRaster.h"
#include "history/NewLayerData_p.h"
#include "history/SelectedRows.h"

class NewLayerCommandPrivate
{
public:
    static NewLayerDataPrivate& ValuesOf(LexoCommandData* data)
    {
        return *NewLayerDataPrivate::Get(static_cast<NewLayerData*>(data));
    }

    int RowOf(const NewLayerDataPrivate& values, int count) const;
    void ReadText(NewLayerDataPrivate& values) const;
    LayerState Layer(const NewLayerDataPrivate& values) const;

    LXDocumentModel* model = nullptr;
    bool isApplied = false; ///< the next redo finds the layer in the document
    SelectedRows selected;
};

int NewLayerCommandPrivate::RowOf(const NewLayerDataPrivate& values, int count) const
{
    return qBound(0, static_cast<int>(values.id) - 1, count);
}

void NewLayerCommandPrivate::ReadText(NewLayerDataPrivate& values) const
{
    const LXDocumentInterface* document = model->GetDocument();
    if (!values.isText || document->GetLayerKind(values.id) != LayerKind::Text) return;
    values.text = LXDocumentInterfacePrivate::Get(document)->Text(values.id);
}

LayerState NewLayerCommandPrivate::Layer(const NewLayerDataPrivate& values) const
{
    const LXDocumentInterface* document = model->GetDocument();
    const QSize canvas = document->GetDocumentSize();
    LayerState layer;
    if (values.isMaskCreated) layer = LXDocumentInterfacePrivate::Get(document)->NewMask(true);
    layer.properties.name = values.name;
    layer.properties.blendMode = values.blendMode;
    layer.properties.locks = values.locks;
    layer.properties.opacity = values.opacity;
    if (values.isText) {
        const PlacedImage pixels = TextRaster::Render(values.text, canvas);
        layer.properties.kind = LayerKind::Text;
        layer.properties.text = std::make_shared<const TextContent>(values.text);
        layer.properties.rect = pixels.Rect();
        layer.image = pixels.image;
    } else {
        layer.properties.rect = QRect(QPoint(0, 0), canvas);
        layer.image = LXImage32(canvas.width(), canvas.height());
    }
    return layer;
}

NewLayerCommand::NewLayerCommand(LXDocumentModel* model, QItemSelectionModel* selection, bool applyOnPush)
    : m_pPrivate(std::make_unique<NewLayerCommandPrivate>())
{
    m_pPrivate->model = model;
    m_pPrivate->isApplied = !applyOnPush;
    m_pPrivate->selected = SelectedRows(selection);
    // For a layer that is there already: the rows that it was put among.
    m_pPrivate->selected.Remember();
}

NewLayerCommand::~NewLayerCommand() = default;

void NewLayerCommand::EndTransaction(LexoCommandData* data)
{
    if (IsExecuting() || !data) return;
    auto& values = NewLayerCommandPrivate::ValuesOf(data);
    m_pPrivate->ReadText(values);
    m_pPrivate->selected.SelectOnly(m_pPrivate->RowOf(values, m_pPrivate->model->rowCount() - 1));
}

void NewLayerCommand::RedoExecute(LexoCommandData* data)
{
    auto& values = NewLayerCommandPrivate::ValuesOf(data);
    if (std::exchange(m_pPrivate->isApplied, false)) return m_pPrivate->ReadText(values);
    m_pPrivate->selected.Remember();
    const int row = m_pPrivate->RowOf(values, m_pPrivate->model->rowCount());
    LXDocumentInterfacePrivate::Get(m_pPrivate->model->GetDocument())
        ->InsertLayer(row, m_pPrivate->Layer(values));
    m_pPrivate->selected.SelectOnly(row);
}

void NewLayerCommand::UndoExecute(LexoCommandData* data)
{
    const auto& values = NewLayerCommandPrivate::ValuesOf(data);
    // A step that was open has had no first redo.
    m_pPrivate->isApplied = false;
    const int count = m_pPrivate->model->rowCount();
    if (count == 0) return;
    LXDocumentInterfacePrivate::Get(m_pPrivate->model->GetDocument())
        ->RemoveLayer(m_pPrivate->RowOf(values, count - 1));
    m_pPrivate->selected.Restore();
}

bool NewLayerCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const NewLayerData*>(data) != nullptr;
}
