#pragma once

#include "formats/FormatLimits.h"

/// What the user's settings say of how large a picture in a file may be; without a sensible value there,
/// the defaults hold. Keys: "Files/LargestSide" in pixels, "Files/LargestDecodedMegabytes". Main thread only.
namespace FormatLimitSettings {
FormatLimits Read();
void Write(const FormatLimits& limits);
} // namespace FormatLimitSettings
