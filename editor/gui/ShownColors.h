#pragma once

class LXColorTransformBase;
class QImage;

/// Turns the colors of a picture into those of the screen; alpha stays.
/// @param image      Format_ARGB32_Premultiplied
/// @param transform  null leaves every color alone
/// Any thread.
void ToShownColors(QImage& image, const LXColorTransformBase* transform);
