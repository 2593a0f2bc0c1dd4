#pragma once

#include "EditorExport.h"

/// The program without a display. Main thread only.
namespace HeadlessPlatform {
/// Before the application object is made: chooses Qt's offscreen platform, and keeps what that can't do, and
/// what only a desktop needs, off the error output, where a script's own lines go.
ZK_EDITOR_EXPORT void Choose();

/// The offscreen platform has no system font, and its stand-in is larger than any desktop's. Does nothing on
/// other platforms.
ZK_EDITOR_EXPORT void UseReadableFont();
} // namespace HeadlessPlatform
