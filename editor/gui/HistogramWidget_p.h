#pragma once

#include "gui/HistogramLevels.h"
#include "gui/LevelSurvey.h"

#include <functional>
#include <optional>

class HistogramWidget;
class QKeyEvent;
class QPainter;

/// What the person does with a histogram, and what is told of it. Main thread only.
class HistogramWidgetPrivate : public QObject
{
    Q_OBJECT

public:
    using Range = HistogramLevels::Range;

    explicit HistogramWidgetPrivate(HistogramWidget* widget);

    static HistogramWidgetPrivate* Get(const HistogramWidget* widget);

    const PictureSurvey& Survey() const { return m_Levels.Survey(); }

    bool HasDocument() const { return Survey().HasDocument(); }

    /// Another clock than that of the system, in milliseconds.
    void SetClock(std::function<qint64()> clock) { m_Clock = std::move(clock); }

    /// Where the levels are drawn, widget pixels; the strip of levels is below.
    QRect PlotRect() const;

private:
    friend class HistogramWidget;

    enum class State
    {
        Idle,
        Pressed, ///< a release from here is a click
        Selecting
    };

    void SetDocument(LXDocumentInterface* document);
    void SetChannel(int bits);
    void SetRange(const Range& range);
    void SetLevel(std::optional<int> level);

    void BeginDrag(int level);
    void Drag(int level);
    void FinishDrag();
    void AbortDrag();

    /// False for a key that means nothing here.
    bool TakeKey(const QKeyEvent& event);
    bool TakeEscape();
    void MoveLevel(int level, bool selects);

    int LevelAt(int x) const;
    void OnRestarted();
    void OnCountsChanged();
    void OnFailed();
    void TellNumbers();
    void TellCount();
    void TellStats();

    void Paint(QPainter& painter) const;
    void PaintLevels(QPainter& painter) const;
    void PaintRange(QPainter& painter) const;
    void PaintProgress(QPainter& painter) const;

    HistogramWidget* m_pWidget;
    LevelSurvey m_Levels;
    bool m_bFailed = false;
    int m_Bits = HistogramLevels::AllBits;
    Range m_Range{0, HistogramLevels::LastLevel};
    State m_State = State::Idle;
    int m_Anchor = 0; ///< where the drag began
    Range m_Former;   ///< before the drag
    std::optional<int> m_KeyAnchor;
    std::optional<int> m_Level; ///< under the pointer, or chosen by a key
    std::optional<qint64> m_ToldCount;
    std::function<qint64()> m_Clock;
    qint64 m_CountingSince = 0; ///< by the clock, when it last began after a rest
};
