#pragma once

#include "EditorExport.h"

#include "image/ZKCMSProfile.h"

#include <QString>

class QScreen;

/// What the window system knows of the screens and their colors. Main thread only.
namespace ScreenProfile {
/// What tells the screen from others, now and after the next start: maker, model and number of the device,
/// and where it has no number the plug that it hangs on. Empty where the window system doesn't tell, and for
/// null.
ZK_EDITOR_EXPORT QString KeyOf(const QScreen* screen);

/// What people call it; empty where the window system doesn't tell.
/// @param key  of KeyOf()
ZK_EDITOR_EXPORT QString NameOf(const QString& key);

/// The profile that a color daemon has set for the screen; null where none is, and where the window system
/// isn't X11.
/// @param key  of KeyOf(); one that no screen has stands for the first screen
ZK_EDITOR_EXPORT ZKCMSProfile Read(const QString& key);
} // namespace ScreenProfile
