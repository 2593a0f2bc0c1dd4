#pragma once

#include "EditorExport.h"

#include "image/LXImage.h"

#include <QString>

#include <functional>

/// How LXMimePictures reads a file.
namespace MimeFileReader {
/// The picture; null when it can't be read.
using Read = std::function<LXImage32(const QString& path)>;
/// Whether the name says that it is a picture.
using IsPicture = std::function<bool(const QString& path)>;

/// From now on files are read so; nothing means that files are left alone, as they are at first. Main thread.
ZK_EDITOR_EXPORT void Set(IsPicture isPicture, Read read);
} // namespace MimeFileReader
