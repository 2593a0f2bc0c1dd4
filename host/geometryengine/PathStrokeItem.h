#pragma once

#include "geometryengine/GeometryItem.h"

#include <memory>

class PathStrokeItemPrivate;

/// The line along a path, as wide on the screen at any scale as its pen says: 1 pixel at first. Main thread
/// only.
class ZK_HOST_EXPORT PathStrokeItem : public GeometryItem
{
    Q_OBJECT

public:
    explicit PathStrokeItem(QGraphicsItem* parent = nullptr);
    ~PathStrokeItem() override;

    /// @param path  item coordinates; empty: nothing is shown
    void setPath(const QPainterPath& path);

    /// Draws the line in the inverse of what lies under it, in place of the pen's color. Where an inverse
    /// would not stand out, it is black or white. False at first.
    void useInverseColor(bool inverse);

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    std::unique_ptr<PathStrokeItemPrivate> m_pPrivate;
};
