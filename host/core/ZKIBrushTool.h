#pragma once

#include "ZKHostExport.h"

class QPainterPath;

/// A tool that paints strokes, for those who want something stroked with its settings. Main thread only.
class ZK_HOST_EXPORT ZKIBrushTool
{
public:
    virtual ~ZKIBrushTool();

    /// Strokes the path on the current layer, or on its mask if that is selected, as one undo step.
    /// @param path  document pixels
    virtual void StrokePath(const QPainterPath& path) = 0;
};
