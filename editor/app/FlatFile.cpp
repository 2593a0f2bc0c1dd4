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
    if (!result.hasLayers) return result.picture.image;

    LXDocumentInterface* document = DocumentFile::MakeDocument(result, QString());
    if (!document) return {};
    LXImage32 image = PictureFile::TakePicture(document).image;
    LXDocumentFactory::Instance()->Release(document);
    return image;
}

LXImage32 FlatFile::Read(const QString& path)
{
    return ImageOf(DocumentFile::Read(path, FormatLimitSettings::Read()));
}
