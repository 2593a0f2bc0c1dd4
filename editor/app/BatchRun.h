#pragma once

#include "EditorExport.h"

#include "app/BatchLine.h"
#include "app/BatchProgress.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>

class QProcess;

/// Runs a script once for each file, each in a process of its own, so that neither a failure nor a crash
/// stops the others. What a script prints comes out as one piece when it has ended; the bar goes to the
/// error output. Main thread only; needs no window.
class ZK_EDITOR_EXPORT BatchRun : public QObject
{
    Q_OBJECT

public:
    /// Exit codes of a batch: up to here the number of failed files.
    static constexpr int MostCounted = 100;
    static constexpr int MoreFailed = 101;
    /// Nothing was run.
    static constexpr int NotBegun = 125;

    /// @param program  what runs one script: the program itself
    BatchRun(BatchLine line, QString program);

    /// Runs an event loop until all are done; answers the exit code.
    int Run();

    static int ExitCodeFor(int failedCount);

private:
    void StartMore();
    void Start(int index);
    void OnEnded(QProcess* process, int index, const QString& failure);
    void Show();
    void PrintSummary() const;
    QString PictureFolder(int index) const;

    BatchLine m_Line;
    QString m_Program;
    QElapsedTimer m_Clock;
    BatchProgress m_Progress;
    QStringList m_Failures; ///< a line for each failed file
    int m_Next = 0;         ///< the file that starts next
    int m_ShownTenth = 0;
    bool m_bTerminal = false;
};
