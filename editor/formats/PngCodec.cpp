#include "formats/PngCodec.h"

#include "formats/ExifBlock.h"
#include "formats/ImageRows.h"
#include "formats/PictureMetadata.h"

#include <QIODevice>
#include <QtEndian>

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <limits>
#include <vector>

namespace {
using PictureFile::Error;

constexpr double InchesPerMeter = 1 / 0.0254;
/// Photos come out a few percent larger than with the highest levels, in a fraction of the time.
constexpr int CompressionLevel = 4;
/// A file with a longer one, but for its pixels, can't be read by the library.
constexpr int LongestChunk = 8000000;

/// Runs a step of the library; false when the library gave up. The library leaves by a jump that skips
/// destructors: so a step only calls it and keeps nothing that has one.
template <typename Step>
bool Guarded(png_structp png, Step step)
{
    if (setjmp(png_jmpbuf(png))) return false;
    step();
    return true;
}

void GiveUp(png_structp png, png_const_charp)
{
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp, png_const_charp) {}

/// The library warns of a profile with the name of its chunk.
void NoteWarning(png_structp png, png_const_charp text)
{
    if (std::strncmp(text, "iCCP", 4) == 0) *static_cast<bool*>(png_get_error_ptr(png)) = true;
}

void ReadBytes(png_structp png, png_bytep bytes, size_t length)
{
    auto* device = static_cast<QIODevice*>(png_get_io_ptr(png));
    const qint64 count = device->read(reinterpret_cast<char*>(bytes), static_cast<qint64>(length));
    if (count != static_cast<qint64>(length)) png_error(png, "cut off");
}

void WriteBytes(png_structp png, png_bytep bytes, size_t length)
{
    auto* device = static_cast<QIODevice*>(png_get_io_ptr(png));
    const qint64 count = device->write(reinterpret_cast<const char*>(bytes), static_cast<qint64>(length));
    if (count != static_cast<qint64>(length)) png_error(png, "not written");
}

/// The bytes come all the way at their commit.
void FlushNothing(png_structp) {}

/// From opaque gray pixels to pixels that have the gray in their alpha byte.
void GatherCoverage(std::vector<LXRGBA32i>& row)
{
    constexpr int alphaShift = 24;
    for (LXRGBA32i& pixel : row) {
        pixel = LXRGBA32i(static_cast<quint32>(pixel.Blue()) << alphaShift);
    }
}

/// The way back.
void SpreadCoverage(std::vector<LXRGBA32i>& row)
{
    for (LXRGBA32i& pixel : row) {
        const auto gray = static_cast<quint32>(pixel.Alpha());
        pixel = LXRGBA32i(0xFF000000 | gray << 16 | gray << 8 | gray);
    }
}

/// The alpha bytes, packed to the front of the row.
void PackCoverage(std::vector<LXRGBA32i>& row)
{
    auto* packed = reinterpret_cast<quint8*>(row.data());
    for (const LXRGBA32i pixel : row) {
        *packed++ = static_cast<quint8>(pixel.Alpha());
    }
}

/// The library's two objects for reading a file.
class PngReader
{
public:
    explicit PngReader(DecodeJob& job) : m_Job(job)
    {
        m_pPng = png_create_read_struct(PNG_LIBPNG_VER_STRING, &m_bProfileRefused, GiveUp, NoteWarning);
        m_pInfo = m_pPng ? png_create_info_struct(m_pPng) : nullptr;
    }

    ~PngReader() { png_destroy_read_struct(&m_pPng, &m_pInfo, nullptr); }

    Q_DISABLE_COPY(PngReader)

    Error Read();

private:
    bool ReadHeader();
    bool SetUpRows();
    Error ReadRows(ImageRowWriter& rows);
    bool ReadRow(png_bytep row);
    void TakeMetadata();

    DecodeJob& m_Job;
    png_structp m_pPng = nullptr;
    png_infop m_pInfo = nullptr;
    int m_Passes = 1;
    bool m_bProfileRefused = false;
};

Error PngReader::Read()
{
    if (!m_pInfo) return Error::OutOfMemory;
    if (!ReadHeader()) return Error::Broken;
    if (!m_Job.limits.Allow(m_Job.size)) return Error::TooLarge;
    if (!SetUpRows()) return Error::Broken;
    m_Job.picture.image = LXImage32(m_Job.size.width(), m_Job.size.height());
    {
        ImageRowWriter rows(m_Job.picture.image);
        const Error error = ReadRows(rows);
        if (error != Error::None) return error;
    }
    // The end mark tells that nothing was cut off; metadata may stand before it.
    if (!Guarded(m_pPng, [this] { png_read_end(m_pPng, m_pInfo); })) return Error::Broken;
    TakeMetadata();
    return Error::None;
}

bool PngReader::ReadHeader()
{
    const bool isRead = Guarded(m_pPng, [this] {
        png_set_read_fn(m_pPng, &m_Job.device, ReadBytes);
        // Our own limits are told better than the library's.
        png_set_user_limits(m_pPng, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_read_info(m_pPng, m_pInfo);
    });
    if (!isRead) return false;
    m_Job.size = QSize(static_cast<int>(png_get_image_width(m_pPng, m_pInfo)),
                       static_cast<int>(png_get_image_height(m_pPng, m_pInfo)));
    return true;
}

/// Asks for rows of blue, green, red, alpha whatever the file has.
bool PngReader::SetUpRows()
{
    return Guarded(m_pPng, [this] {
        png_set_expand(m_pPng); // palettes, few bits a pixel, and the transparent color
        png_set_scale_16(m_pPng);
        png_set_gray_to_rgb(m_pPng);
        png_set_bgr(m_pPng);
        png_set_add_alpha(m_pPng, 0xFF, PNG_FILLER_AFTER);
        m_Passes = png_set_interlace_handling(m_pPng);
        png_read_update_info(m_pPng, m_pInfo);
    });
}

Error PngReader::ReadRows(ImageRowWriter& rows)
{
    const int height = m_Job.size.height();
    const bool isInterlaced = m_Passes > 1;
    const bool isCoverage = m_Job.pixels == PixelMeaning::Coverage;
    std::vector<LXRGBA32i> row(static_cast<size_t>(m_Job.size.width()));
    auto* bytes = reinterpret_cast<png_bytep>(row.data());
    for (int pass = 0; pass < m_Passes; ++pass) {
        for (int y = 0; y < height; ++y) {
            if (m_Job.progress.IsCancelled()) return Error::Cancelled;
            m_Job.progress.Tell(
                static_cast<int>((qint64(pass) * height + y) * 1000 / (qint64(m_Passes) * height)));
            if (isInterlaced && !PNG_ROW_IN_INTERLACE_PASS(y, pass)) {
                if (!ReadRow(nullptr)) return Error::Broken;
                continue;
            }
            // The library sets only the pixels of this pass, the others are those of the passes before.
            if (isInterlaced) rows.Get(y, row.data());
            if (isCoverage && isInterlaced) SpreadCoverage(row);
            if (!ReadRow(bytes)) return Error::Broken;
            if (isCoverage) GatherCoverage(row);
            rows.Put(y, row.data());
        }
    }
    return Error::None;
}

bool PngReader::ReadRow(png_bytep row)
{
    return Guarded(m_pPng, [this, row] { png_read_row(m_pPng, row, nullptr); });
}

void PngReader::TakeMetadata()
{
    Picture& picture = m_Job.picture;

    png_charp name = nullptr;
    int method = 0;
    png_bytep profile = nullptr;
    png_uint_32 profileLength = 0;
    if (png_get_iCCP(m_pPng, m_pInfo, &name, &method, &profile, &profileLength)) {
        const QByteArray bytes(reinterpret_cast<const char*>(profile), static_cast<int>(profileLength));
        PictureMetadata::TakeProfile(bytes, picture);
    } else if (m_bProfileRefused) {
        picture.profileProblem = PictureMetadata::RefusedProfileProblem();
    }

    png_bytep exif = nullptr;
    png_uint_32 exifLength = 0;
    if (png_get_eXIf_1(m_pPng, m_pInfo, &exifLength, &exif)) {
        picture.exif = QByteArray(reinterpret_cast<const char*>(exif), static_cast<int>(exifLength));
    }

    picture.dpi = PictureMetadata::TidyDpi(png_get_x_pixels_per_meter(m_pPng, m_pInfo) / InchesPerMeter);
    if (picture.dpi <= 0) picture.dpi = PictureMetadata::TidyDpi(ExifBlock(picture.exif).GetDpi());
}

/// Part of a guarded step.
void PutProfile(png_structp png, png_infop info, const QByteArray& icc)
{
    if (icc.isEmpty()) return;
    png_set_iCCP(png, info, "ICC profile", PNG_COMPRESSION_TYPE_BASE,
                 reinterpret_cast<png_const_bytep>(icc.constData()), static_cast<png_uint_32>(icc.size()));
}

int DotsPerMeter(const Picture& picture)
{
    return qRound(picture.dpi * InchesPerMeter);
}

/// The library's two objects for writing a file.
class PngWriter
{
public:
    explicit PngWriter(const EncodeJob& job) : m_Job(job), m_Rows(job.picture.image)
    {
        m_pPng = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, GiveUp, IgnoreWarning);
        m_pInfo = m_pPng ? png_create_info_struct(m_pPng) : nullptr;
    }

    ~PngWriter() { png_destroy_write_struct(&m_pPng, &m_pInfo); }

    Q_DISABLE_COPY(PngWriter)

    Error Write();

private:
    bool IsCoverage() const { return m_Job.pixels == PixelMeaning::Coverage; }

    int ColorType();
    bool IsOpaque();
    bool WriteHeader(int colorType);
    void PutMetadata();

    const EncodeJob& m_Job;
    ImageRowReader m_Rows;
    png_structp m_pPng = nullptr;
    png_infop m_pInfo = nullptr;
};

Error PngWriter::Write()
{
    if (!m_pInfo) return Error::OutOfMemory;
    if (!WriteHeader(ColorType())) return Error::WriteFailed;
    const LXImage32& image = m_Job.picture.image;
    std::vector<LXRGBA32i> row(static_cast<size_t>(image.Width()));
    auto* bytes = reinterpret_cast<png_const_bytep>(row.data());
    for (int y = 0; y < image.Height(); ++y) {
        if (m_Job.progress.IsCancelled()) return Error::Cancelled;
        m_Job.progress.Tell(static_cast<int>(qint64(y) * 1000 / image.Height()));
        m_Rows.Get(y, row.data());
        if (IsCoverage()) PackCoverage(row);
        if (!Guarded(m_pPng, [this, bytes] { png_write_row(m_pPng, bytes); })) return Error::WriteFailed;
    }
    const bool isEnded = Guarded(m_pPng, [this] { png_write_end(m_pPng, nullptr); });
    return isEnded ? Error::None : Error::WriteFailed;
}

int PngWriter::ColorType()
{
    if (IsCoverage()) return PNG_COLOR_TYPE_GRAY;
    return IsOpaque() ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGB_ALPHA;
}

bool PngWriter::IsOpaque()
{
    const LXImage32& image = m_Job.picture.image;
    std::vector<LXRGBA32i> row(static_cast<size_t>(image.Width()));
    for (int y = 0; y < image.Height(); ++y) {
        m_Rows.Get(y, row.data());
        const bool isRowOpaque =
            std::all_of(row.begin(), row.end(), [](LXRGBA32i pixel) { return pixel.Alpha() == 0xFF; });
        if (!isRowOpaque) return false;
    }
    return true;
}

bool PngWriter::WriteHeader(int colorType)
{
    const LXImage32& image = m_Job.picture.image;
    const auto width = static_cast<png_uint_32>(image.Width());
    const auto height = static_cast<png_uint_32>(image.Height());
    return Guarded(m_pPng, [this, width, height, colorType] {
        png_set_write_fn(m_pPng, &m_Job.device, WriteBytes, FlushNothing);
        // A profile that the library finds odd was good enough for the file it came from.
        png_set_benign_errors(m_pPng, 1);
        png_set_user_limits(m_pPng, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_set_compression_level(m_pPng, CompressionLevel);
        png_set_IHDR(m_pPng, m_pInfo, width, height, 8, colorType, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        PutMetadata();
        png_write_info(m_pPng, m_pInfo);
        if (colorType != PNG_COLOR_TYPE_GRAY) png_set_bgr(m_pPng);
        if (colorType == PNG_COLOR_TYPE_RGB) png_set_filler(m_pPng, 0, PNG_FILLER_AFTER);
    });
}

/// Part of a guarded step.
void PngWriter::PutMetadata()
{
    const Picture& picture = m_Job.picture;
    if (picture.iccProfile.size() <= LongestChunk) PutProfile(m_pPng, m_pInfo, picture.iccProfile);
    if (picture.dpi > 0) {
        const auto perMeter = static_cast<png_uint_32>(DotsPerMeter(picture));
        png_set_pHYs(m_pPng, m_pInfo, perMeter, perMeter, PNG_RESOLUTION_METER);
    }
    if (PngCodec::HoldsExif(picture.exif)) {
        // The library copies the bytes and only forgot to say so.
        auto* exif = const_cast<char*>(picture.exif.constData());
        png_set_eXIf_1(m_pPng, m_pInfo, static_cast<png_uint_32>(picture.exif.size()),
                       reinterpret_cast<png_bytep>(exif));
    }
}
} // namespace

PictureFile::Error PngCodec::Decode(DecodeJob& job)
{
    return PngReader(job).Read();
}

PictureFile::Error PngCodec::Encode(const EncodeJob& job)
{
    return PngWriter(job).Write();
}

bool PngCodec::HoldsProfile(const QByteArray& icc)
{
    if (icc.size() > LongestChunk) return false;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, GiveUp, IgnoreWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    const bool isTaken = info && Guarded(png, [png, info, &icc] {
                             png_set_benign_errors(png, 1);
                             png_set_IHDR(png, info, 1, 1, 8, PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE,
                                          PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
                             PutProfile(png, info, icc);
                         });
    const bool isHeld = isTaken && png_get_valid(png, info, PNG_INFO_iCCP) != 0;
    png_destroy_write_struct(&png, &info);
    return isHeld;
}

bool PngCodec::HoldsExif(const QByteArray& exif)
{
    return (exif.startsWith("II") || exif.startsWith("MM")) && exif.size() <= LongestChunk;
}

double PngCodec::Resolution(const Picture& picture)
{
    return DotsPerMeter(picture) / InchesPerMeter;
}

bool PngCodec::ReadSize(QIODevice& device, QSize* size)
{
    constexpr int headBytes = 24;
    constexpr int widthAt = 16;
    constexpr int heightAt = 20;
    const QByteArray head = device.read(headBytes);
    if (head.size() != headBytes || !head.startsWith("\x89PNG\r\n\x1a\n") || head.mid(12, 4) != "IHDR")
        return false;
    const auto width = qFromBigEndian<quint32>(head.constData() + widthAt);
    const auto height = qFromBigEndian<quint32>(head.constData() + heightAt);
    constexpr auto largest = static_cast<quint32>(std::numeric_limits<int>::max());
    if (width == 0 || height == 0 || width > largest || height > largest) return false;
    *size = QSize(static_cast<int>(width), static_cast<int>(height));
    return true;
}
