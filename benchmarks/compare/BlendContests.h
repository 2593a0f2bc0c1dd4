#pragma once

namespace BlendContests {
/// The blend modes on pictures of `side` x `side`, beside QPainter on straight pixels.
void Run(int side, int threads);
} // namespace BlendContests
