#pragma once

#include "EditorExport.h"

#include <QCoreApplication>
#include <QSize>
#include <QString>
#include <QStringList>

/// What the shell sees.
enum ExitCode
{
    Success = 0,
    TourFailed = 1,
    WrongUsage = 2,
    NotStarted = 3,
    Crashed = 4,    ///< an exception came out of an event handler
    FileFailed = 5, ///< a picture was not opened or not written
};

/// What the program was told to do. Plain values; reading them starts nothing.
struct CommandLine
{
    enum class Task
    {
        Edit,    ///< show the window with the files
        Help,    ///< print `text`
        Version, ///< print `text`
        Export,  ///< write the one picture to `exportFile` and end
        Tour,    ///< walk through the editor and leave pictures in `tourFolder`
        Wrong,   ///< nothing can be done; `text` tells why
    };

    Task task = Task::Edit;
    QString text;
    QStringList files; ///< to open, as they were written
    QSize newSize;     ///< of a picture to start with, in pixels; empty without one
    QString exportFile;
    QString tourFolder;
};

/// Reads the arguments. Needs an application object, of any kind, with the application's name and version.
class ZK_EDITOR_EXPORT CommandLineReader
{
    Q_DECLARE_TR_FUNCTIONS(CommandLineReader)

public:
    /// @param arguments  the first one is the program's name, as in `QCoreApplication::arguments()`
    static CommandLine Read(const QStringList& arguments);

private:
    struct Options;

    static CommandLine Interpret(const Options& options);
    static CommandLine ReadTour(CommandLine line, const QString& folder);
    static CommandLine ReadExport(CommandLine line, const QString& file);
    static CommandLine Wrong(const QString& text);
};
