#include "gui/StrokeProgress.h"

#include "image/TileThreads.h"

#include <new>

namespace {
constexpr int WholeWork = 100;
}

StrokeProgress::StrokeProgress(QWidget* parent, const StrokeJob::Target& target, const QPainterPath& path,
                               const QColor& color, const ZKBrushSettings& settings)
    : LXOperationProgress(parent), m_Target(target), m_Path(path), m_Color(color), m_Settings(settings)
{
    setWindowTitle(tr("Zenkari"));
    SetProgressRange(0, WholeWork);
    SetProgressLabel(tr("Painting the stroke…"));
}

StrokeProgress::~StrokeProgress()
{
    WaitForFinished();
}

bool StrokeProgress::Paint()
{
    const bool isDone = Execute() == 1;
    WaitForFinished();
    return isDone && m_Failure.isEmpty();
}

void StrokeProgress::Run()
{
    try {
        const TileThreads::CancelScope scope([this] { return !IsCancelled(); });
        m_Change = StrokeJob::Paint(m_Target, m_Path, m_Color, m_Settings,
                                    [this](int done, int all) { Show(done, all); });
    } catch (const TileThreads::Cancelled&) {
        m_Change = StrokeJob::Change();
    } catch (const std::bad_alloc&) {
        m_Failure = tr("There is not enough memory.");
    } catch (const std::exception& exception) {
        m_Failure = QString::fromUtf8(exception.what());
    } catch (...) {
        m_Failure = tr("Unexpected error occurred.");
    }
}

// Only whole steps are sent to the main thread, and each once.
void StrokeProgress::Show(int done, int all)
{
    const int percent = static_cast<int>(qint64(WholeWork) * done / all);
    int shown = m_Shown;
    while (percent > shown) {
        if (!m_Shown.compare_exchange_weak(shown, percent)) continue;
        QMetaObject::invokeMethod(
            this, [this] { SetProgressPos(m_Shown); }, Qt::QueuedConnection);
        return;
    }
}
