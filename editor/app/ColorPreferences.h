#pragma once

#include "EditorExport.h"

#include "image/ZKCMSTransform.h"

#include <QString>

/// What the person has set about colors. A plain value. Main thread only.
struct ZK_EDITOR_EXPORT ColorPreferences
{
    /// In the place of a file, for a screen that shall count as sRGB whatever it says of itself.
    static constexpr const char* PlainScreen = "sRGB";

    QString workingProfile; ///< a file; empty for sRGB
    QString screen;         ///< which one the next is for, as ScreenProfile::KeyOf(); empty for all
    QString screenProfile;  ///< a file or PlainScreen; empty for what the screen says of itself, else sRGB
    ZKCMSRendering rendering;

    /// A screen that nothing was chosen for has what was chosen for all.
    /// @param screen  as ScreenProfile::KeyOf()
    static ColorPreferences Read(const QString& screen = QString());
    /// Leaves what was chosen for other screens.
    void Write() const;

    /// Makes the program follow them. What can't be had, since its file is gone, say, counts as sRGB.
    /// @return what can't, in words for the person; empty when all was well
    QString Use() const;

    friend bool operator==(const ColorPreferences& a, const ColorPreferences& b)
    {
        return a.workingProfile == b.workingProfile && a.screen == b.screen &&
               a.screenProfile == b.screenProfile && a.rendering == b.rendering;
    }
};
