#include "scripting/ScriptDialogs.h"

#include "scripting/ExpectedWindows.h"
#include "scripting/ScriptArguments.h"

using Expectation = ExpectedWindows::Expectation;

ScriptDialogs::ScriptDialogs(ScriptContext& context, QObject* parent)
    : ScriptObject(context, parent), m_pWindows(new ExpectedWindows(context, this))
{
    context.AddEndCheck([this] {
        const QString unmet = m_pWindows->WordsOfWaiting();
        return unmet.isEmpty() ? QString() : QStringLiteral("What was expected never opened: %1").arg(unmet);
    });
}

int ScriptDialogs::GetWaiting() const
{
    return m_pWindows->CountWaiting();
}

QStringList ScriptDialogs::GetSeen() const
{
    return m_pWindows->GetSeen();
}

void ScriptDialogs::expect(const QJSValue& what, const QJSValue& callback)
{
    Call([&] {
        ScriptArguments::CheckOptions(what, {"title", "text", "answer"});
        const QJSValue answer = ScriptArguments::Option(what, "answer");
        Expectation expectation;
        expectation.title = ScriptArguments::Option(what, "title");
        expectation.text = ScriptArguments::Option(what, "text");
        expectation.callback = callback;
        expectation.hasAnswer = !answer.isUndefined();
        expectation.answer = answer.toString();
        if (expectation.title.isUndefined()) {
            throw ScriptError(QStringLiteral("An expected window needs a title."));
        }
        if (!callback.isUndefined() && !callback.isCallable()) {
            throw ScriptError(QStringLiteral("What is done with the window has to be a function."));
        }
        if (!expectation.hasAnswer && !callback.isCallable()) {
            throw ScriptError(QStringLiteral("An expected window needs an answer or a function."));
        }
        m_pWindows->Add(expectation);
    });
}

void ScriptDialogs::expectFile(const QJSValue& paths, const QJSValue& options)
{
    Call([&] {
        ScriptArguments::CheckOptions(options, {"title"});
        Expectation expectation;
        expectation.kind = Expectation::Kind::File;
        expectation.title = ScriptArguments::Option(options, "title");
        if (paths.isArray()) {
            expectation.paths = paths.toVariant().toStringList();
        } else if (paths.isString()) {
            expectation.paths = QStringList(paths.toString());
        } else if (!paths.isNull()) {
            throw ScriptError(QStringLiteral("A path, a list of paths or null is needed."));
        }
        m_pWindows->Add(expectation);
    });
}

void ScriptDialogs::expectMenu(const QJSValue& choice)
{
    Call([&] {
        Expectation expectation;
        expectation.kind = Expectation::Kind::Menu;
        if (choice.isCallable()) {
            expectation.callback = choice;
        } else {
            expectation.entries = choice.toString().split('/', Qt::SkipEmptyParts);
        }
        if (!choice.isCallable() && (!choice.isString() || expectation.entries.isEmpty())) {
            throw ScriptError(QStringLiteral("The texts of entries or a function is needed."));
        }
        m_pWindows->Add(expectation);
    });
}

void ScriptDialogs::clear()
{
    m_pWindows->Clear();
}
