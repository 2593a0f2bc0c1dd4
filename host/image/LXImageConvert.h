#pragma once

#include "ZKHostExport.h"

#include "image/LXImageFwd.h"

class QImage;
class QPointF;

/// Makes `target` a `QImage::Format_ARGB32` copy of `source`, byte by byte; null for a null source. Throws
/// std::bad_alloc when a QImage can't be so large, and LXTMSwapError or LXTMSwapFileError when the disk for
/// temporary files fails. Any thread.
ZK_HOST_EXPORT void ConvertImage(const LXImage32& source, QImage& target);

/// Makes `target` a copy of `source`, whatever its format, without profile and metadata; null for a null
/// source. Blank tiles are shared. Throws as the constructor of LXImage, and LXTMSwapError or
/// LXTMSwapFileError when the disk for temporary files fails. Any thread.
ZK_HOST_EXPORT void ConvertImage(const QImage& source, LXImage32& target);

/// Fills all of `target` (`QImage::Format_ARGB32` or `Format_ARGB32_Premultiplied`, its size is the request)
/// with the part of `source` whose top left is `origin`, image pixels, at `scale` target pixels to one source
/// pixel. Below 1 the covered source pixels are averaged, above 1 the four nearest are mixed, both weighted
/// by alpha; outside the source is transparent. False, with `target` untouched, for a null image, a scale
/// that is not above 0, or another format. Throws as ConvertImage. Any thread.
ZK_HOST_EXPORT bool ScaleImage(const LXImage32& source, const QPointF& origin, double scale, QImage& target);
