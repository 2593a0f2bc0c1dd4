#include "scripting/ScriptProgram.h"

#include "scripting/QuietEditor.h"
#include "scripting/ScriptContext.h"
#include "scripting/ScriptFile.h"
#include "scripting/ScriptHost.h"
#include "scripting/ScriptRandom.h"
#include "scripting/WindowPicture.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMainWindow>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace {
constexpr int WaitStep = 10; // ms; how late an interruption is noticed

/// A visible widget by its object name or window title; null when there is none.
QWidget* FindVisible(const QString& name)
{
    for (QWidget* widget : QApplication::allWidgets()) {
        if (!widget->isVisible()) continue;
        if (widget->objectName() == name || (widget->isWindow() && widget->windowTitle() == name))
            return widget;
    }
    return nullptr;
}
} // namespace

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

void ScriptProgram::wait(int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    // Wakes the loop, so that it sees the time and the interruption.
    QTimer alarm;
    alarm.start(WaitStep);
    while (clock.elapsed() < milliseconds && !m_Context.IsEnding())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void ScriptProgram::idle(int limit)
{
    const QString busy = QuietEditor::WaitUntilQuiet(m_Context, limit);
    if (!busy.isEmpty()) m_Context.ThrowError(tr("not at rest after %1 ms: %2").arg(limit).arg(busy));
}

QObject* ScriptProgram::random(int seed)
{
    // Without a parent: the script's garbage collector deletes it.
    return new ScriptRandom(seed);
}

void ScriptProgram::grab(const QString& file, const QString& name)
{
    QPixmap picture;
    if (name.isEmpty()) {
        picture = WindowPicture::OfScreen(m_Context.GetHost().GetWindow());
    } else if (QWidget* widget = FindVisible(name)) {
        picture = widget->grab();
    } else {
        m_Context.ThrowError(tr("there is no visible widget \"%1\"").arg(name));
        return;
    }
    if (!picture.save(file)) m_Context.ThrowError(tr("the picture %1 can't be written").arg(file));
}
