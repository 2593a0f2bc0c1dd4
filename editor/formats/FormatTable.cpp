#include "formats/FormatTable.h"

#include "formats/JpegCodec.h"
#include "formats/PngCodec.h"
#include "formats/QtCodec.h"

#include <algorithm>
#include <limits>

namespace {
bool AnyOf(const QByteArray&)
{
    return true;
}

double Exactly(const Picture& picture)
{
    return picture.dpi;
}

constexpr FormatParts PngKeeps{true, true, PngCodec::HoldsProfile, PngCodec::HoldsExif, PngCodec::Resolution};
constexpr FormatParts JpegKeeps{false, false, JpegCodec::HoldsProfile, JpegCodec::HoldsExif,
                                JpegCodec::Resolution};
constexpr FormatParts TiffKeeps{true, true, AnyOf, nullptr, Exactly};
constexpr FormatParts WebpKeeps{true, false, AnyOf, AnyOf, QtCodec::WebpResolution};
constexpr FormatParts BmpKeeps{false, false, nullptr, nullptr, QtCodec::BmpResolution};
} // namespace

const std::vector<FormatEntry>& FormatTable()
{
    static const std::vector<FormatEntry> table = {
        {PictureFile::Format::Png,
         QStringLiteral("PNG"),
         {QStringLiteral("png")},
         {QByteArrayLiteral("\x89PNG\r\n\x1a\n")},
         PngKeeps,
         std::numeric_limits<int>::max(),
         PngCodec::Decode,
         PngCodec::Encode},
        {PictureFile::Format::Jpeg,
         QStringLiteral("JPEG"),
         {QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("jpe")},
         {QByteArrayLiteral("\xff\xd8\xff")},
         JpegKeeps,
         JpegCodec::MaxSide,
         JpegCodec::Decode,
         JpegCodec::Encode},
        {PictureFile::Format::Tiff,
         QStringLiteral("TIFF"),
         {QStringLiteral("tif"), QStringLiteral("tiff")},
         {QByteArrayLiteral("II*\0"), QByteArrayLiteral("MM\0*"), QByteArrayLiteral("II+\0"),
          QByteArrayLiteral("MM\0+")},
         TiffKeeps,
         std::numeric_limits<int>::max(),
         QtCodec::DecodeTiff,
         QtCodec::EncodeTiff},
        {PictureFile::Format::Webp,
         QStringLiteral("WebP"),
         {QStringLiteral("webp")},
         {QByteArrayLiteral("RIFF????WEBP")},
         WebpKeeps,
         QtCodec::WebpMaxSide,
         QtCodec::DecodeWebp,
         QtCodec::EncodeWebp},
        {PictureFile::Format::Bmp,
         QStringLiteral("BMP"),
         {QStringLiteral("bmp")},
         {QByteArrayLiteral("BM")},
         BmpKeeps,
         std::numeric_limits<int>::max(),
         QtCodec::DecodeBmp,
         QtCodec::EncodeBmp},
        {PictureFile::Format::Gif,
         QStringLiteral("GIF"),
         {QStringLiteral("gif")},
         {QByteArrayLiteral("GIF87a"), QByteArrayLiteral("GIF89a")},
         {},
         std::numeric_limits<int>::max(),
         QtCodec::DecodeGif,
         nullptr},
    };
    return table;
}

const FormatEntry* FindFormat(PictureFile::Format format)
{
    const auto& table = FormatTable();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [format](const FormatEntry& entry) { return entry.format == format; });
    return found == table.end() ? nullptr : &*found;
}

bool HasSignature(const FormatEntry& entry, const QByteArray& head)
{
    const auto matches = [&head](const QByteArray& signature) {
        if (head.size() < signature.size()) return false;
        return std::equal(signature.begin(), signature.end(), head.begin(),
                          [](char wanted, char found) { return wanted == '?' || wanted == found; });
    };
    return std::any_of(entry.signatures.begin(), entry.signatures.end(), matches);
}
