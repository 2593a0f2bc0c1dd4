#pragma once

#include "gui/CanvasPainter.h"

#include <QRect>

class LXDocumentInterface;
class QPainter;
class QWidget;

/// Tints what is not selected of a canvas, the stronger the less it is selected; without a selection nothing.
/// Main thread only.
class SelectionTint
{
public:
    SelectionTint(const LXDocumentInterface* document, QWidget* viewport);

    /// Draws the tint's part in these viewport pixels; takes the selection's locker.
    void Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place) const;

    /// The selection is another one.
    void Update(const CanvasPlace& place);

    bool IsShown() const { return m_bShown; }

    void SetShown(bool shown, const CanvasPlace& place);

private:
    const LXDocumentInterface* m_pDocument;
    QWidget* m_pViewport;
    QRect m_Seen; ///< document pixels of the selection that is shown
    bool m_bShown = false;
};
