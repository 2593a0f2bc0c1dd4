#include "scripting/ScriptContext.h"

#include "scripting/ScriptHost.h"

#include <QJSEngine>

#include <utility>

ScriptHost::~ScriptHost() = default;

ScriptContext::ScriptContext(ScriptHost& host, InputDriver& input, QJSEngine& engine, ScriptOptions options)
    : m_Host(host), m_Input(input), m_Engine(engine), m_Options(std::move(options))
{}

void ScriptContext::ThrowError(const QString& message)
{
    m_Engine.throwError(message);
}

void ScriptContext::Fail(const QString& message)
{
    // Evaluated, not constructed here: only so it knows the lines that the script stands at.
    QJSValue maker = m_Engine.evaluate(QStringLiteral("(function(text) { return new Error(text); })"));
    FailWith(maker.call({message}));
}

void ScriptContext::Fail(const QJSValue& error)
{
    FailWith(error);
}

void ScriptContext::FailWith(const QJSValue& failure)
{
    if (IsEnding()) return;
    m_bFailed = true;
    m_Failure = failure;
    m_Engine.setInterrupted(true);
}

void ScriptContext::Exit(int code)
{
    if (IsEnding()) return;
    m_ExitCode = code;
    m_Engine.setInterrupted(true);
}

bool ScriptContext::IsEnding() const
{
    return m_Engine.isInterrupted();
}

void ScriptContext::CheckEnd()
{
    for (const EndCheck& check : m_EndChecks) {
        const QString complaint = check();
        if (complaint.isEmpty()) continue;
        Fail(complaint);
        return;
    }
}
