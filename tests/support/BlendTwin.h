#pragma once

#include "support/TestImages.h"

/// Blending as the rules are told, pixel by pixel and in real numbers: slow, obvious, the oracle of the
/// kernels.
namespace BlendTwin {
struct Mask
{
    const PlainImage* image = nullptr; ///< null: no mask
    QRect rect;
};

/// `src` and the mask are other images than `dst`.
void Blend(const PlainImage& src, const QRect& srcRect, unsigned int mode, PlainImage& dst,
           const QRect& dstRect, double opacity, bool keepAlpha, const Mask& mask = {});

/// One pixel; `maskValue` 0 to 255.
LXRGBA32i BlendPixel(unsigned int mode, LXRGBA32i target, LXRGBA32i source, double opacity, int maskValue,
                     bool keepAlpha);
} // namespace BlendTwin
