#pragma once

#include "EditorExport.h"

#include <QStringList>

/// The libraries that read and write files, each with the version that runs: "libpng 1.6.39". Any thread.
ZK_EDITOR_EXPORT QStringList FormatLibraryVersions();
