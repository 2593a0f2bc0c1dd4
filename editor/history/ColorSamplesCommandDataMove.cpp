#include "history/ColorSamplesCommandDataMove.h"

#include "history/ColorSamplesCommandData_p.h"
#include "history/CommandDataType.h"
#include "history/DataStream.h"

ColorSamplesCommandDataMove::ColorSamplesCommandDataMove()
    : m_pPrivate(std::make_unique<ColorSamplesCommandDataMovePrivate>())
{}

ColorSamplesCommandDataMove::~ColorSamplesCommandDataMove() = default;

void ColorSamplesCommandDataMove::SetData(int row, const QPoint& oldPoint)
{
    m_pPrivate->row = row;
    m_pPrivate->before = oldPoint;
}

int ColorSamplesCommandDataMove::GetSampleRow() const
{
    return m_pPrivate->row;
}

QPoint ColorSamplesCommandDataMove::GetOldPoint() const
{
    return m_pPrivate->before;
}

int ColorSamplesCommandDataMove::GetDataType() const
{
    return CommandDataType::ColorSamplesMove;
}

bool ColorSamplesCommandDataMove::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << qint32(m_pPrivate->row) << m_pPrivate->before << m_pPrivate->after.has_value()
               << m_pPrivate->after.value_or(QPoint());
    });
}

bool ColorSamplesCommandDataMove::Deserialize(IReader* reader)
{
    ColorSamplesCommandDataMovePrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        QPoint after;
        bool isKnown = false;
        stream >> read.row >> read.before >> isKnown >> after;
        if (isKnown) read.after = after;
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
