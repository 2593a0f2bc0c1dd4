#include "app/CommandLine.h"

#include "app/TimeLimit.h"
#include "document/LXDocumentInterface.h"

#include <QCommandLineParser>
#include <QDir>
#include <QRegularExpression>

namespace {
/// "640x480"; empty when the text is no size that a picture can have.
QSize SizeOfText(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]{1,6})[xX]([0-9]{1,6})$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) return QSize();

    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const int limit = LXDocumentInterface::MAX_DOC_DIMENSION;
    return size.boundedTo({limit, limit}) == size ? size : QSize();
}
} // namespace

/// The parser with the options that the program has.
struct CommandLineReader::Options
{
    Options();

    QCommandLineParser parser;
    QCommandLineOption help;
    QCommandLineOption version;
    QCommandLineOption create;
    QCommandLineOption exportTo;
    QCommandLineOption tour;
    QCommandLineOption screenshots;
    QCommandLineOption script;
    QCommandLineOption headless;
    QCommandLineOption timeLimit;
    QCommandLineOption failurePictures;
    QCommandLineOption testFaults;
    QCommandLineOption userFolder;
};

CommandLineReader::Options::Options()
    : help(parser.addHelpOption()),
      version(parser.addVersionOption()),
      create(QStringLiteral("new"),
             tr("Start with an empty picture of this size in pixels, such as 640x480."), tr("WxH")),
      exportTo(QStringLiteral("export"),
               tr("Write the picture to this file, in the format that the ending names, and end. Needs no "
                  "display."),
               tr("file")),
      tour(QStringLiteral("tour"),
           tr("Show what the editor does with the file, or with a sample, and leave a picture of each step "
              "in the folder."),
           tr("folder")),
      screenshots(
          QStringLiteral("screenshots"),
          tr("Leave pictures of all windows, menus, panels and dialogs in the folder, in both looks, for "
             "common and dense screens. Needs no display."),
          tr("folder")),
      script(QStringLiteral("script"),
             tr("Run this JavaScript file, and end. The files are its arguments; those that look like "
                "options stand behind \"--\"."),
             tr("file")),
      headless(QStringLiteral("headless"), tr("Run the script without a display.")),
      timeLimit(QStringLiteral("timeout"), tr("End the script after so many seconds."), tr("seconds")),
      failurePictures(QStringLiteral("failure-pictures"),
                      tr("Leave a picture of the window in this folder when the script fails."), tr("folder"),
                      QDir::temp().filePath(QStringLiteral("zenkari-failures"))),
      testFaults(QStringLiteral("test-faults"), tr("Let the script make the editor fail, for tests.")),
      userFolder(QStringLiteral("user-data"),
                 tr("Keep settings and data in this folder instead of the user's own."), tr("folder"))
{
    parser.setApplicationDescription(tr("A photo editor with layers."));
    parser.addOptions({create, exportTo, tour, screenshots, script, headless, timeLimit, failurePictures,
                       testFaults, userFolder});
    parser.addPositionalArgument(QStringLiteral("files"), tr("Pictures to open."),
                                 QStringLiteral("[files...]"));
}

CommandLine CommandLineReader::Read(const QStringList& arguments)
{
    Options options;
    if (!options.parser.parse(arguments)) return Wrong(options.parser.errorText());
    return Interpret(options);
}

CommandLine CommandLineReader::Interpret(const Options& options)
{
    const QCommandLineParser& parser = options.parser;
    CommandLine line;
    if (parser.isSet(options.help)) {
        line.task = CommandLine::Task::Help;
        line.text = parser.helpText();
        return line;
    }
    if (parser.isSet(options.version)) {
        line.task = CommandLine::Task::Version;
        line.text = QCoreApplication::applicationName() + ' ' + QCoreApplication::applicationVersion();
        return line;
    }

    line.files = parser.positionalArguments();
    if (parser.isSet(options.create)) {
        line.newSize = SizeOfText(parser.value(options.create));
        if (line.newSize.isEmpty()) {
            return Wrong(
                tr("\"%1\" is no size of a picture; write width and height in pixels, such as 640x480.")
                    .arg(parser.value(options.create)));
        }
    }
    line.userFolder = parser.value(options.userFolder);
    if (parser.isSet(options.tour) + parser.isSet(options.screenshots) + parser.isSet(options.exportTo) +
            parser.isSet(options.script) >
        1) {
        return Wrong(tr("Choose one of --tour, --screenshots, --export and --script."));
    }
    if (parser.isSet(options.script)) return ReadScript(line, options);
    for (const QCommandLineOption& option :
         {options.headless, options.timeLimit, options.failurePictures, options.testFaults}) {
        if (parser.isSet(option)) return Wrong(tr("--%1 needs --script.").arg(option.names().first()));
    }
    if (parser.isSet(options.screenshots)) return ReadScreenshots(line, parser.value(options.screenshots));
    if (parser.isSet(options.tour)) return ReadTour(line, parser.value(options.tour));
    if (parser.isSet(options.exportTo)) return ReadExport(line, parser.value(options.exportTo));
    return line;
}

CommandLine CommandLineReader::ReadTour(CommandLine line, const QString& folder)
{
    if (!line.newSize.isEmpty()) return Wrong(tr("A tour takes a file, not --new."));
    if (line.files.size() > 1) return Wrong(tr("A tour takes one file."));

    line.task = CommandLine::Task::Tour;
    line.tourFolder = folder;
    return line;
}

CommandLine CommandLineReader::ReadScreenshots(CommandLine line, const QString& folder)
{
    if (!line.newSize.isEmpty() || !line.files.isEmpty()) {
        return Wrong(tr("--screenshots shows the sample and takes no picture of yours."));
    }
    line.task = CommandLine::Task::Screenshots;
    line.screenshotFolder = folder;
    return line;
}

CommandLine CommandLineReader::ReadExport(CommandLine line, const QString& file)
{
    const int pictureCount = line.files.size() + (line.newSize.isEmpty() ? 0 : 1);
    if (pictureCount != 1) return Wrong(tr("--export takes exactly one picture: a file, or --new."));

    line.task = CommandLine::Task::Export;
    line.exportFile = file;
    return line;
}

CommandLine CommandLineReader::ReadScript(CommandLine line, const Options& options)
{
    if (!line.newSize.isEmpty()) return Wrong(tr("A script makes its documents itself, without --new."));

    const QCommandLineParser& parser = options.parser;
    if (parser.isSet(options.timeLimit)) {
        line.script.timeLimit = TimeLimit::FromSeconds(parser.value(options.timeLimit));
        if (line.script.timeLimit == 0) return Wrong(TimeLimit::Complaint(parser.value(options.timeLimit)));
    }
    line.task = CommandLine::Task::Script;
    line.script.file = parser.value(options.script);
    line.script.arguments = line.files;
    line.script.isHeadless = parser.isSet(options.headless);
    line.script.allowFaults = parser.isSet(options.testFaults);
    line.script.pictureFolder = parser.value(options.failurePictures);
    line.files.clear();
    return line;
}

CommandLine CommandLineReader::Wrong(const QString& text)
{
    CommandLine line;
    line.task = CommandLine::Task::Wrong;
    line.text = text;
    return line;
}
