#pragma once

#include "ZKHostExport.h"

#include "history/PaintCommandData.h"

/// What a LayerMaskPaintCommand puts in and takes out.
class ZK_HOST_EXPORT LayerMaskPaintCommandData : public PaintCommandData
{
public:
    int GetDataType() const override;
};
