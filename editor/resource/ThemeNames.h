#pragma once

#include <QRegularExpression>
#include <QString>

/// How the pictures of the theme are named.
namespace ThemeNames {
/// Whether a picture of this name, without folder and ending, is for the pointer: "move_tool_cursor",
/// "pen_cursor_add", "zoom-cursor", "finger_cur". Such a picture comes in one size.
inline bool IsCursor(const QString& name)
{
    return name.contains(QRegularExpression(QStringLiteral("[_-]cur(sor)?(_|$)")));
}
} // namespace ThemeNames
