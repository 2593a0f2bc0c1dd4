#pragma once

/// Where the zoom keys stop: the next stop above (direction > 0) or below a scale, as factors inside the
/// limits of the view. A scale that is a stop is left; beyond the last stop the answer is that one.
double NextZoomStop(double scale, int direction);
