#pragma once

#include "geometryengine/ControlNode.h"

#include <functional>
#include <utility>

/// The node of an item that follows it wherever it goes: moved by a person or by setPos(), or deleted by
/// whoever got hold of it.
class GeometryNode : public ControlNode
{
public:
    using Handler = std::function<void(GeometryNode*)>;

    /// @param parent  outlives the node, unless the node forgets it
    GeometryNode(QGraphicsItem* parent, Handler moved, Handler gone)
        : ControlNode(parent), m_Moved(std::move(moved)), m_Gone(std::move(gone))
    {}

    ~GeometryNode() override
    {
        if (m_Gone) m_Gone(this);
    }

    /// Nobody is told of anything any more.
    void Forget()
    {
        m_Moved = nullptr;
        m_Gone = nullptr;
    }

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override
    {
        QVariant result = ControlNode::itemChange(change, value);
        if (change == ItemPositionHasChanged && m_Moved) m_Moved(this);
        return result;
    }

private:
    Handler m_Moved;
    Handler m_Gone;
};
