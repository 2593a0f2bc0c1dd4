#include "formats/OraBrush.h"

#include "formats/OraAttributes.h"

#include <QBrush>
#include <QPixmap>
#include <QStringList>
#include <QVector>
#include <QXmlStreamAttributes>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace {
constexpr double Farthest = 1e9; // as places of texts

const QLatin1String Linear("linear");
const QLatin1String Radial("radial");
const QLatin1String Conical("conical");
const QLatin1String TextureInside("texture"); // of older files
const QLatin1String TextureEntry("image");
const QLatin1String Hatch("hatch");
const QLatin1String None("none");
const QLatin1String Repeat("repeat");
const QLatin1String Reflect("reflect");
const QLatin1String OfText("text");

/// From Qt::Dense1Pattern on.
constexpr std::array<const char*, 13> HatchWords{
    "dense-1", "dense-2", "dense-3", "dense-4",     "dense-5",       "dense-6",       "dense-7",
    "rows",    "columns", "cross",   "diagonal-up", "diagonal-down", "diagonal-cross"};

using Numbers = QVector<double>;
using OraWriting::NumberText;
using OraWriting::Put;

QString Text(const Numbers& numbers)
{
    QStringList words;
    for (const double number : numbers)
        words << NumberText(number);
    return words.join(QLatin1Char(' '));
}

/// Exactly so many numbers, brought near; empty for anything else.
Numbers ToNumbers(const QString& text, int count)
{
    Numbers numbers;
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& word : words) {
        bool isNumber = false;
        const double number = word.toDouble(&isNumber);
        if (!isNumber || !std::isfinite(number)) return {};
        numbers << qBound(-Farthest, number, Farthest);
    }
    return numbers.size() == count ? numbers : Numbers();
}

// ---- gradients

void WriteGradient(QXmlStreamWriter& xml, const QGradient& gradient)
{
    if (gradient.type() == QGradient::LinearGradient) {
        const auto& linear = static_cast<const QLinearGradient&>(gradient);
        const QPointF a = linear.start();
        const QPointF b = linear.finalStop();
        Put(xml, "brush", Linear);
        Put(xml, "brush-numbers", Text({a.x(), a.y(), b.x(), b.y()}));
    } else if (gradient.type() == QGradient::RadialGradient) {
        const auto& radial = static_cast<const QRadialGradient&>(gradient);
        const QPointF middle = radial.center();
        const QPointF focus = radial.focalPoint();
        Put(xml, "brush", Radial);
        Put(xml, "brush-numbers",
            Text({middle.x(), middle.y(), radial.radius(), focus.x(), focus.y(), radial.focalRadius()}));
    } else {
        const auto& conical = static_cast<const QConicalGradient&>(gradient);
        Put(xml, "brush", Conical);
        Put(xml, "brush-numbers", Text({conical.center().x(), conical.center().y(), conical.angle()}));
    }
    QStringList stops;
    for (const QGradientStop& stop : gradient.stops())
        stops << Text({stop.first}) << stop.second.name(QColor::HexArgb);
    Put(xml, "brush-stops", stops.join(QLatin1Char(' ')));
    if (gradient.spread() == QGradient::RepeatSpread) Put(xml, "brush-spread", Repeat);
    if (gradient.spread() == QGradient::ReflectSpread) Put(xml, "brush-spread", Reflect);
    if (gradient.coordinateMode() != QGradient::LogicalMode) Put(xml, "brush-area", OfText);
}

/// Null for what is damaged.
std::unique_ptr<QGradient> GradientOf(const QString& kind, const QString& text)
{
    if (kind == Linear) {
        const Numbers n = ToNumbers(text, 4);
        return n.isEmpty() ? nullptr : std::make_unique<QLinearGradient>(n[0], n[1], n[2], n[3]);
    }
    if (kind == Radial) {
        const Numbers n = ToNumbers(text, 6);
        if (n.isEmpty()) return nullptr;
        return std::make_unique<QRadialGradient>(QPointF(n[0], n[1]), qMax(0.0, n[2]), QPointF(n[3], n[4]),
                                                 qMax(0.0, n[5]));
    }
    const Numbers n = ToNumbers(text, 3);
    return n.isEmpty() ? nullptr : std::make_unique<QConicalGradient>(n[0], n[1], n[2]);
}

bool ReadStops(const QString& text, QGradient* gradient)
{
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.size() % 2 != 0) return false;
    QGradientStops stops;
    for (int i = 0; i < words.size(); i += 2) {
        const Numbers place = ToNumbers(words[i], 1);
        const QColor color(words[i + 1]);
        if (place.isEmpty() || !color.isValid()) return false;
        stops.append({qBound(0.0, place[0], 1.0), color});
    }
    gradient->setStops(stops);
    return true;
}

bool ReadGradient(const OraAttributes& attributes, const QString& kind, QBrush* brush)
{
    const auto text = [&](const char* name) { return attributes.Text(name); };
    const std::unique_ptr<QGradient> gradient = GradientOf(kind, text("brush-numbers"));
    if (!gradient || !ReadStops(text("brush-stops"), gradient.get())) return false;
    if (text("brush-spread") == Repeat) gradient->setSpread(QGradient::RepeatSpread);
    if (text("brush-spread") == Reflect) gradient->setSpread(QGradient::ReflectSpread);
    if (text("brush-area") == OfText) gradient->setCoordinateMode(QGradient::ObjectMode);
    *brush = QBrush(*gradient);
    return true;
}

// ---- hatches

bool IsHatch(const QBrush& brush)
{
    return brush.style() >= Qt::Dense1Pattern && brush.style() <= Qt::DiagCrossPattern;
}

QString HatchWord(const QBrush& brush)
{
    return QLatin1String(HatchWords[static_cast<std::size_t>(brush.style() - Qt::Dense1Pattern)]);
}

/// One of a later version leaves the color.
void ReadHatch(const QString& word, QBrush* brush)
{
    const auto* found = std::find_if(HatchWords.begin(), HatchWords.end(),
                                     [&word](const char* known) { return word == QLatin1String(known); });
    if (found == HatchWords.end()) return;
    brush->setStyle(static_cast<Qt::BrushStyle>(Qt::Dense1Pattern + (found - HatchWords.begin())));
}
} // namespace

QImage OraBrush::TextureOf(const QBrush& brush)
{
    if (brush.style() != Qt::TexturePattern) return QImage();
    QImage image = brush.textureImage();
    if (image.depth() != 1 || !brush.texture().isQBitmap()) return image;
    QImage drawn(image.size(), QImage::Format_ARGB32);
    for (int y = 0; y < drawn.height(); ++y) {
        for (int x = 0; x < drawn.width(); ++x)
            drawn.setPixel(x, y, image.pixelIndex(x, y) == 0 ? 0 : brush.color().rgba());
    }
    return drawn;
}

void OraBrush::Write(QXmlStreamWriter& xml, const QBrush& brush, const QString& textureEntry)
{
    if (brush.gradient()) {
        WriteGradient(xml, *brush.gradient());
    } else if (IsHatch(brush)) {
        Put(xml, "brush", Hatch);
        Put(xml, "brush-hatch", HatchWord(brush));
    } else if (brush.style() == Qt::NoBrush) {
        Put(xml, "brush", None);
    } else if (!textureEntry.isEmpty()) {
        Put(xml, "brush", TextureEntry);
        Put(xml, "brush-src", textureEntry);
    }
    OraWriting::PutMatrix(xml, "brush-matrix", brush.transform());
}

bool OraBrush::Read(const QXmlStreamAttributes& attributes, QBrush* brush, Texture* texture)
{
    OraAttributes own(attributes);
    const QString kind = own.Text("brush");
    if (kind == Linear || kind == Radial || kind == Conical) {
        if (!ReadGradient(own, kind, brush)) return false;
    } else if (kind == Hatch) {
        ReadHatch(own.Text("brush-hatch"), brush);
    } else if (kind == None) {
        brush->setStyle(Qt::NoBrush);
    } else if (kind == TextureEntry) {
        texture->entry = own.Text("brush-src");
        if (texture->IsNone()) return false;
    } else if (kind == TextureInside) {
        texture->png = QByteArray::fromBase64(own.Text("brush-texture").toLatin1());
        if (texture->IsNone()) return false;
    }
    QTransform transform;
    own.ReadMatrix("brush-matrix", &transform);
    brush->setTransform(transform);
    return own.IsSound();
}
