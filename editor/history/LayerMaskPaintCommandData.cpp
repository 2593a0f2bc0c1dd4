#include "history/LayerMaskPaintCommandData.h"

#include "history/CommandDataType.h"

int LayerMaskPaintCommandData::GetDataType() const
{
    return CommandDataType::LayerMaskPaint;
}
