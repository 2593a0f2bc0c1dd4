#include "utils/ZKIconHelper.h"

#include "utils/ThemeIconEngine.h"
#include "utils/ThemePicture.h"

#include <QFileInfo>
#include <QGuiApplication>

QIcon ZKIconHelper::DisabledIcon(const QString& name)
{
    const QString file = ThemePicture::FileName(name);
    return QFileInfo::exists(file) ? QIcon(new ThemeIconEngine(file)) : QIcon();
}

QIcon ZKIconHelper::DisabledIcon(const QPixmap& pixmap)
{
    QIcon icon;
    if (pixmap.isNull()) return icon;

    icon.addPixmap(pixmap, QIcon::Normal);
    // Else Qt tints it with the ground of the selected row.
    icon.addPixmap(pixmap, QIcon::Selected);
    icon.addPixmap(ThemePicture::Faint(pixmap), QIcon::Disabled);
    return icon;
}

QPixmap ZKIconHelper::ThemePixmap(const QString& name, qreal ratio)
{
    const QString file = ThemePicture::FileName(name);
    const qreal wanted = ratio > 0 ? ratio : qGuiApp->devicePixelRatio();
    if (wanted > 1) {
        const QPixmap dense = ThemePicture::Load(ThemePicture::WithEnding(file, "@2x"), 2);
        if (!dense.isNull()) return dense;
    }
    return ThemePicture::Load(file, 1);
}
