#pragma once

#include "EditorExport.h"

#include <QString>

/// The size of everything on the screen, which Qt takes once, when the application object is made.
namespace ScreenScale {
/// Takes the scale out of the preferences, for the application object that is made next. A scale that the
/// environment sets (QT_SCALE_FACTOR) holds.
/// @param userFolder  as `CommandLine::userFolder`
ZK_EDITOR_EXPORT void UseForStart(const QString& userFolder);
} // namespace ScreenScale
