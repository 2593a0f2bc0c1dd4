#include "support/FileBytes.h"

// jpeglib.h takes for granted what <cstdio> declares.
// clang-format off
#include <cstdio>
#include <jpeglib.h>
// clang-format on

#include <cstdlib>
#include <vector>

namespace {
J_COLOR_SPACE SampleSpace(FileBytes::JpegSpec::Space space)
{
    switch (space) {
    case FileBytes::JpegSpec::Gray: return JCS_GRAYSCALE;
    case FileBytes::JpegSpec::Rgb: return JCS_RGB;
    default: return JCS_CMYK;
    }
}

int ChannelCount(FileBytes::JpegSpec::Space space)
{
    switch (space) {
    case FileBytes::JpegSpec::Gray: return 1;
    case FileBytes::JpegSpec::Rgb: return 3;
    default: return 4;
    }
}

void SetUp(jpeg_compress_struct& jpeg, const FileBytes::JpegSpec& spec)
{
    jpeg.image_width = static_cast<JDIMENSION>(spec.size.width());
    jpeg.image_height = static_cast<JDIMENSION>(spec.size.height());
    jpeg.input_components = ChannelCount(spec.space);
    jpeg.in_color_space = SampleSpace(spec.space);
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, spec.quality, TRUE);
    if (spec.space == FileBytes::JpegSpec::Ycck) jpeg_set_colorspace(&jpeg, JCS_YCCK);
    if (spec.space == FileBytes::JpegSpec::Cmyk) jpeg_set_colorspace(&jpeg, JCS_CMYK);
    for (int i = 0; i < jpeg.num_components; ++i) {
        jpeg.comp_info[i].h_samp_factor = jpeg.comp_info[i].v_samp_factor = 1;
    }
    jpeg.write_Adobe_marker = spec.hasAdobeMarker;
    if (spec.isProgressive) jpeg_simple_progression(&jpeg);
}
} // namespace

QByteArray FileBytes::Jpeg(const JpegSpec& spec, const JpegSample& sample)
{
    jpeg_compress_struct jpeg;
    jpeg_error_mgr errors;
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char* bytes = nullptr;
    unsigned long length = 0;
    jpeg_mem_dest(&jpeg, &bytes, &length);
    SetUp(jpeg, spec);
    jpeg_start_compress(&jpeg, TRUE);
    const int channels = ChannelCount(spec.space);
    std::vector<JSAMPLE> row(static_cast<size_t>(spec.size.width() * channels));
    for (int y = 0; y < spec.size.height(); ++y) {
        for (int i = 0; i < spec.size.width() * channels; ++i) {
            row[static_cast<size_t>(i)] = static_cast<JSAMPLE>(sample(i / channels, y, i % channels));
        }
        JSAMPROW samples = row.data();
        jpeg_write_scanlines(&jpeg, &samples, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    QByteArray file(reinterpret_cast<const char*>(bytes), static_cast<int>(length));
    std::free(bytes);
    return file;
}

QByteArray FileBytes::WithJpegSegment(const QByteArray& jpeg, int marker, const QByteArray& content)
{
    constexpr int startMarkLength = 2;
    const QByteArray mark = QByteArray().append('\xFF').append(static_cast<char>(marker));
    const QByteArray length = Big16(static_cast<quint32>(content.size()) + 2);
    return jpeg.left(startMarkLength) + mark + length + content + jpeg.mid(startMarkLength);
}

QByteArray FileBytes::WithJpegSize(QByteArray jpeg, const QSize& size)
{
    // Mark, length and precision stand before the size; baseline and progressive frames differ in the mark.
    int frame = jpeg.indexOf("\xFF\xC0");
    if (frame < 0) frame = jpeg.indexOf("\xFF\xC2");
    constexpr int sizeBehindMark = 5;
    const QByteArray claimed =
        Big16(static_cast<quint32>(size.height())) + Big16(static_cast<quint32>(size.width()));
    return jpeg.replace(frame + sizeBehindMark, 4, claimed);
}
