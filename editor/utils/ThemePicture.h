#pragma once

#include <QPixmap>
#include <QString>

/// The pictures of the theme as they lie on the disk, which may be others after a change of the look: nothing
/// here is kept. Main thread only.
namespace ThemePicture {
/// The sizes in device independent pixels that the theme's pictures come in, by the ending of their names.
constexpr const char* SizeEndings[] = {"", "-16", "-40"};

/// The name as a file's: one without an ending means a PNG.
QString FileName(const QString& name);

/// "theme:x.png" with the ending put before ".png".
QString WithEnding(const QString& name, const QString& ending);

/// Null without such a file.
/// @param ratio  what the pixmap gets: Qt sees the one of "@2x" names only in folders that aren't search
/// paths.
QPixmap Load(const QString& name, qreal ratio);

/// The form for disabled controls.
QPixmap Faint(const QPixmap& pixmap);
} // namespace ThemePicture
