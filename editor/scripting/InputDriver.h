#pragma once

#include "EditorExport.h"

#include <QObject>
#include <QPoint>
#include <QPointF>
#include <QString>
#include <QVector>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class WindowSystemInput;
class QGraphicsView;

/// Drives the program as a person would: real window-system events, delivered before each call returns, so
/// that buttons, modifiers, cursor position, focus, Enter and Leave come out as with hand-made input.
///
/// Widget positions are device independent pixels of that widget, which has to be visible. Scene positions
/// are scene coordinates of a graphics view, for a document view document pixels: the event hits the screen
/// pixel that shows the point. While a pop-up is open, mouse events go to its window, as the grab makes them.
/// Modifiers of a mouse or key call are keys that the driver holds down for as long as the call takes; those
/// of HoldModifiers() stay down.
///
/// A call that opens a modal dialog returns when the dialog is closed: say before what is to be done with the
/// dialog (WhenModalShows). Main thread only; one driver at a time.
class ZK_EDITOR_EXPORT InputDriver : public QObject
{
    Q_OBJECT

public:
    explicit InputDriver(QObject* parent = nullptr);

    /// As LetGo().
    ~InputDriver() override;

    /// Releases the buttons and the modifier keys that are still down, where the pointer is.
    void LetGo();

    void Move(QWidget* widget, const QPoint& pos, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The pointer is moved to the position first, as it is before Release().
    void Press(QWidget* widget, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Release(QWidget* widget, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton,
                 Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Never part of a double click, however fast one call follows the other.
    void Click(QWidget* widget, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Clicks the middle.
    void Click(QWidget* widget);
    void DoubleClick(QWidget* widget, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton,
                     Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Presses at the first point, moves through the others and releases at the last.
    /// @param steps  moves between two points, at least 1; the last of them ends at the point
    void Drag(QWidget* widget, const QVector<QPoint>& points, Qt::MouseButton button = Qt::LeftButton,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier, int steps = 4);
    /// @param angleDelta  in eighths of a degree, 120 for a notch away from the user; sideways with Alt
    void Wheel(QWidget* widget, const QPoint& pos, int angleDelta,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    void MoveInScene(QGraphicsView* view, const QPointF& scenePos,
                     Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void PressInScene(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void ReleaseInScene(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton,
                        Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void ClickInScene(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void DoubleClickInScene(QGraphicsView* view, const QPointF& scenePos,
                            Qt::MouseButton button = Qt::LeftButton,
                            Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void DragInScene(QGraphicsView* view, const QVector<QPointF>& scenePoints,
                     Qt::MouseButton button = Qt::LeftButton,
                     Qt::KeyboardModifiers modifiers = Qt::NoModifier, int steps = 4);
    void WheelInScene(QGraphicsView* view, const QPointF& scenePos, int angleDelta,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// The viewport position of the screen pixel that shows the scene point.
    static QPoint ViewPoint(const QGraphicsView* view, const QPointF& scenePos);

    /// Press and release of a key, sent to the window that has the focus.
    /// @param key  a `Qt::Key`; its text follows from the key and Shift
    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void KeyDown(int key);
    void KeyUp(int key);
    /// One more press of a key that is down, as the keyboard repeats it.
    void RepeatKey(int key);
    /// Types the text, with Shift for capital letters; line ends as Return.
    void Type(const QString& text);

    /// Presses and releases modifier keys until exactly these are down.
    void HoldModifiers(Qt::KeyboardModifiers modifiers);
    Qt::KeyboardModifiers GetModifiers() const;
    Qt::MouseButtons GetButtons() const;

    /// Runs the action once, from the event loop, with the next modal window of the type that shows from now
    /// on. Several actions wait in line, one window each; windows that no action is for are left alone.
    ///     input.WhenModalShows<LXMessageBox>([&](LXMessageBox* box) { input.Click(ButtonOf(box)); });
    template <typename Window = QWidget, typename Action>
    void WhenModalShows(Action action)
    {
        AddModalAction([action](QWidget* shown) {
            auto* window = qobject_cast<Window*>(shown);
            if (!window) return ModalAction();
            return ModalAction([action, window] { action(window); });
        });
    }

    /// How many of those actions have not run yet.
    int CountWaitingActions() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using ModalAction = std::function<void()>;
    /// Gives what is to be done with the window, or nothing when it is of another kind.
    using ModalOffer = std::function<ModalAction(QWidget*)>;

    void AddModalAction(ModalOffer offer);
    void RunModalAction(QWidget* window);

    std::unique_ptr<WindowSystemInput> m_pInput;
    std::vector<ModalOffer> m_ModalOffers; ///< the longest waiting first
};
