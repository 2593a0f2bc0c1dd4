#include "formats/FormatTable.h"

#include "formats/JpegCodec.h"
#include "formats/PngCodec.h"

#include <algorithm>
#include <limits>

const std::vector<FormatEntry>& FormatTable()
{
    static const std::vector<FormatEntry> table = {
        {PictureFile::Format::Png,
         QStringLiteral("PNG"),
         {QStringLiteral("png")},
         QByteArrayLiteral("\x89PNG\r\n\x1a\n"),
         true,
         std::numeric_limits<int>::max(),
         PngCodec::Decode,
         PngCodec::Encode},
        {PictureFile::Format::Jpeg,
         QStringLiteral("JPEG"),
         {QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("jpe")},
         QByteArrayLiteral("\xff\xd8\xff"),
         false,
         JpegCodec::MaxSide,
         JpegCodec::Decode,
         JpegCodec::Encode},
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
