#include "scripting/CursorWords.h"

#include "resource/ThemeNames.h"
#include "utils/ZKIconHelper.h"

#include <QCursor>
#include <QDir>
#include <QJSEngine>
#include <QMetaEnum>
#include <QPixmap>

namespace {
/// The name of the theme's picture that looks like this one, without prefix and ending; empty for none.
QString ThemeName(const QPixmap& pixmap)
{
    const QImage wanted = pixmap.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QDir theme(QDir::searchPaths(QStringLiteral("theme")).value(0));
    const QStringList files = theme.entryList({QStringLiteral("*cur*.png")}, QDir::Files, QDir::Name);
    for (const QString& file : files) {
        QString base = file.left(file.lastIndexOf('.'));
        if (!ThemeNames::IsCursor(base)) continue;
        const QString name = QStringLiteral("theme:") + file;
        const QPixmap candidate = ZKIconHelper::ThemePixmap(name, pixmap.devicePixelRatio());
        if (candidate.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied) == wanted) {
            return base;
        }
    }
    return {};
}

QString ShapeName(Qt::CursorShape shape)
{
    QString name = QString::fromLatin1(QMetaEnum::fromType<Qt::CursorShape>().valueToKey(shape));
    return name.remove(QStringLiteral("Cursor"));
}
} // namespace

QJSValue CursorWords::ToValue(QJSEngine& engine, const QCursor& cursor)
{
    QJSValue value = engine.newObject();
    if (cursor.shape() != Qt::BitmapCursor) {
        value.setProperty(QStringLiteral("shape"), ShapeName(cursor.shape()));
        return value;
    }
    const QString theme = ThemeName(cursor.pixmap());
    if (theme.isEmpty()) {
        value.setProperty(QStringLiteral("shape"), ShapeName(Qt::BitmapCursor));
    } else {
        value.setProperty(QStringLiteral("theme"), theme);
    }
    value.setProperty(QStringLiteral("x"), cursor.hotSpot().x());
    value.setProperty(QStringLiteral("y"), cursor.hotSpot().y());
    return value;
}
