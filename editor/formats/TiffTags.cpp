#include "formats/TiffTags.h"

#include <QIODevice>
#include <QString>

#include <tiffio.h>

#include <cstdarg>
#include <cstdio>
#include <memory>

namespace {
/// Larger than any profile that means something.
constexpr tmsize_t MostBytes = tmsize_t(64) * 1024 * 1024;
constexpr double CentimetersPerInch = 2.54;

QIODevice& DeviceOf(thandle_t handle)
{
    return *static_cast<QIODevice*>(handle);
}

tmsize_t ReadBytes(thandle_t handle, void* bytes, tmsize_t length)
{
    return static_cast<tmsize_t>(DeviceOf(handle).read(static_cast<char*>(bytes), length));
}

tmsize_t WriteBytes(thandle_t handle, void* bytes, tmsize_t length)
{
    return static_cast<tmsize_t>(DeviceOf(handle).write(static_cast<const char*>(bytes), length));
}

toff_t Seek(thandle_t handle, toff_t offset, int whence)
{
    QIODevice& device = DeviceOf(handle);
    qint64 place = static_cast<qint64>(offset);
    if (whence == SEEK_CUR) place += device.pos();
    if (whence == SEEK_END) place += device.size();
    return place >= 0 && device.seek(place) ? static_cast<toff_t>(place) : static_cast<toff_t>(-1);
}

/// The device belongs to somebody else.
int CloseNothing(thandle_t)
{
    return 0;
}

toff_t SizeOf(thandle_t handle)
{
    return static_cast<toff_t>(DeviceOf(handle).size());
}

/// The library names the tag that it leaves out.
int NoteComplaint(TIFF*, void* hasBrokenProfile, const char*, const char* format, va_list values)
{
    if (QString::vasprintf(format, values).contains(QLatin1String("ICC Profile"))) {
        *static_cast<bool*>(hasBrokenProfile) = true;
    }
    return 1; // nothing is printed
}

using Tiff = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

/// @param mode  without memory maps, which a device doesn't have
/// @param hasBrokenProfile  outlives what is opened
Tiff Open(QIODevice& device, const char* mode, bool* hasBrokenProfile)
{
    const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(TIFFOpenOptionsAlloc(),
                                                                                   TIFFOpenOptionsFree);
    if (!options || !device.seek(0)) return {nullptr, TIFFClose};
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), MostBytes);
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), NoteComplaint, hasBrokenProfile);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), NoteComplaint, hasBrokenProfile);
    return {TIFFClientOpenExt("tiff", mode, &device, ReadBytes, WriteBytes, Seek, CloseNothing, SizeOf,
                              nullptr, nullptr, options.get()),
            TIFFClose};
}

double DpiOf(TIFF* tiff)
{
    float resolution = 0;
    uint16_t unit = RESUNIT_INCH;
    if (!TIFFGetField(tiff, TIFFTAG_XRESOLUTION, &resolution)) return 0;
    TIFFGetFieldDefaulted(tiff, TIFFTAG_RESOLUTIONUNIT, &unit);
    if (unit == RESUNIT_INCH) return resolution;
    return unit == RESUNIT_CENTIMETER ? resolution * CentimetersPerInch : 0;
}
} // namespace

TiffTags::Tags TiffTags::Read(QIODevice& device)
{
    Tags tags;
    const Tiff tiff = Open(device, "rm", &tags.hasBrokenProfile);
    if (!tiff) return tags;
    uint32_t length = 0;
    const void* profile = nullptr;
    if (TIFFGetField(tiff.get(), TIFFTAG_ICCPROFILE, &length, &profile)) {
        tags.iccProfile = QByteArray(static_cast<const char*>(profile), static_cast<int>(length));
    }
    tags.dpi = DpiOf(tiff.get());
    return tags;
}

bool TiffTags::Write(QIODevice& device, const Tags& tags)
{
    bool hasBrokenProfile = false;
    const Tiff tiff = Open(device, "r+m", &hasBrokenProfile);
    if (!tiff) return false;
    bool isSet = true;
    if (!tags.iccProfile.isEmpty()) {
        isSet = TIFFSetField(tiff.get(), TIFFTAG_ICCPROFILE, static_cast<uint32_t>(tags.iccProfile.size()),
                             tags.iccProfile.constData());
    }
    if (tags.dpi <= 0) {
        for (const uint32_t tag : {TIFFTAG_XRESOLUTION, TIFFTAG_YRESOLUTION})
            TIFFUnsetField(tiff.get(), tag);
    } else {
        isSet = isSet && TIFFSetField(tiff.get(), TIFFTAG_XRESOLUTION, tags.dpi) &&
                TIFFSetField(tiff.get(), TIFFTAG_YRESOLUTION, tags.dpi) &&
                TIFFSetField(tiff.get(), TIFFTAG_RESOLUTIONUNIT, static_cast<uint16_t>(RESUNIT_INCH));
    }
    return isSet && TIFFRewriteDirectory(tiff.get());
}
