#include "gui/LXMimePictures.h"

#include "gui/MimeFileReader.h"
#include "gui/SvgCost.h"
#include "image/LXImageConvert.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>
#include <QImageReader>
#include <QMimeData>
#include <QSize>
#include <QUrl>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {
const QLatin1String PngFormat("image/png");
const QLatin1String TextFormat("text/plain");

struct FileReader
{
    MimeFileReader::IsPicture isPicture;
    MimeFileReader::Read read;
};

constexpr int LongestSide = 60000;       // pixels
constexpr qint64 MostPixels = 268435456; // 2 GB with 8 bytes each: of the decoder, and of the tiles

bool IsModest(const QSize& size)
{
    return size.width() <= LongestSide && size.height() <= LongestSide &&
           qint64(size.width()) * size.height() <= MostPixels;
}

MimeFileReader::MayDecode& Bound()
{
    static MimeFileReader::MayDecode bound = IsModest;
    return bound;
}

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

/// The header is judged before any pixel has memory; what doesn't tell its size there is left alone.
/// @param refused  why a drawing is left alone, in words for people
QImage Decoded(QByteArray bytes, QString* refused)
{
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::ReadOnly)) return {};
    QImageReader reader(&buffer);
    if (reader.format().startsWith("svg")) {
        const QString why = SvgCost::WhyNot(bytes, Bound(), [&reader] { return reader.size(); });
        if (!why.isEmpty()) {
            *refused = QCoreApplication::translate("LXMimePictures", "The drawing %1").arg(why);
            return {};
        }
    }
    const QSize size = reader.size();
    if (size.isEmpty() || !Bound()(size)) return {};
    return reader.read();
}

/// PNG first: what comes as a pixmap, or through one, has lost colors under small alphas.
QStringList EncodedFormats(const QMimeData* data)
{
    QStringList formats = data->formats();
    formats.erase(std::remove_if(formats.begin(), formats.end(),
                                 [](const QString& format) { return !IsPictureFormat(format); }),
                  formats.end());
    std::stable_partition(formats.begin(), formats.end(),
                          [](const QString& format) { return format == PngFormat; });
    return formats;
}

QImage PixelsOf(const QMimeData* data)
{
    const QStringList formats = EncodedFormats(data);
    QString refused;
    for (const QString& format : formats) {
        QImage image = Decoded(data->data(format), &refused);
        if (!image.isNull()) return image;
    }
    if (!refused.isEmpty()) throw std::runtime_error(refused.toStdString());
    // The platform would decode the same bytes, and without a bound.
    return formats.isEmpty() ? qvariant_cast<QImage>(data->imageData()) : QImage();
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

void MimeFileReader::SetBound(MayDecode mayDecode)
{
    Bound() = mayDecode ? std::move(mayDecode) : IsModest;
}

bool LXMimePictures::HasPictures(const QMimeData* data)
{
    if (!data) return false;
    return HasPictureFiles(data) || (!data->hasFormat(TextFormat) && HasPixels(data));
}

bool LXMimePictures::HasPictureFiles(const QMimeData* data)
{
    return data && !PictureFiles(data).isEmpty();
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
