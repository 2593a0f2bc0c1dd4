#pragma once

#include "image/LXRGBA32i.h"

#include <QtGlobal>

/// A row of pixels inside one tile.
struct BlendRow
{
    const LXRGBA32i* source;
    const quint8* strength; ///< as the kernel's StrengthRule tells, one a pixel
    const quint8* mask;     ///< one a pixel; only gray painted into masks reads it
    LXRGBA32i* target;
    int count;
};

/// What a kernel takes for the strength of a pixel.
enum class StrengthRule
{
    AlphaOpacityMask, ///< source alpha x opacity x mask
    OpacityMask,      ///< opacity x mask: the source's alpha is blended itself
    AlphaOpacity,     ///< source alpha x opacity: the mask comes in later
};

/// One mode.
struct BlendKernel
{
    void (*run)(const BlendRow& row) = nullptr;
    StrengthRule strength = StrengthRule::AlphaOpacityMask;
    bool keepsAtZeroStrength = true;     ///< strength 0 leaves all four bytes
    bool keepsTransparentTarget = false; ///< a target pixel of alpha 0 keeps all four bytes
};

namespace BlendKernels {
/// The kernel of a mode of BlendMode.h. Throws std::invalid_argument for any other number.
BlendKernel For(unsigned int mode, bool keepAlpha);
} // namespace BlendKernels
