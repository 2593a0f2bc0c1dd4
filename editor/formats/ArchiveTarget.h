#pragma once

#include <QtGlobal>

#include <zip.h>

class QIODevice;

/// A device as the place into which libzip writes an archive. One thread.
class ArchiveTarget
{
public:
    /// @param device  open for writing, with random access; outlives the sources
    explicit ArchiveTarget(QIODevice& device) : m_Device(device) {}

    /// For zip_open_from_source, which takes it over; null without memory. The target has to outlive it.
    zip_source_t* MakeSource();

    /// Whether the device refused something.
    bool HasFailed() const { return m_bHasFailed; }

    /// Answers the library's question for the error.
    static zip_int64_t PutError(void* data, zip_uint64_t length, int zipError);

private:
    static zip_int64_t Serve(void* target, void* data, zip_uint64_t length, zip_source_cmd_t command);
    zip_int64_t Do(void* data, zip_uint64_t length, zip_source_cmd_t command);
    zip_int64_t Write(const void* data, zip_uint64_t length);
    zip_int64_t Seek(void* data, zip_uint64_t length);

    QIODevice& m_Device;
    bool m_bHasFailed = false;
};
