#pragma once

#include "ZKHostExport.h"

#include "image/LXImage.h"

#include <QList>

class QMimeData;

/// The pictures in what other programs copy or drag. Main thread.
///
/// Taken are, in this order: local files whose names say that they are pictures; image/png, whose alpha is
/// straight; any other encoded image that can be read, such as TIFF or SVG, the latter at its own size; what
/// the platform holds as an image without any bytes. What is larger than a file may be is left alone before
/// it is decoded. What comes with plain text is text, unless it is about files.
namespace LXMimePictures {
/// More files than these at once are not copied for the sake of their pixels.
constexpr int MostFiles = 10;

/// Whether Read() would look for a picture. False for null.
ZK_HOST_EXPORT bool HasPictures(const QMimeData* data);

/// Whether Read() would read files, which takes its time.
ZK_HOST_EXPORT bool HasPictureFiles(const QMimeData* data);

/// All pictures; empty when there is none, or none that can be read. Waits for files to be read. Throws as
/// the constructor of LXImage, and std::runtime_error with words for people when all there is is a drawing
/// that would take far too long to draw.
ZK_HOST_EXPORT QList<LXImage32> Read(const QMimeData* data);
} // namespace LXMimePictures
