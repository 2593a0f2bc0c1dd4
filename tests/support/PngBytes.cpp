#include "support/FileBytes.h"

#include <vector>

namespace {
/// Bit by bit, as the format describes it.
quint32 Crc(const QByteArray& bytes)
{
    quint32 crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320 : crc >> 1;
        }
    }
    return ~crc;
}

int ChannelCount(FileBytes::PngSpec::ColorType type)
{
    switch (type) {
    case FileBytes::PngSpec::Rgb: return 3;
    case FileBytes::PngSpec::GrayAlpha: return 2;
    case FileBytes::PngSpec::Rgba: return 4;
    default: return 1;
    }
}

/// The pixels of one pass: every step-th one from a first one.
struct Pass
{
    int firstX, firstY, stepX, stepY;
};

/// The whole picture as one, or the seven of an interlaced file.
std::vector<Pass> PassesOf(bool isInterlaced)
{
    if (!isInterlaced) return {{0, 0, 1, 1}};
    return {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
}

/// Samples put one behind the other, from the highest bit on.
class BitRow
{
public:
    void Add(int value, int bits)
    {
        for (int bit = bits - 1; bit >= 0; --bit, ++m_Count) {
            if (m_Count % 8 == 0) m_Bytes.append('\0');
            if ((value >> bit) & 1)
                m_Bytes[m_Bytes.size() - 1] = static_cast<char>(m_Bytes.back() | 0x80 >> (m_Count % 8));
        }
    }

    const QByteArray& Bytes() const { return m_Bytes; }

private:
    QByteArray m_Bytes;
    int m_Count = 0;
};

QByteArray RowsOf(const FileBytes::PngSpec& spec, const Pass& pass, const FileBytes::PngSample& sample)
{
    QByteArray rows;
    if (pass.firstX >= spec.size.width()) return rows;
    for (int y = pass.firstY; y < spec.size.height(); y += pass.stepY) {
        BitRow row;
        for (int x = pass.firstX; x < spec.size.width(); x += pass.stepX) {
            for (int channel = 0; channel < ChannelCount(spec.colorType); ++channel) {
                row.Add(sample(x, y, channel), spec.bitDepth);
            }
        }
        constexpr char noFilter = 0;
        rows += noFilter;
        rows += row.Bytes();
    }
    return rows;
}
} // namespace

QByteArray FileBytes::PngSignature()
{
    return QByteArray("\x89PNG\r\n\x1a\n", 8);
}

QByteArray FileBytes::PngChunk(const char* type, const QByteArray& data)
{
    return Big32(static_cast<quint32>(data.size())) + type + data + Big32(Crc(type + data));
}

QByteArray FileBytes::PngHeader(const PngSpec& spec)
{
    QByteArray header =
        Big32(static_cast<quint32>(spec.size.width())) + Big32(static_cast<quint32>(spec.size.height()));
    header.append(static_cast<char>(spec.bitDepth)).append(static_cast<char>(spec.colorType));
    header.append('\0').append('\0').append(static_cast<char>(spec.isInterlaced));
    return PngChunk("IHDR", header);
}

QByteArray FileBytes::Png(const PngSpec& spec, const PngSample& sample)
{
    QByteArray rows;
    for (const Pass& pass : PassesOf(spec.isInterlaced)) {
        rows += RowsOf(spec, pass, sample);
    }
    constexpr int lengthBeforeStream = 4;
    const QByteArray stream = qCompress(rows).mid(lengthBeforeStream);
    return PngSignature() + PngHeader(spec) + spec.chunksBeforeData + PngChunk("IDAT", stream) +
           PngChunk("IEND", {});
}
