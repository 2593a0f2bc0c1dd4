#pragma once

#include "EditorExport.h"

#include "history/SelectionModify.h"

#include <QFutureWatcher>
#include <QObject>
#include <QRect>

#include <atomic>
#include <memory>
#include <optional>

/// Makes another selection of a former one, as often as another radius is asked for. What is quickly done is
/// done at once, the rest on a worker, where only the newest radius counts: older work is abandoned. Main
/// thread only.
class ZK_EDITOR_EXPORT SelectionPreview : public QObject
{
    Q_OBJECT

public:
    /// @param canvas  what the selection may grow over, as SelectionModify::Modified()
    SelectionPreview(PlacedMask former, const QRect& canvas, SelectionModify::Kind kind,
                     QObject* parent = nullptr);
    /// Waits for the worker, which ends at its next piece.
    ~SelectionPreview() override;

    /// Ready() or Failed() follows, for the newest radius alone; before this returns when the work is small.
    void Request(int radius);

    /// Nothing more follows until the next request.
    void Stop();

    /// Whether an answer is still to come.
    bool IsUnderWay() const { return m_Wanted.has_value(); }

signals:
    void Ready(const PlacedMask& made);
    /// There is not enough memory.
    void Failed();

private:
    struct Outcome
    {
        PlacedMask made;
        bool hasFailed = false;
    };

    /// Shared with the worker, which may outlive what it works for.
    using Wanted = std::shared_ptr<std::atomic<bool>>;

    static Outcome Make(const PlacedMask& former, const QRect& canvas, SelectionModify::Kind kind, int radius,
                        const Wanted& isWanted);
    bool IsSmall(int radius) const;
    void Start();
    void OnFinished();
    void Deliver(const Outcome& outcome);

    PlacedMask m_Former;
    QRect m_Canvas;
    SelectionModify::Kind m_Kind;
    std::optional<int> m_Wanted; ///< the radius that is asked for and not answered
    int m_Running = 0;           ///< the radius that the worker has
    Wanted m_IsRunningWanted;    ///< null while no worker runs
    QFutureWatcher<Outcome> m_Worker;
};
