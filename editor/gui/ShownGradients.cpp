#include "gui/ShownGradients.h"

#include "gui/DisplayColors.h"

#include <QImage>
#include <QPainter>

void PaintShownGradients(QPainter& painter, const QRect& place, std::initializer_list<QLinearGradient> layers)
{
    if (place.isEmpty()) return;
    const qreal ratio = painter.device()->devicePixelRatioF();
    QImage picture(place.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(ratio);
    QPainter onPicture(&picture);
    onPicture.translate(-place.topLeft());
    for (const QLinearGradient& layer : layers)
        onPicture.fillRect(place, layer);
    onPicture.end();
    painter.drawImage(place.topLeft(), DisplayColors::ShownOwn(picture));
}
