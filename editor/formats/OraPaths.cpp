#include "formats/OraPaths.h"

#include "document/LXPathsListModel.h"
#include "formats/OraNames.h"
#include "formats/XmlFragment.h"

#include <QLocale>
#include <QVector>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <cmath>
#include <iterator>

namespace {
/// Far beyond every canvas, and near enough that painting doesn't overflow.
constexpr double Farthest = 1e9;
constexpr int FarthestSample = 1 << 24;

const QLatin1String Yes("true");
const QLatin1String Cmyk("cmyk");
const QLatin1String ContourMark("m");

/// By LXPathsListModel::LogicalOp.
const QLatin1String OperationWords[] = {QLatin1String("none"), QLatin1String("unite"),
                                        QLatin1String("subtract"), QLatin1String("intersect"),
                                        QLatin1String("exclude")};

/// The shortest text that comes back as the same number. A transform may have left what is none.
QString Number(double number)
{
    return QString::number(std::isfinite(number) ? number : 0, 'g', QLocale::FloatingPointShortest);
}

QString Text(const QPointF& point)
{
    return QStringLiteral("%1 %2").arg(Number(point.x()), Number(point.y()));
}

bool IsCorner(const LXPathElement& element)
{
    LXPathElement corner(element.GetCenterPoint());
    corner.SetStartsContour(element.StartsContour());
    return element == corner;
}

QString Text(const LXPathElement& element)
{
    QString text = element.StartsContour() ? ContourMark + QLatin1Char(' ') : QString();
    text += Text(element.GetCenterPoint());
    if (!IsCorner(element)) {
        text +=
            QLatin1Char(' ') + Text(element.GetInGuide()) + QLatin1Char(' ') + Text(element.GetOutGuide());
    }
    return text;
}

QString Text(const LXPath& path)
{
    QString text;
    for (const LXPathElement& element : path) {
        text += Text(element) + QLatin1Char('\n');
    }
    return text;
}

bool ReadNumbers(const QStringList& words, QVector<double>* numbers)
{
    for (const QString& word : words) {
        bool isNumber = false;
        const double number = word.toDouble(&isNumber);
        if (!isNumber || !std::isfinite(number)) return false;
        numbers->append(qBound(-Farthest, number, Farthest));
    }
    return true;
}

bool ReadAnchor(const QString& line, LXPath* path)
{
    QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty()) return true;
    const bool starts = words.first() == ContourMark;
    if (starts) words.removeFirst();

    QVector<double> n;
    constexpr int corner = 2;
    constexpr int bend = 6;
    if (!ReadNumbers(words, &n) || (n.size() != corner && n.size() != bend)) return false;
    const QPointF anchor(n[0], n[1]);
    path->append(n.size() == corner ? LXPathElement(anchor)
                                    : LXPathElement(anchor, {n[2], n[3]}, {n[4], n[5]}));
    path->last().SetStartsContour(starts);
    return true;
}

bool ReadSubPath(QXmlStreamReader& xml, LXSubPaths* subPaths)
{
    const QStringRef word = xml.attributes().value(QLatin1String("operation"));
    const auto* found = std::find(std::begin(OperationWords), std::end(OperationWords), word);
    // A word of a later version counts as none.
    const int operation = found == std::end(OperationWords) ? 0 : static_cast<int>(found - OperationWords);

    const QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
    LXPath path;
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        if (!ReadAnchor(line, &path)) return false;
    }
    subPaths->append({path, operation});
    return !xml.hasError();
}

bool ReadCoordinate(const QXmlStreamReader& xml, const char* name, int* coordinate)
{
    bool isNumber = false;
    const double value = xml.attributes().value(QLatin1String(name)).toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value)) return false;
    *coordinate = qRound(qBound(double(-FarthestSample), value, double(FarthestSample)));
    return true;
}
} // namespace

void OraPaths::WritePath(QXmlStreamWriter& xml, const DocumentPath& path)
{
    xml.writeStartElement(OraNames::OwnSpace, QStringLiteral("path"));
    xml.writeAttribute(QStringLiteral("name"), XmlFragment::CleanText(path.name));
    if (path.isVisible) xml.writeAttribute(QStringLiteral("visible"), Yes);
    for (const auto& [elements, operation] : path.subPaths) {
        xml.writeStartElement(OraNames::OwnSpace, QStringLiteral("sub-path"));
        xml.writeAttribute(QStringLiteral("operation"), OperationWords[operation]);
        xml.writeCharacters(Text(elements));
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

void OraPaths::WriteSample(QXmlStreamWriter& xml, const ColorSample& sample)
{
    xml.writeEmptyElement(OraNames::OwnSpace, QStringLiteral("sample"));
    xml.writeAttribute(QStringLiteral("x"), QString::number(sample.point.x()));
    xml.writeAttribute(QStringLiteral("y"), QString::number(sample.point.y()));
    if (sample.radius > 0) xml.writeAttribute(QStringLiteral("radius"), QString::number(sample.radius));
    if (sample.format == LXColorSampleModel::CMYK) xml.writeAttribute(QStringLiteral("format"), Cmyk);
}

bool OraPaths::ReadPath(QXmlStreamReader& xml, DocumentPath* path)
{
    path->name = xml.attributes().value(QLatin1String("name")).toString();
    path->isVisible = xml.attributes().value(QLatin1String("visible")) == Yes;
    while (xml.readNextStartElement()) {
        if (xml.name() != QLatin1String("sub-path")) {
            xml.skipCurrentElement();
        } else if (!ReadSubPath(xml, &path->subPaths)) {
            return false;
        }
    }
    return !xml.hasError();
}

bool OraPaths::ReadSample(QXmlStreamReader& xml, ColorSample* sample)
{
    QPoint point;
    if (!ReadCoordinate(xml, "x", &point.rx()) || !ReadCoordinate(xml, "y", &point.ry())) return false;
    const QXmlStreamAttributes attributes = xml.attributes();
    const int radius = attributes.value(QLatin1String("radius")).toInt();
    sample->point = point;
    sample->radius = qBound(0, radius, LXColorSampleModel::MaxSampleRadius);
    sample->format = attributes.value(QLatin1String("format")) == Cmyk ? LXColorSampleModel::CMYK
                                                                       : LXColorSampleModel::RGB;
    xml.skipCurrentElement();
    return !xml.hasError();
}
