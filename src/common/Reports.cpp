#include "common/Reports.h"

#include "common/BuildTime.h"

#include <QDebug>

namespace {
const QLatin1String ConditionFormat("Build date=%1, time=%2. Line=%3, file=\"%4\". %5");
const QLatin1String ExceptionFormat(
    "Build date=%1, time=%2. Unexpected exception: line=%3, file=\"%4\". Exception content:\"%5\"");
const QLatin1String
    UnknownExceptionFormat("Build date=%1, time=%2. Unexpected unknown exception: line=%3, file=\"%4\"");

const QLatin1String SourceRoot("src/");

// All places are filled in one call, so that a "%1" inside a message stays as it is.
QString Fill(QLatin1String format, const Reports::Place& place, const QString& content)
{
    return QString(format).arg(QLatin1String(BuildTime::Date()), QLatin1String(BuildTime::Time()),
                               QString::number(place.line), place.file, content);
}

void Log(const QString& text)
{
    qDebug().noquote() << text;
}
} // namespace

QString Reports::SourceName(const char* path)
{
    const QString full = QString::fromUtf8(path);
    const int root = full.lastIndexOf(QLatin1Char('/') + SourceRoot);
    const QString fromRoot = root < 0 ? full : full.mid(root + 1);
    return fromRoot.left(fromRoot.lastIndexOf(QLatin1Char('.')));
}

QString Reports::ConditionText(const Place& place, const QString& message)
{
    return Fill(ConditionFormat, place, message);
}

QString Reports::ExceptionText(const Place& place, const char* what)
{
    return Fill(ExceptionFormat, place, QString::fromUtf8(what));
}

QString Reports::UnknownExceptionText(const Place& place)
{
    const QString format = UnknownExceptionFormat;
    return format.arg(QLatin1String(BuildTime::Date()), QLatin1String(BuildTime::Time()),
                      QString::number(place.line), place.file);
}

void Reports::Condition(const Place& place, const QString& message)
{
    Log(ConditionText(place, message));
}

void Reports::Exception(const Place& place, const std::exception& exception)
{
    Log(ExceptionText(place, exception.what()));
}

void Reports::UnknownException(const Place& place)
{
    Log(UnknownExceptionText(place));
}
