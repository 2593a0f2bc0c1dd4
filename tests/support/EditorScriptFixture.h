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
    ScriptOutcome Run(const QString& text)
    {
        ScriptOptions options;
        options.file = TempFile(QStringLiteral("main.js"));
        options.timeLimit = TimeLimit;
        QFile file(options.file);
        if (!file.open(QIODevice::WriteOnly)) qFatal("The script can't be written.");
        file.write(text.toUtf8());
        file.close();

        EditorScriptHost host(GetEditor());
        ScriptEngine engine(host, options);
        return engine.Run();
    }

    /// Runs the text; how it failed, and nothing when it came to its end.
    QString Fault(const QString& text) { return Run(text).ToText(); }

    /// A script gets a file's path as a text of its own language.
    QString Quoted(const QString& name) const { return QStringLiteral("\"%1\"").arg(TempFile(name)); }

private:
    static constexpr int TimeLimit = 20000; // ms
};

/// Fails the running test when the script does.
#define ZK_RUN(fixture, text)                                                                                \
    do {                                                                                                     \
        const QString fault = (fixture).Fault(text);                                                         \
        QVERIFY2(fault.isEmpty(), qPrintable(fault));                                                        \
    } while (false)
