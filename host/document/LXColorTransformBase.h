#pragma once

#include "ZKHostExport.h"

class QColor;

/// Turns colors of one meaning into colors of another, such as a document's into the screen's. Any thread.
class ZK_HOST_EXPORT LXColorTransformBase
{
public:
    virtual ~LXColorTransformBase();

    /// Alpha stays; an invalid color stays invalid.
    virtual void operator()(QColor& color) const = 0;
};
