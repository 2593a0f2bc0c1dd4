#include "formats/ChunkBuffer.h"

#include <algorithm>
#include <cstring>

namespace {
constexpr int ChunkBytes = 1 << 20;
} // namespace

qint64 ChunkBuffer::readData(char* data, qint64 length)
{
    qint64 done = 0;
    while (done < length && !m_Chunks.empty()) {
        const QByteArray& chunk = m_Chunks.front();
        const qint64 count = std::min<qint64>(length - done, chunk.size() - m_ReadOfFirst);
        std::memcpy(data + done, chunk.constData() + m_ReadOfFirst, static_cast<size_t>(count));
        done += count;
        m_ReadOfFirst += static_cast<int>(count);
        if (m_ReadOfFirst < chunk.size()) break;
        m_Chunks.pop_front();
        m_ReadOfFirst = 0;
    }
    return done;
}

qint64 ChunkBuffer::writeData(const char* data, qint64 length)
{
    qint64 done = 0;
    while (done < length) {
        if (m_Chunks.empty() || m_Chunks.back().size() == ChunkBytes) {
            m_Chunks.emplace_back();
            m_Chunks.back().reserve(ChunkBytes);
        }
        QByteArray& chunk = m_Chunks.back();
        const qint64 count = std::min<qint64>(length - done, ChunkBytes - chunk.size());
        chunk.append(data + done, static_cast<int>(count));
        done += count;
    }
    m_Written += length;
    return length;
}
