#pragma once

#include "image/BlendKernels.h"
#include "image/LXImage.h"
#include "image/StrengthKernels.h"

#include <QPoint>
#include <QRect>

#include <atomic>
#include <mutex>

/// The pixels that are really blended.
struct BlendArea
{
    QRect target;    ///< target pixels, inside the image
    QPoint toSource; ///< what leads from a target pixel to its source pixel, always inside the source
    QPoint toMask;   ///< and to its mask pixel, which may lie outside
};

struct MaskPart
{
    const LXImage32* image = nullptr; ///< null: no mask, all is allowed
    QRect rect;
};

/// How to blend.
struct BlendRule
{
    unsigned int mode;
    double opacity;
    bool keepAlpha;
};

/// Blends one tile of the target after the other, on several threads. The rows of a tile are handed to the
/// kernels as they lie in the source's and the mask's tiles, cut where those end.
class TileBlender
{
public:
    TileBlender(const LXImage32& src, const BlendRule& rule, LXImage32& dst, const BlendArea& area,
                const MaskPart& mask);

    void Run();

private:
    /// A part of a target tile whose pixels come from one tile of the source and one of the mask.
    struct Cell
    {
        QRect rect; ///< target pixels
        bool hasMask;
    };

    /// A tile that came out of two shared ones; where both meet again it is shared too.
    struct Composed
    {
        LXTilePointer source;
        LXTilePointer before;
        LXTilePointer after;
        QRect part; ///< tile coordinates
    };

    void BlendTile(int column, int row, const QRect& part);
    bool ShareTile(int column, int row, const QRect& part);
    void CopyTile(int column, int row, const QRect& part);
    bool IsOpaque(const QRect& part) const;
    bool IsCopyEqual(const QRect& part) const;
    bool IsEqualAround(const QRect& part) const;
    bool IsAligned() const;
    bool ComesFromOne(const QRect& part) const;
    const LXTilePointer& SourceTileOf(const QRect& part) const;
    bool IsAllOf(const LXTile& tile, const QRect& part) const;
    bool IsKnownBlank(const QRect& part) const;
    bool LeavesAsIs(int column, int row, const QRect& part);
    bool HasNoStrength(const QRect& part) const;
    bool TakeComposed(int column, int row, const QRect& part);
    Composed& ComposedOf(const QRect& part);
    void WriteCell(const Cell& cell, LXRGBA32i* tilePixels) const;

    template <class Visit>
    void ForEachCell(const QRect& part, Visit visit) const;
    template <class Use>
    void ForEachRow(const Cell& cell, Use use) const;

    const LXImage32& m_Src;
    LXImage32& m_Dst;
    BlendArea m_Area;
    MaskPart m_Mask;
    BlendKernel m_Kernel;
    StrengthKernel m_Strength;
    bool m_IsCopy;                                      ///< all four bytes of every pixel are replaced
    bool m_HidesUnder;                                  ///< nothing of the target is left under opaque pixels
    QRect m_MaskInside;                                 ///< target pixels that have a mask pixel
    std::atomic<const LXTile*> m_pBlankSource{nullptr}; ///< a shared tile of the source without any alpha
    std::mutex m_ComposedMutex;
    Composed m_ComposedTile; ///< a whole one
    Composed m_ComposedPart; ///< one at an edge, which the next whole one needn't make way for
};
