#include "gui/PathHandles.h"

#include "geometryengine/ControlNode.h"

#include <QPainter>
#include <QPainterPath>

namespace {
constexpr double GuideRadius = 3;
constexpr double HaloWidth = 3;
constexpr double DimOpacity = 0.5;
constexpr double AnchorHeight = 1; ///< guides of other anchors lie below, those of the current one above
const QColor Ink(0x1e, 0x1e, 0x1e);
const QColor Halo(0xff, 0xff, 0xff, 0xd0);

QPen MakePen(const QColor& color, double width)
{
    QPen pen(color, width, Qt::SolidLine, Qt::RoundCap);
    pen.setCosmetic(true);
    return pen;
}

bool IsShown(const ControlNode* node)
{
    return node && node->isVisibleTo(node->parentItem());
}
} // namespace

PathHandles::PathHandles(QGraphicsItem* parent) : m_pParent(parent) {}

PathHandles::~PathHandles() = default;

void PathHandles::SetOnCreated(const std::function<void(ControlNode*)>& onCreated)
{
    m_OnCreated = onCreated;
}

void PathHandles::SetTakesPresses(bool takes)
{
    m_bTakesPresses = takes;
    const Qt::MouseButtons buttons = takes ? Qt::LeftButton : Qt::NoButton;
    for (const Nodes& nodes : m_Nodes) {
        for (ControlNode* const node : {nodes.anchor, nodes.in, nodes.out}) {
            if (node) node->setAcceptedMouseButtons(buttons);
        }
    }
}

ControlNode* PathHandles::MakeNode(PathGrip grip) const
{
    auto* node = new ControlNode(m_pParent);
    // The current anchor is the path's own matter: the scene's selection is left alone.
    node->setFlag(QGraphicsItem::ItemIsSelectable, false);
    node->setAcceptedMouseButtons(m_bTakesPresses ? Qt::LeftButton : Qt::NoButton);
    if (grip == PathGrip::Anchor) {
        node->setZValue(AnchorHeight);
    } else {
        QPainterPath circle;
        circle.addEllipse(QPointF(), GuideRadius, GuideRadius);
        node->setNodeShape(circle);
        node->setSunken(true);
    }
    if (m_OnCreated) m_OnCreated(node);
    return node;
}

void PathHandles::Retire(const Nodes& nodes) const
{
    for (ControlNode* const node : {nodes.anchor, nodes.in, nodes.out}) {
        if (!node) continue;
        // It may be one of them that is telling of the mouse right now.
        node->hide();
        node->deleteLater();
    }
}

void PathHandles::ShowGuide(ControlNode*& node, PathGrip grip, bool isShown, const QPointF& place,
                            bool isCurrent)
{
    if (!node) {
        if (!isShown) return;
        node = MakeNode(grip);
    }
    node->setPos(place);
    node->setVisible(isShown || node == m_pHeld);
    node->setZValue(isCurrent ? 2 * AnchorHeight : 0);
    node->setOpacity(isCurrent ? 1 : DimOpacity);
}

void PathHandles::Hold(const ControlNode* held)
{
    m_pHeld = held;
}

void PathHandles::Show(const LXPath& path, int current)
{
    const std::vector<PathAnchor> anchors = PathAnchors::Of(path);
    m_Current = current;
    while (m_Nodes.size() > anchors.size()) {
        const Nodes nodes = m_Nodes.back();
        m_Nodes.pop_back();
        Retire(nodes);
    }
    m_Nodes.reserve(anchors.size());
    while (m_Nodes.size() < anchors.size())
        m_Nodes.push_back({MakeNode(PathGrip::Anchor), nullptr, nullptr});

    for (std::size_t i = 0; i < anchors.size(); ++i) {
        const PathAnchor& anchor = anchors[i];
        const bool isCurrent = int(i) == current;
        Nodes& nodes = m_Nodes[i];
        nodes.anchor->setPos(PathAnchors::Center(path, anchor));
        nodes.anchor->setSunken(isCurrent);
        ShowGuide(nodes.in, PathGrip::InGuide, PathAnchors::HasGuide(path, anchor, GuideSide::In),
                  PathAnchors::Guide(path, anchor, GuideSide::In), isCurrent);
        ShowGuide(nodes.out, PathGrip::OutGuide, PathAnchors::HasGuide(path, anchor, GuideSide::Out),
                  PathAnchors::Guide(path, anchor, GuideSide::Out), isCurrent);
    }
}

std::optional<PathHandles::Handle> PathHandles::Find(const QGraphicsItem* item) const
{
    if (!item) return std::nullopt;
    for (std::size_t i = 0; i < m_Nodes.size(); ++i) {
        const Nodes& nodes = m_Nodes[i];
        if (nodes.anchor == item) return Handle{int(i), PathGrip::Anchor};
        if (nodes.in == item) return Handle{int(i), PathGrip::InGuide};
        if (nodes.out == item) return Handle{int(i), PathGrip::OutGuide};
    }
    return std::nullopt;
}

QRectF PathHandles::Bounds() const
{
    QPolygonF places;
    for (const Nodes& nodes : m_Nodes) {
        places << nodes.anchor->pos();
        if (IsShown(nodes.in)) places << nodes.in->pos();
        if (IsShown(nodes.out)) places << nodes.out->pos();
    }
    return places.boundingRect();
}

void PathHandles::PaintLines(QPainter* painter) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const double opacity = painter->opacity();
    for (const QPen& pen : {MakePen(Halo, HaloWidth), MakePen(Ink, 1)}) {
        painter->setPen(pen);
        for (std::size_t i = 0; i < m_Nodes.size(); ++i) {
            const Nodes& nodes = m_Nodes[i];
            painter->setOpacity(opacity * (int(i) == m_Current ? 1 : DimOpacity));
            if (IsShown(nodes.in)) painter->drawLine(nodes.anchor->pos(), nodes.in->pos());
            if (IsShown(nodes.out)) painter->drawLine(nodes.anchor->pos(), nodes.out->pos());
        }
    }
    painter->restore();
}
