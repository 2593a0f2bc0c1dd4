#pragma once

#include "document/ForeignContent.h"
#include "document/LXGuide.h"
#include "image/ZKCMSProfile.h"

#include <QString>

/// What a document has beside its layers and its selection, as a value that copies take over.
struct DocumentProperties
{
    QString name;
    ZKCMSProfile profile;
    double dpi = 72.0;
    int unit = 0;
    LXGuides guides;
    ForeignDocumentContent foreign;
};
