#pragma once

#include "ZKHostExport.h"

#include <QLineF>
#include <QPointF>
#include <QPolygonF>
#include <QTransform>

#include <memory>

class LXDocumentInterface;
class LXImageHelperPrivate;
class QRect;

/// Draws the text of a layer through a transform, and tells where its letters stand. It works on the text as
/// it was when InitHelper() was called. Points are document pixels. Any thread; one helper at a time on one.
class ZK_HOST_EXPORT LXImageHelper
{
public:
    LXImageHelper();
    ~LXImageHelper();
    LXImageHelper(const LXImageHelper&) = delete;
    LXImageHelper& operator=(const LXImageHelper&) = delete;

    /// False, and nothing to work on, for a layer of another kind and a bad id.
    bool InitHelper(const LXDocumentInterface* document, unsigned int id);
    /// 0 for hard edges, 1 for soft ones, instead of what the text has.
    void SetRenderMode(int mode);

    /// Draws the text as the transform makes it into the layer's pixels, from its outlines; the text's own
    /// values stay. What the document showed is recomposed.
    /// @param transform  from the layer's rectangle, its top left at the origin, to document coordinates
    /// @param drawn      the rectangle that the layer has afterwards; null for nobody asks
    /// False, and nothing drawn, without InitHelper() and for a layer of another kind. Throws std::bad_alloc.
    bool drawImage(LXDocumentInterface* document, unsigned int id, const QTransform& transform,
                   QRect* drawn = nullptr) const;
    /// The matrix that a text has to be given to stay as drawImage() shows it.
    QTransform Transformed(const QTransform& transform) const;

    /// The index of the code unit before which a caret stands nearest to the point; never inside of a letter
    /// of several code units. 0 without a text.
    int FindSelectedChar(const QPointF& docPos) const;
    /// The caret before the code unit at the index, from the top of its line to the bottom, and the line
    /// under the letters beside it; a bent text bends the latter. Beyond the ends the nearest.
    void GetVerticalAndUnderLine(int index, QLineF* vertical, QPolygonF* underline) const;

private:
    std::unique_ptr<LXImageHelperPrivate> m_pPrivate;
};
