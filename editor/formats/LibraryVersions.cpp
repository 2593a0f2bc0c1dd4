#include "formats/LibraryVersions.h"

#include <jpeglib.h>
#include <png.h>
#include <zip.h>
#include <zlib.h>

#include <cstdio>

namespace {
/// The header writes it as 2001005 for 2.1.5.
QString JpegVersion()
{
    constexpr int number = LIBJPEG_TURBO_VERSION_NUMBER;
    return QStringLiteral("%1.%2.%3").arg(number / 1000000).arg(number / 1000 % 1000).arg(number % 1000);
}
} // namespace

QStringList FormatLibraryVersions()
{
    return {
        QStringLiteral("libjpeg-turbo %1").arg(JpegVersion()),
        QStringLiteral("libpng %1").arg(QLatin1String(png_get_libpng_ver(nullptr))),
        QStringLiteral("libzip %1").arg(QLatin1String(zip_libzip_version())),
        QStringLiteral("zlib %1").arg(QLatin1String(zlibVersion())),
    };
}
