#pragma once

#include "document/LXGuide.h"
#include "gui/CanvasPainter.h"

class LXDocumentInterface;
class QPainter;
class QWidget;

/// A document's guides in a viewport: lines one viewport pixel wide, from edge to edge. Main thread only.
class GuideLines
{
public:
    GuideLines(const LXDocumentInterface* document, QWidget* viewport);

    /// Draws what lies in these viewport pixels.
    void Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place) const;

    /// The guides are other ones: shows them, hides the old ones.
    void Update(const CanvasPlace& place);

    bool IsShown() const { return m_bShown; }

    void SetShown(bool shown, const CanvasPlace& place);

private:
    QRect LineOf(const LXGuide& guide, const CanvasPlace& place) const;
    void Repaint(const CanvasPlace& place) const;

    const LXDocumentInterface* m_pDocument;
    QWidget* m_pViewport;
    LXGuides m_Guides; ///< those that are shown
    bool m_bShown = true;
};
