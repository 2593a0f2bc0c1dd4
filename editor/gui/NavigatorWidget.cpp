#include "gui/NavigatorWidget.h"

#include "document/LXColorTransformBase.h"
#include "gui/NavigatorWidget_p.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {
constexpr QSize UsualSize(248, 180);
constexpr QSize LeastSize(72, 56);
} // namespace

NavigatorWidget::NavigatorWidget(QWidget* parent)
    : QWidget(parent), m_pPrivate(std::make_unique<NavigatorWidgetPrivate>(this))
{
    setAccessibleName(tr("Navigator"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_pPrivate->UpdateLook();
}

NavigatorWidget::~NavigatorWidget() = default;

void NavigatorWidget::SetDocument(LXDocumentInterface* document,
                                  const std::shared_ptr<const LXColorTransformBase>& colorTransform)
{
    m_pPrivate->m_State = NavigatorWidgetPrivate::State::Idle;
    m_pPrivate->m_Picture.SetDocument(document, colorTransform);
}

void NavigatorWidget::SetViewRect(const QRectF& rect)
{
    m_pPrivate->SetViewRect(rect);
}

QRectF NavigatorWidget::GetViewRect() const
{
    return m_pPrivate->m_ViewRect;
}

void NavigatorWidget::RebuildView()
{
    m_pPrivate->m_Picture.Survey().Ask();
}

bool NavigatorWidget::IsRebuilding() const
{
    return m_pPrivate->Survey().IsUnderWay();
}

QRect NavigatorWidget::GetPictureRect() const
{
    return m_pPrivate->m_Place.Picture();
}

QSize NavigatorWidget::sizeHint() const
{
    return UsualSize;
}

QSize NavigatorWidget::minimumSizeHint() const
{
    return LeastSize;
}

bool NavigatorWidget::event(QEvent* event)
{
    const bool isTaken = QWidget::event(event);
    // Another screen may have finer pixels.
    if (event->type() == QEvent::ScreenChangeInternal) m_pPrivate->UpdatePlace();
    return isTaken;
}

void NavigatorWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    m_pPrivate->Paint(painter);
    if (!hasFocus()) return;
    painter.setPen(palette().color(QPalette::Link));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void NavigatorWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_pPrivate->UpdatePlace();
}

void NavigatorWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) m_pPrivate->UpdateLook();
}

void NavigatorWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // It may come back on a screen with other pixels.
    m_pPrivate->UpdatePlace();
    m_pPrivate->m_Picture.Survey().SetSeen(true);
}

void NavigatorWidget::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_pPrivate->m_State = NavigatorWidgetPrivate::State::Idle;
    m_pPrivate->m_Picture.Survey().SetSeen(false);
}

void NavigatorWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        m_pPrivate->Press(event->pos());
    } else {
        m_pPrivate->AbortDrag();
    }
}

void NavigatorWidget::mouseMoveEvent(QMouseEvent* event)
{
    m_pPrivate->Move(event->pos());
}

void NavigatorWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) m_pPrivate->Release(event->pos());
}

void NavigatorWidget::keyPressEvent(QKeyEvent* event)
{
    if (!m_pPrivate->TakeKey(*event)) QWidget::keyPressEvent(event);
}

void NavigatorWidget::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void NavigatorWidget::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}
