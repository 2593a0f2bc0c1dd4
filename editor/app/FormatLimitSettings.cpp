#include "app/FormatLimitSettings.h"

#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"

namespace {
const QLatin1String LargestSideKey("Files/LargestSide");
const QLatin1String LargestDecodedKey("Files/LargestDecodedMegabytes");
const QLatin1String MostLayersKey("Files/MostLayers");
const QLatin1String MostPartsKey("Files/MostParts");
const QLatin1String LargestLayersKey("Files/LargestLayersMegabytes");
const QLatin1String LargestUnpackedKey("Files/LargestUnpackedMegabytes");
constexpr qint64 MostItems = 60000; // as many as an archive's directory counts
constexpr qint64 Megabyte = 1024 * 1024;
constexpr qint64 MostMegabytes = 1024 * 1024;

/// The value of a setting, or the default where it is missing, no number or out of range.
qint64 ValueOf(const QString& key, qint64 defaultValue, qint64 most)
{
    bool isNumber = false;
    const qint64 value = ZKApplication::GetUserValue(key, defaultValue).toLongLong(&isNumber);
    return isNumber && value > 0 && value <= most ? value : defaultValue;
}
} // namespace

FormatLimits FormatLimitSettings::Read()
{
    FormatLimits limits;
    limits.maxSide =
        static_cast<int>(ValueOf(LargestSideKey, limits.maxSide, LXDocumentInterface::MAX_DOC_DIMENSION));
    limits.maxDecodedBytes =
        ValueOf(LargestDecodedKey, limits.maxDecodedBytes / Megabyte, MostMegabytes) * Megabyte;
    ArchiveLimits& archive = limits.archive;
    archive.maxLayers = static_cast<int>(ValueOf(MostLayersKey, archive.maxLayers, MostItems));
    archive.maxEntries = static_cast<int>(ValueOf(MostPartsKey, archive.maxEntries, MostItems));
    archive.maxLayerBytes =
        ValueOf(LargestLayersKey, archive.maxLayerBytes / Megabyte, MostMegabytes) * Megabyte;
    archive.maxExpandedBytes =
        ValueOf(LargestUnpackedKey, archive.maxExpandedBytes / Megabyte, MostMegabytes) * Megabyte;
    return limits;
}

void FormatLimitSettings::Write(const FormatLimits& limits)
{
    ZKApplication::SetUserValue(LargestSideKey, limits.maxSide);
    ZKApplication::SetUserValue(LargestDecodedKey, limits.maxDecodedBytes / Megabyte);
}
