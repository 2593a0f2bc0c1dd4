#include "clipboardprivate/ClipboardPixels.h"

#include "common/MaskBlend.h"
#include "image/LXImageConvert.h"
#include "image/ZKCMSTransform.h"
#include "utils/Utils.h"

#include <QPointF>

#include <algorithm>
#include <cstring>

namespace {
constexpr int TileSide = 128;
constexpr bool ChangeAlpha = false;

using ClipboardPixels::Placed;

/// The selection's part under a rectangle, in pixels of its mask.
QRect MaskRect(const Placed& selection, const QRect& rect)
{
    return rect.translated(-selection.topLeft);
}

LXImage32 PartOf(const Placed& source, const QRect& rect)
{
    return CopyPart(source.image, rect.translated(-source.topLeft));
}

/// The rows of a band of tiles, one after the other.
template <class Visit>
void ForEachRow(const LXImage32& image, int band, Visit visit)
{
    std::vector<LXTileReader<LXRGBA32i>> tiles;
    tiles.reserve(image.m_TilesX);
    for (int column = 0; column < static_cast<int>(image.m_TilesX); ++column)
        tiles.push_back(image.ReadTile(column, band));

    std::vector<LXRGBA32i> row(static_cast<std::size_t>(image.Width()));
    const int rows = std::min(TileSide, image.Height() - band * TileSide);
    for (int y = 0; y < rows; ++y) {
        for (std::size_t column = 0; column < tiles.size(); ++column) {
            const std::size_t begin = column * TileSide;
            const std::size_t count = std::min<std::size_t>(TileSide, row.size() - begin);
            std::memcpy(row.data() + begin, tiles[column].Pixels() + y * TileSide, count * sizeof(LXRGBA32i));
        }
        visit(row);
    }
}
} // namespace

ClipboardPixels::Placed ClipboardPixels::Lift(const Placed& source, const Placed& selection)
{
    const QRect rect = source.Rect() & selection.Rect();
    if (rect.isEmpty()) return {};

    Placed lifted{LXImage32(rect.width(), rect.height()), rect.topLeft()};
    BlendMaskOn(source.image, rect.translated(-source.topLeft), BlendMode::Normal, lifted.image,
                lifted.image.Rect(), 1.0, selection.image, MaskRect(selection, rect), ChangeAlpha,
                ChangeAlpha);
    return lifted;
}

ClipboardPixels::Placed ClipboardPixels::LiftMask(const Placed& mask, const Placed& selection)
{
    const QRect rect = mask.Rect() & selection.Rect();
    if (rect.isEmpty()) return {};
    return Lift({MaskToGray(PartOf(mask, rect)), rect.topLeft()}, selection);
}

ClipboardPixels::Change ClipboardPixels::Cut(const Placed& layer, const Placed& selection)
{
    const QRect rect = layer.Rect() & selection.Rect();
    Change change;
    change.before = PartOf(layer, rect);
    change.after = change.before;
    BlendOn(selection.image, MaskRect(selection, rect), BlendMode::DestinationOut, change.after,
            change.after.Rect(), 1.0, ChangeAlpha);
    return change;
}

ClipboardPixels::Change ClipboardPixels::CutMask(const Placed& mask, const Placed& selection,
                                                 LXRGBA32i ground)
{
    const QRect rect = mask.Rect() & selection.Rect();
    Change change;
    change.before = PartOf(mask, rect);
    change.after = change.before;
    LXImage32 gray(rect.width(), rect.height());
    gray.Fill(ground);
    BlendMaskOn(gray, gray.Rect(), BlendMode::GrayToMask, change.after, change.after.Rect(), 1.0,
                selection.image, MaskRect(selection, rect), ChangeAlpha, ChangeAlpha);
    return change;
}

ClipboardPixels::Change ClipboardPixels::Paste(const Placed& layer, const Placed& item, const QRect& target,
                                               PasteThrough through, const Placed& selection)
{
    const QRect rect = layer.Rect() & target;
    Change change;
    change.before = PartOf(layer, rect);
    change.after = change.before;
    const QRect place = item.Rect().translated(-rect.topLeft());
    const QRect whole = item.image.Rect();
    switch (through) {
    case PasteThrough::Everything:
        BlendOn(item.image, whole, BlendMode::Normal, change.after, place, 1.0, ChangeAlpha);
        break;
    case PasteThrough::Selection:
        BlendMaskOn(item.image, whole, BlendMode::Normal, change.after, place, 1.0, selection.image,
                    MaskRect(selection, item.Rect()), ChangeAlpha, ChangeAlpha);
        break;
    case PasteThrough::LayerAlpha:
        BlendMaskOn(item.image, whole, BlendMode::Normal, change.after, place, 1.0, change.before, place,
                    ChangeAlpha, ChangeAlpha);
        break;
    }
    return change;
}

QPoint ClipboardPixels::CenteredIn(const QSize& canvas, const QSize& picture)
{
    return {(canvas.width() - picture.width()) / 2, (canvas.height() - picture.height()) / 2};
}

unsigned int ClipboardPixels::Checksum(const LXImage32& image)
{
    unsigned int crc = Utils::CRC32(0, nullptr, 0);
    for (int band = 0; band < static_cast<int>(image.m_TilesY); ++band) {
        ForEachRow(image, band, [&](const std::vector<LXRGBA32i>& row) {
            crc = Utils::CRC32(crc, row.data(), static_cast<unsigned int>(row.size() * sizeof(LXRGBA32i)));
        });
    }
    return crc;
}

unsigned int ClipboardPixels::Checksum(const QImage& image)
{
    unsigned int crc = Utils::CRC32(0, nullptr, 0);
    for (int y = 0; y < image.height(); ++y) {
        crc = Utils::CRC32(crc, image.constScanLine(y),
                           static_cast<unsigned int>(image.width()) * sizeof(QRgb));
    }
    return crc;
}

bool ClipboardPixels::AreSame(const LXImage32& one, const LXImage32& other)
{
    if (one.Rect() != other.Rect()) return false;

    for (int band = 0; band < static_cast<int>(one.m_TilesY); ++band) {
        std::vector<std::vector<LXRGBA32i>> rows;
        ForEachRow(one, band, [&](const std::vector<LXRGBA32i>& row) { rows.push_back(row); });
        auto expected = rows.begin();
        bool isSame = true;
        ForEachRow(other, band, [&](const std::vector<LXRGBA32i>& row) {
            isSame = isSame && std::memcmp(row.data(), expected->data(), row.size() * sizeof(LXRGBA32i)) == 0;
            ++expected;
        });
        if (!isSame) return false;
    }
    return true;
}

QImage ClipboardPixels::FitInto(const LXImage32& image, int side)
{
    const double factor =
        std::min(static_cast<double>(side) / image.Width(), static_cast<double>(side) / image.Height());
    QImage fitted(static_cast<int>(image.Width() * factor), static_cast<int>(image.Height() * factor),
                  QImage::Format_ARGB32);
    if (fitted.isNull() || !ScaleImage(image, QPointF(), factor, fitted)) return {};
    return fitted;
}

LXImage32 ClipboardPixels::InColorsOf(const LXImage32& image, const ZKCMSProfile& profile)
{
    LXImage32 converted = image;
    if (image.m_Profile.IsNull() || profile.IsNull()) return converted;
    ZKCMSTransform(image.m_Profile, profile)(converted);
    converted.m_Profile = profile;
    return converted;
}

QImage ClipboardPixels::ForSystemClipboard(const LXImage32& image)
{
    LXImage32 shared = image;
    ZKCMSTransform(image.m_Profile, ZKCMSProfile())(shared);
    if (image.Width() > LongestSide || image.Height() > LongestSide) return FitInto(shared, LongestSide);

    QImage converted;
    ConvertImage(shared, converted);
    return converted;
}
