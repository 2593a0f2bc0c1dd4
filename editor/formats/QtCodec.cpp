#include "formats/QtCodec.h"

#include "formats/ExifBlock.h"
#include "formats/PictureMetadata.h"
#include "formats/TiffTags.h"
#include "formats/WebpChunks.h"
#include "image/LXImageConvert.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace {
using PictureFile::Error;

constexpr double InchesPerMeter = 1 / 0.0254;
constexpr int BmpDotsPerMeterAt = 38; // across; those down stand behind them
/// Up to 16 bits a channel while it is decoded, and the copy in 8 bits.
constexpr int DecoderBytesPerPixel = 8 + 4;

bool Allows(const DecodeJob& job)
{
    return job.limits.Allow(job.size, DecoderBytesPerPixel);
}

Error Decode(DecodeJob& job, const char* format)
{
    QImageReader reader(&job.device, format);
    reader.setAutoTransform(true);
    job.size = reader.size();
    if (job.size.isEmpty()) return Error::Broken;
    if (!Allows(job)) return Error::TooLarge;
    QImage image;
    if (!reader.read(&image)) return Error::Broken;
    if (job.progress.IsCancelled()) return Error::Cancelled;

    image = image.convertToFormat(QImage::Format_ARGB32);
    if (image.isNull()) return Error::OutOfMemory;
    ConvertImage(image, job.picture.image);
    return job.progress.IsCancelled() ? Error::Cancelled : Error::None;
}

/// What the header of a BMP file says.
struct BmpHeader
{
    qint64 pixelsAt = 0;
    qint64 width = 0;
    qint64 height = 0; ///< below 0 when the topmost row comes first
    int bitsPerPixel = 0;
    int compression = 0;
    int dotsPerMeter = 0; ///< 0 when the file doesn't say

    /// Cut down to what a size holds.
    QSize Size() const
    {
        constexpr qint64 largest = 1 << 30;
        return {static_cast<int>(std::min(width, largest)),
                static_cast<int>(std::min(std::abs(height), largest))};
    }
};

/// False when it is cut off.
bool ReadHeader(QIODevice& device, BmpHeader* header)
{
    constexpr int oldHeaderBytes = 12;
    constexpr int oldHeadBytes = 26;
    constexpr int headBytes = 54;
    const QByteArray head = device.peek(headBytes);
    const auto number32 = [&head](int at) { return qFromLittleEndian<qint32>(head.constData() + at); };
    const auto number16 = [&head](int at) { return qFromLittleEndian<quint16>(head.constData() + at); };
    if (head.size() < oldHeadBytes) return false;
    header->pixelsAt = static_cast<quint32>(number32(10));
    if (number32(14) == oldHeaderBytes) {
        header->width = number16(18);
        header->height = number16(20);
        header->bitsPerPixel = number16(24);
        return true;
    }
    if (head.size() < headBytes) return false;
    header->width = number32(18);
    header->height = number32(22);
    header->bitsPerPixel = number16(28);
    header->compression = number32(30);
    header->dotsPerMeter = number32(BmpDotsPerMeterAt);
    return true;
}

/// Qt's reader shows as much as there is; this asks for all of the rows, where their length is known.
bool HasAllRows(const BmpHeader& header, qint64 fileBytes)
{
    constexpr int bitFields = 3;
    if (header.compression != 0 && header.compression != bitFields) return true;
    const qint64 rowBytes = (header.width * header.bitsPerPixel + 31) / 32 * 4;
    return fileBytes >= header.pixelsAt + rowBytes * std::abs(header.height);
}

/// The mark that ends the file, with nothing but zeros behind.
bool HasEndMark(QIODevice& device)
{
    constexpr qint64 tailBytes = 1024;
    const qint64 start = device.pos();
    if (!device.seek(std::max<qint64>(0, device.size() - tailBytes))) return false;
    QByteArray tail = device.read(tailBytes);
    while (tail.endsWith('\0')) {
        tail.chop(1);
    }
    return device.seek(start) && tail.endsWith(';');
}

/// The pixels on white.
QImage Flattened(QImage image)
{
    constexpr int full = 255;
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::transform(row, row + image.width(), row, [](QRgb pixel) {
            const int alpha = qAlpha(pixel);
            const auto onWhite = [alpha](int color) {
                return (color * alpha + full * (full - alpha) + full / 2) / full;
            };
            return qRgb(onWhite(qRed(pixel)), onWhite(qGreen(pixel)), onWhite(qBlue(pixel)));
        });
    }
    return image.convertToFormat(QImage::Format_RGB32);
}

QImage ImageOf(const Picture& picture)
{
    QImage image;
    ConvertImage(picture.image, image);
    return image;
}

bool IsOpaque(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        const bool isRowOpaque =
            std::all_of(row, row + image.width(), [](QRgb pixel) { return qAlpha(pixel) == 255; });
        if (!isRowOpaque) return false;
    }
    return true;
}

/// Empty when it is cancelled, and when the memory doesn't suffice.
QByteArray Encoded(const EncodeJob& job, QImageWriter& writer, const QImage& image)
{
    if (image.isNull() || job.progress.IsCancelled()) return QByteArray();
    QBuffer buffer;
    if (!buffer.open(QIODevice::ReadWrite)) return QByteArray();
    writer.setDevice(&buffer);
    return writer.write(image) ? buffer.data() : QByteArray();
}

/// All at once: some writers go back and forth, and the file shall tell its own failures.
Error Put(const EncodeJob& job, const QByteArray& bytes)
{
    if (job.progress.IsCancelled()) return Error::Cancelled;
    if (bytes.isEmpty()) return Error::OutOfMemory;
    return job.device.write(bytes) == bytes.size() ? Error::None : Error::WriteFailed;
}
} // namespace

Error QtCodec::DecodeTiff(DecodeJob& job)
{
    const Error error = Decode(job, "tiff");
    if (error != Error::None) return error;
    const TiffTags::Tags tags = TiffTags::Read(job.device);
    PictureMetadata::TakeProfile(tags.iccProfile, job.picture);
    if (tags.hasBrokenProfile) {
        job.picture.profileProblem = PictureMetadata::ProfileProblem(ZKCMSProfile("cut off"));
    }
    job.picture.dpi = PictureMetadata::TidyDpi(tags.dpi);
    return Error::None;
}

Error QtCodec::DecodeWebp(DecodeJob& job)
{
    const Error error = Decode(job, "webp");
    if (error != Error::None) return error;
    if (!job.device.seek(0)) return Error::Broken;
    const WebpChunks::Chunks chunks = WebpChunks::Read(job.device.readAll());
    PictureMetadata::TakeProfile(chunks.iccProfile, job.picture);
    job.picture.exif = chunks.exif;
    job.picture.dpi = PictureMetadata::TidyDpi(ExifBlock(chunks.exif).GetDpi());
    return Error::None;
}

Error QtCodec::DecodeBmp(DecodeJob& job)
{
    BmpHeader header;
    if (!ReadHeader(job.device, &header)) return Error::Broken;
    // Qt's reader refuses large ones too, without a reason.
    job.size = header.Size();
    if (job.size.isEmpty()) return Error::Broken;
    if (!Allows(job)) return Error::TooLarge;
    if (!HasAllRows(header, job.device.size())) return Error::Broken;
    job.picture.dpi = PictureMetadata::TidyDpi(header.dotsPerMeter / InchesPerMeter);
    return Decode(job, "bmp");
}

Error QtCodec::DecodeGif(DecodeJob& job)
{
    constexpr int headBytes = 10;
    const QByteArray head = job.device.peek(headBytes);
    if (head.size() < headBytes || !HasEndMark(job.device)) return Error::Broken;
    job.size = QSize(qFromLittleEndian<quint16>(head.constData() + 6),
                     qFromLittleEndian<quint16>(head.constData() + 8));
    if (!job.size.isEmpty() && !Allows(job)) return Error::TooLarge;
    return Decode(job, "gif");
}

Error QtCodec::EncodeTiff(const EncodeJob& job)
{
    QImageWriter writer;
    writer.setFormat("tiff");
    constexpr int lzw = 1;
    writer.setCompression(lzw);
    const QImage image = ImageOf(job.picture);
    QByteArray bytes = Encoded(
        job, writer, image.convertToFormat(IsOpaque(image) ? QImage::Format_RGB888 : QImage::Format_RGBA64));
    if (!bytes.isEmpty()) {
        QBuffer buffer(&bytes);
        const bool isWritten = buffer.open(QIODevice::ReadWrite) &&
                               TiffTags::Write(buffer, {job.picture.iccProfile, false, job.picture.dpi});
        if (!isWritten) return Error::OutOfMemory;
    }
    return Put(job, bytes);
}

Error QtCodec::EncodeWebp(const EncodeJob& job)
{
    QImageWriter writer;
    writer.setFormat("webp");
    constexpr int withoutLoss = 100;
    writer.setQuality(withoutLoss);
    const QByteArray bytes = Encoded(job, writer, ImageOf(job.picture));
    return Put(job, WebpChunks::With(bytes, {job.picture.iccProfile, job.picture.exif}));
}

Error QtCodec::EncodeBmp(const EncodeJob& job)
{
    QImageWriter writer;
    writer.setFormat("bmp");
    QByteArray bytes = Encoded(job, writer, Flattened(ImageOf(job.picture)));
    if (!bytes.isEmpty()) {
        // Qt writes a resolution of its own where there is none.
        const auto dotsPerMeter = static_cast<qint32>(qRound(job.picture.dpi * InchesPerMeter));
        qToLittleEndian(dotsPerMeter, bytes.data() + BmpDotsPerMeterAt);
        qToLittleEndian(dotsPerMeter, bytes.data() + BmpDotsPerMeterAt + sizeof(dotsPerMeter));
    }
    return Put(job, bytes);
}

double QtCodec::BmpResolution(const Picture& picture)
{
    return qRound(picture.dpi * InchesPerMeter) / InchesPerMeter;
}

double QtCodec::WebpResolution(const Picture& picture)
{
    return ExifBlock(picture.exif).GetDpi();
}
