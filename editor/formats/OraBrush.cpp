#include "formats/OraBrush.h"

#include <QBrush>
#include <QBuffer>
#include <QImageReader>
#include <QLocale>
#include <QStringList>
#include <QVector>
#include <QXmlStreamAttributes>
#include <QXmlStreamWriter>

#include <cmath>
#include <memory>

namespace {
constexpr double Farthest = 1e9; // as places of texts
constexpr int MostTextureBytes = 256 * 1024;
constexpr int MostTextureSide = 4096;
constexpr int MostStops = 1000;
constexpr int MatrixNumbers = 9;

const QLatin1String Linear("linear");
const QLatin1String Radial("radial");
const QLatin1String Conical("conical");
const QLatin1String Texture("texture");
const QLatin1String Repeat("repeat");
const QLatin1String Reflect("reflect");
const QLatin1String OfText("text");

using Numbers = QVector<double>;

void Put(QXmlStreamWriter& xml, const char* name, const QString& value)
{
    xml.writeAttribute(QLatin1String(name), value);
}

QString Text(const Numbers& numbers)
{
    QStringList words;
    for (const double number : numbers)
        words << QString::number(std::isfinite(number) ? number : 0, 'g', QLocale::FloatingPointShortest);
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
    if (words.size() % 2 != 0 || words.size() > 2 * MostStops) return false;
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

bool ReadGradient(const QXmlStreamAttributes& attributes, const QString& kind, QBrush* brush)
{
    const auto text = [&](const char* name) { return attributes.value(QLatin1String(name)).toString(); };
    const std::unique_ptr<QGradient> gradient = GradientOf(kind, text("brush-numbers"));
    if (!gradient || !ReadStops(text("brush-stops"), gradient.get())) return false;
    if (text("brush-spread") == Repeat) gradient->setSpread(QGradient::RepeatSpread);
    if (text("brush-spread") == Reflect) gradient->setSpread(QGradient::ReflectSpread);
    if (text("brush-area") == OfText) gradient->setCoordinateMode(QGradient::ObjectMode);
    *brush = QBrush(*gradient);
    return true;
}

// ---- textures

QByteArray PngOf(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? bytes : QByteArray();
}

bool ReadTexture(const QXmlStreamAttributes& attributes, QBrush* brush)
{
    QByteArray bytes =
        QByteArray::fromBase64(attributes.value(QLatin1String("brush-texture")).toString().toLatin1());
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "PNG");
    // Judged before it takes memory.
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > MostTextureSide || size.height() > MostTextureSide) return false;
    const QImage image = reader.read();
    if (image.isNull()) return false;
    *brush = QBrush(image);
    return true;
}
} // namespace

void OraBrush::Write(QXmlStreamWriter& xml, const QBrush& brush)
{
    if (brush.gradient()) {
        WriteGradient(xml, *brush.gradient());
    } else {
        const QByteArray png =
            brush.style() == Qt::TexturePattern ? PngOf(brush.textureImage()) : QByteArray();
        if (png.isEmpty() || png.size() > MostTextureBytes) return;
        Put(xml, "brush", Texture);
        Put(xml, "brush-texture", QString::fromLatin1(png.toBase64()));
    }
    const QTransform t = brush.transform();
    if (t.isIdentity()) return;
    Put(xml, "brush-matrix",
        Text({t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.m31(), t.m32(), t.m33()}));
}

bool OraBrush::Read(const QXmlStreamAttributes& attributes, QBrush* brush)
{
    const QString kind = attributes.value(QLatin1String("brush")).toString();
    const bool isGradient = kind == Linear || kind == Radial || kind == Conical;
    if (!isGradient && kind != Texture) return true;
    if (!(isGradient ? ReadGradient(attributes, kind, brush) : ReadTexture(attributes, brush))) return false;

    const QString matrix = attributes.value(QLatin1String("brush-matrix")).toString();
    if (matrix.isEmpty()) return true;
    const Numbers n = ToNumbers(matrix, MatrixNumbers);
    if (n.isEmpty()) return false;
    brush->setTransform(QTransform(n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7], n[8]));
    return true;
}
