#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

/// Estimates how long work will still take, from how far it has come in the time so far. A value; the caller
/// gives the time, in milliseconds of any clock that never goes back.
///
/// An estimate comes after five seconds and a few steps. Between two steps it counts down, but no further
/// than one step takes, so that work that stands still isn't told to be nearly done.
class TimeLeft
{
public:
    /// Work begins at this moment.
    explicit TimeLeft(qint64 now) : m_Begin(now) {}

    /// The work has come so far.
    /// @param share  0 to 1; one that is lower than before begins anew
    void Note(qint64 now, double share);

    /// Milliseconds; none as long as nothing sensible can be told.
    std::optional<qint64> Estimate(qint64 now) const;

    /// In words that are no more exact than an estimate is: "About 20 seconds left".
    static QString Words(qint64 milliseconds);

    /// The words of the estimate, or none. Once told, they are replaced by longer times only when the
    /// estimate was clearly wrong.
    QString Tell(qint64 now);

private:
    qint64 m_Begin;
    double m_First = 0; ///< share at the begin
    qint64 m_Noted = 0;
    double m_Share = 0;
    int m_Steps = 0;
    std::optional<qint64> m_Told;
};
