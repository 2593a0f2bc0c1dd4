#pragma once

#include "image/HueKernels.h"
#include "image/LXAdjustment.h"
#include "image/LXRGBA32i.h"

#include <array>

/// The formulas of LXAdjustment, for rows of pixels. Any thread.
class AdjustmentPixels
{
public:
    explicit AdjustmentPixels(const LXAdjustment& adjustment);

    /// Changes the colors of the pixels and makes them opaque: how much of them counts is the blending's
    /// matter.
    void Run(LXRGBA32i* pixels, int count) const;

    /// The values within their ranges; what isn't a number becomes the default.
    static LXAdjustment Clamped(const LXAdjustment& adjustment);

private:
    void RunByTable(LXRGBA32i* pixels, int count) const;

    LXAdjustment m_Adjustment;
    HueRule m_Hue;
    std::array<quint8, 256> m_Table; ///< of all kinds but hue and saturation
};
