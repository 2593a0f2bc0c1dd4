#pragma once

/// The modes of BlendOn, BlendMaskOn, FillPath and DrawImage: the numbers of `QPainter::CompositionMode`,
/// and above them those of the editor. Saved files and user values hold these numbers.
///
/// s is the source's strength (its alpha x opacity x mask), d the target's alpha, both 0 to 255.
namespace BlendMode {
enum : unsigned int
{
    Normal = 0,         ///< the source over the target
    Source = 3,         ///< all four bytes are replaced; below full strength, mixed
    SourceIn = 5,       ///< the source's color whole, alpha = s x d: colors a coverage
    DestinationIn = 6,  ///< alpha = d x s: cuts by a selection
    DestinationOut = 8, ///< alpha = d - d x s: takes a selection out
    Addition = 12,
    Multiply = 13,
    Screen = 14,
    Overlay = 15,
    Darken = 16,
    Lighten = 17,
    ColorDodge = 18,
    ColorBurn = 19,
    HardLight = 20,
    SoftLight = 21,
    Difference = 22,
    Exclusion = 23,
    GrayToMask = 64,     ///< the source's lightness into the target's alpha: paints gray into a mask
    MergeCoverage = 91,  ///< as Normal, for a picture whose alpha is its coverage
    CoverageToAlpha = 92 ///< alpha = s: the target takes the source's coverage and keeps its color
};
} // namespace BlendMode
