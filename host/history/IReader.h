#pragma once

#include "ZKHostExport.h"

#include <QtGlobal>

/// A place from which a command's data is read back, in the order in which it was written.
class ZK_HOST_EXPORT IReader
{
public:
    virtual ~IReader();

    /// Fills all bytes; false when there are fewer.
    virtual bool Read(void* bytes, qint64 size) = 0;
};
