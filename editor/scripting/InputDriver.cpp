#include "scripting/InputDriver.h"

#include "scripting/KeyText.h"
#include "scripting/WindowSystemInput.h"

#include <QApplication>
#include <QGraphicsView>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {
constexpr int ModifierKeys[] = {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_Meta};
constexpr Qt::MouseButton MouseButtons[] = {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};

/// Holds more modifier keys for a scope.
class HeldModifiers
{
public:
    HeldModifiers(InputDriver& driver, Qt::KeyboardModifiers more)
        : m_Driver(driver), m_Before(driver.GetModifiers())
    {
        m_Driver.HoldModifiers(m_Before | more);
    }

    ~HeldModifiers() { m_Driver.HoldModifiers(m_Before); }

    Q_DISABLE_COPY(HeldModifiers)

private:
    InputDriver& m_Driver;
    Qt::KeyboardModifiers m_Before;
};

/// The way of a drag: the first point, then `steps` points for each part, the last at the part's end.
QVector<QPoint> StepsThrough(const QVector<QPoint>& points, int steps)
{
    QVector<QPoint> way = points.mid(0, 1);
    for (int i = 1; i < points.size(); ++i) {
        const QPointF from = points[i - 1];
        const QPointF to = points[i];
        for (int step = 1; step <= steps; ++step) {
            way << (from + (to - from) * step / steps).toPoint();
        }
    }
    return way;
}
} // namespace

InputDriver::InputDriver(QObject* parent) : QObject(parent), m_pInput(std::make_unique<WindowSystemInput>())
{}

InputDriver::~InputDriver()
{
    LetGo();
}

void InputDriver::LetGo()
{
    for (const Qt::MouseButton button : MouseButtons) {
        if (m_pInput->GetButtons() & button) m_pInput->Release(button);
    }
    HoldModifiers(Qt::NoModifier);
}

void InputDriver::Move(QWidget* widget, const QPoint& pos, Qt::KeyboardModifiers modifiers)
{
    const HeldModifiers held(*this, modifiers);
    m_pInput->Move(widget, pos);
}

void InputDriver::Press(QWidget* widget, const QPoint& pos, Qt::MouseButton button,
                        Qt::KeyboardModifiers modifiers)
{
    const HeldModifiers held(*this, modifiers);
    m_pInput->Move(widget, pos);
    m_pInput->StartNewClick();
    m_pInput->Press(button);
}

void InputDriver::Release(QWidget* widget, const QPoint& pos, Qt::MouseButton button,
                          Qt::KeyboardModifiers modifiers)
{
    const HeldModifiers held(*this, modifiers);
    m_pInput->Move(widget, pos);
    m_pInput->Release(button);
}

void InputDriver::Click(QWidget* widget, const QPoint& pos, Qt::MouseButton button,
                        Qt::KeyboardModifiers modifiers)
{
    const HeldModifiers held(*this, modifiers);
    m_pInput->Move(widget, pos);
    m_pInput->StartNewClick();
    m_pInput->Press(button);
    m_pInput->Release(button);
}

void InputDriver::Click(QWidget* widget)
{
    Click(widget, widget->rect().center());
}

void InputDriver::DoubleClick(QWidget* widget, const QPoint& pos, Qt::MouseButton button,
                              Qt::KeyboardModifiers modifiers)
{
    const HeldModifiers held(*this, modifiers);
    m_pInput->Move(widget, pos);
    m_pInput->StartNewClick();
    for (int click = 0; click < 2; ++click) {
        m_pInput->Press(button);
        m_pInput->Release(button);
    }
}

void InputDriver::Drag(QWidget* widget, const QVector<QPoint>& points, Qt::MouseButton button,
                       Qt::KeyboardModifiers modifiers, int steps)
{
    Q_ASSERT_X(!points.isEmpty() && steps > 0, "InputDriver::Drag", "a drag needs a point and a step");
    const HeldModifiers held(*this, modifiers);
    const QPointer<QWidget> alive(widget);
    m_pInput->Move(widget, points.first());
    m_pInput->StartNewClick();
    m_pInput->Press(button);
    const QVector<QPoint> way = StepsThrough(points, steps);
    for (int i = 1; i < way.size() && alive && alive->isVisible(); ++i) {
        m_pInput->Move(widget, way[i]);
    }
    m_pInput->Release(button);
}

void InputDriver::Wheel(QWidget* widget, const QPoint& pos, int angleDelta, Qt::KeyboardModifiers modifiers)
{
    const HeldModifiers held(*this, modifiers);
    m_pInput->Move(widget, pos);
    m_pInput->Turn(angleDelta);
}

void InputDriver::MoveInScene(QGraphicsView* view, const QPointF& scenePos, Qt::KeyboardModifiers modifiers)
{
    Move(view->viewport(), ViewPoint(view, scenePos), modifiers);
}

void InputDriver::PressInScene(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button,
                               Qt::KeyboardModifiers modifiers)
{
    Press(view->viewport(), ViewPoint(view, scenePos), button, modifiers);
}

void InputDriver::ReleaseInScene(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button,
                                 Qt::KeyboardModifiers modifiers)
{
    Release(view->viewport(), ViewPoint(view, scenePos), button, modifiers);
}

void InputDriver::ClickInScene(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button,
                               Qt::KeyboardModifiers modifiers)
{
    Click(view->viewport(), ViewPoint(view, scenePos), button, modifiers);
}

void InputDriver::DoubleClickInScene(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button,
                                     Qt::KeyboardModifiers modifiers)
{
    DoubleClick(view->viewport(), ViewPoint(view, scenePos), button, modifiers);
}

void InputDriver::DragInScene(QGraphicsView* view, const QVector<QPointF>& scenePoints,
                              Qt::MouseButton button, Qt::KeyboardModifiers modifiers, int steps)
{
    QVector<QPoint> points;
    for (const QPointF& scenePos : scenePoints) {
        points << ViewPoint(view, scenePos);
    }
    Drag(view->viewport(), points, button, modifiers, steps);
}

void InputDriver::WheelInScene(QGraphicsView* view, const QPointF& scenePos, int angleDelta,
                               Qt::KeyboardModifiers modifiers)
{
    Wheel(view->viewport(), ViewPoint(view, scenePos), angleDelta, modifiers);
}

QPoint InputDriver::ViewPoint(const QGraphicsView* view, const QPointF& scenePos)
{
    // Whole numbers come back a hair too small from the view's transform.
    constexpr double hair = 1e-6;
    const QPointF viewPos = view->viewportTransform().map(scenePos);
    return {static_cast<int>(std::floor(viewPos.x() + hair)),
            static_cast<int>(std::floor(viewPos.y() + hair))};
}

void InputDriver::Key(int key, Qt::KeyboardModifiers modifiers)
{
    const HeldModifiers held(*this, modifiers);
    KeyDown(key);
    KeyUp(key);
}

void InputDriver::KeyDown(int key)
{
    m_pInput->KeyDown(key, KeyText::OfKey(key, GetModifiers()), false);
}

void InputDriver::KeyUp(int key)
{
    m_pInput->KeyUp(key, KeyText::OfKey(key, GetModifiers()));
}

void InputDriver::RepeatKey(int key)
{
    m_pInput->KeyDown(key, KeyText::OfKey(key, GetModifiers()), true);
}

void InputDriver::Type(const QString& text)
{
    for (const QChar character : text) {
        const KeyText::Stroke stroke = KeyText::OfCharacter(character);
        Key(stroke.key, stroke.modifiers);
    }
}

void InputDriver::HoldModifiers(Qt::KeyboardModifiers modifiers)
{
    for (const int key : ModifierKeys) {
        const Qt::KeyboardModifier modifier = WindowSystemInput::ModifierOfKey(key);
        const bool isDown = GetModifiers() & modifier;
        const bool isWanted = modifiers & modifier;
        if (isWanted && !isDown) KeyDown(key);
        if (isDown && !isWanted) KeyUp(key);
    }
}

Qt::KeyboardModifiers InputDriver::GetModifiers() const
{
    return m_pInput->GetModifiers();
}

Qt::MouseButtons InputDriver::GetButtons() const
{
    return m_pInput->GetButtons();
}

int InputDriver::CountWaitingActions() const
{
    return static_cast<int>(m_ModalOffers.size());
}

void InputDriver::AddModalAction(ModalOffer offer)
{
    m_ModalOffers.push_back(std::move(offer));
    // Installing a filter again only moves it to the front.
    qApp->installEventFilter(this);
}

bool InputDriver::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        auto* shown = static_cast<QWidget*>(watched);
        if (shown->isWindow() && shown->isModal()) {
            // Not now: the window isn't on the screen yet, and its own loop has not begun.
            QTimer::singleShot(0, shown, [this, shown, driver = QPointer<InputDriver>(this)] {
                if (driver) RunModalAction(shown);
            });
        }
    }
    return QObject::eventFilter(watched, event);
}

void InputDriver::RunModalAction(QWidget* window)
{
    if (!window->isVisible()) return;
    for (auto offer = m_ModalOffers.begin(); offer != m_ModalOffers.end(); ++offer) {
        const ModalAction action = (*offer)(window);
        if (!action) continue;
        // Before it runs: the action may ask for the next window, or open it.
        m_ModalOffers.erase(offer);
        if (m_ModalOffers.empty()) qApp->removeEventFilter(this);
        action();
        return;
    }
}
