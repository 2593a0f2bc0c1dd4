#include "history/ColorSamplesCommandData_p.h"
#include "history/DataStream.h"

void SampleStream::Write(QDataStream& stream, const ColorSample& sample)
{
    stream << sample.point << qint32(sample.radius) << qint32(sample.format);
}

ColorSample SampleStream::Read(QDataStream& stream)
{
    ColorSample sample;
    stream >> sample.point >> sample.radius;
    DataStream::ReadEnum(stream, sample.format, LXColorSampleModel::CMYK);
    const bool isRadius = sample.radius >= 0 && sample.radius <= LXColorSampleModel::MaxSampleRadius;
    if (!isRadius) stream.setStatus(QDataStream::ReadCorruptData);
    return sample;
}
