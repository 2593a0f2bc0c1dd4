#pragma once

#include <QSize>
#include <QtGlobal>

/// How large a picture may be that a file brings; checked against the file's header, before any memory is
/// taken for pixels.
struct FormatLimits
{
    int maxSide = 60000;                                     ///< pixels, of width and of height
    qint64 maxDecodedBytes = qint64(2) * 1024 * 1024 * 1024; ///< what decoding may hold at once

    /// @param extraBytesPerPixel  what the decoder itself has to hold besides the 4 bytes of the picture
    bool Allow(const QSize& size, int extraBytesPerPixel = 0) const
    {
        if (size.isEmpty() || size.width() > maxSide || size.height() > maxSide) return false;
        return qint64(size.width()) * size.height() <= maxDecodedBytes / (4 + extraBytesPerPixel);
    }
};
