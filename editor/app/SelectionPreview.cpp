#include "app/SelectionPreview.h"

#include "image/TileThreads.h"

#include <QtConcurrentRun>

#include <exception>
#include <utility>

namespace {
/// Pixels times radius; so much takes a few hundredths of a second.
constexpr double SmallWork = 8e6;
} // namespace

SelectionPreview::SelectionPreview(PlacedMask former, const QRect& canvas, SelectionModify::Kind kind,
                                   QObject* parent)
    : QObject(parent), m_Former(std::move(former)), m_Canvas(canvas), m_Kind(kind)
{
    connect(&m_Worker, &QFutureWatcherBase::finished, this, &SelectionPreview::OnFinished);
}

SelectionPreview::~SelectionPreview()
{
    Stop();
    m_Worker.disconnect(this);
    m_Worker.waitForFinished();
}

SelectionPreview::Outcome SelectionPreview::Make(const PlacedMask& former, const QRect& canvas,
                                                 SelectionModify::Kind kind, int radius,
                                                 const Wanted& isWanted)
{
    try {
        const TileThreads::CancelScope scope([isWanted] { return isWanted->load(); });
        return {SelectionModify::Modified(former, canvas, kind, radius)};
    } catch (const std::exception&) {
        // Abandoned work comes here too; nobody asks for its outcome.
        return {PlacedMask(), true};
    }
}

bool SelectionPreview::IsSmall(int radius) const
{
    const QSize size = m_Former.Rect().size();
    return double(size.width()) * size.height() * radius <= SmallWork;
}

void SelectionPreview::Request(int radius)
{
    m_Wanted = radius;
    if (IsSmall(radius)) {
        if (m_IsRunningWanted) *m_IsRunningWanted = false;
        Deliver(Make(m_Former, m_Canvas, m_Kind, radius, std::make_shared<std::atomic<bool>>(true)));
        return;
    }
    if (!m_IsRunningWanted) {
        Start();
    } else if (m_Running != radius) {
        *m_IsRunningWanted = false;
    }
}

void SelectionPreview::Stop()
{
    m_Wanted.reset();
    if (m_IsRunningWanted) *m_IsRunningWanted = false;
}

void SelectionPreview::Start()
{
    m_Running = *m_Wanted;
    m_IsRunningWanted = std::make_shared<std::atomic<bool>>(true);
    m_Worker.setFuture(
        QtConcurrent::run(&SelectionPreview::Make, m_Former, m_Canvas, m_Kind, m_Running, m_IsRunningWanted));
}

void SelectionPreview::OnFinished()
{
    const bool isWhole = m_IsRunningWanted->load();
    m_IsRunningWanted.reset();
    if (!m_Wanted) return;
    if (isWhole) {
        Deliver(m_Worker.result());
    } else {
        Start();
    }
}

void SelectionPreview::Deliver(const Outcome& outcome)
{
    m_Wanted.reset();
    if (outcome.hasFailed) {
        emit Failed();
    } else {
        emit Ready(outcome.made);
    }
}
