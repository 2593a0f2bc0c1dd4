#pragma once

#include "EditorExport.h"

#include <QString>

/// The option `--timeout`, which several readers of arguments have.
namespace TimeLimit {
/// In milliseconds, at least 1; 0 when the text is no number of seconds above 0.
ZK_EDITOR_EXPORT int FromSeconds(const QString& text);

/// What to tell then.
ZK_EDITOR_EXPORT QString Complaint(const QString& text);
} // namespace TimeLimit
