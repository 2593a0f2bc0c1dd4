#pragma once

#include "history/IReader.h"
#include "history/IWriter.h"

#include <QByteArray>

#include <cstring>

/// A history file in memory; can be cut short.
class MemoryFile : public IReader, public IWriter
{
public:
    bool Write(const void* data, qint64 size) override
    {
        if (isFull) return false;
        bytes.append(static_cast<const char*>(data), static_cast<int>(size));
        return true;
    }

    bool Read(void* data, qint64 size) override
    {
        if (position + size > bytes.size()) return false;
        std::memcpy(data, bytes.constData() + position, static_cast<std::size_t>(size));
        position += size;
        return true;
    }

    QByteArray bytes;
    qint64 position = 0;
    bool isFull = false;
};
