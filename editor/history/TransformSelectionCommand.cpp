#include "history/TransformSelectionCommand.h"

#include "document/LXDocumentInterface.h"
#include "history/RenderedTransform.h"
#include "history/TransformSelectionCommandData.h"

class TransformSelectionCommandPrivate
{
public:
    LXDocumentInterface* document = nullptr;
};

TransformSelectionCommand::TransformSelectionCommand(LXDocumentInterface* document)
    : m_pPrivate(std::make_unique<TransformSelectionCommandPrivate>())
{
    m_pPrivate->document = document;
}

TransformSelectionCommand::~TransformSelectionCommand() = default;

void TransformSelectionCommand::RedoExecute(LexoCommandData* data)
{
    const auto& change = static_cast<TransformSelectionCommandData&>(*data);
    const PlacedImage rendered = RenderedTransform::OfPixels(change.GetUndoImage(), change.GetTransform(),
                                                             m_pPrivate->document->GetDocumentSize());
    m_pPrivate->document->SetSelectionMask(rendered.image, rendered.offset);
}

void TransformSelectionCommand::UndoExecute(LexoCommandData* data)
{
    const auto& change = static_cast<TransformSelectionCommandData&>(*data);
    m_pPrivate->document->SetSelectionMask(change.GetUndoImage(), change.GetUndoPosition());
}

bool TransformSelectionCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const TransformSelectionCommandData*>(data) != nullptr;
}
