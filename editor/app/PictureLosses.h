#pragma once

#include "formats/PictureFile.h"

#include <QString>

class LXDocumentInterface;

/// What of a document a file of this format can't hold, in sentences for the user; empty when it holds all.
/// Main thread.
/// @param picture  the document's merged picture
QString PictureLosses(const LXDocumentInterface* document, const Picture& picture,
                      PictureFile::Format format);
