#pragma once

#include "EditorExport.h"

#include <QPointer>

#include <memory>

class LexoCommand;
class LexoUndoStack;
class LXDocumentInterface;
class ZKDocumentView;

/// The picture that an entry of a menu was chosen for, with its history. While the entry asks something or
/// works, that picture may be closed, and another one may become the active one. Main thread only.
class ZK_EDITOR_EXPORT TargetDocument
{
public:
    /// @param view  null for none
    explicit TargetDocument(const ZKDocumentView* view);

    /// Null once it has been closed.
    LXDocumentInterface* Get() const;

    /// Whether it is still there and no tool works on it.
    bool IsFree() const;

    /// Puts down what floats above the pixels, so that what is read is all of the picture.
    void LandPieces() const;

    /// A step of its history, or without a history the change alone; nothing for null and for a picture that
    /// was closed. Throws what the command throws.
    void Push(std::unique_ptr<LexoCommand> command) const;

private:
    QPointer<LXDocumentInterface> m_pDocument;
    QPointer<LexoUndoStack> m_pHistory;
};
