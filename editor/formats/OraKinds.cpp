#include "formats/OraKinds.h"

#include "formats/OraAttributes.h"
#include "formats/OraFont.h"
#include "formats/OraNames.h"
#include "formats/XmlFragment.h"
#include "image/AdjustmentPixels.h"

#include <QColor>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <array>
#include <iterator>
#include <utility>

namespace {
/// Far beyond every canvas, and near enough that painting doesn't overflow.
constexpr double Farthest = 1e9;

const QLatin1String Flag("flag");
const QLatin1String Vertical("vertical");
const QLatin1String HardEdges("hard");

/// By LXAdjustment::Kind.
const QLatin1String KindWords[] = {QLatin1String("brightness-contrast"), QLatin1String("levels"),
                                   QLatin1String("hue-saturation"), QLatin1String("invert")};

using OraWriting::NumberText;
using OraWriting::Put;

struct NamedValue
{
    const char* name;
    int LXAdjustment::*value;
};

constexpr std::array<NamedValue, 9> Values{{{"brightness", &LXAdjustment::brightness},
                                            {"contrast", &LXAdjustment::contrast},
                                            {"in-black", &LXAdjustment::inBlack},
                                            {"in-white", &LXAdjustment::inWhite},
                                            {"out-black", &LXAdjustment::outBlack},
                                            {"out-white", &LXAdjustment::outWhite},
                                            {"hue", &LXAdjustment::hue},
                                            {"saturation", &LXAdjustment::saturation},
                                            {"lightness", &LXAdjustment::lightness}}};

void WriteDeformation(QXmlStreamWriter& xml, const TextDeformation& bent)
{
    if (bent.style == TextDeformation::Flag) Put(xml, "bend-style", Flag);
    if (bent.orientation == TextDeformation::Vertical) Put(xml, "bend-orientation", Vertical);
    for (const auto& [name, value] : {std::pair("bend", bent.bend), std::pair("bend-h", bent.hDistortion),
                                      std::pair("bend-v", bent.vDistortion)}) {
        if (value != 0) Put(xml, name, NumberText(value));
    }
}

void ReadDeformation(OraAttributes& attributes, TextDeformation* bent)
{
    constexpr double most = 100;
    if (attributes.Is("bend-style", Flag)) bent->style = TextDeformation::Flag;
    if (attributes.Is("bend-orientation", Vertical)) bent->orientation = TextDeformation::Vertical;
    attributes.Read("bend", -most, most, &bent->bend);
    attributes.Read("bend-h", -most, most, &bent->hDistortion);
    attributes.Read("bend-v", -most, most, &bent->vDistortion);
}
} // namespace

/// The text stands in an attribute: there the ends of lines survive every reader.
void OraKinds::WriteText(QXmlStreamWriter& xml, const TextContent& text, const QString& textureEntry)
{
    xml.writeEmptyElement(OraNames::OwnSpace, QStringLiteral("text"));
    Put(xml, "text", XmlFragment::CleanText(text.text));
    OraFont::Write(xml, text.font);
    Put(xml, "color", text.brush.color().name(QColor::HexArgb));
    OraBrush::Write(xml, text.brush, textureEntry);
    Put(xml, "x", NumberText(text.position.x()));
    Put(xml, "y", NumberText(text.position.y()));
    if (text.renderMode == TextContent::Aliased) Put(xml, "edges", HardEdges);
    WriteDeformation(xml, text.deformation);
    OraWriting::PutMatrix(xml, "matrix", text.transform);
}

void OraKinds::WriteAdjustment(QXmlStreamWriter& xml, const LXAdjustment& adjustment)
{
    xml.writeEmptyElement(OraNames::OwnSpace, QStringLiteral("adjustment"));
    Put(xml, "kind", KindWords[adjustment.kind]);
    const LXAdjustment plain;
    for (const NamedValue& named : Values) {
        const int value = adjustment.*named.value;
        if (value != plain.*named.value) Put(xml, named.name, QString::number(value));
    }
    if (adjustment.gamma != plain.gamma) Put(xml, "gamma", NumberText(adjustment.gamma));
}

bool OraKinds::ReadText(QXmlStreamReader& xml, TextContent* text, OraBrush::Texture* texture)
{
    OraAttributes attributes(xml.attributes());
    text->text = attributes.Text("text");
    OraFont::Read(attributes, &text->font);
    const QColor color(attributes.Text("color"));
    if (color.isValid()) text->brush = color;
    const bool isBrushSound = OraBrush::Read(xml.attributes(), &text->brush, texture);
    attributes.Read("x", -Farthest, Farthest, &text->position.rx());
    attributes.Read("y", -Farthest, Farthest, &text->position.ry());
    if (attributes.Is("edges", HardEdges)) text->renderMode = TextContent::Aliased;
    ReadDeformation(attributes, &text->deformation);
    attributes.ReadMatrix("matrix", &text->transform);
    xml.skipCurrentElement();
    return isBrushSound && attributes.IsSound() && !xml.hasError();
}

bool OraKinds::ReadAdjustment(QXmlStreamReader& xml, LXAdjustment* adjustment)
{
    constexpr int far = 100000;
    OraAttributes attributes(xml.attributes());
    const QString word = attributes.Text("kind");
    const auto* found = std::find(std::begin(KindWords), std::end(KindWords), word);
    // What a later version does can't be done: it changes nothing.
    const bool isKnown = found != std::end(KindWords);
    if (isKnown) adjustment->kind = static_cast<LXAdjustment::Kind>(found - KindWords);
    for (const NamedValue& named : Values) {
        int value = adjustment->*named.value;
        attributes.Read(named.name, -far, far, &value);
        if (isKnown) adjustment->*named.value = value;
    }
    attributes.Read("gamma", 0.0, double(far), &adjustment->gamma);
    *adjustment = AdjustmentPixels::Clamped(*adjustment);
    xml.skipCurrentElement();
    return attributes.IsSound() && !xml.hasError();
}
