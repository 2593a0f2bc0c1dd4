#include "utils/Utils.h"

#include <zlib.h>

unsigned int Utils::CRC32(unsigned int crc, const void* data, unsigned int size)
{
    return static_cast<unsigned int>(crc32(crc, static_cast<const Bytef*>(data), size));
}
