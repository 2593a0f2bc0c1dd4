#include "app/ScriptRun.h"

#include "app/CommandLine.h"
#include "app/Editor.h"
#include "app/EditorScriptHost.h"
#include "app/HeadlessPlatform.h"
#include "app/MainWindow.h"
#include "scripting/ScriptEngine.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace {
constexpr QSize HeadlessWindow(1280, 800);

void PrintError(const QString& text)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

ScriptOptions OptionsOf(const CommandLine::Script& script)
{
    ScriptOptions options;
    options.file = script.file;
    options.arguments = script.arguments;
    options.pictureFolder = script.pictureFolder;
    options.allowFaults = script.allowFaults;
    options.timeLimit = script.timeLimit;
    options.onStuck = [] {
        PrintError(CommandLineReader::tr("The script is stuck in the program, which ends now."));
        // The main thread will not come back, so nothing can be cleaned up.
        std::_Exit(TimedOut);
    };
    return options;
}

int ExitCodeOf(const ScriptOutcome& outcome)
{
    switch (outcome.kind) {
    case ScriptOutcome::Kind::Finished: return outcome.exitCode;
    case ScriptOutcome::Kind::Failed: return ScriptFailed;
    case ScriptOutcome::Kind::TimedOut: return TimedOut;
    }
    return ScriptFailed;
}

int RunIn(Editor& editor, const ScriptOptions& options)
{
    EditorScriptHost host(editor);
    ScriptEngine engine(host, options);
    const ScriptOutcome outcome = engine.Run();
    if (outcome.kind != ScriptOutcome::Kind::Finished) PrintError(outcome.ToText());
    return ExitCodeOf(outcome);
}

ApplicationFolders FoldersFor(const CommandLine& line, const QTemporaryDir& privateFolder)
{
    if (!line.userFolder.isEmpty()) return ApplicationFolders::Below(line.userFolder);
    if (line.script.isHeadless) return ApplicationFolders::Below(privateFolder.path());
    return ApplicationFolders::Default();
}
} // namespace

int ScriptRun::Run(const CommandLine& line)
{
    HeadlessPlatform::UseReadableFont();
    const QTemporaryDir privateFolder;
    Editor editor(FoldersFor(line, privateFolder));
    if (!editor.Start()) {
        PrintError(editor.GetErrorText());
        return NotStarted;
    }
    if (line.script.isHeadless) editor.GetWindow()->resize(HeadlessWindow);
    editor.GetWindow()->activateWindow();

    // From the event loop, as everything that a person does: what is deleted later is deleted as it is then.
    QTimer::singleShot(0, &editor, [&] { QCoreApplication::exit(RunIn(editor, OptionsOf(line.script))); });
    return QApplication::exec();
}
