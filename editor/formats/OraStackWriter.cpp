#include "formats/OraStackWriter.h"

#include "document/LayerLocks.h"
#include "formats/OraKinds.h"
#include "formats/OraNames.h"
#include "formats/OraPaths.h"
#include "formats/OraStack.h"
#include "formats/PictureMetadata.h"
#include "formats/XmlFragment.h"
#include "image/BlendMode.h"

#include <QLocale>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {
const QString Yes = QStringLiteral("true");

QString YesOrNo(bool value)
{
    return value ? Yes : QStringLiteral("false");
}

/// The shortest text that comes back as the same number.
QString Number(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

bool IsCompositeOp(const ForeignContent::Attribute& attribute)
{
    return attribute.space.isEmpty() && attribute.name == QLatin1String("composite-op");
}

/// An operation that the editor doesn't know stays until somebody chooses a mode.
QString CompositeOp(const LayerProperties& properties)
{
    const auto& foreign = properties.foreign.attributes;
    const auto* found = std::find_if(foreign.begin(), foreign.end(), IsCompositeOp);
    const bool isKept = found != foreign.end() && properties.blendMode == BlendMode::Normal;
    return isKept ? found->value : OraNames::CompositeOp(properties.blendMode);
}

class Writer
{
public:
    explicit Writer(QByteArray* xml) : m_Xml(xml) { m_Xml.setAutoFormatting(true); }

    void Write(const OraStack& stack);

private:
    void WriteLayer(const OraStack::Layer& layer);
    void WriteMask(const OraStack::Layer& layer);
    void WriteImage(const OraStack::Image& image);
    void WriteForeign(const QVector<ForeignContent::Attribute>& attributes);

    void Put(const char* name, const QString& value)
    {
        m_Xml.writeAttribute(QLatin1String(name), XmlFragment::CleanText(value));
    }

    void PutOwn(const char* name, const QString& value)
    {
        m_Xml.writeAttribute(OraNames::OwnSpace, QLatin1String(name), value);
    }

    void StartOwn(const char* name) { m_Xml.writeStartElement(OraNames::OwnSpace, QLatin1String(name)); }

    QXmlStreamWriter m_Xml;
};

void Writer::Write(const OraStack& stack)
{
    m_Xml.writeStartDocument();
    m_Xml.writeNamespace(OraNames::OwnSpace, OraNames::OwnPrefix);
    m_Xml.writeStartElement(QStringLiteral("image"));
    Put("version", QStringLiteral("0.0.3"));
    Put("w", QString::number(stack.size.width()));
    Put("h", QString::number(stack.size.height()));
    const QString wholeDpi = QString::number(qRound(qBound(1.0, stack.dpi, PictureMetadata::LargestDpi)));
    Put("xres", wholeDpi);
    Put("yres", wholeDpi);
    PutOwn("dpi", Number(stack.dpi));
    if (stack.unit != 0) PutOwn("unit", QString::number(stack.unit));
    WriteForeign(stack.foreign.attributes);

    m_Xml.writeStartElement(QStringLiteral("stack"));
    WriteForeign(stack.foreign.stackAttributes);
    XmlFragment::Put(stack.foreign.followers, m_Xml);
    for (const OraStack::Layer& layer : stack.layers) {
        WriteLayer(layer);
        XmlFragment::Put(layer.properties.foreign.followers, m_Xml);
    }
    m_Xml.writeEndElement();

    if (!stack.selection.entry.isEmpty()) {
        StartOwn("selection");
        WriteImage(stack.selection);
        m_Xml.writeEndElement();
    }
    for (const OraStack::Channel& channel : stack.channels) {
        StartOwn("channel");
        Put("name", channel.name);
        WriteImage(channel.image);
        m_Xml.writeEndElement();
    }
    if (!stack.profileEntry.isEmpty()) {
        StartOwn("profile");
        Put("src", stack.profileEntry);
        m_Xml.writeEndElement();
    }
    for (const LXGuide& guide : stack.guides) {
        StartOwn("guide");
        Put("orientation", OraNames::OrientationWord(guide.orientation));
        Put("position", Number(guide.position));
        m_Xml.writeEndElement();
    }
    for (const DocumentPath& path : stack.paths) {
        OraPaths::WritePath(m_Xml, path);
    }
    for (const ColorSample& sample : stack.samples) {
        OraPaths::WriteSample(m_Xml, sample);
    }
    XmlFragment::Put(stack.foreign.children, m_Xml);
    m_Xml.writeEndDocument();
}

void Writer::WriteLayer(const OraStack::Layer& layer)
{
    const LayerProperties& properties = layer.properties;
    m_Xml.writeStartElement(QStringLiteral("layer"));
    Put("name", properties.name);
    WriteImage(layer.image);
    Put("opacity", Number(properties.opacity));
    Put("visibility", properties.isVisible ? QStringLiteral("visible") : QStringLiteral("hidden"));
    Put("composite-op", CompositeOp(properties));
    if (layer.isSelected) Put("selected", Yes);
    if ((properties.locks & LayerLocks::AgainstPaint) != 0) Put("edit-locked", Yes);
    if (properties.locks != 0) PutOwn("locks", OraNames::LockWords(properties.locks));
    WriteForeign(properties.foreign.attributes);

    if (properties.text) OraKinds::WriteText(m_Xml, *properties.text, layer.texture.entry);
    if (properties.kind == LayerKind::Adjustment) OraKinds::WriteAdjustment(m_Xml, properties.adjustment);
    if (properties.hasMask) WriteMask(layer);
    for (const OraStack::Metadata& metadata : layer.metadata) {
        StartOwn("metadata");
        Put("src", metadata.entry);
        Put("tag", QString::number(metadata.tag));
        m_Xml.writeEndElement();
    }
    XmlFragment::Put(properties.foreign.children, m_Xml);
    m_Xml.writeEndElement();
}

void Writer::WriteMask(const OraStack::Layer& layer)
{
    StartOwn("mask");
    WriteImage(layer.mask);
    Put("reveals", YesOrNo(layer.properties.maskReveals));
    Put("linked", YesOrNo(layer.properties.isMaskLinked));
    Put("selected", YesOrNo(layer.properties.isMaskSelected));
    m_Xml.writeEndElement();
}

void Writer::WriteImage(const OraStack::Image& image)
{
    Put("src", image.entry);
    Put("x", QString::number(image.offset.x()));
    Put("y", QString::number(image.offset.y()));
    if (image.isEmpty) PutOwn("empty", Yes);
}

void Writer::WriteForeign(const QVector<ForeignContent::Attribute>& attributes)
{
    for (const ForeignContent::Attribute& attribute : attributes) {
        if (IsCompositeOp(attribute)) continue;
        if (attribute.space.isEmpty()) {
            m_Xml.writeAttribute(attribute.name, attribute.value);
        } else {
            m_Xml.writeAttribute(attribute.space, attribute.name, attribute.value);
        }
    }
}
} // namespace

QByteArray OraStackWriter::Write(const OraStack& stack)
{
    QByteArray xml;
    Writer(&xml).Write(stack);
    return xml;
}
