#pragma once

#include <QEvent>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QWidget>

class QWindow;

/// Hands single events to Qt where the window system would, and keeps what is down. Each call returns when
/// the event is delivered. Main thread only.
class WindowSystemInput
{
public:
    /// Puts the pointer on a position of a visible widget.
    void Move(QWidget* widget, const QPoint& pos);
    /// At the place of the last Move().
    void Press(Qt::MouseButton button);
    void Release(Qt::MouseButton button);
    void Turn(int angleDelta);

    /// Modifier keys change the modifiers that later events carry.
    void KeyDown(int key, const QString& text, bool isRepeat);
    void KeyUp(int key, const QString& text);

    Qt::MouseButtons GetButtons() const { return m_Buttons; }

    Qt::KeyboardModifiers GetModifiers() const { return m_Modifiers; }

    /// Makes the next press a click of its own, however soon it follows.
    void StartNewClick();

    /// The modifier that a key stands for; none for other keys.
    static Qt::KeyboardModifier ModifierOfKey(int key);

private:
    /// Tells the windows when the pointer has left one for another.
    void CrossWindows();
    void SendMouse(QEvent::Type type, Qt::MouseButton button);
    void SendKey(QEvent::Type type, int key, const QString& text, bool isRepeat);
    QWindow* MouseWindow() const;

    QPointer<QWidget> m_pWidget; ///< under the pointer, as far as the caller told
    QPoint m_GlobalPos;
    Qt::MouseButtons m_Buttons;
    Qt::KeyboardModifiers m_Modifiers;
};
