#include "history/RenderedTransform.h"

#include "history/MaskGray.h"
#include "image/ImageMetadata.h"
#include "image/LXTransform.h"

#include <QRectF>
#include <QSize>

#include <cmath>

PlacedImage RenderedTransform::OfPixels(const LXImage32& image, const QTransform& transform,
                                        const QSize& canvas)
{
    const QRectF visible = transform.mapRect(QRectF(image.Rect())) & QRectF(QPointF(0, 0), QSizeF(canvas));
    // Written so that what isn't a number is refused too.
    if (!(visible.width() > 0 && visible.height() > 0)) return PlacedImage();

    PlacedImage rendered;
    rendered.image = LXImage32(static_cast<int>(std::ceil(visible.width())),
                               static_cast<int>(std::ceil(visible.height())));
    ImageMetadata::Copy(image, rendered.image);
    rendered.offset = visible.topLeft().toPoint();
    const QTransform toImage = transform * QTransform::fromTranslate(-visible.left(), -visible.top());
    const bool isPossible = TransformImage(image, toImage, rendered.image, QRect());
    return isPossible ? rendered : PlacedImage();
}

PlacedImage RenderedTransform::OfMask(const LXImage32& mask, bool reveals, const QTransform& transform,
                                      const QSize& canvas)
{
    PlacedImage rendered = OfPixels(MaskGray::FromMask(mask), transform, canvas);
    rendered.image = MaskGray::ToMask(rendered.image, reveals);
    return rendered;
}
