#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentModel.h"
#include "formats/PictureFile.h"
#include "formats/PictureMetadata.h"

#include <QCoreApplication>

#include <exception>

namespace {
/// The metadata of the lowest layer that has some: the picture that everything began with.
QByteArray ExifOf(const LXDocumentInterface* document)
{
    for (int id = document->GetModel()->rowCount(); id > 0; --id) {
        const auto layerId = static_cast<unsigned int>(id);
        const LXDocumentLayerLockerForRead locker(document, layerId);
        const LXImage32* image = document->GetLayerImage(layerId);
        QByteArray exif = image ? PictureMetadata::ExifOf(image->m_ExifData) : QByteArray();
        if (!exif.isEmpty()) return exif;
    }
    return {};
}

/// Whether the document is nothing but one layer's pixels. Then these are the picture: the merged one has no
/// color where it is transparent.
bool IsOnePlainLayer(const LXDocumentInterface* document)
{
    const LXDocumentModel* model = document->GetModel();
    return model->rowCount() == 1 && model->GetVisible(0) && model->GetOpacity(0) >= 1 &&
           model->GetBlendMode(0) == BlendMode::Normal && !model->HasMask(0) &&
           document->GetLayerGeometry(1) == document->GetLayerGeometry(0);
}

void Fill(LXDocumentInterface* document, const Picture& picture)
{
    LXImage32 image = picture.image;
    image.m_Profile = ZKCMSProfile(picture.iccProfile);
    image.m_DpiX = image.m_DpiY = qRound(picture.dpi);
    if (!picture.exif.isEmpty()) image.m_ExifData = {ZKEXIFElement{0, picture.exif}};

    document->SetDocumentSize(image.Rect().size());
    document->SetICCProfile(image.m_Profile);
    document->SetDPI(picture.dpi);
    document->AddLayer(QCoreApplication::translate("PictureFile", "Background"), image, QPoint());
}
} // namespace

LXDocumentInterface* PictureFile::MakeDocument(const Picture& picture, const QString& name)
{
    LXDocumentInterface* document = LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32);
    try {
        document->SetDocumentName(name);
        Fill(document, picture);
        return document;
    } catch (const std::exception&) {
        LXDocumentFactory::Instance()->Release(document);
        return nullptr;
    }
}

Picture PictureFile::TakePicture(const LXDocumentInterface* document)
{
    Picture picture;
    picture.iccProfile = document->GetICCProfile().GetData();
    picture.dpi = document->GetDPI();
    try {
        picture.exif = ExifOf(document);
        const unsigned int id = IsOnePlainLayer(document) ? 1 : 0;
        const LXDocumentLayerLockerForRead locker(document, id);
        picture.image = *document->GetLayerImage(id);
    } catch (const std::exception&) {
        picture.image = LXImage32();
    }
    return picture;
}
