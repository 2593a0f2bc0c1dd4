#pragma once

#include <QImage>
#include <QRect>

class LXDocumentInterface;

/// Pixels of documents as plain pictures, for those who look at results. All rectangles are document pixels.
/// What has no pixels of its own there reads as what it counts for: a layer and the merged picture as
/// transparent, a mask as its default, the selection as not selected. Takes the lockers. Main thread only.
namespace PixelReading {
/// `QImage::Format_ARGB32`. Id 0 is the merged picture.
QImage OfLayer(const LXDocumentInterface* document, unsigned int id, const QRect& rect);

/// `QImage::Format_Grayscale8`.
QImage OfMask(const LXDocumentInterface* document, unsigned int id, const QRect& rect);
QImage OfSelection(const LXDocumentInterface* document, const QRect& rect);
} // namespace PixelReading
