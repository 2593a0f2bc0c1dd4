#pragma once

#include "EditorExport.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QtGlobal>

/// How far a batch has come, in words. Plain values.
struct ZK_EDITOR_EXPORT BatchProgress
{
    Q_DECLARE_TR_FUNCTIONS(BatchProgress)

public:
    int total = 0;
    int done = 0; ///< failed ones included
    int failed = 0;
    qint64 elapsed = 0; ///< ms since the start

    /// One line: bar, count, failures, time left.
    QString Line() const;

    /// One line for the end.
    QString Summary() const;

    /// From the time that the files so far have taken; -1 while nothing is known.
    qint64 MillisecondsLeft() const;
};
