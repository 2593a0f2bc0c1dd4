#include "gui/SvgCost.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QHash>
#include <QImageReader>
#include <QStringList>
#include <QXmlStreamReader>

#include <algorithm>
#include <vector>

namespace {
struct Element
{
    std::vector<int> parts; ///< the elements right inside
    QString used;           ///< the id of what is drawn in its place; empty for none
    double cost = -1;       ///< how many elements are drawn for it; below 0 before that is known
    bool isBeingCounted = false;
};

QString Tr(const char* text)
{
    return QCoreApplication::translate("SvgCost", text);
}

QString LinkOf(const QXmlStreamAttributes& attributes)
{
    const QLatin1String xlink("http://www.w3.org/1999/xlink");
    return (attributes.hasAttribute(xlink, QStringLiteral("href"))
                ? attributes.value(xlink, QStringLiteral("href"))
                : attributes.value(QStringLiteral("href")))
        .trimmed()
        .toString();
}

/// Reads the elements, and counts what each stands for.
class Judge
{
public:
    explicit Judge(const SvgCost::MayDecode& mayDecode) : m_MayDecode(mayDecode) {}

    QString WhyNot(const QByteArray& bytes, const SvgCost::SizeOf& sizeOf)
    {
        if (bytes.size() > SvgCost::MostBytes) return Tr("is too large.");
        if (bytes.startsWith("\x1f\x8b")) return Tr("is packed.");
        Read(bytes);
        if (!m_WhyNot.isEmpty() || m_Elements.empty()) return m_WhyNot;

        const double count = CostOf(0, 0);
        if (count > SvgCost::MostElements) return Tr("stands for far more shapes than can be drawn.");
        const QSize size = sizeOf();
        if (count * size.width() * size.height() > SvgCost::MostPixels) {
            return Tr("has too many shapes for its size. Make it smaller in the other program.");
        }
        return QString();
    }

private:
    void Read(const QByteArray& bytes)
    {
        QXmlStreamReader reader(bytes);
        std::vector<int> open;
        while (!reader.atEnd() && m_WhyNot.isEmpty()) {
            switch (reader.readNext()) {
            case QXmlStreamReader::StartElement:
                if (!open.empty())
                    m_Elements[std::size_t(open.back())].parts.push_back(int(m_Elements.size()));
                open.push_back(int(m_Elements.size()));
                Begin(reader.name(), reader.attributes());
                if (open.size() > SvgCost::MostLevels) m_WhyNot = Tr("is nested far too deep.");
                break;
            case QXmlStreamReader::EndElement: open.pop_back(); break;
            // Entities multiply while they are read.
            case QXmlStreamReader::DTD:
                if (!reader.entityDeclarations().isEmpty()) m_WhyNot = Tr("declares entities.");
                break;
            default: break;
            }
        }
    }

    void Begin(const QStringRef& name, const QXmlStreamAttributes& attributes)
    {
        Element element;
        const QString link = LinkOf(attributes);
        if (name == QLatin1String("use") && link.startsWith('#')) element.used = link.mid(1);
        if (name == QLatin1String("image")) JudgePicture(link);
        const QString id = attributes.value(QStringLiteral("id")).toString();
        if (!id.isEmpty()) m_Ids.insert(id, int(m_Elements.size()));
        m_Elements.push_back(std::move(element));
        if (m_Elements.size() > SvgCost::MostElements) m_WhyNot = Tr("has far too many shapes.");
    }

    /// Others than those inside would be read from this machine's files.
    void JudgePicture(const QString& link)
    {
        if (link.isEmpty()) return;
        const QString mark = QStringLiteral("base64,");
        const int begin = link.indexOf(mark);
        if (!link.startsWith(QLatin1String("data:")) || begin < 0) {
            m_WhyNot = Tr("shows a picture that isn't inside of it.");
            return;
        }
        QByteArray bytes = QByteArray::fromBase64(link.mid(begin + mark.size()).toLatin1());
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        QImageReader reader(&buffer);
        // It may well be such a picture itself.
        if (reader.format().startsWith("svg")) {
            m_WhyNot = Tr("is nested far too deep.");
            return;
        }
        const QSize size = reader.size();
        m_PixelsInside += double(size.width()) * size.height();
        if (!m_MayDecode(size) || m_PixelsInside > SvgCost::MostPixels / 100) {
            m_WhyNot = Tr("holds a picture that is too large.");
        }
    }

    double CostOf(int index, int level)
    {
        Element& element = m_Elements[std::size_t(index)];
        if (element.cost >= 0) return element.cost;
        constexpr double endless = 2.0 * SvgCost::MostElements;
        // One that uses itself comes to no end.
        if (element.isBeingCounted || level > SvgCost::MostLevels) return endless;

        element.isBeingCounted = true;
        double cost = 1;
        for (const int part : element.parts)
            cost += CostOf(part, level + 1);
        const auto used = m_Ids.constFind(element.used);
        if (!element.used.isEmpty() && used != m_Ids.constEnd()) cost += CostOf(*used, level + 1);
        element.isBeingCounted = false;
        element.cost = std::min(cost, endless);
        return element.cost;
    }

    const SvgCost::MayDecode& m_MayDecode;
    std::vector<Element> m_Elements;
    QHash<QString, int> m_Ids;
    double m_PixelsInside = 0;
    QString m_WhyNot;
};
} // namespace

QString SvgCost::WhyNot(const QByteArray& bytes, const MayDecode& mayDecode, const SizeOf& sizeOf)
{
    return Judge(mayDecode).WhyNot(bytes, sizeOf);
}
