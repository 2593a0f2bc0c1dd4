#pragma once

#include "EditorExport.h"

#include <QString>

/// The folders that the program reads and writes; absolute, without a trailing slash.
struct ZK_EDITOR_EXPORT ApplicationFolders
{
    QString config;    ///< the person's settings
    QString data;      ///< what else the program writes for this person
    QString resources; ///< what came with the program; only read

    /// The places that the system names for them. In the test mode of QStandardPaths, config and data are
    /// fresh folders that go with the process, so that tests see neither the person's settings nor each
    /// other's.
    static ApplicationFolders Default();

    /// The same, but with config and data below a folder that is the program's alone.
    static ApplicationFolders Below(const QString& userFolder);
};
