#include "formats/OraArchiveWriter.h"

#include "formats/ArchiveTarget.h"
#include "formats/ChunkBuffer.h"

#include <zip.h>

#include <exception>
#include <list>
#include <optional>

namespace {
using PictureFile::Error;

/// An entry on its way from the encoder into the archive.
class EncodedEntry
{
public:
    EncodedEntry(OraArchiveWriter::Encode encode, Error& firstError)
        : m_Encode(std::move(encode)), m_FirstError(firstError)
    {}

    static zip_int64_t Serve(void* entry, void* data, zip_uint64_t length, zip_source_cmd_t command)
    {
        return static_cast<EncodedEntry*>(entry)->Do(data, length, command);
    }

private:
    zip_int64_t Do(void* data, zip_uint64_t length, zip_source_cmd_t command);
    bool HasBytes();
    zip_int64_t Stat(void* data);

    OraArchiveWriter::Encode m_Encode;
    Error& m_FirstError;
    std::optional<ChunkBuffer> m_Bytes;
    qint64 m_Size = -1; ///< below 0 until it is known
};

zip_int64_t EncodedEntry::Do(void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    switch (command) {
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
                                              ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
    case ZIP_SOURCE_STAT: return Stat(data);
    case ZIP_SOURCE_OPEN: return HasBytes() ? 0 : -1;
    case ZIP_SOURCE_READ: return m_Bytes->read(static_cast<char*>(data), static_cast<qint64>(length));
    case ZIP_SOURCE_CLOSE: m_Bytes.reset(); return 0;
    case ZIP_SOURCE_ERROR: return ArchiveTarget::PutError(data, length, ZIP_ER_INTERNAL);
    default: return 0;
    }
}

/// The size is needed first, and nobody knows it before everything is encoded.
bool EncodedEntry::HasBytes()
{
    if (m_Bytes) return true;
    if (m_FirstError != Error::None) return false;
    try {
        m_Bytes.emplace();
        m_FirstError = m_Encode(*m_Bytes);
    } catch (const std::exception&) {
        m_FirstError = Error::OutOfMemory;
    }
    if (m_FirstError != Error::None) {
        m_Bytes.reset();
        return false;
    }
    m_Size = m_Bytes->Written();
    return true;
}

zip_int64_t EncodedEntry::Stat(void* data)
{
    // The library asks again when the bytes are gone.
    if (m_Size < 0 && !HasBytes()) return -1;
    auto* stat = static_cast<zip_stat_t*>(data);
    zip_stat_init(stat);
    stat->size = static_cast<zip_uint64_t>(m_Size);
    stat->valid = ZIP_STAT_SIZE;
    return sizeof(*stat);
}
} // namespace

/// The library's archive, and what its sources need until it is closed.
class OraArchiveWriterPrivate
{
public:
    explicit OraArchiveWriterPrivate(QIODevice& device) : target(device)
    {
        zip_source_t* source = target.MakeSource();
        archive = source ? zip_open_from_source(source, ZIP_CREATE | ZIP_TRUNCATE, nullptr) : nullptr;
        if (!archive && source) zip_source_free(source);
    }

    ~OraArchiveWriterPrivate()
    {
        if (archive) zip_discard(archive);
    }

    Q_DISABLE_COPY(OraArchiveWriterPrivate)

    void AddSource(const QString& name, zip_source_t* source, zip_int32_t method);

    ArchiveTarget target;
    zip_t* archive = nullptr;
    std::list<QByteArray> bytes;
    std::list<EncodedEntry> encoded;
    Error firstError = Error::None;
};

void OraArchiveWriterPrivate::AddSource(const QString& name, zip_source_t* source, zip_int32_t method)
{
    const QByteArray encodedName = name.toUtf8();
    const zip_int64_t index =
        source ? zip_file_add(archive, encodedName.constData(), source, ZIP_FL_ENC_UTF_8) : -1;
    if (index >= 0 && zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), method, 0) == 0) {
        return;
    }
    if (index < 0 && source) zip_source_free(source);
    firstError = Error::OutOfMemory;
}

OraArchiveWriter::OraArchiveWriter(QIODevice& device)
    : m_pPrivate(std::make_unique<OraArchiveWriterPrivate>(device))
{}

OraArchiveWriter::~OraArchiveWriter() = default;

void OraArchiveWriter::Add(const QString& name, const QByteArray& bytes, Packing packing)
{
    if (!m_pPrivate->archive) return;
    m_pPrivate->bytes.push_back(bytes);
    const QByteArray& kept = m_pPrivate->bytes.back();
    m_pPrivate->AddSource(
        name,
        zip_source_buffer(m_pPrivate->archive, kept.constData(), static_cast<zip_uint64_t>(kept.size()), 0),
        packing == Packing::Stored ? ZIP_CM_STORE : ZIP_CM_DEFLATE);
}

void OraArchiveWriter::AddEncoded(const QString& name, const Encode& encode)
{
    if (!m_pPrivate->archive) return;
    m_pPrivate->encoded.emplace_back(encode, m_pPrivate->firstError);
    m_pPrivate->AddSource(
        name, zip_source_function(m_pPrivate->archive, EncodedEntry::Serve, &m_pPrivate->encoded.back()),
        ZIP_CM_STORE);
}

Error OraArchiveWriter::Finish()
{
    OraArchiveWriterPrivate& d = *m_pPrivate;
    if (!d.archive) return Error::OutOfMemory;
    if (d.firstError != Error::None) return d.firstError;
    if (zip_close(d.archive) == 0) {
        d.archive = nullptr;
        return Error::None;
    }
    if (d.firstError != Error::None) return d.firstError;
    return d.target.HasFailed() ? Error::WriteFailed : Error::OutOfMemory;
}
