#include "app/FlatFile.h"

#include "app/FormatLimitSettings.h"
#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"

bool FlatFile::IsPicture(const QString& path)
{
    return PictureFile::FormatOfName(path) != PictureFile::Format::Unknown || DocumentFile::CanWrite(path);
}

LXImage32 FlatFile::ImageOf(const DocumentFile::ReadResult& result)
{
    Picture picture = result.picture;
    if (result.hasLayers) {
        LXDocumentInterface* document = DocumentFile::MakeDocument(result, QString());
        if (!document) return {};
        picture = PictureFile::TakePicture(document);
        LXDocumentFactory::Instance()->Release(document);
    }
    picture.image.m_Profile = ZKCMSProfile(picture.iccProfile);
    return picture.image;
}

LXImage32 FlatFile::Read(const QString& path)
{
    return ImageOf(DocumentFile::Read(path, FormatLimitSettings::Read()));
}
