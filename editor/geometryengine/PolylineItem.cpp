#include "geometryengine/PolylineItem.h"

#include "geometryengine/GeometryNode.h"

#include <QGraphicsScene>
#include <QPainterPath>

#include <algorithm>
#include <utility>
#include <vector>

class PolylineItemPrivate
{
public:
    QPainterPath Line() const
    {
        QPainterPath line;
        for (const GeometryNode* node : nodes)
            node == nodes.front() ? line.moveTo(node->pos()) : line.lineTo(node->pos());
        return line;
    }

    std::vector<GeometryNode*> nodes;
    bool isActive = false;
};

PolylineItem::PolylineItem(QGraphicsItem* parent)
    : GeometryItem(parent), m_pPrivate(std::make_unique<PolylineItemPrivate>())
{}

PolylineItem::~PolylineItem()
{
    // While there still is a polyline for them to tell.
    for (GeometryNode* node : std::exchange(m_pPrivate->nodes, {})) {
        node->Forget();
        delete node;
    }
}

void PolylineItem::editActivate(bool activate)
{
    m_pPrivate->isActive = activate;
    for (GeometryNode* node : m_pPrivate->nodes)
        node->setVisible(activate);
}

ControlNode* PolylineItem::addPoint(const QPointF& point)
{
    const auto follow = [this](GeometryNode*) { setPath(m_pPrivate->Line()); };
    const auto forget = [this](GeometryNode* gone) {
        auto& nodes = m_pPrivate->nodes;
        nodes.erase(std::remove(nodes.begin(), nodes.end(), gone), nodes.end());
        setPath(m_pPrivate->Line());
    };
    auto* const node = new GeometryNode(this, follow, forget);
    node->setVisible(m_pPrivate->isActive);
    node->setPos(point);
    m_pPrivate->nodes.push_back(node);
    setPath(m_pPrivate->Line());
    return node;
}

bool PolylineItem::removePoint(ControlNode* node)
{
    auto& nodes = m_pPrivate->nodes;
    const auto found = std::find(nodes.begin(), nodes.end(), node);
    if (found == nodes.end()) return false;
    GeometryNode* const removed = *found;
    nodes.erase(found);
    setPath(m_pPrivate->Line());

    removed->Forget();
    removed->setParentItem(nullptr);
    if (removed->scene()) removed->scene()->removeItem(removed);
    removed->deleteLater();
    return true;
}

void PolylineItem::sortNodes()
{
    std::stable_sort(
        m_pPrivate->nodes.begin(), m_pPrivate->nodes.end(),
        [](const GeometryNode* left, const GeometryNode* right) { return left->x() < right->x(); });
    setPath(m_pPrivate->Line());
}

QList<ControlNode*> PolylineItem::nodes() const
{
    return QList<ControlNode*>(m_pPrivate->nodes.begin(), m_pPrivate->nodes.end());
}
