#pragma once

#include "EditorExport.h"

#include "image/LXImage.h"

#include <QSize>
#include <QString>

#include <functional>

/// How LXMimePictures reads what can be costly.
namespace MimeFileReader {
/// The picture; null when it can't be read.
using Read = std::function<LXImage32(const QString& path)>;
/// Whether the name says that it is a picture.
using IsPicture = std::function<bool(const QString& path)>;

/// Whether a picture of this size, in pixels, may be decoded; asked before its pixels have memory.
using MayDecode = std::function<bool(const QSize& size)>;

/// From now on files are read so; nothing means that files are left alone, as they are at first. Main thread.
ZK_EDITOR_EXPORT void Set(IsPicture isPicture, Read read);

/// From now on this bounds what comes as encoded bytes; nothing means a bound that never changes, as at
/// first. Main thread.
ZK_EDITOR_EXPORT void SetBound(MayDecode mayDecode);
} // namespace MimeFileReader
