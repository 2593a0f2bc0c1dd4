#include "scripting/ScriptExpect.h"

#include "scripting/ScriptContext.h"
#include "scripting/ScriptValues.h"

#include <cmath>

using ScriptValues::FirstDifference;
using ScriptValues::IsList;
using ScriptValues::LengthOf;
using ScriptValues::TextOf;

namespace {
bool IsNear(const QJSValue& seen, const QJSValue& expected, double tolerance)
{
    if (IsList(seen) && IsList(expected)) {
        if (LengthOf(seen) != LengthOf(expected)) return false;
        for (quint32 i = 0; i < quint32(LengthOf(seen)); ++i) {
            if (!IsNear(seen.property(i), expected.property(i), tolerance)) return false;
        }
        return true;
    }
    return seen.isNumber() && expected.isNumber() &&
           std::abs(seen.toNumber() - expected.toNumber()) <= tolerance;
}

bool Contains(const QJSValue& seen, const QJSValue& part)
{
    if (!IsList(seen)) return seen.isString() && seen.toString().contains(part.toString());
    for (quint32 i = 0; i < quint32(LengthOf(seen)); ++i) {
        if (FirstDifference(seen.property(i), part).isEmpty()) return true;
    }
    return false;
}
} // namespace

ScriptExpect::ScriptExpect(ScriptContext& context, QObject* parent) : QObject(parent), m_Context(context) {}

void ScriptExpect::equal(const QJSValue& seen, const QJSValue& expected, const QString& what)
{
    const QString difference = FirstDifference(seen, expected);
    if (difference.isEmpty()) return;
    const bool isInside = !difference.startsWith(':');
    Complain(what, tr("not equal"), TextOf(expected), TextOf(seen), isInside ? difference : QString());
}

void ScriptExpect::notEqual(const QJSValue& seen, const QJSValue& unwanted, const QString& what)
{
    if (!FirstDifference(seen, unwanted).isEmpty()) return;
    Complain(what, tr("equal"), tr("anything but %1").arg(TextOf(unwanted)), TextOf(seen));
}

void ScriptExpect::ok(const QJSValue& seen, const QString& what)
{
    if (!seen.toBool()) Complain(what, tr("not so"), tr("something true"), TextOf(seen));
}

void ScriptExpect::near(const QJSValue& seen, const QJSValue& expected, double tolerance, const QString& what)
{
    if (IsNear(seen, expected, tolerance)) return;
    Complain(what, tr("not near"), tr("%1, within %2").arg(TextOf(expected), QString::number(tolerance)),
             TextOf(seen));
}

void ScriptExpect::contains(const QJSValue& seen, const QJSValue& part, const QString& what)
{
    if (Contains(seen, part)) return;
    Complain(what, tr("not there"), tr("something with %1").arg(TextOf(part)), TextOf(seen));
}

void ScriptExpect::throws(QJSValue function, const QString& part, const QString& what)
{
    const QString wanted = tr("an error with \"%1\"").arg(part);
    if (!function.isCallable()) {
        Complain(what, tr("not a function"), tr("a function"), TextOf(function));
        return;
    }
    const QJSValue result = function.call();
    // The error that is seen here may be the interruption of a script that ends.
    if (m_Context.IsEnding()) return;
    if (!result.isError()) {
        Complain(what, tr("no error"), wanted, TextOf(result));
    } else if (!result.toString().contains(part)) {
        Complain(what, tr("another error"), wanted, result.toString());
    }
}

void ScriptExpect::fail(const QString& message)
{
    m_Context.ThrowError(message);
}

void ScriptExpect::Complain(const QString& what, const QString& complaint, const QString& expected,
                            const QString& seen, const QString& difference)
{
    QStringList lines{what.isEmpty() ? complaint : what + QStringLiteral(": ") + complaint};
    lines << tr("  expected: %1").arg(expected) << tr("  seen: %1").arg(seen);
    if (!difference.isEmpty()) lines << tr("  first at %1").arg(difference);
    m_Context.ThrowError(lines.join('\n'));
}
