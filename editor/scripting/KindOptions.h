#pragma once

#include "document/TextContent.h"
#include "image/LXAdjustment.h"

#include <QJSValue>
#include <QString>
#include <QVector>

class QJSEngine;

/// How scripts write what a text or an adjustment is. What can't be read throws a ScriptError that tells what
/// was expected. Main thread only.
namespace KindOptions {
/// The names of a text's options, for ScriptArguments::CheckOptions.
QVector<QString> TextNames();
/// `base` with what the options tell otherwise.
TextContent ToText(const QJSValue& options, const TextContent& base);
/// All of its options.
QJSValue OfText(QJSEngine& engine, const TextContent& text);

QVector<QString> AdjustmentNames();
LXAdjustment ToAdjustment(const QJSValue& options, const LXAdjustment& base);
/// The kind, and the values that count for it.
QJSValue OfAdjustment(QJSEngine& engine, const LXAdjustment& adjustment);
/// "levels" as "Levels".
QString NameOf(LXAdjustment::Kind kind);
} // namespace KindOptions
