#pragma once

#include <QMetaType>

/// How an adjustment layer changes the colors below it. A value; any thread.
///
/// Every formula takes and gives straight colors, each channel from 0 to 255, rounded to nearest and cut to
/// that range at its end. Alpha stays as it is.
///
/// - **Brightness and contrast:** `c' = (c - 127.5) tan((contrast / 100 + 1) pi / 4) + 127.5 + 2.55
///   brightness`. A contrast of -100 leaves one gray, one of 100 black and white.
/// - **Levels**, each channel: `t = (c - inBlack) / (inWhite - inBlack)` cut to 0 to 1, then
///   `c' = outBlack + t^(1 / gamma) (outWhite - outBlack)`. Where inWhite isn't above inBlack, what is above
///   inBlack counts as 1 and the rest as 0.
/// - **Hue and saturation**, in hue, saturation and lightness (the mean of the largest and the smallest
///   channel): the hue is turned by `hue` degrees, the saturation multiplied by `1 + saturation / 100` and
///   cut at 1, then the color goes the part `lightness / 100` of its way to white, or `-lightness / 100` to
///   black. Gray stays gray.
/// - **Invert:** `c' = 255 - c`.
struct LXAdjustment
{
    enum Kind
    {
        BrightnessContrast = 0,
        Levels = 1,
        HueSaturation = 2,
        Invert = 3
    };

    Kind kind = BrightnessContrast;

    int brightness = 0; ///< -100 to 100
    int contrast = 0;   ///< -100 to 100

    int inBlack = 0; ///< 0 to 255, as the next three
    int inWhite = 255;
    int outBlack = 0;
    int outWhite = 255;
    double gamma = 1; ///< 0.1 to 10

    int hue = 0;        ///< degrees, -180 to 180
    int saturation = 0; ///< -100 to 100
    int lightness = 0;  ///< -100 to 100

    friend bool operator==(const LXAdjustment& a, const LXAdjustment& b)
    {
        return a.kind == b.kind && a.brightness == b.brightness && a.contrast == b.contrast &&
               a.inBlack == b.inBlack && a.inWhite == b.inWhite && a.outBlack == b.outBlack &&
               a.outWhite == b.outWhite && a.gamma == b.gamma && a.hue == b.hue &&
               a.saturation == b.saturation && a.lightness == b.lightness;
    }

    friend bool operator!=(const LXAdjustment& a, const LXAdjustment& b) { return !(a == b); }
};

Q_DECLARE_METATYPE(LXAdjustment)
