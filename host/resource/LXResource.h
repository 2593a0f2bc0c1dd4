#pragma once

#include "ZKHostExport.h"

#include <QVariant>

/// Constants of the program. Any thread.
class ZK_HOST_EXPORT LXResource
{
public:
    enum ConstRole
    {
        ProductName,     ///< QString, the name in window titles
        ProductVersion,  ///< QString, "major.minor.patch"
        ApplicationName, ///< QString, the name of the program's folders and files, without blanks
    };

    LXResource() = delete;

    static QVariant GetData(ConstRole role);
};
