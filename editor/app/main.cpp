#include "app/BatchLine.h"
#include "app/BatchRun.h"
#include "app/CommandLine.h"
#include "app/DocumentFiles.h"
#include "app/Editor.h"
#include "app/GuardedApplication.h"
#include "app/HeadlessPlatform.h"
#include "app/PictureExport.h"
#include "app/ScreenScale.h"
#include "app/Screenshots.h"
#include "app/ScriptRun.h"
#include "app/Tour.h"
#include "resource/LXResource.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace {
static_assert(GuardedApplication::FailureExitCode == Crashed);

void Print(std::FILE* stream, const QString& text)
{
    std::fprintf(stream, "%s\n", qPrintable(text));
}

/// Before the application object is there, which takes its own options out of the arguments.
bool HasOption(int argc, char** argv, std::initializer_list<QByteArray> names)
{
    return std::any_of(argv + 1, argv + argc, [&](const char* argument) {
        const QByteArray option = QByteArray(argument).split('=').first();
        return std::find(names.begin(), names.end(), option) != names.end();
    });
}

/// The scale of the screen counts when the application object is made, so it is looked up before.
void UseScale(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const CommandLine line = CommandLineReader::Read(QCoreApplication::arguments());
    // What looks wrong here may be an option of the application object to come.
    const bool showsWindow = line.task == CommandLine::Task::Edit || line.task == CommandLine::Task::Wrong;
    if (showsWindow) ScreenScale::UseForStart(line.userFolder);
}

bool Start(Editor& editor)
{
    if (editor.Start()) return true;
    Print(stderr, editor.GetErrorText());
    return false;
}

int RunTour(const CommandLine& line)
{
    HeadlessPlatform::UseReadableFont();
    // The tour neither follows nor changes what the user has set.
    const QTemporaryDir userFolder;
    Editor editor(ApplicationFolders::Below(line.userFolder.isEmpty() ? userFolder.path() : line.userFolder));
    if (!Start(editor)) return NotStarted;

    Tour tour(editor, line.tourFolder);
    const bool isDone = tour.Run(line.files.value(0, Tour::DefaultFile()));
    Print(isDone ? stdout : stderr, tour.GetReport());
    return isDone ? Success : TourFailed;
}

int RunScreenshots(const CommandLine& line)
{
    if (!Screenshots::HasOwnScale()) {
        return Screenshots::RunAtAllScales(line.screenshotFolder) ? Success : TourFailed;
    }
    HeadlessPlatform::UseReadableFont();
    const QTemporaryDir userFolder;
    Editor editor(ApplicationFolders::Below(userFolder.path()));
    if (!Start(editor)) return NotStarted;

    Screenshots screenshots(editor, line.screenshotFolder);
    if (screenshots.Run()) return Success;
    Print(stderr, screenshots.GetErrorText());
    return TourFailed;
}

void OpenPictures(const Editor& editor, const CommandLine& line)
{
    if (!line.newSize.isEmpty()) editor.GetFiles()->New(line.newSize, Qt::white);
    for (const QString& file : line.files)
        editor.GetFiles()->Open(file);
}

int RunEditor(const CommandLine& line)
{
    Editor editor(line.userFolder.isEmpty() ? ApplicationFolders::Default()
                                            : ApplicationFolders::Below(line.userFolder));
    if (!Start(editor)) return NotStarted;

    QObject::connect(&editor, &Editor::Closed, qApp, &QApplication::quit);
    QTimer::singleShot(0, &editor, [&] { OpenPictures(editor, line); });
    return QApplication::exec();
}

int RunExport(const CommandLine& line)
{
    QString losses;
    const PictureFile::Outcome outcome = PictureExport::Run(line, &losses);
    if (!outcome.IsOk()) {
        Print(stderr, outcome.message);
        return FileFailed;
    }
    if (!losses.isEmpty()) Print(stderr, losses);
    return Success;
}

int Run(const CommandLine& line)
{
    switch (line.task) {
    case CommandLine::Task::Help:
    case CommandLine::Task::Version: Print(stdout, line.text); return Success;
    case CommandLine::Task::Wrong: Print(stderr, line.text); return WrongUsage;
    case CommandLine::Task::Export: return RunExport(line);
    case CommandLine::Task::Tour: return RunTour(line);
    case CommandLine::Task::Screenshots: return RunScreenshots(line);
    case CommandLine::Task::Script: return ScriptRun::Run(line);
    case CommandLine::Task::Edit: break;
    }
    return RunEditor(line);
}

int RunBatch()
{
    const BatchLine line = BatchLineReader::Read(QCoreApplication::arguments());
    switch (line.task) {
    case BatchLine::Task::Help: Print(stdout, line.text); return Success;
    case BatchLine::Task::Wrong: Print(stderr, line.text); return BatchRun::NotBegun;
    case BatchLine::Task::Run: break;
    }
    return BatchRun(line, QCoreApplication::applicationFilePath()).Run();
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setApplicationName(LXResource::GetData(LXResource::ApplicationName).toString());
    QCoreApplication::setApplicationVersion(LXResource::GetData(LXResource::ProductVersion).toString());
    if (argc > 1 && QByteArray(argv[1]) == BatchLineReader::Word) {
        const QCoreApplication application(argc, argv);
        return RunBatch();
    }
    if (HasOption(argc, argv, {"-h", "--help", "-v", "--version"})) {
        // What only prints works without any platform.
        const QCoreApplication application(argc, argv);
        return Run(CommandLineReader::Read(QCoreApplication::arguments()));
    }
    if (HasOption(argc, argv, {"--headless"})) HeadlessPlatform::Choose();
    if (HasOption(argc, argv, {"--export", "--screenshots"}) &&
        !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }

    UseScale(argc, argv);

    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const GuardedApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("org.zenkari.Zenkari"));
    QApplication::setApplicationDisplayName(LXResource::GetData(LXResource::ProductName).toString());
    // The editor itself says when it ends; a closed message box must not.
    QApplication::setQuitOnLastWindowClosed(false);
    return Run(CommandLineReader::Read(QCoreApplication::arguments()));
}
