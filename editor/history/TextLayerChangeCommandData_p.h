#pragma once

#include "document/TextContent.h"
#include "history/TextLayerChangeCommandData.h"

/// The values before and after.
class TextLayerChangeCommandDataPrivate
{
public:
    static TextLayerChangeCommandDataPrivate* Get(TextLayerChangeCommandData* data)
    {
        return data->m_pPrivate.get();
    }

    quint32 id = 0;
    TextContent undo;
    TextContent redo;
    bool hasRedo = false; ///< read from the layer already
};
