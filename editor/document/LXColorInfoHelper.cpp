#include "document/LXColorInfoHelper.h"

#include "document/LXColorTransformBase.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/MergedPartReader.h"

namespace {
constexpr int LargestRadius = 3;
constexpr unsigned int MergedPictureId = 0;

/// Sums of up to 7 x 7 pixels, the colors weighted by alpha.
struct WeightedSum
{
    int red = 0;
    int green = 0;
    int blue = 0;
    int alpha = 0;

    void Add(LXRGBA32i pixel)
    {
        red += pixel.Red() * pixel.Alpha();
        green += pixel.Green() * pixel.Alpha();
        blue += pixel.Blue() * pixel.Alpha();
        alpha += pixel.Alpha();
    }

    QColor Mean(int pixelCount) const
    {
        if (alpha == 0) return QColor(0, 0, 0, 0);
        const auto rounded = [](int sum, int weight) { return (sum + weight / 2) / weight; };
        return QColor(rounded(red, alpha), rounded(green, alpha), rounded(blue, alpha),
                      rounded(alpha, pixelCount));
    }
};

QRect SquareRound(const QPoint& point, int radius)
{
    const int reach = qBound(0, radius, LargestRadius);
    return QRect(point, QSize(1, 1)).adjusted(-reach, -reach, reach, reach);
}

/// The mean over `square`, of which the image covers a part or nothing.
QColor MeanOver(const LXImage32& image, const QPoint& offset, const QRect& square)
{
    WeightedSum sum;
    const QRect covered = square.translated(-offset) & image.Rect();
    for (int y = covered.top(); y <= covered.bottom(); ++y) {
        for (int x = covered.left(); x <= covered.right(); ++x) {
            sum.Add(image.GetColor(x, y));
        }
    }
    return sum.Mean(square.width() * square.height());
}
} // namespace

LXColorTransformBase::~LXColorTransformBase() = default;

QColor LXColorInfoHelper::AverageColor(const LXDocumentInterface* document, unsigned int id,
                                       const QPoint& point, int radius)
{
    if (!document) return QColor();
    const QRect canvas(QPoint(0, 0), document->GetDocumentSize());
    if (!canvas.contains(point)) return QColor();

    const QRect square = SquareRound(point, radius) & canvas;
    if (id == MergedPictureId) {
        // The pointer needs a few pixels of a picture that may be large, and many times a second.
        const MergedPartReader reader(document, square);
        return MeanOver(*document->GetLayerImage(id), QPoint(0, 0), square);
    }
    const LXDocumentLayerLockerForRead locker(document, id);
    const LXImage32* image = document->GetLayerImage(id);
    return image ? MeanOver(*image, document->GetLayerGeometry(id).topLeft(), square) : QColor();
}

QColor LXColorInfoHelper::AverageColor(const LXDocumentInterface* document, unsigned int id,
                                       const QPoint& point, int radius, const LXColorTransformBase& transform)
{
    QColor color = AverageColor(document, id, point, radius);
    if (color.isValid()) transform(color);
    return color;
}

QColor LXColorInfoHelper::AverageColor(const LXImage32& image, const QPoint& point, int radius)
{
    if (!image.Rect().contains(point)) return QColor();
    return MeanOver(image, QPoint(0, 0), SquareRound(point, radius) & image.Rect());
}
