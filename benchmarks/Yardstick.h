#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <vector>

/// Ratios against a plain copy and against the slow twin, taken in the same run: machines differ and are
/// noisy, ratios much less so.
namespace Yardstick {
using Clock = std::chrono::steady_clock;

/// The shortest of a few runs, in seconds.
template <class Action>
double SecondsOf(Action action)
{
    double best = 1e9;
    for (int run = 0; run < 3; ++run) {
        const auto start = Clock::now();
        action();
        best = std::min(best, std::chrono::duration<double>(Clock::now() - start).count());
    }
    return best;
}

/// Copying as many pixels as an image has.
inline double SecondsOfCopy(std::int64_t pixels)
{
    const std::vector<std::uint32_t> from(static_cast<std::size_t>(pixels), 1);
    std::vector<std::uint32_t> to(static_cast<std::size_t>(pixels));
    return SecondsOf([&] {
        std::memcpy(to.data(), from.data(), to.size() * sizeof(to[0]));
        benchmark::DoNotOptimize(to.data());
    });
}

/// Runs `prepare` untimed and `action` timed for each iteration, then reports the pixels a second, how many
/// times as long as a copy it takes, and how many times faster than the twin, which took
/// `twinSecondsPerPixel`.
template <class Prepare, class Action>
void Measure(benchmark::State& state, std::int64_t pixels, double twinSecondsPerPixel, Prepare prepare,
             Action action)
{
    double total = 0;
    for (auto _ : state) {
        prepare();
        const auto start = Clock::now();
        action();
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        state.SetIterationTime(seconds);
        total += seconds;
    }
    const double mean = total / static_cast<double>(state.iterations());
    state.counters["Mpixel/s"] = static_cast<double>(pixels) / mean / 1e6;
    state.counters["x_copy"] = mean / SecondsOfCopy(pixels);
    state.counters["twin/it"] = twinSecondsPerPixel * static_cast<double>(pixels) / mean;
}
} // namespace Yardstick
