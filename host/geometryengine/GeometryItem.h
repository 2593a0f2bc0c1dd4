#pragma once

#include "ZKHostExport.h"

#include <QGraphicsObject>

#include <memory>

class ControlNode;
class CustomGeometryPaint;
class GeometryItemPrivate;
class QPainterPath;
class QPen;

/// Scene item that shows the outline of a path: with a pen, or with a painter that makes it move. The items
/// of tools derive from it and say what the path is. Main thread only.
///
/// Presses go through it to what lies below. A change of the path paints again only what lies along the old
/// and the new outline, however large the area between them is.
class ZK_HOST_EXPORT GeometryItem : public QGraphicsObject
{
    Q_OBJECT

public:
    /// What ItemFactory() makes.
    enum Kind
    {
        RectangleKind = 1,
        PathStrokeKind = 2,
        PolylineKind = 4
    };

    explicit GeometryItem(QGraphicsItem* parent = nullptr);
    ~GeometryItem() override;

    /// A RectangleItem, PathStrokeItem or PolylineItem without a parent or a scene; null for other numbers.
    static GeometryItem* ItemFactory(int kind);

    /// In item coordinates.
    QPainterPath path() const;

    /// The handles that shape the item, which are its children; none at first. An item that has any says in
    /// which order.
    virtual QList<ControlNode*> nodes() const;

    /// What the outline is drawn with while there is no painter; at first a thin black line
    /// with a white halo, as wide at any scale.
    void setPen(const QPen& pen);
    QPen pen() const;

    /// Lets the painter draw the outline, in place of the pen and of an older painter, which is deleted.
    /// @param interval  milliseconds between two steps, once startAnimate() was called
    /// @param reach     how far beside the path, in screen pixels, the painter may draw
    /// @param painter   owned from then on; null gives the pen back
    void setAnimated(int interval, int reach, CustomGeometryPaint* painter);

    /// Makes the painter begin to move; nothing without one, or where the desktop wants no motion.
    void startAnimate();

    /// Holds the path, with room to spare while that changes.
    QRectF boundingRect() const override;
    /// What the path encloses.
    QPainterPath shape() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    void setPath(const QPainterPath& path);

private:
    void UpdateOutline() const;

    std::unique_ptr<GeometryItemPrivate> m_pPrivate;
};
