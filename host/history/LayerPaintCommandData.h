#pragma once

#include "ZKHostExport.h"

#include "history/PaintCommandData.h"

/// What a LayerPaintCommand puts in and takes out.
class ZK_HOST_EXPORT LayerPaintCommandData : public PaintCommandData
{
public:
    int GetDataType() const override;
};
