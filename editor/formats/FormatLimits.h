#pragma once

#include <QSize>
#include <QtGlobal>

/// What an archive with layers may hold; checked against its directory, before anything is unpacked.
struct ArchiveLimits
{
    /// Of the list of layers. A longer one isn't written: nobody could open it again.
    static constexpr qint64 MostXmlBytes = qint64(64) * 1024 * 1024;

    int maxEntries = 10000;
    int maxLayers = 2000;                                   ///< and at most so many kept selections
    qint64 maxLayerBytes = qint64(16) * 1024 * 1024 * 1024; ///< pixels of all layers, masks and the selection
    qint64 maxExpandedBytes = qint64(8) * 1024 * 1024 * 1024; ///< all entries, unpacked
    qint64 maxKeptBytes = qint64(256) * 1024 * 1024; ///< entries that are only carried along, metadata too
    qint64 maxXmlBytes = MostXmlBytes;
    int maxXmlDepth = 64;

    /// Entries up to this size may be packed as tightly as they like.
    qint64 freeRatioBytes = qint64(16) * 1024 * 1024;
    int maxRatio = 200; ///< unpacked bytes for each packed one, of a larger entry
};

/// How large a picture may be that a file brings; checked against the file's header, before any memory is
/// taken for pixels.
struct FormatLimits
{
    int maxSide = 60000;                                     ///< pixels, of width and of height
    qint64 maxDecodedBytes = qint64(2) * 1024 * 1024 * 1024; ///< what decoding one image may hold at once
    ArchiveLimits archive = {};

    /// @param extraBytesPerPixel  what the decoder itself has to hold besides the 4 bytes of the picture
    bool Allow(const QSize& size, int extraBytesPerPixel = 0) const
    {
        if (size.isEmpty() || size.width() > maxSide || size.height() > maxSide) return false;
        return qint64(size.width()) * size.height() <= maxDecodedBytes / (4 + extraBytesPerPixel);
    }
};
