#include "scripting/ScriptOutcome.h"

#include <QStringList>
#include <QUrl>

namespace {
QString LocalFile(const QString& url)
{
    return url.startsWith(QLatin1String("file:")) ? QUrl(url).toLocalFile() : url;
}

/// "name@file:///folder/file.js:12" as "name (/folder/file.js:12)"; lines without a file are the engine's
/// own.
QStringList ReadableCalls(const QString& stack)
{
    QStringList calls;
    for (const QString& call : stack.split('\n', Qt::SkipEmptyParts)) {
        const QString name = call.section('@', 0, 0);
        const QString place = call.section('@', 1);
        const int colon = place.lastIndexOf(':');
        if (colon <= 0) continue;
        const QString file = LocalFile(place.left(colon));
        const QString who = name.isEmpty() || name.startsWith('%') ? ScriptOutcome::tr("script") : name;
        calls << QStringLiteral("%1 (%2%3)").arg(who, file, place.mid(colon));
    }
    return calls;
}

/// The first place that lies in a file of the script: an error made on the script's behalf starts elsewhere.
void SetPlaceFromStack(ScriptOutcome& outcome, const QString& stack)
{
    for (const QString& call : stack.split('\n', Qt::SkipEmptyParts)) {
        const QString place = call.section('@', 1);
        const int colon = place.lastIndexOf(':');
        if (colon <= 0) continue;
        outcome.file = LocalFile(place.left(colon));
        outcome.line = place.mid(colon + 1).toInt();
        return;
    }
}
} // namespace

ScriptOutcome ScriptOutcome::FromThrown(const QJSValue& thrown)
{
    ScriptOutcome outcome;
    outcome.kind = Kind::Failed;
    if (!thrown.isError()) {
        outcome.message = tr("Uncaught: %1").arg(thrown.toString());
        return outcome;
    }
    const QString name = thrown.property(QStringLiteral("name")).toString();
    const QString message = thrown.property(QStringLiteral("message")).toString();
    // Plain errors are what `expect` and the objects throw: their words stand for themselves.
    outcome.message = name == QLatin1String("Error") ? message : name + QStringLiteral(": ") + message;
    const QString stack = thrown.property(QStringLiteral("stack")).toString();
    SetPlaceFromStack(outcome, stack);
    outcome.stack = ReadableCalls(stack).join('\n');
    return outcome;
}

QString ScriptOutcome::ToText() const
{
    if (kind == Kind::Finished) return QString();

    QString place = file;
    if (line > 0) place += QStringLiteral(":%1").arg(line);
    QStringList lines{place.isEmpty() ? message : place + QStringLiteral(": ") + message};
    if (!step.isEmpty()) lines << tr("  step: %1").arg(step);
    const QStringList calls = stack.split('\n', Qt::SkipEmptyParts);
    if (calls.size() > 1) {
        for (const QString& call : calls)
            lines << tr("  at %1").arg(call);
    }
    if (!pictureFile.isEmpty()) lines << tr("  picture: %1").arg(pictureFile);
    return lines.join('\n');
}
