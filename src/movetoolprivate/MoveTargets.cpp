#include "movetoolprivate/MoveTargets.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "history/MoveCommand.h"
#include "history/MoveCommandData.h"

#include <QMatrix4x4>

namespace {
template <class Place>
QList<uint> IdsOf(const QMap<unsigned int, Place>& places)
{
    QList<uint> ids;
    for (auto place = places.begin(); place != places.end(); ++place) {
        ids.append(place.key() + 1);
    }
    return ids;
}
} // namespace

void MoveTargets::Clear()
{
    *this = MoveTargets();
}

void MoveTargets::Collect(const LXDocumentModel& model, const QList<int>& rows)
{
    for (const int row : rows) {
        if (model.GetLockFlags(row) & LayerLocks::AgainstMove) {
            m_Masks.clear();
            return;
        }
        const bool isLinked = model.HasMask(row) && model.GetMaskLinked(row);
        const bool isMask = model.GetMaskSelected(row);
        if (isMask || isLinked) AddMask(model, row);
        if (!isMask || isLinked) AddLayer(model, row);
    }
}

void MoveTargets::AddLayer(const LXDocumentModel& model, int row)
{
    const unsigned int key = static_cast<unsigned int>(row);
    m_Layers.insert(key, {model.GetLayerOffset(row), model.GetTextLayerTransformation(row)});
    m_Rect |= model.GetDocument()->GetLayerGeometry(key + 1);
}

void MoveTargets::AddMask(const LXDocumentModel& model, int row)
{
    const unsigned int key = static_cast<unsigned int>(row);
    m_Masks.insert(key, model.GetMaskOffset(row));
    m_Rect |= model.GetDocument()->GetMaskGeometry(key + 1);
}

QList<uint> MoveTargets::LayerIds() const
{
    return IdsOf(m_Layers);
}

void MoveTargets::MoveBy(LXDocumentInterface* document, const QPoint& delta) const
{
    for (auto layer = m_Layers.begin(); layer != m_Layers.end(); ++layer) {
        const unsigned int id = layer.key() + 1;
        const QPoint offset = layer->offset + delta;
        const auto mask = m_Masks.find(layer.key());
        if (mask != m_Masks.end()) {
            document->SetLayerMaskOffset(id, offset, mask.value() + delta);
        } else {
            document->SetLayerOffset(id, offset);
        }
        if (document->GetLayerKind(id) == LayerKind::Text) {
            document->SetTextLayerTransformation(
                id, QMatrix4x4(layer->text * QTransform::fromTranslate(delta.x(), delta.y())));
        }
    }
    for (auto mask = m_Masks.begin(); mask != m_Masks.end(); ++mask) {
        if (!m_Layers.contains(mask.key())) document->SetMaskOffset(mask.key() + 1, mask.value() + delta);
    }
}

std::unique_ptr<LexoCommand> MoveTargets::MakeCommand(LXDocumentInterface* document,
                                                      const QPoint& delta) const
{
    constexpr bool applyOnPush = false;
    auto data = std::make_unique<MoveCommandData>();
    data->SetDelta(delta);
    data->SetLayers(LayerIds());
    data->SetMasks(IdsOf(m_Masks));
    if (!m_Layers.isEmpty()) {
        const int row = static_cast<int>(m_Layers.firstKey());
        data->SetTextLayerOldTransformation(m_Layers.first().text);
        data->SetTextLayerNewTransformation(document->GetModel()->GetTextLayerTransformation(row));
    }
    auto command = std::make_unique<MoveCommand>(document, applyOnPush);
    // Owned by the command from then on.
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    return command;
}
