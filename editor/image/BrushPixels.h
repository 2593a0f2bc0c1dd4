#pragma once

#include "image/GradientPixels.h"
#include "image/LXRGBA32i.h"

#include <QBrush>
#include <QImage>
#include <QRect>

#include <optional>

/// The straight pixels of a brush whose texture or gradient starts at the image's origin. Several threads
/// may read one at once.
class BrushPixels
{
public:
    explicit BrushPixels(const QBrush& brush);

    /// Whether all pixels are the same.
    bool IsOneColor() const { return m_Brush.style() == Qt::SolidPattern; }

    bool IsOpaqueColor() const { return IsOneColor() && m_Brush.isOpaque(); }

    /// Writes the pixels of `part` (image coordinates) to `pixels`, row by row.
    void Read(const QRect& part, LXRGBA32i* pixels) const;

private:
    void ReadTexture(const QRect& part, LXRGBA32i* pixels) const;
    void ReadPainted(const QRect& part, LXRGBA32i* pixels) const;

    QBrush m_Brush;
    QImage m_Texture; ///< straight; null unless the brush is a texture that only repeats
    std::optional<GradientPixels> m_Gradient;
};
