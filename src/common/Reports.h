#pragma once

#include <QString>

#include <exception>

/// Failure reports for the debug log, in the one set of formats that all tools use. The user doesn't see
/// them. Any thread.
namespace Reports {
/// The place in the sources that a report names.
struct Place
{
    int line = 0;
    QString file; ///< from the project's root, without its ending: "src/LXViewToolBase"
};

/// A file name as the compiler gives it, from the project's root on and without its ending.
QString SourceName(const char* path);

QString ConditionText(const Place& place, const QString& message);

/// @param what  may be null, which counts as an empty text.
QString ExceptionText(const Place& place, const char* what);

QString UnknownExceptionText(const Place& place);

/// A recoverable condition: the caller goes on.
void Condition(const Place& place, const QString& message);

/// A caught `std::exception`.
void Exception(const Place& place, const std::exception& exception);

/// Anything else that was caught.
void UnknownException(const Place& place);
} // namespace Reports

/// The place where it stands.
#define ZK_HERE (Reports::Place{__LINE__, Reports::SourceName(__FILE__)})

/// A place with a fixed line and file, for code that reports under another file's name.
#define ZK_PLACE(line, file) (Reports::Place{line, QStringLiteral(file)})
