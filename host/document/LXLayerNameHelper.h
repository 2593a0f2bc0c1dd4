#pragma once

#include "ZKHostExport.h"

#include <QString>

class LXDocumentInterface;

/// Names for layers that nobody has named. Main thread.
class ZK_HOST_EXPORT LXLayerNameHelper
{
public:
    enum MakeMode
    {
        New = 0, ///< a numbered name
        Copy = 1 ///< the name of the layer with that id, marked as a copy
    };

    LXLayerNameHelper() = delete;

    /// A name that no layer of the document has. Copying a bad id gives a new name; a null document an empty
    /// one.
    static QString MakeDefaultName(const LXDocumentInterface* document, MakeMode mode, unsigned int id);
};
