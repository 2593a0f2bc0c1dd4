#include "history/LexoCommandData.h"

LexoCommandData::~LexoCommandData() = default;

void LexoCommandData::ReleaseSerializeData() {}

qint64 LexoCommandData::GetMemoryCost() const
{
    return 0;
}
