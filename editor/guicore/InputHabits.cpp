#include "guicore/InputHabits.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QScrollBar>

namespace {
/// Watches one slider; owned by it.
class DoubleClickReset : public QObject
{
public:
    DoubleClickReset(QAbstractSlider* slider, int value) : QObject(slider), m_Value(value)
    {
        slider->installEventFilter(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() != QEvent::MouseButtonDblClick) return false;
        static_cast<QAbstractSlider*>(object)->setValue(m_Value);
        return true;
    }

private:
    int m_Value;
};

bool ChangesByWheel(const QWidget* widget)
{
    if (qobject_cast<const QScrollBar*>(widget) != nullptr) return false;
    return qobject_cast<const QAbstractSpinBox*>(widget) != nullptr ||
           qobject_cast<const QAbstractSlider*>(widget) != nullptr ||
           qobject_cast<const QComboBox*>(widget) != nullptr;
}

/// The part of an editable control that got the wheel belongs to the control.
QWidget* ControlOf(QWidget* widget)
{
    QWidget* parent = widget->parentWidget();
    return parent != nullptr && ChangesByWheel(parent) ? parent : widget;
}

/// Else the first turn of the wheel gives the focus, and the second one changes the value.
void LoseWheelFocus(QWidget* widget)
{
    if (ChangesByWheel(widget) && widget->focusPolicy() == Qt::WheelFocus) {
        widget->setFocusPolicy(Qt::StrongFocus);
    }
}
} // namespace

InputHabits::InputHabits(QObject* parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool InputHabits::eventFilter(QObject* object, QEvent* event)
{
    if (!object->isWidgetType()) return false;
    if (event->type() == QEvent::Polish) LoseWheelFocus(static_cast<QWidget*>(object));
    if (event->type() != QEvent::Wheel) return false;
    QWidget* control = ControlOf(static_cast<QWidget*>(object));
    // Qt hands a wheel event out as ignored: kept from the control, it goes on to what lies around.
    return ChangesByWheel(control) && !control->hasFocus();
}

void InputHabits::ResetOnDoubleClick(QAbstractSlider* slider, int value)
{
    new DoubleClickReset(slider, value);
}
