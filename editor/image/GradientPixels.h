#pragma once

#include "image/GradientKernels.h"
#include "image/LXRGBA32i.h"

#include <QBrush>
#include <QTransform>

#include <optional>
#include <vector>

/// The straight pixels of a gradient brush: at a pixel's middle, from a table of straight colors, so within
/// one level of what a painter mixes premultiplied. Several threads may read one at once.
class GradientPixels
{
public:
    /// None for other brushes, and for gradients of rare kinds: those that stretch with what is painted,
    /// radial ones with a focus away from the middle, and those in perspective.
    static std::optional<GradientPixels> Of(const QBrush& brush);

    /// Writes `count` pixels from (x, y) on, image coordinates.
    void Row(int x, int y, int count, LXRGBA32i* pixels) const;

private:
    enum class Kind
    {
        Linear,
        Radial,
        Conical
    };

    void SetLinear(const QLinearGradient& gradient);
    void SetRadial(const QRadialGradient& gradient);
    void SetConical(const QConicalGradient& gradient);

    Kind m_Kind = Kind::Linear;
    GradientRule m_Rule;
    /// From the image to where the gradient is plain: its x counts from 0 to 1 along a linear gradient; a
    /// radial one has its middle at the origin and radius 1; a conical one begins to the right.
    QTransform m_ToPlain;
    std::vector<LXRGBA32i> m_Table;
};
