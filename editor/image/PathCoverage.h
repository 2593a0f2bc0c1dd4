#pragma once

#include <QImage>
#include <QPainterPath>
#include <QRect>

#include <vector>

/// How much of each pixel a path covers.
class PathCoverage
{
public:
    /// With antialiasing the part of the pixel, 0 to 255; without, 255 if the path holds the pixel's middle,
    /// where one on the edge goes to the path on its right, so that neighbours share no pixel and miss none.
    PathCoverage(const QPainterPath& path, bool isAntialiased);

    /// The coverage of the pixels of `band` (image coordinates), an image of QImage::Format_Alpha8. Throws
    /// std::bad_alloc.
    QImage Render(const QRect& band) const;

private:
    /// A side of the path that goes up or down.
    struct Edge
    {
        QPointF top;
        QPointF bottom;
        int direction; ///< 1 when the path goes down here, else -1

        /// The same for both paths that share the edge, whichever way they go.
        double XAt(double y) const
        {
            return top.x() + (y - top.y()) * (bottom.x() - top.x()) / (bottom.y() - top.y());
        }
    };

    struct Crossing
    {
        double x;
        int direction;
    };

    void AddEdge(const QPointF& from, const QPointF& to);
    void PaintBand(const QRect& band, QImage& coverage) const;
    void MarkBand(const QRect& band, QImage& coverage) const;
    void MarkRow(const std::vector<Crossing>& crossings, const QRect& band, uchar* row) const;

    QPainterPath m_Path;
    bool m_IsAntialiased;
    std::vector<Edge> m_Edges;
};
