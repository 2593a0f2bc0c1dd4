#pragma once

#include "formats/FormatFailure.h"
#include "formats/FormatLimits.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QHash>
#include <QIODevice>
#include <QStringList>

#include <memory>

struct zip;
struct zip_file;

/// The entries of a zip archive, read one by one. No entry's name is ever used as a path. Any thread, one at
/// a time.
class OraArchiveReader
{
    Q_DECLARE_TR_FUNCTIONS(OraArchiveReader)

public:
    OraArchiveReader() = default;
    ~OraArchiveReader();
    Q_DISABLE_COPY(OraArchiveReader)

    /// Opens the archive and looks at its directory: numbers, sizes, names. Nothing is unpacked.
    FormatFailure Open(const QString& path, const ArchiveLimits& limits);

    /// In the order of the archive, folders left out.
    const QStringList& Names() const { return m_Names; }

    bool Has(const QString& name) const { return m_Entries.contains(name); }

    /// Unpacked, as the directory says; 0 for an unknown name.
    qint64 SizeOf(const QString& name) const { return m_Entries.value(name).size; }

    bool IsPacked(const QString& name) const { return m_Entries.value(name).isPacked; }

    /// The whole entry. Broken when it is not what the directory says, TooLarge when that is above `most`.
    FormatFailure ReadAll(const QString& name, qint64 most, QByteArray* bytes) const;

    /// A sequential device; null when the entry can't be read. Only while this object lives.
    std::unique_ptr<QIODevice> OpenEntry(const QString& name) const;

    /// Reads the device to its end; false when the entry is not what the directory says, its check sum
    /// included.
    static bool IsSoundToItsEnd(QIODevice& entry);

private:
    struct Entry
    {
        quint64 index = 0;
        qint64 size = 0;
        bool isPacked = false;
    };

    FormatFailure TakeDirectory(const ArchiveLimits& limits);
    FormatFailure TakeEntry(quint64 index, const ArchiveLimits& limits);

    zip* m_pZip = nullptr;
    QStringList m_Names;
    QHash<QString, Entry> m_Entries;
    qint64 m_Expanded = 0;
};
