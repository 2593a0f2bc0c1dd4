#pragma once

#include <QColor>
#include <QString>

#include <optional>

/// Colors as people write them. Any thread.
namespace ColorText {
/// "#RRGGBB".
QString Opaque(const QColor& color);
/// "#AARRGGBB".
QString WithAlpha(const QColor& color);

/// Reads "#RGB", "#RRGGBB" and "#AARRGGBB" in any case, with or without the "#" and with blanks around.
/// Without an alpha the color is opaque. Nothing for any other text.
std::optional<QColor> Read(const QString& text);
} // namespace ColorText
