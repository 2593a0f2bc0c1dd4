#include "history/CanvasState.h"

#include "document/LXColorSampleModel.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "document/LXPathsListModel.h"
#include "document/SelectionChannels.h"
#include "history/DataStream.h"
#include "history/GuideStream.h"
#include "history/PathStream.h"
#include "history/TextStream.h"

#include <algorithm>

namespace {
CanvasState::LayerPixels PixelsOf(const LayerState& layer)
{
    CanvasState::LayerPixels pixels;
    pixels.pixels = {layer.image, layer.properties.rect.topLeft()};
    pixels.kind = layer.properties.kind;
    pixels.text = layer.properties.text;
    pixels.hasMask = layer.properties.hasMask;
    pixels.maskReveals = layer.properties.maskReveals;
    if (layer.properties.hasMask) pixels.mask = {layer.mask, layer.properties.maskRect.topLeft()};
    return pixels;
}

/// What a view or a panel keeps of a layer is stale. The canvas is told of as a whole.
void TellLayerChanged(LXDocumentInterface* document, unsigned int id, const LayerProperties& before,
                      const LayerProperties& after)
{
    LXDocumentModel* model = document->GetModel();
    if (before.rect.topLeft() != after.rect.topLeft()) {
        emit model->LayerPositionChanged(id, after.rect.topLeft());
    }
    if (before.maskRect.topLeft() != after.maskRect.topLeft()) {
        emit model->MaskPositionChanged(id, after.maskRect.topLeft());
    }
    LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document);
    insides->LayerPixelsChanged(id, QRect());
    if (after.hasMask) insides->MaskPixelsChanged(id, QRect());
}

void PutPaths(const std::vector<LXSubPaths>& paths, LXPathsListModel* model)
{
    for (int row = 0; row < std::min(model->rowCount(), static_cast<int>(paths.size())); ++row) {
        const LXSubPaths& path = paths[static_cast<std::size_t>(row)];
        const LXSubPaths before = model->GetPath(row);
        model->SetPath(row, path);
        // Whoever edits one of them looks at it anew.
        for (int i = 0; i < path.size(); ++i) {
            if (path[i] != before.value(i)) emit model->ChangesCommitted(row, i);
        }
    }
}

void PutSamples(const std::vector<QPoint>& samples, LXColorSampleModel* model)
{
    for (int row = 0; row < std::min(model->rowCount(), static_cast<int>(samples.size())); ++row) {
        model->SetPoint(row, samples[static_cast<std::size_t>(row)]);
    }
}

void PutChannels(const std::vector<PlacedImage>& channels, SelectionChannels* target)
{
    SelectionChannels::List list = target->All();
    if (list.isEmpty()) return;
    for (int row = 0; row < std::min(list.size(), static_cast<int>(channels.size())); ++row) {
        list[row].coverage = channels[static_cast<std::size_t>(row)];
    }
    target->Set(list);
}

/// A list whose length is read before it; false when the stream is damaged.
template <class Take>
void ReadList(QDataStream& stream, Take take)
{
    quint32 length = 0;
    stream >> length;
    while (length-- > 0 && stream.status() == QDataStream::Ok) {
        take();
    }
}
} // namespace

CanvasState CanvasState::Of(LXDocumentInterface* document)
{
    const LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document);
    CanvasState state;
    state.size = document->GetDocumentSize();
    for (int row = 0; row < document->GetModel()->rowCount(); ++row) {
        state.layers.push_back(PixelsOf(insides->GetLayerState(static_cast<unsigned int>(row) + 1)));
    }
    state.selection.image = insides->selection.Snapshot(&state.selection.offset);
    for (int row = 0; row < document->GetPathListModel()->rowCount(); ++row) {
        state.paths.push_back(document->GetPathListModel()->GetPath(row));
    }
    for (int row = 0; row < document->GetColorSamples()->rowCount(); ++row) {
        state.samples.push_back(document->GetColorSamples()->GetPoint(row));
    }
    state.guides = document->GetGuides();
    for (const SelectionChannel& channel : insides->channels->All()) {
        state.channels.push_back(channel.coverage);
    }
    return state;
}

void CanvasState::ApplyTo(LXDocumentInterface* document) const
{
    LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document);
    const auto count = static_cast<unsigned int>(
        std::min(document->GetModel()->rowCount(), static_cast<int>(layers.size())));
    std::vector<LayerProperties> before;
    for (unsigned int id = 1; id <= count; ++id) {
        before.push_back(insides->layers.Properties(id));
        const LayerPixels& layer = layers[id - 1];
        insides->PutLayerImage(id, layer.pixels.image, layer.pixels.offset);
        insides->layers.ChangeProperties(
            id, [&layer](LayerProperties& properties) { properties.text = layer.text; });
        if (layer.hasMask) insides->PutMaskImage(id, layer.mask.image, layer.mask.offset);
    }
    const bool isOtherSize = size != document->GetDocumentSize();
    document->SetDocumentSize(size);
    document->SetSelectionMask(selection.image, selection.offset);
    for (unsigned int id = 1; id <= count; ++id) {
        TellLayerChanged(document, id, before[id - 1], insides->layers.Properties(id));
    }
    PutPaths(paths, document->GetPathListModel());
    document->SetGuides(guides);
    PutChannels(channels, insides->channels);
    if (!isOtherSize) document->UpdateDocumentRect(QRect());
    PutSamples(samples, document->GetColorSamples());
}

qint64 CanvasState::GetMemoryCost() const
{
    qint64 bytes = DataStream::BytesOf(selection.image);
    for (const LayerPixels& layer : layers) {
        bytes += DataStream::BytesOf(layer.pixels.image) + DataStream::BytesOf(layer.mask.image);
    }
    for (const PlacedImage& channel : channels) {
        bytes += DataStream::BytesOf(channel.image);
    }
    return bytes;
}

void CanvasState::ReleaseImages()
{
    selection.image = LXImage32();
    for (LayerPixels& layer : layers) {
        layer.pixels.image = LXImage32();
        layer.mask.image = LXImage32();
    }
    for (PlacedImage& channel : channels) {
        channel.image = LXImage32();
    }
}

static QDataStream& operator<<(QDataStream& stream, const PlacedImage& placed)
{
    stream << placed.offset;
    DataStream::WriteImage(stream, placed.image);
    return stream;
}

static QDataStream& operator>>(QDataStream& stream, PlacedImage& placed)
{
    stream >> placed.offset;
    placed.image = DataStream::ReadImage(stream);
    return stream;
}

QDataStream& operator<<(QDataStream& stream, const CanvasState& state)
{
    stream << state.size << quint32(state.layers.size());
    for (const CanvasState::LayerPixels& layer : state.layers) {
        stream << layer.pixels << qint32(layer.kind) << layer.hasMask << layer.maskReveals << layer.mask;
        TextStream::Write(stream, layer.text);
    }
    stream << state.selection << quint32(state.paths.size());
    for (const LXSubPaths& path : state.paths) {
        PathStream::WriteSubPaths(stream, path);
    }
    stream << quint32(state.samples.size());
    for (const QPoint& point : state.samples) {
        stream << point;
    }
    GuideStream::Write(stream, state.guides);
    stream << quint32(state.channels.size());
    for (const PlacedImage& channel : state.channels) {
        stream << channel;
    }
    return stream;
}

QDataStream& operator>>(QDataStream& stream, CanvasState& state)
{
    state = CanvasState();
    stream >> state.size;
    ReadList(stream, [&] {
        CanvasState::LayerPixels layer;
        qint32 kind = 0;
        stream >> layer.pixels >> kind >> layer.hasMask >> layer.maskReveals >> layer.mask;
        layer.kind = kind;
        layer.text = TextStream::Read(stream);
        state.layers.push_back(layer);
    });
    stream >> state.selection;
    ReadList(stream, [&] { state.paths.push_back(PathStream::ReadSubPaths(stream)); });
    ReadList(stream, [&] {
        QPoint point;
        stream >> point;
        state.samples.push_back(point);
    });
    state.guides = GuideStream::Read(stream);
    ReadList(stream, [&] {
        PlacedImage channel;
        stream >> channel;
        state.channels.push_back(channel);
    });
    return stream;
}
