#pragma once

#include <QRect>

#include <exception>
#include <functional>

/// Work cut by tiles, on the calling thread and as many of the global pool's as are free.
///
/// The caller always works itself and never waits for a thread that hasn't begun, so work that is already on
/// the pool may be cut again. What the work throws reaches the caller as it was thrown, once all who began
/// have ended; the first failure wins and no new piece is begun after it.
namespace TileThreads {
/// Calls `work(piece)` for each piece from 0 to `count` - 1, in any order.
void ForEach(int count, const std::function<void(int piece)>& work);

/// Calls `work(column, row, part)` for each tile that `rect` meets, as TileWalk::ForEachTile; few tiles stay
/// on the calling thread. `rect` lies inside the image.
void ForEachTile(const QRect& rect, const std::function<void(int column, int row, const QRect& part)>& work);

/// While one lives, its thread's work is abandoned when `isWanted` answers false: it is asked before each
/// piece, by whichever thread does the piece, and ForEach then throws Cancelled.
class CancelScope
{
public:
    explicit CancelScope(std::function<bool()> isWanted);
    ~CancelScope();

private:
    Q_DISABLE_COPY(CancelScope)

    std::function<bool()> m_IsWanted;
    const std::function<bool()>* m_pOuter;
};

/// For pieces that take long, and ask now and then: throws Cancelled when the work is abandoned.
void ThrowIfUnwanted();

/// Thrown when nobody wants the work any more; what was to be written is partly written.
struct Cancelled : std::exception
{
    const char* what() const noexcept override;
};
} // namespace TileThreads
