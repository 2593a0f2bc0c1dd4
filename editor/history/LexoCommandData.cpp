#include "history/LexoCommandData.h"

LexoCommandData::~LexoCommandData() = default;

qint64 LexoCommandData::GetMemoryCost() const
{
    return 0;
}
