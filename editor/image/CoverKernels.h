#pragma once

#include "image/CoverCells.h"

#include <QtGlobal>

#include <algorithm>
#include <cstdlib>

/// How much of a pixel is covered, 0 to 255, by its mean winding number and the fill rule.
namespace CoverKernels {
inline quint8 ToByte(int winding, bool isOddEven)
{
    constexpr int one = CoverCells::One;
    int covered = std::abs(winding);
    if (isOddEven) {
        covered &= 2 * one - 1;
        covered = std::min(covered, 2 * one - covered);
    }
    return static_cast<quint8>((std::min(covered, one) * 255 + one / 2) >> CoverCells::Shift);
}

/// The same for `count` pixels.
void ToBytes(const int* windings, int count, bool isOddEven, quint8* bytes);
} // namespace CoverKernels
