#pragma once

#include "gui/PathGeometryEditor.h"
#include "gui/PathHandles.h"

#include <QPainterPath>
#include <QPoint>

/// The path that is edited, and the gesture that is under way.
class PathGeometryEditorPrivate
{
public:
    explicit PathGeometryEditorPrivate(PathGeometryEditor* editor);

    /// @param current  number of the anchor in PathAnchors::Of(); -1 for none
    void Show(const LXPath& path, int current);
    int ElementOf(int anchor) const;

    void OnPressed(const ControlNode* node);
    void OnMoved(const QPointF& place);
    /// Harmless without a drag.
    void OnReleased();

    /// Moves the current anchor; false when the key or the moment is for something else.
    bool Nudge(int key, Qt::KeyboardModifiers modifiers);
    void EndNudge();

    /// Ends a drag or nudge without a word; whoever calls tells of what comes of it.
    void StopGesture();
    /// Sends PathChanged() and Released(); a handler of the first may delete the editor.
    void TellGesture();

    /// Where a press is one of the path, beside the handles; and what holds it and the guides.
    QPainterPath PressArea() const;
    QRectF Bounds() const;

    PathGeometryEditor* m_pEditor;
    LXPath m_Path;
    int m_Current = -1;
    PathHandles m_Handles;

private:
    struct Drag
    {
        LXPath path; ///< at the press
        PathAnchor anchor;
        PathGrip grip = PathGrip::Anchor;
        QPointF place;  ///< of the handle at the press
        QPoint pointer; ///< at the press, global
        bool isMoving = false;
    };

    std::optional<Drag> m_Drag;
    bool m_bNudging = false;
    mutable QPainterPath m_PressArea;
    mutable double m_PressPixel = 0; ///< that m_PressArea is made for; 0 when it is out of date
};
