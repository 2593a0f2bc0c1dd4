#pragma once

#include "ZKHostExport.h"

#include <QGraphicsItem>
#include <QObject>

#include <memory>

class ControlNodePrivate;
class QFont;
class QPainterPath;

/// Handle in a scene: a square of 8 screen pixels that a person drags. Main thread only.
///
/// Its place is in the coordinates of its parent item, or of the scene; its own coordinates, and all that is
/// drawn of it, are device independent screen pixels round its place, at any scale of a view. At first it is
/// movable, selectable and sends geometry changes.
///
/// A press of the left button within 12 pixels hits it; where several nodes are that near, the nearest one
/// is hit. It moves alone, also when others are selected with it, and keeps its distance from the pointer.
/// A node that isn't movable still takes the press and tells of it.
///
/// A handler of the signals may move, hide, or delete it by deleteLater().
class ZK_HOST_EXPORT ControlNode : public QObject, public QGraphicsItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)

public:
    enum
    {
        Type = 0x10001
    };

    explicit ControlNode(QGraphicsItem* parent = nullptr);
    ~ControlNode() override;

    /// The buttons that are held on the node: pressed on it and not released since. Empty as soon as the node
    /// lost the mouse, by being hidden, disabled or taken out of the scene.
    Qt::MouseButtons mouseButtonState() const;

    /// Draws it filled, as the chosen one of several. False at first.
    void setSunken(bool sunken);
    bool isSunken() const;

    /// Draws it, and its label, in the inverse of what lies under it, in place of black and white. Where an
    /// inverse would not stand out, the color is black or white. False at first.
    void useInverseColor(bool inverse);

    /// Makes the bounds of the drawn shape the place where it is hit, in place of the 12 pixels. False at
    /// first.
    void useShapeAsBoundRect(bool useShape);

    /// What is drawn in place of the square; an empty path brings the square back.
    /// @param shape  screen pixels round the node's place; its outline is drawn, 1 pixel wide
    void setNodeShape(const QPainterPath& shape);

    /// A text to the right below the shape. It isn't hit. Empty at first.
    void setLabel(const QString& text, const QFont& font);
    QString label() const;

    int type() const override;

    /// With room for the label, in screen pixels.
    QRectF boundingRect() const override;
    /// Where it is hit, in screen pixels.
    QPainterPath shape() const override;
    /// Whether the point hits it, in the view that the pointer is over, or in the first one of the scene.
    /// @param point  as mapFromScene() gives it: scene units from the node's place
    bool contains(const QPointF& point) const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

signals:
    /// The left button went down on it.
    void mousePressed(ControlNode* node);
    /// The drag ended: the left button went up, or the node lost the mouse. Follows each mousePressed(), but
    /// for a node that is deleted.
    void mouseReleased(ControlNode* node);
    /// The person moved it; setPos() doesn't tell.
    /// @param pos  its new place, as pos() gives it
    void positionChanged(ControlNode* node, QPointF pos);
    void itemSelectionChange(ControlNode* node, bool selected);

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;
    bool sceneEvent(QEvent* event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;

private:
    void EndDrag();
    QPointF ParentPos(const QPointF& scenePos) const;
    bool IsNearest(const QGraphicsSceneMouseEvent* event) const;

    std::unique_ptr<ControlNodePrivate> m_pPrivate;
};
