#include "document/LXDocumentInterface.h"
#include "gui/HistogramWidget.h"
#include "gui/HistogramWidget_p.h"

#include <QDeadlineTimer>
#include <QKeyEvent>

#include <algorithm>
#include <limits>

namespace {
constexpr int Padding = 4;
constexpr int StripHeight = 8;
constexpr int PageOfLevels = 16;
constexpr HistogramLevels::Range AllLevels{0, HistogramLevels::LastLevel};

int ToInt(qint64 pixels)
{
    return int(qMin(pixels, qint64(std::numeric_limits<int>::max())));
}
} // namespace

HistogramWidgetPrivate::HistogramWidgetPrivate(HistogramWidget* widget)
    : QObject(widget),
      m_pWidget(widget),
      m_Levels(this),
      m_Clock([] { return QDeadlineTimer::current().deadline(); })
{
    connect(&m_Levels, &LevelSurvey::Changed, this, &HistogramWidgetPrivate::OnCountsChanged);
    PictureSurvey& survey = m_Levels.Survey();
    connect(&survey, &PictureSurvey::Restarted, this, &HistogramWidgetPrivate::OnRestarted);
    connect(&survey, &PictureSurvey::Began, this, [this] { m_CountingSince = m_Clock(); });
    connect(&survey, &PictureSurvey::Finished, widget, QOverload<>::of(&QWidget::update));
    connect(&survey, &PictureSurvey::Failed, this, &HistogramWidgetPrivate::OnFailed);
}

HistogramWidgetPrivate* HistogramWidgetPrivate::Get(const HistogramWidget* widget)
{
    return widget->m_pPrivate.get();
}

QRect HistogramWidgetPrivate::PlotRect() const
{
    return m_pWidget->rect().adjusted(Padding, Padding, -Padding, -Padding - StripHeight - Padding / 2);
}

void HistogramWidgetPrivate::SetDocument(LXDocumentInterface* document)
{
    AbortDrag();
    m_Range = AllLevels;
    m_KeyAnchor.reset();
    emit m_pWidget->LevelRangeChanged(m_Range.first, m_Range.second);
    m_ToldCount.reset();
    m_Level.reset();
    emit m_pWidget->StatsNoInfo();
    m_Levels.SetDocument(document);
}

void HistogramWidgetPrivate::SetChannel(int bits)
{
    if (bits < 0 || bits > HistogramLevels::AllBits || bits == m_Bits) return;
    m_Bits = bits;
    TellNumbers();
}

void HistogramWidgetPrivate::SetRange(const Range& range)
{
    if (range == m_Range) return;
    m_Range = range;
    emit m_pWidget->LevelRangeChanged(range.first, range.second);
    TellCount();
    m_pWidget->update();
}

void HistogramWidgetPrivate::SetLevel(std::optional<int> level)
{
    if (!HasDocument()) level.reset();
    if (level == m_Level) return;
    m_Level = level;
    TellStats();
    m_pWidget->update();
}

void HistogramWidgetPrivate::BeginDrag(int level)
{
    m_State = State::Pressed;
    m_Anchor = level;
    m_Former = m_Range;
    m_KeyAnchor.reset();
}

void HistogramWidgetPrivate::Drag(int level)
{
    if (m_State == State::Pressed && level != m_Anchor) m_State = State::Selecting;
    if (m_State == State::Selecting) SetRange(std::minmax(m_Anchor, level));
}

void HistogramWidgetPrivate::FinishDrag()
{
    if (m_State == State::Pressed) SetRange(AllLevels);
    m_State = State::Idle;
}

void HistogramWidgetPrivate::AbortDrag()
{
    if (m_State == State::Selecting) SetRange(m_Former);
    m_State = State::Idle;
}

bool HistogramWidgetPrivate::TakeKey(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Escape) return TakeEscape();
    if (!HasDocument() || (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier))) return false;

    const bool selects = event.modifiers() & Qt::ShiftModifier;
    const int level = m_Level.value_or(0);
    switch (event.key()) {
    case Qt::Key_Left: MoveLevel(level - 1, selects); return true;
    case Qt::Key_Right: MoveLevel(m_Level ? level + 1 : 0, selects); return true;
    case Qt::Key_PageDown: MoveLevel(level - PageOfLevels, selects); return true;
    case Qt::Key_PageUp: MoveLevel(level + PageOfLevels, selects); return true;
    case Qt::Key_Home: MoveLevel(AllLevels.first, selects); return true;
    case Qt::Key_End: MoveLevel(AllLevels.second, selects); return true;
    default: return false;
    }
}

bool HistogramWidgetPrivate::TakeEscape()
{
    const bool isDragging = m_State != State::Idle;
    if (!isDragging && m_Range == AllLevels) return false;
    m_KeyAnchor.reset();
    if (isDragging) {
        AbortDrag();
    } else {
        SetRange(AllLevels);
    }
    return true;
}

void HistogramWidgetPrivate::MoveLevel(int level, bool selects)
{
    const int moved = qBound(AllLevels.first, level, AllLevels.second);
    if (!selects) {
        m_KeyAnchor.reset();
    } else if (!m_KeyAnchor) {
        m_KeyAnchor = m_Level.value_or(moved);
    }
    SetLevel(moved);
    if (m_KeyAnchor) SetRange(std::minmax(*m_KeyAnchor, moved));
}

int HistogramWidgetPrivate::LevelAt(int x) const
{
    const QRect plot = PlotRect();
    return HistogramLevels::LevelAt(x + 0.5 - plot.left(), plot.width());
}

void HistogramWidgetPrivate::OnRestarted()
{
    if (HasDocument()) return;
    AbortDrag();
    SetLevel(std::nullopt);
}

void HistogramWidgetPrivate::OnCountsChanged()
{
    m_bFailed = false;
    TellNumbers();
}

void HistogramWidgetPrivate::TellNumbers()
{
    TellCount();
    if (m_Level) TellStats();
    m_pWidget->update();
}

void HistogramWidgetPrivate::OnFailed()
{
    m_bFailed = true;
    m_pWidget->update();
}

void HistogramWidgetPrivate::TellCount()
{
    const qint64 count = HistogramLevels::PixelsIn(m_Levels.Counts(), m_Bits, m_Range);
    if (m_ToldCount == count) return;
    m_ToldCount = count;
    emit m_pWidget->CountChanged(ToInt(count));
}

void HistogramWidgetPrivate::TellStats()
{
    if (!m_Level) {
        m_pWidget->setAccessibleDescription(QString());
        emit m_pWidget->StatsNoInfo();
        return;
    }
    const qint64 pixels = HistogramLevels::PixelsIn(m_Levels.Counts(), m_Bits, {*m_Level, *m_Level});
    m_pWidget->setAccessibleDescription(HistogramWidget::tr("Level %1: %2 pixels").arg(*m_Level).arg(pixels));
    emit m_pWidget->StatsChanged(ToInt(pixels), *m_Level);
}
