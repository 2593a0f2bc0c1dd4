#pragma once

#include "EditorExport.h"

#include <QJSValue>
#include <QString>

/// Values of scripts, compared and written for people. Main thread only.
namespace ScriptValues {
/// As it would stand in a script, on one line; long ones are cut short.
ZK_EDITOR_EXPORT QString TextOf(const QJSValue& value);

/// Where two values differ first, such as `[2].name: "a" instead of "b"`; empty when they are equal. The same
/// type and value, NaN being equal to NaN; lists and objects by their contents, other objects by identity.
ZK_EDITOR_EXPORT QString FirstDifference(const QJSValue& seen, const QJSValue& expected);

/// Whether it is an array or something that looks like one, as the lists do that objects of the editor give.
ZK_EDITOR_EXPORT bool IsList(const QJSValue& value);
ZK_EDITOR_EXPORT int LengthOf(const QJSValue& list);
} // namespace ScriptValues
