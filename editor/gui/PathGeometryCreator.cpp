#include "gui/PathGeometryCreator.h"

#include "geometryengine/PathDrag.h"
#include "gui/PathHandles.h"

#include <QCoreApplication>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGuiApplication>
#include <QPainterPath>

namespace {
constexpr int ClickReach = 3; ///< screen pixels that a hand may slip in a click

bool AreSame(const QPointF& a, const QPointF& b)
{
    return a.x() == b.x() && a.y() == b.y();
}
} // namespace

class PathGeometryCreatorPrivate
{
public:
    explicit PathGeometryCreatorPrivate(QGraphicsItem* item) : handles(item)
    {
        handles.SetTakesPresses(false);
    }

    bool IsIndex(int index) const { return index >= 0 && index < path.size(); }

    /// Whether the last anchor of a path that has become one with its end has just closed it.
    bool IsClosingAnchor(int index) const
    {
        return path.size() > 2 && index == path.size() - 1 &&
               AreSame(path.last().GetCenterPoint(), path.first().GetCenterPoint());
    }

    LXPath path;
    int current = -1;
    bool isBending = false; ///< the pointer has left the place of the press
    PathHandles handles;
};

PathGeometryCreator::PathGeometryCreator(QGraphicsItem* parent)
    : QGraphicsObject(parent), m_pPrivate(std::make_unique<PathGeometryCreatorPrivate>(this))
{
    setAcceptedMouseButtons(Qt::NoButton);
}

PathGeometryCreator::~PathGeometryCreator() = default;

void PathGeometryCreator::AddPoint(const QPointF& point)
{
    m_pPrivate->path.append(LXPathElement(point));
    InvalidatePath();
}

void PathGeometryCreator::MoveLastPoint(const QPointF& point)
{
    if (m_pPrivate->path.isEmpty()) return;
    LXPathElement& last = m_pPrivate->path.last();
    const QPointF anchor = last.GetCenterPoint();
    // Added to the new place, so that a guide on its anchor stays on it to the last bit.
    last = LXPathElement(point, point + (last.GetInGuide() - anchor), point + (last.GetOutGuide() - anchor));
    InvalidatePath();
}

void PathGeometryCreator::RemoveLastPoint()
{
    if (m_pPrivate->path.isEmpty()) return;
    LXPath path = m_pPrivate->path;
    path.removeLast();
    MakeFromPath(path);
}

int PathGeometryCreator::GetPointCount() const
{
    return m_pPrivate->path.size();
}

LXPathElement PathGeometryCreator::GetPointAt(int index) const
{
    return m_pPrivate->path.value(index);
}

LXPath PathGeometryCreator::GetPath() const
{
    return m_pPrivate->path;
}

void PathGeometryCreator::MakeFromPath(const LXPath& elements)
{
    m_pPrivate->path = elements;
    m_pPrivate->current = qMin(m_pPrivate->current, elements.size() - 1);
    InvalidatePath();
}

void PathGeometryCreator::SetCurrentEditNodeIndex(int index)
{
    if (index != -1 && !m_pPrivate->IsIndex(index)) return;
    if (index != m_pPrivate->current && m_pPrivate->IsClosingAnchor(index))
        m_pPrivate->path.last().SetInGuide(m_pPrivate->path.first().GetInGuide());
    m_pPrivate->current = index;
    if (QGuiApplication::mouseButtons() == Qt::LeftButton) {
        m_pPrivate->isBending = false;
        // The program's filters run before those of the scene, whatever the order of installing. Those of the
        // scene may be in the middle of the press, and a new one among them would make one run twice.
        QCoreApplication::instance()->installEventFilter(this);
    }
    InvalidatePath();
}

QPointF PathGeometryCreator::RemoveInGuide(int index)
{
    const LXPathElement element = GetPointAt(index);
    RestoreInGuide(index, QPointF());
    return element.GetInGuide() - element.GetCenterPoint();
}

QPointF PathGeometryCreator::RemoveOutGuide(int index)
{
    const LXPathElement element = GetPointAt(index);
    RestoreOutGuide(index, QPointF());
    return element.GetOutGuide() - element.GetCenterPoint();
}

void PathGeometryCreator::RestoreInGuide(int index, const QPointF& guide)
{
    if (!m_pPrivate->IsIndex(index)) return;
    LXPathElement& element = m_pPrivate->path[index];
    element.SetInGuide(element.GetCenterPoint() + guide);
}

void PathGeometryCreator::RestoreOutGuide(int index, const QPointF& guide)
{
    if (!m_pPrivate->IsIndex(index)) return;
    LXPathElement& element = m_pPrivate->path[index];
    element.SetOutGuide(element.GetCenterPoint() + guide);
}

void PathGeometryCreator::InvalidatePath()
{
    prepareGeometryChange();
    const LXPath& path = m_pPrivate->path;
    m_pPrivate->handles.Show(path, PathAnchors::IndexOf(PathAnchors::Of(path), m_pPrivate->current));
    update();
}

QRectF PathGeometryCreator::boundingRect() const
{
    return m_pPrivate->handles.Bounds();
}

QPainterPath PathGeometryCreator::shape() const
{
    return {};
}

void PathGeometryCreator::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    m_pPrivate->handles.PaintLines(painter);
}

bool PathGeometryCreator::eventFilter(QObject* watched, QEvent* event)
{
    const bool isMove = event->type() == QEvent::GraphicsSceneMouseMove;
    const bool isRelease = event->type() == QEvent::GraphicsSceneMouseRelease;
    if ((!isMove && !isRelease) || watched != scene()) return false;

    const auto* mouse = static_cast<QGraphicsSceneMouseEvent*>(event);
    if (!(mouse->buttons() & Qt::LeftButton)) {
        QCoreApplication::instance()->removeEventFilter(this);
    } else if (isMove && mouse->buttons() == Qt::LeftButton) {
        const QPoint way = mouse->screenPos() - mouse->buttonDownScreenPos(Qt::LeftButton);
        if (way.manhattanLength() >= ClickReach) m_pPrivate->isBending = true;
        if (!m_pPrivate->isBending) return false;
        m_pPrivate->path = PathDrag::Bent(m_pPrivate->path, m_pPrivate->current,
                                          mapFromScene(mouse->scenePos()), mouse->modifiers());
        InvalidatePath();
    }
    return false;
}
