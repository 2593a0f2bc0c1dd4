#include "scripting/KindOptions.h"

#include "gui/AdjustmentNames.h"
#include "scripting/ScriptArguments.h"
#include "scripting/ScriptError.h"

#include <QJSEngine>
#include <QStringList>

#include <cmath>
#include <iterator>

namespace {
using ScriptArguments::Option;

constexpr int LargestFont = 10000;
constexpr double MostPercent = 100;

const char* const KindWords[] = {"brightnessContrast", "levels", "hueSaturation", "invert"};
const char* const StyleWords[] = {"none", "flag"};
const char* const OrientationWords[] = {"horizontal", "vertical"};

struct Value
{
    const char* name;
    int LXAdjustment::*value;
    LXAdjustment::Kind kind;
    int least;
    int most;
};

constexpr Value Values[] = {
    {"brightness", &LXAdjustment::brightness, LXAdjustment::BrightnessContrast, -100, 100},
    {"contrast", &LXAdjustment::contrast, LXAdjustment::BrightnessContrast, -100, 100},
    {"inBlack", &LXAdjustment::inBlack, LXAdjustment::Levels, 0, 255},
    {"inWhite", &LXAdjustment::inWhite, LXAdjustment::Levels, 0, 255},
    {"outBlack", &LXAdjustment::outBlack, LXAdjustment::Levels, 0, 255},
    {"outWhite", &LXAdjustment::outWhite, LXAdjustment::Levels, 0, 255},
    {"hue", &LXAdjustment::hue, LXAdjustment::HueSaturation, -180, 180},
    {"saturation", &LXAdjustment::saturation, LXAdjustment::HueSaturation, -100, 100},
    {"lightness", &LXAdjustment::lightness, LXAdjustment::HueSaturation, -100, 100},
};

template <std::size_t Count>
int ToWord(const QJSValue& value, const char* const (&words)[Count], const char* what)
{
    QStringList known;
    for (std::size_t i = 0; i < Count; ++i) {
        if (value.toString() == QLatin1String(words[i])) return static_cast<int>(i);
        known.append(QString::fromLatin1(words[i]));
    }
    throw ScriptError(
        QStringLiteral("\"%1\" is no %2; there are: %3.")
            .arg(value.toString(), QString::fromLatin1(what), known.join(QStringLiteral(", "))));
}

double ToNumber(const QJSValue& value, const char* what, double least, double most)
{
    const double number = ScriptArguments::ToNumber(value, what);
    if (number >= least && number <= most) return number;
    throw ScriptError(
        QStringLiteral("%1 goes from %2 to %3.").arg(QString::fromLatin1(what)).arg(least).arg(most));
}

/// Takes the option if it is there.
template <class Take>
void Read(const QJSValue& options, const char* name, const Take& take)
{
    const QJSValue value = Option(options, name);
    if (!value.isUndefined()) take(value);
}

QTransform ToMatrix(const QJSValue& value)
{
    constexpr int affine = 6;
    QVector<double> n;
    if (value.isArray()) {
        const int count = value.property(QStringLiteral("length")).toInt();
        for (int i = 0; i < count; ++i)
            n << ScriptArguments::ToNumber(value.property(static_cast<quint32>(i)), "matrix");
    }
    if (n.size() != affine) {
        throw ScriptError(QStringLiteral("A matrix is a list of six numbers: m11, m12, m21, m22, dx, dy."));
    }
    QTransform matrix(n[0], n[1], n[2], n[3], n[4], n[5]);
    if (!std::isfinite(1 / matrix.determinant())) {
        throw ScriptError(QStringLiteral("The matrix flattens the text."));
    }
    return matrix;
}

void ReadFont(const QJSValue& options, QFont* font)
{
    Read(options, "font", [=](const QJSValue& value) { font->setFamily(value.toString()); });
    Read(options, "size", [=](const QJSValue& value) {
        font->setPixelSize(ScriptArguments::ToInteger(value, "size", 1, LargestFont));
    });
    Read(options, "bold", [=](const QJSValue& value) { font->setBold(value.toBool()); });
    Read(options, "italic", [=](const QJSValue& value) { font->setItalic(value.toBool()); });
    Read(options, "underline", [=](const QJSValue& value) { font->setUnderline(value.toBool()); });
    Read(options, "strikeOut", [=](const QJSValue& value) { font->setStrikeOut(value.toBool()); });
}

void ReadDeformation(const QJSValue& options, TextDeformation* bent)
{
    const auto percent = [&](const char* name, double* value) {
        Read(options, name,
             [=](const QJSValue& given) { *value = ToNumber(given, name, -MostPercent, MostPercent); });
    };
    Read(options, "style", [=](const QJSValue& value) { bent->style = ToWord(value, StyleWords, "style"); });
    Read(options, "orientation",
         [=](const QJSValue& value) { bent->orientation = ToWord(value, OrientationWords, "orientation"); });
    percent("bend", &bent->bend);
    percent("hDistortion", &bent->hDistortion);
    percent("vDistortion", &bent->vDistortion);
}
} // namespace

QVector<QString> KindOptions::TextNames()
{
    QVector<QString> names;
    for (const char* name :
         {"text", "x", "y", "font", "size", "bold", "italic", "underline", "strikeOut", "color",
          "antialiasing", "style", "orientation", "bend", "hDistortion", "vDistortion", "matrix"}) {
        names << QString::fromLatin1(name);
    }
    return names;
}

TextContent KindOptions::ToText(const QJSValue& options, const TextContent& base)
{
    TextContent text = base;
    Read(options, "text", [&](const QJSValue& value) { text.text = value.toString(); });
    Read(options, "x",
         [&](const QJSValue& value) { text.position.setX(ScriptArguments::ToNumber(value, "x")); });
    Read(options, "y",
         [&](const QJSValue& value) { text.position.setY(ScriptArguments::ToNumber(value, "y")); });
    ReadFont(options, &text.font);
    Read(options, "color",
         [&](const QJSValue& value) { text.brush = ScriptArguments::ToColor(value.toString()); });
    Read(options, "antialiasing", [&](const QJSValue& value) {
        text.renderMode = value.toBool() ? TextContent::Antialiased : TextContent::Aliased;
    });
    ReadDeformation(options, &text.deformation);
    Read(options, "matrix", [&](const QJSValue& value) { text.transform = ToMatrix(value); });
    return text;
}

QJSValue KindOptions::OfText(QJSEngine& engine, const TextContent& text)
{
    QJSValue options = engine.newObject();
    const auto set = [&options](const char* name, const QJSValue& value) {
        options.setProperty(QString::fromLatin1(name), value);
    };
    const QFont& font = text.font;
    set("text", text.text);
    set("x", text.position.x());
    set("y", text.position.y());
    set("font", font.family());
    set("size", font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF());
    set("bold", font.bold());
    set("italic", font.italic());
    set("underline", font.underline());
    set("strikeOut", font.strikeOut());
    set("color", ScriptArguments::OfColor(text.brush.color()));
    set("antialiasing", text.renderMode == TextContent::Antialiased);
    set("style", QString::fromLatin1(StyleWords[text.deformation.style]));
    set("orientation", QString::fromLatin1(OrientationWords[text.deformation.orientation]));
    set("bend", text.deformation.bend);
    set("hDistortion", text.deformation.hDistortion);
    set("vDistortion", text.deformation.vDistortion);
    QJSValue matrix = engine.newArray();
    quint32 i = 0;
    const QTransform& t = text.transform;
    for (const double number : {t.m11(), t.m12(), t.m21(), t.m22(), t.dx(), t.dy()})
        matrix.setProperty(i++, number);
    set("matrix", matrix);
    return options;
}

QVector<QString> KindOptions::AdjustmentNames()
{
    QVector<QString> names{QStringLiteral("kind"), QStringLiteral("gamma")};
    for (const Value& value : Values)
        names << QString::fromLatin1(value.name);
    return names;
}

LXAdjustment KindOptions::ToAdjustment(const QJSValue& options, const LXAdjustment& base)
{
    constexpr double leastGamma = 0.1;
    constexpr double mostGamma = 10;
    LXAdjustment adjustment = base;
    Read(options, "kind", [&](const QJSValue& value) {
        adjustment.kind = static_cast<LXAdjustment::Kind>(ToWord(value, KindWords, "adjustment"));
    });
    for (const Value& value : Values) {
        Read(options, value.name, [&](const QJSValue& given) {
            adjustment.*value.value = ScriptArguments::ToInteger(given, value.name, value.least, value.most);
        });
    }
    Read(options, "gamma",
         [&](const QJSValue& given) { adjustment.gamma = ToNumber(given, "gamma", leastGamma, mostGamma); });
    return adjustment;
}

QJSValue KindOptions::OfAdjustment(QJSEngine& engine, const LXAdjustment& adjustment)
{
    QJSValue options = engine.newObject();
    options.setProperty(QStringLiteral("kind"), QString::fromLatin1(KindWords[adjustment.kind]));
    for (const Value& value : Values) {
        if (value.kind != adjustment.kind) continue;
        options.setProperty(QString::fromLatin1(value.name), adjustment.*value.value);
    }
    if (adjustment.kind == LXAdjustment::Levels) {
        options.setProperty(QStringLiteral("gamma"), adjustment.gamma);
    }
    return options;
}

QString KindOptions::NameOf(LXAdjustment::Kind kind)
{
    return ::AdjustmentNames::Of(kind);
}
