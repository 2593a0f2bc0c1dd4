#pragma once

#include "ZKHostExport.h"

#include "image/LXImageFwd.h"

#include <QSize>

#include <vector>

/// Convolves the alpha channel of images with one kernel; color stays. Any thread.
class ZK_HOST_EXPORT LXImageConvoluteAlpha
{
public:
    /// @param kernel  size.width() * size.height() weights, row by row, copied. The one at column width / 2,
    ///                row height / 2 meets the pixel itself, those left of it the pixels left of that.
    LXImageConvoluteAlpha(const double* kernel, const QSize& size);

    /// New alpha = the weighted sum, rounded to nearest and kept within 0 to 255; outside the image counts as
    /// the nearest pixel inside. An empty kernel changes nothing. Throws what LXTileManager throws.
    void operator()(LXImage32& image) const;

private:
    QSize m_Size;
    std::vector<double> m_Kernel;
};
