#pragma once

#include "EditorExport.h"

#include "image/ZKCMSProfile.h"

/// What the window system knows of the screen's colors.
namespace ScreenProfile {
/// The profile that a color daemon has set for the first screen; null where none is, and where the window
/// system isn't X11. Main thread only.
ZK_EDITOR_EXPORT ZKCMSProfile Read();
} // namespace ScreenProfile
