#pragma once

#include "EditorExport.h"

#include <QPixmap>
#include <QString>

class QWidget;

/// Pictures of the program's own windows, as a person sees them. Main thread only.
namespace WindowPicture {
/// The window with everything that lies over it: dialogs, menus, tool tips.
ZK_EDITOR_EXPORT QPixmap OfScreen(QWidget* window);

/// The title and the words of a window, for a message about it: "Title: text".
ZK_EDITOR_EXPORT QString WordsOf(const QWidget* window);
} // namespace WindowPicture
