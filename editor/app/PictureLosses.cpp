#include "app/PictureLosses.h"

#include "document/LXColorSampleModel.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentModel.h"
#include "document/LXPathsListModel.h"
#include "document/SelectionChannels.h"
#include "image/LXImage.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {
constexpr int TileSide = 128;

template <typename IsSo>
bool HasPixel(const LXImage32& image, IsSo isSo)
{
    for (int top = 0; top < image.Height(); top += TileSide) {
        for (int left = 0; left < image.Width(); left += TileSide) {
            const LXTileReader<LXRGBA32i> tile = image.ReadTile(left / TileSide, top / TileSide);
            const int columns = std::min(TileSide, image.Width() - left);
            const int rows = std::min(TileSide, image.Height() - top);
            for (int row = 0; row < rows; ++row) {
                const LXRGBA32i* pixels = tile.Pixels() + row * TileSide;
                if (std::any_of(pixels, pixels + columns, isSo)) return true;
            }
        }
    }
    return false;
}

bool HasTransparency(const LXImage32& image)
{
    return HasPixel(image, [](LXRGBA32i pixel) { return pixel.Alpha() < 255; });
}

bool HasColorUnderAlpha0(const LXImage32& image)
{
    return HasPixel(image, [](LXRGBA32i pixel) { return pixel.Alpha() == 0 && pixel.value != 0; });
}

/// Whether the file can hold the one layer as it is: nothing of it lies beside the canvas or is hidden.
bool IsPlain(const LXDocumentInterface* document)
{
    const LXDocumentModel* model = document->GetModel();
    return document->GetLayerKind(1) == LayerKind::Raster && !model->HasMask(0) && model->GetVisible(0) &&
           model->GetOpacity(0) >= 1 && model->GetBlendMode(0) == BlendMode::Normal &&
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

/// A file takes what the camera noted from one layer, and nothing else that layers carry along.
bool HasMoreMetadata(const LXDocumentInterface* document, const QByteArray& exif)
{
    for (int id = 1; id <= document->GetModel()->rowCount(); ++id) {
        const auto layerId = static_cast<unsigned int>(id);
        const LXDocumentLayerLockerForRead locker(document, layerId);
        const LXImage32* image = document->GetLayerImage(layerId);
        const auto isMore = [&exif](const ZKEXIFElement& element) {
            return element.tag != 0 || element.value != exif;
        };
        if (image && std::any_of(image->m_ExifData.begin(), image->m_ExifData.end(), isMore)) return true;
    }
    return false;
}

bool HasForeign(const ForeignContent& foreign)
{
    return !foreign.attributes.isEmpty() || !foreign.children.isEmpty() || !foreign.followers.isEmpty();
}

/// Whether another program put something into the file that the document came from.
bool HasForeignContent(const LXDocumentInterface* document)
{
    const LXDocumentInterfacePrivate* d = LXDocumentInterfacePrivate::Get(document);
    const ForeignDocumentContent foreign = d->Properties().foreign;
    if (HasForeign(foreign) || !foreign.stackAttributes.isEmpty() || !foreign.entries.isEmpty()) return true;
    for (int id = 1; id <= document->GetModel()->rowCount(); ++id) {
        if (HasForeign(d->GetLayerState(static_cast<unsigned int>(id)).properties.foreign)) return true;
    }
    return false;
}

/// A resolution that comes back nearly the same is none lost.
bool IsSameResolution(double a, double b)
{
    constexpr double dust = 0.02;
    return std::abs(a - b) < dust;
}

/// Empty when nothing is lost, as where the file says none and a document without one has the same.
QString ResolutionLoss(const Picture& picture, PictureFile::Format format)
{
    const double saved = PictureFile::SavedResolution(format, picture);
    const double opened = saved > 0 ? saved : DocumentProperties().dpi;
    if (picture.dpi <= 0 || IsSameResolution(opened, picture.dpi)) return QString();
    return saved > 0 ? Tr("exact resolution") : Tr("resolution");
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

QStringList PictureLosses::OfNotes(const LXDocumentInterface* document, const Picture& picture,
                                   PictureFile::Format format)
{
    const QString name = PictureFile::FormatName(format);
    QStringList notes;
    if (!PictureFile::KeepsExif(format, picture)) notes << Tr("what the camera noted (Exif)");
    if (HasMoreMetadata(document, picture.exif)) notes << Tr("metadata of layers");
    const QString resolution = ResolutionLoss(picture, format);
    if (!resolution.isEmpty()) notes << resolution;
    if (HasForeignContent(document)) notes << Tr("what other programs added");
    QStringList sentences;
    if (!notes.isEmpty()) {
        sentences << Tr("%1 doesn't hold what is noted beside the pixels: %2.")
                         .arg(name, notes.join(QStringLiteral(", ")));
    }
    if (PictureFile::KeepsAlpha(format) && !PictureFile::KeepsColorUnderAlpha0(format) &&
        HasColorUnderAlpha0(picture.image)) {
        sentences << Tr("%1 holds no colors of pixels that are wholly transparent.").arg(name);
    }
    return sentences;
}

QStringList PictureLosses::OfAids(const LXDocumentInterface* document, PictureFile::Format format)
{
    const LXDocumentModel* model = document->GetModel();
    QStringList aids;
    if (document->HasSelection()) aids << Tr("selection");
    if (!LXDocumentInterfacePrivate::Get(document)->channels->All().isEmpty()) aids << Tr("saved selections");
    if (!document->GetGuides().isEmpty()) aids << Tr("guides");
    if (document->GetPathListModel()->rowCount() > 0) aids << Tr("paths");
    if (document->GetColorSamples()->rowCount() > 0) aids << Tr("color samples");
    if (document->GetUnit() != 0) aids << Tr("unit");
    if (model->rowCount() == 1 && model->GetLockFlags(0) != 0) aids << Tr("locks");
    if (aids.isEmpty()) return {};
    return {Tr("%1 doesn't hold what helps while working: %2.")
                .arg(PictureFile::FormatName(format), aids.join(QStringLiteral(", ")))};
}
