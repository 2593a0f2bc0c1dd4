#pragma once

#include "scripting/ScriptEngine.h"
#include "support/PlainScriptHost.h"

#include <QFile>
#include <QTemporaryDir>

/// Script files in a folder of their own, run against an application without documents.
class ScriptFixture
{
public:
    /// Writes a file beside the script. Answers its path.
    QString Write(const QString& name, const QString& text) const
    {
        QFile file(PathOf(name));
        if (!file.open(QIODevice::WriteOnly)) qFatal("The script can't be written.");
        file.write(text.toUtf8());
        return file.fileName();
    }

    QString PathOf(const QString& name) const { return m_Folder.filePath(name); }

    /// Runs the text as the file "main.js".
    ScriptOutcome Run(const QString& text, ScriptOptions options = {})
    {
        options.file = Write(QStringLiteral("main.js"), text);
        ScriptEngine engine(m_Host, options);
        return engine.Run();
    }

    PlainScriptHost& GetHost() { return m_Host; }

private:
    QTemporaryDir m_Folder;
    PlainScriptHost m_Host;
};
