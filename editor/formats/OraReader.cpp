#include "formats/OraReader.h"

#include "formats/FormatTable.h"
#include "formats/OraNames.h"
#include "formats/OraStackReader.h"
#include "formats/PictureMetadata.h"
#include "formats/PngCodec.h"
#include "image/LXImageConvert.h"

#include <QBuffer>
#include <QLocale>

namespace {
using PictureFile::Error;

/// Larger than any profile that means something.
constexpr qint64 MostProfileBytes = qint64(64) * 1024 * 1024;

QString SizeText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

qint64 PixelBytes(const QSize& size)
{
    constexpr int bytesPerPixel = 4;
    return qint64(size.width()) * size.height() * bytesPerPixel;
}
} // namespace

FormatFailure OraReader::Read(const QString& path)
{
    FormatFailure failure = m_Archive.Open(path, m_Limits.archive);
    const auto then = [&failure](FormatFailure next) { failure = std::move(next); };
    if (failure.IsNone()) then(CheckMimetype());
    if (failure.IsNone()) then(ReadStack());
    if (failure.IsNone()) then(MeasureImages());
    if (failure.IsNone()) then(ReadLayers());
    if (failure.IsNone()) then(ReadSelection());
    if (failure.IsNone()) then(ReadChannels());
    if (failure.IsNone()) then(ReadProfile());
    if (failure.IsNone()) then(KeepOthers());
    return failure;
}

/// Other programs pack their files in the same way.
FormatFailure OraReader::CheckMimetype() const
{
    FormatFailure noPicture{Error::UnknownFormat,
                            tr("It is an archive, but not a picture with layers (OpenRaster).")};
    if (!m_Archive.Has(OraNames::Stack)) return noPicture;
    if (!m_Archive.Has(OraNames::Mimetype)) return {};
    constexpr qint64 longest = 1024;
    QByteArray text;
    FormatFailure failure = m_Archive.ReadAll(OraNames::Mimetype, longest, &text);
    if (!failure.IsNone()) return failure;
    return QString::fromLatin1(text.trimmed()) == OraNames::MimetypeText ? FormatFailure() : noPicture;
}

FormatFailure OraReader::ReadStack()
{
    QByteArray xml;
    FormatFailure failure = m_Archive.ReadAll(OraNames::Stack, m_Limits.archive.maxXmlBytes, &xml);
    if (failure.IsNone()) failure = OraStackReader(xml, m_Limits.archive).Read(&m_Stack);
    if (!failure.IsNone()) return failure;
    if (m_Stack.size.isEmpty()) return {Error::Broken, tr("It doesn't say how large the picture is.")};
    if (!m_Limits.Allow(m_Stack.size)) return TooLarge(m_Stack.size);
    m_Content.size = m_Stack.size;
    m_Content.dpi = m_Stack.dpi;
    m_Content.unit = m_Stack.unit;
    m_Content.guides = m_Stack.guides;
    m_Content.paths = m_Stack.paths;
    m_Content.samples = m_Stack.samples;
    return {};
}

/// Adds up what all images claim, before any of them has memory.
FormatFailure OraReader::MeasureImages()
{
    FormatFailure failure;
    QSet<QString> textures;
    for (const OraStack::Layer& layer : m_Stack.layers) {
        failure = MeasureImage(layer.image);
        if (failure.IsNone()) failure = MeasureImage(layer.mask);
        if (!failure.IsNone()) return failure;
        const QString& texture = layer.texture.entry;
        if (texture.isEmpty() || !textures.contains(texture)) m_LayerBytes += BytesOf(layer.texture);
        textures.insert(texture);
    }
    failure = MeasureImage(m_Stack.selection);
    if (!failure.IsNone()) return failure;
    for (const OraStack::Channel& channel : m_Stack.channels) {
        failure = MeasureImage(channel.image);
        if (!failure.IsNone()) return failure;
    }
    if (m_LayerBytes > m_Limits.archive.maxLayerBytes) {
        return {Error::TooLarge, tr("Its layers need %1 of memory; at most %2 are allowed.")
                                     .arg(SizeText(m_LayerBytes), SizeText(m_Limits.archive.maxLayerBytes))};
    }
    return {};
}

FormatFailure OraReader::MeasureImage(const OraStack::Image& image)
{
    if (image.entry.isEmpty()) return {};
    const std::unique_ptr<QIODevice> entry = m_Archive.OpenEntry(image.entry);
    QSize size;
    if (!entry || !PngCodec::ReadSize(*entry, &size)) {
        return {Error::Broken, tr("A layer is missing in it, or is damaged.")};
    }
    if (!m_Limits.Allow(size)) return TooLarge(size);
    m_LayerBytes += PixelBytes(size);
    return {};
}

/// One that is missing, damaged or too large costs nothing: it isn't read.
qint64 OraReader::BytesOf(const OraBrush::Texture& texture) const
{
    if (texture.IsNone()) return 0;
    const std::unique_ptr<QIODevice> device = OpenTexture(texture);
    QSize size;
    const bool isReadable = device && PngCodec::ReadSize(*device, &size) && m_Limits.Allow(size);
    return isReadable ? PixelBytes(size) : 0;
}

FormatFailure OraReader::ReadLayers()
{
    for (const OraStack::Layer& layer : m_Stack.layers) {
        FormatFailure failure = ReadLayer(layer);
        if (!failure.IsNone()) return failure;
        if (layer.isSelected) m_Content.selectedRows.insert(static_cast<int>(m_Content.layers.size()) - 1);
    }
    return {};
}

FormatFailure OraReader::ReadLayer(const OraStack::Layer& layer)
{
    LayerState state;
    state.properties = layer.properties;
    FormatFailure failure = ReadImage(layer.image, false, &state.image);
    if (failure.IsNone()) failure = ReadImage(layer.mask, true, &state.mask);
    if (failure.IsNone()) failure = ReadTexture(layer, &state.properties);
    if (failure.IsNone()) failure = ReadMetadata(layer, &state.image);
    if (!failure.IsNone()) return failure;
    state.properties.rect = QRect(layer.image.offset, state.image.Rect().size());
    if (layer.properties.hasMask) {
        state.properties.maskRect = QRect(layer.mask.offset, state.mask.Rect().size());
    }
    m_Content.layers.push_back(std::move(state));
    return {};
}

FormatFailure OraReader::ReadSelection()
{
    m_Content.selectionOffset = m_Stack.selection.offset;
    return ReadImage(m_Stack.selection, true, &m_Content.selection);
}

FormatFailure OraReader::ReadChannels()
{
    for (const OraStack::Channel& channel : m_Stack.channels) {
        SelectionChannel read;
        read.name = channel.name;
        read.coverage.offset = channel.image.offset;
        FormatFailure failure = ReadImage(channel.image, true, &read.coverage.image);
        if (!failure.IsNone()) return failure;
        m_Content.channels.append(read);
    }
    return {};
}

FormatFailure OraReader::ReadProfile()
{
    QByteArray bytes = m_LayerProfile;
    if (!m_Stack.profileEntry.isEmpty()) {
        m_Used.insert(m_Stack.profileEntry);
        FormatFailure failure = m_Archive.ReadAll(m_Stack.profileEntry, MostProfileBytes, &bytes);
        if (!failure.IsNone()) return failure;
    }
    Picture picture;
    PictureMetadata::TakeProfile(bytes, picture);
    m_Content.iccProfile = picture.iccProfile;
    m_ProfileProblem = picture.profileProblem;
    return {};
}

FormatFailure OraReader::ReadMetadata(const OraStack::Layer& layer, LXImage32* image)
{
    image->m_ExifData.clear();
    for (const OraStack::Metadata& metadata : layer.metadata) {
        QByteArray bytes;
        FormatFailure failure = ReadKept(metadata.entry, &bytes);
        if (!failure.IsNone()) return failure;
        m_Used.insert(metadata.entry);
        image->m_ExifData.append(ZKEXIFElement{metadata.tag, bytes});
    }
    return {};
}

FormatFailure OraReader::ReadImage(const OraStack::Image& image, bool isCoverage, LXImage32* pixels)
{
    if (image.entry.isEmpty()) return {};
    m_Used.insert(image.entry);
    if (image.isEmpty) return {};
    const std::unique_ptr<QIODevice> entry = m_Archive.OpenEntry(image.entry);
    if (!entry) return {Error::Broken, {}};
    Picture picture;
    FormatFailure failure =
        ReadPixels(*entry, isCoverage ? PixelMeaning::Coverage : PixelMeaning::Color, &picture);
    if (!failure.IsNone()) return failure;
    if (m_LayerProfile.isEmpty()) m_LayerProfile = picture.iccProfile;
    *pixels = picture.image;
    return {};
}

FormatFailure OraReader::ReadPixels(QIODevice& entry, PixelMeaning meaning, Picture* picture)
{
    FileProgress progress;
    progress.isCancelled = m_Progress.isCancelled;
    DecodeJob job{entry, m_Limits, progress, {}, {}};
    job.pixels = meaning;
    progress.setPermille = [this, &job](int permille) {
        const double done = double(m_DoneBytes) + double(PixelBytes(job.size)) * permille / 1000;
        m_Progress.Tell(static_cast<int>(done / double(m_LayerBytes) * 1000));
    };
    const Error error = PngCodec::Decode(job);
    if (error == Error::TooLarge) return TooLarge(job.size);
    if (error != Error::None) return {error, {}};
    if (!OraArchiveReader::IsSoundToItsEnd(entry)) return {Error::Broken, {}};
    m_DoneBytes += PixelBytes(job.size);
    *picture = job.picture;
    return {};
}

std::unique_ptr<QIODevice> OraReader::OpenTexture(const OraBrush::Texture& texture) const
{
    if (!texture.entry.isEmpty()) return m_Archive.OpenEntry(texture.entry);
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(texture.png);
    buffer->open(QIODevice::ReadOnly);
    return buffer;
}

/// The text has its pixels in any case: without the texture it only looks otherwise once it is drawn anew.
FormatFailure OraReader::ReadTexture(const OraStack::Layer& layer, LayerProperties* properties)
{
    const QString& entry = layer.texture.entry;
    if (layer.texture.IsNone()) return {};
    m_Used.insert(entry);
    QImage texture = m_Textures.value(entry);
    if (!m_Textures.contains(entry)) {
        const std::unique_ptr<QIODevice> device = OpenTexture(layer.texture);
        Picture picture;
        FormatFailure failure =
            device ? ReadPixels(*device, PixelMeaning::Color, &picture) : FormatFailure{Error::Broken, {}};
        const bool isLost = failure.error == Error::Broken || failure.error == Error::TooLarge;
        if (!failure.IsNone() && !isLost) return failure;
        ConvertImage(picture.image, texture);
        if (!entry.isEmpty()) m_Textures.insert(entry, texture);
    }
    if (texture.isNull()) {
        m_LostTextures << properties->name;
        return {};
    }
    auto text = std::make_shared<TextContent>(*properties->text);
    text->brush.setTextureImage(texture);
    properties->text = text;
    return {};
}

/// What is only carried along, together: one part may be named very often.
FormatFailure OraReader::ReadKept(const QString& name, QByteArray* bytes)
{
    const qint64 most = m_Limits.archive.maxKeptBytes;
    FormatFailure failure = m_Archive.ReadAll(name, most, bytes);
    m_KeptBytes += bytes->size();
    if (!failure.IsNone() || m_KeptBytes <= most) return failure;
    return {Error::TooLarge,
            tr("Its metadata and unknown parts need more than %1, which is the most that is allowed.")
                .arg(SizeText(most))};
}

FormatFailure OraReader::KeepOthers()
{
    m_Content.foreign = m_Stack.foreign;
    for (const QLatin1String& name :
         {OraNames::Mimetype, OraNames::Stack, OraNames::Merged, OraNames::Thumbnail}) {
        m_Used.insert(name);
    }
    for (const QString& name : m_Archive.Names()) {
        if (m_Used.contains(name)) continue;
        QByteArray bytes;
        FormatFailure failure = ReadKept(name, &bytes);
        if (!failure.IsNone()) return failure;
        m_Content.foreign.entries.append({name, bytes, m_Archive.IsPacked(name)});
    }
    return {};
}

FormatFailure OraReader::TooLarge(const QSize& size) const
{
    return {
        Error::TooLarge,
        tr("It holds a picture of %1 x %2 pixels, which needs %3 of memory. At most %4 pixels a side and %5 "
           "are allowed.")
            .arg(size.width())
            .arg(size.height())
            .arg(SizeText(PixelBytes(size)))
            .arg(m_Limits.maxSide)
            .arg(SizeText(m_Limits.maxDecodedBytes))};
}
