#include "document/Parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace {
/// A call takes some tenths of a millisecond; with fewer of them a thread that has to wait for its core costs
/// more than it saves.
constexpr int CallsPerThread = 32;

/// The calls that are left, shared by the threads that work on them.
class CallQueue
{
public:
    CallQueue(int count, const std::function<void(int)>& work) : m_Count(count), m_Work(work) {}

    void Run()
    {
        try {
            for (int i = m_Next++; i < m_Count; i = m_Next++) {
                m_Work(i);
            }
        } catch (...) {
            m_Next = m_Count;
            const std::lock_guard<std::mutex> guard(m_Mutex);
            m_Failure = std::current_exception();
        }
    }

    void RethrowFailure() const
    {
        if (m_Failure) std::rethrow_exception(m_Failure);
    }

private:
    const int m_Count;
    const std::function<void(int)>& m_Work;
    std::atomic<int> m_Next{0};
    std::mutex m_Mutex;
    std::exception_ptr m_Failure;
};

std::vector<std::thread> Helpers(int count, CallQueue& queue)
{
    std::vector<std::thread> helpers;
    try {
        while (static_cast<int>(helpers.size()) < count) {
            helpers.emplace_back([&queue] { queue.Run(); });
        }
    } catch (const std::system_error&) {
        // Without more threads the ones that are there do the work.
        return helpers;
    }
    return helpers;
}
} // namespace

void Parallel::ForEach(int count, const std::function<void(int)>& work)
{
    const int cores = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    CallQueue queue(count, work);
    std::vector<std::thread> helpers = Helpers(std::min(cores, count / CallsPerThread) - 1, queue);
    queue.Run();
    for (std::thread& helper : helpers) {
        helper.join();
    }
    queue.RethrowFailure();
}
