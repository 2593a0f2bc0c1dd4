#include "SceneFixture.h"

#include <QPaintEvent>
#include <QTest>

SceneFixture::SceneFixture(double scale) : scene(0, 0, 2 * Middle.x(), 2 * Middle.y()), view(&scene)
{
    view.setFrameShape(QFrame::NoFrame);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.viewport()->setMouseTracking(true);
    view.resize(400, 300);
    view.scale(scale, scale);
    view.centerOn(Middle);
    view.show();
    [[maybe_unused]] const bool shown = QTest::qWaitForWindowExposed(&view);
}

QImage SceneFixture::ShownAtRatio(double ratio)
{
    QImage image(view.viewport()->size() * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    view.viewport()->render(&image);
    return image;
}

QPointF SceneFixture::Beside(const QPointF& scenePos, const QPointF& pixels) const
{
    const QTransform toView = view.viewportTransform();
    return toView.inverted().map(toView.map(scenePos) + pixels);
}

PaintedRegion::PaintedRegion(QWidget* widget)
{
    widget->installEventFilter(this);
}

bool PaintedRegion::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Paint) region += static_cast<QPaintEvent*>(event)->region();
    return false;
}
