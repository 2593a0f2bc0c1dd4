#pragma once

#include "image/LXImage.h"

#include <QByteArray>
#include <QString>

/// What a flat picture file holds, as a value that any thread may hand on: pixels, and what belongs to them.
struct Picture
{
    LXImage32 image;       ///< straight alpha, upright
    QByteArray iccProfile; ///< as it stood in the file; empty for a picture without one, which means sRGB
    /// Why the profile that stood in the file was left out, in words for the user; empty when none was.
    QString profileProblem;
    QByteArray exif; ///< a TIFF block without the "Exif" mark before it; empty without one
    double dpi = 0;  ///< pixels per inch; 0 when nobody says
};
