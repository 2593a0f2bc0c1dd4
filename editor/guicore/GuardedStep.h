#pragma once

#include <QString>

#include <functional>

class QWidget;

/// The edge at which a change of a document that a person asked for may fail: memory and the disk for
/// temporary files come to an end, and that is no reason to lose what is open. The change itself leaves the
/// document as it was when it throws. Whatever else is thrown is a fault of the program and goes on. Main
/// thread only.
namespace GuardedStep {
/// Runs the step; what it lacked, in words for the person, or nothing.
QString Try(const std::function<void()>& step);

/// Shows such words in a message box and waits for it.
/// @param parent  a widget of the window that is covered; may be null
void Tell(QWidget* parent, const QString& failure);

/// Both: false when the step failed and the person has been told.
bool Run(QWidget* parent, const std::function<void()>& step);
} // namespace GuardedStep
