#include "formats/OraAttributes.h"

#include <QLocale>
#include <QStringList>
#include <QVector>
#include <QXmlStreamWriter>

#include <cmath>

namespace {
/// Far beyond every canvas, and near enough that painting doesn't overflow.
constexpr double Farthest = 1e9;
constexpr int MatrixNumbers = 9;
} // namespace

void OraAttributes::Read(const char* name, double least, double most, double* value)
{
    const QString text = Text(name);
    if (text.isEmpty()) return;
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    m_IsSound = m_IsSound && isNumber && std::isfinite(number);
    if (m_IsSound) *value = qBound(least, number, most);
}

void OraAttributes::Read(const char* name, int least, int most, int* value)
{
    double number = *value;
    Read(name, double(least), double(most), &number);
    *value = qRound(number);
}

void OraAttributes::ReadMatrix(const char* name, QTransform* transform)
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
    if (std::isfinite(1 / read.determinant())) *transform = read;
}

void OraWriting::Put(QXmlStreamWriter& xml, const char* name, const QString& value)
{
    xml.writeAttribute(QLatin1String(name), value);
}

void OraWriting::PutMatrix(QXmlStreamWriter& xml, const char* name, const QTransform& t)
{
    if (t == QTransform()) return;
    QStringList numbers;
    for (const double number :
         {t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.m31(), t.m32(), t.m33()}) {
        numbers << NumberText(number);
    }
    Put(xml, name, numbers.join(QLatin1Char(' ')));
}

QString OraWriting::NumberText(double number)
{
    return QString::number(std::isfinite(number) ? number : 0, 'g', QLocale::FloatingPointShortest);
}
