#pragma once

#include "document/LXPathElement.h"

#include <QString>

/// One path of a document as a value.
struct DocumentPath
{
    QString name;
    LXSubPaths subPaths;
    bool isVisible = false; ///< LXPathsListModel::GetPathVisible
};
