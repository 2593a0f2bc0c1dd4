#include "history/MoveCommand.h"

#include "document/LXDocumentInterface.h"
#include "history/MoveCommandData.h"

class MoveCommandPrivate
{
public:
    void MoveBy(const MoveCommandData& data, const QPoint& delta) const;

    LXDocumentInterface* document = nullptr;
    bool isApplied = false; ///< the next redo finds everything in its place
};

void MoveCommandPrivate::MoveBy(const MoveCommandData& data, const QPoint& delta) const
{
    QList<uint> ids = data.GetLayers();
    for (const uint id : data.GetMasks()) {
        if (!ids.contains(id)) ids << id;
    }
    for (const uint id : qAsConst(ids)) {
        const QPoint layerDelta = data.GetLayers().contains(id) ? delta : QPoint();
        const QPoint maskDelta = data.GetMasks().contains(id) ? delta : QPoint();
        document->SetLayerMaskOffset(id, document->GetLayerGeometry(id).topLeft() + layerDelta,
                                     document->GetMaskGeometry(id).topLeft() + maskDelta);
    }
    if (!delta.isNull()) document->TranslateSelection(delta);
}

MoveCommand::MoveCommand(LXDocumentInterface* document, bool applyOnPush)
    : m_pPrivate(std::make_unique<MoveCommandPrivate>())
{
    m_pPrivate->document = document;
    m_pPrivate->isApplied = !applyOnPush;
}

MoveCommand::~MoveCommand() = default;

void MoveCommand::RedoExecute(LexoCommandData* data)
{
    if (std::exchange(m_pPrivate->isApplied, false)) return;
    const auto& move = static_cast<MoveCommandData&>(*data);
    m_pPrivate->MoveBy(move, move.GetDelta());
}

void MoveCommand::UndoExecute(LexoCommandData* data)
{
    const auto& move = static_cast<MoveCommandData&>(*data);
    m_pPrivate->MoveBy(move, -move.GetDelta());
}

bool MoveCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const MoveCommandData*>(data) != nullptr;
}
