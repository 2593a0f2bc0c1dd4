#pragma once

#include "image/LXImage.h"

#include <QString>

/// A picture that was copied.
struct ClipboardItem
{
    LXImage32 m_Image;
    QString m_Name;
    unsigned int m_Crc = 0; ///< of the pixels
};
