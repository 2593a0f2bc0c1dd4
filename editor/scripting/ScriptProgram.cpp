#include "scripting/ScriptProgram.h"

#include "scripting/ScriptContext.h"
#include "scripting/ScriptFile.h"

#include <QDir>
#include <QFileInfo>

#include <cstdio>

ScriptProgram::ScriptProgram(ScriptContext& context, QObject* parent)
    : QObject(parent), m_Context(context), m_Including{GetFile()}
{}

QString ScriptProgram::GetFile() const
{
    return QFileInfo(m_Context.GetOptions().file).absoluteFilePath();
}

QString ScriptProgram::GetFolder() const
{
    return QFileInfo(m_Context.GetOptions().file).absolutePath();
}

QStringList ScriptProgram::GetArguments() const
{
    return m_Context.GetOptions().arguments;
}

void ScriptProgram::print(const QJSValue& value)
{
    std::fprintf(stdout, "%s\n", qUtf8Printable(value.toString()));
    // At once: whoever reads along wants the lines as they come.
    std::fflush(stdout);
}

void ScriptProgram::step(const QString& text)
{
    m_Context.SetStep(text);
}

void ScriptProgram::include(const QString& path)
{
    const QString file = QFileInfo(QFileInfo(m_Including.last()).dir(), path).absoluteFilePath();
    if (m_Including.contains(file)) {
        m_Context.ThrowError(tr("%1 is being included already").arg(path));
        return;
    }
    m_Including.append(file);
    const ScriptFile::Result result = ScriptFile::Run(m_Context.GetEngine(), file);
    m_Including.removeLast();
    // Thrown once more from here, the error would lose its own line.
    if (result.hasThrown) m_Context.Fail(result.thrown);
}

void ScriptProgram::exit(int code)
{
    m_Context.Exit(code);
}
