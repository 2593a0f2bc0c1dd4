#pragma once

#include "EditorExport.h"

#include <QJSValue>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

class InputDriver;
class QJSEngine;
class ScriptHost;

/// What a run was started with.
struct ZK_EDITOR_EXPORT ScriptOptions
{
    QString file;             ///< the script; absolute, or relative to the working folder
    QStringList arguments;    ///< what the script gets as `script.args`
    QString pictureFolder;    ///< where the picture of a failure goes; empty for none
    bool allowFaults = false; ///< whether `faults` is there
    int timeLimit = 0;        ///< ms until the script is ended; 0 for none
    /// Called, on a thread of its own, when the script did not even end then: it is stuck in the program.
    std::function<void()> onStuck;
};

/// What all objects that a script sees share: the application, the input, and the ways to fail.
/// Main thread only; outlives those objects.
class ZK_EDITOR_EXPORT ScriptContext
{
public:
    ScriptContext(ScriptHost& host, InputDriver& input, QJSEngine& engine, ScriptOptions options);
    Q_DISABLE_COPY(ScriptContext)

    ScriptHost& GetHost() const { return m_Host; }

    InputDriver& GetInput() const { return m_Input; }

    QJSEngine& GetEngine() const { return m_Engine; }

    const ScriptOptions& GetOptions() const { return m_Options; }

    /// Throws a script error out of the invokable that is running; its caller may catch it. The error names
    /// the script's line. The invokable goes on, so it should return at once.
    void ThrowError(const QString& message);

    /// Ends the script with a failure that it can't catch, such as a dialog that nobody expected. Works from
    /// anywhere, event handlers included: the script stops as soon as the call that it is in returns. The
    /// first failure counts.
    void Fail(const QString& message);

    /// The same for an error that a callback of the script has thrown, with the error's own line.
    void Fail(const QJSValue& error);

    /// Ends the script without a failure.
    void Exit(int code);

    /// Whether one of these, or the time limit, has ended the script. Whoever waits stops waiting then.
    bool IsEnding() const;

    bool HasFailed() const { return m_bFailed; }

    /// What Fail() was told: an error object, its message with the place where the script stood.
    QJSValue GetFailure() const { return m_Failure; }

    int GetExitCode() const { return m_ExitCode; }

    /// Asked when a script has come to its end: words for something that must not stay as it is, such as an
    /// expected dialog that never came, make it a failure. Empty when all is well.
    using EndCheck = std::function<QString()>;

    void AddEndCheck(EndCheck check) { m_EndChecks.push_back(std::move(check)); }

    /// Asks them; Fail() is called for the first one that complains.
    void CheckEnd();

    /// What the script says it does just now; a failure is told with it.
    QString GetStep() const { return m_Step; }

    void SetStep(const QString& step) { m_Step = step; }

private:
    void FailWith(const QJSValue& failure);

    ScriptHost& m_Host;
    InputDriver& m_Input;
    QJSEngine& m_Engine;
    ScriptOptions m_Options;
    QString m_Step;
    QJSValue m_Failure;
    bool m_bFailed = false;
    int m_ExitCode = 0;
    std::vector<EndCheck> m_EndChecks;
};
