#pragma once

#include <QPainterPath>
#include <QSize>

#include <vector>

/// Path coverage as it is defined, pixel by pixel: each side of the path counts, with the sign of its way up
/// or down, by the area of the pixel that lies right of it; the fill rule brings the sum, the pixel's mean
/// winding number, between 0 and 1.
namespace PathTwin {
/// Row by row. Curves are cut into 400 chords.
std::vector<double> Coverage(const QPainterPath& path, const QSize& size);
} // namespace PathTwin
