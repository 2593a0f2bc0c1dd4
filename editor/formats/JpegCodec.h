#pragma once

#include "formats/FormatTable.h"

/// JPEG files, row by row between the file and the tiles. Gray and CMYK pictures come in as RGB, without
/// their profile; transparent pictures go out on white. Any thread.
namespace JpegCodec {
constexpr int MaxSide = 65500; ///< pixels; what the library writes

PictureFile::Error Decode(DecodeJob& job);
PictureFile::Error Encode(const EncodeJob& job);

/// A file has room for 255 segments of a profile, and for one of an Exif block.
bool HoldsProfile(const QByteArray& icc);
bool HoldsExif(const QByteArray& exif);
/// A whole number of pixels per inch.
double Resolution(const Picture& picture);
} // namespace JpegCodec
