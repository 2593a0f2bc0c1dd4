#pragma once

namespace FillContests {
/// Flood fill, color range and convolution on pictures of `side` x `side`, beside OpenCV.
void Run(int side, int threads);
} // namespace FillContests
