#include "history/TransformCommand.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "document/TextGeometry.h"
#include "document/TextRaster.h"
#include "history/RenderedTransform.h"
#include "history/TransformCommandData.h"

#include <QMatrix4x4>

class TransformCommandPrivate
{
public:
    bool HasTarget(const TransformCommandData& data) const;
    void KeepInitialState(TransformCommandData& data) const;
    bool IsText(const TransformCommandData& data) const;
    void TransformText(TransformCommandData& data) const;
    void PutText(const TransformCommandData& data, const QTransform& transform) const;
    void Put(const TransformCommandData& data, const PlacedImage& placed) const;

    LXDocumentInterface* document = nullptr;
    bool takesInitialState = false; ///< the next redo finds the layer as it was
};

bool TransformCommandPrivate::HasTarget(const TransformCommandData& data) const
{
    const uint id = data.GetLayerID();
    if (id == 0) return false;
    return (data.IsMaskTarget() ? document->GetMaskImage(id) : document->GetLayerImage(id)) != nullptr;
}

/// Letters are drawn anew and not resampled.
bool TransformCommandPrivate::IsText(const TransformCommandData& data) const
{
    return !data.IsMaskTarget() && document->GetLayerKind(data.GetLayerID()) == LayerKind::Text;
}

/// From where the preview took it, which tells the matrix in full precision and where the letters lie that
/// this machine's fonts draw; a tool knows the former in single precision, and the pixels that a file
/// brought.
void TransformCommandPrivate::TransformText(TransformCommandData& data) const
{
    TextContent content = LXDocumentInterfacePrivate::Get(document)->Text(data.GetLayerID());
    if (QMatrix4x4(content.transform) == QMatrix4x4(data.GetOldTransform())) {
        data.SetOldTransform(content.transform);
    } else {
        content.transform = data.GetOldTransform();
    }
    const QPoint topLeft = TextRaster::RectOf(TextGeometry(content), document->GetDocumentSize()).topLeft();
    PutText(data,
            content.transform * QTransform::fromTranslate(-topLeft.x(), -topLeft.y()) * data.GetTransform());
}

/// What a preview has drawn into the layer goes, so the letters are drawn in any case.
void TransformCommandPrivate::PutText(const TransformCommandData& data, const QTransform& transform) const
{
    LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document);
    TextContent content = insides->Text(data.GetLayerID());
    content.transform = transform;
    insides->PutText(data.GetLayerID(), content);
}

void TransformCommandPrivate::KeepInitialState(TransformCommandData& data) const
{
    const uint id = data.GetLayerID();
    const LayerState layer = LXDocumentInterfacePrivate::Get(document)->GetLayerState(id);
    if (data.IsMaskTarget()) {
        data.SetUndoLayerImage(id, layer.mask, layer.properties.maskRect.topLeft());
    } else {
        data.SetUndoLayerImage(id, layer.image, layer.properties.rect.topLeft());
        if (layer.properties.text) data.SetOldTransform(layer.properties.text->transform);
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
    if (m_pPrivate->IsText(change)) {
        m_pPrivate->TransformText(change);
        return;
    }
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
    if (m_pPrivate->IsText(change)) m_pPrivate->PutText(change, change.GetOldTransform());
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
