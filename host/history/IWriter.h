#pragma once

#include "ZKHostExport.h"

#include <QtGlobal>

/// A place to which a command's data is written, such as a history file.
class ZK_HOST_EXPORT IWriter
{
public:
    virtual ~IWriter();

    /// Appends the bytes; false when they can't be kept.
    virtual bool Write(const void* bytes, qint64 size) = 0;
};
