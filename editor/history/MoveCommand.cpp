#include "history/MoveCommand.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LayerKind.h"
#include "document/TextRaster.h"
#include "history/MoveCommandData.h"

#include <algorithm>

namespace {
/// As far as single precision can tell.
bool IsSame(const QTransform& a, const QTransform& b)
{
    QPoint way;
    return a == b || (TextRaster::IsWholeMove(a, b, &way) && way.isNull());
}
} // namespace

class MoveCommandPrivate
{
public:
    void MoveBy(const MoveCommandData& data, const QPoint& delta) const;
    void Move(const MoveCommandData& data, const QPoint& delta, const QTransform& from,
              const QTransform& to) const;

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

/// Moves everything by the delta; the first text of the layers, if it lies as told, gets the very matrix.
void MoveCommandPrivate::Move(const MoveCommandData& data, const QPoint& delta, const QTransform& from,
                              const QTransform& to) const
{
    LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document);
    const auto isText = [this](uint id) { return document->GetLayerKind(id) == LayerKind::Text; };
    const auto first = std::find_if(data.GetLayers().begin(), data.GetLayers().end(), isText);
    const bool isMeant =
        first != data.GetLayers().end() && from != to && IsSame(insides->Text(*first).transform, from);
    MoveBy(data, delta);
    if (isMeant) insides->TransformText(*first, to, LXDocumentInterfacePrivate::Precision::Double);
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
    m_pPrivate->Move(move, move.GetDelta(), move.GetTextLayerOldTransformation(),
                     move.GetTextLayerNewTransformation());
}

void MoveCommand::UndoExecute(LexoCommandData* data)
{
    const auto& move = static_cast<MoveCommandData&>(*data);
    m_pPrivate->isApplied = false; // a step that was open has had no first redo
    m_pPrivate->Move(move, -move.GetDelta(), move.GetTextLayerNewTransformation(),
                     move.GetTextLayerOldTransformation());
}

bool MoveCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const MoveCommandData*>(data) != nullptr;
}
