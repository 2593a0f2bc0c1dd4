#pragma once

#include "movetoolprivate/CopyPasteBase.h"

#include "document/LXPathElement.h"

class LXDocumentInterface;
class LXPathsListModel;

/// A path that follows the pointer: the one that is selected alone in the view, or its current sub path.
/// `Move` takes the way from the start, in document pixels. It carries no pixels and catches nothing.
class PathMoveObject : public CopyPasteBase
{
    Q_OBJECT

public:
    PathMoveObject() = default;

    /// False if it has begun already. Without a view, or with no path or several selected, nothing moves.
    bool Begin(ZKDocumentView* view, unsigned int layerID) override;
    /// A sub path's move becomes a command; that of a whole path leaves no step.
    bool Commit(LexoUndoStack* stack) override;
    bool Cancel() override;
    bool Move(const QPoint& delta) override;
    void Refresh() override;

private:
    bool HasPath() const { return m_pDocumentView && m_PathIndex >= 0; }

    LXPath OriginalSubPath() const;
    void SetSubPath(const LXPath& elements) const;

    ZKDocumentView* m_pDocumentView = nullptr;
    int m_PathIndex = -1;
    int m_SubpathIndex = -1; ///< -1 if the whole path moves
    LXSubPaths m_OriginalPath;
    LXDocumentInterface* m_pDocument = nullptr;
    LXPathsListModel* m_pPaths = nullptr; ///< the worker reads it; the view belongs to the main thread
};
