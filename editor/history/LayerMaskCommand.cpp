#include "history/LayerMaskCommand.h"

#include "document/LXDocumentInterface_p.h"
#include "history/LayerStream.h"

namespace {
/// The mask of a layer without the layer's own pixels.
LayerState MaskOf(const LXDocumentInterface* document, unsigned int id)
{
    LayerState state = LXDocumentInterfacePrivate::Get(document)->GetLayerState(id);
    state.image = LXImage32();
    return state;
}
} // namespace

static QDataStream& operator<<(QDataStream& stream, const LayerMaskValues& values)
{
    return stream << values.id << values.before << values.after;
}

static QDataStream& operator>>(QDataStream& stream, LayerMaskValues& values)
{
    return stream >> values.id >> values.before >> values.after;
}

qint64 LayerMaskValues::GetMemoryCost() const
{
    return DataStream::BytesOf(before.mask) + DataStream::BytesOf(after.mask);
}

void LayerMaskValues::ReleaseImages()
{
    before.mask = LXImage32();
    after.mask = LXImage32();
}

LayerMaskCommand::LayerMaskCommand(LXDocumentInterface* document, const LayerMaskValues& values)
    : ValueCommand(values), m_pDocument(document)
{}

LayerMaskCommand* LayerMaskCommand::Adding(LXDocumentInterface* document, unsigned int id, bool reveals)
{
    return new LayerMaskCommand(
        document, {id, LayerState(), LXDocumentInterfacePrivate::Get(document)->NewMask(reveals)});
}

LayerMaskCommand* LayerMaskCommand::Removing(LXDocumentInterface* document, unsigned int id)
{
    return new LayerMaskCommand(document, {id, LayerState(), LayerState()});
}

void LayerMaskCommand::Redo(LayerMaskValues& values)
{
    values.before = MaskOf(m_pDocument, values.id);
    LXDocumentInterfacePrivate::Get(m_pDocument)->ReplaceMask(values.id, values.after);
}

void LayerMaskCommand::Undo(LayerMaskValues& values)
{
    LXDocumentInterfacePrivate::Get(m_pDocument)->ReplaceMask(values.id, values.before);
}
