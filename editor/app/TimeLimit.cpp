#include "app/TimeLimit.h"

#include <QCoreApplication>

namespace {
constexpr double Longest = 1e6; // seconds; more than a week
} // namespace

int TimeLimit::FromSeconds(const QString& text)
{
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    // "nan" is a number to the parser, and compares false.
    if (!isNumber || !(seconds > 0 && seconds <= Longest)) return 0;
    return qMax(1, qRound(seconds * 1000));
}

QString TimeLimit::Complaint(const QString& text)
{
    return QCoreApplication::translate("TimeLimit", "\"%1\" is no number of seconds.").arg(text);
}
