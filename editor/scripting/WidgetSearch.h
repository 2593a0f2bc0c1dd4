#pragma once

#include <QList>
#include <QString>

class QWidget;

/// Finding widgets of the program by what a person or its author calls them. Main thread only.
///
/// A path is one name or several, parted by "/". Each is an object name, a class or a window title and stands
/// for a widget somewhere below the one before; the first is looked for among all windows and their widgets.
namespace WidgetSearch {
/// All that match, those on the screen first. @param below  null: everywhere
QList<QWidget*> FindAll(const QString& path, QWidget* below = nullptr);

/// The one on the screen or, when none is, the one that is hidden. Throws a ScriptError when there is none or
/// when it is not clear which.
QWidget* Find(const QString& path, QWidget* below = nullptr);

/// The widget and everything below it, a line each; hidden ones are marked. Null: all windows.
QString Tree(QWidget* top);
} // namespace WidgetSearch
