#pragma once

#include "history/CanvasState.h"
#include "history/ImageSizeCommandData.h"

/// The insides of ImageSizeCommandData, for its command.
class ImageSizeCommandDataPrivate
{
public:
    static ImageSizeCommandDataPrivate* Get(ImageSizeCommandData* data) { return data->m_pPrivate.get(); }

    QSize oldSize;
    double oldResolution = 0.0;
    QSize newSize;
    double newResolution = 0.0;
    bool isResampled = false;
    ImageSizeCommandData::ResampleType type = ImageSizeCommandData::Bicubic;
    CanvasState before; ///< as the last redo found the document; empty when only the resolution changes
};
