#pragma once

#include "image/LXImage.h"

#include <QDataStream>

#include <functional>

class IReader;
class IWriter;

/// The serial form of command data: a length and that many bytes, made with QDataStream, so that Qt's own
/// values are written as they are.
namespace DataStream {
/// False when the writer fails.
bool Write(IWriter* writer, const std::function<void(QDataStream&)>& fill);
/// False for a short input and when `take` reads past the end or meets damaged values; the caller keeps what
/// it read only on true.
bool Read(IReader* reader, const std::function<void(QDataStream&)>& take);

/// Pixels, size, profile, resolution and metadata; each tile once, however often it is shared.
void WriteImage(QDataStream& stream, const LXImage32& image);
/// Marks the stream as damaged for values that no image has.
LXImage32 ReadImage(QDataStream& stream);

/// Reads a number written as qint32 into an enum of the values 0 to `last`; others are damage.
template <class Enum>
void ReadEnum(QDataStream& stream, Enum& value, Enum last)
{
    qint32 number = 0;
    stream >> number;
    if (number < 0 || number > static_cast<qint32>(last)) {
        stream.setStatus(QDataStream::ReadCorruptData);
    } else {
        value = static_cast<Enum>(number);
    }
}

/// The bytes that the tiles of an image hold, each counted once; more when there is no memory for counting.
qint64 BytesOf(const LXImage32& image);
} // namespace DataStream
