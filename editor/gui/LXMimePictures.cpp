#include "gui/LXMimePictures.h"

#include "gui/MimeFileReader.h"
#include "image/LXImageConvert.h"

#include <QImage>
#include <QMimeData>
#include <QUrl>

#include <algorithm>

namespace {
const QLatin1String PngFormat("image/png");
const QLatin1String TextFormat("text/plain");

struct FileReader
{
    MimeFileReader::IsPicture isPicture;
    MimeFileReader::Read read;
};

FileReader& Files()
{
    static FileReader reader;
    return reader;
}

/// All of the files, if all are pictures: a mixed lot isn't meant for the canvas.
QStringList PictureFiles(const QMimeData* data)
{
    const QList<QUrl> urls = data->urls();
    if (!Files().isPicture || urls.size() > LXMimePictures::MostFiles) return {};

    QStringList paths;
    for (const QUrl& url : urls) {
        if (!url.isLocalFile() || !Files().isPicture(url.toLocalFile())) return {};
        paths.append(url.toLocalFile());
    }
    return paths;
}

bool IsPictureFormat(const QString& format)
{
    return format.startsWith(QLatin1String("image/"));
}

bool HasPixels(const QMimeData* data)
{
    const QStringList formats = data->formats();
    return data->hasImage() || std::any_of(formats.begin(), formats.end(), IsPictureFormat);
}

QImage FirstReadable(const QMimeData* data)
{
    const QStringList formats = data->formats();
    for (const QString& format : formats) {
        if (!IsPictureFormat(format)) continue;
        QImage image = QImage::fromData(data->data(format));
        if (!image.isNull()) return image;
    }
    return {};
}

/// PNG first: what comes as a pixmap, or through one, has lost colors under small alphas.
QImage PixelsOf(const QMimeData* data)
{
    QImage image = QImage::fromData(data->data(PngFormat), "PNG");
    if (image.isNull()) image = qvariant_cast<QImage>(data->imageData());
    return image.isNull() ? FirstReadable(data) : image;
}

LXImage32 ToTiles(const QImage& image)
{
    LXImage32 result;
    if (!image.isNull()) ConvertImage(image, result);
    return result;
}
} // namespace

void MimeFileReader::Set(IsPicture isPicture, Read read)
{
    Files() = {std::move(isPicture), std::move(read)};
}

bool LXMimePictures::HasPictures(const QMimeData* data)
{
    if (!data) return false;
    if (!PictureFiles(data).isEmpty()) return true;
    return !data->hasFormat(TextFormat) && HasPixels(data);
}

QList<LXImage32> LXMimePictures::Read(const QMimeData* data)
{
    if (!HasPictures(data)) return {};

    QList<LXImage32> pictures;
    const QStringList paths = PictureFiles(data);
    for (const QString& path : paths)
        pictures.append(Files().read(path));
    if (paths.isEmpty()) pictures.append(ToTiles(PixelsOf(data)));
    pictures.erase(std::remove_if(pictures.begin(), pictures.end(),
                                  [](const LXImage32& picture) { return picture.IsNull(); }),
                   pictures.end());
    return pictures;
}
