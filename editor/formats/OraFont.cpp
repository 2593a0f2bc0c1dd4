#include "formats/OraFont.h"

#include "formats/OraAttributes.h"
#include "formats/XmlFragment.h"

#include <QFont>
#include <QStringList>

#include <array>

namespace {
using OraWriting::NumberText;
using OraWriting::Put;

constexpr double LargestSize = 10000;
constexpr double MostSpacing = 10000;

const QLatin1String Yes("true");
const QLatin1String No("false");
const QLatin1String Pixels("px");
const QLatin1String Oblique("oblique");
/// Parts a list of families; it stands in no name.
constexpr QLatin1Char FamilyEnd('\n');

/// By QFont::Capitalization.
constexpr std::array<const char*, 5> CapitalWords{"mixed", "upper", "lower", "small", "first"};

struct Switch
{
    const char* name;
    bool (QFont::*isOn)() const;
    void (QFont::*set)(bool);
};

constexpr std::array<Switch, 4> Switches{{{"underline", &QFont::underline, &QFont::setUnderline},
                                          {"overline", &QFont::overline, &QFont::setOverline},
                                          {"strike-out", &QFont::strikeOut, &QFont::setStrikeOut},
                                          {"fixed-pitch", &QFont::fixedPitch, &QFont::setFixedPitch}}};

void WriteName(QXmlStreamWriter& xml, const QFont& font)
{
    const auto put = [&xml](const char* name, const QString& text) {
        if (!text.isEmpty()) Put(xml, name, XmlFragment::CleanText(text));
    };
    Put(xml, "family", XmlFragment::CleanText(font.family()));
    put("families", font.families().join(FamilyEnd));
    put("style-name", font.styleName());
}

void WriteSpacing(QXmlStreamWriter& xml, const QFont& font)
{
    const char* letters =
        font.letterSpacingType() == QFont::AbsoluteSpacing ? "letter-spacing" : "letter-spacing-percent";
    for (const auto& [name, spacing] :
         {std::pair(letters, font.letterSpacing()), std::pair("word-spacing", font.wordSpacing())}) {
        if (spacing != 0) Put(xml, name, NumberText(spacing));
    }
    if (!font.kerning()) Put(xml, "kerning", No);
}

/// What only tells how the system may draw it, as Qt counts it.
void WriteHints(QXmlStreamWriter& xml, const QFont& font)
{
    const QFont plain;
    const auto put = [&xml](const char* name, int value, int preset) {
        if (value != preset) Put(xml, name, QString::number(value));
    };
    put("style-hint", font.styleHint(), plain.styleHint());
    put("style-strategy", font.styleStrategy(), plain.styleStrategy());
    put("hinting", font.hintingPreference(), plain.hintingPreference());
}

void ReadName(const OraAttributes& attributes, QFont* font)
{
    const QString family = attributes.Text("family");
    if (!family.isEmpty()) font->setFamily(family);
    const QStringList families = attributes.Text("families").split(FamilyEnd, Qt::SkipEmptyParts);
    if (!families.isEmpty()) font->setFamilies(families);
    const QString styleName = attributes.Text("style-name");
    if (!styleName.isEmpty()) font->setStyleName(styleName);
}

void ReadSize(OraAttributes& attributes, QFont* font)
{
    constexpr double leastSize = 0.1;
    double size = 0;
    attributes.Read("size", leastSize, LargestSize, &size);
    if (size > 0 && attributes.Is("unit", Pixels)) {
        font->setPixelSize(qMax(1, qRound(size)));
    } else if (size > 0) {
        font->setPointSizeF(size);
    }
}

void ReadShape(OraAttributes& attributes, QFont* font)
{
    constexpr int leastStretch = 1;
    constexpr int mostStretch = 4000;
    constexpr int heaviest = 99;
    int weight = font->weight();
    attributes.Read("weight", 0, heaviest, &weight);
    font->setWeight(weight);
    if (attributes.Is("italic", Yes)) font->setItalic(true);
    if (attributes.Is("slant", Oblique)) font->setStyle(QFont::StyleOblique);
    int stretch = 0;
    attributes.Read("stretch", leastStretch, mostStretch, &stretch);
    if (stretch > 0) font->setStretch(stretch);
    for (std::size_t i = 1; i < CapitalWords.size(); ++i) {
        if (attributes.Is("capitals", QLatin1String(CapitalWords[i]))) {
            font->setCapitalization(static_cast<QFont::Capitalization>(i));
        }
    }
}

void ReadSpacing(OraAttributes& attributes, QFont* font)
{
    double absolute = 0;
    double percent = 0;
    double ofWords = 0;
    attributes.Read("letter-spacing", -MostSpacing, MostSpacing, &absolute);
    attributes.Read("letter-spacing-percent", -MostSpacing, MostSpacing, &percent);
    attributes.Read("word-spacing", -MostSpacing, MostSpacing, &ofWords);
    if (percent != 0) font->setLetterSpacing(QFont::PercentageSpacing, percent);
    if (absolute != 0) font->setLetterSpacing(QFont::AbsoluteSpacing, absolute);
    if (ofWords != 0) font->setWordSpacing(ofWords);
    if (attributes.Is("kerning", No)) font->setKerning(false);
}

void ReadHints(OraAttributes& attributes, QFont* font)
{
    constexpr int everyStrategy = 0xFFFF;
    int hint = font->styleHint();
    int strategy = font->styleStrategy();
    int hinting = font->hintingPreference();
    attributes.Read("style-hint", QFont::Helvetica, QFont::Fantasy, &hint);
    attributes.Read("style-strategy", QFont::PreferDefault, everyStrategy, &strategy);
    attributes.Read("hinting", QFont::PreferDefaultHinting, QFont::PreferFullHinting, &hinting);
    font->setStyleHint(static_cast<QFont::StyleHint>(hint), static_cast<QFont::StyleStrategy>(strategy));
    font->setHintingPreference(static_cast<QFont::HintingPreference>(hinting));
}
} // namespace

void OraFont::Write(QXmlStreamWriter& xml, const QFont& font)
{
    const bool isInPixels = font.pixelSize() > 0;
    WriteName(xml, font);
    Put(xml, "size", NumberText(isInPixels ? font.pixelSize() : font.pointSizeF()));
    if (isInPixels) Put(xml, "unit", Pixels);
    Put(xml, "weight", QString::number(font.weight()));
    if (font.italic()) Put(xml, "italic", Yes);
    if (font.style() == QFont::StyleOblique) Put(xml, "slant", Oblique);
    for (const Switch& one : Switches) {
        if ((font.*one.isOn)()) Put(xml, one.name, Yes);
    }
    if (font.stretch() != QFont::AnyStretch) Put(xml, "stretch", QString::number(font.stretch()));
    if (font.capitalization() != QFont::MixedCase) {
        Put(xml, "capitals", QLatin1String(CapitalWords[static_cast<std::size_t>(font.capitalization())]));
    }
    WriteSpacing(xml, font);
    WriteHints(xml, font);
}

void OraFont::Read(OraAttributes& attributes, QFont* font)
{
    ReadName(attributes, font);
    ReadSize(attributes, font);
    ReadShape(attributes, font);
    for (const Switch& one : Switches) {
        if (attributes.Is(one.name, Yes)) (font->*one.set)(true);
    }
    ReadSpacing(attributes, font);
    ReadHints(attributes, font);
}
