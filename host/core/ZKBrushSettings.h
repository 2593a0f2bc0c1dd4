#pragma once

/// How a brush paints. What lies outside of a range is brought to its nearer end by the brush that takes it.
struct ZKBrushSettings
{
    static constexpr int MaxSize = 2000;
    static constexpr int MaxSpacing = 1000;

    int size = 20;     ///< across, 1 to MaxSize pixels
    int hardness = 80; ///< percent, 0 to 100: how much of the brush has its whole strength
    int opacity = 100; ///< percent, 0 to 100, of the stroke as a whole
    int spacing = 10;  ///< percent of the size, 1 to MaxSpacing, from one touch to the next

    bool operator==(const ZKBrushSettings& other) const
    {
        return size == other.size && hardness == other.hardness && opacity == other.opacity &&
               spacing == other.spacing;
    }
};
