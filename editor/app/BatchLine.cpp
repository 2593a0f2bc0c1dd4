#include "app/BatchLine.h"

#include "app/TimeLimit.h"

#include <QCommandLineParser>
#include <QRegularExpression>
#include <QThread>

namespace {
constexpr int MostJobs = 1024;

QString Description()
{
    return BatchLineReader::tr("Runs a script once for each file, each time in a fresh editor without a "
                               "display. The exit code is the number of files that failed, 101 for more than "
                               "100, and 125 when the batch could not begin.");
}
} // namespace

/// The parser with the options that a batch has.
struct BatchLineReader::Options
{
    Options();

    QCommandLineParser parser;
    QCommandLineOption help;
    QCommandLineOption jobs;
    QCommandLineOption shard;
    QCommandLineOption timeLimit;
    QCommandLineOption argument;
    QCommandLineOption pictures;
};

BatchLineReader::Options::Options()
    : help(parser.addHelpOption()),
      jobs(QStringLiteral("jobs"), tr("Run so many at the same time; 0 for one for each processor core."),
           tr("number"), QStringLiteral("1")),
      shard(QStringLiteral("shard"),
            tr("Take only the I-th of N parts of the files, for many machines with one list."), tr("I/N"),
            QStringLiteral("1/1")),
      timeLimit(QStringLiteral("timeout"), tr("End a script after so many seconds."), tr("seconds")),
      argument(QStringLiteral("arg"), tr("Give this to the script behind the file; may stand several times."),
               tr("text")),
      pictures(QStringLiteral("failure-pictures"),
               tr("Leave pictures of failures in this folder, each in a folder named after its file."),
               tr("folder"))
{
    parser.setApplicationDescription(Description());
    parser.addOptions({jobs, shard, timeLimit, argument, pictures});
    parser.addPositionalArgument(QString::fromLatin1(Word), tr("The word itself."));
    parser.addPositionalArgument(QStringLiteral("script"), tr("The JavaScript file to run."));
    parser.addPositionalArgument(QStringLiteral("files"),
                                 tr("The script's first argument, one after another."),
                                 QStringLiteral("[files...]"));
}

BatchLine BatchLineReader::Read(const QStringList& arguments)
{
    Options options;
    if (options.parser.parse(arguments)) return Interpret(options);

    BatchLine line;
    line.task = BatchLine::Task::Wrong;
    line.text = options.parser.errorText();
    return line;
}

BatchLine BatchLineReader::Interpret(const Options& options)
{
    const QCommandLineParser& parser = options.parser;
    BatchLine line;
    if (parser.isSet(options.help)) {
        line.task = BatchLine::Task::Help;
        line.text = parser.helpText();
        return line;
    }
    const QStringList positional = parser.positionalArguments(); // "batch", the script, the files
    line.script = positional.value(1);
    line.files = positional.mid(2);
    line.arguments = parser.values(options.argument);
    line.pictureFolder = parser.value(options.pictures);
    line.text = line.script.isEmpty() ? tr("A batch needs a script.") : ReadNumbers(options, line);
    if (!line.text.isEmpty()) line.task = BatchLine::Task::Wrong;
    return line;
}

/// Answers what is wrong with them.
QString BatchLineReader::ReadNumbers(const Options& options, BatchLine& line)
{
    const QCommandLineParser& parser = options.parser;
    bool isNumber = false;
    line.jobs = parser.value(options.jobs).toInt(&isNumber);
    if (!isNumber || line.jobs < 0 || line.jobs > MostJobs) {
        return tr("\"%1\" is no number of jobs; it goes from 0 to %2.")
            .arg(parser.value(options.jobs), QString::number(MostJobs));
    }
    if (line.jobs == 0) line.jobs = qMax(1, QThread::idealThreadCount());

    if (parser.isSet(options.timeLimit)) {
        line.timeLimit = TimeLimit::FromSeconds(parser.value(options.timeLimit));
        if (line.timeLimit == 0) return TimeLimit::Complaint(parser.value(options.timeLimit));
    }
    return ReadShard(parser.value(options.shard), line);
}

QString BatchLineReader::ReadShard(const QString& text, BatchLine& line)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]{1,6})/([0-9]{1,6})$"));
    const QRegularExpressionMatch match = form.match(text);
    const int index = match.captured(1).toInt();
    const int count = match.captured(2).toInt();
    if (!match.hasMatch() || index < 1 || index > count) {
        return tr("\"%1\" is no shard; write its number and how many there are, such as 2/5.").arg(text);
    }
    line.files = Shard(line.files, index, count);
    return QString();
}

QStringList BatchLineReader::Shard(const QStringList& files, int index, int count)
{
    QStringList mine;
    for (int i = index - 1; i < files.size(); i += count)
        mine << files[i];
    return mine;
}
