#include "formats/OraKinds.h"

#include "formats/OraBrush.h"
#include "formats/OraNames.h"
#include "formats/XmlFragment.h"
#include "image/AdjustmentPixels.h"

#include <QColor>
#include <QLocale>
#include <QStringList>
#include <QVector>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <array>
#include <cmath>
#include <iterator>
#include <utility>

namespace {
/// Far beyond every canvas, and near enough that painting doesn't overflow.
constexpr double Farthest = 1e9;
constexpr double LargestFont = 10000;
constexpr double MostSpacing = 10000;
constexpr int MatrixNumbers = 9;

const QLatin1String Yes("true");
const QLatin1String Pixels("px");
const QLatin1String Flag("flag");
const QLatin1String Vertical("vertical");
const QLatin1String HardEdges("hard");

/// By LXAdjustment::Kind.
const QLatin1String KindWords[] = {QLatin1String("brightness-contrast"), QLatin1String("levels"),
                                   QLatin1String("hue-saturation"), QLatin1String("invert")};

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

/// The shortest text that comes back as the same number. A transform may have left what is none.
QString Number(double number)
{
    return QString::number(std::isfinite(number) ? number : 0, 'g', QLocale::FloatingPointShortest);
}

class Attributes
{
public:
    explicit Attributes(const QXmlStreamAttributes& attributes) : m_Attributes(attributes) {}

    QString Text(const char* name) const { return m_Attributes.value(QLatin1String(name)).toString(); }

    bool Is(const char* name, QLatin1String word) const
    {
        return m_Attributes.value(QLatin1String(name)) == word;
    }

    /// A number that isn't there leaves the value alone; one that is none counts as damage.
    void Read(const char* name, double least, double most, double* value)
    {
        const QString text = Text(name);
        if (text.isEmpty()) return;
        bool isNumber = false;
        const double number = text.toDouble(&isNumber);
        m_IsSound = m_IsSound && isNumber && std::isfinite(number);
        if (m_IsSound) *value = qBound(least, number, most);
    }

    void Read(const char* name, int least, int most, int* value)
    {
        double number = *value;
        Read(name, double(least), double(most), &number);
        *value = qRound(number);
    }

    void ReadMatrix(const char* name, QTransform* transform)
    {
        const QStringList words = Text(name).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (words.isEmpty()) return;
        QVector<double> n;
        for (const QString& word : words) {
            bool isNumber = false;
            n << word.toDouble(&isNumber);
            m_IsSound = m_IsSound && isNumber && std::isfinite(n.last());
        }
        m_IsSound = m_IsSound && n.size() == MatrixNumbers;
        if (!m_IsSound) return;
        for (double& number : n)
            number = qBound(-Farthest, number, Farthest);
        const QTransform read(n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7], n[8]);
        // One that flattens the text can't have been written.
        if (std::isfinite(1 / read.determinant())) *transform = read;
    }

    bool IsSound() const { return m_IsSound; }

private:
    QXmlStreamAttributes m_Attributes;
    bool m_IsSound = true;
};

void Put(QXmlStreamWriter& xml, const char* name, const QString& value)
{
    xml.writeAttribute(QLatin1String(name), value);
}

void WriteFont(QXmlStreamWriter& xml, const QFont& font)
{
    const bool isInPixels = font.pixelSize() > 0;
    Put(xml, "family", XmlFragment::CleanText(font.family()));
    Put(xml, "size", Number(isInPixels ? font.pixelSize() : font.pointSizeF()));
    if (isInPixels) Put(xml, "unit", Pixels);
    Put(xml, "weight", QString::number(font.weight()));
    for (const auto& [name, isSet] :
         {std::pair("italic", font.italic()), std::pair("underline", font.underline()),
          std::pair("strike-out", font.strikeOut())}) {
        if (isSet) Put(xml, name, Yes);
    }
    if (font.stretch() != QFont::AnyStretch) Put(xml, "stretch", QString::number(font.stretch()));
    if (font.letterSpacingType() == QFont::AbsoluteSpacing) {
        Put(xml, "letter-spacing", Number(font.letterSpacing()));
    }
}

void ReadFont(Attributes& attributes, QFont* font)
{
    constexpr int leastStretch = 1;
    constexpr int mostStretch = 4000;
    constexpr int heaviest = 99;
    constexpr double leastSize = 0.1;
    const QString family = attributes.Text("family");
    if (!family.isEmpty()) font->setFamily(family);
    double size = 0;
    attributes.Read("size", leastSize, LargestFont, &size);
    if (size > 0 && attributes.Is("unit", Pixels)) {
        font->setPixelSize(qMax(1, qRound(size)));
    } else if (size > 0) {
        font->setPointSizeF(size);
    }
    int weight = font->weight();
    attributes.Read("weight", 0, heaviest, &weight);
    font->setWeight(weight);
    if (attributes.Is("italic", Yes)) font->setItalic(true);
    if (attributes.Is("underline", Yes)) font->setUnderline(true);
    if (attributes.Is("strike-out", Yes)) font->setStrikeOut(true);
    int stretch = 0;
    attributes.Read("stretch", leastStretch, mostStretch, &stretch);
    if (stretch > 0) font->setStretch(stretch);
    double spacing = 0;
    attributes.Read("letter-spacing", -MostSpacing, MostSpacing, &spacing);
    if (spacing != 0) font->setLetterSpacing(QFont::AbsoluteSpacing, spacing);
}

void WriteDeformation(QXmlStreamWriter& xml, const TextDeformation& bent)
{
    if (bent.style == TextDeformation::Flag) Put(xml, "bend-style", Flag);
    if (bent.orientation == TextDeformation::Vertical) Put(xml, "bend-orientation", Vertical);
    for (const auto& [name, value] : {std::pair("bend", bent.bend), std::pair("bend-h", bent.hDistortion),
                                      std::pair("bend-v", bent.vDistortion)}) {
        if (value != 0) Put(xml, name, Number(value));
    }
}

void ReadDeformation(Attributes& attributes, TextDeformation* bent)
{
    constexpr double most = 100;
    if (attributes.Is("bend-style", Flag)) bent->style = TextDeformation::Flag;
    if (attributes.Is("bend-orientation", Vertical)) bent->orientation = TextDeformation::Vertical;
    attributes.Read("bend", -most, most, &bent->bend);
    attributes.Read("bend-h", -most, most, &bent->hDistortion);
    attributes.Read("bend-v", -most, most, &bent->vDistortion);
}

QString MatrixText(const QTransform& t)
{
    QStringList numbers;
    for (const double number :
         {t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.m31(), t.m32(), t.m33()}) {
        numbers << Number(number);
    }
    return numbers.join(QLatin1Char(' '));
}
} // namespace

/// The text stands in an attribute: there the ends of lines survive every reader.
void OraKinds::WriteText(QXmlStreamWriter& xml, const TextContent& text)
{
    xml.writeEmptyElement(OraNames::OwnSpace, QStringLiteral("text"));
    Put(xml, "text", XmlFragment::CleanText(text.text));
    WriteFont(xml, text.font);
    Put(xml, "color", text.brush.color().name(QColor::HexArgb));
    OraBrush::Write(xml, text.brush);
    Put(xml, "x", Number(text.position.x()));
    Put(xml, "y", Number(text.position.y()));
    if (text.renderMode == TextContent::Aliased) Put(xml, "edges", HardEdges);
    WriteDeformation(xml, text.deformation);
    if (!text.transform.isIdentity()) Put(xml, "matrix", MatrixText(text.transform));
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
    if (adjustment.gamma != plain.gamma) Put(xml, "gamma", Number(adjustment.gamma));
}

bool OraKinds::ReadText(QXmlStreamReader& xml, TextContent* text)
{
    Attributes attributes(xml.attributes());
    text->text = attributes.Text("text");
    ReadFont(attributes, &text->font);
    const QColor color(attributes.Text("color"));
    if (color.isValid()) text->brush = color;
    const bool isBrushSound = OraBrush::Read(xml.attributes(), &text->brush);
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
    Attributes attributes(xml.attributes());
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
