#pragma once

#include "EditorExport.h"

#include <QString>
#include <QStringList>

class ScriptContext;

/// Whether the editor has come to rest. Main thread only.
namespace QuietEditor {
/// Handles events until nothing is under way any more: no job on the global pool, no locked document, no
/// single-shot timer that is about to fire (so pictures are drawn late), no event in the queue. Timers that
/// fire for ever, such as the selection's ants, don't count, nor do the locks of a gesture whose button is
/// still down.
/// @param limit  ms
/// Answers what is still busy at the limit, in words; empty when all is quiet or the script is ending.
ZK_EDITOR_EXPORT QString WaitUntilQuiet(const ScriptContext& context, int limit);

/// What is under way now, in words; events that wait are not looked at.
ZK_EDITOR_EXPORT QStringList Busy();
} // namespace QuietEditor
