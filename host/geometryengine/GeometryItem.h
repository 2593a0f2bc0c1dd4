#pragma once

#include "ZKHostExport.h"

#include <QGraphicsObject>

#include <memory>

class CustomGeometryPaint;
class GeometryItemPrivate;
class QPainterPath;
class QPen;

/// Scene item that shows the outline of a path: with a pen, or with a painter that makes it move. The items
/// of tools derive from it and say what the path is. Main thread only.
class ZK_HOST_EXPORT GeometryItem : public QGraphicsObject
{
    Q_OBJECT

public:
    explicit GeometryItem(QGraphicsItem* parent = nullptr);
    ~GeometryItem() override;

    /// In item coordinates.
    QPainterPath path() const;

    /// What the outline is drawn with while there is no painter; a cosmetic black pen at first.
    void setPen(const QPen& pen);

    /// Lets the painter draw the outline, in place of the pen and of an older painter, which is deleted.
    /// @param interval  milliseconds between two steps, once startAnimate() was called
    /// @param reach     how far beside the path, in item coordinates, the painter may draw
    /// @param painter   owned from then on; null gives the pen back
    void setAnimated(int interval, int reach, CustomGeometryPaint* painter);

    /// Makes the painter begin to move; nothing without one.
    void startAnimate();

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    void setPath(const QPainterPath& path);

private:
    std::unique_ptr<GeometryItemPrivate> m_pPrivate;
};
