#include "utils/ThemePicture.h"

#include <QFileInfo>
#include <QPainter>

namespace {
constexpr qreal DisabledOpacity = 0.38;
} // namespace

QString ThemePicture::FileName(const QString& name)
{
    return name.contains('.') ? name : name + QLatin1String(".png");
}

QString ThemePicture::WithEnding(const QString& name, const QString& ending)
{
    const int dot = name.lastIndexOf('.');
    return dot < 0 ? name + ending : name.left(dot) + ending + name.mid(dot);
}

QPixmap ThemePicture::Load(const QString& name, qreal ratio)
{
    // The true path: what Qt keeps under the name of the search path may be of another look.
    const QString path = QFileInfo(name).canonicalFilePath();
    QPixmap pixmap;
    if (path.isEmpty() || !pixmap.load(path)) return QPixmap();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QPixmap ThemePicture::Faint(const QPixmap& pixmap)
{
    QPixmap faint(pixmap.size());
    faint.setDevicePixelRatio(pixmap.devicePixelRatio());
    faint.fill(Qt::transparent);
    QPainter painter(&faint);
    painter.setOpacity(DisabledOpacity);
    painter.drawPixmap(0, 0, pixmap);
    return faint;
}
