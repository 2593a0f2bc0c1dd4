#include "image/LXBlend.h"

#include "image/LXImage.h"
#include "image/TileBlender.h"

#include <QPoint>
#include <QRect>

#include <algorithm>

namespace {
/// The numbers k for which pixel k of both spans exists, on one axis.
struct Overlap
{
    qint64 first;
    qint64 end;
};

Overlap ClipAxis(qint64 src, qint64 srcLength, qint64 srcSide, qint64 dst, qint64 dstLength, qint64 dstSide)
{
    return {std::max({qint64(0), -src, -dst}),
            std::min({srcLength, dstLength, srcSide - src, dstSide - dst})};
}

qint64 LengthOf(qint64 first, qint64 last)
{
    return last - first + 1;
}

BlendArea ClipTogether(const LXImage32& src, const QRect& srcRect, const LXImage32& dst, const QRect& dstRect)
{
    const Overlap columns = ClipAxis(srcRect.left(), LengthOf(srcRect.left(), srcRect.right()), src.Width(),
                                     dstRect.left(), LengthOf(dstRect.left(), dstRect.right()), dst.Width());
    const Overlap rows = ClipAxis(srcRect.top(), LengthOf(srcRect.top(), srcRect.bottom()), src.Height(),
                                  dstRect.top(), LengthOf(dstRect.top(), dstRect.bottom()), dst.Height());
    if (columns.first >= columns.end || rows.first >= rows.end) return {};

    BlendArea area;
    area.target = QRect(QPoint(static_cast<int>(dstRect.left() + columns.first),
                               static_cast<int>(dstRect.top() + rows.first)),
                        QPoint(static_cast<int>(dstRect.left() + columns.end - 1),
                               static_cast<int>(dstRect.top() + rows.end - 1)));
    area.toSource = srcRect.topLeft() - dstRect.topLeft();
    return area;
}

void Blend(const LXImage32& src, const QRect& srcRect, unsigned int mode, LXImage32& dst,
           const QRect& dstRect, double opacity, MaskPart mask, bool keepAlpha)
{
    if (srcRect.isEmpty() || dstRect.isEmpty()) return;
    BlendArea area = ClipTogether(src, srcRect, dst, dstRect);
    if (area.target.isEmpty()) return;

    if (mask.image != nullptr) area.toMask = mask.rect.topLeft() - dstRect.topLeft();

    // A copy shares the tiles and thereby keeps what the target held before its own tiles are written.
    const LXImage32 before = &src == &dst || mask.image == &dst ? dst : LXImage32();
    if (mask.image == &dst) mask.image = &before;
    TileBlender(&src == &dst ? before : src, {mode, opacity, keepAlpha}, dst, area, mask).Run();
}
} // namespace

void BlendOn(const LXImage32& src, const QRect& srcRect, unsigned int mode, LXImage32& dst,
             const QRect& dstRect, double opacity, bool keepAlpha)
{
    Blend(src, srcRect, mode, dst, dstRect, opacity, {}, keepAlpha);
}

void BlendMaskOn(const LXImage32& src, const QRect& srcRect, unsigned int mode, LXImage32& dst,
                 const QRect& dstRect, double opacity, const LXImage32& mask, const QRect& maskRect,
                 bool keepAlpha, bool keepTargetAlpha)
{
    if (maskRect.isEmpty()) return;
    Blend(src, srcRect, mode, dst, dstRect, opacity, {&mask, maskRect}, keepAlpha || keepTargetAlpha);
}

void DrawImage(LXImage32& dst, int mode, const QPoint& position, const LXImage32& src, double opacity,
               bool keepAlpha)
{
    BlendOn(src, src.Rect(), static_cast<unsigned int>(mode), dst, QRect(position, src.Rect().size()),
            opacity, keepAlpha);
}

LXImage32 CopyPart(const LXImage32& image, const QRect& rect)
{
    return (rect & image.Rect()).isEmpty() ? LXImage32() : image.Copy(rect);
}
