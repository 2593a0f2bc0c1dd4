#include "core/IccFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace {
/// Larger than any profile that means something; a link to a disk doesn't fill the memory.
constexpr qint64 MostBytes = 32 * 1024 * 1024;
/// A folder that holds more is none of profiles.
constexpr int MostFiles = 2000;

QString Tr(const char* text)
{
    return QCoreApplication::translate("IccFile", text);
}

QStringList FilesIn(const QString& folder)
{
    QStringList files;
    QDirIterator iterator(folder, {QStringLiteral("*.icc"), QStringLiteral("*.icm")},
                          QDir::Files | QDir::Readable, QDirIterator::Subdirectories);
    while (iterator.hasNext() && files.size() < MostFiles) {
        files << iterator.next();
    }
    files.sort();
    return files;
}
} // namespace

/// Those that programs agreed on; an environment may name others.
QStringList IccFile::Folders()
{
    QStringList folders;
    const QStringList roots = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const QString& root : roots) {
        folders << root + QStringLiteral("/icc") << root + QStringLiteral("/color/icc");
    }
    folders.insert(1, QDir::homePath() + QStringLiteral("/.color/icc"));
    folders << QStringLiteral("/var/lib/color/icc");
    return folders;
}

QStringList IccFile::In(const QStringList& folders)
{
    QStringList files;
    for (const QString& folder : folders) {
        files << FilesIn(folder);
    }
    files.removeDuplicates();
    return files;
}

ZKCMSProfile IccFile::Read(const QString& file, QString* message)
{
    QFile device(file);
    const QString shown = QDir::toNativeSeparators(file);
    // A pipe or a device would be waited for, or read without end.
    if (QFileInfo info(file); info.exists() && !info.isFile()) {
        *message = Tr("The color profile “%1” isn't a file.").arg(shown);
        return ZKCMSProfile();
    }
    if (!device.open(QIODevice::ReadOnly)) {
        *message = Tr("The color profile “%1” can't be read: %2").arg(shown, device.errorString());
        return ZKCMSProfile();
    }
    ZKCMSProfile profile(device.size() > MostBytes ? QByteArray() : device.readAll());
    if (profile.IsValid()) return profile;
    const QString why = profile.IsNull() ? Tr("is empty or far too large.") : WhyUnusable(profile);
    *message = Tr("The color profile “%1” %2").arg(shown, why);
    return ZKCMSProfile();
}

QString IccFile::WhyUnusable(const ZKCMSProfile& profile)
{
    switch (profile.GetKind()) {
    case ZKCMSProfile::Kind::None:
    case ZKCMSProfile::Kind::Rgb: break;
    case ZKCMSProfile::Kind::Damaged: return Tr("is damaged.");
    case ZKCMSProfile::Kind::Gray: return Tr("is made for gray pictures, not for RGB.");
    case ZKCMSProfile::Kind::Cmyk: return Tr("is made for CMYK pictures, not for RGB.");
    case ZKCMSProfile::Kind::Other: return Tr("isn't made for RGB pictures.");
    }
    return QString();
}
