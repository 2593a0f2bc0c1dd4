#include "Mutator.h"

#include "support/FileBytes.h"

QByteArray Mutator::Damage(const QByteArray& bytes)
{
    QByteArray damaged = bytes;
    for (int count = m_Random.bounded(1, 5); count > 0 && !damaged.isEmpty(); --count) {
        DamageOnce(damaged);
    }
    return damaged;
}

QByteArray Mutator::DamagePngBehindItsSums(const QByteArray& bytes)
{
    constexpr int lengthAndType = 8;
    constexpr int sumLength = 4;
    QByteArray result = bytes.left(FileBytes::PngSignature().size());
    const int damagedChunk = m_Random.bounded(6);
    int at = result.size();
    for (int chunk = 0; at + lengthAndType + sumLength <= bytes.size(); ++chunk) {
        const auto* length = reinterpret_cast<const uchar*>(bytes.constData() + at);
        const int dataLength = length[0] << 24 | length[1] << 16 | length[2] << 8 | length[3];
        const QByteArray type = bytes.mid(at + 4, 4);
        const QByteArray data = bytes.mid(at + lengthAndType, dataLength);
        result += FileBytes::PngChunk(type.constData(), chunk == damagedChunk ? Damage(data) : data);
        at += lengthAndType + dataLength + sumLength;
    }
    return result;
}

int Mutator::Place(const QByteArray& bytes)
{
    constexpr int headLength = 200;
    const bool isInHead = m_Random.bounded(4) != 0;
    return m_Random.bounded(isInHead ? qMin(headLength, bytes.size()) : bytes.size());
}

void Mutator::DamageOnce(QByteArray& bytes)
{
    constexpr char telling[] = {'\x00', '\x01', '\x7F', '\x80', '\xFF', '\xFE'};
    const int at = Place(bytes);
    const int length = m_Random.bounded(1, 17);
    switch (m_Random.bounded(7)) {
    case 0: bytes[at] = static_cast<char>(bytes[at] ^ 1 << m_Random.bounded(8)); break;
    case 1: bytes[at] = static_cast<char>(m_Random.bounded(256)); break;
    case 2: bytes[at] = telling[m_Random.bounded(int(sizeof telling))]; break;
    case 3: bytes.remove(at, length); break;
    case 4: bytes.insert(at, bytes.mid(Place(bytes), length)); break;
    case 5: bytes.truncate(at + bytes.size() / 2); break;
    default: bytes.replace(at, length, bytes.mid(Place(bytes), length)); break;
    }
}
