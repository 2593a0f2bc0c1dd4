#include "history/DataStream.h"

#include "history/IReader.h"
#include "history/IWriter.h"
#include "image/ImageMetadata.h"

#include <QByteArray>

#include <algorithm>
#include <map>
#include <vector>

namespace {
constexpr int TileSide = 128;

constexpr qint64 MaxLength = qint64(1) << 31; ///< what a QByteArray can hold
constexpr qint64 BlockLength = 1 << 20;

bool IsImageSize(qint32 width, qint32 height)
{
    const auto tiles = [](qint32 side) { return (quint64(side) + TileSide - 1) / TileSide; };
    return width >= 0 && height >= 0 && tiles(width) * tiles(height) <= LXImage32::MaxTiles;
}

void WriteMetadata(QDataStream& stream, const LXImage32& image)
{
    stream << image.m_Profile.GetData() << qint32(image.m_DpiX) << qint32(image.m_DpiY)
           << quint32(image.m_ExifData.size());
    for (const ZKEXIFElement& element : image.m_ExifData) {
        stream << qint32(element.tag) << element.value;
    }
}

void ReadMetadata(QDataStream& stream, LXImage32& image)
{
    QByteArray profile;
    quint32 count = 0;
    stream >> profile >> image.m_DpiX >> image.m_DpiY >> count;
    image.m_Profile = ZKCMSProfile(profile);
    while (count-- > 0 && stream.status() == QDataStream::Ok) {
        ZKEXIFElement element;
        stream >> element.tag >> element.value;
        image.m_ExifData << element;
    }
}

void ReadTile(QDataStream& stream, LXTilePointer& slot, std::vector<LXTilePointer>& tiles)
{
    quint32 number = 0;
    stream >> number;
    if (number == tiles.size()) {
        tiles.emplace_back(new LXTile);
        const LXTileWriter<LXRGBA32i> writer(tiles.back());
        if (stream.readRawData(reinterpret_cast<char*>(writer.Pixels()), LXTileManager::TileBytes) !=
            LXTileManager::TileBytes) {
            stream.setStatus(QDataStream::ReadPastEnd);
        }
    }
    if (number < tiles.size()) {
        slot = tiles[number];
    } else {
        stream.setStatus(QDataStream::ReadCorruptData);
    }
}

/// No bytes when the input ends before. Grows as bytes come, so that a damaged length doesn't become a
/// huge allocation.
QByteArray ReadBytes(IReader* reader, qint64 length)
{
    QByteArray bytes;
    while (bytes.size() < length) {
        const int done = bytes.size();
        const auto block = static_cast<int>(qMin(BlockLength, length - done));
        bytes.resize(done + block);
        if (!reader->Read(bytes.data() + done, block)) return QByteArray();
    }
    return bytes;
}
} // namespace

bool DataStream::Write(IWriter* writer, const std::function<void(QDataStream&)>& fill)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    fill(stream);
    const qint64 length = bytes.size();
    return writer->Write(&length, sizeof(length)) && writer->Write(bytes.constData(), length);
}

bool DataStream::Read(IReader* reader, const std::function<void(QDataStream&)>& take)
{
    qint64 length = 0;
    if (!reader->Read(&length, sizeof(length)) || length < 0 || length >= MaxLength) return false;
    const QByteArray bytes = ReadBytes(reader, length);
    if (bytes.size() != length) return false;
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    take(stream);
    return stream.status() == QDataStream::Ok && stream.atEnd();
}

void DataStream::WriteImage(QDataStream& stream, const LXImage32& image)
{
    WriteMetadata(stream, image);
    stream << qint32(image.Width()) << qint32(image.Height());
    std::map<const LXTile*, quint32> numbers;
    for (const LXTilePointer& tile : image.m_Tiles) {
        const auto [place, isNew] = numbers.emplace(tile.data(), static_cast<quint32>(numbers.size()));
        stream << place->second;
        if (!isNew) continue;
        const LXTileReader<LXRGBA32i> reader(*tile);
        stream.writeRawData(reinterpret_cast<const char*>(reader.Pixels()), LXTileManager::TileBytes);
    }
}

LXImage32 DataStream::ReadImage(QDataStream& stream)
{
    LXImage32 metadata;
    ReadMetadata(stream, metadata);
    qint32 width = 0;
    qint32 height = 0;
    stream >> width >> height;
    if (!IsImageSize(width, height)) {
        stream.setStatus(QDataStream::ReadCorruptData);
        return LXImage32();
    }
    LXImage32 image(width, height);
    ImageMetadata::Copy(metadata, image);
    std::vector<LXTilePointer> tiles;
    for (LXTilePointer& slot : image.m_Tiles) {
        ReadTile(stream, slot, tiles);
        if (stream.status() != QDataStream::Ok) return LXImage32();
    }
    return image;
}

namespace {
/// Each run of one tile counted as a tile of its own: never too little, and no memory is needed for it.
qint64 CountRuns(const LXImage32& image) noexcept
{
    qint64 runs = 0;
    const LXTile* former = nullptr;
    for (const LXTilePointer& tile : image.m_Tiles) {
        if (tile.data() != former) ++runs;
        former = tile.data();
    }
    return runs;
}

qint64 CountTiles(const LXImage32& image)
{
    std::vector<const LXTile*> tiles(image.m_Tiles.size());
    std::transform(image.m_Tiles.begin(), image.m_Tiles.end(), tiles.begin(),
                   [](const LXTilePointer& tile) { return tile.data(); });
    // Neighbours are often the same, which leaves little to sort.
    tiles.erase(std::unique(tiles.begin(), tiles.end()), tiles.end());
    std::sort(tiles.begin(), tiles.end());
    const auto end = std::unique(tiles.begin(), tiles.end());
    return static_cast<qint64>(end - tiles.begin());
}
} // namespace

qint64 DataStream::BytesOf(const LXImage32& image)
{
    qint64 tiles = 0;
    try {
        tiles = CountTiles(image);
    } catch (const std::bad_alloc&) {
        // What is asked for when a step is done already must not fail.
        tiles = CountRuns(image);
    }
    return tiles * LXTileManager::TileBytes;
}
