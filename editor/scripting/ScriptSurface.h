#pragma once

#include "EditorExport.h"

#include <QVector>

class QObject;
class ScriptContext;

/// The objects that every script finds as global variables.
namespace ScriptSurface {
struct Entry
{
    /// The variable.
    const char* name;
    QObject* (*make)(ScriptContext& context, QObject* parent);
    /// Only there when the run allows faults.
    bool isForFaults = false;
};

/// In the order in which they are made; deleted the other way round.
ZK_EDITOR_EXPORT const QVector<Entry>& Entries();

/// Invokables of the object `script` that are global functions as well.
ZK_EDITOR_EXPORT const QVector<const char*>& GlobalFunctions();
} // namespace ScriptSurface
