#include "gui/LToolBoxButton.h"

#include "gui/LXShortcut.h"

#include <QAction>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <QToolTip>

namespace {
constexpr int ButtonSize = 32;
constexpr int IconSize = 24;
} // namespace

LToolBoxButton::LToolBoxButton(QWidget* parent)
    : QToolButton(parent), m_pShortcut(new LXShortcut(this)), m_pCycleShortcut(new LXShortcut(this))
{
    setCheckable(true);
    setAutoRaise(true);
    setIconSize({IconSize, IconSize});
    setFixedSize(ButtonSize, ButtonSize);
    setFocusPolicy(Qt::TabFocus);

    // The tool box may float in a window of its own.
    m_pShortcut->SetShortcutContext(Qt::ApplicationShortcut);
    m_pCycleShortcut->SetShortcutContext(Qt::ApplicationShortcut);
    connect(m_pShortcut, &LXShortcut::Activated, this, [this] { emit LMousePressed(this); });
    connect(m_pCycleShortcut, &LXShortcut::Activated, this, &LToolBoxButton::TakeNextAction);
}

LToolBoxButton::~LToolBoxButton() = default;

void LToolBoxButton::SetShortcut(const QKeySequence& key)
{
    m_pShortcut->SetKey(key);
}

void LToolBoxButton::SetCycleShortcut(const QKeySequence& key)
{
    m_pCycleShortcut->SetKey(key);
}

QSize LToolBoxButton::sizeHint() const
{
    return {ButtonSize, ButtonSize};
}

bool LToolBoxButton::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || toolTip().isEmpty()) return QToolButton::event(event);

    QString text = toolTip();
    if (!m_pShortcut->Key().isEmpty()) {
        text = tr("%1 (%2)").arg(text, m_pShortcut->Key().toString(QKeySequence::NativeText));
    }
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text, this);
    return true;
}

void LToolBoxButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton) {
        emit RMousePressed(this);
        if (menu()) menu()->popup(mapToGlobal(rect().topRight()));
        return;
    }
    if (event->button() == Qt::LeftButton) emit LMousePressed(this);
    QToolButton::mousePressEvent(event);
}

void LToolBoxButton::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Select:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat()) emit LMousePressed(this);
        return;
    case Qt::Key_Menu:
        if (menu()) menu()->popup(mapToGlobal(rect().topRight()));
        return;
    default: QToolButton::keyPressEvent(event);
    }
}

void LToolBoxButton::paintEvent(QPaintEvent*)
{
    QStyleOptionToolButton option;
    initStyleOption(&option);
    // The style's arrow would shrink the picture; a small corner tells the same.
    option.features = QStyleOptionToolButton::None;
    option.text.clear();
    option.toolButtonStyle = Qt::ToolButtonIconOnly;

    QStylePainter painter(this);
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    if (!menu()) return;

    constexpr int corner = 5;
    const QPoint tip = rect().bottomRight() - QPoint(2, 2);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        palette().brush(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    painter.drawPolygon(QPolygon({tip, tip - QPoint(corner, 0), tip - QPoint(0, corner)}));
}

void LToolBoxButton::nextCheckState()
{
    // A press only tells. Neither the button nor its default action changes by itself: the tool sets both.
}

void LToolBoxButton::TakeNextAction()
{
    if (!menu()) return;

    QList<QAction*> actions = menu()->actions();
    const auto isNoChoice = [](const QAction* action) {
        return action->isSeparator() || !action->isEnabled();
    };
    actions.erase(std::remove_if(actions.begin(), actions.end(), isNoChoice), actions.end());
    if (actions.isEmpty()) return;

    const int current = actions.indexOf(defaultAction());
    actions[(current + 1) % actions.size()]->trigger();
}
