#pragma once

#include <QGraphicsItem>
#include <QPainterPath>

/// Scene item that inverts what lies under its path, so that it stays visible on any picture. The path
/// is in item coordinates.
class GraphicInverter : public QGraphicsItem
{
public:
    explicit GraphicInverter(QGraphicsItem* parent = nullptr);

    void SetPath(const QPainterPath& path);

    QPainterPath GetPath() const { return m_Path; }

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    QPainterPath m_Path;
};
