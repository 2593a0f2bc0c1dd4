#include "app/DocumentFiles.h"
#include "app/Editor.h"
#include "app/GuardedApplication.h"
#include "app/Tour.h"
#include "resource/LXResource.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFont>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {
/// What the shell sees.
enum ExitCode
{
    Success = 0,
    TourFailed = 1,
    WrongUsage = 2,
    NotStarted = 3,
    Failed = GuardedApplication::FailureExitCode,
};

constexpr int TourFontSize = 9; // points

struct Arguments
{
    QString tourFolder;
    QStringList files;
};

void Print(std::FILE* stream, const QString& text)
{
    std::fprintf(stream, "%s\n", qPrintable(text));
}

/// Ends the program for `--help`, `--version` and wrong usage, before anything is started.
Arguments ParseArguments()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QCoreApplication::translate("main", "A photo editor with layers."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption tour(
        QStringLiteral("tour"),
        QCoreApplication::translate(
            "main", "Show what the editor does with the file, or with a sample, and leave a picture of "
                    "each step in the folder."),
        QCoreApplication::translate("main", "folder"));
    parser.addOption(tour);
    parser.addPositionalArgument(QStringLiteral("files"),
                                 QCoreApplication::translate("main", "Pictures to open."),
                                 QStringLiteral("[files...]"));

    if (!parser.parse(QCoreApplication::arguments())) {
        Print(stderr, parser.errorText());
        std::exit(WrongUsage);
    }
    if (parser.isSet(help)) parser.showHelp(Success);
    if (parser.isSet(version)) parser.showVersion();
    if (parser.isSet(tour) && parser.positionalArguments().size() > 1) {
        Print(stderr, QCoreApplication::translate("main", "A tour takes one file."));
        std::exit(WrongUsage);
    }
    return {parser.value(tour), parser.positionalArguments()};
}

bool AsksForText(int argc, char** argv)
{
    return std::any_of(argv + 1, argv + argc, [](const char* argument) {
        const QByteArray text(argument);
        return text == "-h" || text == "--help" || text == "-v" || text == "--version";
    });
}

bool Start(Editor& editor)
{
    if (editor.Start()) return true;
    Print(stderr, editor.GetErrorText());
    return false;
}

/// The tour neither follows nor changes what the user has set.
int RunTour(const Arguments& arguments)
{
    // The offscreen platform has no system font, and its stand-in is larger than any desktop's.
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        QApplication::setFont(QFont(QStringLiteral("Sans Serif"), TourFontSize));
    }

    const QTemporaryDir userFolder;
    ApplicationFolders folders = ApplicationFolders::Default();
    folders.config = userFolder.filePath(QStringLiteral("config"));
    folders.data = userFolder.filePath(QStringLiteral("data"));
    Editor editor(folders);
    if (!Start(editor)) return NotStarted;

    Tour tour(editor, arguments.tourFolder);
    const bool isDone = tour.Run(arguments.files.value(0, Tour::DefaultFile()));
    Print(isDone ? stdout : stderr, tour.GetReport());
    return isDone ? Success : TourFailed;
}

int RunEditor(const QStringList& files)
{
    Editor editor;
    if (!Start(editor)) return NotStarted;

    QObject::connect(&editor, &Editor::Closed, qApp, &QApplication::quit);
    QTimer::singleShot(0, &editor, [&editor, files] {
        for (const QString& file : files)
            editor.GetFiles()->Open(file);
    });
    return QApplication::exec();
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setApplicationName(LXResource::GetData(LXResource::ApplicationName).toString());
    QCoreApplication::setApplicationVersion(LXResource::GetData(LXResource::ProductVersion).toString());
    if (AsksForText(argc, argv)) {
        // What only prints works without a screen too.
        const QCoreApplication application(argc, argv);
        ParseArguments();
    }

    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const GuardedApplication application(argc, argv);
    QApplication::setApplicationDisplayName(LXResource::GetData(LXResource::ProductName).toString());
    // The editor itself says when it ends; a closed message box must not.
    QApplication::setQuitOnLastWindowClosed(false);

    const Arguments arguments = ParseArguments();
    return arguments.tourFolder.isEmpty() ? RunEditor(arguments.files) : RunTour(arguments);
}
