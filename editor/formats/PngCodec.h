#pragma once

#include "formats/FormatTable.h"

/// PNG files, row by row between the file and the tiles. Whatever a file holds comes in as 8-bit straight
/// alpha; what goes out comes back bit for bit, color under alpha 0 included. Coverage goes out as gray, and
/// every picture can come in as coverage: its blue channel, which is the gray of a gray one. Any thread.
namespace PngCodec {
PictureFile::Error Decode(DecodeJob& job);
PictureFile::Error Encode(const EncodeJob& job);

/// The library takes no profile that it finds wrong, and no chunk of more than 8 million bytes.
bool HoldsProfile(const QByteArray& icc);
bool HoldsExif(const QByteArray& exif);
/// Whole dots per meter.
double Resolution(const Picture& picture);

/// The size that the header at the device's place claims; false when no such header stands there.
bool ReadSize(QIODevice& device, QSize* size);
} // namespace PngCodec
