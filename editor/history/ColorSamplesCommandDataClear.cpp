#include "history/ColorSamplesCommandDataClear.h"

#include "history/ColorSamplesCommandData_p.h"
#include "history/CommandDataType.h"
#include "history/DataStream.h"

ColorSamplesCommandDataClear::ColorSamplesCommandDataClear()
    : m_pPrivate(std::make_unique<ColorSamplesCommandDataClearPrivate>())
{}

ColorSamplesCommandDataClear::~ColorSamplesCommandDataClear() = default;

void ColorSamplesCommandDataClear::SetData(const std::vector<QPoint>& points)
{
    m_pPrivate->samples.clear();
    for (const QPoint& point : points) {
        ColorSample sample;
        sample.point = point;
        m_pPrivate->samples.push_back(sample);
    }
}

std::vector<QPoint> ColorSamplesCommandDataClear::GetPoints() const
{
    std::vector<QPoint> points;
    for (const ColorSample& sample : m_pPrivate->samples)
        points.push_back(sample.point);
    return points;
}

int ColorSamplesCommandDataClear::GetDataType() const
{
    return CommandDataType::ColorSamplesClear;
}

bool ColorSamplesCommandDataClear::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << qint32(m_pPrivate->samples.size());
        for (const ColorSample& sample : m_pPrivate->samples)
            SampleStream::Write(stream, sample);
    });
}

bool ColorSamplesCommandDataClear::Deserialize(IReader* reader)
{
    ColorSamplesCommandDataClearPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        qint32 count = 0;
        stream >> count;
        // Grows as samples come: a damaged count ends with the bytes.
        for (; count > 0 && stream.status() == QDataStream::Ok; --count)
            read.samples.push_back(SampleStream::Read(stream));
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
