#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentModel.h"
#include "formats/PictureFile.h"

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
        if (image && !image->m_ExifData.isEmpty()) return image->m_ExifData.first().value;
    }
    return {};
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
        const LXDocumentLayerLockerForRead locker(document, 0);
        picture.image = *document->GetLayerImage(0);
    } catch (const std::exception&) {
        picture.image = LXImage32();
    }
    return picture;
}
