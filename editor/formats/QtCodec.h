#pragma once

#include "formats/FormatTable.h"

/// TIFF, WebP, BMP and GIF files: the pixels through Qt's readers and writers, what stands beside them
/// through the formats' own libraries. Only the first picture of a file that has several. Any thread.
namespace QtCodec {
/// Of WebP, which Qt's writer doesn't check.
constexpr int WebpMaxSide = 16383;

PictureFile::Error DecodeTiff(DecodeJob& job);
PictureFile::Error DecodeWebp(DecodeJob& job);
PictureFile::Error DecodeBmp(DecodeJob& job);
PictureFile::Error DecodeGif(DecodeJob& job);

/// With transparency 16 bits a channel, since Qt multiplies 8-bit colors by their alpha.
PictureFile::Error EncodeTiff(const EncodeJob& job);
/// Without loss, but for the color under alpha 0.
PictureFile::Error EncodeWebp(const EncodeJob& job);
PictureFile::Error EncodeBmp(const EncodeJob& job);

/// What comes back of a resolution: whole dots per meter; what the Exif block has a place for.
double BmpResolution(const Picture& picture);
double WebpResolution(const Picture& picture);
} // namespace QtCodec
