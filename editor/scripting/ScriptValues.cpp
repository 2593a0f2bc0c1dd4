#include "scripting/ScriptValues.h"

#include <QCoreApplication>
#include <QJSValueIterator>
#include <QStringList>

#include <cmath>

namespace {
constexpr int LongestText = 300;
constexpr int DeepestLevel = 16; // deeper ones are likely to contain themselves

QString Quoted(QString text)
{
    text.replace('\\', QLatin1String("\\\\")).replace('"', QLatin1String("\\\""));
    text.replace('\n', QLatin1String("\\n"));
    return '"' + text + '"';
}

bool IsPlainObject(const QJSValue& value)
{
    return value.isObject() && !value.isCallable() && !value.isQObject() && !value.isError() &&
           !value.isDate() && !value.isRegExp() && !ScriptValues::IsList(value);
}

QStringList NamesOf(const QJSValue& object)
{
    QStringList names;
    QJSValueIterator it(object);
    while (it.hasNext()) {
        it.next();
        names << it.name();
    }
    return names;
}

QString TextAtLevel(const QJSValue& value, int level)
{
    if (value.isString()) return Quoted(value.toString());
    if (level > DeepestLevel) return QStringLiteral("...");
    QStringList items;
    if (ScriptValues::IsList(value)) {
        for (int i = 0; i < ScriptValues::LengthOf(value); ++i)
            items << TextAtLevel(value.property(static_cast<quint32>(i)), level + 1);
        return '[' + items.join(QStringLiteral(", ")) + ']';
    }
    if (!IsPlainObject(value)) return value.toString();
    for (const QString& name : NamesOf(value))
        items << name + QStringLiteral(": ") + TextAtLevel(value.property(name), level + 1);
    return '{' + items.join(QStringLiteral(", ")) + '}';
}

bool AreSame(const QJSValue& seen, const QJSValue& expected)
{
    if (seen.isNumber() && expected.isNumber() && std::isnan(seen.toNumber())) {
        return std::isnan(expected.toNumber());
    }
    return seen.strictlyEquals(expected);
}

QString Instead(const QString& path, const QString& seen, const QString& expected)
{
    return QCoreApplication::translate("ScriptValues", "%1: %2 instead of %3").arg(path, seen, expected);
}

QString Instead(const QString& path, const QJSValue& seen, const QJSValue& expected)
{
    return Instead(path, ScriptValues::TextOf(seen), ScriptValues::TextOf(expected));
}

QString TextOfProperty(const QJSValue& object, const QString& name)
{
    if (object.hasOwnProperty(name)) return ScriptValues::TextOf(object.property(name));
    return QCoreApplication::translate("ScriptValues", "nothing");
}

QString DifferenceAt(const QString& path, const QJSValue& seen, const QJSValue& expected, int level);

QString ListDifference(const QString& path, const QJSValue& seen, const QJSValue& expected, int level)
{
    const int seenLength = ScriptValues::LengthOf(seen);
    const int expectedLength = ScriptValues::LengthOf(expected);
    for (int i = 0; i < qMin(seenLength, expectedLength); ++i) {
        QString difference =
            DifferenceAt(path + QStringLiteral("[%1]").arg(i), seen.property(static_cast<quint32>(i)),
                         expected.property(static_cast<quint32>(i)), level + 1);
        if (!difference.isEmpty()) return difference;
    }
    if (seenLength == expectedLength) return QString();
    return Instead(path + QStringLiteral(".length"), QString::number(seenLength),
                   QString::number(expectedLength));
}

QString ObjectDifference(const QString& path, const QJSValue& seen, const QJSValue& expected, int level)
{
    QStringList names = NamesOf(expected);
    for (const QString& name : NamesOf(seen)) {
        if (!names.contains(name)) names << name;
    }
    for (const QString& name : names) {
        const QString inner = path + '.' + name;
        if (seen.hasOwnProperty(name) != expected.hasOwnProperty(name)) {
            return Instead(inner, TextOfProperty(seen, name), TextOfProperty(expected, name));
        }
        QString difference = DifferenceAt(inner, seen.property(name), expected.property(name), level + 1);
        if (!difference.isEmpty()) return difference;
    }
    return QString();
}

QString DifferenceAt(const QString& path, const QJSValue& seen, const QJSValue& expected, int level)
{
    if (AreSame(seen, expected)) return QString();
    if (level <= DeepestLevel) {
        if (ScriptValues::IsList(seen) && ScriptValues::IsList(expected))
            return ListDifference(path, seen, expected, level);
        if (IsPlainObject(seen) && IsPlainObject(expected))
            return ObjectDifference(path, seen, expected, level);
    }
    return Instead(path, seen, expected);
}
} // namespace

QString ScriptValues::TextOf(const QJSValue& value)
{
    const QString text = TextAtLevel(value, 0);
    return text.size() <= LongestText ? text : text.left(LongestText) + QStringLiteral("...");
}

QString ScriptValues::FirstDifference(const QJSValue& seen, const QJSValue& expected)
{
    return DifferenceAt(QString(), seen, expected, 0);
}

bool ScriptValues::IsList(const QJSValue& value)
{
    if (value.isArray()) return true;
    return value.isObject() && !value.isCallable() && !value.isQObject() &&
           value.property(QStringLiteral("length")).isNumber();
}

int ScriptValues::LengthOf(const QJSValue& list)
{
    return list.property(QStringLiteral("length")).toInt();
}
