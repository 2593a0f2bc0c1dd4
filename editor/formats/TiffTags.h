#pragma once

#include <QByteArray>

class QIODevice;

/// What stands beside the pixels of a TIFF file's first picture and what Qt's reader and writer change on the
/// way: they take only color profiles that they can compute with, and whole dots per meter. Any thread.
namespace TiffTags {
struct Tags
{
    QByteArray iccProfile;         ///< as it stands there; empty without one
    bool hasBrokenProfile = false; ///< there is one, and its bytes can't be had
    double dpi = 0;                ///< pixels per inch; 0 when nobody says
};

/// @param device  a whole file with random access; its place is another one afterwards
Tags Read(QIODevice& device);

/// Writes profile and resolution, as far as there are, into a file that is whole otherwise and has no
/// profile.
/// @param device  open for reading and writing, with random access
bool Write(QIODevice& device, const Tags& tags);
} // namespace TiffTags
