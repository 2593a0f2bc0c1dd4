#pragma once

#include "EditorExport.h"

#include "app/ColorPreferences.h"
#include "formats/FormatLimits.h"
#include "resource/Theme.h"

#include <QtGlobal>

/// What the person has set for the whole program. A plain value; reading and writing it changes nothing but
/// the settings file. Main thread only.
struct ZK_EDITOR_EXPORT Preferences
{
    static constexpr int LeastMemoryMegabytes = 64;
    static constexpr double LeastScale = 1.0;
    static constexpr double MostScale = 2.0;

    int memoryMegabytes =
        0; ///< of all pictures, before tiles go to the disk; 0 for what the program takes by itself
    int undoSteps = 200;      ///< of each picture; 0 for no limit
    int undoMegabytes = 2048; ///< of each picture's history; 0 for no limit
    Theme::Look look = Theme::Look::Dark;
    double scale = LeastScale; ///< of everything on the screen; counts from the next start on
    FormatLimits fileLimits;
    ColorPreferences colors;

    /// What the settings file says. A value that is missing, no number or out of range is the default's.
    /// @param screen  whose profile is read, as ScreenProfile::KeyOf()
    static Preferences Read(const QString& screen = QString());
    void Write() const;

    /// The scale alone, before there is an application object.
    static double ReadScale();
};
