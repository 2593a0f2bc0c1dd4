#include "guicore/LXWidget.h"

#include "guicore/PopupFrame.h"
#include "guicore/WidgetTitleBar.h"

#include <QEvent>
#include <QSizeGrip>

namespace {
constexpr int GripSize = 12;
} // namespace

class LXWidgetPrivate
{
public:
    explicit LXWidgetPrivate(LXWidget* widget);

    /// Shows the parts of the frame that belong to the widget now, at their places.
    void Arrange();
    bool HasOwnFrame() const;
    int WidthOfTitle() const;
    void FocusContents();
    void FitToContents();

    LXWidget* m_pWidget;
    WidgetTitleBar* m_pTitleBar;
    QSizeGrip* m_pGrip;
    bool m_bTitleBar = true;
    bool m_bResizable = true;
};

LXWidgetPrivate::LXWidgetPrivate(LXWidget* widget)
    : m_pWidget(widget), m_pTitleBar(new WidgetTitleBar(widget)), m_pGrip(new QSizeGrip(widget))
{
    m_pTitleBar->hide();
    m_pGrip->hide();
}

bool LXWidgetPrivate::HasOwnFrame() const
{
    // Where somebody asked the window system for its frame, a second one would be drawn inside of it.
    const bool isBare =
        m_pWidget->windowType() == Qt::Popup || m_pWidget->windowFlags().testFlag(Qt::FramelessWindowHint);
    return m_pWidget->isWindow() && isBare;
}

void LXWidgetPrivate::Arrange()
{
    const bool hasFrame = HasOwnFrame();
    const bool hasBar = hasFrame && m_bTitleBar;
    m_pTitleBar->setVisible(hasBar);
    m_pGrip->setVisible(hasFrame && m_bResizable);

    QMargins margins = hasFrame ? PopupFrame::Margins : QMargins();
    if (hasBar) margins.setTop(margins.top() + m_pTitleBar->sizeHint().height());
    m_pWidget->setContentsMargins(margins);

    const QRect inside = m_pWidget->rect().marginsRemoved(hasFrame ? PopupFrame::Margins : QMargins());
    m_pTitleBar->setGeometry(inside.left(), inside.top(), inside.width(), m_pTitleBar->sizeHint().height());
    m_pGrip->setGeometry(inside.right() + 1 - GripSize, inside.bottom() + 1 - GripSize, GripSize, GripSize);
    m_pTitleBar->raise();
    m_pGrip->raise();
}

int LXWidgetPrivate::WidthOfTitle() const
{
    if (!HasOwnFrame() || !m_bTitleBar) return 0;
    return m_pTitleBar->sizeHint().width() + PopupFrame::Margins.left() + PopupFrame::Margins.right();
}

/// A window opens with the focus in its contents; the button of the title bar stands before them in the
/// order.
void LXWidgetPrivate::FocusContents()
{
    if (!m_pWidget->isWindow() || m_pWidget->focusWidget()) return;
    for (QWidget* next = m_pWidget->nextInFocusChain(); next != m_pWidget; next = next->nextInFocusChain()) {
        const bool isContents = m_pWidget->isAncestorOf(next) && !m_pTitleBar->isAncestorOf(next);
        if (!isContents || !next->isVisibleTo(m_pWidget) || !next->isEnabled()) continue;
        if ((next->focusPolicy() & Qt::TabFocus) != Qt::TabFocus) continue;
        next->setFocus();
        return;
    }
}

void LXWidgetPrivate::FitToContents()
{
    if (!m_pWidget->isWindow() || m_bResizable) return;
    // Contents that were placed by hand want nothing.
    const QSize wanted = m_pWidget->sizeHint();
    // Not adjustSize(), which leaves windows whose contents could grow larger than they need.
    if (!wanted.isEmpty()) m_pWidget->resize(wanted);
}

LXWidget::LXWidget(QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags | Qt::FramelessWindowHint), m_pPrivate(std::make_unique<LXWidgetPrivate>(this))
{
    // The press that closes a pop-up does nothing else.
    setAttribute(Qt::WA_NoMouseReplay);
}

LXWidget::~LXWidget() = default;

void LXWidget::SetTitleBarVisible(bool visible)
{
    m_pPrivate->m_bTitleBar = visible;
    m_pPrivate->Arrange();
}

bool LXWidget::IsTitleBarVisible() const
{
    return m_pPrivate->m_bTitleBar;
}

void LXWidget::SetResizable(bool resizable)
{
    m_pPrivate->m_bResizable = resizable;
    m_pPrivate->Arrange();
    m_pPrivate->FitToContents();
}

bool LXWidget::IsResizable() const
{
    return m_pPrivate->m_bResizable;
}

void LXWidget::SetTitleMovable(bool movable)
{
    m_pPrivate->m_pTitleBar->SetMovable(movable);
}

bool LXWidget::IsTitleMovable() const
{
    return m_pPrivate->m_pTitleBar->IsMovable();
}

QSize LXWidget::sizeHint() const
{
    return QWidget::sizeHint().expandedTo({m_pPrivate->WidthOfTitle(), 0});
}

bool LXWidget::event(QEvent* event)
{
    const bool isTaken = QWidget::event(event);
    // Events of the construction come before there are parts, and those of the end behind them.
    if (!m_pPrivate) return isTaken;
    switch (event->type()) {
    case QEvent::ParentChange:
    case QEvent::Polish:
    case QEvent::Resize:
    case QEvent::StyleChange:
    case QEvent::FontChange: m_pPrivate->Arrange(); break;
    case QEvent::Show: m_pPrivate->FocusContents(); [[fallthrough]];
    case QEvent::WindowTitleChange:
    case QEvent::LayoutRequest: m_pPrivate->FitToContents(); break;
    default: break;
    }
    return isTaken;
}

void LXWidget::paintEvent(QPaintEvent*)
{
    if (m_pPrivate->HasOwnFrame()) PopupFrame::Paint(*this);
}
