#pragma once

#include "image/LXAdjustment.h"
#include "image/LXImageFwd.h"

#include <QString>

class LexoCommand;
class LXDocumentInterface;
class QPoint;
class QItemSelectionModel;

/// The undoable changes of a layers panel, with their texts, ready to push. All take ids; with a bad one redo
/// and undo do nothing. Values before are read here, so whoever previewed a change restores it first, and
/// calls LexoUndoStack::commit() before Duplicate, which reads pixels here. Main thread.
namespace LayerCommands {
/// @param selection  the rows that a view has selected, to go to a neighbour; null for none
LexoCommand* Remove(LXDocumentInterface* document, QItemSelectionModel* selection, unsigned int id);
/// The copy goes above the layer and is selected.
LexoCommand* Duplicate(LXDocumentInterface* document, QItemSelectionModel* selection, unsigned int id,
                       const QString& name);
/// A picture as a layer of its own size, which gets the id and is selected. The text is the caller's.
LexoCommand* AddPicture(LXDocumentInterface* document, QItemSelectionModel* selection, unsigned int id,
                        const LXImage32& image, const QPoint& topLeft);
/// The layer stands at the id `to` afterwards.
LexoCommand* Move(LXDocumentInterface* document, unsigned int from, unsigned int to);

/// A layer that changes the colors below it; it is selected.
/// @param row  where it goes in
LexoCommand* AddAdjustment(LXDocumentInterface* document, QItemSelectionModel* selection, int row,
                           const QString& name, const LXAdjustment& adjustment);
LexoCommand* ChangeAdjustment(LXDocumentInterface* document, unsigned int id, const LXAdjustment& adjustment);

LexoCommand* Rename(LXDocumentInterface* document, unsigned int id, const QString& name);
LexoCommand* SetVisible(LXDocumentInterface* document, unsigned int id, bool visible);
LexoCommand* SetOpacity(LXDocumentInterface* document, unsigned int id, double opacity);
LexoCommand* SetBlendMode(LXDocumentInterface* document, unsigned int id, unsigned int mode);
LexoCommand* SetLocks(LXDocumentInterface* document, unsigned int id, unsigned int flags);
LexoCommand* SetMaskLinked(LXDocumentInterface* document, unsigned int id, bool linked);

/// A mask of the canvas' size, filled with its default; replaces one that is there.
LexoCommand* AddMask(LXDocumentInterface* document, unsigned int id, bool reveals);
LexoCommand* RemoveMask(LXDocumentInterface* document, unsigned int id);
} // namespace LayerCommands
