#pragma once

namespace TransformContests {
/// Turning, perspective and scaling of pictures of `side` x `side`, and the search for borders, beside OpenCV
/// and QImage.
void Run(int side, int threads);
} // namespace TransformContests
