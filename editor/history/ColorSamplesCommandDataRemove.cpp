#include "history/ColorSamplesCommandDataRemove.h"

#include "history/ColorSamplesCommandData_p.h"
#include "history/CommandDataType.h"
#include "history/DataStream.h"

ColorSamplesCommandDataRemove::ColorSamplesCommandDataRemove()
    : m_pPrivate(std::make_unique<ColorSamplesCommandDataRemovePrivate>())
{}

ColorSamplesCommandDataRemove::~ColorSamplesCommandDataRemove() = default;

void ColorSamplesCommandDataRemove::SetSamplePoint(int row, const QPoint& point)
{
    m_pPrivate->row = row;
    m_pPrivate->sample.point = point;
}

int ColorSamplesCommandDataRemove::GetSampleRow() const
{
    return m_pPrivate->row;
}

QPoint ColorSamplesCommandDataRemove::GetSamplePoint() const
{
    return m_pPrivate->sample.point;
}

int ColorSamplesCommandDataRemove::GetDataType() const
{
    return CommandDataType::ColorSamplesRemove;
}

bool ColorSamplesCommandDataRemove::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << qint32(m_pPrivate->row);
        SampleStream::Write(stream, m_pPrivate->sample);
    });
}

bool ColorSamplesCommandDataRemove::Deserialize(IReader* reader)
{
    ColorSamplesCommandDataRemovePrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.row;
        read.sample = SampleStream::Read(stream);
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
