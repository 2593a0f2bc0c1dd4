#pragma once

#include "history/SelectionCommandData.h"
#include "image/LXImage.h"

#include <QPoint>

#include <memory>

class LXDocumentInterface;
class LexoCommand;

/// The command, without its text, that combines a mask with the selection as it is now; without a selection
/// the mask becomes it. A result without coverage is no selection. Takes the selection's locker for the
/// moment of reading; throws what images throw. Main thread only.
/// @param offset  where the mask's top left lies in the document
std::unique_ptr<LexoCommand> MakeMaskSelectionCommand(LXDocumentInterface* document, const LXImage32& mask,
                                                      const QPoint& offset,
                                                      SelectionCommandData::LogicalOp op);
