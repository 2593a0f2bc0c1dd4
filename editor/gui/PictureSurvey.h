#pragma once

#include "image/LXImage.h"

#include <QFutureWatcher>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QSize>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

class LXDocumentInterface;

/// Hands the merged picture of a document to a worker, tile by tile, and later only the tiles that changed.
///
/// The main thread brings a few tiles up to date at a time, never for long, and a worker gets them as values,
/// so it needs neither lockers nor the document. A document that goes away, and another one in its place,
/// abandon what is under way. Main thread only.
class PictureSurvey : public QObject
{
    Q_OBJECT

public:
    struct Batch
    {
        LXImage32 picture; ///< shares the picture's tiles; of these alone the pixels are the present ones:
        std::vector<QPoint> tiles; ///< column and row
    };

    /// What is done on the main thread with what the worker made.
    using Delivery = std::function<void()>;
    /// Runs on a worker and uses nothing but values. It cuts its work by TileThreads, so that it can be
    /// abandoned, and may throw.
    using Work = std::function<Delivery(const Batch&)>;

    explicit PictureSurvey(QObject* parent);
    /// Abandons what is under way and waits for the worker, which ends at its next tile.
    ~PictureSurvey() override;

    /// Begins anew with this document, or with none: all of it is asked for.
    void Follow(LXDocumentInterface* document, Work work);

    /// Asks for what changed since the last time. It begins when the event loop comes to it, so that who
    /// hears of the change before this may ask at once.
    void Ask();

    /// While nobody sees the result nothing begins; what is asked for waits.
    void SetSeen(bool seen);

    bool HasDocument() const;

    /// Of the document; empty without one.
    QSize GetCanvas() const { return m_Canvas; }

    /// Whether something that was asked for isn't delivered yet.
    bool IsUnderWay() const { return m_bAsked || m_IsRunningWanted; }

    /// Whether it was begun with since the last rest, and isn't all delivered.
    bool IsAtWork() const { return !m_bResting; }

    /// The share of the picture that is delivered and didn't change since, 0 to 1.
    double DeliveredShare() const;

    /// How many tiles were ever handed to the worker; tells how local the work is.
    qint64 TakenTiles() const { return m_TakenTiles; }

signals:
    /// Another document or another canvas: what was delivered before is void.
    void Restarted();
    /// Work begins after a rest: nothing was asked for, or nobody saw it.
    void Began();
    /// All that was asked for is delivered.
    void Finished();
    /// There is not enough memory for what was asked for; the next Ask() tries again.
    void Failed();

private:
    struct Outcome
    {
        Delivery deliver;
        bool hasFailed = false;
    };

    /// Shared with the worker, which may outlive what it works for.
    using Wanted = std::shared_ptr<std::atomic<bool>>;

    static Outcome Run(const Work& work, const Batch& batch, const Wanted& isWanted);
    void Restart();
    void OnCompositionChanged(const QRect& rect);
    void MarkStale(const QRect& docRect);
    void Proceed();
    void FillBatch(Batch& batch);
    /// What was taken and won't be delivered is stale as before.
    void PutBack(const std::vector<QPoint>& tiles);
    QRect NextRun();
    void Take(const QRect& run, Batch& batch);
    void OnWorkerFinished();
    void Fail();

    QPointer<LXDocumentInterface> m_pDocument;
    Work m_Work;
    QSize m_Canvas;
    QSize m_Grid; ///< columns and rows of tiles
    std::vector<bool> m_Stale;
    int m_StaleCount = 0;
    int m_Next = 0; ///< where the search for stale tiles goes on
    bool m_bAsked = false;
    bool m_bSeen = false;
    bool m_bResting = true; ///< the next batch is the first one after a rest
    qint64 m_TakenTiles = 0;
    std::vector<QPoint> m_Running; ///< the tiles that the worker has
    Wanted m_IsRunningWanted;      ///< null while no worker runs
    QFutureWatcher<Outcome> m_Worker;
    QTimer m_Begin;
};
