#pragma once

#include "history/SelectionCommandData.h"

#include <QString>

class LexoCommand;
class LXDocumentInterface;

/// The undoable uses of the selections that a document keeps under names, with their texts, ready to push.
/// What images throw comes through. Main thread.
namespace ChannelCommands {
/// Keeps the selection under a name, in place of an older one of that name. Null without a selection or a
/// name.
LexoCommand* Save(LXDocumentInterface* document, const QString& name);

/// Combines the selection of a row with the present one; without a present one it becomes the selection. Null
/// for a row that isn't there.
LexoCommand* Load(LXDocumentInterface* document, int row, SelectionCommandData::LogicalOp op);

/// Null for a row that isn't there.
LexoCommand* Delete(LXDocumentInterface* document, int row);
} // namespace ChannelCommands
