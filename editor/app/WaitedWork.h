#pragma once

#include "formats/FileProgress.h"

#include <QString>

#include <functional>

class QWidget;

/// Work on a worker thread while the user waits for it.
namespace WaitedWork {
/// Runs the work and returns when it has ended. In between events are handled, but the user can do nothing
/// else; after a moment a dialog shows how far it is. An exception of the work comes out of this call.
/// Main thread only.
/// @param parent  the window that the dialog covers
/// @param canCancel  whether the dialog has a button to stop
void Run(QWidget* parent, const QString& label, bool canCancel,
         const std::function<void(const FileProgress&)>& work);
} // namespace WaitedWork
