#pragma once

#include <QString>

class QWidget;

/// What tools tell the user: message boxes with the button Close. They wait for it. Main thread only.
namespace Messages {
/// Something that the user asked for can't be done.
/// @param parent  the widget that is covered; may be null.
void ShowWarning(QWidget* parent, const QString& text);

/// An operation failed for a reason that the user can't know. Covers the main window.
void ShowOperationError(const QString& text);
} // namespace Messages
