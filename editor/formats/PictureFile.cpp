#include "formats/PictureFile.h"

#include "formats/FileMessages.h"
#include "formats/FormatTable.h"
#include "formats/PictureMetadata.h"
#include "formats/SafeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <exception>

namespace {
using PictureFile::Error;

const FormatEntry* FormatOfContent(QIODevice& device)
{
    constexpr int headLength = 16;
    const QByteArray head = device.peek(headLength);
    const auto& table = FormatTable();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&head](const FormatEntry& entry) { return HasSignature(entry, head); });
    return found == table.end() ? nullptr : &*found;
}

/// Runs a codec; what image code throws, with the memory or with the swap file, means that there was no room.
template <typename Run>
Error WithoutExceptions(Run run)
{
    try {
        return run();
    } catch (const std::exception&) {
        return Error::OutOfMemory;
    }
}

PictureFile::ReadResult Failed(Error error, const QString& message)
{
    PictureFile::ReadResult result;
    result.outcome = {error, message};
    return result;
}

/// What can be told before the file is opened.
Error ErrorOfName(const QFileInfo& info)
{
    if (!info.exists()) return Error::Missing;
    // Not only folders: a pipe would keep us waiting for ever.
    return info.isFile() ? Error::None : Error::UnknownFormat;
}
} // namespace

PictureFile::ReadResult PictureFile::ReadPicture(const QString& path, const FormatLimits& limits,
                                                 const FileProgress& progress)
{
    const FileMessages messages(path);
    const Error nameError = ErrorOfName(QFileInfo(path));
    if (nameError != Error::None) return Failed(nameError, messages.OfReading(nameError));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Failed(Error::NotAllowed, messages.OfReading(Error::NotAllowed));
    if (file.size() == 0) return Failed(Error::Broken, messages.OfEmptyFile());
    const FormatEntry* entry = FormatOfContent(file);
    if (!entry) return Failed(Error::UnknownFormat, messages.OfReading(Error::UnknownFormat));

    DecodeJob job{file, limits, progress, {}, {}};
    const Error error = WithoutExceptions([&] {
        const Error decodeError = entry->decode(job);
        if (decodeError == Error::None) PictureMetadata::ApplyOrientation(job.picture);
        return decodeError;
    });
    if (error == Error::TooLarge) return Failed(error, messages.OfTooLarge(job.size, limits));
    if (error != Error::None) return Failed(error, messages.OfReading(error));
    progress.Tell(1000);
    return {{}, entry->format, job.picture};
}

PictureFile::Outcome PictureFile::WritePicture(const QString& path, Format format, const Picture& picture,
                                               const WriteOptions& options, const FileProgress& progress)
{
    const FileMessages messages(path);
    const FormatEntry* entry = FindFormat(format);
    if (!entry || !entry->encode) return {Error::UnknownFormat, messages.OfWriting(Error::UnknownFormat, {})};
    const QSize size = picture.image.Rect().size();
    if (size.isEmpty()) return {Error::OutOfMemory, messages.OfWriting(Error::OutOfMemory, {})};
    if (std::max(size.width(), size.height()) > entry->maxSide) {
        return {Error::TooLarge, messages.OfFormatTooSmall(entry->name, entry->maxSide)};
    }

    SafeFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return {Error::NotAllowed, messages.OfWriting(Error::NotAllowed, file.GetReason())};
    }
    Picture current = picture;
    PictureMetadata::Refresh(current);
    const Error error = WithoutExceptions([&] {
        return entry->encode(EncodeJob{file, current, options, progress});
    });
    if (error != Error::None) return {error, messages.OfWriting(error, file.GetReason())};
    if (!file.Finish()) return {Error::WriteFailed, messages.OfWriting(Error::WriteFailed, file.GetReason())};
    progress.Tell(1000);
    return {};
}

PictureFile::Format PictureFile::FormatOfName(const QString& path)
{
    const QString ending = QFileInfo(path).suffix().toLower();
    for (const FormatEntry& entry : FormatTable()) {
        if (entry.endings.contains(ending)) return entry.format;
    }
    return Format::Unknown;
}

bool PictureFile::CanWrite(Format format)
{
    const FormatEntry* entry = FindFormat(format);
    return entry && entry->encode;
}

bool PictureFile::KeepsAlpha(Format format)
{
    const FormatEntry* entry = FindFormat(format);
    return entry && entry->keeps.alpha;
}

bool PictureFile::KeepsColorUnderAlpha0(Format format)
{
    const FormatEntry* entry = FindFormat(format);
    return entry && entry->keeps.colorUnderAlpha0;
}

bool PictureFile::KeepsProfile(Format format)
{
    const FormatEntry* entry = FindFormat(format);
    return entry && entry->keeps.profile;
}

bool PictureFile::KeepsProfile(Format format, const QByteArray& iccProfile)
{
    if (iccProfile.isEmpty()) return true;
    return KeepsProfile(format) && FindFormat(format)->keeps.profile(iccProfile);
}

bool PictureFile::KeepsExif(Format format, const Picture& picture)
{
    if (picture.exif.isEmpty()) return true;
    const FormatEntry* entry = FindFormat(format);
    if (!entry || !entry->keeps.exif) return false;
    Picture written = picture;
    PictureMetadata::Refresh(written);
    return entry->keeps.exif(written.exif);
}

double PictureFile::SavedResolution(Format format, const Picture& picture)
{
    const FormatEntry* entry = FindFormat(format);
    if (!entry || !entry->keeps.resolution || picture.dpi <= 0) return 0;
    Picture written = picture;
    PictureMetadata::Refresh(written);
    return written.dpi > 0 ? PictureMetadata::TidyDpi(entry->keeps.resolution(written)) : 0;
}

QString PictureFile::FormatName(Format format)
{
    const FormatEntry* entry = FindFormat(format);
    return entry ? entry->name : QString();
}

QString PictureFile::DefaultEnding(Format format)
{
    const FormatEntry* entry = FindFormat(format);
    return entry ? entry->endings.first() : QString();
}
