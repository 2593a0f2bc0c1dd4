#pragma once

#include "image/LXImage.h"

#include <QImage>
#include <QPoint>
#include <QRect>

/// The pixels behind copying, cutting and pasting. Rectangles and points are document pixels unless told. Any
/// thread; all throw what images throw.
namespace ClipboardPixels {
/// An image and where its top left lies.
struct Placed
{
    LXImage32 image;
    QPoint topLeft;

    QRect Rect() const { return QRect(topLeft, image.Rect().size()); }
};

/// What a cut or a paste changes: the part of the target that it touches, before and after.
struct Change
{
    LXImage32 before;
    LXImage32 after;
};

/// The source as far as it is selected, alpha = alpha x coverage. A null image when the two don't meet.
Placed Lift(const Placed& source, const Placed& selection);
/// The same of a mask: a gray picture of its values, opaque where all is selected.
Placed LiftMask(const Placed& mask, const Placed& selection);

/// The layer without what is selected, inside the selection's rectangle.
Change Cut(const Placed& layer, const Placed& selection);
/// The mask with the ground's lightness in place of what is selected.
Change CutMask(const Placed& mask, const Placed& selection, LXRGBA32i ground);

/// What of a layer shows pasted pixels.
enum class PasteThrough
{
    Everything,
    Selection,  ///< as far as it is selected
    LayerAlpha, ///< as far as the layer has alpha
};

/// The layer with the item pasted at its place, inside `target`: a paste doesn't enlarge a layer.
/// @param selection  read for PasteThrough::Selection alone
Change Paste(const Placed& layer, const Placed& item, const QRect& target, PasteThrough through,
             const Placed& selection);

/// The picture in the colors of a document, so that it looks the same there. As it is when one of the two has
/// no profile, or both mean the same.
LXImage32 InColorsOf(const LXImage32& image, const ZKCMSProfile& profile);

/// Where a picture stands in the middle of a canvas; halves are truncated toward zero.
QPoint CenteredIn(const QSize& canvas, const QSize& picture);

/// Over all pixels, row by row; pictures of equal bytes in another shape have the same.
unsigned int Checksum(const LXImage32& image);
/// The same of an image of `QImage::Format_ARGB32`.
unsigned int Checksum(const QImage& image);

/// Whether all pixels and the sizes are equal.
bool AreSame(const LXImage32& one, const LXImage32& other);

/// The picture as large as it fits into a square, enlarged as well; `QImage::Format_ARGB32`. Null when a side
/// would be shorter than a pixel.
QImage FitInto(const LXImage32& image, int side);

/// For the system clipboard, where no side is longer than LongestSide and colors are those of sRGB.
QImage ForSystemClipboard(const LXImage32& image);

constexpr int LongestSide = 5000;
} // namespace ClipboardPixels
