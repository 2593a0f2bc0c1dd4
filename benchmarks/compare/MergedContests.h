#pragma once

namespace MergedContests {
/// The merged picture of 100 megapixels after a small change, beside composing all of it.
void Run(int threads);
} // namespace MergedContests
