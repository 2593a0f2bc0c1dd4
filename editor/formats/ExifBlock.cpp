#include "formats/ExifBlock.h"

#include <QtEndian>
#include <QtGlobal>

#include <utility>

namespace {
enum Type : quint16
{
    WordType = 3,
    LongType = 4,
    FractionType = 5
};

enum Tag : quint16
{
    StripOffsets = 0x0111,
    Orientation = 0x0112,
    StripByteCounts = 0x0117,
    XResolution = 0x011A,
    YResolution = 0x011B,
    ResolutionUnit = 0x0128,
    PreviewOffset = 0x0201,
    PreviewLength = 0x0202,
    ExifDirectory = 0x8769,
    PixelWidth = 0xA002,
    PixelHeight = 0xA003
};

constexpr quint32 InchUnit = 2;
constexpr quint32 CentimeterUnit = 3;
constexpr double CentimetersPerInch = 2.54;

constexpr quint32 HeaderLength = 8;
constexpr quint32 EntryLength = 12;
} // namespace

ExifBlock::ExifBlock(QByteArray bytes) : m_Bytes(std::move(bytes)), m_IsBigEndian(m_Bytes.startsWith("MM")) {}

int ExifBlock::GetOrientation() const
{
    const quint32 orientation = WholeNumber(MainDirectory(), Orientation).value_or(1);
    return orientation >= 1 && orientation <= 8 ? static_cast<int>(orientation) : 1;
}

double ExifBlock::GetDpi() const
{
    const std::optional<quint32> directory = MainDirectory();
    const double resolution = Fraction(directory, XResolution).value_or(0);
    const quint32 unit = WholeNumber(directory, ResolutionUnit).value_or(InchUnit);
    if (unit == InchUnit) return resolution;
    return unit == CentimeterUnit ? resolution * CentimetersPerInch : 0;
}

void ExifBlock::SetOrientation(int orientation)
{
    PutWholeNumber(MainDirectory(), Orientation, static_cast<quint32>(orientation));
}

void ExifBlock::SetDpi(double dpi)
{
    const std::optional<quint32> directory = MainDirectory();
    PutFraction(directory, XResolution, dpi);
    PutFraction(directory, YResolution, dpi);
    PutWholeNumber(directory, ResolutionUnit, InchUnit);
}

void ExifBlock::SetPixelSize(const QSize& size)
{
    const std::optional<quint32> directory = WholeNumber(MainDirectory(), ExifDirectory);
    PutWholeNumber(directory, PixelWidth, static_cast<quint32>(size.width()));
    PutWholeNumber(directory, PixelHeight, static_cast<quint32>(size.height()));
}

void ExifBlock::DropThumbnail()
{
    const std::optional<quint32> link = PreviewLink();
    if (!link || Long(*link) == 0) return;
    const quint32 directory = Long(*link);
    for (const auto& [offsetTag, lengthTag] :
         {std::pair(PreviewOffset, PreviewLength), {StripOffsets, StripByteCounts}}) {
        const quint32 offset = WholeNumber(directory, offsetTag).value_or(0);
        const quint32 length = WholeNumber(directory, lengthTag).value_or(0);
        if (offset < HeaderLength || !Holds(offset, length)) continue;
        // Taken off where it can be, else only blanked: what stands behind keeps its place.
        if (offset + length == static_cast<quint32>(m_Bytes.size())) {
            m_Bytes.truncate(static_cast<int>(offset));
        } else {
            m_Bytes.replace(static_cast<int>(offset), static_cast<int>(length),
                            QByteArray(static_cast<int>(length), 0));
        }
    }
    PutLong(*link, 0);
}

bool ExifBlock::Holds(quint32 offset, quint32 length) const
{
    const auto size = static_cast<quint32>(m_Bytes.size());
    return offset <= size && length <= size - offset;
}

quint16 ExifBlock::Word(quint32 offset) const
{
    if (!Holds(offset, 2)) return 0;
    const char* at = m_Bytes.constData() + offset;
    return m_IsBigEndian ? qFromBigEndian<quint16>(at) : qFromLittleEndian<quint16>(at);
}

quint32 ExifBlock::Long(quint32 offset) const
{
    if (!Holds(offset, 4)) return 0;
    const char* at = m_Bytes.constData() + offset;
    return m_IsBigEndian ? qFromBigEndian<quint32>(at) : qFromLittleEndian<quint32>(at);
}

void ExifBlock::PutWord(quint32 offset, quint16 value)
{
    if (!Holds(offset, 2)) return;
    char* at = m_Bytes.data() + offset;
    m_IsBigEndian ? qToBigEndian(value, at) : qToLittleEndian(value, at);
}

void ExifBlock::PutLong(quint32 offset, quint32 value)
{
    if (!Holds(offset, 4)) return;
    char* at = m_Bytes.data() + offset;
    m_IsBigEndian ? qToBigEndian(value, at) : qToLittleEndian(value, at);
}

std::optional<quint32> ExifBlock::MainDirectory() const
{
    constexpr quint16 magic = 42;
    const bool isTiff = (m_IsBigEndian || m_Bytes.startsWith("II")) && Word(2) == magic;
    if (!isTiff || Long(4) < HeaderLength) return std::nullopt;
    return Long(4);
}

std::optional<quint32> ExifBlock::PreviewLink() const
{
    const std::optional<quint32> directory = MainDirectory();
    if (!directory || !Holds(*directory, 2)) return std::nullopt;
    const quint32 entries = Word(*directory) * EntryLength;
    if (!Holds(*directory + 2, entries + 4)) return std::nullopt;
    return *directory + 2 + entries;
}

std::optional<ExifBlock::Entry> ExifBlock::Find(std::optional<quint32> directory, quint16 tag) const
{
    if (!directory || !Holds(*directory, 2)) return std::nullopt;
    const quint16 count = Word(*directory);
    quint32 at = *directory + 2;
    for (int i = 0; i < count && Holds(at, EntryLength); ++i, at += EntryLength) {
        if (Word(at) == tag) return Entry{Word(at + 2), Long(at + 4), at + 8};
    }
    return std::nullopt;
}

std::optional<quint32> ExifBlock::WholeNumber(std::optional<quint32> directory, quint16 tag) const
{
    const std::optional<Entry> entry = Find(directory, tag);
    if (!entry || entry->count != 1) return std::nullopt;
    if (entry->type == WordType) return Word(entry->valueAt);
    if (entry->type == LongType) return Long(entry->valueAt);
    return std::nullopt;
}

void ExifBlock::PutWholeNumber(std::optional<quint32> directory, quint16 tag, quint32 value)
{
    const std::optional<Entry> entry = Find(directory, tag);
    if (!entry || entry->count != 1) return;
    if (entry->type == WordType) PutWord(entry->valueAt, static_cast<quint16>(qMin(value, quint32(0xFFFF))));
    if (entry->type == LongType) PutLong(entry->valueAt, value);
}

std::optional<double> ExifBlock::Fraction(std::optional<quint32> directory, quint16 tag) const
{
    const std::optional<Entry> entry = Find(directory, tag);
    if (!entry || entry->type != FractionType || entry->count != 1) return std::nullopt;
    const quint32 at = Long(entry->valueAt);
    if (!Holds(at, 8) || Long(at + 4) == 0) return std::nullopt;
    return static_cast<double>(Long(at)) / Long(at + 4);
}

void ExifBlock::PutFraction(std::optional<quint32> directory, quint16 tag, double value)
{
    constexpr quint32 denominator = 10000;
    const std::optional<Entry> entry = Find(directory, tag);
    if (!entry || entry->type != FractionType || entry->count != 1) return;
    const quint32 at = Long(entry->valueAt);
    // Not into the header: a block that points there is damaged.
    if (at < HeaderLength || !Holds(at, 8)) return;
    PutLong(at, static_cast<quint32>(qRound64(qBound(0.0, value, 400000.0) * denominator)));
    PutLong(at + 4, denominator);
}
