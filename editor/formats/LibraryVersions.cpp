#include "formats/LibraryVersions.h"

#include <jpeglib.h>
#include <png.h>
#include <tiffio.h>
#include <webp/mux.h>
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

/// The library tells its makers too.
QString TiffVersion()
{
    return QString::fromLatin1(TIFFGetVersion()).section('\n', 0, 0).section(' ', -1);
}

/// The library gives it a byte each.
QString WebpVersion()
{
    const int number = WebPGetMuxVersion();
    return QStringLiteral("%1.%2.%3").arg(number >> 16 & 0xFF).arg(number >> 8 & 0xFF).arg(number & 0xFF);
}
} // namespace

QStringList FormatLibraryVersions()
{
    return {
        QStringLiteral("libjpeg-turbo %1").arg(JpegVersion()),
        QStringLiteral("libpng %1").arg(QLatin1String(png_get_libpng_ver(nullptr))),
        QStringLiteral("libtiff %1").arg(TiffVersion()),
        QStringLiteral("libwebp %1").arg(WebpVersion()),
        QStringLiteral("libzip %1").arg(QLatin1String(zip_libzip_version())),
        QStringLiteral("zlib %1").arg(QLatin1String(zlibVersion())),
    };
}
