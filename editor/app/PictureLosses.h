#pragma once

#include "formats/PictureFile.h"

#include <QStringList>

class LXDocumentInterface;

/// What of a document a flat file can't hold, in sentences for the user. Main thread.
namespace PictureLosses {
/// What makes the picture another one when it is read again; empty when nothing does.
/// @param picture  the document's merged picture
QStringList OfContent(const LXDocumentInterface* document, const Picture& picture,
                      PictureFile::Format format);

/// What stands beside the pixels and changes none that can be seen: camera data, resolution, colors of pixels
/// that are wholly transparent.
/// @param picture  the document's merged picture
QStringList OfNotes(const LXDocumentInterface* document, const Picture& picture, PictureFile::Format format);

/// What only helps while working: selection, guides, paths, color samples. At most one sentence.
QStringList OfAids(const LXDocumentInterface* document, PictureFile::Format format);
} // namespace PictureLosses
