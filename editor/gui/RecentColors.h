#pragma once

#include <QColor>
#include <QList>

/// The colors that a person chose last, kept with the settings. Main thread only.
namespace RecentColors {
constexpr int Most = 16;

/// The latest first. What isn't a color in the settings is left out.
QList<QColor> Read();

/// Puts the color first; one that was there moves. An invalid color is ignored.
void Add(const QColor& color);

/// The list with the color in front, once, and not longer than Most.
QList<QColor> WithFirst(QList<QColor> colors, const QColor& color);

/// The list without alpha, each color once.
QList<QColor> Opaque(const QList<QColor>& colors);
} // namespace RecentColors
