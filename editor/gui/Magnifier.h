#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <vector>

/// Which pixels of a picture a magnifying glass shows, and where. A value.
class Magnifier
{
public:
    /// @param pixel  of the picture, stands in the middle
    /// @param scale  device pixels for each pixel of the picture, at least 1
    /// @param size   of what is shown, device pixels
    Magnifier(const QPoint& pixel, double scale, const QSize& size);

    /// The pixel of the picture that is shown in a device column, and in a device row.
    const std::vector<int>& Columns() const { return m_Columns; }

    const std::vector<int>& Rows() const { return m_Rows; }

    /// What of the picture is shown at all; as if the picture had no end.
    QRect Seen() const;

    /// Where a part of the picture shows, device pixels; empty when it doesn't.
    QRect Place(const QRect& part) const;

    /// Each pixel as a square, and transparent round the picture.
    /// @param pixels   premultiplied; has the part of the picture that is seen
    /// @param topLeft  of the pixels in the picture
    QImage Enlarge(const QImage& pixels, const QPoint& topLeft) const;

    /// The levels of the wheel: the next scale above, or below, in whole steps that grow with it.
    static double NextScale(double scale);
    static double FormerScale(double scale);

private:
    QSize m_Size;
    std::vector<int> m_Columns;
    std::vector<int> m_Rows;
};

/// What the lines of a grid do to the pixels that they cross.
struct MagnifierGrid
{
    enum class Kind
    {
        Standard,
        Lighten,
        Darken
    };

    Kind kind = Kind::Standard;
    double strength = 1; ///< 0 to 1
    int width = 1;       ///< of a line, device pixels
};

/// Draws lines on the first device columns and rows of each pixel of the part, and after its last.
/// @param image  opaque, 32 bits, of the magnifier's size
void DrawGrid(QImage& image, const Magnifier& magnifier, const QRect& part, const MagnifierGrid& grid);
