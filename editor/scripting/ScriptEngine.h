#pragma once

#include "EditorExport.h"

#include "scripting/ScriptContext.h"
#include "scripting/ScriptFile.h"
#include "scripting/ScriptOutcome.h"

#include <QObject>

#include <atomic>
#include <memory>

class InputDriver;
class QJSEngine;
class ScriptHost;

/// Runs one JavaScript file (ECMAScript 7, as QJSEngine has it) against the running editor. The objects of
/// ScriptSurface are its global variables.
///
/// Main thread only.
class ZK_EDITOR_EXPORT ScriptEngine : public QObject
{
    Q_OBJECT

public:
    ScriptEngine(ScriptHost& host, ScriptOptions options);
    ~ScriptEngine() override;

    /// Runs the file to its end, or to the time limit, and answers how it ended. Even an endless loop ends at
    /// the limit, and modal windows that stand open then are dismissed. Once for each object.
    ScriptOutcome Run();

    ScriptContext& GetContext() { return *m_pContext; }

private:
    void InstallSurface();
    ScriptOutcome CollectOutcome(const ScriptFile::Result& result) const;
    ScriptOutcome TimedOut() const;
    void FinishScript();
    void OnTimeLimit();
    void DismissModalWindows();

    std::unique_ptr<QJSEngine> m_pEngine;
    std::unique_ptr<InputDriver> m_pInput;
    std::unique_ptr<ScriptContext> m_pContext;
    std::unique_ptr<QObject> m_pSurface; // parent of the global objects
    std::atomic<bool> m_isTimedOut{false};
    QStringList m_Dismissed; // what stood open at the time limit
};
