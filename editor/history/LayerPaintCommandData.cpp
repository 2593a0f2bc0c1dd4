#include "history/LayerPaintCommandData.h"

#include "history/CommandDataType.h"

int LayerPaintCommandData::GetDataType() const
{
    return CommandDataType::LayerPaint;
}
