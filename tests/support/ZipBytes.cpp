#include "support/ZipBytes.h"

#include <QMap>
#include <QtEndian>

#include <zlib.h>

namespace {
constexpr quint32 LocalMark = 0x04034B50;
constexpr quint32 DirectoryMark = 0x02014B50;
constexpr quint32 EndMark = 0x06054B50;
constexpr int LocalBytes = 30;
constexpr int DirectoryBytes = 46;
constexpr int EndBytes = 22;
constexpr quint16 Utf8Flag = 0x800;

void Put16(QByteArray& bytes, quint32 number)
{
    const quint16 little = qToLittleEndian(static_cast<quint16>(number));
    bytes.append(reinterpret_cast<const char*>(&little), sizeof(little));
}

void Put32(QByteArray& bytes, quint32 number)
{
    const quint32 little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof(little));
}

quint32 Get16(const QByteArray& bytes, int at)
{
    return at + 2 <= bytes.size() ? qFromLittleEndian<quint16>(bytes.constData() + at) : 0;
}

quint32 Get32(const QByteArray& bytes, int at)
{
    return at + 4 <= bytes.size() ? qFromLittleEndian<quint32>(bytes.constData() + at) : 0;
}

quint32 Sum(const QByteArray& bytes)
{
    return static_cast<quint32>(
        crc32(0, reinterpret_cast<const Bytef*>(bytes.constData()), static_cast<uInt>(bytes.size())));
}

/// From the version to the length of the extra fields: the same in both headers.
void PutCommon(QByteArray& bytes, const ZipBytes::Entry& entry, const QByteArray& packed, bool isDirectory)
{
    const auto claimed = [isDirectory](const std::optional<quint32>& claim, quint32 truth) {
        return isDirectory ? claim.value_or(truth) : truth;
    };
    Put16(bytes, 20);
    Put16(bytes, Utf8Flag);
    Put16(bytes, entry.isDeflated ? 8 : 0);
    Put32(bytes, 0x00210000); // the first day there is
    Put32(bytes, claimed(entry.claimedSum, Sum(entry.bytes)));
    Put32(bytes, claimed(entry.claimedPackedSize, static_cast<quint32>(packed.size())));
    Put32(bytes, claimed(entry.claimedSize, static_cast<quint32>(entry.bytes.size())));
    Put16(bytes, static_cast<quint32>(entry.name.toUtf8().size()));
    Put16(bytes, 0);
}

bool Inflate(const QByteArray& packed, quint32 size, QByteArray* bytes)
{
    bytes->resize(static_cast<int>(size));
    z_stream stream{};
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) return false;
    QByteArray input = packed;
    stream.next_in = reinterpret_cast<Bytef*>(input.data());
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes->data());
    stream.avail_out = size;
    const int result = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    return result == Z_STREAM_END && stream.avail_out == 0;
}

/// What is wrong with the entry that the directory tells of at this place; empty for nothing.
QString ReadEntry(const QByteArray& archive, int at, ZipBytes::Entry* entry, int* localAt)
{
    if (Get32(archive, at) != DirectoryMark) return "no entry of the directory";
    *localAt = static_cast<int>(Get32(archive, at + 42));
    if (Get32(archive, *localAt) != LocalMark) return "no local header";
    // Version, flags, method, time, sum, sizes and the name's length.
    if (archive.mid(at + 6, 24) != archive.mid(*localAt + 4, 24)) return "the two headers differ";
    const int nameLength = static_cast<int>(Get16(archive, at + 28));
    const QByteArray name = archive.mid(at + DirectoryBytes, nameLength);
    if (name != archive.mid(*localAt + LocalBytes, nameLength)) return "the two names differ";
    const auto packedSize = static_cast<int>(Get32(archive, at + 20));
    const quint32 size = Get32(archive, at + 24);
    const int dataAt = *localAt + LocalBytes + nameLength + static_cast<int>(Get16(archive, *localAt + 28));
    const QByteArray packed = archive.mid(dataAt, packedSize);
    if (packed.size() != packedSize) return "cut off";
    entry->name = QString::fromUtf8(name);
    entry->isDeflated = Get16(archive, at + 10) == 8;
    entry->bytes = packed;
    if (entry->isDeflated && !Inflate(packed, size, &entry->bytes)) return "not packed as told";
    if (static_cast<quint32>(entry->bytes.size()) != size) return "another size";
    return Sum(entry->bytes) == Get32(archive, at + 16) ? QString() : "another check sum";
}
} // namespace

QByteArray ZipBytes::Deflate(const QByteArray& bytes)
{
    z_stream stream{};
    if (deflateInit2(&stream, 9, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK) return {};
    QByteArray input = bytes;
    QByteArray packed(static_cast<int>(deflateBound(&stream, static_cast<uLong>(bytes.size()))), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(input.data());
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.truncate(static_cast<int>(stream.total_out));
    deflateEnd(&stream);
    return packed;
}

ZipBytes::Archive ZipBytes::Write(const QVector<Entry>& entries)
{
    Archive archive;
    QByteArray& bytes = archive.bytes;
    QByteArray directory;
    QVector<int> directoryBoundaries;
    for (const Entry& entry : entries) {
        QByteArray packed = entry.packed;
        if (packed.isNull()) packed = entry.isDeflated ? Deflate(entry.bytes) : entry.bytes;
        const QByteArray name = entry.name.toUtf8();
        Put32(directory, DirectoryMark);
        Put16(directory, 20);
        PutCommon(directory, entry, packed, true);
        directory.append(QByteArray(10, '\0')); // comment, disk, attributes
        Put32(directory, entry.claimedOffset.value_or(static_cast<quint32>(bytes.size())));
        directoryBoundaries << directory.size();
        directory.append(name);
        directoryBoundaries << directory.size();

        archive.boundaries << bytes.size();
        Put32(bytes, LocalMark);
        PutCommon(bytes, entry, packed, false);
        archive.boundaries << bytes.size();
        bytes.append(name);
        archive.boundaries << bytes.size();
        bytes.append(packed);
    }
    archive.directoryAt = bytes.size();
    archive.boundaries << archive.directoryAt;
    for (const int boundary : directoryBoundaries) {
        archive.boundaries << archive.directoryAt + boundary;
    }
    bytes.append(directory);
    archive.endAt = bytes.size();
    Put32(bytes, EndMark);
    Put32(bytes, 0);
    Put16(bytes, static_cast<quint32>(entries.size()));
    Put16(bytes, static_cast<quint32>(entries.size()));
    Put32(bytes, static_cast<quint32>(directory.size()));
    Put32(bytes, static_cast<quint32>(archive.directoryAt));
    Put16(bytes, 0);
    return archive;
}

QVector<ZipBytes::Entry> ZipBytes::Read(const QByteArray& archive, QString* complaint)
{
    const int endAt = archive.size() - EndBytes;
    if (endAt < 0 || Get32(archive, endAt) != EndMark) {
        *complaint = "no end record";
        return {};
    }
    QMap<int, Entry> placed;
    int at = static_cast<int>(Get32(archive, endAt + 16));
    for (quint32 i = 0; i < Get16(archive, endAt + 10); ++i) {
        Entry entry;
        int localAt = 0;
        *complaint = ReadEntry(archive, at, &entry, &localAt);
        if (!complaint->isEmpty()) return {};
        placed.insert(localAt, entry);
        at += DirectoryBytes +
              static_cast<int>(Get16(archive, at + 28) + Get16(archive, at + 30) + Get16(archive, at + 32));
    }
    return placed.values().toVector();
}
