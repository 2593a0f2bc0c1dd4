#pragma once

#include <QString>
#include <QtGlobal>

#include <functional>

/// One job done by ours and by another library's code, side by side in the same run.
struct Contest
{
    QString name;
    double goal = 1;               ///< ours over the other's throughput that we want
    qint64 pixels = 0;             ///< what the job is given
    qint64 bytes = 0;              ///< what it must read and write at least
    std::function<void()> prepare; ///< before each of our runs, untimed; may be empty
    std::function<void()> ours;
    std::function<void()> prepareOther;
    std::function<void(int threads)> other;
};

namespace Contests {
/// Prints the heads of the columns.
void PrintHeader(int threads);

/// Runs ours, the other and a copy of memory in turn, several times, and prints the medians: megapixels a
/// second, their ratio beside the goal, and ours as a share of what `memcpy` moves. On one thread the
/// processor's time counts, on several the clock's.
void Run(const Contest& contest, int threads);

/// Only contests whose name contains this are run.
void SetFilter(const QString& part);

/// Whether it will be run; asked before its pictures are made.
bool IsWanted(const QString& name);

/// Cuts `height` rows into as many bands as there are threads and works on them at once.
void InBands(int threads, int height, const std::function<void(int top, int bottom)>& work);
} // namespace Contests
