#include "scripting/PixelReading.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "image/LXImage.h"
#include "image/LXImageConvert.h"

#include <cstring>

namespace {
constexpr int MaskRevealed = 255;

/// The part inside `rect` of an image whose top left lies at `origin`, on a picture of that rectangle.
QImage Cut(const LXImage32& image, const QPoint& origin, const QRect& rect, QRgb outside)
{
    QImage result(rect.size(), QImage::Format_ARGB32);
    if (result.isNull()) throw std::bad_alloc();
    result.fill(outside);
    const QRect part = rect.translated(-origin) & image.Rect();
    if (part.isEmpty()) return result;

    QImage pixels;
    ConvertImage(CopyPart(image, part), pixels);
    const QPoint place = part.topLeft() + origin - rect.topLeft();
    const std::size_t rowBytes = static_cast<std::size_t>(part.width()) * sizeof(QRgb);
    for (int y = 0; y < part.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(result.scanLine(place.y() + y));
        std::memcpy(row + place.x(), pixels.constScanLine(y), rowBytes);
    }
    return result;
}

/// Masks hold their value in the alpha byte.
QImage AlphaOf(const QImage& pixels)
{
    QImage values(pixels.size(), QImage::Format_Grayscale8);
    for (int y = 0; y < pixels.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
        uchar* to = values.scanLine(y);
        for (int x = 0; x < pixels.width(); ++x)
            to[x] = static_cast<uchar>(qAlpha(from[x]));
    }
    return values;
}
} // namespace

QImage PixelReading::OfLayer(const LXDocumentInterface* document, unsigned int id, const QRect& rect)
{
    const LXDocumentLayerLockerForRead locker(document, id);
    return Cut(*document->GetLayerImage(id), document->GetLayerGeometry(id).topLeft(), rect, 0);
}

QImage PixelReading::OfMask(const LXDocumentInterface* document, unsigned int id, const QRect& rect)
{
    const LXDocumentLayerLockerForRead locker(document, id);
    bool reveals = true;
    document->GetMaskInverted(id, &reveals);
    const QRgb outside = qRgba(0, 0, 0, reveals ? MaskRevealed : 0);
    return AlphaOf(Cut(*document->GetMaskImage(id), document->GetMaskGeometry(id).topLeft(), rect, outside));
}

QImage PixelReading::OfSelection(const LXDocumentInterface* document, const QRect& rect)
{
    const LXDocumentSelectionLockerForRead locker(document);
    return AlphaOf(Cut(document->GetSelectionMask(), document->GetSelectionMaskOffset(), rect, 0));
}
