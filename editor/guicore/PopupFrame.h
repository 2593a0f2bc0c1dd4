#pragma once

#include <QMargins>

class QWidget;

/// The thin line round windows that the window system gives no frame. Main thread only.
namespace PopupFrame {
/// What the line takes of each side.
inline constexpr QMargins Margins(1, 1, 1, 1);

/// Draws it, inside of a paint event of the widget.
void Paint(QWidget& window);
} // namespace PopupFrame
