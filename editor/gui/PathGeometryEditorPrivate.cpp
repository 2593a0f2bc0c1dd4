#include "document/LXPathConvert.h"
#include "geometryengine/ControlNode.h"
#include "geometryengine/ViewScale.h"
#include "gui/PathGeometryEditor_p.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPainterPathStroker>
#include <QPointer>

#include <utility>

namespace {
constexpr int ClickReach = 3; ///< screen pixels that a hand may slip in a click
constexpr double PressWidth = 4;
constexpr double LongStep = 10;

/// The way of an arrow key, in document pixels; none for other keys.
QPointF StepOf(int key)
{
    switch (key) {
    case Qt::Key_Left: return {-1, 0};
    case Qt::Key_Right: return {1, 0};
    case Qt::Key_Up: return {0, -1};
    case Qt::Key_Down: return {0, 1};
    default: return {};
    }
}
} // namespace

PathGeometryEditorPrivate::PathGeometryEditorPrivate(PathGeometryEditor* editor)
    : m_pEditor(editor), m_Handles(editor)
{
    m_Handles.SetOnCreated([this](ControlNode* node) {
        QObject::connect(node, &ControlNode::mousePressed, m_pEditor, [this, node] { OnPressed(node); });
        QObject::connect(node, &ControlNode::positionChanged, m_pEditor,
                         [this](ControlNode*, const QPointF& place) { OnMoved(place); });
        QObject::connect(node, &ControlNode::mouseReleased, m_pEditor, [this] { OnReleased(); });
    });
}

void PathGeometryEditorPrivate::Show(const LXPath& path, int current)
{
    m_pEditor->prepareGeometryChange();
    m_Path = path;
    m_Current = current;
    m_PressPixel = 0;
    m_Handles.Show(path, current);
    m_pEditor->update();
}

int PathGeometryEditorPrivate::ElementOf(int anchor) const
{
    if (anchor < 0) return -1;
    return PathAnchors::Of(m_Path)[std::size_t(anchor)].out;
}

void PathGeometryEditorPrivate::OnPressed(const ControlNode* node)
{
    EndNudge();
    const std::optional<PathHandles::Handle> handle = m_Handles.Find(node);
    if (!handle) return;
    const PathAnchor anchor = PathAnchors::Of(m_Path)[std::size_t(handle->anchor)];
    m_Drag = Drag{m_Path, anchor, handle->grip, node->pos(), QCursor::pos()};
    m_Handles.Hold(node);
    Show(m_Path, handle->anchor);
    m_pEditor->setFocus(Qt::MouseFocusReason);
}

void PathGeometryEditorPrivate::OnMoved(const QPointF& place)
{
    const int slip = m_Drag ? (QCursor::pos() - m_Drag->pointer).manhattanLength() : 0;
    if (!m_Drag || (!m_Drag->isMoving && slip < ClickReach)) {
        // Puts the handle back where it belongs.
        Show(m_Path, m_Current);
        return;
    }
    m_Drag->isMoving = true;
    Show(PathDrag::Dragged(m_Drag->path, m_Drag->anchor, m_Drag->grip, place - m_Drag->place,
                           QGuiApplication::keyboardModifiers()),
         m_Current);
    emit m_pEditor->PathChanged();
}

void PathGeometryEditorPrivate::OnReleased()
{
    if (!m_Drag) return;
    const Drag drag = *m_Drag;
    StopGesture();
    const LXPath clicked =
        PathDrag::Clicked(m_Path, drag.anchor, drag.grip, QGuiApplication::keyboardModifiers());
    const bool isChanged = !drag.isMoving && clicked != m_Path;
    // A guide that was left on its anchor is hidden from now on.
    Show(isChanged ? clicked : m_Path, m_Current);
    if (isChanged) {
        TellGesture();
    } else {
        emit m_pEditor->Released();
    }
}

bool PathGeometryEditorPrivate::Nudge(int key, Qt::KeyboardModifiers modifiers)
{
    const QPointF step = StepOf(key);
    const bool isPlain = !(modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (step.isNull() || !isPlain || m_Current < 0 || m_Drag) return false;
    LXPath path = m_Path;
    const PathAnchor anchor = PathAnchors::Of(path)[std::size_t(m_Current)];
    PathAnchors::Move(path, anchor, modifiers & Qt::ShiftModifier ? step * LongStep : step);
    m_bNudging = true;
    Show(path, m_Current);
    emit m_pEditor->PathChanged();
    return true;
}

void PathGeometryEditorPrivate::EndNudge()
{
    if (std::exchange(m_bNudging, false)) emit m_pEditor->Released();
}

void PathGeometryEditorPrivate::StopGesture()
{
    m_Drag.reset();
    m_Handles.Hold(nullptr);
    m_bNudging = false;
}

void PathGeometryEditorPrivate::TellGesture()
{
    const QPointer<PathGeometryEditor> editor(m_pEditor);
    emit m_pEditor->PathChanged();
    if (editor) emit editor->Released();
}

QRectF PathGeometryEditorPrivate::Bounds() const
{
    const double reach = PressWidth / 2 * LongestPixel(m_pEditor);
    return m_Handles.Bounds().adjusted(-reach, -reach, reach, reach);
}

QPainterPath PathGeometryEditorPrivate::PressArea() const
{
    const double pixel = LongestPixel(m_pEditor);
    if (m_PressPixel != pixel) {
        QPainterPathStroker stroker;
        stroker.setWidth(PressWidth * pixel);
        m_PressArea = stroker.createStroke(ConvertFrom(m_Path));
        m_PressPixel = pixel;
    }
    return m_PressArea;
}
