#pragma once

#include "formats/FormatTable.h"
#include "formats/JpegLibrary.h"

#include <array>

/// Encodes one JPEG file.
class JpegWriter
{
public:
    explicit JpegWriter(const EncodeJob& job);
    ~JpegWriter();

    Q_DISABLE_COPY(JpegWriter)

    PictureFile::Error Write();

private:
    /// Where the library puts the file's bytes.
    struct Target
    {
        jpeg_destination_mgr manager; ///< first: the library hands out its address
        QIODevice* device;
        std::array<JOCTET, 64 * 1024> buffer;
    };

    static void InitBuffer(j_compress_ptr jpeg);
    static boolean EmptyBuffer(j_compress_ptr jpeg);
    static void WriteRest(j_compress_ptr jpeg);
    static void WriteBuffer(j_compress_ptr jpeg, size_t count);

    bool WriteHeader();
    void ConnectTarget();
    void WriteMetadata();
    PictureFile::Error WriteRows();
    PictureFile::Error Failure() const;

    const EncodeJob& m_Job;
    QByteArray m_ExifContent; ///< of the marker; empty when it would not fit in one
    JpegErrors m_Errors;
    Target m_Target;
    jpeg_compress_struct m_Jpeg;
};
