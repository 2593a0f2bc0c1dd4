#include "history/TransformCommand.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "history/RenderedTransform.h"
#include "history/TransformCommandData.h"

class TransformCommandPrivate
{
public:
    bool HasTarget(const TransformCommandData& data) const;
    void KeepInitialState(TransformCommandData& data) const;
    void Put(const TransformCommandData& data, const PlacedImage& placed) const;

    LXDocumentInterface* document = nullptr;
    bool takesInitialState = false; ///< the next redo finds the layer as it was
};

/// A layer or mask with pixels of its own; letters are drawn anew and not resampled.
bool TransformCommandPrivate::HasTarget(const TransformCommandData& data) const
{
    const uint id = data.GetLayerID();
    if (id == 0) return false;
    if (data.IsMaskTarget()) return document->GetMaskImage(id) != nullptr;
    return document->GetLayerImage(id) != nullptr && document->GetLayerKind(id) != LayerKind::Text;
}

void TransformCommandPrivate::KeepInitialState(TransformCommandData& data) const
{
    const uint id = data.GetLayerID();
    const LayerState layer = LXDocumentInterfacePrivate::Get(document)->GetLayerState(id);
    if (data.IsMaskTarget()) {
        data.SetUndoLayerImage(id, layer.mask, layer.properties.maskRect.topLeft());
    } else {
        data.SetUndoLayerImage(id, layer.image, layer.properties.rect.topLeft());
    }
}

void TransformCommandPrivate::Put(const TransformCommandData& data, const PlacedImage& placed) const
{
    if (data.IsMaskTarget()) {
        document->SetMaskImage(data.GetLayerID(), placed.image, placed.offset);
    } else {
        document->SetLayerImage(data.GetLayerID(), placed.image, placed.offset);
    }
}

TransformCommand::TransformCommand(LXDocumentInterface* document, bool lacksInitialState)
    : m_pPrivate(std::make_unique<TransformCommandPrivate>())
{
    m_pPrivate->document = document;
    m_pPrivate->takesInitialState = !lacksInitialState;
}

TransformCommand::~TransformCommand() = default;

void TransformCommand::RedoExecute(LexoCommandData* data)
{
    auto& change = static_cast<TransformCommandData&>(*data);
    if (!m_pPrivate->HasTarget(change)) return;
    if (std::exchange(m_pPrivate->takesInitialState, false)) m_pPrivate->KeepInitialState(change);

    const QSize canvas = m_pPrivate->document->GetDocumentSize();
    if (change.IsMaskTarget()) {
        bool reveals = true;
        m_pPrivate->document->GetMaskInverted(change.GetLayerID(), &reveals);
        m_pPrivate->Put(
            change, RenderedTransform::OfMask(change.GetUndoImage(), reveals, change.GetTransform(), canvas));
    } else {
        m_pPrivate->Put(change,
                        RenderedTransform::OfPixels(change.GetUndoImage(), change.GetTransform(), canvas));
    }
}

void TransformCommand::UndoExecute(LexoCommandData* data)
{
    const auto& change = static_cast<TransformCommandData&>(*data);
    if (!m_pPrivate->HasTarget(change)) return;
    m_pPrivate->Put(change, {change.GetUndoImage(), change.GetUndoPosition()});
}

bool TransformCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const TransformCommandData*>(data) != nullptr;
}

void TransformCommand::DataTaken(LexoCommandData* data)
{
    auto& change = static_cast<TransformCommandData&>(*data);
    const int row = static_cast<int>(change.GetLayerID()) - 1;
    change.SetMaskTarget(m_pPrivate->document->GetModel()->GetMaskSelected(row));
}
