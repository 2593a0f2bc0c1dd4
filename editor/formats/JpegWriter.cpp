#include "formats/JpegWriter.h"

#include "formats/ImageRows.h"
#include "formats/JpegCodec.h"

#include <QIODevice>

#include <jerror.h>

#include <vector>

using JpegLibrary::Guarded;
using PictureFile::Error;

namespace {
/// From here on colors are kept at full resolution.
constexpr int FineQuality = 90;

/// Lays the row on white.
void Flatten(std::vector<LXRGBA32i>& row)
{
    for (LXRGBA32i& pixel : row) {
        const int alpha = pixel.Alpha();
        if (alpha == 255) continue;
        for (int i = 0; i < 3; ++i) {
            pixel.bytes[i] = static_cast<quint8>((pixel.bytes[i] * alpha + 255 * (255 - alpha) + 127) / 255);
        }
    }
}
} // namespace

JpegWriter::JpegWriter(const EncodeJob& job) : m_Job(job)
{
    const QByteArray& exif = job.picture.exif;
    if (!exif.isEmpty() && JpegCodec::HoldsExif(exif)) {
        m_ExifContent =
            QByteArray(JpegLibrary::ExifMark, static_cast<int>(JpegLibrary::ExifMarkLength)) + exif;
    }
    m_Target.device = &job.device;
    m_Jpeg.err = JpegLibrary::InitErrors(m_Errors);
    // Nothing to destroy until the library has made it.
    m_Jpeg.mem = nullptr;
}

JpegWriter::~JpegWriter()
{
    jpeg_destroy_compress(&m_Jpeg);
}

Error JpegWriter::Write()
{
    if (!WriteHeader()) return Failure();
    const Error error = WriteRows();
    if (error != Error::None) return error;
    return Guarded(m_Errors, [this] { jpeg_finish_compress(&m_Jpeg); }) ? Error::None : Failure();
}

bool JpegWriter::WriteHeader()
{
    return Guarded(m_Errors, [this] {
        jpeg_create_compress(&m_Jpeg);
        ConnectTarget();
        m_Jpeg.image_width = static_cast<JDIMENSION>(m_Job.picture.image.Width());
        m_Jpeg.image_height = static_cast<JDIMENSION>(m_Job.picture.image.Height());
        m_Jpeg.input_components = 4;
        m_Jpeg.in_color_space = JCS_EXT_BGRX;
        jpeg_set_defaults(&m_Jpeg);
        const int quality = qBound(1, m_Job.options.jpegQuality, 100);
        jpeg_set_quality(&m_Jpeg, quality, TRUE);
        if (quality >= FineQuality) m_Jpeg.comp_info[0].h_samp_factor = m_Jpeg.comp_info[0].v_samp_factor = 1;
        if (m_Job.picture.dpi > 0) {
            constexpr UINT8 perInch = 1;
            m_Jpeg.density_unit = perInch;
            m_Jpeg.X_density = m_Jpeg.Y_density = static_cast<UINT16>(JpegCodec::Resolution(m_Job.picture));
        }
        jpeg_start_compress(&m_Jpeg, TRUE);
        WriteMetadata();
    });
}

void JpegWriter::ConnectTarget()
{
    m_Target.manager.init_destination = InitBuffer;
    m_Target.manager.empty_output_buffer = EmptyBuffer;
    m_Target.manager.term_destination = WriteRest;
    m_Jpeg.dest = &m_Target.manager;
}

void JpegWriter::InitBuffer(j_compress_ptr jpeg)
{
    auto* target = reinterpret_cast<Target*>(jpeg->dest);
    target->manager.next_output_byte = target->buffer.data();
    target->manager.free_in_buffer = target->buffer.size();
}

/// The library calls it with a full buffer, whatever the manager says is free.
boolean JpegWriter::EmptyBuffer(j_compress_ptr jpeg)
{
    WriteBuffer(jpeg, reinterpret_cast<Target*>(jpeg->dest)->buffer.size());
    InitBuffer(jpeg);
    return TRUE;
}

void JpegWriter::WriteRest(j_compress_ptr jpeg)
{
    const auto* target = reinterpret_cast<const Target*>(jpeg->dest);
    WriteBuffer(jpeg, target->buffer.size() - target->manager.free_in_buffer);
}

void JpegWriter::WriteBuffer(j_compress_ptr jpeg, size_t count)
{
    auto* target = reinterpret_cast<Target*>(jpeg->dest);
    const auto length = static_cast<qint64>(count);
    if (target->device->write(reinterpret_cast<const char*>(target->buffer.data()), length) != length) {
        jpeg->err->msg_code = JERR_FILE_WRITE;
        JpegLibrary::GiveUp(reinterpret_cast<j_common_ptr>(jpeg));
    }
}

/// Part of a guarded step.
void JpegWriter::WriteMetadata()
{
    const QByteArray& profile = m_Job.picture.iccProfile;
    if (!m_ExifContent.isEmpty()) {
        jpeg_write_marker(&m_Jpeg, JpegLibrary::ExifMarker,
                          reinterpret_cast<const JOCTET*>(m_ExifContent.constData()),
                          static_cast<unsigned int>(m_ExifContent.size()));
    }
    if (!profile.isEmpty() && JpegCodec::HoldsProfile(profile)) {
        jpeg_write_icc_profile(&m_Jpeg, reinterpret_cast<const JOCTET*>(profile.constData()),
                               static_cast<unsigned int>(profile.size()));
    }
}

Error JpegWriter::WriteRows()
{
    const LXImage32& image = m_Job.picture.image;
    ImageRowReader rows(image);
    std::vector<LXRGBA32i> row(static_cast<size_t>(image.Width()));
    auto* bytes = reinterpret_cast<JSAMPROW>(row.data());
    for (int y = 0; y < image.Height(); ++y) {
        if (m_Job.progress.IsCancelled()) return Error::Cancelled;
        m_Job.progress.Tell(static_cast<int>(qint64(y) * 1000 / image.Height()));
        rows.Get(y, row.data());
        Flatten(row);
        if (!Guarded(m_Errors, [this, &bytes] { jpeg_write_scanlines(&m_Jpeg, &bytes, 1); }))
            return Failure();
    }
    return Error::None;
}

Error JpegWriter::Failure() const
{
    return m_Errors.isOutOfMemory ? Error::OutOfMemory : Error::WriteFailed;
}
