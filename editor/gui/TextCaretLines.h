#pragma once

#include "gui/CanvasPainter.h"

#include <QLineF>
#include <QPolygonF>

class LXDocumentInterface;
class QPainter;
class QWidget;

/// The caret of a text that is being typed, in a viewport: a line before the next letter, and one under the
/// letters of its line. They keep their width at any scale and have a halo. Main thread only.
class TextCaretLines
{
public:
    TextCaretLines(const LXDocumentInterface* document, QWidget* viewport);

    /// Draws what lies in these viewport pixels.
    void Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place) const;

    /// The caret stands elsewhere, or there is none any more.
    void Update(const CanvasPlace& place);

private:
    QRect Area(const CanvasPlace& place) const;

    const LXDocumentInterface* m_pDocument;
    QWidget* m_pViewport;
    bool m_bShown = false;
    QLineF m_Vertical;     ///< document pixels
    QPolygonF m_Underline; ///< likewise
};
