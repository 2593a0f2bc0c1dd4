#include "formats/JpegCodec.h"

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
