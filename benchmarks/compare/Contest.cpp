#include "Contest.h"

#include <QThreadPool>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <thread>
#include <vector>

namespace {
using Clock = std::chrono::steady_clock;

constexpr int Rounds = 7;
constexpr std::size_t CopyBytes = std::size_t(64) << 20;

QString s_filter; // NOLINT(bugprone-throwing-static-initialization)

/// The processor's time on one thread, which hardly hangs on what else the machine does; on several the
/// clock's.
double SecondsNow(int threads)
{
    if (threads > 1) return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double SecondsOf(int threads, const std::function<void()>& work)
{
    const double start = SecondsNow(threads);
    work();
    return SecondsNow(threads) - start;
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Copies by as many threads as the contest has.
class Copier
{
public:
    explicit Copier(int threads) : m_Threads(threads), m_From(CopyBytes, 1), m_To(CopyBytes, 2) {}

    void operator()()
    {
        Contests::InBands(m_Threads, static_cast<int>(CopyBytes / 4096), [this](int top, int bottom) {
            const auto first = static_cast<std::size_t>(top) * 4096;
            const auto count = static_cast<std::size_t>(bottom - top) * 4096;
            std::memcpy(m_To.data() + first, m_From.data() + first, count);
        });
    }

private:
    int m_Threads;
    std::vector<char> m_From;
    std::vector<char> m_To;
};
} // namespace

void Contests::InBands(int threads, int height, const std::function<void(int, int)>& work)
{
    const auto edge = [&](int band) { return static_cast<int>(qint64(height) * band / threads); };
    std::vector<std::thread> helpers;
    for (int band = 1; band < threads; ++band) {
        helpers.emplace_back(work, edge(band), edge(band + 1));
    }
    work(0, edge(1));
    for (std::thread& helper : helpers) {
        helper.join();
    }
}

void Contests::SetFilter(const QString& part)
{
    s_filter = part;
}

bool Contests::IsWanted(const QString& name)
{
    return name.contains(s_filter, Qt::CaseInsensitive);
}

void Contests::PrintHeader(int threads)
{
    std::printf(
        "\n%d thread%s\n\n| job | ours, Mpixel/s | other, Mpixel/s | ratio | goal | share of memcpy |\n"
        "|---|---|---|---|---|---|\n",
        threads, threads == 1 ? "" : "s");
}

void Contests::Run(const Contest& contest, int threads)
{
    if (!IsWanted(contest.name)) return;
    QThreadPool::globalInstance()->setMaxThreadCount(threads);
    Copier copier(threads);
    std::vector<double> ours;
    std::vector<double> other;
    std::vector<double> copies;
    for (int round = 0; round < Rounds; ++round) {
        if (contest.prepare) contest.prepare();
        ours.push_back(SecondsOf(threads, contest.ours));
        if (contest.other) {
            if (contest.prepareOther) contest.prepareOther();
            other.push_back(SecondsOf(threads, [&] { contest.other(threads); }));
        }
        copies.push_back(SecondsOf(threads, [&] { copier(); }));
    }
    const double oursSeconds = Median(ours);
    const double otherSeconds = other.empty() ? 0.0 : Median(other);
    const auto pixels = static_cast<double>(contest.pixels) / 1e6;
    const double copyRate = 2.0 * static_cast<double>(CopyBytes) / Median(copies);
    const double share = static_cast<double>(contest.bytes) / oursSeconds / copyRate;
    const double ratio = otherSeconds / oursSeconds;
    std::printf("| %s | %.0f | %.0f | %.2f | %.1f%s | %.0f %% |\n", qPrintable(contest.name),
                pixels / oursSeconds, otherSeconds > 0 ? pixels / otherSeconds : 0.0, ratio, contest.goal,
                ratio < contest.goal ? " (missed)" : "", 100 * share);
    std::fflush(stdout);
}
