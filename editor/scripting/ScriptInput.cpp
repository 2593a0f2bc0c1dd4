#include "scripting/ScriptInput.h"

#include "gui/ZKDocumentView.h"
#include "scripting/InputDriver.h"
#include "scripting/ScriptArguments.h"
#include "scripting/ScriptWidget.h"
#include "scripting/WidgetHand.h"
#include "scripting/WidgetReading.h"
#include "scripting/WidgetSearch.h"

#include <QAbstractScrollArea>
#include <QtMath>

namespace {
constexpr int Notch = 120;      // eighths of a degree
constexpr int DefaultSteps = 4; // between two points of a drag
constexpr int MostSteps = 10000;

const QVector<QString> MouseOptions{"in", "button", "modifiers"};
const QVector<QString> DragOptions{"in", "button", "modifiers", "steps"};
const QVector<QString> WheelOptions{"in", "modifiers"};

Qt::MouseButton ButtonOf(const QJSValue& options)
{
    return ScriptArguments::ToButton(ScriptArguments::Option(options, "button"));
}

Qt::KeyboardModifiers ModifiersOf(const QJSValue& options)
{
    return ScriptArguments::ToModifiers(ScriptArguments::Option(options, "modifiers"));
}
} // namespace

ScriptInput::ScriptInput(ScriptContext& context, QObject* parent) : ScriptObject(context, parent) {}

QString ScriptInput::GetModifiers() const
{
    return ScriptArguments::OfModifiers(Context().GetInput().GetModifiers());
}

QStringList ScriptInput::GetButtons() const
{
    const Qt::MouseButtons down = Context().GetInput().GetButtons();
    QStringList names;
    if (down & Qt::LeftButton) names.append(QStringLiteral("left"));
    if (down & Qt::RightButton) names.append(QStringLiteral("right"));
    if (down & Qt::MiddleButton) names.append(QStringLiteral("middle"));
    return names;
}

QWidget* ScriptInput::TargetOf(const QJSValue& options) const
{
    const QJSValue in = ScriptArguments::Option(options, "in");
    if (in.isUndefined()) return RequireView()->viewport();
    const auto* held = qobject_cast<ScriptWidget*>(in.toQObject());
    QWidget* widget = held ? held->Require() : WidgetSearch::Find(in.toString());
    // What scrolls takes the mouse on the sheet inside its frame.
    const auto* area = qobject_cast<QAbstractScrollArea*>(widget);
    return area ? area->viewport() : widget;
}

ScriptInput::Place ScriptInput::PlaceOf(const QPointF& point, const QJSValue& options, Reach reach) const
{
    const bool isInWidget = !ScriptArguments::Option(options, "in").isUndefined();
    Place place{TargetOf(options), QPoint()};
    place.pos = isInWidget ? QPoint(qFloor(point.x()), qFloor(point.y()))
                           : InputDriver::ViewPoint(RequireView(), point);
    WidgetHand::RequireUsable(place.widget);
    if (reach == Reach::Inside && !place.widget->rect().contains(place.pos)) {
        throw ScriptError(QStringLiteral("The point (%1, %2) isn't seen in %3.")
                              .arg(point.x())
                              .arg(point.y())
                              .arg(isInWidget ? WidgetReading::Path(place.widget)
                                              : QStringLiteral("the view: scroll or zoom before")));
    }
    return place;
}

ScriptInput::Place ScriptInput::PlaceOf(const QJSValue& x, const QJSValue& y, const QJSValue& options,
                                        Reach reach) const
{
    return PlaceOf(QPointF(ScriptArguments::ToNumber(x, "x"), ScriptArguments::ToNumber(y, "y")), options,
                   reach);
}

ScriptInput::Reach ScriptInput::ReachNow() const
{
    return Context().GetInput().GetButtons() == Qt::NoButton ? Reach::Inside : Reach::Anywhere;
}

void ScriptInput::move(const QJSValue& x, const QJSValue& y, const QJSValue& options)
{
    Call([&] {
        ScriptArguments::CheckOptions(options, WheelOptions);
        const Place place = PlaceOf(x, y, options, ReachNow());
        Context().GetInput().Move(place.widget, place.pos, ModifiersOf(options));
    });
}

void ScriptInput::press(const QJSValue& x, const QJSValue& y, const QJSValue& options)
{
    Call([&] {
        ScriptArguments::CheckOptions(options, MouseOptions);
        const Place place = PlaceOf(x, y, options, ReachNow());
        Context().GetInput().Press(place.widget, place.pos, ButtonOf(options), ModifiersOf(options));
    });
}

void ScriptInput::release(const QJSValue& x, const QJSValue& y, const QJSValue& options)
{
    Call([&] {
        ScriptArguments::CheckOptions(options, MouseOptions);
        const Qt::MouseButton button = ButtonOf(options);
        if (!(Context().GetInput().GetButtons() & button)) {
            throw ScriptError(QStringLiteral("The button isn't down."));
        }
        const Place place = PlaceOf(x, y, options, Reach::Anywhere);
        Context().GetInput().Release(place.widget, place.pos, button, ModifiersOf(options));
    });
}

void ScriptInput::click(const QJSValue& x, const QJSValue& y, const QJSValue& options)
{
    Call([&] {
        ScriptArguments::CheckOptions(options, MouseOptions);
        const Place place = PlaceOf(x, y, options, Reach::Inside);
        Context().GetInput().Click(place.widget, place.pos, ButtonOf(options), ModifiersOf(options));
    });
}

void ScriptInput::doubleClick(const QJSValue& x, const QJSValue& y, const QJSValue& options)
{
    Call([&] {
        ScriptArguments::CheckOptions(options, MouseOptions);
        const Place place = PlaceOf(x, y, options, Reach::Inside);
        Context().GetInput().DoubleClick(place.widget, place.pos, ButtonOf(options), ModifiersOf(options));
    });
}

void ScriptInput::drag(const QJSValue& points, const QJSValue& options)
{
    Call([&] {
        ScriptArguments::CheckOptions(options, DragOptions);
        const QJSValue wanted = ScriptArguments::Option(options, "steps");
        const int steps =
            wanted.isUndefined() ? DefaultSteps : ScriptArguments::ToInteger(wanted, "steps", 1, MostSteps);
        QVector<QPoint> way;
        Place place;
        const QVector<QPointF> all = ScriptArguments::ToPoints(points);
        for (const QPointF& point : all) {
            place = PlaceOf(point, options, way.isEmpty() ? Reach::Inside : Reach::Anywhere);
            way.append(place.pos);
        }
        Context().GetInput().Drag(place.widget, way, ButtonOf(options), ModifiersOf(options), steps);
    });
}

void ScriptInput::wheel(const QJSValue& x, const QJSValue& y, const QJSValue& notches,
                        const QJSValue& options)
{
    Call([&] {
        ScriptArguments::CheckOptions(options, WheelOptions);
        const Place place = PlaceOf(x, y, options, Reach::Inside);
        const int angle = qRound(ScriptArguments::ToNumber(notches, "notches") * Notch);
        Context().GetInput().Wheel(place.widget, place.pos, angle, ModifiersOf(options));
    });
}

void ScriptInput::key(const QString& keys)
{
    Call([&] {
        const ScriptArguments::Stroke stroke = ScriptArguments::ToStroke(keys);
        Context().GetInput().Key(stroke.key, stroke.modifiers);
    });
}

void ScriptInput::keyDown(const QString& key)
{
    Call([&] { Context().GetInput().KeyDown(ScriptArguments::ToStroke(key).key); });
}

void ScriptInput::keyUp(const QString& key)
{
    Call([&] { Context().GetInput().KeyUp(ScriptArguments::ToStroke(key).key); });
}

void ScriptInput::repeatKey(const QString& key)
{
    Call([&] { Context().GetInput().RepeatKey(ScriptArguments::ToStroke(key).key); });
}

void ScriptInput::type(const QString& text)
{
    Call([&] { Context().GetInput().Type(text); });
}

void ScriptInput::hold(const QJSValue& modifiers)
{
    Call([&] { Context().GetInput().HoldModifiers(ScriptArguments::ToModifiers(modifiers)); });
}
