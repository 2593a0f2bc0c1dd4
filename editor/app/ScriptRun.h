#pragma once

#include "EditorExport.h"

struct CommandLine;

/// The program as the runner of one script: what `--script` asks for. Main thread only.
namespace ScriptRun {
/// Starts an editor, runs the script in it, tells a failure on the error output, and ends the editor.
/// Runs the application's event loop; answers the program's exit code.
///
/// Without a folder for settings a headless script gets a private one that goes with it, so that its result
/// depends on nobody's habits and many may run side by side.
ZK_EDITOR_EXPORT int Run(const CommandLine& line);
} // namespace ScriptRun
