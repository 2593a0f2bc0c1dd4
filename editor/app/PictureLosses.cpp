#include "app/PictureLosses.h"

#include "document/LXColorSampleModel.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "document/LXPathsListModel.h"
#include "document/SelectionChannels.h"
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

/// Whether the file can hold the one layer as it is: nothing of it lies beside the canvas or is hidden.
bool IsPlain(const LXDocumentInterface* document)
{
    const LXDocumentModel* model = document->GetModel();
    return !model->HasMask(0) && model->GetVisible(0) && model->GetOpacity(0) >= 1 &&
           model->GetBlendMode(0) == BlendMode::Normal &&
           document->GetLayerGeometry(1) == document->GetLayerGeometry(0);
}

bool HasLayersToMerge(const LXDocumentInterface* document)
{
    const int count = document->GetModel()->rowCount();
    return count > 1 || (count == 1 && !IsPlain(document));
}

QString Tr(const char* text)
{
    return QCoreApplication::translate("PictureLosses", text);
}
} // namespace

QStringList PictureLosses::OfContent(const LXDocumentInterface* document, const Picture& picture,
                                     PictureFile::Format format)
{
    const QString name = PictureFile::FormatName(format);
    QStringList losses;
    if (HasLayersToMerge(document)) {
        losses.append(Tr("%1 holds one flat picture: layers and masks are merged in the file.").arg(name));
    }
    if (!PictureFile::KeepsAlpha(format) && HasTransparency(picture.image)) {
        losses.append(Tr("%1 holds no transparency: what is transparent becomes white.").arg(name));
    }
    if (!PictureFile::KeepsProfile(format, picture.iccProfile)) {
        const char* text = PictureFile::KeepsProfile(format)
                               ? "%1 can't hold this color profile: colors may look different in the file."
                               : "%1 holds no color profile: colors may look different in the file.";
        losses.append(Tr(text).arg(name));
    }
    return losses;
}

QStringList PictureLosses::OfNotes(const Picture& picture, PictureFile::Format format)
{
    QStringList notes;
    if (!PictureFile::KeepsExif(format) && !picture.exif.isEmpty())
        notes << Tr("what the camera noted (Exif)");
    if (!PictureFile::KeepsResolution(format) && picture.dpi > 0) notes << Tr("resolution");
    if (notes.isEmpty()) return {};
    return {Tr("%1 doesn't hold what is noted beside the pixels: %2.")
                .arg(PictureFile::FormatName(format), notes.join(QStringLiteral(", ")))};
}

QStringList PictureLosses::OfAids(const LXDocumentInterface* document, PictureFile::Format format)
{
    QStringList aids;
    if (document->HasSelection()) aids << Tr("selection");
    if (!LXDocumentInterfacePrivate::Get(document)->channels->All().isEmpty()) aids << Tr("saved selections");
    if (!document->GetGuides().isEmpty()) aids << Tr("guides");
    if (document->GetPathListModel()->rowCount() > 0) aids << Tr("paths");
    if (document->GetColorSamples()->rowCount() > 0) aids << Tr("color samples");
    if (aids.isEmpty()) return {};
    return {Tr("%1 doesn't hold what helps while working: %2.")
                .arg(PictureFile::FormatName(format), aids.join(QStringLiteral(", ")))};
}
