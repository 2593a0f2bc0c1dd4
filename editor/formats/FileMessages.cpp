#include "formats/FileMessages.h"

#include "formats/FormatTable.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

using PictureFile::Error;

namespace {
QString FormatNames()
{
    QStringList names{QStringLiteral("OpenRaster")};
    for (const FormatEntry& entry : FormatTable()) {
        names << entry.name;
    }
    return names.join(QStringLiteral(", "));
}

QString SizeText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

qint64 PixelBytes(const QSize& size)
{
    constexpr int bytesPerPixel = 4;
    return qint64(size.width()) * size.height() * bytesPerPixel;
}
} // namespace

FileMessages::FileMessages(const QString& path)
    : m_Path(QDir::toNativeSeparators(path)),
      m_Folder(QDir::toNativeSeparators(QFileInfo(path).absolutePath())),
      m_HasFolder(QFileInfo(path).absoluteDir().exists()),
      m_IsFile(QFileInfo(path).isFile())
{}

QString FileMessages::OfReading(Error error) const
{
    switch (error) {
    case Error::None:
    case Error::Cancelled: return {};
    case Error::Missing:
        return NotOpened(tr("There is no such file. It may have been moved, renamed or deleted."));
    case Error::NotAllowed:
        return NotOpened(
            tr("You are not allowed to read it. Ask its owner, or copy it to a folder of your own."));
    case Error::UnknownFormat:
        if (!m_IsFile) return NotOpened(tr("It is a folder or a device. Choose a file inside."));
        return NotOpened(tr("It is not a picture of a kind that can be read (%1).").arg(FormatNames()));
    case Error::OutOfMemory:
        return NotOpened(tr("There is not enough memory for it. Close other pictures and try again."));
    default: return NotOpened(tr("The file is damaged, or a part of it is missing. Try another copy of it."));
    }
}

QString FileMessages::OfReading(const FormatFailure& failure) const
{
    if (failure.why.isEmpty() || failure.error == Error::Cancelled) return OfReading(failure.error);
    return NotOpened(failure.why);
}

QString FileMessages::OfEmptyFile() const
{
    return NotOpened(tr("The file is empty. Try another copy of it."));
}

QString FileMessages::OfTooLarge(const QSize& size, const FormatLimits& limits) const
{
    return NotOpened(
        tr("The picture is too large: %1 x %2 pixels, which need %3 of memory. At most %4 pixels a side and "
           "%5 of memory are allowed.")
            .arg(size.width())
            .arg(size.height())
            .arg(SizeText(PixelBytes(size)))
            .arg(limits.maxSide)
            .arg(SizeText(limits.maxDecodedBytes)));
}

QString FileMessages::OfWriting(Error error, const QString& reason) const
{
    switch (error) {
    case Error::None:
    case Error::Cancelled: return {};
    case Error::NotAllowed: return NotSaved(WhyNotCreated(reason));
    case Error::UnknownFormat:
        return NotSaved(
            tr("Its ending names no kind of picture that can be written (%1).").arg(FormatNames()));
    case Error::OutOfMemory:
        return NotSaved(tr("There is not enough memory. Close other pictures and try again."));
    default:
        return NotSaved(
            tr("It could not be written (%1). Make room on the disk, or choose another name or folder. "
               "What was there before is unchanged.")
                .arg(reason));
    }
}

QString FileMessages::OfFormatTooSmall(const QString& formatName, int maxSide) const
{
    return NotSaved(tr("A %1 file holds at most %2 pixels a side. Choose another kind of file.")
                        .arg(formatName)
                        .arg(maxSide));
}

QString FileMessages::OfTooLongList() const
{
    return NotSaved(
        tr("Its paths, texts and names together need more than %1, and the file could not be opened "
           "again. Delete paths that are not needed any more.")
            .arg(SizeText(ArchiveLimits::MostXmlBytes)));
}

QString FileMessages::NotOpened(const QString& why) const
{
    return tr("“%1” can't be opened.").arg(m_Path) + QLatin1Char('\n') + why;
}

QString FileMessages::NotSaved(const QString& why) const
{
    return tr("“%1” can't be saved.").arg(m_Path) + QLatin1Char('\n') + why;
}

QString FileMessages::WhyNotCreated(const QString& reason) const
{
    if (!m_HasFolder)
        return tr("The folder “%1” doesn't exist (any more). Choose another one.").arg(m_Folder);
    return tr("It can't be written there (%1). Choose another folder.").arg(reason);
}
