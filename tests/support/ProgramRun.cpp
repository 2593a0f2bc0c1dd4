#include "support/ProgramRun.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <unistd.h>

#include <csignal>

namespace {
constexpr int ProcessLimit = 20000; // ms

class GroupProcess : public QProcess
{
protected:
    void setupChildProcess() override { setpgid(0, 0); }
};

/// The process group of a process, from the system's table; 0 when it has ended.
qint64 GroupOf(const QString& process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly)) return 0;
    // "pid (name) state parent group ...", and the name may hold anything.
    const QString afterName = QString::fromUtf8(file.readAll()).section(')', -1).trimmed();
    const QStringList fields = afterName.split(' ');
    return fields.value(0) == QLatin1String("Z") ? 0 : fields.value(2).toLongLong();
}
} // namespace

ProgramRun::ProgramRun(const QString& program, const QStringList& arguments)
{
    Start(program, arguments);
    if (!m_pProcess->waitForFinished(Limit)) return;
    if (m_pProcess->exitStatus() == QProcess::NormalExit) exitCode = m_pProcess->exitCode();
    output = QString::fromUtf8(m_pProcess->readAllStandardOutput());
    errors = QString::fromUtf8(m_pProcess->readAllStandardError());
}

ProgramRun::ProgramRun(BegunOnly, const QString& program, const QStringList& arguments)
{
    Start(program, arguments);
}

ProgramRun::~ProgramRun()
{
    if (CountProcesses() > 0) kill(static_cast<pid_t>(-m_Group), SIGKILL);
    m_pProcess->waitForFinished(Limit);
}

void ProgramRun::Start(const QString& program, const QStringList& arguments)
{
    m_pProcess = std::make_unique<GroupProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    m_pProcess->setProcessEnvironment(environment);
    m_pProcess->start(program, arguments);
    if (!m_pProcess->waitForStarted()) qFatal("%s did not start.", qPrintable(program));
    m_Group = m_pProcess->processId();
}

bool ProgramRun::WaitForProcesses(int count)
{
    return QTest::qWaitFor([&] { return CountProcesses() == count; }, ProcessLimit);
}

void ProgramRun::EndFirstProcess()
{
    kill(static_cast<pid_t>(m_Group), SIGKILL);
}

int ProgramRun::CountProcesses() const
{
    int count = 0;
    for (const QString& process : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        bool isNumber = false;
        process.toInt(&isNumber);
        if (isNumber && GroupOf(process) == m_Group) ++count;
    }
    return count;
}
