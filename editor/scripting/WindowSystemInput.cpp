#include "scripting/WindowSystemInput.h"

#include <QApplication>
#include <QCursor>
#include <QWindow>
#include <qpa/qwindowsysteminterface.h>
#include <qpa/qwindowsysteminterface_p.h>

#include <private/qhighdpiscaling_p.h>

namespace {
using System = QWindowSystemInterface;
using AtOnce = QWindowSystemInterface::SynchronousDelivery;

constexpr ulong EventDistance = 10;   ///< milliseconds from one event to the next
constexpr ulong ClickDistance = 1000; ///< more than any double click interval

/// The clock of all events, whichever driver sends them: it never runs backwards.
ulong& Clock()
{
    static ulong milliseconds = 1000;
    return milliseconds;
}

ulong NextTime()
{
    return Clock() += EventDistance;
}

QWindow* WindowOf(const QWidget* widget)
{
    if (QWindow* own = widget->windowHandle()) return own;
    const QWidget* native = widget->nativeParentWidget();
    return native ? native->windowHandle() : nullptr;
}

/// The window that was told last that the pointer is inside, whichever driver told it.
QPointer<QWindow>& EnteredWindow()
{
    static QPointer<QWindow> window;
    return window;
}

/// The offscreen platform answers a new cursor position with events for whatever window it finds first at the
/// place, also below a dialog, and for none during a drag outside of all; Qt then drops the right one,
/// because the pointer has not moved.
void DropQueuedPointerEvents()
{
    using Queue = QWindowSystemInterfacePrivate;
    for (const Queue::EventType type : {Queue::Enter, Queue::Leave, Queue::Mouse}) {
        while (Queue::WindowSystemEvent* event = Queue::peekWindowSystemEvent(type)) {
            Queue::removeWindowSystemEvent(event);
        }
    }
}

/// Where a person's keys would go: into a modal dialog, else into the window that has the focus, else into
/// the editor's; null when there is none.
QWidget* WindowForKeys()
{
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QGuiApplication::focusWindow()) return nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() == Qt::Window) return window;
    }
    return nullptr;
}

/// A window manager gives a new dialog the focus, and after it the window before it; offscreen there is none.
/// A real one does it in its own time, or not at all while a person works in another program. Qt is told at
/// once, for a key that is sent to no window is lost.
void GiveFocus()
{
    const QWidget* window = WindowForKeys();
    if (!window || QGuiApplication::focusWindow() == window->windowHandle()) return;
    System::handleWindowActivated<AtOnce>(window->windowHandle());
}

/// The window system speaks in device pixels.
QPointF NativeLocal(const QPoint& globalPos, const QWindow* window)
{
    return QHighDpi::toNativeLocalPosition(QPointF(window->mapFromGlobal(globalPos)), window);
}

QPointF NativeGlobal(const QPoint& globalPos, const QWindow* window)
{
    return QHighDpi::toNativePixels(QPointF(globalPos), window);
}
} // namespace

void WindowSystemInput::Move(QWidget* widget, const QPoint& pos)
{
    Q_ASSERT_X(widget && widget->isVisible(), "WindowSystemInput", "input needs a visible widget");
    m_pWidget = widget;
    m_GlobalPos = widget->mapToGlobal(pos);
    System::flushWindowSystemEvents();
    QCursor::setPos(m_GlobalPos);
    DropQueuedPointerEvents();
    CrossWindows();
    SendMouse(QEvent::MouseMove, Qt::NoButton);
}

void WindowSystemInput::Press(Qt::MouseButton button)
{
    m_Buttons |= button;
    SendMouse(QEvent::MouseButtonPress, button);
}

void WindowSystemInput::Release(Qt::MouseButton button)
{
    m_Buttons &= ~Qt::MouseButtons(button);
    SendMouse(QEvent::MouseButtonRelease, button);
    CrossWindows();
}

void WindowSystemInput::Turn(int angleDelta)
{
    QWindow* window = MouseWindow();
    if (!window) return;
    const bool isSideways = m_Modifiers & Qt::AltModifier;
    const QPoint angle = isSideways ? QPoint(angleDelta, 0) : QPoint(0, angleDelta);
    System::handleWheelEvent(window, NextTime(), NativeLocal(m_GlobalPos, window),
                             NativeGlobal(m_GlobalPos, window), QPoint(), angle, m_Modifiers);
    System::flushWindowSystemEvents();
}

void WindowSystemInput::KeyDown(int key, const QString& text, bool isRepeat)
{
    m_Modifiers |= ModifierOfKey(key);
    SendKey(QEvent::KeyPress, key, text, isRepeat);
}

void WindowSystemInput::KeyUp(int key, const QString& text)
{
    m_Modifiers &= ~Qt::KeyboardModifiers(ModifierOfKey(key));
    SendKey(QEvent::KeyRelease, key, text, false);
}

void WindowSystemInput::StartNewClick()
{
    Clock() += ClickDistance;
}

Qt::KeyboardModifier WindowSystemInput::ModifierOfKey(int key)
{
    switch (key) {
    case Qt::Key_Shift: return Qt::ShiftModifier;
    case Qt::Key_Control: return Qt::ControlModifier;
    case Qt::Key_Alt: return Qt::AltModifier;
    case Qt::Key_Meta: return Qt::MetaModifier;
    default: return Qt::NoModifier;
    }
}

void WindowSystemInput::CrossWindows()
{
    // A held button keeps the pointer with the window where it was pressed.
    if (m_Buttons != Qt::NoButton) return;
    QWindow* window = MouseWindow();
    if (window && !window->geometry().contains(m_GlobalPos)) window = nullptr;
    QWindow* left = EnteredWindow();
    if (left == window) return;
    EnteredWindow() = window;
    if (left) System::handleLeaveEvent<AtOnce>(left);
    if (!window) return;
    System::handleEnterEvent<AtOnce>(window, NativeLocal(m_GlobalPos, window),
                                     NativeGlobal(m_GlobalPos, window));
}

void WindowSystemInput::SendMouse(QEvent::Type type, Qt::MouseButton button)
{
    QWindow* window = MouseWindow();
    // A press may have closed the window: the release then has nowhere to go, as on a real screen.
    if (!window) return;
    System::handleMouseEvent<AtOnce>(window, NextTime(), NativeLocal(m_GlobalPos, window),
                                     NativeGlobal(m_GlobalPos, window), m_Buttons, button, type, m_Modifiers);
}

void WindowSystemInput::SendKey(QEvent::Type type, int key, const QString& text, bool isRepeat)
{
    System::flushWindowSystemEvents();
    GiveFocus();
    QWindow* window = QGuiApplication::focusWindow();
    if (!window) return;
    System::handleKeyEvent<AtOnce>(window, NextTime(), type, key, m_Modifiers, text, isRepeat);
}

QWindow* WindowSystemInput::MouseWindow() const
{
    if (const QWidget* popup = QApplication::activePopupWidget()) return WindowOf(popup);
    return m_pWidget ? WindowOf(m_pWidget) : nullptr;
}
