#pragma once

#include "ZKHostExport.h"

#include "core/ZKBrushSettings.h"

#include <QString>

class QPainterPath;

/// A tool that paints strokes, for those who want something stroked with its settings. Main thread only.
class ZK_HOST_EXPORT ZKIBrushTool
{
public:
    virtual ~ZKIBrushTool();

    /// Strokes the path on the current layer, or on its mask if that is selected, as one undo step. Returns
    /// when the stroke is painted, cancelled, or refused; the tool itself tells the person why.
    /// @param path  document pixels; one without lines does nothing
    virtual void StrokePath(const QPainterPath& path) = 0;

    /// What people call it.
    virtual QString GetName() const = 0;

    /// They last beyond the end of the program.
    virtual ZKBrushSettings GetSettings() const = 0;
    virtual void SetSettings(const ZKBrushSettings& settings) = 0;
};
