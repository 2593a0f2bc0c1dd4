#include "image/TileThreads.h"

#include "image/TileWalk.h"
#include "utils/FaultSeams.h"
#include "utils/ThreadNotes.h"

#include <QRunnable>
#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

namespace {
/// With fewer tiles, waking a thread costs more than it saves.
constexpr int FewTiles = 8;

thread_local const std::function<bool()>* s_pIsWanted = nullptr;

/// What the threads of one call share. It outlives the call, because a helper may come when all is over.
class Shared
{
public:
    Shared(int count, const std::function<void(int)>& work)
        : m_Count(count), m_Work(work), m_pIsWanted(s_pIsWanted)
    {}

    void RunAsCaller()
    {
        Run();
        std::unique_lock<std::mutex> lock(m_Mutex);
        m_IsOver = true;
        m_Ended.wait(lock, [this] { return m_Helpers == 0; });
        if (m_Failure) std::rethrow_exception(m_Failure);
    }

    void RunAsHelper()
    {
        {
            const std::lock_guard<std::mutex> guard(m_Mutex);
            if (m_IsOver) return;
            ++m_Helpers;
        }
        const std::function<bool()>* const outer = std::exchange(s_pIsWanted, m_pIsWanted);
        Run();
        s_pIsWanted = outer;
        const std::lock_guard<std::mutex> guard(m_Mutex);
        --m_Helpers;
        m_Ended.notify_all();
    }

private:
    void Run()
    {
        try {
            for (int piece = m_Next++; piece < m_Count; piece = m_Next++) {
                TileThreads::ThrowIfUnwanted();
                m_Work(piece);
            }
        } catch (...) {
            const std::lock_guard<std::mutex> guard(m_Mutex);
            if (!m_Failure) m_Failure = std::current_exception();
            m_Next = m_Count;
        }
    }

    const int m_Count;
    const std::function<void(int)>& m_Work; ///< the caller's; used only until it returns
    const std::function<bool()>* const m_pIsWanted;
    std::atomic<int> m_Next{0};
    std::mutex m_Mutex;
    std::condition_variable m_Ended;
    int m_Helpers = 0;
    bool m_IsOver = false;
    std::exception_ptr m_Failure;
};

class Helper : public QRunnable
{
public:
    explicit Helper(std::shared_ptr<Shared> shared) : m_Shared(std::move(shared)) {}

    void run() override
    {
        ThreadNotes::TakenOver(this);
        m_Shared->RunAsHelper();
    }

private:
    std::shared_ptr<Shared> m_Shared;
};

void RunHere(int count, const std::function<void(int)>& work)
{
    for (int piece = 0; piece < count; ++piece) {
        TileThreads::ThrowIfUnwanted();
        work(piece);
    }
}

/// False when no more can be had, for lack of memory too: those who began already work on what belongs to the
/// caller, so it mustn't leave.
bool CallHelper(const std::shared_ptr<Shared>& shared)
{
    try {
        if (FaultSeams::Pass(FaultSeams::Seam::HelperCall)) throw std::bad_alloc();
        auto helper = std::make_unique<Helper>(shared);
        ThreadNotes::HandedOver(helper.get());
        if (!QThreadPool::globalInstance()->tryStart(helper.get())) return false;
        static_cast<void>(helper.release()); // the pool's now
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}
} // namespace

void TileThreads::ForEach(int count, const std::function<void(int)>& work)
{
    const int helpers = std::min(QThreadPool::globalInstance()->maxThreadCount(), count) - 1;
    if (helpers < 1) {
        RunHere(count, work);
        return;
    }
    const auto shared = std::make_shared<Shared>(count, work);
    for (int i = 0; i < helpers; ++i) {
        if (!CallHelper(shared)) break;
    }
    shared->RunAsCaller();
}

void TileThreads::ForEachTile(const QRect& rect, const std::function<void(int, int, const QRect&)>& work)
{
    if (rect.isEmpty()) return;
    const int firstColumn = rect.left() / TileWalk::TileSide;
    const int firstRow = rect.top() / TileWalk::TileSide;
    const int columns = rect.right() / TileWalk::TileSide - firstColumn + 1;
    const int rows = rect.bottom() / TileWalk::TileSide - firstRow + 1;
    const auto visit = [&](int piece) {
        const int column = firstColumn + piece % columns;
        const int row = firstRow + piece / columns;
        work(column, row, TileWalk::TileRect(column, row) & rect);
    };
    if (columns * rows < FewTiles) {
        RunHere(columns * rows, visit);
    } else {
        ForEach(columns * rows, visit);
    }
}

TileThreads::CancelScope::CancelScope(std::function<bool()> isWanted)
    : m_IsWanted(std::move(isWanted)), m_pOuter(std::exchange(s_pIsWanted, &m_IsWanted))
{}

TileThreads::CancelScope::~CancelScope()
{
    s_pIsWanted = m_pOuter;
}

void TileThreads::ThrowIfUnwanted()
{
    if (s_pIsWanted != nullptr && !(*s_pIsWanted)()) throw Cancelled();
}

const char* TileThreads::Cancelled::what() const noexcept
{
    return "The work was cancelled";
}
