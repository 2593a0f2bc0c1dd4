#pragma once

#include <QRect>
#include <QString>
#include <QStringList>
#include <QVariant>

class QWidget;

/// What a widget shows, whatever kind of control it is. Main thread only.
namespace WidgetReading {
/// What can be read on it, without marks for keys: of a label, a button, a field, a group, a message box.
QString Text(const QWidget* widget);

/// Of spin boxes, sliders and progress bars; the color of color buttons and of the color dialog, as scripts
/// write it; of a histogram `{first, last}`, the levels that are chosen; of a navigator its frame as
/// `{x, y, width, height}`, document pixels; of a magnifier `{x, y, scale, grid}`, the point in document
/// pixels and the grid as a word; invalid for others.
QVariant Value(const QWidget* widget);

/// The texts of a list, a combo box, tabs or a menu; the names of the cells of a control of nine.
QStringList Items(const QWidget* widget);

/// Which of the items is the current one; -1 for none.
int Index(const QWidget* widget);

/// What is seen of an item of a list, tabs or a menu, in pixels of the list's viewport or of the widget; null
/// for nothing.
QRect ItemGeometry(const QWidget* widget, int index);

/// Class, name, text and state in one line.
QString Line(const QWidget* widget);

/// A path by which the widget may be found, as far as there are names.
QString Path(const QWidget* widget);

/// A text without the marks for keys: "&Save" is "Save".
QString WithoutMnemonic(const QString& text);
} // namespace WidgetReading
