#pragma once

#include "scripting/InputDriver.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QImage>
#include <QObject>
#include <QRegion>

/// A scene of 40000 x 30000 in a view of 400 x 300 on the screen, with the scene's middle in the view's.
class SceneFixture
{
public:
    explicit SceneFixture(double scale = 1);

    /// The view's pixels without a frame, scroll bars or anything else beside the scene.
    QImage Shown() { return view.viewport()->grab().toImage(); }

    /// The same on a screen with more pixels to a unit.
    QImage ShownAtRatio(double ratio);

    /// The scene point so many viewport pixels beside another one.
    QPointF Beside(const QPointF& scenePos, const QPointF& pixels) const;

    static constexpr QPointF Middle = {20000, 15000};

    QGraphicsScene scene;
    QGraphicsView view;
    InputDriver input;
};

/// Collects what is painted of a widget.
class PaintedRegion : public QObject
{
public:
    explicit PaintedRegion(QWidget* widget);
    bool eventFilter(QObject* watched, QEvent* event) override;

    QRegion region;
};
