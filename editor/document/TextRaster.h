#pragma once

#include "document/CompositeLayer.h"
#include "document/TextContent.h"

#include <QRect>
#include <QSize>
#include <QTransform>

#include <memory>

class TextGeometry;

/// The pixels of a text layer, drawn from outlines. Any thread.
namespace TextRaster {
/// As far as the canvas and as much around it reach, so that a letter as large as a house costs no more than
/// a few canvases. Without anything to see: an empty image, its place where the text begins. Throws
/// std::bad_alloc.
PlacedImage Render(const TextContent& content, const QSize& canvas);

/// The rectangle of Render().
QRect RectOf(const TextGeometry& geometry, const QSize& canvas);

/// By how many whole pixels a text that lies as `before` moves to lie as `after`, when that is all that is
/// between the two; false otherwise. What single precision adds doesn't count.
bool IsWholeMove(const QTransform& before, const QTransform& after, QPoint* delta);

/// The text moved by whole pixels.
std::shared_ptr<const TextContent> Moved(const TextContent& content, const QPoint& delta);

/// Whether parts of a text with the rectangle may not be drawn, since they lie too far from the canvas; also
/// when nothing of it is.
bool MayBeCut(const QRect& rect, const QSize& canvas);
} // namespace TextRaster
