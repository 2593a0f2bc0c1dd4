#include "app/PictureLosses.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "image/LXImage.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>

namespace {
constexpr int TileSide = 128;

/// @param columns, rows  how much of the tile belongs to the picture
bool IsOpaque(const LXTileReader<LXRGBA32i>& tile, int columns, int rows)
{
    for (int row = 0; row < rows; ++row) {
        const LXRGBA32i* pixels = tile.Pixels() + row * TileSide;
        if (!std::all_of(pixels, pixels + columns, [](LXRGBA32i pixel) { return pixel.Alpha() == 255; })) {
            return false;
        }
    }
    return true;
}

bool HasTransparency(const LXImage32& image)
{
    for (int top = 0; top < image.Height(); top += TileSide) {
        for (int left = 0; left < image.Width(); left += TileSide) {
            const LXTileReader<LXRGBA32i> tile = image.ReadTile(left / TileSide, top / TileSide);
            const int columns = std::min(TileSide, image.Width() - left);
            if (!IsOpaque(tile, columns, std::min(TileSide, image.Height() - top))) return true;
        }
    }
    return false;
}

bool HasLayersToMerge(const LXDocumentModel* model)
{
    if (model->rowCount() > 1) return true;
    return model->rowCount() == 1 && model->HasMask(0);
}

QString Tr(const char* text)
{
    return QCoreApplication::translate("PictureLosses", text);
}
} // namespace

QString PictureLosses(const LXDocumentInterface* document, const Picture& picture, PictureFile::Format format)
{
    const QString name = PictureFile::FormatName(format);
    QStringList losses;
    if (HasLayersToMerge(document->GetModel())) {
        losses.append(Tr("%1 holds one flat picture: layers and masks are merged in the file.").arg(name));
    }
    if (!PictureFile::KeepsAlpha(format) && HasTransparency(picture.image)) {
        losses.append(Tr("%1 holds no transparency: what is transparent becomes white.").arg(name));
    }
    return losses.join(' ');
}
