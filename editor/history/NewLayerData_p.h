#pragma once

#include "document/TextContent.h"
#include "history/NewLayerData.h"

/// What a new layer is, a text or not.
class NewLayerDataPrivate
{
public:
    static NewLayerDataPrivate* Get(NewLayerData* data) { return data->m_pPrivate.get(); }

    quint32 id = 0;
    QString name;
    quint32 blendMode = 0;
    quint32 locks = 0;
    double opacity = 1.0;
    bool isMaskCreated = false;
    bool isText = false;
    TextContent text;
};
