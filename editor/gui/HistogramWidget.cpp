#include "gui/HistogramWidget.h"

#include "gui/HistogramPainter.h"
#include "gui/HistogramWidget_p.h"

#include <QFocusEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QtMath>

#include <algorithm>

namespace {
constexpr QSize UsualSize(264, 132); ///< a column for each level, and as much round it as is drawn
constexpr QSize LeastSize(72, 56);
constexpr int OutsideOpacity = 170;    ///< of the ground over levels that aren't chosen
constexpr qint64 ProgressAfter = 1000; ///< milliseconds
constexpr int ProgressHeight = 2;

QImage AtRatio(QImage image, double ratio)
{
    image.setDevicePixelRatio(ratio);
    return image;
}
} // namespace

HistogramWidget::HistogramWidget(QWidget* parent)
    : QWidget(parent), m_pPrivate(std::make_unique<HistogramWidgetPrivate>(this))
{
    setAccessibleName(tr("Histogram"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

HistogramWidget::~HistogramWidget() = default;

void HistogramWidget::SetDocument(LXDocumentInterface* document)
{
    m_pPrivate->SetDocument(document);
}

void HistogramWidget::SetChannel(int channel)
{
    m_pPrivate->SetChannel(channel);
}

int HistogramWidget::GetChannel() const
{
    return m_pPrivate->m_Bits;
}

void HistogramWidget::RebuildHistogramm()
{
    m_pPrivate->m_Levels.Survey().Ask();
}

bool HistogramWidget::IsCounting() const
{
    return m_pPrivate->Survey().IsUnderWay();
}

int HistogramWidget::GetFirstLevel() const
{
    return m_pPrivate->m_Range.first;
}

int HistogramWidget::GetLastLevel() const
{
    return m_pPrivate->m_Range.second;
}

void HistogramWidget::SetLevelRange(int first, int last)
{
    const int boundedFirst = qBound(0, first, HistogramLevels::LastLevel);
    const int boundedLast = qBound(0, last, HistogramLevels::LastLevel);
    m_pPrivate->SetRange(std::minmax(boundedFirst, boundedLast));
}

QSize HistogramWidget::sizeHint() const
{
    return UsualSize;
}

QSize HistogramWidget::minimumSizeHint() const
{
    return LeastSize;
}

void HistogramWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    m_pPrivate->Paint(painter);
    painter.setPen(palette().color(hasFocus() ? QPalette::Link : QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void HistogramWidgetPrivate::Paint(QPainter& painter) const
{
    if (PlotRect().isEmpty()) return;
    if (m_bFailed) {
        painter.setPen(m_pWidget->palette().color(QPalette::PlaceholderText));
        painter.drawText(m_pWidget->rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap,
                         HistogramWidget::tr("There is not enough memory to count the levels."));
        return;
    }
    PaintLevels(painter);
    if (!HasDocument()) return;
    PaintRange(painter);
    PaintProgress(painter);
}

void HistogramWidgetPrivate::PaintLevels(QPainter& painter) const
{
    const QPalette palette = m_pWidget->palette();
    const double ratio = m_pWidget->devicePixelRatioF();
    const QRect plot = PlotRect();
    const HistogramLook look =
        HistogramLook::On(palette.color(QPalette::Base), palette.color(QPalette::PlaceholderText));
    painter.drawImage(plot.topLeft(), AtRatio(RenderHistogram(m_Levels.Counts(), m_Bits,
                                                              (QSizeF(plot.size()) * ratio).toSize(), look),
                                              ratio));
    const QRect strip(plot.left(), plot.bottom() + 3, plot.width(), m_pWidget->height() - plot.bottom() - 7);
    painter.drawImage(strip.topLeft(),
                      AtRatio(RenderLevelStrip(m_Bits, (QSizeF(strip.size()) * ratio).toSize()), ratio));
}

void HistogramWidgetPrivate::PaintRange(QPainter& painter) const
{
    const QRectF plot = PlotRect();
    const double step = plot.width() / (HistogramLevels::LastLevel + 1);
    const double left = plot.left() + m_Range.first * step;
    const double right = plot.left() + (m_Range.second + 1) * step;
    QColor veil = m_pWidget->palette().color(QPalette::Base);
    veil.setAlpha(OutsideOpacity);
    const QColor ink = m_pWidget->palette().color(QPalette::Text);
    if (m_Range.first > 0) {
        painter.fillRect(QRectF(QPointF(plot.left(), plot.top()), QPointF(left, plot.bottom())), veil);
        painter.fillRect(QRectF(qRound(left) - 1, plot.top(), 1, plot.height()), ink);
    }
    if (m_Range.second < HistogramLevels::LastLevel) {
        painter.fillRect(QRectF(QPointF(right, plot.top()), QPointF(plot.right(), plot.bottom())), veil);
        painter.fillRect(QRectF(qRound(right), plot.top(), 1, plot.height()), ink);
    }
    if (m_Level) {
        QColor line = ink;
        line.setAlpha(128);
        painter.fillRect(QRectF(qFloor(plot.left() + (*m_Level + 0.5) * step), plot.top(), 1, plot.height()),
                         line);
    }
}

void HistogramWidgetPrivate::PaintProgress(QPainter& painter) const
{
    const double share = Survey().DeliveredShare();
    // What was only asked for hasn't begun, and what was changed a moment ago is soon counted.
    if (!Survey().IsAtWork() || share >= 1 || m_Clock() - m_CountingSince < ProgressAfter) return;
    const QRectF plot = PlotRect();
    painter.fillRect(QRectF(plot.left(), plot.top(), plot.width() * share, ProgressHeight),
                     m_pWidget->palette().color(QPalette::Text));
}

void HistogramWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_pPrivate->m_Levels.Survey().SetSeen(true);
}

void HistogramWidget::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_pPrivate->AbortDrag();
    m_pPrivate->m_Levels.Survey().SetSeen(false);
}

void HistogramWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_pPrivate->HasDocument()) {
        m_pPrivate->BeginDrag(m_pPrivate->LevelAt(event->x()));
    } else {
        m_pPrivate->AbortDrag();
    }
}

void HistogramWidget::mouseMoveEvent(QMouseEvent* event)
{
    const int level = m_pPrivate->LevelAt(event->x());
    const bool isHere = event->buttons() != Qt::NoButton || rect().contains(event->pos());
    m_pPrivate->SetLevel(isHere ? std::make_optional(level) : std::nullopt);
    m_pPrivate->Drag(level);
}

void HistogramWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) m_pPrivate->FinishDrag();
}

void HistogramWidget::leaveEvent(QEvent* event)
{
    QWidget::leaveEvent(event);
    m_pPrivate->SetLevel(std::nullopt);
}

void HistogramWidget::keyPressEvent(QKeyEvent* event)
{
    if (!m_pPrivate->TakeKey(*event)) QWidget::keyPressEvent(event);
}

void HistogramWidget::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void HistogramWidget::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    m_pPrivate->m_KeyAnchor.reset();
    if (!underMouse()) m_pPrivate->SetLevel(std::nullopt);
    update();
}
