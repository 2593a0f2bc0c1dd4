#include "app/BatchRun.h"

#include "image/SwapPlace.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <utility>

namespace {
constexpr int Tenths = 10;

/// One script. Ends with the batch, however that ends.
class ScriptProcess : public QProcess
{
public:
    using QProcess::QProcess;

protected:
    void setupChildProcess() override { prctl(PR_SET_PDEATHSIG, SIGKILL); }
};

/// Each takes its part of the machine's memory alone.
QProcessEnvironment SharedEnvironment(int sharers)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(SharersVariable), QString::number(sharers));
    return environment;
}

void Write(std::FILE* stream, const QByteArray& bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

void WriteLine(std::FILE* stream, const QString& text)
{
    Write(stream, text.toUtf8() + '\n');
}
} // namespace

BatchRun::BatchRun(BatchLine line, QString program)
    : m_Line(std::move(line)), m_Program(std::move(program)), m_bTerminal(isatty(fileno(stderr)))
{
    m_Progress.total = m_Line.files.size();
}

int BatchRun::ExitCodeFor(int failedCount)
{
    return failedCount > MostCounted ? MoreFailed : failedCount;
}

int BatchRun::Run()
{
    if (!QFileInfo(m_Line.script).isFile()) {
        WriteLine(stderr, tr("There is no script %1.").arg(QDir::toNativeSeparators(m_Line.script)));
        return NotBegun;
    }
    m_Clock.start();
    for (int job = 0; job < m_Line.jobs; ++job)
        StartMore();
    Show();
    while (m_Progress.done < m_Progress.total)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    m_Progress.elapsed = m_Clock.elapsed();
    PrintSummary();
    return ExitCodeFor(m_Progress.failed);
}

void BatchRun::StartMore()
{
    if (m_Next < m_Line.files.size()) Start(m_Next++);
}

void BatchRun::Start(int index)
{
    QStringList arguments{QStringLiteral("--headless"), QStringLiteral("--script"), m_Line.script,
                          QStringLiteral("--failure-pictures"), PictureFolder(index)};
    if (m_Line.timeLimit > 0)
        arguments << QStringLiteral("--timeout") << QString::number(m_Line.timeLimit / 1000.0);
    arguments << QStringLiteral("--") << m_Line.files[index] << m_Line.arguments;

    auto* process = new ScriptProcess(this);
    process->setInputChannelMode(QProcess::ManagedInputChannel);
    process->setProcessEnvironment(SharedEnvironment(qMin(m_Line.jobs, m_Line.files.size())));
    connect(process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            [=](int code, QProcess::ExitStatus status) {
                QString failure;
                if (status == QProcess::CrashExit) {
                    failure = tr("crashed");
                } else if (code != 0) {
                    failure = tr("exit code %1").arg(code);
                }
                OnEnded(process, index, failure);
            });
    connect(process, &QProcess::errorOccurred, this, [=](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) OnEnded(process, index, process->errorString());
    });
    process->start(m_Program, arguments);
    process->closeWriteChannel();
}

void BatchRun::OnEnded(QProcess* process, int index, const QString& failure)
{
    if (m_bTerminal) Write(stderr, "\r\033[K"); // the bar is drawn anew below what the script has written
    Write(stdout, process->readAllStandardOutput());
    Write(stderr, process->readAllStandardError());
    process->deleteLater();

    ++m_Progress.done;
    if (!failure.isEmpty()) {
        ++m_Progress.failed;
        m_Failures << tr("failed: %1 (%2)").arg(m_Line.files[index], failure);
    }
    Show();
    StartMore();
}

void BatchRun::Show()
{
    m_Progress.elapsed = m_Clock.elapsed();
    if (m_bTerminal) {
        Write(stderr, "\r\033[K" + m_Progress.Line().toUtf8());
        return;
    }
    // A log file gets a line now and then.
    const int tenth = m_Progress.total == 0 ? 0 : Tenths * m_Progress.done / m_Progress.total;
    if (tenth == m_ShownTenth) return;
    m_ShownTenth = tenth;
    WriteLine(stderr, m_Progress.Line());
}

void BatchRun::PrintSummary() const
{
    if (m_bTerminal) Write(stderr, "\n");
    for (const QString& failure : m_Failures)
        WriteLine(stdout, failure);
    WriteLine(stdout, m_Progress.Summary());
}

/// Each file has its own, since all their pictures have the script's name.
QString BatchRun::PictureFolder(int index) const
{
    const QString base = m_Line.pictureFolder.isEmpty()
                             ? QDir::temp().filePath(QStringLiteral("zenkari-failures"))
                             : m_Line.pictureFolder;
    return QDir(base).filePath(QFileInfo(m_Line.files[index]).fileName());
}
