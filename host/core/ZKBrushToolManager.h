#pragma once

#include "ZKHostExport.h"

#include <QList>

class ZKIBrushTool;

/// The tools that can stroke a path, by number. Main thread only.
class ZK_HOST_EXPORT ZKBrushToolManager
{
public:
    ZKBrushToolManager() = delete;

    /// Null for a number under which nothing is registered.
    static ZKIBrushTool* GetPlugin(int toolId);

    /// The numbers under which tools are registered, ascending.
    static QList<int> GetToolIds();

    /// Puts the tool under the number, in place of an older one; the tool keeps its owner.
    static void Register(int toolId, ZKIBrushTool* tool);
    /// Takes the tool away from every number; called before it is deleted.
    static void Unregister(ZKIBrushTool* tool);
};
