#include "gui/ViewPanning.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "gui/LexoAppKeyHook.h"
#include "gui/ZKDocumentView.h"

#include <QGraphicsItem>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScrollBar>

namespace {
constexpr int PanKey = Qt::Key_Space;
}

ViewPanning::ViewPanning(ZKDocumentView* view) : QObject(view), m_pView(view)
{
    connect(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyPressed, this, &ViewPanning::OnKeyPressed);
    connect(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyReleased, this, &ViewPanning::OnKeyReleased);
}

void ViewPanning::Enable(bool enable)
{
    if (enable == m_bEnabled || (enable && !m_bAllowed)) return;

    m_bEnabled = enable;
    if (enable) {
        m_ViewCursor = m_pView->cursor();
        m_pView->setCursor(Qt::OpenHandCursor);
    } else {
        m_DragButton = Qt::NoButton;
        m_pView->setCursor(m_ViewCursor);
    }
    emit m_pView->PanningEnabled(enable);
}

void ViewPanning::Allow(bool allow)
{
    m_bAllowed = allow;
    if (!allow) Enable(false);
}

void ViewPanning::Press(const QMouseEvent* event)
{
    const bool isOnlyButton = event->buttons() == Qt::MouseButtons(event->button());
    if (!isOnlyButton) return;
    if (event->button() == Qt::MiddleButton) Enable(true);
    if (!m_bEnabled || event->button() == Qt::RightButton) return;

    m_DragButton = event->button();
    m_LastPos = event->pos();
    m_pView->setCursor(Qt::ClosedHandCursor);
}

void ViewPanning::Move(const QMouseEvent* event)
{
    if (m_DragButton == Qt::NoButton) return;

    const QPoint delta = event->pos() - m_LastPos;
    m_LastPos = event->pos();
    m_pView->horizontalScrollBar()->setValue(m_pView->horizontalScrollBar()->value() - delta.x());
    m_pView->verticalScrollBar()->setValue(m_pView->verticalScrollBar()->value() - delta.y());
}

void ViewPanning::Release(const QMouseEvent* event)
{
    if (m_DragButton == Qt::NoButton || event->button() != m_DragButton) return;

    m_DragButton = Qt::NoButton;
    if (m_bKeyHeld) {
        m_pView->setCursor(Qt::OpenHandCursor);
    } else {
        Enable(false);
    }
}

void ViewPanning::OnKeyPressed(int key)
{
    if (key != PanKey || !m_pView->hasFocus() || IsTyping()) return;
    if (QGuiApplication::mouseButtons() != Qt::NoButton) return;

    m_bKeyHeld = true;
    Enable(true);
}

void ViewPanning::OnKeyReleased(int key)
{
    if (key != PanKey || !m_bKeyHeld) return;

    m_bKeyHeld = false;
    if (m_DragButton == Qt::NoButton) Enable(false);
}

bool ViewPanning::IsTyping() const
{
    if (LXDocumentInterfacePrivate::Get(m_pView->GetModel()->GetDocument())->CaretId() != 0) return true;
    const QGraphicsItem* item = m_pView->scene()->focusItem();
    return item && item->flags().testFlag(QGraphicsItem::ItemAcceptsInputMethod);
}
