#pragma once

#include "image/LXImage.h"

#include <QRect>

#include <functional>
#include <vector>

/// The values of a mask in a rectangle, one byte for each pixel. Outside the mask they are 0.
struct MaskValues
{
    explicit MaskValues(const QRect& where)
        : rect(where),
          bytes(static_cast<std::size_t>(where.width()) * static_cast<std::size_t>(where.height()))
    {}

    /// The row, counted from the rectangle's top.
    quint8* Row(int y) { return bytes.data() + static_cast<std::ptrdiff_t>(y) * rect.width(); }

    const quint8* Row(int y) const { return bytes.data() + static_cast<std::ptrdiff_t>(y) * rect.width(); }

    QRect rect; ///< mask pixels, counted from its top left
    std::vector<quint8> bytes;
};

/// Walks over masks piece by piece, for kernels that look at the neighbours of each pixel.
namespace MaskPieces {
/// Fills `piece`; `around` is larger by the reach on each side. Any thread.
using Kernel = std::function<void(const MaskValues& around, MaskValues& piece)>;

/// A mask of the area's size. The kernel isn't asked where everything within its reach has one value: all of
/// the piece is then `ofSolid` of that value.
/// @param area   mask pixels, counted from its top left; it may reach outside the mask
/// @param reach  how far the kernel looks
LXImage32 Make(const LXImage32& mask, const QRect& area, int reach,
               const std::function<quint8(quint8)>& ofSolid, const Kernel& kernel);
} // namespace MaskPieces
