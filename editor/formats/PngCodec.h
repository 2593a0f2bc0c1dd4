#pragma once

#include "formats/FormatTable.h"

/// PNG files, row by row between the file and the tiles. Whatever a file holds comes in as 8-bit straight
/// alpha; what goes out comes back bit for bit, color under alpha 0 included. Any thread.
namespace PngCodec {
PictureFile::Error Decode(DecodeJob& job);
PictureFile::Error Encode(const EncodeJob& job);
} // namespace PngCodec
