#pragma once

#include "EditorExport.h"

#include <QCoreApplication>
#include <QJSValue>
#include <QString>

/// How a script ended.
struct ZK_EDITOR_EXPORT ScriptOutcome
{
    Q_DECLARE_TR_FUNCTIONS(ScriptOutcome)

public:
    enum class Kind
    {
        Finished,
        Failed,
        TimedOut,
    };

    Kind kind = Kind::Finished;
    int exitCode = 0;    ///< what the script asked for, if it finished
    QString message;     ///< why it failed; may have several lines
    QString file;        ///< where; empty when nobody knows
    int line = 0;        ///< from 1; 0 when nobody knows
    QString stack;       ///< the calls that led there, a line each, the innermost first
    QString step;        ///< what the script had said it does
    QString pictureFile; ///< what the screen showed; empty for none

    /// A failure by a value that was thrown.
    static ScriptOutcome FromThrown(const QJSValue& thrown);

    /// For the person who reads the error output: place and message, then step, calls and picture.
    QString ToText() const;
};
