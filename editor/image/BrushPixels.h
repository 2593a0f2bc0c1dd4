#pragma once

#include "image/LXRGBA32i.h"

#include <QBrush>
#include <QImage>
#include <QRect>

/// The straight pixels of a brush whose texture or gradient starts at the image's origin.
class BrushPixels
{
public:
    explicit BrushPixels(const QBrush& brush);

    /// Writes the pixels of `part` (image coordinates) to `pixels`, row by row.
    void Read(const QRect& part, LXRGBA32i* pixels) const;

private:
    void ReadTexture(const QRect& part, LXRGBA32i* pixels) const;
    void ReadPainted(const QRect& part, LXRGBA32i* pixels) const;

    QBrush m_Brush;
    QImage m_Texture; ///< straight; null unless the brush is a texture that only repeats
};
