#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>
#include <QVector>

#include <functional>

/// Picture files as tests need them, put together byte by byte or by another library than the editor's use of
/// it, so that the editor's readers are not their own judges.
namespace FileBytes {
/// Numbers, most significant byte first.
QByteArray Big16(quint32 value);
QByteArray Big32(quint32 value);

struct PngSpec
{
    enum ColorType
    {
        Gray = 0,
        Rgb = 2,
        Palette = 3,
        GrayAlpha = 4,
        Rgba = 6
    };

    QSize size;
    int bitDepth = 8;
    ColorType colorType = Rgba;
    bool isInterlaced = false;
    QByteArray chunksBeforeData;
};

/// Value of one sample, as wide as the bit depth.
using PngSample = std::function<int(int x, int y, int channel)>;

QByteArray PngSignature();
QByteArray PngChunk(const char* type, const QByteArray& data);
QByteArray PngHeader(const PngSpec& spec);
QByteArray Png(const PngSpec& spec, const PngSample& sample);

struct JpegSpec
{
    enum Space
    {
        Gray,
        Rgb,
        Cmyk,
        Ycck
    };

    QSize size;
    Space space = Rgb; ///< of the samples; RGB is stored as YCbCr, Ycck takes CMYK samples
    bool isProgressive = false;
    bool hasAdobeMarker = false;
    int quality = 100;
};

using JpegSample = std::function<int(int x, int y, int channel)>;

QByteArray Jpeg(const JpegSpec& spec, const JpegSample& sample);
/// Puts a segment behind the start mark.
/// @param marker  the second byte of the mark, such as 0xE1
QByteArray WithJpegSegment(const QByteArray& jpeg, int marker, const QByteArray& content);
/// Lets the frame's header claim another size.
QByteArray WithJpegSize(QByteArray jpeg, const QSize& size);

struct ExifSpec
{
    bool isBigEndian = false;
    int orientation = 1;
    double dpi = 0;       ///< 0 writes none
    QSize pixelSize;      ///< an empty one writes none
    QByteArray thumbnail; ///< an empty one writes none
};

/// A TIFF block, without the mark that stands before it in a JPEG file.
QByteArray Exif(const ExifSpec& spec);
/// The same with the mark.
QByteArray ExifSegment(const QByteArray& exif);

/// A short profile: a whole one for "RGB ", for others a regular head.
/// @param colorSpace  what colors it is for, such as "RGB "
QByteArray IccProfile(const char* colorSpace);
} // namespace FileBytes
