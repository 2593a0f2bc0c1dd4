#include "formats/JpegReader.h"

#include "formats/ExifBlock.h"
#include "formats/ImageRows.h"
#include "formats/PictureMetadata.h"

#include <QIODevice>

#include <jerror.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

using JpegLibrary::Guarded;
using PictureFile::Error;

namespace {
/// More scans than any encoder makes: each costs a walk over the whole picture, and a small file can hold
/// very many.
constexpr int MaxScans = 500;

constexpr double CentimetersPerInch = 2.54;

bool IsCmyk(J_COLOR_SPACE space)
{
    return space == JCS_CMYK || space == JCS_YCCK;
}

/// Ink to light, in place, a pixel of four bytes each.
/// @param isInverted  the bytes tell how much paper is left, as one well-known program writes them
void ConvertCmykRow(std::vector<LXRGBA32i>& row, bool isInverted)
{
    for (LXRGBA32i& pixel : row) {
        int paper[4];
        for (int i = 0; i < 4; ++i) {
            paper[i] = isInverted ? pixel.bytes[i] : 255 - pixel.bytes[i];
        }
        const auto light = [&paper](int ink) {
            return static_cast<quint32>((paper[ink] * paper[3] + 127) / 255);
        };
        pixel = LXRGBA32i(0xFF000000U | light(0) << 16 | light(1) << 8 | light(2));
    }
}
} // namespace

JpegReader::JpegReader(DecodeJob& job) : m_Job(job)
{
    m_Source.device = &job.device;
    m_Monitor.progress = &job.progress;
    m_Jpeg.err = JpegLibrary::InitErrors(m_Errors);
    // Nothing to destroy until the library has made it.
    m_Jpeg.mem = nullptr;
}

JpegReader::~JpegReader()
{
    jpeg_destroy_decompress(&m_Jpeg);
}

Error JpegReader::Read()
{
    if (!ReadHeader()) return Failure();
    m_Job.size = QSize(static_cast<int>(m_Jpeg.image_width), static_cast<int>(m_Jpeg.image_height));
    if (!m_Job.limits.Allow(m_Job.size, GatheredBytesPerPixel())) return Error::TooLarge;
    if (!Start()) return Failure();

    m_Job.picture.image = LXImage32(m_Job.size.width(), m_Job.size.height());
    {
        ImageRowWriter rows(m_Job.picture.image);
        const Error error = ReadRows(rows);
        if (error != Error::None) return error;
    }
    TakeExif();
    if (!TakeProfile()) return Failure();
    TakeResolution();
    // To the end mark, which tells that nothing was cut off.
    return Guarded(m_Errors, [this] { jpeg_finish_decompress(&m_Jpeg); }) ? Error::None : Failure();
}

bool JpegReader::ReadHeader()
{
    return Guarded(m_Errors, [this] {
        jpeg_create_decompress(&m_Jpeg);
        ConnectSource();
        jpeg_save_markers(&m_Jpeg, JpegLibrary::ExifMarker, JpegLibrary::LongestMarker);
        jpeg_save_markers(&m_Jpeg, JpegLibrary::IccMarker, JpegLibrary::LongestMarker);
        jpeg_read_header(&m_Jpeg, TRUE);
    });
}

void JpegReader::ConnectSource()
{
    jpeg_source_mgr& manager = m_Source.manager;
    manager.init_source = [](j_decompress_ptr) {};
    manager.fill_input_buffer = FillBuffer;
    manager.skip_input_data = Skip;
    manager.resync_to_restart = jpeg_resync_to_restart;
    manager.term_source = [](j_decompress_ptr) {};
    manager.bytes_in_buffer = 0;
    manager.next_input_byte = nullptr;
    m_Jpeg.src = &manager;
}

boolean JpegReader::FillBuffer(j_decompress_ptr jpeg)
{
    auto* source = reinterpret_cast<Source*>(jpeg->src);
    const qint64 count = source->device->read(reinterpret_cast<char*>(source->buffer.data()),
                                              static_cast<qint64>(source->buffer.size()));
    if (count <= 0) {
        jpeg->err->msg_code = JERR_INPUT_EOF;
        JpegLibrary::GiveUp(reinterpret_cast<j_common_ptr>(jpeg));
    }
    source->manager.next_input_byte = source->buffer.data();
    source->manager.bytes_in_buffer = static_cast<size_t>(count);
    return TRUE;
}

void JpegReader::Skip(j_decompress_ptr jpeg, long count)
{
    jpeg_source_mgr& manager = *jpeg->src;
    auto left = static_cast<size_t>(qMax(count, 0L));
    while (left > manager.bytes_in_buffer) {
        left -= manager.bytes_in_buffer;
        FillBuffer(jpeg);
    }
    manager.next_input_byte += left;
    manager.bytes_in_buffer -= left;
}

int JpegReader::GatheredBytesPerPixel()
{
    if (!jpeg_has_multiple_scans(&m_Jpeg)) return 0;
    return static_cast<int>(sizeof(JCOEF)) * m_Jpeg.num_components;
}

bool JpegReader::Start()
{
    m_Job.progress.Tell(0);
    return Guarded(m_Errors, [this] {
        m_Jpeg.out_color_space = IsCmyk(m_Jpeg.jpeg_color_space) ? JCS_CMYK : JCS_EXT_BGRA;
        m_Monitor.manager.progress_monitor = WatchScans;
        m_Jpeg.progress = &m_Monitor.manager;
        jpeg_start_decompress(&m_Jpeg);
        m_Jpeg.progress = nullptr;
    });
}

void JpegReader::WatchScans(j_common_ptr jpeg)
{
    const auto* monitor = reinterpret_cast<const Monitor*>(jpeg->progress);
    auto* errors = reinterpret_cast<JpegErrors*>(jpeg->err);
    errors->isCancelled = monitor->progress->IsCancelled();
    const auto* decompress = reinterpret_cast<j_decompress_ptr>(jpeg);
    if (errors->isCancelled || decompress->input_scan_number > MaxScans) JpegLibrary::GiveUp(jpeg);
}

Error JpegReader::ReadRows(ImageRowWriter& rows)
{
    const int height = m_Job.size.height();
    const bool isCmyk = m_Jpeg.out_color_space == JCS_CMYK;
    std::vector<LXRGBA32i> row(static_cast<size_t>(m_Job.size.width()));
    auto* bytes = reinterpret_cast<JSAMPROW>(row.data());
    for (int y = 0; y < height; ++y) {
        if (m_Job.progress.IsCancelled()) return Error::Cancelled;
        m_Job.progress.Tell(static_cast<int>(qint64(y) * 1000 / height));
        if (!Guarded(m_Errors, [this, &bytes] { jpeg_read_scanlines(&m_Jpeg, &bytes, 1); })) return Failure();
        if (isCmyk) ConvertCmykRow(row, m_Jpeg.saw_Adobe_marker);
        rows.Put(y, row.data());
    }
    return Error::None;
}

Error JpegReader::Failure() const
{
    if (m_Errors.isCancelled) return Error::Cancelled;
    return m_Errors.isOutOfMemory ? Error::OutOfMemory : Error::Broken;
}

void JpegReader::TakeExif()
{
    using namespace JpegLibrary;
    for (const jpeg_saved_marker_ptr* link = &m_Jpeg.marker_list; *link; link = &(*link)->next) {
        const jpeg_marker_struct& marker = **link;
        if (marker.marker != ExifMarker || marker.data_length <= ExifMarkLength) continue;
        if (std::memcmp(marker.data, ExifMark, ExifMarkLength) != 0) continue;
        m_Job.picture.exif = QByteArray(reinterpret_cast<const char*>(marker.data) + ExifMarkLength,
                                        static_cast<int>(marker.data_length - ExifMarkLength));
        return;
    }
}

bool JpegReader::TakeProfile()
{
    JOCTET* profile = nullptr;
    unsigned int length = 0;
    const bool isRead = Guarded(m_Errors, [&] { jpeg_read_icc_profile(&m_Jpeg, &profile, &length); });
    const std::unique_ptr<JOCTET, decltype(&std::free)> owner(profile, &std::free);
    if (!isRead) return false;
    if (profile) {
        const QByteArray bytes(reinterpret_cast<const char*>(profile), static_cast<int>(length));
        PictureMetadata::TakeProfile(bytes, m_Job.picture);
    } else if (HasProfileSegment()) {
        // Some of its segments are missing, or out of order.
        m_Job.picture.profileProblem = PictureMetadata::ProfileProblem(ZKCMSProfile("segments"));
    }
    return true;
}

bool JpegReader::HasProfileSegment() const
{
    constexpr char mark[] = "ICC_PROFILE";
    for (const jpeg_marker_struct* marker = m_Jpeg.marker_list; marker; marker = marker->next) {
        if (marker->marker == JpegLibrary::IccMarker && marker->data_length >= sizeof(mark) &&
            std::memcmp(marker->data, mark, sizeof(mark)) == 0) {
            return true;
        }
    }
    return false;
}

void JpegReader::TakeResolution()
{
    enum Unit
    {
        PerInch = 1,
        PerCentimeter = 2
    };

    double dpi = 0;
    if (m_Jpeg.saw_JFIF_marker && m_Jpeg.density_unit == PerInch) dpi = m_Jpeg.X_density;
    if (m_Jpeg.saw_JFIF_marker && m_Jpeg.density_unit == PerCentimeter)
        dpi = m_Jpeg.X_density * CentimetersPerInch;
    if (dpi <= 0) dpi = ExifBlock(m_Job.picture.exif).GetDpi();
    m_Job.picture.dpi = PictureMetadata::TidyDpi(dpi);
}
