#pragma once

#include "ZKHostExport.h"

class ZKActivateAction;

/// The group of all tools, of which one is chosen and one runs. Main thread only.
///
/// A change is told to the outgoing tool first: its states, Toggled(false), ImplicitToggled(false), then
/// the same with true for the incoming one. A handler may change the tool again; the newest wish wins.
class ZK_HOST_EXPORT ZKToolGroupManager
{
public:
    ZKToolGroupManager() = delete;

    /// Takes the action into the group; repeating it is harmless. A destroyed action leaves by itself.
    /// An action that is checked already becomes the chosen one.
    static void Add(ZKActivateAction* action);

    /// Chooses this tool; null means no tool. Asks IsAllowChange() of the present one, if that is another.
    /// Returns false when it refuses, and nothing has changed then; else whether the tool is the chosen one
    /// now. An action that was never added is taken in.
    static bool Activate(ZKActivateAction* action);

    /// The chosen tool; null for none.
    static ZKActivateAction* GetExplicitAction();

    /// The tool that runs: the chosen one, or another for a moment; null for none.
    static ZKActivateAction* GetImplicitAction();
};
