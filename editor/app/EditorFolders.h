#pragma once

#include "EditorExport.h"

#include <QString>

/// Where the editor finds its parts and keeps what belongs to the user. All paths are absolute.
struct ZK_EDITOR_EXPORT EditorFolders
{
    QString pluginFile;     ///< the plug-in with the basic tools
    QString resourceFolder; ///< theme, settings, patterns and samples; read only
    QString userDataFolder; ///< made at start when it is missing
    QString settingsFile;   ///< the user values

    /// The folders of a program that stands where it was built or installed: the plug-in beside
    /// `libzenkari`, the resources under the nearest `share/zenkari` above it, the user's own under the
    /// standard locations of the system.
    static EditorFolders Standard();
};
