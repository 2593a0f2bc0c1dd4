#pragma once

#include <QByteArray>

/// What stands beside the pixels of a WebP file, as whole chunks. Any thread.
namespace WebpChunks {
struct Chunks
{
    QByteArray iccProfile; ///< as it stands there; empty without one
    QByteArray exif;       ///< without the mark that some programs put before it; empty without one
};

/// @param file  a whole file; of another one nothing is read
Chunks Read(const QByteArray& file);

/// The file with these chunks; the same file without any. Null when the library can't.
QByteArray With(const QByteArray& file, const Chunks& chunks);
} // namespace WebpChunks
