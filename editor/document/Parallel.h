#pragma once

#include <functional>

/// Spreads independent work over the machine's cores. Any thread.
namespace Parallel {
/// Calls work(0) to work(count - 1), each once, in any order and on several threads when there is enough of
/// it. Returns when all calls have ended. When some throw, one of their exceptions goes on; calls that hadn't
/// begun by then are left out.
void ForEach(int count, const std::function<void(int)>& work);
} // namespace Parallel
