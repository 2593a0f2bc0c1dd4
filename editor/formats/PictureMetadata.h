#pragma once

#include <QByteArray>

struct Picture;

/// What goes with a picture's pixels. Any thread.
namespace PictureMetadata {
/// Resolutions above mean nothing.
constexpr double LargestDpi = 100000;

/// Whether the bytes are an ICC profile for RGB; profiles of gray and CMYK files mean nothing for pixels that
/// came in as RGB.
bool IsRgbProfile(const QByteArray& bytes);

/// Pixels per inch without the dust of other units: 72 for the 2835 pixels per meter that a file has. 0 for
/// values that mean nothing.
double TidyDpi(double dpi);

/// Turns the pixels as the Exif block says, which then says that nothing is left to turn. Throws as the
/// constructor of LXImage.
void ApplyOrientation(Picture& picture);

/// Makes resolution and Exif block tell what the pixels are now, before they are written.
void Refresh(Picture& picture);
} // namespace PictureMetadata
