#include "support/FileBytes.h"

#include <QColorSpace>

#include <algorithm>

QByteArray FileBytes::Big16(quint32 value)
{
    return QByteArray().append(static_cast<char>(value >> 8)).append(static_cast<char>(value));
}

QByteArray FileBytes::Big32(quint32 value)
{
    return Big16(value >> 16) + Big16(value & 0xFFFF);
}

namespace {
/// A TIFF directory under construction: values longer than four bytes stand behind it.
class Directory
{
public:
    Directory(bool isBigEndian, quint32 offset, int entryCount)
        : m_IsBigEndian(isBigEndian), m_DataAt(offset + 2 + static_cast<quint32>(entryCount) * 12 + 4)
    {
        m_Entries += Number16(static_cast<quint32>(entryCount));
    }

    void AddWord(int tag, quint32 value) { Add(tag, 3, Number16(value) + Number16(0)); }

    void AddLong(int tag, quint32 value) { Add(tag, 4, Number32(value)); }

    void AddRational(int tag, double value)
    {
        Add(tag, 5, Number32(m_DataAt + static_cast<quint32>(m_Data.size())));
        m_Data += Number32(static_cast<quint32>(qRound(value * 100))) + Number32(100);
    }

    /// The whole directory with its values.
    QByteArray Bytes(quint32 next) const { return m_Entries + Number32(next) + m_Data; }

    QByteArray Number16(quint32 value) const { return Ordered(FileBytes::Big16(value)); }

    QByteArray Number32(quint32 value) const { return Ordered(FileBytes::Big32(value)); }

private:
    void Add(int tag, quint32 type, const QByteArray& value)
    {
        m_Entries += Number16(static_cast<quint32>(tag)) + Number16(type) + Number32(1) + value;
    }

    QByteArray Ordered(QByteArray bigEndian) const
    {
        if (!m_IsBigEndian) std::reverse(bigEndian.begin(), bigEndian.end());
        return bigEndian;
    }

    bool m_IsBigEndian;
    quint32 m_DataAt;
    QByteArray m_Entries;
    QByteArray m_Data;
};

QByteArray MainDirectory(const FileBytes::ExifSpec& spec, quint32 exifAt, quint32 previewAt)
{
    const bool hasDpi = spec.dpi > 0;
    const bool hasSize = !spec.pixelSize.isEmpty();
    Directory directory(spec.isBigEndian, 8, 1 + (hasDpi ? 3 : 0) + (hasSize ? 1 : 0));
    directory.AddWord(0x0112, static_cast<quint32>(spec.orientation));
    if (hasDpi) {
        directory.AddRational(0x011A, spec.dpi);
        directory.AddRational(0x011B, spec.dpi);
        directory.AddWord(0x0128, 2);
    }
    if (hasSize) directory.AddLong(0x8769, exifAt);
    return directory.Bytes(previewAt);
}
} // namespace

QByteArray FileBytes::Exif(const ExifSpec& spec)
{
    const quint32 exifAt = 8 + static_cast<quint32>(MainDirectory(spec, 0, 0).size());
    Directory exif(spec.isBigEndian, exifAt, 2);
    exif.AddLong(0xA002, static_cast<quint32>(spec.pixelSize.width()));
    exif.AddLong(0xA003, static_cast<quint32>(spec.pixelSize.height()));
    const QByteArray exifBytes = spec.pixelSize.isEmpty() ? QByteArray() : exif.Bytes(0);

    const quint32 previewAt = exifAt + static_cast<quint32>(exifBytes.size());
    const quint32 thumbnailAt = previewAt + 2 + 2 * 12 + 4;
    Directory preview(spec.isBigEndian, previewAt, 2);
    preview.AddLong(0x0201, thumbnailAt);
    preview.AddLong(0x0202, static_cast<quint32>(spec.thumbnail.size()));
    const bool hasPreview = !spec.thumbnail.isEmpty();
    const QByteArray previewBytes = hasPreview ? preview.Bytes(0) + spec.thumbnail : QByteArray();

    const QByteArray head = spec.isBigEndian ? "MM" : "II";
    return head + preview.Number16(42) + preview.Number32(8) +
           MainDirectory(spec, exifAt, hasPreview ? previewAt : 0) + exifBytes + previewBytes;
}

QByteArray FileBytes::ExifSegment(const QByteArray& exif)
{
    return QByteArray("Exif\0\0", 6) + exif;
}

QByteArray FileBytes::IccProfile(const char* colorSpace)
{
    if (qstrcmp(colorSpace, "RGB ") == 0) return QColorSpace(QColorSpace::ProPhotoRgb).iccProfile();
    constexpr int headerLength = 128;
    constexpr int tagTableLength = 4 + 12;
    // Long and uneven enough for libpng, which takes profiles that pack very well for too short.
    QByteArray tag = QByteArray("text") + Big32(0);
    for (quint32 i = 0; i < 64; ++i) {
        tag += Big32(i * 2654435761U);
    }
    const int length = headerLength + tagTableLength + tag.size();
    QByteArray profile(headerLength, '\0');
    profile.replace(0, 4, Big32(static_cast<quint32>(length)));
    profile.replace(8, 4, Big32(0x02100000)); // version 2.1
    profile.replace(12, 4, "mntr");
    profile.replace(16, 4, colorSpace);
    profile.replace(20, 4, "XYZ ");
    profile.replace(36, 4, "acsp");
    profile.replace(68, 12, Big32(0xF6D6) + Big32(0x10000) + Big32(0xD32D)); // the illuminant D50
    const QByteArray table =
        Big32(1) + "cprt" + Big32(headerLength + tagTableLength) + Big32(static_cast<quint32>(tag.size()));
    return profile + table + tag;
}
