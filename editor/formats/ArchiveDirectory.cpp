#include "formats/ArchiveDirectory.h"

#include <QByteArray>
#include <QFile>
#include <QtEndian>

#include <algorithm>

namespace {
constexpr int RecordBytes = 22;
constexpr int LongestComment = 65535;
constexpr int CountAt = 10;
constexpr int SizeAt = 12;
/// What one entry of the directory takes: its fixed part, a long name and some extra fields.
constexpr qint64 EntryBytes = 46 + 1024;

template <typename Number>
Number NumberAt(const QByteArray& bytes, int at)
{
    return qFromLittleEndian<Number>(bytes.constData() + at);
}
} // namespace

bool ArchiveDirectory::HasAtMost(const QString& path, int maxEntries)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return true;
    const qint64 tail = std::min<qint64>(file.size(), RecordBytes + LongestComment);
    if (!file.seek(file.size() - tail)) return true;
    const QByteArray bytes = file.read(tail);
    // Any of them may be the one that the library takes.
    const QByteArray mark = QByteArrayLiteral("PK\x05\x06");
    for (int at = bytes.indexOf(mark); at >= 0 && at + RecordBytes <= bytes.size();
         at = bytes.indexOf(mark, at + 1)) {
        if (NumberAt<quint16>(bytes, at + CountAt) > maxEntries) return false;
        if (NumberAt<quint32>(bytes, at + SizeAt) > maxEntries * EntryBytes) return false;
    }
    return true;
}
