#pragma once

#include <QtGlobal>

/// One touch of a round brush: whole strength in the middle, fading towards the edge.
///
/// Distances are counted in 16ths of a pixel, and middles of dabs lie on that grid, so that the square of a
/// distance is a whole number and the strongest of many dabs is that of the nearest middle.
class RoundDab
{
public:
    static constexpr int Unit = 16; ///< of a pixel's side
    static constexpr double MaxDiameter = 2000;

    /// @param diameter  pixels, brought between 1 and MaxDiameter
    /// @param hardness  0 to 1: the part of the radius that has whole strength. The edge of the hardest dab
    ///                  still fades over a pixel, half of it outside the radius.
    RoundDab(double diameter, double hardness);

    /// From here on it has no strength, in units.
    int Reach() const { return m_Reach; }

    /// Up to this square of a distance it has whole strength; -1 if nowhere.
    int FullSquare() const { return m_FullSquare; }

    /// 0 to 255, by the square of the distance to the middle, in units.
    quint8 Strength(int square) const;

private:
    double m_Inner; ///< whole strength up to here, in units
    double m_Outer; ///< none from here on
    int m_Reach;
    int m_FullSquare;
};
