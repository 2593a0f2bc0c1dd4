#include "formats/JpegCodec.h"

#include "formats/JpegLibrary.h"
#include "formats/JpegReader.h"
#include "formats/JpegWriter.h"

PictureFile::Error JpegCodec::Decode(DecodeJob& job)
{
    return JpegReader(job).Read();
}

PictureFile::Error JpegCodec::Encode(const EncodeJob& job)
{
    return JpegWriter(job).Write();
}

bool JpegCodec::HoldsProfile(const QByteArray& icc)
{
    constexpr int segments = 255;
    constexpr int segmentBytes = 65533 - 14; // less a mark and two numbers
    return icc.size() <= segments * segmentBytes;
}

bool JpegCodec::HoldsExif(const QByteArray& exif)
{
    return JpegLibrary::ExifMarkLength + static_cast<size_t>(exif.size()) <= JpegLibrary::LongestMarker;
}

double JpegCodec::Resolution(const Picture& picture)
{
    constexpr int most = 65535;
    return qBound(1, qRound(picture.dpi), most);
}
