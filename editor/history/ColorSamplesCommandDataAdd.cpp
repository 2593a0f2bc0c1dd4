#include "history/ColorSamplesCommandDataAdd.h"

#include "history/ColorSamplesCommandData_p.h"
#include "history/CommandDataType.h"
#include "history/DataStream.h"

ColorSamplesCommandDataAdd::ColorSamplesCommandDataAdd()
    : m_pPrivate(std::make_unique<ColorSamplesCommandDataAddPrivate>())
{}

ColorSamplesCommandDataAdd::~ColorSamplesCommandDataAdd() = default;

void ColorSamplesCommandDataAdd::SetSamplePoint(const QPoint& point)
{
    m_pPrivate->sample.point = point;
}

QPoint ColorSamplesCommandDataAdd::GetSamplePoint() const
{
    return m_pPrivate->sample.point;
}

int ColorSamplesCommandDataAdd::GetDataType() const
{
    return CommandDataType::ColorSamplesAdd;
}

bool ColorSamplesCommandDataAdd::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        SampleStream::Write(stream, m_pPrivate->sample);
        stream << m_pPrivate->isWhole;
    });
}

bool ColorSamplesCommandDataAdd::Deserialize(IReader* reader)
{
    ColorSamplesCommandDataAddPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        read.sample = SampleStream::Read(stream);
        stream >> read.isWhole;
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
