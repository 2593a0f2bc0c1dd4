#include "history/LayerColors.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "document/TextRaster.h"
#include "history/DataStream.h"
#include "history/TextStream.h"
#include "image/BrushColors.h"

#include <algorithm>

namespace {
LayerColors::Layer ConvertedLayer(const LayerColors::Layer& layer, const QSize& canvas,
                                  const ZKCMSTransform& transform, const ZKCMSProfile& target)
{
    LayerColors::Layer converted = layer;
    if (layer.text) {
        auto text = std::make_shared<TextContent>(*layer.text);
        text->brush = BrushColors::Converted(text->brush, transform);
        converted.text = text;
        converted.pixels = TextRaster::Render(*text, canvas);
    } else {
        transform(converted.pixels.image);
    }
    converted.pixels.image.m_Profile = target;
    return converted;
}
} // namespace

LayerColors LayerColors::Of(LXDocumentInterface* document)
{
    const LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document);
    LayerColors colors;
    colors.profile = document->GetICCProfile();
    colors.canvas = document->GetDocumentSize();
    for (int row = 0; row < document->GetModel()->rowCount(); ++row) {
        const LayerState layer = insides->GetLayerState(static_cast<unsigned int>(row) + 1);
        colors.layers.push_back({{layer.image, layer.properties.rect.topLeft()}, layer.properties.text});
    }
    return colors;
}

void LayerColors::ApplyTo(LXDocumentInterface* document) const
{
    LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document);
    LXDocumentModel* model = document->GetModel();
    const auto count =
        static_cast<unsigned int>(std::min(model->rowCount(), static_cast<int>(layers.size())));
    // Between the two no view draws the colors of one profile by the other.
    document->StopComposition();
    for (unsigned int id = 1; id <= count; ++id) {
        const Layer& layer = layers[id - 1];
        if (document->GetLayerKind(id) == LayerKind::Adjustment) continue;
        insides->PutLayerImage(id, layer.pixels.image, layer.pixels.offset);
        insides->layers.ChangeProperties(
            id, [&layer](LayerProperties& properties) { properties.text = layer.text; });
        insides->LayerPixelsChanged(id, QRect());
        if (layer.text) emit model->LayerBrushChanged(id);
    }
    document->SetICCProfile(profile);
    document->UpdateDocumentRect(QRect());
    document->ResumeComposition();
}

LayerColors LayerColors::Converted(const ZKCMSProfile& target, const ZKCMSRendering& rendering,
                                   const std::function<void(int)>& setPermille) const
{
    const ZKCMSTransform transform(profile.IsValid() ? profile : ZKCMSProfile(), target, rendering);
    LayerColors converted;
    converted.profile = target;
    converted.canvas = canvas;
    for (const Layer& layer : layers) {
        converted.layers.push_back(ConvertedLayer(layer, canvas, transform, target));
        if (setPermille) setPermille(static_cast<int>(1000 * converted.layers.size() / layers.size()));
    }
    return converted;
}

qint64 LayerColors::GetMemoryCost() const
{
    qint64 bytes = 0;
    for (const Layer& layer : layers) {
        bytes += DataStream::BytesOf(layer.pixels.image);
    }
    return bytes;
}

void LayerColors::ReleaseImages()
{
    for (Layer& layer : layers) {
        layer.pixels.image = LXImage32();
    }
}

QDataStream& operator<<(QDataStream& stream, const LayerColors& colors)
{
    stream << colors.profile.GetData() << colors.canvas << quint32(colors.layers.size());
    for (const LayerColors::Layer& layer : colors.layers) {
        stream << layer.pixels.offset;
        DataStream::WriteImage(stream, layer.pixels.image);
        TextStream::Write(stream, layer.text);
    }
    return stream;
}

QDataStream& operator>>(QDataStream& stream, LayerColors& colors)
{
    colors = LayerColors();
    QByteArray profile;
    quint32 count = 0;
    stream >> profile >> colors.canvas >> count;
    colors.profile = ZKCMSProfile(profile);
    while (count-- > 0 && stream.status() == QDataStream::Ok) {
        LayerColors::Layer layer;
        stream >> layer.pixels.offset;
        layer.pixels.image = DataStream::ReadImage(stream);
        layer.text = TextStream::Read(stream);
        colors.layers.push_back(layer);
    }
    return stream;
}
