#include "app/BatchProgress.h"

namespace {
constexpr int BarLength = 24;

/// "8 s", "2 min 05 s", "1 h 07 min".
QString TimeText(qint64 milliseconds)
{
    const qint64 seconds = (milliseconds + 999) / 1000;
    if (seconds < 60) return BatchProgress::tr("%1 s").arg(seconds);
    const QChar zero('0');
    if (seconds < 3600)
        return BatchProgress::tr("%1 min %2 s").arg(seconds / 60).arg(seconds % 60, 2, 10, zero);
    return BatchProgress::tr("%1 h %2 min").arg(seconds / 3600).arg(seconds / 60 % 60, 2, 10, zero);
}
} // namespace

QString BatchProgress::Line() const
{
    const int filled = total == 0 ? BarLength : BarLength * done / total;
    QString line = '[' + QString(filled, '#') + QString(BarLength - filled, '.') + ']';
    line += QStringLiteral(" %1/%2").arg(done).arg(total);
    if (failed > 0) line += tr(", %1 failed").arg(failed);
    if (done < total && MillisecondsLeft() >= 0)
        line += tr(", about %1 left").arg(TimeText(MillisecondsLeft()));
    return line;
}

QString BatchProgress::Summary() const
{
    const double seconds = static_cast<double>(elapsed) / 1000;
    const double rate = seconds > 0 ? done / seconds : 0;
    return tr("%1 files, %2 failed, %3 s, %4 files/s")
        .arg(done)
        .arg(failed)
        .arg(seconds, 0, 'f', 1)
        .arg(rate, 0, 'f', 1);
}

qint64 BatchProgress::MillisecondsLeft() const
{
    return done == 0 ? -1 : elapsed * (total - done) / done;
}
