#include "image/LXBlend.h"

#include "image/BlendKernels.h"
#include "image/LXImage.h"
#include "image/PixelMath.h"
#include "image/TileWalk.h"

#include <QPoint>
#include <QRect>

#include <algorithm>
#include <array>
#include <vector>

namespace {
using TileWalk::TileSide;

/// The pixels that are really blended. In 64 bits, so that no rectangle overflows on the way.
struct BlendArea
{
    QRect target;    ///< target pixels, inside the image
    QPoint toSource; ///< what leads from a target pixel to its source pixel, always inside the source
    QPoint toMask;   ///< and to its mask pixel, which may lie outside
};

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

struct MaskPart
{
    const LXImage32* image = nullptr; ///< null: no mask, all is allowed
    QRect rect;
};

/// Blends one tile after the other. Source, strength and mask of a tile's pixels are first laid out row by
/// row in buffers that all tiles share, so that the kernels know nothing of tile borders.
class TileBlender
{
public:
    TileBlender(const LXImage32& src, unsigned int mode, LXImage32& dst, const BlendArea& area,
                double opacity, const MaskPart& mask, bool keepAlpha)
        : m_Src(src),
          m_Dst(dst),
          m_Area(area),
          m_Mask(mask),
          m_Kernel(BlendKernels::For(mode, keepAlpha)),
          m_Opacity(opacity > 0.0 ? std::min(opacity, 1.0) : 0.0),
          m_IsCopy(mode == BlendMode::Source && mask.image == nullptr &&
                   PixelMath::Strength(255, m_Opacity, 255) == 255),
          m_Source(MostPixelsOfATile(area.target)),
          m_Strength(m_Source.size()),
          m_MaskValues(m_Source.size(), 255)
    {
        for (int alpha = 0; alpha < 256; ++alpha) {
            m_StrengthOfAlpha[static_cast<std::size_t>(alpha)] =
                static_cast<quint8>(PixelMath::Strength(alpha, m_Opacity, 255));
        }
    }

    void Run()
    {
        TileWalk::ForEachTile(m_Area.target, [&](int column, int row, const QRect& part) {
            if (m_IsCopy) {
                if (!ShareTile(column, row, part)) CopyTile(column, row, part);
                return;
            }
            ReadSource(part.translated(m_Area.toSource));
            if (m_Mask.image != nullptr) ReadMask(part.translated(m_Area.toMask));
            const int count = part.width() * part.height();
            ComputeStrength(count);
            if (!LeavesAsIs(column, row, part)) BlendTile(column, row, part);
        });
    }

private:
    /// How many pixels the buffers must hold: small blends are frequent and shall not pay for a whole tile.
    static std::size_t MostPixelsOfATile(const QRect& rect)
    {
        return static_cast<std::size_t>(std::min(rect.width(), TileSide) * std::min(rect.height(), TileSide));
    }

    bool ShareTile(int column, int row, const QRect& part);
    void CopyTile(int column, int row, const QRect& part);
    bool IsCopyEqual(const QRect& part);
    void ReadSource(const QRect& srcPart);
    void ReadMask(const QRect& maskPart);
    void ComputeStrength(int count);
    bool LeavesAsIs(int column, int row, const QRect& part) const;
    void BlendTile(int column, int row, const QRect& part);

    const LXImage32& m_Src;
    LXImage32& m_Dst;
    BlendArea m_Area;
    MaskPart m_Mask;
    BlendKernel m_Kernel;
    double m_Opacity;
    bool m_IsCopy; ///< all four bytes of every pixel are replaced
    std::vector<LXRGBA32i> m_Source;
    std::vector<quint8> m_Strength;
    std::vector<quint8> m_MaskValues;
    std::array<quint8, 256> m_StrengthOfAlpha{};
};

/// Lets the target share the source's tile when the copy would make an equal one: the tiles' grids coincide
/// and the images end at the same place of the tile, so that even the pixels beyond the edge agree.
bool TileBlender::ShareTile(int column, int row, const QRect& part)
{
    if (m_Area.toSource.x() % TileSide != 0 || m_Area.toSource.y() % TileSide != 0) return false;
    const QRect whole = TileWalk::TileRect(column, row);
    const QRect sourceWhole = whole.translated(m_Area.toSource);
    if (part != (whole & m_Dst.Rect()) || part.translated(m_Area.toSource) != (sourceWhole & m_Src.Rect()))
        return false;

    m_Dst.TileAt(column, row) = m_Src.TileAt(sourceWhole.left() / TileSide, sourceWhole.top() / TileSide);
    return true;
}

void TileBlender::CopyTile(int column, int row, const QRect& part)
{
    if (m_Dst.TileAt(column, row)->IsShared() && IsCopyEqual(part)) return;

    const auto tile = m_Dst.WriteTile(column, row);
    LXRGBA32i* const target = tile.Pixels() + TileWalk::IndexInTile(part.topLeft());
    TileWalk::ReadSpans(m_Src, part.translated(m_Area.toSource),
                        [&](const LXRGBA32i* pixels, int x, int y, int count) {
                            std::copy_n(pixels, count, target + y * TileSide + x);
                        });
}

/// Whether the target holds the source's pixels already, as blank images do.
bool TileBlender::IsCopyEqual(const QRect& part)
{
    ReadSource(part.translated(m_Area.toSource));
    bool isEqual = true;
    TileWalk::ReadSpans(m_Dst, part, [&](const LXRGBA32i* pixels, int, int y, int count) {
        isEqual = isEqual && std::equal(pixels, pixels + count, m_Source.data() + y * count);
    });
    return isEqual;
}

void TileBlender::ReadSource(const QRect& srcPart)
{
    TileWalk::ReadSpans(m_Src, srcPart, [&](const LXRGBA32i* pixels, int x, int y, int count) {
        std::copy_n(pixels, count, m_Source.data() + y * srcPart.width() + x);
    });
}

void TileBlender::ReadMask(const QRect& maskPart)
{
    const int count = maskPart.width() * maskPart.height();
    const QRect inside = maskPart & m_Mask.rect & m_Mask.image->Rect();
    if (inside != maskPart) std::fill_n(m_MaskValues.begin(), count, quint8(0));
    if (inside.isEmpty()) return;

    const QPoint shift = inside.topLeft() - maskPart.topLeft();
    TileWalk::ReadSpans(*m_Mask.image, inside, [&](const LXRGBA32i* pixels, int x, int y, int spanCount) {
        quint8* const values = m_MaskValues.data() + (y + shift.y()) * maskPart.width() + x + shift.x();
        std::transform(pixels, pixels + spanCount, values,
                       [](LXRGBA32i pixel) { return static_cast<quint8>(pixel.Alpha()); });
    });
}

void TileBlender::ComputeStrength(int count)
{
    const bool usesAlpha = m_Kernel.strength != StrengthRule::OpacityMask;
    const bool usesMask = m_Mask.image != nullptr && m_Kernel.strength != StrengthRule::AlphaOpacity;
    for (int i = 0; i < count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const int alpha = usesAlpha ? m_Source[at].Alpha() : 255;
        m_Strength[at] = usesMask
                             ? static_cast<quint8>(PixelMath::Strength(alpha, m_Opacity, m_MaskValues[at]))
                             : m_StrengthOfAlpha[static_cast<std::size_t>(alpha)];
    }
}

/// Whether the tile needs no write at all; asked before it is detached, so that blank parts of layers and
/// selections stay shared.
bool TileBlender::LeavesAsIs(int column, int row, const QRect& part) const
{
    const int count = part.width() * part.height();
    if (m_Kernel.keepsAtZeroStrength &&
        std::all_of(m_Strength.begin(), m_Strength.begin() + count, [](quint8 s) { return s == 0; })) {
        return true;
    }
    if (!m_Kernel.keepsTransparentTarget || !m_Dst.TileAt(column, row)->IsShared()) return false;

    bool isTransparent = true;
    TileWalk::ReadSpans(m_Dst, part, [&](const LXRGBA32i* pixels, int, int, int spanCount) {
        isTransparent = isTransparent && std::all_of(pixels, pixels + spanCount,
                                                     [](LXRGBA32i pixel) { return pixel.Alpha() == 0; });
    });
    return isTransparent;
}

void TileBlender::BlendTile(int column, int row, const QRect& part)
{
    const auto tile = m_Dst.WriteTile(column, row);
    for (int y = 0; y < part.height(); ++y) {
        const int first = y * part.width();
        m_Kernel.run({m_Source.data() + first, m_Strength.data() + first, m_MaskValues.data() + first,
                      tile.Pixels() + TileWalk::IndexInTile(QPoint(part.left(), part.top() + y)),
                      part.width()});
    }
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
    TileBlender(&src == &dst ? before : src, mode, dst, area, opacity, mask, keepAlpha).Run();
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
