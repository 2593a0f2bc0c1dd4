#include "formats/OraStackReader.h"

#include "document/LayerLocks.h"
#include "formats/OraKinds.h"
#include "formats/OraNames.h"
#include "formats/OraPaths.h"
#include "formats/PictureMetadata.h"
#include "formats/XmlFragment.h"

#include <cmath>

namespace {
using PictureFile::Error;

/// Farther than any layer can be moved, and near enough that rectangles don't overflow.
constexpr double FarthestOffset = 1 << 24;

const QLatin1String Yes("true");

/// A number that is there has to be one; one that isn't leaves the value alone.
bool ReadNumber(const QString& text, double* number)
{
    if (text.isEmpty()) return true;
    bool isNumber = false;
    *number = text.toDouble(&isNumber);
    return isNumber && std::isfinite(*number);
}

bool ReadWhole(const QString& text, double most, int* number)
{
    double value = *number;
    if (!ReadNumber(text, &value) || std::abs(value) > most) return false;
    *number = qRound(value);
    return true;
}

/// The attributes that nobody asked for.
QVector<ForeignContent::Attribute> Others(const QXmlStreamAttributes& attributes, const QStringList& known)
{
    QVector<ForeignContent::Attribute> others;
    for (const QXmlStreamAttribute& attribute : attributes) {
        const QString space = attribute.namespaceUri().toString();
        const QString name = attribute.name().toString();
        if (space == OraNames::OwnSpace || (space.isEmpty() && known.contains(name))) continue;
        others.append({space, name, attribute.value().toString()});
    }
    return others;
}
} // namespace

FormatFailure OraStackReader::Read(OraStack* stack)
{
    m_pStack = stack;
    while (!m_Reader.atEnd() && !m_Reader.isStartElement()) {
        if (m_Reader.readNext() == QXmlStreamReader::DTD) {
            Refuse(Error::Broken, tr("Its list of layers has a document type, which is not allowed."));
            return m_Failure;
        }
    }
    const bool isRead = !m_Reader.hasError() && IsPlain("image") && ReadImage();
    // Whatever stands behind the end: it has to be nothing.
    while (isRead && !m_Reader.atEnd())
        m_Reader.readNext();
    if (m_Failure.IsNone() && (!isRead || m_Reader.hasError())) {
        Refuse(Error::Broken, tr("Its list of layers is damaged."));
    }
    return m_Failure;
}

bool OraStackReader::ReadImage()
{
    if (!ReadImageAttributes()) return false;
    bool hasStack = false;
    while (NextChild()) {
        if (!ReadImageChild(&hasStack)) return false;
    }
    return hasStack && m_Failure.IsNone();
}

bool OraStackReader::ReadImageAttributes()
{
    int width = 0;
    int height = 0;
    constexpr double largest = 1 << 30;
    if (!ReadWhole(Text("w"), largest, &width) || !ReadWhole(Text("h"), largest, &height)) return false;
    m_pStack->size = QSize(width, height);
    double dpi = 0;
    const QString exactDpi = OwnText("dpi");
    if (!ReadNumber(exactDpi.isEmpty() ? Text("xres") : exactDpi, &dpi)) return false;
    m_pStack->dpi = dpi > 0 && dpi <= PictureMetadata::LargestDpi ? dpi : 0;
    constexpr double mostUnits = 100;
    if (!ReadWhole(OwnText("unit"), mostUnits, &m_pStack->unit)) return false;
    m_pStack->foreign.attributes =
        Others(m_Reader.attributes(), {QStringLiteral("w"), QStringLiteral("h"), QStringLiteral("xres"),
                                       QStringLiteral("yres"), QStringLiteral("version")});
    return true;
}

bool OraStackReader::ReadImageChild(bool* hasStack)
{
    if (IsPlain("stack") && !*hasStack) {
        *hasStack = true;
        return ReadRootStack();
    }
    if (IsOwn("selection")) return ReadSelection();
    if (IsOwn("channel")) return ReadChannel();
    if (IsOwn("profile")) return ReadProfile();
    if (IsOwn("guide")) return ReadGuide();
    if (IsOwn("path")) return ReadPath();
    if (IsOwn("sample")) return ReadSample();
    return KeepElement(2, &m_pStack->foreign.children);
}

bool OraStackReader::ReadRootStack()
{
    m_pStack->foreign.stackAttributes = Others(m_Reader.attributes(), {});
    return ReadStack(Group());
}

bool OraStackReader::ReadStack(const Group& group)
{
    if (group.depth + 2 > m_Limits.maxXmlDepth) {
        return Refuse(Error::Broken,
                      tr("Its layers are nested more than %1 deep.").arg(m_Limits.maxXmlDepth));
    }
    while (NextChild()) {
        bool isRead = false;
        if (IsPlain("layer")) {
            isRead = ReadLayer(group);
        } else if (IsPlain("stack")) {
            isRead = ReadNestedStack(group);
        } else {
            std::vector<OraStack::Layer>& layers = m_pStack->layers;
            isRead =
                KeepElement(group.depth + 2, layers.empty() ? &m_pStack->foreign.followers
                                                            : &layers.back().properties.foreign.followers);
        }
        if (!isRead) return false;
    }
    return m_Failure.IsNone();
}

bool OraStackReader::ReadNestedStack(const Group& outer)
{
    Group group = outer;
    QPoint offset;
    double opacity = 1;
    if (!ReadOffset(&offset) || !ReadOpacity(&opacity)) return false;
    group.offset += offset;
    if (std::abs(group.offset.x()) > FarthestOffset || std::abs(group.offset.y()) > FarthestOffset)
        return false;
    group.opacity *= opacity;
    group.isVisible = group.isVisible && Text("visibility") != QLatin1String("hidden");
    ++group.depth;
    m_pStack->hasGroups = true;
    return ReadStack(group);
}

bool OraStackReader::ReadLayer(const Group& group)
{
    if (static_cast<int>(m_pStack->layers.size()) >= m_Limits.maxLayers) {
        return Refuse(
            Error::TooLarge,
            tr("It has more than %1 layers, which is the most that is allowed.").arg(m_Limits.maxLayers));
    }
    OraStack::Layer layer;
    if (!ReadLayerAttributes(&layer)) return false;
    layer.image.offset += group.offset;
    layer.properties.opacity *= group.opacity;
    layer.properties.isVisible = layer.properties.isVisible && group.isVisible;
    while (NextChild()) {
        if (!ReadLayerChild(&layer, group.depth + 3)) return false;
    }
    m_pStack->layers.push_back(layer);
    return m_Failure.IsNone();
}

bool OraStackReader::ReadLayerAttributes(OraStack::Layer* layer)
{
    LayerProperties& properties = layer->properties;
    properties.name = Text("name");
    if (!ReadImageRef(&layer->image) || !ReadOpacity(&properties.opacity)) return false;
    properties.isVisible = Text("visibility") != QLatin1String("hidden");
    layer->isSelected = Text("selected") == Yes;
    properties.locks = OraNames::LocksOf(OwnText("locks"));
    // Somebody who doesn't know the words may have locked the layer.
    const bool isLocked = (properties.locks & LayerLocks::AgainstPaint) != 0;
    if (Text("edit-locked") == Yes && !isLocked) properties.locks |= LayerLocks::All;
    properties.foreign.attributes =
        Others(m_Reader.attributes(),
               {QStringLiteral("name"), QStringLiteral("src"), QStringLiteral("x"), QStringLiteral("y"),
                QStringLiteral("opacity"), QStringLiteral("visibility"), QStringLiteral("selected"),
                QStringLiteral("edit-locked"), QStringLiteral("composite-op")});
    return ReadMode(Text("composite-op"), layer);
}

bool OraStackReader::ReadMode(const QString& compositeOp, OraStack::Layer* layer)
{
    if (compositeOp.isEmpty() || OraNames::BlendModeOf(compositeOp, &layer->properties.blendMode))
        return true;
    // It goes back into the file as long as nobody chooses another mode.
    layer->properties.foreign.attributes.append({QString(), QStringLiteral("composite-op"), compositeOp});
    m_pStack->hasUnknownModes = true;
    return true;
}

bool OraStackReader::ReadLayerChild(OraStack::Layer* layer, int depth)
{
    if (IsOwn("mask") && layer->mask.entry.isEmpty()) return ReadMask(layer);
    if (IsOwn("metadata")) return ReadMetadata(layer);
    const bool isPlain = layer->properties.kind == LayerKind::Raster;
    if (IsOwn("text") && isPlain) return ReadText(layer);
    if (IsOwn("adjustment") && isPlain) return ReadAdjustment(layer);
    return KeepElement(depth, &layer->properties.foreign.children);
}

bool OraStackReader::ReadMask(OraStack::Layer* layer)
{
    if (!ReadImageRef(&layer->mask)) return false;
    layer->properties.hasMask = true;
    layer->properties.maskReveals = Text("reveals") == Yes;
    layer->properties.isMaskLinked = Text("linked") == Yes;
    layer->properties.isMaskSelected = Text("selected") == Yes;
    return SkipContent(m_Limits.maxXmlDepth);
}

bool OraStackReader::ReadMetadata(OraStack::Layer* layer)
{
    OraStack::Metadata metadata;
    constexpr double largestTag = 65535;
    metadata.entry = Text("src");
    if (metadata.entry.isEmpty() || !ReadWhole(Text("tag"), largestTag, &metadata.tag)) return false;
    layer->metadata.append(metadata);
    return SkipContent(m_Limits.maxXmlDepth);
}

bool OraStackReader::ReadText(OraStack::Layer* layer)
{
    TextContent text;
    if (!OraKinds::ReadText(m_Reader, &text, &layer->texture)) return false;
    layer->properties.kind = LayerKind::Text;
    layer->properties.text = std::make_shared<const TextContent>(text);
    return true;
}

bool OraStackReader::ReadAdjustment(OraStack::Layer* layer)
{
    layer->properties.kind = LayerKind::Adjustment;
    // Nothing that a program without adjustments has put there.
    layer->image.isEmpty = true;
    return OraKinds::ReadAdjustment(m_Reader, &layer->properties.adjustment);
}

bool OraStackReader::ReadSelection()
{
    return ReadImageRef(&m_pStack->selection) && SkipContent(m_Limits.maxXmlDepth);
}

bool OraStackReader::ReadChannel()
{
    if (static_cast<int>(m_pStack->channels.size()) >= m_Limits.maxLayers) {
        return Refuse(Error::TooLarge,
                      tr("It has more than %1 kept selections, which is the most that is allowed.")
                          .arg(m_Limits.maxLayers));
    }
    OraStack::Channel channel;
    channel.name = Text("name");
    if (!ReadImageRef(&channel.image)) return false;
    m_pStack->channels.push_back(channel);
    return SkipContent(m_Limits.maxXmlDepth);
}

bool OraStackReader::ReadProfile()
{
    m_pStack->profileEntry = Text("src");
    return !m_pStack->profileEntry.isEmpty() && SkipContent(m_Limits.maxXmlDepth);
}

bool OraStackReader::ReadGuide()
{
    LXGuide guide;
    if (!OraNames::OrientationOf(Text("orientation"), &guide.orientation) ||
        !ReadNumber(Text("position"), &guide.position)) {
        return false;
    }
    m_pStack->guides.append(guide);
    return SkipContent(m_Limits.maxXmlDepth);
}

bool OraStackReader::ReadPath()
{
    DocumentPath path;
    if (!OraPaths::ReadPath(m_Reader, &path)) return false;
    m_pStack->paths.push_back(path);
    return true;
}

bool OraStackReader::ReadSample()
{
    ColorSample sample;
    if (!OraPaths::ReadSample(m_Reader, &sample)) return false;
    m_pStack->samples.push_back(sample);
    return true;
}

/// Goes to the next element inside the one that is read, or to its end.
bool OraStackReader::NextChild()
{
    while (!m_Reader.atEnd()) {
        switch (m_Reader.readNext()) {
        case QXmlStreamReader::StartElement: return true;
        case QXmlStreamReader::EndElement: return false;
        case QXmlStreamReader::EntityReference:
            return Refuse(Error::Broken, tr("Its list of layers refers to something outside."));
        default: break;
        }
    }
    if (m_Failure.IsNone()) Refuse(Error::Broken, tr("Its list of layers is damaged."));
    return false;
}

/// To the end of an element of our own; what others put into it is dropped.
bool OraStackReader::SkipContent(int depth)
{
    QByteArray dropped;
    return KeepElement(depth, &dropped);
}

bool OraStackReader::KeepElement(int depth, QByteArray* bytes)
{
    if (XmlFragment::Take(m_Reader, m_Limits.maxXmlDepth - depth + 1, bytes)) return true;
    if (m_Reader.hasError()) return false;
    return Refuse(Error::Broken,
                  tr("Its list of layers is nested more than %1 deep, or refers to something outside.")
                      .arg(m_Limits.maxXmlDepth));
}

bool OraStackReader::IsOwn(const char* name) const
{
    return m_Reader.namespaceUri() == OraNames::OwnSpace && m_Reader.name() == QLatin1String(name);
}

bool OraStackReader::IsPlain(const char* name) const
{
    return m_Reader.namespaceUri().isEmpty() && m_Reader.name() == QLatin1String(name);
}

QString OraStackReader::Text(const char* attribute) const
{
    return m_Reader.attributes().value(QLatin1String(attribute)).toString();
}

QString OraStackReader::OwnText(const char* attribute) const
{
    return m_Reader.attributes().value(OraNames::OwnSpace, QLatin1String(attribute)).toString();
}

bool OraStackReader::ReadOffset(QPoint* offset) const
{
    return ReadWhole(Text("x"), FarthestOffset, &offset->rx()) &&
           ReadWhole(Text("y"), FarthestOffset, &offset->ry());
}

bool OraStackReader::ReadImageRef(OraStack::Image* image) const
{
    image->entry = Text("src");
    image->isEmpty = (image->entry.isEmpty() ? QString() : OwnText("empty")) == Yes;
    return !image->entry.isEmpty() && ReadOffset(&image->offset);
}

bool OraStackReader::ReadOpacity(double* opacity) const
{
    double value = 1;
    if (!ReadNumber(Text("opacity"), &value)) return false;
    *opacity = qBound(0.0, value, 1.0);
    return true;
}

/// Keeps the first reason. Always false.
bool OraStackReader::Refuse(Error error, const QString& why)
{
    if (m_Failure.IsNone()) m_Failure = {error, why};
    return false;
}
