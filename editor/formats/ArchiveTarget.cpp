#include "formats/ArchiveTarget.h"

#include <QIODevice>

zip_source_t* ArchiveTarget::MakeSource()
{
    return zip_source_function_create(Serve, this, nullptr);
}

zip_int64_t ArchiveTarget::PutError(void* data, zip_uint64_t length, int zipError)
{
    zip_error_t error;
    zip_error_init_with_code(&error, zipError);
    const zip_int64_t written = zip_error_to_data(&error, data, length);
    zip_error_fini(&error);
    return written;
}

zip_int64_t ArchiveTarget::Serve(void* target, void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    return static_cast<ArchiveTarget*>(target)->Do(data, length, command);
}

zip_int64_t ArchiveTarget::Do(void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    switch (command) {
    case ZIP_SOURCE_SUPPORTS: return ZIP_SOURCE_SUPPORTS_WRITABLE;
    case ZIP_SOURCE_STAT: {
        auto* stat = static_cast<zip_stat_t*>(data);
        zip_stat_init(stat);
        stat->size = 0;
        stat->valid = ZIP_STAT_SIZE;
        return sizeof(*stat);
    }
    case ZIP_SOURCE_WRITE: return Write(data, length);
    case ZIP_SOURCE_SEEK_WRITE: return Seek(data, length);
    case ZIP_SOURCE_TELL_WRITE: return m_Device.pos();
    case ZIP_SOURCE_ERROR: return PutError(data, length, m_bHasFailed ? ZIP_ER_WRITE : ZIP_ER_OK);
    // The device's owner commits and rolls back; reading never happens.
    default: return 0;
    }
}

zip_int64_t ArchiveTarget::Write(const void* data, zip_uint64_t length)
{
    const qint64 written = m_Device.write(static_cast<const char*>(data), static_cast<qint64>(length));
    if (written == static_cast<qint64>(length)) return written;
    m_bHasFailed = true;
    return -1;
}

zip_int64_t ArchiveTarget::Seek(void* data, zip_uint64_t length)
{
    zip_error_t error;
    zip_error_init(&error);
    const zip_int64_t place =
        zip_source_seek_compute_offset(static_cast<zip_uint64_t>(m_Device.pos()),
                                       static_cast<zip_uint64_t>(m_Device.size()), data, length, &error);
    zip_error_fini(&error);
    if (place >= 0 && m_Device.seek(place)) return 0;
    m_bHasFailed = true;
    return -1;
}
