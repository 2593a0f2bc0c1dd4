#pragma once

#include "ZKHostExport.h"

class LexoUndoStack;
class LXDocumentInterface;
class QItemSelectionModel;
class QString;

/// Builds whole commands and pushes them. Main thread.
class ZK_HOST_EXPORT ChangeCommandHelper
{
public:
    /// Removes a layer with the text in the history; without a stack, for good.
    /// @param selection  the rows that a view has selected, to go to a neighbour; null for none
    /// False, and nothing done, for a bad id.
    static bool RemoveLayer(LexoUndoStack* stack, LXDocumentInterface* document,
                            QItemSelectionModel* selection, uint id, const QString& text);
};
