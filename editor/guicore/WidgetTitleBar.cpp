#include "guicore/WidgetTitleBar.h"

#include "utils/ZKIconHelper.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <QWindow>

namespace {
constexpr int SideMargin = 8;
constexpr int SmallMargin = 2;
constexpr int ButtonIcon = 16;
} // namespace

WidgetTitleBar::WidgetTitleBar(QWidget* owner)
    : QWidget(owner), m_pOwner(owner), m_pClose(new QToolButton(this))
{
    m_pClose->setAutoRaise(true);
    m_pClose->setFocusPolicy(Qt::TabFocus);
    m_pClose->setIcon(ZKIconHelper::DisabledIcon(QStringLiteral("theme:close.png")));
    m_pClose->setIconSize({ButtonIcon, ButtonIcon});
    m_pClose->setAccessibleName(tr("Close"));
    m_pClose->setToolTip(tr("Close"));
    connect(m_pClose, &QToolButton::clicked, owner, &QWidget::close);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(SideMargin, SmallMargin, SmallMargin, SmallMargin);
    layout->addStretch();
    layout->addWidget(m_pClose);
    owner->installEventFilter(this);
}

QSize WidgetTitleBar::sizeHint() const
{
    const QSize bare = QWidget::sizeHint();
    return {bare.width() + fontMetrics().horizontalAdvance(m_pOwner->windowTitle()) + SideMargin,
            bare.height()};
}

QRect WidgetTitleBar::TitlePlace() const
{
    return QRect(QPoint(SideMargin, 0), QPoint(m_pClose->x() - SideMargin, height() - 1));
}

void WidgetTitleBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect place = TitlePlace();
    const QString title = fontMetrics().elidedText(m_pOwner->windowTitle(), Qt::ElideRight, place.width());
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, title);
}

void WidgetTitleBar::SetMovable(bool movable)
{
    m_bMovable = movable;
    if (!movable) m_Grip.reset();
}

bool WidgetTitleBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::WindowTitleChange) {
        updateGeometry();
        update();
    }
    return QWidget::eventFilter(watched, event);
}

void WidgetTitleBar::mousePressEvent(QMouseEvent* event)
{
    if (!m_bMovable || event->button() != Qt::LeftButton) return;
    // Where programs may not place their windows, the window system moves them; it doesn't know of pop-ups.
    const bool isPopup = window()->windowType() == Qt::Popup;
    if (!isPopup && window()->windowHandle()->startSystemMove()) return;
    m_Grip = event->globalPos() - window()->pos();
}

void WidgetTitleBar::mouseMoveEvent(QMouseEvent* event)
{
    if (m_Grip) window()->move(event->globalPos() - *m_Grip);
}

void WidgetTitleBar::mouseReleaseEvent(QMouseEvent*)
{
    m_Grip.reset();
}
