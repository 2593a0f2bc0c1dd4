#pragma once

#include "formats/DocumentFile.h"
#include "image/LXImage.h"

#include <QString>

/// Files of pictures as one image each, whatever layers they hold. Main thread only.
namespace FlatFile {
/// Whether the name's ending is that of a picture, the editor's own files among them.
bool IsPicture(const QString& path);

/// What was read, all layers together; null when the memory doesn't suffice.
LXImage32 ImageOf(const DocumentFile::ReadResult& result);

/// Reads the file while the caller waits; null when it can't be read.
LXImage32 Read(const QString& path);
} // namespace FlatFile
