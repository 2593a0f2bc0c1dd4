#include "history/LayerStream.h"

#include "history/AdjustmentStream.h"
#include "history/DataStream.h"
#include "history/TextStream.h"

namespace {
void Write(QDataStream& stream, const LayerProperties& layer)
{
    stream << layer.name << qint32(layer.kind) << layer.locks << layer.opacity << layer.blendMode
           << layer.isVisible << layer.rect << layer.hasMask << layer.maskReveals << layer.isMaskSelected
           << layer.isMaskLinked << layer.maskRect << layer.adjustment;
    TextStream::Write(stream, layer.text);
}

void Read(QDataStream& stream, LayerProperties& layer)
{
    qint32 kind = 0;
    stream >> layer.name >> kind >> layer.locks >> layer.opacity >> layer.blendMode >> layer.isVisible >>
        layer.rect >> layer.hasMask >> layer.maskReveals >> layer.isMaskSelected >> layer.isMaskLinked >>
        layer.maskRect >> layer.adjustment;
    layer.text = TextStream::Read(stream);
    layer.kind = kind;
}
} // namespace

QDataStream& operator<<(QDataStream& stream, const LayerState& layer)
{
    Write(stream, layer.properties);
    DataStream::WriteImage(stream, layer.image);
    DataStream::WriteImage(stream, layer.mask);
    return stream;
}

QDataStream& operator>>(QDataStream& stream, LayerState& layer)
{
    Read(stream, layer.properties);
    layer.image = DataStream::ReadImage(stream);
    layer.mask = DataStream::ReadImage(stream);
    return stream;
}
