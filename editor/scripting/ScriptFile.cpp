#include "scripting/ScriptFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJSEngine>

namespace {
/// The value of a program that came to its end. An error object tells by itself that it was thrown, but
/// anything may be thrown, and the engine then hands it out like the value of the last statement.
const QString EndMark = QStringLiteral("(the end of the script was reached)");
} // namespace

ScriptFile::Result ScriptFile::Run(QJSEngine& engine, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        const QString message = QCoreApplication::translate("ScriptFile", "The script %1 can't be read: %2")
                                    .arg(QDir::toNativeSeparators(path), file.errorString());
        return {true, engine.newErrorObject(QJSValue::GenericError, message)};
    }
    const QString text = QString::fromUtf8(file.readAll()) + QStringLiteral("\n;'%1'").arg(EndMark);
    const QJSValue value = engine.evaluate(text, path);
    if (value.isString() && value.toString() == EndMark) return {};
    return {true, value};
}
