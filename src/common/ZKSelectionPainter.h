#pragma once

#include "geometryengine/CustomGeometryPaint.h"

#include <QBrush>
#include <QImage>
#include <QObject>
#include <QPainterPath>
#include <QRegion>
#include <QTransform>

class QGraphicsView;

/// Marching ants along the outline of a scene item: black and white dashes of four screen pixels at any zoom.
/// While they march nothing but the outline's own pixels is painted again. Main thread only.
class ZKSelectionPainter : public QObject, public CustomGeometryPaint
{
    Q_OBJECT

public:
    ZKSelectionPainter();

    void paint(QPainter* painter, const QPainterPath& path) override;
    void start(QGraphicsItem* item, int interval) override;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void StepPattern();
    QRegion OutlineIn(const QGraphicsView* view);

    QImage m_Pattern;
    int m_TimerId = 0;
    QGraphicsItem* m_pItem = nullptr;
    QBrush m_Brush;
    QPainterPath m_Path; ///< as it was painted last, in item coordinates
    QRegion m_Outline;   ///< its pixels in a viewport...
    QTransform m_ToView; ///< ...of this place
    QRect m_Viewport;    ///< ...and this size
};
