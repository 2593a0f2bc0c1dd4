#pragma once

#include "scripting/ScriptObject.h"

#include <QPoint>
#include <QString>

class QPointF;
class QWidget;

/// `input`: mouse and keyboard, as real events. Points are pixels of the active document or, with the option
/// `in`, of a widget. Modifiers of a call are held for as long as it takes.
class ScriptInput : public ScriptObject
{
    Q_OBJECT
    /// The modifier keys that are down, such as "Ctrl+Shift".
    Q_PROPERTY(QString modifiers READ GetModifiers)
    /// The mouse buttons that are down: a list of "left", "right", "middle".
    Q_PROPERTY(QStringList buttons READ GetButtons)

public:
    ScriptInput(ScriptContext& context, QObject* parent);

    QString GetModifiers() const;
    QStringList GetButtons() const;

    /// @param options  `{in, button, modifiers}`, for all of these
    Q_INVOKABLE void move(const QJSValue& x, const QJSValue& y, const QJSValue& options = QJSValue());
    Q_INVOKABLE void press(const QJSValue& x, const QJSValue& y, const QJSValue& options = QJSValue());
    Q_INVOKABLE void release(const QJSValue& x, const QJSValue& y, const QJSValue& options = QJSValue());
    Q_INVOKABLE void click(const QJSValue& x, const QJSValue& y, const QJSValue& options = QJSValue());
    Q_INVOKABLE void doubleClick(const QJSValue& x, const QJSValue& y, const QJSValue& options = QJSValue());
    /// Presses at the first point, moves through the others and releases at the last.
    /// @param options  `{in, button, modifiers, steps}`; steps between two points, 4 unless told
    Q_INVOKABLE void drag(const QJSValue& points, const QJSValue& options = QJSValue());
    /// @param notches  away from the person above 0
    Q_INVOKABLE void wheel(const QJSValue& x, const QJSValue& y, const QJSValue& notches,
                           const QJSValue& options = QJSValue());

    /// Presses and releases a key: "Ctrl+Z", "Space", "F11".
    Q_INVOKABLE void key(const QString& keys);
    Q_INVOKABLE void keyDown(const QString& key);
    Q_INVOKABLE void keyUp(const QString& key);
    /// As the keyboard repeats a key that is down.
    Q_INVOKABLE void repeatKey(const QString& key);
    Q_INVOKABLE void type(const QString& text);
    /// Presses and releases modifier keys until exactly these are down: "Ctrl+Shift", or "" for none.
    Q_INVOKABLE void hold(const QJSValue& modifiers);

private:
    enum class Reach
    {
        Inside,  // where a press lands
        Anywhere // a pointer with a button down goes where it wants
    };

    struct Place
    {
        QWidget* widget = nullptr;
        QPoint pos;
    };

    QWidget* TargetOf(const QJSValue& options) const;
    Place PlaceOf(const QPointF& point, const QJSValue& options, Reach reach) const;
    Place PlaceOf(const QJSValue& x, const QJSValue& y, const QJSValue& options, Reach reach) const;
    Reach ReachNow() const;
};
