#include "gui/CanvasPainter.h"

#include "gui/ReusedImage.h"
#include "image/TileThreads.h"

#include <QPainter>
#include <QScopeGuard>
#include <QtMath>

namespace {
constexpr int CheckerSize = 8;
constexpr double GridFromScale = 8;
constexpr int LargePart = 256 * 256; ///< viewport pixels
constexpr int BandHeight = 64;       ///< viewport pixels that a thread scales at a time

/// The pixels of the level that are needed to paint the part of the viewport, with a neighbour on each side
/// for the interpolation.
QRect NeededOfLevel(const QRect& exposed, const CanvasPlace& place, int level)
{
    const double scale = place.scale * (1 << level);
    const QRect part = exposed.translated(-place.origin);
    const QRect needed(QPoint(qFloor(part.left() / scale) - 1, qFloor(part.top() / scale) - 1),
                       QPoint(qCeil((part.right() + 1) / scale), qCeil((part.bottom() + 1) / scale)));
    return needed & QRect(QPoint(0, 0), ScaledTileCache::LevelSize(place.size, level));
}

void DrawScaled(QPainter& painter, const QImage& part, const QRectF& target, const CanvasPlace& place)
{
    // Single pixels stay sharp when enlarged.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, place.scale * place.ratio < 1);
    painter.drawImage(target, part, QRectF(part.rect()));
}

/// One for all views: they are painted one after the other.
ReusedImage& ScaledPixels()
{
    static ReusedImage pixels;
    return pixels;
}

/// What DrawScaled() would draw in the exposed part, made by all threads: scaling takes longer than all else
/// that a repaint of the whole view does.
QImage Scaled(const QImage& part, const QRectF& target, const QRect& exposed, const CanvasPlace& place)
{
    QImage scaled = ScaledPixels().OfSize(exposed.size());
    uchar* const pixels = scaled.bits();
    const int rowBytes = scaled.bytesPerLine();
    TileThreads::ForEach((exposed.height() + BandHeight - 1) / BandHeight, [&](int i) {
        const int top = i * BandHeight;
        const int height = qMin(BandHeight, exposed.height() - top);
        QImage band(pixels + std::ptrdiff_t(top) * rowBytes, exposed.width(), height, rowBytes,
                    QImage::Format_ARGB32_Premultiplied);
        band.fill(Qt::transparent);
        QPainter painter(&band);
        DrawScaled(painter, part, target.translated(-exposed.left(), -exposed.top() - top), place);
    });
    return scaled;
}

void PaintPicture(QPainter& painter, const QRect& exposed, const CanvasPlace& place, const LXImage32& picture,
                  ScaledTileCache& cache)
{
    const int level = place.Level();
    const QRect needed = NeededOfLevel(exposed, place, level);
    if (needed.isEmpty()) return;

    const QImage part = cache.Compose(picture, level, needed);
    const double scale = place.scale * (1 << level);
    const QRectF target(QPointF(place.origin) + QPointF(needed.topLeft()) * scale,
                        QSizeF(needed.size()) * scale);
    const bool isLarge = exposed.width() * exposed.height() >= LargePart;
    // Pixels that are of several of the device could begin between two of them.
    if (isLarge && place.ratio <= 1) {
        painter.drawImage(exposed.topLeft(), Scaled(part, target, exposed, place));
    } else {
        DrawScaled(painter, part, target, place);
    }
}

void PaintGrid(QPainter& painter, const QRect& exposed, const CanvasPlace& place)
{
    const QRect lines = NeededOfLevel(exposed, place, 0);
    for (int x = lines.left() + 1; x <= lines.right(); ++x) {
        const int viewX = place.origin.x() + qRound(x * place.scale);
        painter.drawLine(viewX, exposed.top(), viewX, exposed.bottom());
    }
    for (int y = lines.top() + 1; y <= lines.bottom(); ++y) {
        const int viewY = place.origin.y() + qRound(y * place.scale);
        painter.drawLine(exposed.left(), viewY, exposed.right(), viewY);
    }
}
} // namespace

QRect PictureBehind(const QRect& exposed, const CanvasPlace& place)
{
    const int level = place.Level();
    const QRect needed = NeededOfLevel(exposed & place.Rect(), place, level);
    if (needed.isEmpty()) return QRect();
    // The cache makes whatever is stale of a tile as soon as any of the tile is needed.
    constexpr int side = ScaledTileCache::TileSize;
    const QPoint first(needed.left() / side, needed.top() / side);
    const QPoint last(needed.right() / side, needed.bottom() / side);
    const int reach = side << level;
    return QRect(first * reach, (last + QPoint(1, 1)) * reach - QPoint(1, 1)) &
           QRect(QPoint(0, 0), place.size);
}

QRect CanvasPlace::Rect() const
{
    const QPoint end(qRound(size.width() * scale), qRound(size.height() * scale));
    return QRect(origin, origin + end - QPoint(1, 1));
}

QRect CanvasPlace::ToViewport(const QRect& docRect) const
{
    // A changed pixel reaches as far as the box that it is averaged in, and that box's neighbours.
    const int reach = scale * ratio < 1 ? 2 << Level() : 0;
    const QRect touched = docRect.adjusted(-reach, -reach, reach, reach);
    const QRectF view(QPointF(touched.topLeft()) * scale, QSizeF(touched.size()) * scale);
    return view.toAlignedRect().translated(origin);
}

int CanvasPlace::Level() const
{
    const double reduction = 1 / (scale * ratio);
    return reduction < 2 ? 0 : qMin(int(std::log2(reduction)), ScaledTileCache::MaxLevel);
}

CanvasLook CanvasLook::ForSurround(const QColor& surround)
{
    const bool dark = surround.lightness() < 128;
    CanvasLook look;
    look.surround = surround;
    look.edge = dark ? surround.darker(170) : surround.darker(125);
    look.grid = QColor(128, 128, 128, 80);
    look.checker = dark ? MakeChecker(CheckerSize, QColor(0x6a, 0x6a, 0x6a), QColor(0x5a, 0x5a, 0x5a))
                        : MakeChecker(CheckerSize, QColor(0xff, 0xff, 0xff), QColor(0xe6, 0xe6, 0xe6));
    return look;
}

void PaintCanvas(QPainter& painter, const QRect& exposed, const CanvasPlace& place, const CanvasLook& look,
                 const LXImage32& picture, ScaledTileCache& cache)
{
    const QRect canvas = place.Rect();
    painter.save();
    const auto restore = qScopeGuard([&painter] { painter.restore(); });
    painter.setClipRect(exposed, Qt::IntersectClip);
    for (const QRect& rect : QRegion(exposed) - QRegion(canvas))
        painter.fillRect(rect, look.surround);
    painter.setPen(look.edge);
    painter.drawRect(canvas.adjusted(-1, -1, 0, 0));

    const QRect shown = canvas & exposed;
    if (!shown.isEmpty()) {
        painter.setClipRect(shown, Qt::IntersectClip);
        painter.setBrushOrigin(place.origin);
        painter.fillRect(shown, look.checker);
        PaintPicture(painter, shown, place, picture, cache);
        if (place.scale >= GridFromScale) {
            painter.setPen(look.grid);
            PaintGrid(painter, shown, place);
        }
    }
}
