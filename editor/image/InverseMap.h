#pragma once

#include <QRect>

#include <optional>

class QTransform;

/// Where a target pixel lies on one axis of the source, in source pixels.
struct SourceSpan
{
    /// The root of the sum of both steps squared: as wide as a box that spreads as far as the pixel does.
    double Width() const;
    /// How much of the target pixel lies between 0 and `side` of this axis, 0 to 1.
    double Coverage(double side) const;

    double middle = 0;
    double stepAcross =
        0;               ///< how far the middle goes with one step to the right in the target, without a sign
    double stepDown = 0; ///< likewise down
};

/// Where a target pixel lies in the source.
struct SourceSpot
{
    bool isVisible = false; ///< false behind a perspective's eye
    SourceSpan x;
    SourceSpan y;
};

/// A map of target pixels to source pixels without fractions: a turn by a multiple of 90 degrees, a mirror,
/// a translation.
struct PixelMap
{
    QPoint operator()(int x, int y) const { return {xx * x + xy * y + left, yx * x + yy * y + top}; }

    bool IsTranslation() const { return xx == 1 && yy == 1; }

    int xx = 1;
    int xy = 0;
    int yx = 0;
    int yy = 1;
    int left = 0;
    int top = 0;
};

/// A number that goes on evenly over the middles of target pixels.
struct EvenPlane
{
    double At(int x, int y) const { return right * x + down * y + first; }

    double right;
    double down;
    double first; ///< of pixel (0, 0)
};

/// The middle of target pixel (x, y) lies at (X / Z, Y / Z) in the source; behind a perspective's eye Z isn't
/// above 0, and without a perspective it is 1.
struct PlanarMap
{
    EvenPlane x;
    EvenPlane y;
    EvenPlane z;
};

/// A transform of a picture, the other way round: from the target's coordinates to the source's.
class InverseMap
{
public:
    /// None for a transform that is not finite or that flattens the source.
    static std::optional<InverseMap> Of(const QTransform& transform);

    SourceSpot At(int x, int y) const;

    /// Whether columns come from columns and rows from rows.
    bool IsAxisAligned() const;

    PlanarMap AsPlanes() const;

    /// The map of pixels that this is inside the rectangle of target pixels, if it is one.
    std::optional<PixelMap> AsPixelMap(const QRect& part) const;

private:
    bool IsAffine() const { return m_XZ == 0 && m_YZ == 0; }

    // (x, y, 1) of the target goes to (X / Z, Y / Z) of the source, with X = m_XX x + m_YX y + m_1X and so
    // on.
    double m_XX = 1;
    double m_YX = 0;
    double m_1X = 0;
    double m_XY = 0;
    double m_YY = 1;
    double m_1Y = 0;
    double m_XZ = 0;
    double m_YZ = 0;
    double m_1Z = 1;
};
