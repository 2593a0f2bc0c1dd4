#pragma once

#include <QByteArray>
#include <QIODevice>

#include <deque>

/// Bytes that are written first and then read once, in portions that are given back as they are read: unlike
/// a byte array it has no largest size and never moves. One thread.
class ChunkBuffer : public QIODevice
{
public:
    ChunkBuffer() { open(QIODevice::ReadWrite | QIODevice::Unbuffered); }

    bool isSequential() const override { return true; }

    /// Bytes that were written.
    qint64 Written() const { return m_Written; }

protected:
    qint64 readData(char* data, qint64 length) override;
    qint64 writeData(const char* data, qint64 length) override;

private:
    std::deque<QByteArray> m_Chunks;
    qint64 m_Written = 0;
    int m_ReadOfFirst = 0; ///< bytes of the first chunk that are read
};
