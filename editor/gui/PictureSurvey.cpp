#include "gui/PictureSurvey.h"

#include "document/LXDocumentInterface.h"
#include "document/MergedPartReader.h"
#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <QElapsedTimer>
#include <QtConcurrentRun>

#include <utility>

namespace {
/// The main thread composes for so long at a time, in milliseconds: less than a frame.
constexpr qint64 MostTime = 8;
constexpr int MostTiles = 128; ///< in a batch
constexpr int LongestRun = 8;  ///< tiles of a row that are composed together
} // namespace

PictureSurvey::PictureSurvey(QObject* parent) : QObject(parent), m_Begin(this)
{
    m_Begin.setSingleShot(true);
    m_Begin.setInterval(0);
    connect(&m_Begin, &QTimer::timeout, this, &PictureSurvey::Proceed);
    connect(&m_Worker, &QFutureWatcherBase::finished, this, &PictureSurvey::OnWorkerFinished);
}

PictureSurvey::~PictureSurvey()
{
    if (m_IsRunningWanted) *m_IsRunningWanted = false;
    m_Worker.disconnect(this);
    m_Worker.waitForFinished();
}

void PictureSurvey::Follow(LXDocumentInterface* document, Work work)
{
    if (m_pDocument) m_pDocument->disconnect(this);
    m_pDocument = document;
    m_Work = std::move(work);
    if (document) {
        connect(document, &LXDocumentInterface::CompositionChanged, this,
                &PictureSurvey::OnCompositionChanged);
        connect(document, &LXDocumentInterface::DocumentSizeChanged, this, &PictureSurvey::Restart);
        connect(document, &QObject::destroyed, this, &PictureSurvey::Restart);
    }
    Restart();
}

void PictureSurvey::Restart()
{
    if (m_IsRunningWanted) *m_IsRunningWanted = false;
    constexpr int side = TileWalk::TileSide;
    m_Canvas = m_pDocument ? m_pDocument->GetDocumentSize() : QSize(0, 0);
    m_Grid = QSize((m_Canvas.width() + side - 1) / side, (m_Canvas.height() + side - 1) / side);
    m_StaleCount = m_Grid.width() * m_Grid.height();
    m_Stale.assign(std::size_t(m_StaleCount), true);
    m_Next = 0;
    m_bResting = true;
    m_Running.clear();
    emit Restarted();
    Ask();
}

void PictureSurvey::Ask()
{
    m_bAsked = m_pDocument != nullptr;
    if (m_bAsked && m_bSeen) m_Begin.start();
}

void PictureSurvey::SetSeen(bool seen)
{
    m_bSeen = seen;
    if (!seen) m_bResting = true;
    if (m_bAsked && seen) m_Begin.start();
}

bool PictureSurvey::HasDocument() const
{
    return m_pDocument != nullptr;
}

double PictureSurvey::DeliveredShare() const
{
    if (m_Stale.empty()) return 1;
    return 1 - double(m_StaleCount + int(m_Running.size())) / double(m_Stale.size());
}

void PictureSurvey::OnCompositionChanged(const QRect& rect)
{
    const QRect canvas(QPoint(0, 0), m_Canvas);
    MarkStale(rect.isEmpty() ? canvas : rect & canvas);
}

void PictureSurvey::MarkStale(const QRect& docRect)
{
    TileWalk::ForEachTile(docRect, [this](int column, int row, const QRect&) {
        const auto tile = std::size_t(row) * std::size_t(m_Grid.width()) + std::size_t(column);
        if (m_Stale[tile]) return;
        m_Stale[tile] = true;
        ++m_StaleCount;
    });
}

void PictureSurvey::Proceed()
{
    if (!m_bAsked || !m_bSeen || m_IsRunningWanted) return;
    if (std::exchange(m_bResting, false)) emit Began();
    Batch batch;
    try {
        FillBatch(batch);
        if (batch.tiles.empty()) {
            m_bAsked = false;
            m_bResting = true;
            emit Finished();
            return;
        }
        m_TakenTiles += qint64(batch.tiles.size());
        m_Running = batch.tiles;
        m_IsRunningWanted = std::make_shared<std::atomic<bool>>(true);
        m_Worker.setFuture(QtConcurrent::run(&PictureSurvey::Run, m_Work, batch, m_IsRunningWanted));
    } catch (...) {
        m_IsRunningWanted.reset();
        PutBack(batch.tiles);
        Fail();
    }
}

void PictureSurvey::FillBatch(Batch& batch)
{
    QElapsedTimer clock;
    clock.start();
    while (m_StaleCount > 0 && int(batch.tiles.size()) < MostTiles && clock.elapsed() < MostTime)
        Take(NextRun(), batch);
    if (!batch.tiles.empty()) {
        // Tiles that changed in the meantime are still pixels of a moment ago, and stale again.
        const MergedPartReader reader(m_pDocument, QRect());
        batch.picture = *m_pDocument->GetLayerImage(0);
    }
}

void PictureSurvey::PutBack(const std::vector<QPoint>& tiles)
{
    m_Running.clear();
    for (const QPoint& tile : tiles)
        MarkStale(TileWalk::TileRect(tile.x(), tile.y()));
}

/// Stale tiles of one row that stand side by side, in columns and rows; there is one.
QRect PictureSurvey::NextRun()
{
    const int count = int(m_Stale.size());
    while (!m_Stale[std::size_t(m_Next)])
        m_Next = (m_Next + 1) % count;

    const int column = m_Next % m_Grid.width();
    const int most = qMin(LongestRun, m_Grid.width() - column);
    int length = 1;
    while (length < most && m_Stale[std::size_t(m_Next) + std::size_t(length)])
        ++length;
    return QRect(column, m_Next / m_Grid.width(), length, 1);
}

void PictureSurvey::Take(const QRect& run, Batch& batch)
{
    constexpr int side = TileWalk::TileSide;
    const MergedPartReader reader(m_pDocument, QRect(run.topLeft() * side, run.size() * side));
    for (int column = run.left(); column <= run.right(); ++column) {
        batch.tiles.emplace_back(column, run.top());
        m_Stale[std::size_t(m_Next++)] = false;
        --m_StaleCount;
    }
    m_Next %= int(m_Stale.size());
}

PictureSurvey::Outcome PictureSurvey::Run(const Work& work, const Batch& batch, const Wanted& isWanted)
{
    try {
        const TileThreads::CancelScope scope([isWanted] { return isWanted->load(); });
        return {work(batch)};
    } catch (...) {
        // Abandoned work comes here too; nobody asks for its outcome.
        return {Delivery(), true};
    }
}

void PictureSurvey::OnWorkerFinished()
{
    const bool isWanted = m_IsRunningWanted->load();
    const Outcome outcome = m_Worker.result();
    m_IsRunningWanted.reset();
    const std::vector<QPoint> tiles = std::exchange(m_Running, {});
    if (isWanted && outcome.hasFailed) {
        PutBack(tiles);
        Fail();
        return;
    }
    if (isWanted) outcome.deliver();
    if (m_bAsked && m_bSeen) m_Begin.start();
}

void PictureSurvey::Fail()
{
    m_bAsked = false;
    m_bResting = true;
    emit Failed();
}
