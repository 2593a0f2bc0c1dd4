#include "formats/OraArchiveReader.h"

#include "formats/ArchiveDirectory.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>

#include <zip.h>

#include <algorithm>
#include <array>

namespace {
using PictureFile::Error;

QString SizeText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

/// A name that could mean a place outside, wherever somebody unpacks the archive.
bool IsUnsafe(const QString& name)
{
    if (name.startsWith('/') || name.contains('\\') || name.contains(':')) return true;
    const auto isControl = [](QChar letter) { return letter.category() == QChar::Other_Control; };
    if (std::any_of(name.begin(), name.end(), isControl)) return true;
    return name.split('/').contains(QStringLiteral(".."));
}

QString Shown(QString name)
{
    constexpr int longest = 60;
    for (QChar& letter : name) {
        if (!letter.isPrint()) letter = '?';
    }
    return name.size() > longest ? name.left(longest) + QStringLiteral("…") : name;
}

/// One entry while it is unpacked. It never gives more than the directory says.
class EntryDevice : public QIODevice
{
public:
    EntryDevice(zip_file* file, qint64 size) : m_pFile(file), m_Left(size)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    ~EntryDevice() override { zip_fclose(m_pFile); }

    Q_DISABLE_COPY(EntryDevice)

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 length) override
    {
        if (m_Left == 0) return IsAtEnd() ? 0 : -1;
        const qint64 wanted = std::min(length, m_Left);
        qint64 done = 0;
        while (done < wanted) {
            const zip_int64_t count =
                zip_fread(m_pFile, data + done, static_cast<zip_uint64_t>(wanted - done));
            if (count <= 0) return -1;
            done += count;
        }
        m_Left -= done;
        return done;
    }

    qint64 writeData(const char*, qint64) override { return -1; }

private:
    /// The library compares the check sum when it meets the end.
    bool IsAtEnd()
    {
        char more = 0;
        return zip_fread(m_pFile, &more, 1) == 0;
    }

    zip_file* m_pFile;
    qint64 m_Left;
};
} // namespace

OraArchiveReader::~OraArchiveReader()
{
    if (m_pZip) zip_discard(m_pZip);
}

FormatFailure OraArchiveReader::Open(const QString& path, const ArchiveLimits& limits)
{
    if (!ArchiveDirectory::HasAtMost(path, limits.maxEntries)) {
        return {Error::TooLarge, tr("It claims to hold more than %1 parts.").arg(limits.maxEntries)};
    }
    int error = 0;
    m_pZip = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, &error);
    if (!m_pZip) return {error == ZIP_ER_MEMORY ? Error::OutOfMemory : Error::Broken, {}};
    return TakeDirectory(limits);
}

FormatFailure OraArchiveReader::TakeDirectory(const ArchiveLimits& limits)
{
    const zip_int64_t count = zip_get_num_entries(m_pZip, 0);
    if (count > limits.maxEntries) {
        return {Error::TooLarge,
                tr("It holds %1 parts; at most %2 are allowed.").arg(count).arg(limits.maxEntries)};
    }
    for (zip_int64_t index = 0; index < count; ++index) {
        FormatFailure failure = TakeEntry(static_cast<quint64>(index), limits);
        if (!failure.IsNone()) return failure;
    }
    return {};
}

FormatFailure OraArchiveReader::TakeEntry(quint64 index, const ArchiveLimits& limits)
{
    zip_stat_t stat;
    zip_stat_init(&stat);
    constexpr zip_uint64_t needed = ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD;
    if (zip_stat_index(m_pZip, index, 0, &stat) != 0 || (stat.valid & needed) != needed) {
        return {Error::Broken, {}};
    }
    const QString name = QString::fromUtf8(stat.name);
    if (name.isEmpty() || IsUnsafe(name)) {
        return {Error::Broken, tr("It holds a part with an unsafe name (“%1”).").arg(Shown(name))};
    }
    if (name.endsWith('/')) return {};
    if (Has(name)) return {Error::Broken, tr("It holds two parts named “%1”.").arg(Shown(name))};

    const auto size = static_cast<qint64>(std::min<zip_uint64_t>(stat.size, limits.maxExpandedBytes + 1));
    m_Expanded += size;
    if (m_Expanded > limits.maxExpandedBytes) {
        return {Error::TooLarge, tr("Unpacked it would need more than %1, which is the most that is allowed.")
                                     .arg(SizeText(limits.maxExpandedBytes))};
    }
    if (size > limits.freeRatioBytes && stat.size / limits.maxRatio >= stat.comp_size) {
        return {
            Error::TooLarge,
            tr("A part of it (“%1”) needs %2 unpacked, which is suspiciously much for the %3 that it has.")
                .arg(Shown(name), SizeText(size), SizeText(static_cast<qint64>(stat.comp_size)))};
    }
    m_Names << name;
    m_Entries.insert(name, {index, size, stat.comp_method != ZIP_CM_STORE});
    return {};
}

FormatFailure OraArchiveReader::ReadAll(const QString& name, qint64 most, QByteArray* bytes) const
{
    const qint64 size = SizeOf(name);
    if (size > most) {
        return {Error::TooLarge, tr("A part of it (“%1”) needs %2 unpacked; at most %3 is allowed.")
                                     .arg(Shown(name), SizeText(size), SizeText(most))};
    }
    const std::unique_ptr<QIODevice> entry = OpenEntry(name);
    if (!entry) return {Error::Broken, {}};
    *bytes = entry->read(size);
    return {bytes->size() == size && IsSoundToItsEnd(*entry) ? Error::None : Error::Broken, {}};
}

std::unique_ptr<QIODevice> OraArchiveReader::OpenEntry(const QString& name) const
{
    const auto found = m_Entries.constFind(name);
    if (found == m_Entries.constEnd()) return nullptr;
    zip_file* file = zip_fopen_index(m_pZip, found->index, 0);
    if (!file) return nullptr;
    return std::make_unique<EntryDevice>(file, found->size);
}

bool OraArchiveReader::IsSoundToItsEnd(QIODevice& entry)
{
    constexpr int portion = 65536;
    std::array<char, portion> bytes{};
    qint64 count = 0;
    do {
        count = entry.read(bytes.data(), bytes.size());
    } while (count > 0);
    return count == 0;
}
