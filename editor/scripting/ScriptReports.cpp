#include "scripting/ScriptReports.h"

#include "scripting/ScriptContext.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <mutex>

namespace {
constexpr int PollInterval = 10; // ms

/// The message handler is a plain function that any thread calls, so what it needs stands here.
struct Log
{
    std::mutex mutex;
    QStringList lines;
    QtMessageHandler previous = nullptr;
};

Log& TheLog()
{
    static Log log;
    return log;
}

void Record(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    QtMessageHandler previous = nullptr;
    {
        const std::lock_guard<std::mutex> lock(TheLog().mutex);
        TheLog().lines.append(message);
        previous = TheLog().previous;
    }
    if (previous) previous(type, context, message);
}
} // namespace

ScriptReports::ScriptReports(ScriptContext& context, QObject* parent) : QObject(parent), m_Context(context)
{
    clear();
    const QtMessageHandler previous = qInstallMessageHandler(Record);
    const std::lock_guard<std::mutex> lock(TheLog().mutex);
    TheLog().previous = previous;
}

ScriptReports::~ScriptReports()
{
    const std::lock_guard<std::mutex> lock(TheLog().mutex);
    qInstallMessageHandler(TheLog().previous);
}

QStringList ScriptReports::GetLines() const
{
    const std::lock_guard<std::mutex> lock(TheLog().mutex);
    return TheLog().lines;
}

void ScriptReports::clear()
{
    const std::lock_guard<std::mutex> lock(TheLog().mutex);
    TheLog().lines.clear();
}

QString ScriptReports::wait(const QString& part, int limit)
{
    QElapsedTimer clock;
    clock.start();
    QTimer alarm; // wakes the loop: a line from another thread brings no event
    alarm.start(PollInterval);
    while (!m_Context.IsEnding()) {
        for (const QString& line : GetLines()) {
            if (line.contains(part)) return line;
        }
        if (clock.elapsed() >= limit) {
            m_Context.ThrowError(
                tr("no line with \"%1\" came within %2 ms").arg(part, QString::number(limit)));
            break;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return QString();
}
