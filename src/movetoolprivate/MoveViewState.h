#pragma once

#include "document/LXDocumentInterface.h"

#include <QPair>
#include <QPointer>

#include <memory>

class CopyPasteThread;
class LexoUndoStack;
class ZKDocumentView;

/// What floats in one view: pixels of a layer or a mask, or a path, on a worker of its own; or only the
/// selection, which keys are moving under a command that stands open. As long as it lives the document counts
/// one reason more to be kept. Main thread only.
class MoveViewState
{
public:
    static constexpr unsigned int NoLayer = static_cast<unsigned int>(-1);
    static constexpr int NoPath = -1;

    /// Row of a path and of one of its sub paths.
    using PathIDs = QPair<int, int>;

    static PathIDs NoPaths() { return {NoPath, NoPath}; }

    /// @param thread  null when only the selection moves
    MoveViewState(ZKDocumentView* view, std::unique_ptr<CopyPasteThread> thread);

    /// Waits for a move that runs, and ends the worker.
    ~MoveViewState();

    Q_DISABLE_COPY(MoveViewState)

    /// Whether there is something that a commit turns into commands.
    bool HasPiece() const { return m_pThread && (m_LayerID != NoLayer || m_bPath); }

    ZKDocumentView* const m_pView;
    std::unique_ptr<CopyPasteThread> m_pThread;
    LexoUndoStack* const m_pUndoStack; ///< may be null
    const QPointer<LXDocumentInterface> m_pDocument;
    unsigned int m_LayerID = NoLayer; ///< of the floating pixels
    PathIDs m_PathIDs = NoPaths();
    bool m_bMask = false;    ///< the pixels come from the layer's mask
    bool m_bCopy = false;    ///< the layer keeps its pixels
    bool m_bOwnMove = false; ///< the piece moves the selection now, so that its moves aren't listened to
    bool m_bPath = false;    ///< a path, not pixels
};
