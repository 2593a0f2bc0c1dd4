#include "utils/FaultSeams.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace {
struct SeamState
{
    std::atomic<int> passesToFailure{0};
    std::atomic<int> delay{0};
    std::atomic<int> passesToExit{0};
};

constexpr int SeamCount = static_cast<int>(FaultSeams::Seam::SwapRead) + 1;

SeamState& State(FaultSeams::Seam seam)
{
    static std::array<SeamState, SeamCount> states;
    return states[static_cast<std::size_t>(seam)];
}
} // namespace

void FaultSeams::FailNth(Seam seam, int n)
{
    State(seam).passesToFailure = n;
}

void FaultSeams::ExitAtNth(Seam seam, int n)
{
    State(seam).passesToExit = n;
}

void FaultSeams::SlowDown(Seam seam, int milliseconds)
{
    State(seam).delay = milliseconds;
}

void FaultSeams::Reset()
{
    for (int seam = 0; seam < SeamCount; ++seam) {
        FailNth(static_cast<Seam>(seam), 0);
        SlowDown(static_cast<Seam>(seam), 0);
        ExitAtNth(static_cast<Seam>(seam), 0);
    }
}

namespace {
/// Whether this pass is the one that was armed. Unarmed is the common case and costs one load.
bool IsNth(std::atomic<int>& passes)
{
    int left = passes.load(std::memory_order_relaxed);
    while (left > 0) {
        if (passes.compare_exchange_weak(left, left - 1)) return left == 1;
    }
    return false;
}
} // namespace

bool FaultSeams::Pass(Seam seam)
{
    SeamState& state = State(seam);
    const int delay = state.delay.load(std::memory_order_relaxed);
    if (delay > 0) std::this_thread::sleep_for(std::chrono::milliseconds(delay));

    if (IsNth(state.passesToExit)) std::_Exit(ExitCode);
    return IsNth(state.passesToFailure);
}
