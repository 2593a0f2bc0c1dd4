#include "formats/OraWriter.h"

#include "document/Thumbnail.h"
#include "formats/FormatTable.h"
#include "formats/OraNames.h"
#include "formats/OraStackWriter.h"
#include "formats/PictureMetadata.h"
#include "formats/PngCodec.h"
#include "image/LXImageConvert.h"

#include <QBuffer>

namespace {
using PictureFile::Error;
using Packing = OraArchiveWriter::Packing;

qint64 Pixels(const LXImage32& image)
{
    return qint64(image.Width()) * image.Height();
}

/// The whole block of the first layer from the bottom that has one, as flat files get it.
QByteArray ExifOf(const std::vector<LayerState>& layers)
{
    for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
        QByteArray exif = PictureMetadata::ExifOf(layer->image.m_ExifData);
        if (!exif.isEmpty()) return exif;
    }
    return {};
}

Error EncodeThumbnail(const LXImage32& image, QIODevice& device)
{
    const QImage thumbnail =
        Thumbnail::OfLayer(image, QPoint(), image.Rect().size(), OraNames::ThumbnailSide);
    // The device can only go forward.
    QBuffer buffer;
    if (!buffer.open(QIODevice::WriteOnly) || !thumbnail.save(&buffer, "PNG")) return Error::OutOfMemory;
    device.write(buffer.data());
    return Error::None;
}
} // namespace

Error OraWriter::Write()
{
    ReserveNames();
    m_Stack.size = m_Content.size;
    m_Stack.dpi = m_Content.dpi;
    m_Stack.unit = m_Content.unit;
    m_Stack.guides = m_Content.guides;
    m_Stack.paths = m_Content.paths;
    m_Stack.samples = m_Content.samples;
    m_Stack.foreign = m_Content.foreign;
    int row = 0;
    for (const LayerState& state : m_Content.layers) {
        AddLayer(row++, state);
    }
    if (!m_Content.selection.IsNull()) {
        m_Stack.selection =
            AddImage(QStringLiteral("data/selection"), m_Content.selection, m_Content.selectionOffset, true);
    }
    AddChannels();
    if (!m_Content.iccProfile.isEmpty()) {
        m_Stack.profileEntry = NewName(QStringLiteral("data/profile"), QStringLiteral("icc"));
        AddBytes(m_Stack.profileEntry, m_Content.iccProfile);
    }
    AddPictures();

    m_Archive.Add(OraNames::Mimetype, QByteArray(OraNames::MimetypeText.latin1()), Packing::Stored);
    const QByteArray stack = OraStackWriter::Write(m_Stack);
    if (stack.size() > ArchiveLimits::MostXmlBytes) return Error::TooLarge;
    m_Archive.Add(OraNames::Stack, stack, Packing::Deflated);
    for (const auto& add : m_Adders) {
        add();
    }
    for (const ForeignDocumentContent::Entry& entry : m_Content.foreign.entries) {
        m_Archive.Add(entry.name, entry.bytes, entry.isPacked ? Packing::Deflated : Packing::Stored);
    }
    return m_Archive.Finish();
}

void OraWriter::ReserveNames()
{
    for (const QLatin1String& name :
         {OraNames::Mimetype, OraNames::Stack, OraNames::Merged, OraNames::Thumbnail}) {
        m_Names.insert(name);
    }
    for (const ForeignDocumentContent::Entry& entry : m_Content.foreign.entries) {
        m_Names.insert(entry.name);
    }
}

/// A name that nothing else in the archive has.
QString OraWriter::NewName(const QString& stem, const QString& ending)
{
    QString name = QStringLiteral("%1.%2").arg(stem, ending);
    for (int number = 2; m_Names.contains(name); ++number) {
        name = QStringLiteral("%1-%2.%3").arg(stem).arg(number).arg(ending);
    }
    m_Names.insert(name);
    return name;
}

void OraWriter::AddLayer(int row, const LayerState& state)
{
    const QString stem = QStringLiteral("data/layer%1").arg(row);
    OraStack::Layer layer;
    layer.properties = state.properties;
    layer.image = AddImage(stem, state.image, state.properties.rect.topLeft(), false);
    if (state.properties.hasMask) {
        layer.mask =
            AddImage(stem + QStringLiteral("-mask"), state.mask, state.properties.maskRect.topLeft(), true);
    }
    layer.texture.entry = AddTexture(state);
    for (const ZKEXIFElement& element : state.image.m_ExifData) {
        const QString name = NewName(stem + QStringLiteral("-metadata"), QStringLiteral("bin"));
        AddBytes(name, element.value);
        layer.metadata.append({element.tag, name});
    }
    layer.isSelected = m_Content.selectedRows.contains(row);
    m_Stack.layers.push_back(layer);
}

/// Texts with the same texture share an entry.
QString OraWriter::AddTexture(const LayerState& state)
{
    const auto& text = state.properties.text;
    const QImage texture = text ? OraBrush::TextureOf(text->brush) : QImage();
    if (texture.isNull()) return QString();
    for (const auto& [known, entry] : m_Textures) {
        if (known == texture) return entry;
    }
    LXImage32 image;
    ConvertImage(texture.convertToFormat(QImage::Format_ARGB32), image);
    QString entry = NewName(QStringLiteral("data/texture%1").arg(m_Textures.size()), QStringLiteral("png"));
    m_Textures.append({texture, entry});
    AddPng(entry, image, false, {});
    return entry;
}

void OraWriter::AddChannels()
{
    int row = 0;
    for (const SelectionChannel& channel : m_Content.channels) {
        const QString stem = QStringLiteral("data/channel%1").arg(row++);
        m_Stack.channels.push_back(
            {channel.name, AddImage(stem, channel.coverage.image, channel.coverage.offset, true)});
    }
}

OraStack::Image OraWriter::AddImage(const QString& stem, const LXImage32& image, const QPoint& offset,
                                    bool isCoverage)
{
    OraStack::Image written;
    written.entry = NewName(stem, QStringLiteral("png"));
    written.offset = offset;
    written.isEmpty = image.IsNull();
    AddPng(written.entry, written.isEmpty ? LXImage32(1, 1) : image, isCoverage, {});
    return written;
}

void OraWriter::AddPng(const QString& name, const LXImage32& image, bool isCoverage, const QByteArray& exif)
{
    m_AllPixels += Pixels(image);
    const auto encode = [this, image, isCoverage, exif](QIODevice& device) {
        Picture picture;
        picture.image = image;
        picture.dpi = m_Content.dpi;
        picture.exif = exif;
        if (!isCoverage) picture.iccProfile = m_Content.iccProfile;
        FileProgress progress;
        progress.isCancelled = m_Progress.isCancelled;
        progress.setPermille = [this, pixels = Pixels(image)](int permille) {
            m_Progress.Tell(static_cast<int>((m_DonePixels * 1000 + pixels * permille) / m_AllPixels));
        };
        const PictureFile::WriteOptions options;
        const Error error = PngCodec::Encode(
            {device, picture, options, progress, isCoverage ? PixelMeaning::Coverage : PixelMeaning::Color});
        m_DonePixels += Pixels(image);
        return error;
    };
    m_Adders.emplace_back([this, name, encode] { m_Archive.AddEncoded(name, encode); });
}

void OraWriter::AddBytes(const QString& name, const QByteArray& bytes)
{
    m_Adders.emplace_back([this, name, bytes] { m_Archive.Add(name, bytes, Packing::Deflated); });
}

/// What programs and file managers show that don't know layers.
void OraWriter::AddPictures()
{
    AddPng(OraNames::Merged, m_Content.merged, false, ExifOf(m_Content.layers));
    m_Adders.emplace_back([this] {
        m_Archive.AddEncoded(OraNames::Thumbnail,
                             [this](QIODevice& device) { return EncodeThumbnail(m_Content.merged, device); });
    });
}
