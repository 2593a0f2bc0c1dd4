#include "scripting/ScriptArguments.h"

#include "scripting/ScriptError.h"

#include <QJSEngine>
#include <QJSValueIterator>
#include <QKeySequence>
#include <QMap>

#include <cmath>
#include <limits>

namespace {
constexpr int AnyInteger = std::numeric_limits<int>::max();

QString Shown(const QJSValue& value)
{
    return value.isString() ? QStringLiteral("\"%1\"").arg(value.toString()) : value.toString();
}

const QMap<QString, Qt::KeyboardModifier>& ModifierNames()
{
    static const QMap<QString, Qt::KeyboardModifier> names{
        {QStringLiteral("ctrl"), Qt::ControlModifier},
        {QStringLiteral("shift"), Qt::ShiftModifier},
        {QStringLiteral("alt"), Qt::AltModifier},
        {QStringLiteral("meta"), Qt::MetaModifier},
    };
    return names;
}

Qt::KeyboardModifier ToModifier(const QString& name)
{
    const auto found = ModifierNames().find(name.trimmed().toLower());
    if (found == ModifierNames().end()) {
        throw ScriptError(QStringLiteral("\"%1\" is no modifier: Ctrl, Shift, Alt or Meta.").arg(name));
    }
    return *found;
}

int ModifierKey(const QString& name)
{
    switch (ModifierNames().value(name.toLower(), Qt::NoModifier)) {
    case Qt::ControlModifier: return Qt::Key_Control;
    case Qt::ShiftModifier: return Qt::Key_Shift;
    case Qt::AltModifier: return Qt::Key_Alt;
    case Qt::MetaModifier: return Qt::Key_Meta;
    default: return 0;
    }
}
} // namespace

QJSValue ScriptArguments::OfPoint(QJSEngine& engine, const QPointF& point)
{
    QJSValue value = engine.newObject();
    value.setProperty(QStringLiteral("x"), point.x());
    value.setProperty(QStringLiteral("y"), point.y());
    return value;
}

QJSValue ScriptArguments::OfRect(QJSEngine& engine, const QRect& rect)
{
    if (rect.isEmpty()) return QJSValue(QJSValue::NullValue);
    QJSValue value = OfPoint(engine, rect.topLeft());
    value.setProperty(QStringLiteral("width"), rect.width());
    value.setProperty(QStringLiteral("height"), rect.height());
    return value;
}

QString ScriptArguments::OfColor(const QColor& color)
{
    return color.name(QColor::HexArgb);
}

double ScriptArguments::ToNumber(const QJSValue& value, const char* what)
{
    const double number = value.toNumber();
    if (!value.isNumber() || !std::isfinite(number)) {
        throw ScriptError(
            QStringLiteral("%1 has to be a number, not %2.").arg(QString::fromUtf8(what), Shown(value)));
    }
    return number;
}

int ScriptArguments::ToInteger(const QJSValue& value, const char* what, int minimum, int maximum)
{
    const double number = ToNumber(value, what);
    if (maximum < minimum) throw ScriptError(QStringLiteral("There is none to choose."));
    if (number != std::floor(number) || number < minimum || number > maximum) {
        throw ScriptError(QStringLiteral("%1 has to be a whole number from %2 to %3, not %4.")
                              .arg(QString::fromUtf8(what))
                              .arg(minimum)
                              .arg(maximum)
                              .arg(number));
    }
    return static_cast<int>(number);
}

QPointF ScriptArguments::ToPoint(const QJSValue& value)
{
    if (value.isArray()) return {ToNumber(value.property(0), "x"), ToNumber(value.property(1), "y")};
    if (!value.isObject()) {
        throw ScriptError(QStringLiteral("A point is {x, y} or [x, y], not %1.").arg(Shown(value)));
    }
    return {ToNumber(value.property(QStringLiteral("x")), "x"),
            ToNumber(value.property(QStringLiteral("y")), "y")};
}

QVector<QPointF> ScriptArguments::ToPoints(const QJSValue& value)
{
    QVector<QPointF> points;
    const int count = value.isArray() ? value.property(QStringLiteral("length")).toInt() : 0;
    for (int i = 0; i < count; ++i)
        points.append(ToPoint(value.property(static_cast<quint32>(i))));
    if (points.isEmpty()) throw ScriptError(QStringLiteral("A list of points is needed."));
    return points;
}

QRect ScriptArguments::ToRect(const QJSValue& value)
{
    if (!value.isObject()) {
        throw ScriptError(QStringLiteral("A rectangle is {x, y, width, height}, not %1.").arg(Shown(value)));
    }
    const auto part = [&value](const char* name, int minimum) {
        return ToInteger(value.property(QString::fromLatin1(name)), name, minimum, AnyInteger);
    };
    return {part("x", -AnyInteger), part("y", -AnyInteger), part("width", 1), part("height", 1)};
}

QColor ScriptArguments::ToColor(const QString& text)
{
    QColor color(text);
    if (!color.isValid()) {
        throw ScriptError(
            QStringLiteral("\"%1\" is no color: a name, \"#rrggbb\" or \"#aarrggbb\".").arg(text));
    }
    return color;
}

QJSValue ScriptArguments::Option(const QJSValue& options, const char* name)
{
    return options.isObject() ? options.property(QString::fromLatin1(name)) : QJSValue();
}

void ScriptArguments::CheckOptions(const QJSValue& options, const QVector<QString>& names)
{
    if (options.isUndefined()) return;
    if (!options.isObject() || options.isArray() || options.isQObject()) {
        throw ScriptError(QStringLiteral("Options are an object, not %1.").arg(Shown(options)));
    }
    QJSValueIterator option(options);
    while (option.hasNext()) {
        option.next();
        if (names.contains(option.name())) continue;
        throw ScriptError(QStringLiteral("There is no option \"%1\"; there are: %2.")
                              .arg(option.name(), QStringList(names.toList()).join(QStringLiteral(", "))));
    }
}

Qt::MouseButton ScriptArguments::ToButton(const QJSValue& value)
{
    const QString name = value.toString();
    if (value.isUndefined() || name == QLatin1String("left")) return Qt::LeftButton;
    if (name == QLatin1String("right")) return Qt::RightButton;
    if (name == QLatin1String("middle")) return Qt::MiddleButton;
    throw ScriptError(QStringLiteral("\"%1\" is no button: left, right or middle.").arg(name));
}

Qt::KeyboardModifiers ScriptArguments::ToModifiers(const QJSValue& value)
{
    if (value.isUndefined()) return Qt::NoModifier;
    QStringList names;
    if (value.isArray()) {
        names = value.toVariant().toStringList();
    } else {
        names = value.toString().split('+', Qt::SkipEmptyParts);
    }
    Qt::KeyboardModifiers modifiers;
    for (const QString& name : qAsConst(names))
        modifiers |= ToModifier(name);
    return modifiers;
}

QString ScriptArguments::OfModifiers(Qt::KeyboardModifiers modifiers)
{
    const std::pair<Qt::KeyboardModifier, const char*> all[] = {{Qt::ControlModifier, "Ctrl"},
                                                                {Qt::AltModifier, "Alt"},
                                                                {Qt::ShiftModifier, "Shift"},
                                                                {Qt::MetaModifier, "Meta"}};
    QStringList names;
    for (const auto& [modifier, name] : all) {
        if (modifiers & modifier) names.append(QString::fromLatin1(name));
    }
    return names.join('+');
}

ScriptArguments::Stroke ScriptArguments::ToStroke(const QString& text)
{
    if (const int key = ModifierKey(text)) return {key, Qt::NoModifier};

    const QKeySequence sequence = QKeySequence::fromString(text, QKeySequence::PortableText);
    const int combined = sequence.count() == 1 ? sequence[0] : Qt::Key_unknown;
    const int key = combined & ~Qt::KeyboardModifierMask;
    if (key == 0 || key == (Qt::Key_unknown & ~Qt::KeyboardModifierMask)) {
        throw ScriptError(
            QStringLiteral("\"%1\" is no key; keys are \"A\", \"Ctrl+Z\", \"Space\", \"F11\".").arg(text));
    }
    return {key, Qt::KeyboardModifiers(combined & static_cast<int>(Qt::KeyboardModifierMask))};
}
