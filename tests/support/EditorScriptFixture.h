#pragma once

#include "app/EditorScriptHost.h"
#include "app/MainWindow.h"
#include "scripting/ScriptEngine.h"
#include "support/EditorFixture.h"

#include <QFile>
#include <QTest>

/// Scripts run against a real editor with the real plug-in, in this process.
class EditorScriptFixture : public EditorFixture
{
public:
    using EditorFixture::EditorFixture;

    /// Writes the text to a file and runs it, with the time limit that keeps a mistake from hanging the test.
    ScriptOutcome Run(const QString& text, bool allowFaults = false)
    {
        ScriptOptions options;
        options.file = TempFile(QStringLiteral("main.js"));
        options.timeLimit = TimeLimit;
        options.allowFaults = allowFaults;
        QFile file(options.file);
        if (!file.open(QIODevice::WriteOnly)) qFatal("The script can't be written.");
        file.write(text.toUtf8());
        file.close();

        EditorScriptHost host(GetEditor());
        ScriptEngine engine(host, options);
        return engine.Run();
    }

    /// Runs the text, which has to come to its end; else the running test has failed.
    void Check(const QString& text, bool allowFaults = false)
    {
        const QString fault = Run(text, allowFaults).ToText();
        QTest::qVerify(fault.isEmpty(), "the script comes to its end", qPrintable(fault), __FILE__, __LINE__);
    }

    /// A script gets a file's path as a text of its own language.
    QString Quoted(const QString& name) const { return QStringLiteral("\"%1\"").arg(TempFile(name)); }

private:
    static constexpr int TimeLimit = 20000; // ms
};
