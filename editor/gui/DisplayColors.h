#pragma once

#include "image/ZKCMSTransform.h"

#include <QImage>
#include <QRect>

class LXDocumentInterface;

/// What is drawn of pictures in the colors of the screen.
namespace DisplayColors {
/// A part of an image in place; an empty transform costs nothing.
/// @param image  Format_ARGB32 or Format_ARGB32_Premultiplied
/// Any thread.
void Convert(const ZKCMSTransform& toScreen, QImage& image, const QRect& part);

/// A small picture of a document, of any of the two formats. Main thread only.
QImage Shown(const LXDocumentInterface* document, const QImage& picture);
/// A color of a document; an invalid one stays so. Main thread only.
QColor Shown(const LXDocumentInterface* document, const QColor& color);
/// A color of the program's own, such as the foreground. Main thread only.
QColor ShownOwn(const QColor& color);
/// A picture of such colors, of any of the two formats. Main thread only.
QImage ShownOwn(const QImage& picture);
} // namespace DisplayColors
