#include "gui/PathGeometryEditor.h"

#include "geometryengine/ControlNode.h"
#include "gui/PathGeometryEditor_p.h"

#include <QFocusEvent>
#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>

PathGeometryEditor::PathGeometryEditor(QGraphicsItem* parent)
    : QGraphicsObject(parent), m_pPrivate(std::make_unique<PathGeometryEditorPrivate>(this))
{
    setFlag(ItemIsFocusable);
    setAcceptedMouseButtons(Qt::LeftButton);
}

PathGeometryEditor::~PathGeometryEditor() = default;

void PathGeometryEditor::MakeFromPath(const LXPath& elements)
{
    m_pPrivate->StopGesture();
    m_pPrivate->Show(elements, -1);
}

LXPath PathGeometryEditor::GetPath() const
{
    return m_pPrivate->m_Path;
}

void PathGeometryEditor::InsertNode(const QPointF& point)
{
    LXPath path = m_pPrivate->m_Path;
    const int element = PathAnchors::Insert(path, point);
    if (element < 0) return;

    m_pPrivate->StopGesture();
    m_pPrivate->Show(path, PathAnchors::IndexOf(PathAnchors::Of(path), element));
    m_pPrivate->TellGesture();
}

void PathGeometryEditor::DeleteNode(int element)
{
    LXPath path = m_pPrivate->m_Path;
    const std::vector<PathAnchor> anchors = PathAnchors::Of(path);
    const int removed = PathAnchors::IndexOf(anchors, element);
    if (removed < 0) return;

    m_pPrivate->StopGesture();
    PathAnchors::Remove(path, anchors[std::size_t(removed)]);
    const int current = m_pPrivate->m_Current;
    m_pPrivate->Show(path, current == removed ? -1 : current > removed ? current - 1 : current);
    if (!path.isEmpty()) m_pPrivate->TellGesture();
}

void PathGeometryEditor::DeleteCurrentNode()
{
    DeleteNode(GetCurrentEditNodeIndex());
}

int PathGeometryEditor::ElementCount() const
{
    return m_pPrivate->m_Path.size();
}

int PathGeometryEditor::CentralNodeOf(const QGraphicsItem* item) const
{
    const std::optional<PathHandles::Handle> handle = m_pPrivate->m_Handles.Find(item);
    const bool isAnchor = handle && handle->grip == PathGrip::Anchor;
    return isAnchor ? m_pPrivate->ElementOf(handle->anchor) : -1;
}

int PathGeometryEditor::GetCurrentEditNodeIndex() const
{
    return m_pPrivate->ElementOf(m_pPrivate->m_Current);
}

bool PathGeometryEditor::IsEditorItem(const QGraphicsItem* item) const
{
    return item && (item == this || isAncestorOf(item));
}

void PathGeometryEditor::IgnoreSceneEvents(bool ignore)
{
    setAcceptedMouseButtons(ignore ? Qt::NoButton : Qt::LeftButton);
    // A handle that is held loses the mouse by that, which ends its drag.
    m_pPrivate->m_Handles.SetTakesPresses(!ignore);
}

QRectF PathGeometryEditor::boundingRect() const
{
    return m_pPrivate->Bounds();
}

QPainterPath PathGeometryEditor::shape() const
{
    return m_pPrivate->PressArea();
}

void PathGeometryEditor::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    m_pPrivate->m_Handles.PaintLines(painter);
}

void PathGeometryEditor::mousePressEvent(QGraphicsSceneMouseEvent* event)
{
    event->accept();
    m_pPrivate->EndNudge();
    m_pPrivate->Show(m_pPrivate->m_Path, -1);
}

void PathGeometryEditor::keyPressEvent(QKeyEvent* event)
{
    const bool isTaken = m_pPrivate->Nudge(event->key(), event->modifiers());
    event->setAccepted(isTaken);
}

void PathGeometryEditor::keyReleaseEvent(QKeyEvent* event)
{
    event->ignore();
    if (!event->isAutoRepeat()) m_pPrivate->EndNudge();
}

void PathGeometryEditor::focusOutEvent(QFocusEvent* event)
{
    QGraphicsObject::focusOutEvent(event);
    m_pPrivate->EndNudge();
}
