#include "gui/LayerListView.h"

#include "gui/LaterUpdate.h"
#include "gui/LayerDelegate.h"
#include "gui/ThumbnailRoles.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QToolTip>

#include <utility>

LayerListView::LayerListView(QWidget* parent)
    : QListView(parent), m_pLater(new LaterUpdate(this, [this] { viewport()->update(); }))
{}

void LayerListView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                const QVector<int>& roles)
{
    if (ThumbnailRoles::AreAll(roles)) {
        m_pLater->AskAfterPicture();
    } else {
        QListView::dataChanged(topLeft, bottomRight, roles);
    }
}

void LayerListView::SetChoiceObstacle(std::function<QString()> obstacle)
{
    m_ChoiceObstacle = std::move(obstacle);
}

QString LayerListView::ChoiceObstacle() const
{
    return m_ChoiceObstacle ? m_ChoiceObstacle() : QString();
}

bool LayerListView::TakeEyePress(const QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->pos());
    if (event->button() != Qt::LeftButton || !index.isValid()) return false;
    if (!LayerDelegate::IsOnEye(visualRect(index), event->pos())) return false;

    m_bEyeIsDown = true;
    emit EyePressed(index.row());
    return true;
}

void LayerListView::focusInEvent(QFocusEvent* event)
{
    const QScopedValueRollback<bool> taking(m_bTakesFocus, true);
    QListView::focusInEvent(event);
}

QModelIndex LayerListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    // With the focus the base would make the first row the current one: another path, for who only passes by.
    return m_bTakesFocus ? QModelIndex() : QListView::moveCursor(action, modifiers);
}

void LayerListView::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    if (!hasFocus() || currentIndex().isValid()) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Link));
    painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
}

void LayerListView::mousePressEvent(QMouseEvent* event)
{
    if (TakeEyePress(event) || !ChoiceObstacle().isEmpty()) return;
    QListView::mousePressEvent(event);
}

void LayerListView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (TakeEyePress(event) || !ChoiceObstacle().isEmpty()) return;
    QListView::mouseDoubleClickEvent(event);
}

void LayerListView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_bEyeIsDown && ChoiceObstacle().isEmpty()) QListView::mouseMoveEvent(event);
}

void LayerListView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_bEyeIsDown || event->button() != Qt::LeftButton) {
        QListView::mouseReleaseEvent(event);
        return;
    }
    m_bEyeIsDown = false;
}

void LayerListView::keyPressEvent(QKeyEvent* event)
{
    if (ChoiceObstacle().isEmpty()) {
        QListView::keyPressEvent(event);
    } else {
        event->ignore();
    }
}

bool LayerListView::viewportEvent(QEvent* event)
{
    const QString obstacle = event->type() == QEvent::ToolTip ? ChoiceObstacle() : QString();
    if (obstacle.isEmpty()) return QListView::viewportEvent(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), obstacle, this);
    return true;
}
