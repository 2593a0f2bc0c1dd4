#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <memory>

/// A program that runs as a process, offscreen, in a process group of its own; what it leaves behind is found
/// by the group. Whatever still runs at the end is ended. ZK_PROGRAM names the editor.
class ProgramRun
{
public:
    enum BegunOnly
    {
        Begun
    };

    static constexpr int Limit = 120000; // ms

    /// Runs the editor to its end.
    explicit ProgramRun(const QStringList& arguments) : ProgramRun(QStringLiteral(ZK_PROGRAM), arguments) {}

    /// Runs any program to its end.
    ProgramRun(const QString& program, const QStringList& arguments);

    /// Only starts it.
    ProgramRun(BegunOnly, const QString& program, const QStringList& arguments);

    ~ProgramRun();
    Q_DISABLE_COPY(ProgramRun)

    /// Whether the group comes to have so many processes before long.
    bool WaitForProcesses(int count);

    /// Ends the first process at once, as a person with a process list does; its children are asked nothing.
    void EndFirstProcess();

    int exitCode = -1; ///< -1 also for a crash
    QString output;
    QString errors;

private:
    void Start(const QString& program, const QStringList& arguments);
    int CountProcesses() const;

    std::unique_ptr<QProcess> m_pProcess;
    qint64 m_Group = 0;
};
