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
    TourFailed = 1, ///< or the screenshots
    WrongUsage = 2,
    NotStarted = 3,
    Crashed = 4,    ///< an exception came out of an event handler
    FileFailed = 5, ///< a picture was not opened or not written

    ScriptFailed = 1, ///< an error that the script did not catch
    TimedOut = 6,     ///< the script did not end within its limit
};

/// What the program was told to do. Plain values; reading them starts nothing.
struct CommandLine
{
    enum class Task
    {
        Edit,        ///< show the window with the files
        Help,        ///< print `text`
        Version,     ///< print `text`
        Export,      ///< write the one picture to `exportFile` and end
        Tour,        ///< walk through the editor and leave pictures in `tourFolder`
        Screenshots, ///< leave pictures of all that can be shown in `screenshotFolder`
        Script,      ///< run `script`, in the visible window or headless, and end
        Wrong,       ///< nothing can be done; `text` tells why
    };

    /// A script to run, and how.
    struct Script
    {
        QString file;
        QStringList arguments;    ///< what the script gets
        bool isHeadless = false;  ///< without a display
        int timeLimit = 0;        ///< ms; 0 for none
        bool allowFaults = false; ///< whether it may make the editor fail
        QString pictureFolder;    ///< where the picture of a failure goes
    };

    Task task = Task::Edit;
    QString text;
    QStringList files; ///< to open, as they were written
    QSize newSize;     ///< of a picture to start with, in pixels; empty without one
    QString exportFile;
    QString tourFolder;
    QString screenshotFolder;
    QString userFolder; ///< settings and data of the person lie here; empty for the usual places
    Script script;
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
    static CommandLine ReadScreenshots(CommandLine line, const QString& folder);
    static CommandLine ReadExport(CommandLine line, const QString& file);
    static CommandLine ReadScript(CommandLine line, const Options& options);
    static CommandLine Wrong(const QString& text);
};
