#pragma once

#include <QBrush>

class ZKCMSTransform;

/// The colors of brushes, whatever they are made of. Any thread.
namespace BrushColors {
/// The same brush with its color, the stops of its gradient or the pixels of its picture brought through the
/// transform.
QBrush Converted(const QBrush& brush, const ZKCMSTransform& transform);
} // namespace BrushColors
