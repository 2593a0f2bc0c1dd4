#include "image/BlendKernels.h"
#include "image/BrushPixels.h"
#include "image/LXBlend.h"
#include "image/LXImage.h"
#include "image/PathCoverage.h"
#include "image/TileWalk.h"

#include <QImage>
#include <QPainterPath>

#include <algorithm>
#include <vector>

namespace {
using TileWalk::TilePixels;
using TileWalk::TileSide;

/// The pixels that the path may touch. Cut as real numbers: the path's box need not fit into integers.
QRect TouchedRect(const QPainterPath& path, const QRect& imageRect)
{
    return (path.boundingRect() & QRectF(imageRect)).toAlignedRect() & imageRect;
}

class PathFiller
{
public:
    PathFiller(LXImage32& image, unsigned int mode, const QBrush& brush)
        : m_Image(image),
          m_Kernel(BlendKernels::For(mode, false)),
          m_MixesByCoverage(mode == BlendMode::Source),
          m_Brush(brush),
          m_Source(TilePixels),
          m_Strength(TilePixels),
          m_NoMask(TileSide, 255)
    {}

    /// Fills what `coverage` tells of the pixels of `band`.
    void Run(const QImage& coverage, const QRect& band)
    {
        TileWalk::ForEachTile(band, [&](int column, int row, const QRect& part) {
            if (IsTouched(coverage, part.translated(-band.topLeft()))) {
                FillTile(column, row, part, coverage, band.topLeft());
            }
        });
    }

private:
    static bool IsTouched(const QImage& coverage, const QRect& part)
    {
        for (int y = part.top(); y <= part.bottom(); ++y) {
            const uchar* const first = coverage.constScanLine(y) + part.left();
            if (std::any_of(first, first + part.width(), [](uchar c) { return c != 0; })) return true;
        }
        return false;
    }

    void FillTile(int column, int row, const QRect& part, const QImage& coverage, const QPoint& origin)
    {
        m_Brush.Read(part, m_Source.data());
        const auto tile = m_Image.WriteTile(column, row);
        for (int y = part.top(); y <= part.bottom(); ++y) {
            const uchar* const covered = coverage.constScanLine(y - origin.y()) + part.left() - origin.x();
            FillRow(covered, m_Source.data() + (y - part.top()) * part.width(),
                    tile.Pixels() + TileWalk::IndexInTile(QPoint(part.left(), y)), part.width());
        }
    }

    /// Pixels that the path doesn't touch stay in every mode, so the kernel gets the runs between them.
    void FillRow(const uchar* coverage, const LXRGBA32i* source, LXRGBA32i* target, int count)
    {
        const auto isTouched = [](uchar c) { return c != 0; };
        const uchar* const end = coverage + count;
        const uchar* first = std::find_if(coverage, end, isTouched);
        while (first != end) {
            const uchar* const last = std::find_if_not(first, end, isTouched);
            const auto offset = first - coverage;
            const int length = static_cast<int>(last - first);
            const quint8* const strength = m_MixesByCoverage ? first : BrushAlphas(source + offset, length);
            m_Kernel.run({source + offset, strength, m_NoMask.data(), target + offset, length});
            first = std::find_if(last, end, isTouched);
        }
    }

    const quint8* BrushAlphas(const LXRGBA32i* source, int count)
    {
        std::transform(source, source + count, m_Strength.begin(),
                       [](LXRGBA32i pixel) { return static_cast<quint8>(pixel.Alpha()); });
        return m_Strength.data();
    }

    LXImage32& m_Image;
    BlendKernel m_Kernel;
    bool m_MixesByCoverage;
    BrushPixels m_Brush;
    std::vector<LXRGBA32i> m_Source;
    std::vector<quint8> m_Strength;
    std::vector<quint8> m_NoMask;
};
} // namespace

void FillPath(LXImage32& image, int mode, const QPainterPath& path, const QBrush& brush)
{
    // A band is one row of tiles high and this wide: few renderings of the path, little memory.
    constexpr int bandWidth = 64 * TileSide;

    const auto blendMode = static_cast<unsigned int>(mode);
    PathFiller filler(image, blendMode, brush);
    const QRect touched = TouchedRect(path, image.Rect());
    if (brush.style() == Qt::NoBrush || touched.isEmpty()) return;

    const PathCoverage coverage(path, blendMode == BlendMode::Source || blendMode == BlendMode::SourceIn);
    for (int top = touched.top() / TileSide * TileSide; top <= touched.bottom(); top += TileSide) {
        for (int left = touched.left() / TileSide * TileSide; left <= touched.right(); left += bandWidth) {
            const QRect band = QRect(left, top, bandWidth, TileSide) & touched;
            filler.Run(coverage.Render(band), band);
        }
    }
}
