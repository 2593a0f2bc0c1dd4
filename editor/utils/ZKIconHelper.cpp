#include "utils/ZKIconHelper.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>

namespace {
constexpr qreal DisabledOpacity = 0.38;

/// The sizes in device independent pixels that the theme's pictures come in, by the ending of their names.
constexpr const char* SizeEndings[] = {"", "-16", "-40"};

/// "theme:x.png" with the ending put before ".png".
QString WithEnding(const QString& name, const QString& ending)
{
    const int dot = name.lastIndexOf('.');
    return dot < 0 ? name + ending : name.left(dot) + ending + name.mid(dot);
}

/// Null without such a file. Qt sees the ratio of "@2x" names only in folders that aren't search paths.
QPixmap LoadPixmap(const QString& name, qreal ratio)
{
    QPixmap pixmap;
    if (!QFileInfo::exists(name) || !pixmap.load(name)) return QPixmap();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QPixmap MakeDisabled(const QPixmap& pixmap)
{
    QPixmap faint(pixmap.size());
    faint.setDevicePixelRatio(pixmap.devicePixelRatio());
    faint.fill(Qt::transparent);
    QPainter painter(&faint);
    painter.setOpacity(DisabledOpacity);
    painter.drawPixmap(0, 0, pixmap);
    return faint;
}

void AddPixmap(QIcon& icon, const QPixmap& pixmap)
{
    if (pixmap.isNull()) return;
    icon.addPixmap(pixmap, QIcon::Normal);
    // Else Qt tints it with the ground of the selected row.
    icon.addPixmap(pixmap, QIcon::Selected);
    icon.addPixmap(MakeDisabled(pixmap), QIcon::Disabled);
}
} // namespace

QIcon ZKIconHelper::DisabledIcon(const QString& name)
{
    QIcon icon;
    for (const char* ending : SizeEndings) {
        AddPixmap(icon, LoadPixmap(WithEnding(name, ending), 1));
        AddPixmap(icon, LoadPixmap(WithEnding(name, QLatin1String(ending) + "@2x"), 2));
    }
    return icon;
}

QIcon ZKIconHelper::DisabledIcon(const QPixmap& pixmap)
{
    QIcon icon;
    AddPixmap(icon, pixmap);
    return icon;
}

QPixmap ZKIconHelper::ThemePixmap(const QString& name, qreal ratio)
{
    const qreal wanted = ratio > 0 ? ratio : qGuiApp->devicePixelRatio();
    if (wanted > 1) {
        const QPixmap dense = LoadPixmap(WithEnding(name, "@2x"), 2);
        if (!dense.isNull()) return dense;
    }
    return LoadPixmap(name, 1);
}
