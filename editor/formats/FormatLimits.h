#pragma once

#include <QtGlobal>

/// How large a picture may be that a file brings; checked against the file's header, before any memory is
/// taken for pixels.
struct FormatLimits
{
    int maxSide = 60000;                                     ///< pixels, of width and of height
    qint64 maxDecodedBytes = qint64(2) * 1024 * 1024 * 1024; ///< what decoding may hold at once
};
