#pragma once

#include "EditorExport.h"

#include <QString>

/// Where the files that came with the program lie.
namespace ResourceFolder {
/// The nearest `share/zenkari` beside or above the folder of the running program: that of the installation
/// prefix, or of the build tree for what runs from there. Without a trailing slash; when there is none, the
/// place where an installation would have it. Main thread, after the application object.
ZK_EDITOR_EXPORT QString Path();
} // namespace ResourceFolder
