#include "formats/WebpChunks.h"

#include <webp/mux.h>

#include <memory>

namespace {
using Mux = std::unique_ptr<WebPMux, decltype(&WebPMuxDelete)>;

constexpr const char* ProfileName = "ICCP";
constexpr const char* ExifName = "EXIF";

/// Refers to the bytes.
WebPData DataOf(const QByteArray& bytes)
{
    return {reinterpret_cast<const uint8_t*>(bytes.constData()), static_cast<size_t>(bytes.size())};
}

Mux Open(const QByteArray& file)
{
    const WebPData data = DataOf(file);
    return {WebPMuxCreate(&data, 0), WebPMuxDelete};
}

QByteArray ChunkOf(const Mux& mux, const char* name)
{
    WebPData chunk;
    if (WebPMuxGetChunk(mux.get(), name, &chunk) != WEBP_MUX_OK) return QByteArray();
    return QByteArray(reinterpret_cast<const char*>(chunk.bytes), static_cast<int>(chunk.size));
}

bool Put(const Mux& mux, const char* name, const QByteArray& bytes)
{
    if (bytes.isEmpty()) return true;
    const WebPData chunk = DataOf(bytes);
    return WebPMuxSetChunk(mux.get(), name, &chunk, 0) == WEBP_MUX_OK;
}
} // namespace

WebpChunks::Chunks WebpChunks::Read(const QByteArray& file)
{
    const Mux mux = Open(file);
    if (!mux) return {};
    Chunks chunks{ChunkOf(mux, ProfileName), ChunkOf(mux, ExifName)};
    const QByteArray mark("Exif\0\0", 6);
    if (chunks.exif.startsWith(mark)) chunks.exif.remove(0, mark.size());
    return chunks;
}

QByteArray WebpChunks::With(const QByteArray& file, const Chunks& chunks)
{
    if (chunks.iccProfile.isEmpty() && chunks.exif.isEmpty()) return file;
    const Mux mux = Open(file);
    if (!mux || !Put(mux, ProfileName, chunks.iccProfile) || !Put(mux, ExifName, chunks.exif))
        return QByteArray();
    WebPData assembled;
    WebPDataInit(&assembled);
    QByteArray bytes;
    if (WebPMuxAssemble(mux.get(), &assembled) == WEBP_MUX_OK) {
        bytes = QByteArray(reinterpret_cast<const char*>(assembled.bytes), static_cast<int>(assembled.size));
    }
    WebPDataClear(&assembled);
    return bytes;
}
