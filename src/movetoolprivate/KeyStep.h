#pragma once

/// How many document pixels a key moves the selection. Steps of keys are steps on the screen: of a picture
/// that is shown smaller, more document pixels lie under them.
/// @param step   in screen pixels
/// @param scale  screen pixels for a document pixel
inline int KeyStepInDocument(int step, double scale)
{
    const bool isShrunk = scale > 0 && scale < 1;
    return isShrunk ? static_cast<int>(step / scale) : step;
}
