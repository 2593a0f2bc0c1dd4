#pragma once

#include "formats/FormatTable.h"
#include "formats/JpegLibrary.h"

#include <array>

class ImageRowWriter;

/// Decodes one JPEG file.
class JpegReader
{
public:
    explicit JpegReader(DecodeJob& job);
    ~JpegReader();

    Q_DISABLE_COPY(JpegReader)

    PictureFile::Error Read();

private:
    /// Where the library takes the file's bytes from.
    struct Source
    {
        jpeg_source_mgr manager; ///< first: the library hands out its address
        QIODevice* device;
        std::array<JOCTET, 64 * 1024> buffer;
    };

    /// Whom the library calls while it gathers the scans of a progressive file.
    struct Monitor
    {
        jpeg_progress_mgr manager; ///< first: the library hands out its address
        const FileProgress* progress;
    };

    static boolean FillBuffer(j_decompress_ptr jpeg);
    static void Skip(j_decompress_ptr jpeg, long count);
    static void WatchScans(j_common_ptr jpeg);

    bool ReadHeader();
    void ConnectSource();
    /// What the library holds besides the picture: all coefficients, when the file comes in several scans.
    int GatheredBytesPerPixel();
    bool Start();
    PictureFile::Error ReadRows(ImageRowWriter& rows);
    PictureFile::Error Failure() const;
    void TakeExif();
    bool TakeProfile();
    bool HasProfileSegment() const;
    void TakeResolution();

    DecodeJob& m_Job;
    JpegErrors m_Errors;
    Source m_Source;
    Monitor m_Monitor;
    jpeg_decompress_struct m_Jpeg;
};
