#include "gui/TimeLeft.h"

#include <QCoreApplication>

namespace {
constexpr qint64 TellAfter = 5000;
constexpr int LeastSteps = 3;
constexpr double LeastShare = 0.01;
constexpr double ClearlyLonger = 1.25;

constexpr qint64 Second = 1000;
constexpr qint64 Minute = 60 * Second;
constexpr qint64 Hour = 60 * Minute;
constexpr qint64 SecondsTogether = 5;

qint64 Nearest(qint64 milliseconds, qint64 unit)
{
    return (milliseconds + unit / 2) / unit;
}

QString Translated(const char* text)
{
    return QCoreApplication::translate("TimeLeft", text);
}
} // namespace

void TimeLeft::Note(qint64 now, double share)
{
    if (share < m_Share) {
        *this = TimeLeft(now);
        m_First = share;
    } else if (share > m_Share) {
        ++m_Steps;
    } else {
        return;
    }
    m_Noted = now;
    m_Share = share;
}

std::optional<qint64> TimeLeft::Estimate(qint64 now) const
{
    const double done = m_Share - m_First;
    if (now - m_Begin < TellAfter || m_Steps < LeastSteps || done < LeastShare) return std::nullopt;
    const auto passed = double(m_Noted - m_Begin);
    const double atLastStep = passed * (1 - m_Share) / done;
    const double sinceThen = qMin(double(now - m_Noted), passed / m_Steps);
    return qMax<qint64>(0, qRound64(atLastStep - sinceThen));
}

QString TimeLeft::Words(qint64 milliseconds)
{
    if (milliseconds < SecondsTogether * Second) return Translated("A few seconds left");
    const qint64 seconds = SecondsTogether * Nearest(milliseconds, SecondsTogether * Second);
    if (seconds * Second < Minute) return Translated("About %1 seconds left").arg(seconds);
    const qint64 minutes = Nearest(milliseconds, Minute);
    if (minutes == 1) return Translated("About a minute left");
    if (minutes * Minute < Hour) return Translated("About %1 minutes left").arg(minutes);
    const qint64 hours = Nearest(milliseconds, Hour);
    return hours == 1 ? Translated("About an hour left") : Translated("About %1 hours left").arg(hours);
}

QString TimeLeft::Tell(qint64 now)
{
    const std::optional<qint64> estimate = Estimate(now);
    if (!estimate) return QString();
    // A number that goes up and down by a little tells less than one that stays.
    const bool isLonger = m_Told && *estimate > *m_Told;
    if (!isLonger || double(*estimate) > ClearlyLonger * double(*m_Told)) m_Told = estimate;
    return Words(*m_Told);
}
