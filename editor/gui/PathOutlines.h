#pragma once

#include "gui/CanvasPainter.h"

#include <QPainterPath>

#include <vector>

class LXPathSelectionModel;
class LXPathsListModel;
class QPainter;
class QWidget;

/// The outlines of a document's paths in a viewport: of the current path, and dimmer of those that are to be
/// seen always. Lines keep their width at any scale and have a halo, so that they show on any picture. Main
/// thread only.
class PathOutlines
{
public:
    PathOutlines(const LXPathsListModel* paths, const LXPathSelectionModel* selection, QWidget* viewport);

    /// Draws what lies in these viewport pixels.
    void Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place) const;

    /// Paths or the choice of them are other ones: shows them, hides the old ones.
    void Update(const CanvasPlace& place);

private:
    struct Outline
    {
        QPainterPath path; ///< document coordinates
        bool isCurrent = false;
    };

    void Repaint(const CanvasPlace& place) const;

    const LXPathsListModel* m_pPaths;
    const LXPathSelectionModel* m_pSelection;
    QWidget* m_pViewport;
    std::vector<Outline> m_Outlines; ///< the current one is the last, on top
};
