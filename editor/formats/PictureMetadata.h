#pragma once

#include "image/ZKEXIFElement.h"

#include <QByteArray>
#include <QList>

struct Picture;
class QString;
class ZKCMSProfile;

/// What goes with a picture's pixels. Any thread.
namespace PictureMetadata {
/// Resolutions above mean nothing.
constexpr double LargestDpi = 100000;

/// What of an ICC profile in a file becomes the picture's: all of one for RGB. Damaged ones and those of gray
/// and CMYK files, which mean nothing for pixels that came in as RGB, are told as the picture's problem.
/// @param bytes  empty for a file without one
void TakeProfile(const QByteArray& bytes, Picture& picture);

/// The words for a profile that can't be a picture's.
QString ProfileProblem(const ZKCMSProfile& profile);
/// And for one that the format's library gives no bytes of.
QString RefusedProfileProblem();

/// The whole Exif block among what an image carries along; empty without one.
QByteArray ExifOf(const QList<ZKEXIFElement>& elements);

/// Pixels per inch without the dust of other units: 72 for the 2835 pixels per meter that a file has. 0 for
/// values that mean nothing.
double TidyDpi(double dpi);

/// Turns the pixels as the Exif block says, which then says that nothing is left to turn. Throws as the
/// constructor of LXImage.
void ApplyOrientation(Picture& picture);

/// Makes resolution and Exif block tell what the pixels are now, before they are written.
void Refresh(Picture& picture);
} // namespace PictureMetadata
