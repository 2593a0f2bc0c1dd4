#pragma once

#include <QByteArray>

/// One piece of metadata that an image carries along unread.
struct ZKEXIFElement
{
    int tag = 0;      ///< the Exif tag; 0 when `value` is a whole Exif block
    QByteArray value; ///< the bytes as the file had them

    friend bool operator==(const ZKEXIFElement& a, const ZKEXIFElement& b)
    {
        return a.tag == b.tag && a.value == b.value;
    }

    friend bool operator!=(const ZKEXIFElement& a, const ZKEXIFElement& b) { return !(a == b); }
};
