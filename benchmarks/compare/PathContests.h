#pragma once

namespace PathContests {
/// Paths on pictures of `side` x `side`, beside cairo, and gradients, beside QPainter.
void Run(int side, int threads);
} // namespace PathContests
