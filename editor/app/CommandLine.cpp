#include "app/CommandLine.h"

#include "document/LXDocumentInterface.h"

#include <QCommandLineParser>
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
           tr("folder"))
{
    parser.setApplicationDescription(tr("A photo editor with layers."));
    parser.addOptions({create, exportTo, tour});
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
    if (parser.isSet(options.tour) && parser.isSet(options.exportTo)) {
        return Wrong(tr("Choose one of --tour and --export."));
    }
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

CommandLine CommandLineReader::ReadExport(CommandLine line, const QString& file)
{
    const int pictureCount = line.files.size() + (line.newSize.isEmpty() ? 0 : 1);
    if (pictureCount != 1) return Wrong(tr("--export takes exactly one picture: a file, or --new."));

    line.task = CommandLine::Task::Export;
    line.exportFile = file;
    return line;
}

CommandLine CommandLineReader::Wrong(const QString& text)
{
    CommandLine line;
    line.task = CommandLine::Task::Wrong;
    line.text = text;
    return line;
}
