#pragma once

#include "gui/LXOperationProgress.h"
#include "gui/StrokeJob.h"

#include <atomic>

/// Paints a stroke on a worker while the person waits, or cancels it. Main thread only.
class StrokeProgress : public LXOperationProgress
{
    Q_OBJECT

public:
    /// The target must outlive it; the rest as StrokeJob::Paint takes it.
    StrokeProgress(QWidget* parent, const StrokeJob::Target& target, const QPainterPath& path,
                   const QColor& color, const ZKBrushSettings& settings);
    /// Waits for the worker.
    ~StrokeProgress() override;

    /// Paints: true when it came to its end. False when it was cancelled or failed; GetFailure() tells.
    bool Paint();

    /// What was painted.
    const StrokeJob::Change& GetChange() const { return m_Change; }

    /// Why it failed, in words; empty when it was cancelled.
    QString GetFailure() const { return m_Failure; }

protected:
    void Run() override;

private:
    void Show(int done, int all);

    const StrokeJob::Target& m_Target;
    QPainterPath m_Path;
    QColor m_Color;
    ZKBrushSettings m_Settings;
    std::atomic<int> m_Shown{0}; ///< percent
    StrokeJob::Change m_Change;
    QString m_Failure;
};
