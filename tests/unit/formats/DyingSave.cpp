#include "DyingSave.h"

#include <QRandomGenerator>

namespace {
LXImage32 Noise(const QSize& size, quint32 seed)
{
    QRandomGenerator random(seed);
    LXImage32 image(size.width(), size.height());
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.SetColor(x, y, LXRGBA32i(random.generate()));
        }
    }
    return image;
}
} // namespace

OraContent DyingSave::Content(const QString& name)
{
    OraContent content;
    content.size = QSize(90, 70);
    content.dpi = 72;
    for (quint32 i = 0; i < 3; ++i) {
        LayerState layer;
        layer.properties.name = name;
        layer.properties.rect = QRect(QPoint(), content.size);
        layer.image = Noise(content.size, qHash(name) + i);
        content.layers.push_back(layer);
    }
    content.merged = content.layers.front().image;
    return content;
}
