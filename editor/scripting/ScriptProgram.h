#pragma once

#include "EditorExport.h"

#include <QJSValue>
#include <QObject>
#include <QString>
#include <QStringList>

class ScriptContext;

/// `script`: the running script itself.
class ZK_EDITOR_EXPORT ScriptProgram : public QObject
{
    Q_OBJECT
    /// The script's file, absolute.
    Q_PROPERTY(QString file READ GetFile CONSTANT)
    /// The folder that it lies in, absolute.
    Q_PROPERTY(QString folder READ GetFolder CONSTANT)
    /// What stood behind the script's name on the command line.
    Q_PROPERTY(QStringList args READ GetArguments CONSTANT)

public:
    ScriptProgram(ScriptContext& context, QObject* parent);

    QString GetFile() const;
    QString GetFolder() const;
    QStringList GetArguments() const;

    /// Writes a line to the standard output.
    Q_INVOKABLE void print(const QJSValue& value);
    /// Says what the script does next, for the reader of a failure.
    Q_INVOKABLE void step(const QString& text);
    /// Runs another file; its functions and `var`s are there afterwards, its `let`s and `const`s stay its
    /// own. A relative path is looked up beside the including file. An error in it ends the script; it can't
    /// be caught.
    Q_INVOKABLE void include(const QString& path);
    /// Ends the script at once, without an error; the program ends with the code.
    Q_INVOKABLE void exit(int code = 0);

    /// Handles events for so many milliseconds.
    Q_INVOKABLE void wait(int milliseconds);
    /// Handles events until the editor has come to rest: no job runs, no document is locked, nothing is
    /// about to be drawn, no event waits. An error when that takes longer than the limit in milliseconds.
    Q_INVOKABLE void idle(int limit = DefaultIdleLimit);
    /// A generator of random numbers, the same ones for the same seed.
    Q_INVOKABLE QObject* random(int seed);
    /// Saves a picture, of the whole window with what lies over it, or of one visible widget.
    /// @param name  the widget's object name or a window's title
    Q_INVOKABLE void grab(const QString& file, const QString& name = QString());

private:
    static constexpr int DefaultIdleLimit = 30000;

    ScriptContext& m_Context;
    QStringList m_Including; // the files that are being run, the innermost last
};
