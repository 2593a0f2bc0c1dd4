#pragma once

#include "EditorExport.h"

#include <QJSValue>
#include <QString>

class QJSEngine;

/// Running the text of script files. Main thread only.
namespace ScriptFile {
struct Result
{
    bool hasThrown = false;
    QJSValue thrown; ///< whatever was thrown, which need not be an error object
};

/// Runs a file (UTF-8) to its end, in the global scope. A file that can't be read counts as an error thrown.
ZK_EDITOR_EXPORT Result Run(QJSEngine& engine, const QString& file);
} // namespace ScriptFile
