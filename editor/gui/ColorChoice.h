#pragma once

#include <QColor>

/// A color in the cylinder of hue, saturation and value.
struct HsvColor
{
    double hue = 0;        ///< degrees from red over green and blue, 0 to below 360
    double saturation = 0; ///< 0 gray, 1 pure
    double value = 0;      ///< 0 black, 1 the brightest

    bool operator==(const HsvColor& other) const
    {
        return hue == other.hue && saturation == other.saturation && value == other.value;
    }
};

/// Red, green and blue as 0 to 255, rounded; opaque.
QRgb ToRgb(const HsvColor& color);

/// @param before  what a color leaves open comes from it: a gray has no hue, black no saturation either
HsvColor ToHsv(QRgb color, const HsvColor& before);

/// A color that a person is choosing, in two models at a time: what was set stays exactly as it was set, and
/// the other model follows. So a hue is not lost on the way through gray, nor a saturation on the way through
/// black.
class ColorChoice
{
public:
    /// Opaque black.
    ColorChoice() = default;

    /// Of the model RGB, with alpha.
    QColor GetColor() const;

    const HsvColor& GetHsv() const { return m_Hsv; }

    /// An invalid color is ignored, and the present one leaves the other model as it is.
    void SetColor(const QColor& color);
    /// Values outside their ranges are cut off there; 360 degrees are 0 again. The alpha stays.
    void SetHsv(const HsvColor& color);
    /// 0 to 255.
    void SetAlpha(int alpha);

private:
    QRgb m_Rgb = qRgb(0, 0, 0);
    HsvColor m_Hsv;
    int m_Alpha = 255;
};
