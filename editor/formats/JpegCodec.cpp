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
