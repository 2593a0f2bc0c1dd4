#include "history/AdjustmentStream.h"

#include "history/DataStream.h"

QDataStream& operator<<(QDataStream& stream, const LXAdjustment& a)
{
    stream << qint32(a.kind) << a.gamma;
    for (const int value : {a.brightness, a.contrast, a.inBlack, a.inWhite, a.outBlack, a.outWhite, a.hue,
                            a.saturation, a.lightness}) {
        stream << qint32(value);
    }
    return stream;
}

QDataStream& operator>>(QDataStream& stream, LXAdjustment& a)
{
    DataStream::ReadEnum(stream, a.kind, LXAdjustment::Invert);
    stream >> a.gamma;
    for (int* value : {&a.brightness, &a.contrast, &a.inBlack, &a.inWhite, &a.outBlack, &a.outWhite, &a.hue,
                       &a.saturation, &a.lightness}) {
        qint32 number = 0;
        stream >> number;
        *value = number;
    }
    return stream;
}
