#pragma once

#include "ZKHostExport.h"

/// Small services that belong to nothing in particular.
namespace Utils {
/// Goes on with the checksum CRC-32 (of ISO 3309, as in PNG files) over more bytes. Any thread.
/// @param crc   what the bytes before gave; with no data, `CRC32(0, nullptr, 0)` gives the value to start
/// with
/// @param data  may be null when the size is 0
ZK_HOST_EXPORT unsigned int CRC32(unsigned int crc, const void* data, unsigned int size);
} // namespace Utils
