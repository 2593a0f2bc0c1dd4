#pragma once

#include <QColor>
#include <QImage>
#include <QJSValue>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QString>
#include <QVector>

class QJSEngine;

/// How scripts write points, rectangles, colors, buttons and keys, and what they get for them. What can't be
/// read throws a ScriptError that tells what was expected. Main thread only.
namespace ScriptArguments {
/// `{x, y}`
QJSValue OfPoint(QJSEngine& engine, const QPointF& point);
/// `{x, y, width, height}`; null for an empty one
QJSValue OfRect(QJSEngine& engine, const QRect& rect);
/// `"#aarrggbb"`, in small letters
QString OfColor(const QColor& color);

/// A finite number; `what` names it in the error.
double ToNumber(const QJSValue& value, const char* what);
/// A number without a fraction, within the bounds.
int ToInteger(const QJSValue& value, const char* what, int minimum, int maximum);
QPointF ToPoint(const QJSValue& value);
/// At least one of them.
QVector<QPointF> ToPoints(const QJSValue& value);
QRect ToRect(const QJSValue& value);
/// A name such as "white", "transparent", "#rrggbb" or "#aarrggbb".
QColor ToColor(const QString& text);

/// The property `name` of an options object; undefined when there is none or no object was given.
QJSValue Option(const QJSValue& options, const char* name);
/// Refuses options that aren't an object, and names in it that aren't among these.
void CheckOptions(const QJSValue& options, const QVector<QString>& names);

/// "left", "right" or "middle"; undefined is the left one.
Qt::MouseButton ToButton(const QJSValue& value);
/// "Ctrl+Shift", or a list of names; undefined and "" mean none.
Qt::KeyboardModifiers ToModifiers(const QJSValue& value);
QString OfModifiers(Qt::KeyboardModifiers modifiers);

struct Stroke
{
    int key = 0; ///< a `Qt::Key`
    Qt::KeyboardModifiers modifiers;
};

/// "Ctrl+Z", "Space", "F11", "Shift"
Stroke ToStroke(const QString& text);
} // namespace ScriptArguments
